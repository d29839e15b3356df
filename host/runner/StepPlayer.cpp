#include "host/runner/StepPlayer.h"

#include <Qsci/qsciscintilla.h>

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDialog>
#include <QFile>
#include <QGroupBox>
#include <QJsonArray>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "host/runner/TreeListAccess.h"
#include "host/runner/WidgetState.h"

// Qt's hook for delivering a key's shortcut-override first, as a key from the window system
// is delivered (exported for Qt's own test library): QShortcut and action shortcuts see it.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* o, ulong timestamp, int k,
                                               Qt::KeyboardModifiers mods, const QString& text,
                                               bool autorep, ushort count);

namespace runner {

// ---------------------------------------------------------------------------------------------
TWindowTracker::TWindowTracker() {
  qApp->installEventFilter(this);
}

TWindowTracker::~TWindowTracker() {
  if (qApp) qApp->removeEventFilter(this);
}

bool TWindowTracker::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Show && watched->isWidgetType()) {
    auto* w = static_cast<QWidget*>(watched);
    if (w->isWindow()) {
      FShown.removeAll(QPointer<QWidget>(w));
      FShown.removeAll(QPointer<QWidget>());
      FShown << w;
    }
  }
  return false;
}

bool TWindowTracker::Counts(const QWidget* w) const {
  if (!w || !w->isWindow() || !w->isVisible() || FIgnored.contains(w)) return false;
  const Qt::WindowType type = w->windowType();
  return type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet || type == Qt::Tool;
}

QList<QWidget*> TWindowTracker::OpenWindows() const {
  QList<QWidget*> out;
  for (const QPointer<QWidget>& w : FShown)
    if (Counts(w)) out << w.data();
  // Windows shown before the tracker existed come last, in no particular order.
  for (QWidget* w : QApplication::topLevelWidgets())
    if (Counts(w) && !out.contains(w)) out << w;
  return out;
}

QWidget* TWindowTracker::ActiveWindow() const {
  if (QWidget* modal = QApplication::activeModalWidget(); Counts(modal)) return modal;
  if (FChildWindows) {
    const QList<QWidget*> children = FChildWindows();
    for (auto it = children.rbegin(); it != children.rend(); ++it)
      if (Counts(*it)) return *it;
  }
  const QList<QWidget*> open = OpenWindows();
  return open.isEmpty() ? nullptr : open.last();
}

QWidget* TWindowTracker::FindWindow(const QString& name) const {
  const QList<QWidget*> open = OpenWindows();
  for (auto it = open.rbegin(); it != open.rend(); ++it)
    if ((*it)->objectName() == name) return *it;
  return nullptr;
}

// ---------------------------------------------------------------------------------------------
namespace {

// A step that cannot be played; the message is the reason.
struct EStep : std::runtime_error {
  explicit EStep(const QString& why) : std::runtime_error(why.toStdString()) {}
};

[[noreturn]] void Refuse(const QString& why) {
  throw EStep(why);
}

QString Quoted(const QString& s) {
  return QLatin1Char('"') + s + QLatin1Char('"');
}

// A step value as text: strings as they are, numbers without a fraction, Booleans as the
// module's flags.
QString TextOf(const QJsonValue& v) {
  if (v.isBool()) return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
  if (v.isDouble()) {
    const double d = v.toDouble();
    const bool whole = std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 9.0e15;
    return whole ? QString::number(qint64(d)) : QString::number(d);
  }
  return v.toString();
}

QString RequiredText(const QJsonObject& step, const char* key) {
  const QJsonValue v = step.value(QLatin1String(key));
  if (!v.isString() && !v.isDouble() && !v.isBool())
    Refuse(QStringLiteral("the step needs a \"%1\" value").arg(QLatin1String(key)));
  return TextOf(v);
}

// A JSON number as an int: whole and within the int range, checked before any conversion.
bool WholeInt(const QJsonValue& v, int* out) {
  if (!v.isDouble()) return false;
  const double d = v.toDouble();
  if (!std::isfinite(d) || d != std::floor(d) || d < std::numeric_limits<int>::min() ||
      d > std::numeric_limits<int>::max())
    return false;
  *out = int(d);
  return true;
}

int RequiredInt(const QJsonObject& step, const char* key) {
  int n = 0;
  if (!WholeInt(step.value(QLatin1String(key)), &n))
    Refuse(QStringLiteral("the step needs a whole number \"%1\" within the int range")
               .arg(QLatin1String(key)));
  return n;
}

QList<int> RequiredInts(const QJsonObject& step, const char* key) {
  const QJsonValue v = step.value(QLatin1String(key));
  if (!v.isArray())
    Refuse(QStringLiteral("the step needs a list of numbers \"%1\"").arg(QLatin1String(key)));
  QList<int> out;
  for (const QJsonValue& x : v.toArray()) {
    int n = 0;
    if (!WholeInt(x, &n))
      Refuse(QStringLiteral("\"%1\" holds something other than a whole number within the int range")
                 .arg(QLatin1String(key)));
    out << n;
  }
  return out;
}

// Activates the control's window and gives the control the focus, so that the focus-out
// handlers of the control that had it run first, as when a user clicks into another control.
void Focus(QWidget* w) {
  QWidget* window = w->window();
  if (QApplication::activeWindow() != window) {
    window->activateWindow();
    QApplication::processEvents();
  }
  w->setFocus(Qt::MouseFocusReason);
  QApplication::processEvents();
}

// A mouse click focuses only controls that take the focus on a click (tool buttons do not).
void ClickFocus(QWidget* w) {
  if (w->focusPolicy() & Qt::ClickFocus) Focus(w);
}

// The user can act only on a control that is shown and enabled.
void RequireUsable(QWidget* w) {
  if (!w->isVisibleTo(w->window()) || !w->window()->isVisible())
    Refuse(Quoted(w->objectName()) + QStringLiteral(" is not visible"));
  if (!w->isEnabled()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is disabled"));
}

// A key press and release as the window system delivers them: a shortcut takes the key first,
// else the focused control gets it and what it ignores goes on to its parents.
void SendKey(QWidget* to, int key, Qt::KeyboardModifiers modifiers, const QString& text) {
  if (qt_sendShortcutOverrideEvent(to, 0, key, modifiers, text, false, 1)) return;
  QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
  QApplication::sendEvent(to, &press);
  QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
  QApplication::sendEvent(to, &release);
}

// The key a character is typed with, and the text it carries.
int KeyOfChar(QChar c) {
  switch (c.unicode()) {
    case u'\r':
    case u'\n':
      return Qt::Key_Return;
    case u'\t':
      return Qt::Key_Tab;
    case u'\b':
      return Qt::Key_Backspace;
    case 0x1b:
      return Qt::Key_Escape;
    default:
      break;
  }
  if (c.isLetter() && c.unicode() < 0x80) return c.toUpper().unicode();
  if (c.unicode() >= 0x20 && c.unicode() < 0x7f) return c.unicode();
  return Qt::Key_unknown;
}

// The text a named key produces (Escape, Enter, Tab, Backspace, Space and printable keys).
QString TextOfKey(int key, Qt::KeyboardModifiers modifiers) {
  if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
  switch (key) {
    case Qt::Key_Escape:
      return QStringLiteral("\x1b");
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return QStringLiteral("\r");
    case Qt::Key_Tab:
      return QStringLiteral("\t");
    case Qt::Key_Backspace:
      return QStringLiteral("\b");
    case Qt::Key_Delete:
      return QString(QChar(0x7f));  // what X11 desktops send with Delete
    default:
      break;
  }
  if (key >= 0x20 && key < 0x7f) {
    const QChar c(key);
    return (modifiers & Qt::ShiftModifier) ? QString(c) : QString(c.toLower());
  }
  return {};
}

class TStep {
 public:
  TStep(TWindowTracker& windows, TStepPlayer& player, const QJsonObject& step)
      : FWindows(windows), FPlayer(player), S(step) {}

  void Play(const QString& verb) {
    if (verb == "open") return OpenStep();
    if (verb == "file") return FileStep();
    FForm = Form();
    if (verb == "set") return Set();
    if (verb == "type") return Type();
    if (verb == "check") return Check();
    if (verb == "select") return Select();
    if (verb == "click") return Click();
    if (verb == "cell") return Cell();
    if (verb == "focus") return FocusRow();
    if (verb == "selectRows") return SelectRows();
    if (verb == "dblclick") return DoubleClick();
    if (verb == "expand") return Expand();
    if (verb == "page") return Page();
    if (verb == "key") return Key();
    if (verb == "close") return Close();
    if (verb == "dump") return Dump();
    Refuse(QStringLiteral("unknown step"));
  }

 private:
  // The window the step acts on: the one it names, else the active one.
  QWidget* Form() const {
    if (S.contains("form")) {
      const QString name = S.value("form").toString();
      QWidget* w = FWindows.FindWindow(name);
      if (!w) Refuse(QStringLiteral("no open window named ") + Quoted(name));
      return w;
    }
    QWidget* w = FWindows.ActiveWindow();
    if (!w) Refuse(QStringLiteral("no dialog is open"));
    return w;
  }

  QString FormName() const {
    return FForm->objectName().isEmpty() ? QString::fromLatin1(FForm->metaObject()->className())
                                         : FForm->objectName();
  }

  // The control named by the step's verb key: the form itself, else a control of the form's
  // own window (windows owned by the form, such as its preview, are not searched).
  QWidget* Target(const QString& verb) const {
    const QString name = S.value(verb).toString();
    if (name.isEmpty()) Refuse(QStringLiteral("the step names no control"));
    if (FForm->objectName() == name) return FForm;
    QWidget* hidden = nullptr;
    for (QWidget* w : FForm->findChildren<QWidget*>(name)) {
      if (w->window() != FForm) continue;
      if (w->isVisibleTo(FForm)) return w;
      if (!hidden) hidden = w;
    }
    if (hidden) return hidden;
    Refuse(QStringLiteral("no control named %1 in %2").arg(Quoted(name), FormName()));
  }

  template <class T>
  T* TargetAs(const QString& verb, const char* kind) const {
    QWidget* w = Target(verb);
    auto* t = qobject_cast<T*>(w);
    if (!t)
      Refuse(QStringLiteral("%1 is a %2, not a %3")
                 .arg(Quoted(w->objectName()), QLatin1String(w->metaObject()->className()),
                      QLatin1String(kind)));
    return t;
  }

  void Emit(const QJsonObject& event) const {
    if (FPlayer.OnEvent) FPlayer.OnEvent(event);
  }

  // --- edits ----------------------------------------------------------------------------------
  static void ReplaceLineText(QLineEdit* edit, const QString& text) {
    edit->selectAll();
    if (text.isEmpty())
      edit->del();
    else
      edit->insert(text);
  }

  void Set() {
    QWidget* w = Target("set");
    const QString text = RequiredText(S, "text");
    RequireUsable(w);
    if (auto* edit = qobject_cast<QLineEdit*>(w)) {
      if (edit->isReadOnly()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is read-only"));
      Focus(edit);
      ReplaceLineText(edit, text);
      const bool constrained =
          edit->validator() || !edit->inputMask().isEmpty() || text.size() > edit->maxLength();
      if (constrained && edit->text() != text)
        Refuse(QStringLiteral("%1 does not take %2").arg(Quoted(w->objectName()), Quoted(text)));
    } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
      if (!combo->isEditable() || !combo->lineEdit())
        Refuse(Quoted(w->objectName()) + QStringLiteral(" is not editable: choose with select"));
      Focus(combo);
      ReplaceLineText(combo->lineEdit(), text);
    } else if (auto* picker = qobject_cast<QDateTimeEdit*>(w)) {
      SetDateTime(picker, text);
    } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(w)) {
      if (spin->isReadOnly()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is read-only"));
      auto* inner = spin->findChild<QLineEdit*>();
      if (!inner) Refuse(Quoted(w->objectName()) + QStringLiteral(" has no edit field"));
      Focus(spin);
      ReplaceLineText(inner, text);
      if (spin->text() != text)
        Refuse(QStringLiteral("%1 does not take %2").arg(Quoted(w->objectName()), Quoted(text)));
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(w)) {
      if (plain->isReadOnly()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is read-only"));
      Focus(plain);
      QTextCursor cursor = plain->textCursor();
      cursor.select(QTextCursor::Document);
      cursor.insertText(text);
      plain->setTextCursor(cursor);
    } else if (auto* rich = qobject_cast<QTextEdit*>(w)) {
      if (rich->isReadOnly()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is read-only"));
      Focus(rich);
      QTextCursor cursor = rich->textCursor();
      cursor.select(QTextCursor::Document);
      cursor.insertText(text);
      rich->setTextCursor(cursor);
    } else if (auto* sci = qobject_cast<QsciScintilla*>(w)) {
      if (sci->isReadOnly()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is read-only"));
      Focus(sci);
      sci->selectAll(true);
      if (sci->hasSelectedText()) sci->removeSelectedText();
      sci->insert(text);
    } else {
      Refuse(QStringLiteral("%1 (%2) has no text to set")
                 .arg(Quoted(w->objectName()), QLatin1String(w->metaObject()->className())));
    }
  }

  // A date picker takes "YYYY-MM-DD", a time picker "HH:MM:SS", whatever they display: the
  // value a user would pick, independent of the locale's formats.
  static void SetDateTime(QDateTimeEdit* picker, const QString& text) {
    if (picker->isReadOnly())
      Refuse(Quoted(picker->objectName()) + QStringLiteral(" is read-only"));
    const bool time = qobject_cast<QTimeEdit*>(picker) != nullptr;
    const bool date = qobject_cast<QDateEdit*>(picker) != nullptr;
    if (!time && !date)
      Refuse(Quoted(picker->objectName()) + QStringLiteral(" is neither a date nor a time picker"));
    const QString format = time ? QStringLiteral("HH:mm:ss") : QStringLiteral("yyyy-MM-dd");
    // Date and time apart: a local date-time may fall into a daylight-saving gap.
    const QTime t = QTime::fromString(text, format);
    const QDate d = QDate::fromString(text, format);
    const bool fits = time
                          ? t.isValid() && t >= picker->minimumTime() && t <= picker->maximumTime()
                          : d.isValid() && d >= picker->minimumDate() && d <= picker->maximumDate();
    if (!fits)
      Refuse(QStringLiteral("%1 does not take %2 (%3)")
                 .arg(Quoted(picker->objectName()), Quoted(text),
                      time ? QStringLiteral("HH:MM:SS") : QStringLiteral("YYYY-MM-DD")));
    Focus(picker);
    if (time)
      picker->setTime(t);
    else
      picker->setDate(d);
  }

  void Type() {
    QWidget* w = Target("type");
    const QString text = RequiredText(S, "text");
    RequireUsable(w);
    Focus(w);
    // One key per code point: a character outside the Basic Multilingual Plane is one key
    // whose text is its surrogate pair.
    for (qsizetype i = 0; i < text.size(); ++i) {
      const QChar c = text.at(i);
      QString chars(c);
      if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
        chars += text.at(++i);
      QWidget* to = QApplication::focusWidget() ? QApplication::focusWidget() : w;
      const int key = chars.size() == 1 ? KeyOfChar(c) : int(Qt::Key_unknown);
      const bool upper = chars.size() == 1 && c.isUpper();
      SendKey(to, key, upper ? Qt::ShiftModifier : Qt::NoModifier, chars);
      QApplication::processEvents();
    }
  }

  // --- choices --------------------------------------------------------------------------------
  void Check() {
    QWidget* w = Target("check");
    const QJsonValue value = S.value("value");
    if (!value.isBool()) Refuse(QStringLiteral("the step needs \"value\": true or false"));
    const bool want = value.toBool();
    RequireUsable(w);
    if (auto* box = qobject_cast<QGroupBox*>(w)) {
      if (!box->isCheckable())
        Refuse(Quoted(w->objectName()) + QStringLiteral(" has no check box"));
      if (box->isChecked() == want) return;
      Focus(box);
      box->setChecked(want);
      emit box->clicked(want);
      return;
    }
    auto* button = qobject_cast<QAbstractButton*>(w);
    if (!button || !button->isCheckable())
      Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a check box or radio button"));
    if (button->isChecked() == want) return;
    if (!want && qobject_cast<QRadioButton*>(button) && button->autoExclusive())
      Refuse(QStringLiteral("a radio button is cleared by choosing another one of its group"));
    ClickFocus(button);
    button->click();
  }

  void Select() {
    QWidget* w = Target("select");
    RequireUsable(w);
    if (auto* combo = qobject_cast<QComboBox*>(w)) {
      int index = -1;
      if (S.contains("item")) {
        const QString item = RequiredText(S, "item");
        index = combo->findText(item, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (index < 0) {
          QStringList items;
          for (int i = 0; i < combo->count(); ++i) items << Quoted(combo->itemText(i));
          Refuse(QStringLiteral("%1 has no item %2 (items: %3)")
                     .arg(Quoted(w->objectName()), Quoted(item), items.join(QStringLiteral(", "))));
        }
      } else {
        index = RequiredInt(S, "index");
        if (index < 0 || index >= combo->count())
          Refuse(QStringLiteral("%1 has %2 items, no index %3")
                     .arg(Quoted(w->objectName()), QString::number(combo->count()),
                          QString::number(index)));
      }
      Focus(combo);
      combo->setCurrentIndex(index);
      emit combo->activated(index);
      emit combo->textActivated(combo->itemText(index));
      return;
    }
    if (auto* list = qobject_cast<QListWidget*>(w)) {
      int row = -1;
      if (S.contains("item")) {
        const QList<QListWidgetItem*> found =
            list->findItems(RequiredText(S, "item"), Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (found.isEmpty())
          Refuse(QStringLiteral("%1 has no item %2")
                     .arg(Quoted(w->objectName()), Quoted(RequiredText(S, "item"))));
        row = list->row(found.first());
      } else {
        row = RequiredInt(S, "index");
        if (row < 0 || row >= list->count())
          Refuse(QStringLiteral("%1 has no item %2")
                     .arg(Quoted(w->objectName()), QString::number(row)));
      }
      Focus(list);
      list->setCurrentRow(row);
      emit list->itemClicked(list->item(row));
      return;
    }
    Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a combo box or list"));
  }

  void Click() {
    const QString name = S.value("click").toString();
    // Tool-bar actions are clicked through their action.
    if (FForm->objectName() != name && FForm->findChildren<QWidget*>(name).isEmpty()) {
      if (auto* action = FForm->findChild<QAction*>(name)) {
        if (!action->isEnabled()) Refuse(Quoted(name) + QStringLiteral(" is disabled"));
        action->trigger();
        return;
      }
    }
    QWidget* w = Target("click");
    RequireUsable(w);
    if (S.contains("index")) {
      const int index = RequiredInt(S, "index");
      const QList<QRadioButton*> radios = RadioItems(w);
      if (radios.isEmpty())
        Refuse(Quoted(w->objectName()) + QStringLiteral(" holds no radio buttons"));
      if (index < 0 || index >= radios.size())
        Refuse(QStringLiteral("%1 has %2 items, no index %3")
                   .arg(Quoted(w->objectName()), QString::number(radios.size()),
                        QString::number(index)));
      QRadioButton* radio = radios[index];
      RequireUsable(radio);
      ClickFocus(radio);
      radio->click();
      return;
    }
    auto* button = qobject_cast<QAbstractButton*>(w);
    if (!button) Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a button"));
    ClickFocus(button);
    button->click();
  }

  // --- lists and trees ------------------------------------------------------------------------
  TTreeListAccess TreeList(const QString& verb) const {
    QWidget* w = Target(verb);
    TTreeListAccess tl(w);
    if (!tl.IsValid())
      Refuse(QStringLiteral("%1 is a %2, not a tree list")
                 .arg(Quoted(w->objectName()), QLatin1String(w->metaObject()->className())));
    return tl;
  }

  static void RequireRow(QWidget* w, int row, int count) {
    if (row < 0 || row >= count)
      Refuse(QStringLiteral("%1 has %2 rows, no row %3")
                 .arg(Quoted(w->objectName()), QString::number(count), QString::number(row)));
  }

  // "column": an index, or a column's name or caption.
  int ColumnOf(const TTreeListAccess& tl) const {
    const QJsonValue v = S.value("column");
    const QString listName = Quoted(tl.Tree()->objectName());
    if (v.isString()) {
      int col = tl.ColumnByName(v.toString());
      for (int c = 0; col < 0 && c < tl.ColumnCount(); ++c)
        if (tl.Caption(c) == v.toString()) col = c;
      if (col < 0)
        Refuse(QStringLiteral("%1 has no column %2").arg(listName, Quoted(v.toString())));
      return col;
    }
    const int col = RequiredInt(S, "column");
    if (col < 0 || col >= tl.ColumnCount())
      Refuse(QStringLiteral("%1 has %2 columns, no column %3")
                 .arg(listName, QString::number(tl.ColumnCount()), QString::number(col)));
    return col;
  }

  void Cell() {
    TTreeListAccess tl = TreeList("cell");
    RequireUsable(tl.Tree());
    const int row = RequiredInt(S, "row");
    RequireRow(tl.Tree(), row, tl.RowCount());
    const int col = ColumnOf(tl);
    const QString value = RequiredText(S, "value");
    Focus(tl.Tree());
    QString why;
    if (!tl.EditCell(row, col, value, &why))
      Refuse(QStringLiteral("%1 refused %2 in row %3, column %4: %5")
                 .arg(Quoted(tl.Tree()->objectName()), Quoted(value), QString::number(row),
                      QString::number(col), why));
  }

  void FocusRow() {
    QWidget* w = Target("focus");
    RequireUsable(w);
    if (S.contains(QLatin1String("path"))) return FocusNode(w);
    const int row = RequiredInt(S, "row");
    Focus(w);
    if (TTreeListAccess tl(w); tl.IsValid()) {
      RequireRow(w, row, tl.RowCount());
      tl.SetFocusedRow(row);
    } else if (auto* view = qobject_cast<QAbstractItemView*>(w); view && view->model()) {
      RequireRow(view, row, view->model()->rowCount());
      view->setCurrentIndex(view->model()->index(row, 0));
    } else {
      Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a list"));
    }
  }

  // A node below the top level of a tree, by its path of child indexes (its parents expanded).
  void FocusNode(QWidget* w) {
    auto* tree = qobject_cast<QTreeWidget*>(w);
    if (!tree) Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a tree"));
    const QList<int> path = RequiredInts(S, "path");
    if (path.isEmpty()) Refuse(QStringLiteral("the path is empty"));
    Focus(tree);
    QTreeWidgetItem* item = nullptr;
    for (int depth = 0; depth < path.size(); ++depth) {
      const int i = path[depth];
      const int count = item ? item->childCount() : tree->topLevelItemCount();
      if (i < 0 || i >= count || (item && !item->isExpanded()))
        Refuse(QStringLiteral("%1: node %2 of the path is not shown")
                   .arg(Quoted(tree->objectName()))
                   .arg(depth));
      item = item ? item->child(i) : tree->topLevelItem(i);
    }
    tree->setCurrentItem(item);
  }

  void SelectRows() {
    TTreeListAccess tl = TreeList("selectRows");
    RequireUsable(tl.Tree());
    const QList<int> rows = RequiredInts(S, "rows");
    for (int row : rows) RequireRow(tl.Tree(), row, tl.RowCount());
    Focus(tl.Tree());
    tl.SelectRows(rows);
  }

  void DoubleClick() {
    QWidget* w = Target("dblclick");
    RequireUsable(w);
    const int row = RequiredInt(S, "row");
    auto* view = qobject_cast<QAbstractItemView*>(w);
    if (!view || !view->model()) Refuse(Quoted(w->objectName()) + QStringLiteral(" is not a list"));
    RequireRow(w, row, view->model()->rowCount());
    Focus(view);
    if (TTreeListAccess tl(w); tl.IsValid()) {
      // The list turns the item double click into its row double click.
      tl.SetFocusedRow(row);
      emit tl.Tree()->itemDoubleClicked(tl.Tree()->topLevelItem(row), 0);
      return;
    }
    const QModelIndex index = view->model()->index(row, 0);
    view->setCurrentIndex(index);
    emit view->doubleClicked(index);
  }

  void Expand() {
    auto* tree = TargetAs<QTreeWidget>("expand", "tree");
    RequireUsable(tree);
    const QList<int> path = RequiredInts(S, "path");
    if (path.isEmpty()) Refuse(QStringLiteral("the path is empty"));
    Focus(tree);
    QTreeWidgetItem* item = nullptr;
    for (int depth = 0; depth < path.size(); ++depth) {
      const int i = path[depth];
      const int count = item ? item->childCount() : tree->topLevelItemCount();
      if (i < 0 || i >= count)
        Refuse(QStringLiteral("%1: node %2 of the path has %3 children, no child %4")
                   .arg(Quoted(tree->objectName()), QString::number(depth), QString::number(count),
                        QString::number(i)));
      item = item ? item->child(i) : tree->topLevelItem(i);
      // Expanding may fill the node's children: expand each node of the path in turn.
      if (!item->isExpanded()) tree->expandItem(item);
      QApplication::processEvents();
    }
  }

  void Page() {
    auto* tabs = TargetAs<QTabWidget>("page", "page control");
    RequireUsable(tabs);
    const int index = RequiredInt(S, "index");
    if (index < 0 || index >= tabs->count())
      Refuse(QStringLiteral("%1 has %2 pages, no page %3")
                 .arg(Quoted(tabs->objectName()), QString::number(tabs->count()),
                      QString::number(index)));
    if (!tabs->isTabEnabled(index))
      Refuse(QStringLiteral("page %1 of %2 is disabled")
                 .arg(QString::number(index), Quoted(tabs->objectName())));
    ClickFocus(tabs);
    tabs->setCurrentIndex(index);
  }

  // --- keys, closing, state -------------------------------------------------------------------
  void Key() {
    const QString name = S.value("key").toString();
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
    if (name.isEmpty() || sequence.count() != 1 || sequence[0].key() == Qt::Key_unknown)
      Refuse(QStringLiteral("unknown key ") + Quoted(name));
    const QKeyCombination combo = sequence[0];
    if (QApplication::activeWindow() != FForm) {
      FForm->activateWindow();
      QApplication::processEvents();
    }
    QWidget* to = FForm->focusWidget() ? FForm->focusWidget() : FForm;
    SendKey(to, combo.key(), combo.keyboardModifiers(),
            TextOfKey(combo.key(), combo.keyboardModifiers()));
  }

  void Close() { FForm->close(); }

  void Dump() {
    QWidget* w = Target("dump");
    Emit(WidgetState(w));
  }

  // A file's text as it stands on disk (null when there is no such file).
  void FileStep() {
    const QString name = S.value("file").toString();
    if (name.isEmpty()) Refuse(QStringLiteral("the step names no file"));
    QFile f(name);
    QJsonValue text;
    if (f.open(QIODevice::ReadOnly)) text = QString::fromUtf8(f.readAll());
    Emit({{"event", "file"}, {"file", name}, {"text", text}});
  }

  void OpenStep() {
    if (!FPlayer.OnOpen) Refuse(QStringLiteral("this runner cannot open further dialogs"));
    QString why;
    if (!FPlayer.OnOpen(S, &why)) Refuse(why);
  }

  TWindowTracker& FWindows;
  TStepPlayer& FPlayer;
  const QJsonObject& S;
  QWidget* FForm = nullptr;
};

}  // namespace

const QStringList& TStepPlayer::Verbs() {
  static const QStringList verbs{"set",   "type",       "check",    "select", "click", "cell",
                                 "focus", "selectRows", "dblclick", "expand", "page",  "key",
                                 "close", "dump",       "open",     "file"};
  return verbs;
}

QString TStepPlayer::VerbOf(const QJsonObject& step) {
  for (const QString& verb : Verbs())
    if (step.contains(verb)) return verb;
  return {};
}

bool TStepPlayer::Play(const QJsonObject& step, QString* why) {
  const QString verb = VerbOf(step);
  try {
    if (verb.isEmpty()) Refuse(QStringLiteral("unknown step: none of ") + Verbs().join(", "));
    TStep(FWindows, *this, step).Play(verb);
    return true;
  } catch (const EStep& e) {
    if (why) *why = QString::fromStdString(e.what());
  } catch (const std::exception& e) {
    if (why) *why = QStringLiteral("the step failed: ") + QString::fromStdString(e.what());
  }
  return false;
}

}  // namespace runner
