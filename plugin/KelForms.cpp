#include "plugin/KelForms.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QPushButton>
#include <QSettings>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTimer>

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

  std::function<bool(QKeyEvent*)> FKeyPress;
  std::function<void()> FExit;
};
}  // namespace

void OnKeyPress(QWidget* control, std::function<bool(QKeyEvent*)> handler) {
  new TEventHook(control, std::move(handler), {});
}

bool IsNonDigitKey(const QKeyEvent* event) {
  const QString text = event->text();
  if (text.isEmpty()) return false;
  const QChar c = text.at(0);
  return c.unicode() >= u' ' && !(c >= u'0' && c <= u'9');
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

void TKelBaseFrm::FillSchemaCombo(QComboBox* combo) {
  combo->clear();
  if (!FDBInfo) return;
  combo->addItems(FDBInfo->UserList());
  SelectComboText(combo, FDBInfo->UserName());
}

void TKelBaseFrm::SelectComboText(QComboBox* combo, const QString& text) {
  combo->setCurrentIndex(combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

void TKelBaseFrm::RefreshOwnedPreview() {
  if (auto* preview =
          FSelf->findChild<TViewSqlFrm*>(QStringLiteral("ViewSqlFrm"), Qt::FindDirectChildrenOnly))
    preview->SetSqlText(FSqlMemo.Text());
}

void TKelBaseFrm::Guarded(const std::function<void()>& fn) {
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
// Buttons never act as the dialog's default: Enter in an edit must not run the statement.
void ClearDefaultButtons(QWidget* form) {
  for (QPushButton* b : form->findChildren<QPushButton*>()) {
    b->setAutoDefault(false);
    b->setDefault(false);
  }
}
}  // namespace

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
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, SqlMemo().Text());
  });
}

void TKelDllDBDlgFrm::OkBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (!ExecuteSqlMemo()) return;
    AfterExecute();
    SetModalResult(mrOk);
  });
}

void TKelDllDBDlgFrm::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (FShown) return;
  FShown = true;
  ClearDefaultButtons(this);
  for (QWidget* w : findChildren<QWidget*>()) w->installEventFilter(this);
  KelFrmIniLoad();
  bool failed = true;
  Guarded([&] {
    KelDllDBDlgFrmShow();
    failed = false;
  });
  if (failed) {
    // The object could not be loaded: a half-filled dialog must not build statements.
    QTimer::singleShot(0, this, [this] { done(mrCancel); });
    return;
  }
  StartChangeTracker();
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
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, SqlMemo().Text());
  });
}

void TKelDllChildFrm::OkBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (ExecuteSqlMemo()) close();
  });
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
  ClearDefaultButtons(this);
  KelFrmIniLoad();
  bool failed = true;
  Guarded([&] {
    KelDllChildFrmShow();
    failed = false;
  });
  if (failed) {
    QTimer::singleShot(0, this, [this] { close(); });
    return;
  }
  StartChangeTracker();
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

}  // namespace kel
