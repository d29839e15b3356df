#include "plugin/KelForms.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>
#include <algorithm>

#include "plugin/ViewSQLFrn.h"

namespace kel {

namespace {
THost* gApplication = nullptr;

// Change signals of the input controls, tried by name so every kind of control (edits, combos,
// check and radio boxes, spin edits, editors, tree lists) is covered.
const char* const kChangeSignals[] = {
    "textChanged(QString)", "textChanged()",     "currentIndexChanged(int)",
    "toggled(bool)",        "valueChanged(int)", "EditValueChanged(int,int)",
    "RowsChanged()",
};
}  // namespace

THost* Application() {
  return gApplication;
}

namespace {
class TEventHook : public QObject {
 public:
  TEventHook(QWidget* control, std::function<bool(QKeyEvent*)> keyPress, std::function<void()> exit)
      : QObject(control), FKeyPress(std::move(keyPress)), FExit(std::move(exit)) {
    control->installEventFilter(this);
    if (auto* edit = qobject_cast<QLineEdit*>(control); edit && FKeyPress) {
      NoteText(edit);
      // textEdited comes before textChanged and before the caret moves, so the noted text and
      // caret are still those from before the edit.
      connect(edit, &QLineEdit::textEdited, this, [this, edit] { FilterInserted(edit); });
      connect(edit, &QLineEdit::textChanged, this, [this, edit] { NoteText(edit); });
      connect(edit, &QLineEdit::cursorPositionChanged, this, [this, edit] { NoteCaret(edit); });
      connect(edit, &QLineEdit::selectionChanged, this, [this, edit] { NoteCaret(edit); });
    }
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (FKeyPress && event->type() == QEvent::KeyPress)
      return FKeyPress(static_cast<QKeyEvent*>(event));
    if (FExit && event->type() == QEvent::FocusOut && IsExit(static_cast<QFocusEvent*>(event)))
      FExit();
    return false;
  }

 private:
  // Leaving a control for another control of the same window; not a window losing the
  // activation, a menu popping up, or the window closing.
  bool IsExit(const QFocusEvent* event) const {
    const auto* control = static_cast<const QWidget*>(parent());
    if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason)
      return false;
    return control->window()->isVisible();
  }

  void NoteText(QLineEdit* edit) {
    FLastText = edit->text();
    NoteCaret(edit);
  }
  // Where the next insertion goes and how much of the old text it replaces.
  void NoteCaret(QLineEdit* edit) {
    FEditStart = edit->hasSelectedText() ? edit->selectionStart() : edit->cursorPosition();
    FEditRemoved = edit->hasSelectedText() ? edit->selectedText().size() : 0;
  }

  // The part of `now` that the last edit inserted into `before`, as [start, end): at the noted
  // caret, over the noted selection, up to the caret; where that does not fit (text dropped
  // elsewhere), whatever differs between the common head and tail.
  std::pair<qsizetype, qsizetype> Inserted(const QString& before, const QString& now,
                                           qsizetype cursor) const {
    const qsizetype start = FEditStart, end = cursor;
    if (start >= 0 && end >= start && start + FEditRemoved <= before.size() &&
        now.size() - end == before.size() - start - FEditRemoved &&
        QStringView(now).left(start) == QStringView(before).left(start) &&
        QStringView(now).mid(end) == QStringView(before).mid(start + FEditRemoved))
      return {start, end};
    const qsizetype shorter = std::min(before.size(), now.size());
    qsizetype head = 0;
    while (head < shorter && before.at(head) == now.at(head)) ++head;
    qsizetype tail = 0;
    while (tail < shorter - head &&
           before.at(before.size() - 1 - tail) == now.at(now.size() - 1 - tail))
      ++tail;
    return {head, now.size() - tail};
  }

  // Text that reached the edit without a key press of its own (pasted, dropped, composed by an
  // input method) passes the key-press handler character by character: what the handler would
  // have swallowed when typed is dropped, so the edit holds the same text however it was entered.
  // Text set by the program (a value loaded from the catalog) is not filtered.
  void FilterInserted(QLineEdit* edit) {
    const QString now = edit->text();
    const auto [start, end] = Inserted(FLastText, now, edit->cursorPosition());
    if (start >= end) return;
    QString kept;
    bool dropped = false;
    for (qsizetype i = start; i < end; ++i) {
      const QString character(now.at(i));
      QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, character);
      if (FKeyPress(&key))
        dropped = true;
      else
        kept += character;
    }
    if (!dropped) return;
    edit->setText(now.left(start) + kept + now.mid(end));
    edit->setCursorPosition(int(start + kept.size()));
  }

  std::function<bool(QKeyEvent*)> FKeyPress;
  std::function<void()> FExit;
  QString FLastText;
  qsizetype FEditStart = 0;
  qsizetype FEditRemoved = 0;
};
}  // namespace

void OnKeyPress(QWidget* control, std::function<bool(QKeyEvent*)> handler) {
  new TEventHook(control, std::move(handler), {});
}

bool IsNonDigitKey(const QKeyEvent* event) {
  const QString text = event->text();
  if (text.isEmpty()) return false;
  const QChar c = text.at(0);
  if (c >= u'0' && c <= u'9') return false;
  // Editing keys pass: Backspace ("\b"), Delete (U+007F on X11 desktops), Enter, Escape. A
  // character that came without a key of its own (pasted, dropped: key 0) passes only as a
  // digit, so a pasted tab or NUL stays out.
  return event->key() == 0 || c.category() != QChar::Other_Control;
}

void OnExit(QWidget* control, std::function<void()> handler) {
  new TEventHook(control, {}, std::move(handler));
}

void FocusControl(QWidget* control) {
  for (QWidget* w = control; w && !w->isWindow(); w = w->parentWidget()) {
    if (auto* stack = qobject_cast<QStackedWidget*>(w->parentWidget())) {
      if (auto* tabs = qobject_cast<QTabWidget*>(stack->parentWidget()))
        tabs->setCurrentWidget(w);
      else
        stack->setCurrentWidget(w);
    }
  }
  control->setFocus(Qt::OtherFocusReason);
}
void SetApplication(THost* host) {
  gApplication = host;
}

// ---------------------------------------------------------------------------------------------
TChangeEventClass::TChangeEventClass(QWidget* form) : QObject(form), FForm(form) {}

void TChangeEventClass::ChangeComponent() {
  const QMetaMethod slot = metaObject()->method(metaObject()->indexOfSlot("Change()"));
  for (QWidget* w : FForm->findChildren<QWidget*>()) {
    if (w->isWindow()) continue;  // another form (a preview) owned by this one
    const QMetaObject* mo = w->metaObject();
    for (const char* sig : kChangeSignals) {
      const int idx = mo->indexOfSignal(sig);
      if (idx >= 0) connect(w, mo->method(idx), this, slot, Qt::UniqueConnection);
    }
  }
}

// ---------------------------------------------------------------------------------------------
TKelBaseFrm::TKelBaseFrm(QWidget* self) : FSelf(self) {}

TKelBaseFrm::~TKelBaseFrm() = default;

int TKelBaseFrm::SetParentControl(QWidget* parentControl) {
  FParentControl = parentControl;
  FDBInfo = Application() ? Application()->CurrentDBInfo() : nullptr;
  InitLoad();
  return 1;
}

QString TKelBaseFrm::KelIniFile() const {
  QString name = FSelf->objectName();
  return name + QStringLiteral(".sfm");
}

void TKelBaseFrm::KelFrmIniLoad() {
  if (!FIniSave || !Application()) return;
  QSettings ini(Application()->SettingsDir() + u'/' + KelIniFile(), QSettings::IniFormat);
  const QByteArray geometry = ini.value(QStringLiteral("Form/Geometry")).toByteArray();
  if (!geometry.isEmpty()) FSelf->restoreGeometry(geometry);
}

void TKelBaseFrm::KelFrmIniSave() {
  if (!FIniSave || !Application()) return;
  QSettings ini(Application()->SettingsDir() + u'/' + KelIniFile(), QSettings::IniFormat);
  ini.setValue(QStringLiteral("Form/Geometry"), FSelf->saveGeometry());
}

bool TKelBaseFrm::CheckFail(const QString& caption, QWidget* control, const QString& key) {
  if (Application())
    Application()->esMsgDBox(key, QStringList{TrimName(caption)}, TMsgDlgType::Warning, false);
  if (control) FocusControl(control);
  return false;
}

bool TKelBaseFrm::CheckFail(QLabel* label, QWidget* control, const QString& key) {
  return CheckFail(label ? label->text() : QString(), control, key);
}

void TKelBaseFrm::DisconnectControls() {
  for (QObject* child : FSelf->findChildren<QObject*>())
    QObject::disconnect(child, nullptr, FSelf, nullptr);
}

bool LinkFlag(TXLink* link, const QString& name) {
  try {
    return StrToBool(link->ParamByString(name));
  } catch (const EKelError&) {
    return false;
  }
}

bool TKelBaseFrm::CheckName(const QString& caption, QWidget* control, const QString& name,
                            TNameKind kind) {
  if (IsValidName(name, kind)) return true;
  return CheckFail(caption, control, QStringLiteral("Acm.Valid The"));
}

bool TKelBaseFrm::CheckName(QLabel* label, QWidget* control, const QString& name, TNameKind kind) {
  return CheckName(label ? label->text() : QString(), control, name, kind);
}

void TKelBaseFrm::FillSchemaCombo(QComboBox* combo) {
  combo->clear();
  if (!FDBInfo) return;
  combo->addItems(FDBInfo->UserList());
  SelectComboText(combo, FDBInfo->UserName());
}

void TKelBaseFrm::SelectComboText(QComboBox* combo, const QString& text) {
  // Oracle names are matched as a drop-down list matches its items: whole text, any letter case.
  combo->setCurrentIndex(combo->findText(text, Qt::MatchFixedString));
}

void TKelBaseFrm::UpperCaseItems(QComboBox* combo) {
  for (int i = 0; i < combo->count(); ++i) combo->setItemText(i, combo->itemText(i).toUpper());
}

void TKelBaseFrm::RefreshOwnedPreview() {
  if (auto* preview =
          FSelf->findChild<TViewSqlFrm*>(QStringLiteral("ViewSqlFrm"), Qt::FindDirectChildrenOnly))
    preview->SetSqlText(FSqlMemo.Text());
}

void TKelBaseFrm::Guarded(const std::function<void()>& fn) {
  RunGuarded(fn);
}

void RunGuarded(const std::function<void()>& fn) {
  try {
    fn();
  } catch (const std::exception& e) {
    if (Application())
      Application()->esMsgBox(QString::fromUtf8(e.what()), TMsgDlgType::Error, false);
  } catch (...) {
    if (Application())
      Application()->esMsgBox(QStringLiteral("Unexpected error"), TMsgDlgType::Error, false);
  }
}

void TKelBaseFrm::StartChangeTracker() {
  FreeTracker();
  FTracker = new TChangeEventClass(FSelf);
  FTracker->ChangeComponent();
}

void TKelBaseFrm::FreeTracker() {
  delete FTracker.data();
}

bool TKelBaseFrm::CloseQuery() {
  if (FTracker && FTracker->Changed() && Application()) {
    const int answer =
        Application()->esMsgDBox(QStringLiteral("CancelWork"), TMsgDlgType::Confirmation,
                                 TMsgDlgButtons::YesNoCancel, false);
    if (answer != mrYes) return false;
  }
  return true;
}

bool TKelBaseFrm::ExecuteSqlMemo() {
  const QString text = FSqlMemo.Text();
  if (Trim(text).isEmpty() || !Application()) return false;
  if (Application()->esScriptExecute(FSelf, FDBInfo, text) != 0) return false;
  if (FTracker) FTracker->SetChanged(false);
  return true;
}

namespace {
// No edit of a form takes a control character other than tab and line breaks, however the
// text arrives (typed, pasted, dropped); text the program sets is left as it is.
void BanControlCharacters(QWidget* form) {
  for (QLineEdit* edit : form->findChildren<QLineEdit*>())
    QObject::connect(edit, &QLineEdit::textEdited, edit, [edit] {
      const QString text = edit->text();
      const QString clean = StripBannedControls(text);
      if (clean == text) return;
      const int caret = edit->cursorPosition();
      const int removedBefore = int(caret - StripBannedControls(text.left(caret)).size());
      edit->setText(clean);
      edit->setCursorPosition(caret - removedBefore);
    });
}

// Buttons never act as the dialog's default: Enter in an edit must not run the statement.
void ClearDefaultButtons(QWidget* form) {
  for (QPushButton* b : form->findChildren<QPushButton*>()) {
    b->setAutoDefault(false);
    b->setDefault(false);
  }
}
}  // namespace

// ---------------------------------------------------------------------------------------------
void TKelBaseFrm::RunViewSql() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(FSelf, SqlMemo().Text());
  });
}

bool TKelBaseFrm::RunOk() {
  bool executed = false;
  Guarded([&] {
    if (!Validate()) return;
    BuildSql();
    executed = ExecuteSqlMemo();
  });
  return executed;
}

bool TKelBaseFrm::RunFirstShow(const std::function<void()>& handler) {
  ClearDefaultButtons(FSelf);
  BanControlCharacters(FSelf);
  KelFrmIniLoad();
  bool failed = true;
  Guarded([&] {
    handler();
    failed = false;
  });
  if (!failed) StartChangeTracker();
  return !failed;
}

// ---------------------------------------------------------------------------------------------
TKelDllDBDlgFrm::TKelDllDBDlgFrm(QWidget* owner) : QDialog(owner), TKelBaseFrm(this) {}

TKelDllDBDlgFrm::~TKelDllDBDlgFrm() = default;

void TKelDllDBDlgFrm::SetModalResult(int modalResult) {
  if (!KelDllDBDlgFrmClose()) return;
  KelFrmIniSave();
  done(modalResult);
}

bool TKelDllDBDlgFrm::KelDllDBDlgFrmClose() {
  if (!CloseQuery()) return false;
  FreeTracker();
  return true;
}

void TKelDllDBDlgFrm::KelDllDBDlgFrmKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) SetModalResult(mrCancel);
}

void TKelDllDBDlgFrm::ViewSqlBtnClick() {
  RunViewSql();
}

void TKelDllDBDlgFrm::OkBtnClick() {
  if (!RunOk()) return;
  Guarded([this] {
    AfterExecute();
    SetModalResult(mrOk);
  });
}

void TKelDllDBDlgFrm::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (FShown) return;
  FShown = true;
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
  // An object that could not be loaded: a half-filled dialog must not build statements.
  if (!RunFirstShow([this] { KelDllDBDlgFrmShow(); }))
    QTimer::singleShot(0, this, [this] { done(mrCancel); });
}

void TKelDllDBDlgFrm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    KelDllDBDlgFrmKeyDown(event);
    return;
  }
  KelDllDBDlgFrmKeyDown(event);
  QDialog::keyPressEvent(event);
}

bool TKelDllDBDlgFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched->isWidgetType() &&
      static_cast<QWidget*>(watched)->window() == this) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
      KelDllDBDlgFrmKeyDown(key);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void TKelDllDBDlgFrm::closeEvent(QCloseEvent* event) {
  if (!isVisible()) {
    event->accept();
    return;
  }
  if (!KelDllDBDlgFrmClose()) {
    event->ignore();
    return;
  }
  KelFrmIniSave();
  event->accept();
  done(mrCancel);
}

// ---------------------------------------------------------------------------------------------
TKelDllChildFrm::TKelDllChildFrm(QWidget* owner) : QWidget(owner), TKelBaseFrm(this) {
  setAttribute(Qt::WA_DeleteOnClose);
}

TKelDllChildFrm::~TKelDllChildFrm() = default;

void TKelDllChildFrm::ViewSqlBtnClick() {
  RunViewSql();
}

void TKelDllChildFrm::OkBtnClick() {
  if (RunOk()) close();
}

bool TKelDllChildFrm::KelDllChildFrmClose() {
  if (!CloseQuery()) return false;
  FreeTracker();
  return true;
}

void TKelDllChildFrm::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (FShown) return;
  FShown = true;
  // Key preview for Escape, as the modal base has it.
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
  if (!RunFirstShow([this] { KelDllChildFrmShow(); }))
    QTimer::singleShot(0, this, [this] { close(); });
}

void TKelDllChildFrm::closeEvent(QCloseEvent* event) {
  if (!KelDllChildFrmClose()) {
    event->ignore();
    return;
  }
  setCloseState(1);
  KelFrmIniSave();
  event->accept();
}

void TKelDllChildFrm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

bool TKelDllChildFrm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched->isWidgetType() &&
      isAncestorOf(static_cast<QWidget*>(watched))) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape && key->modifiers() == Qt::NoModifier) {
      close();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace kel
