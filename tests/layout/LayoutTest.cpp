// Every dialog the module answers to, opened in create mode at the scale this program runs at
// (QT_SCALE_FACTOR; ctest runs it at 1 and 2): texts of labels and buttons fit their widths,
// header captions are whole, the texts of line and spin edits are shown whole (a seven-digit
// number in every spin edit too), tree-list rows hold a check box and a line of text, no control
// overlaps a sibling or leaves its window, and no button takes an Alt letter of the workbench's
// menu bar. The dispatch table is walked, so a dialog
// registered later is checked without a change here.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QRegularExpression>
#include <QSplitter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>
#include <functional>

#include "host/core/FixtureConnection.h"
#include "host/workbench/WorkbenchWindow.h"
#include "plugin/Dispatch.h"
#include "plugin/KelSpinEdit.h"
#include "plugin/KelTreeList.h"
#include "tests/support/TestHost.h"

namespace {

QString Describe(const QWidget* w) {
  const QString name = w->objectName().isEmpty() ? QStringLiteral("(unnamed)") : w->objectName();
  return QStringLiteral("%1 '%2'").arg(QLatin1String(w->metaObject()->className()), name);
}

// Widgets that belong to another control's inside (the editor of a spin box, the viewport and
// scroll bars of a list, the buttons of a tab bar) are that control's business.
bool Internal(const QWidget* w, const QWidget* window) {
  for (const QWidget* p = w->parentWidget(); p && p != window; p = p->parentWidget())
    if (qobject_cast<const QAbstractScrollArea*>(p) || qobject_cast<const QAbstractSpinBox*>(p) ||
        qobject_cast<const QComboBox*>(p) || qobject_cast<const QTabBar*>(p))
      return true;
  return w->objectName().startsWith(QLatin1String("qt_"));
}

QString PlainText(const QString& text) {
  QString t = text;
  if (Qt::mightBeRichText(t)) {
    QTextDocument doc;
    doc.setHtml(t);
    t = doc.toPlainText();
  }
  return t.replace(QStringLiteral("&&"), QStringLiteral("\x01"))
      .remove(u'&')
      .replace(u'\x01', u'&');
}

class TLayoutChecker {
 public:
  TLayoutChecker(QWidget* window, QString dialog) : FWindow(window), FDialog(std::move(dialog)) {}

  QStringList Check() {
    const QList<QWidget*> all = FWindow->findChildren<QWidget*>();
    for (QWidget* w : all) {
      if (w->isWindow() || !w->isVisibleTo(FWindow)) continue;
      if (auto* header = qobject_cast<QHeaderView*>(w)) CheckHeader(header);
      if (auto* edit = qobject_cast<QLineEdit*>(w)) CheckEditText(edit);
      if (auto* list = qobject_cast<kel::TKelTreeList*>(w)) CheckRows(list);
      if (Internal(w, FWindow)) continue;
      if (auto* label = qobject_cast<QLabel*>(w)) CheckLabel(label);
      if (auto* button = qobject_cast<QAbstractButton*>(w)) CheckButton(button);
      CheckInsideWindow(w);
      CheckSiblings(w);
    }
    return FFaults;
  }

  // Gives every empty or short spin edit a seven-digit value and checks that it is shown whole
  // even when a layout gives the spin edit no more than its minimum width.
  QStringList CheckLongNumbers() {
    FFaults.clear();
    for (auto* spin : FWindow->findChildren<kel::TKelSpinEdit*>()) {
      if (!spin->isVisibleTo(FWindow)) continue;
      if (spin->Text().size() < 7) spin->SetText(QStringLiteral("1000000"));
      auto* edit = spin->findChild<QLineEdit*>();
      if (!edit) continue;
      const QSize laidOut = spin->size();
      spin->resize(spin->minimumSizeHint().width(), laidOut.height());
      CheckEditText(edit, spin);
      spin->resize(laidOut);
      CheckEditText(edit, spin);
    }
    return FFaults;
  }

  // The Alt letters of the buttons and tab captions.
  static QSet<QChar> Mnemonics(QWidget* window) {
    QSet<QChar> letters;
    auto add = [&](const QString& text) {
      const QKeySequence key = QKeySequence::mnemonic(text);
      if (!key.isEmpty()) letters.insert(QChar(key[0].key()).toUpper());
    };
    for (QAbstractButton* b : window->findChildren<QAbstractButton*>()) add(b->text());
    for (QTabBar* bar : window->findChildren<QTabBar*>())
      for (int i = 0; i < bar->count(); ++i) add(bar->tabText(i));
    return letters;
  }

 private:
  void Fault(const QWidget* w, const QString& what) {
    FFaults << QStringLiteral("%1: %2 %3").arg(FDialog, Describe(w), what);
  }

  void CheckLabel(QLabel* label) {
    if (label->wordWrap() || label->text().isEmpty() || !label->pixmap().isNull()) return;
    const int need = label->minimumSizeHint().width();
    if (label->width() < need)
      Fault(label, QStringLiteral("text \"%1\" needs %2 px, has %3")
                       .arg(PlainText(label->text()))
                       .arg(need)
                       .arg(label->width()));
    const int height = label->fontMetrics().height();
    if (label->height() < height)
      Fault(label, QStringLiteral("text \"%1\" needs %2 px of height, has %3")
                       .arg(PlainText(label->text()))
                       .arg(height)
                       .arg(label->height()));
  }

  void CheckButton(QAbstractButton* button) {
    if (button->text().isEmpty()) return;
    if (qobject_cast<QToolButton*>(button) &&
        static_cast<QToolButton*>(button)->toolButtonStyle() == Qt::ToolButtonIconOnly)
      return;
    const QSize need = button->minimumSizeHint();
    if (button->width() < need.width())
      Fault(button, QStringLiteral("text \"%1\" needs %2 px, has %3")
                        .arg(PlainText(button->text()))
                        .arg(need.width())
                        .arg(button->width()));
  }

  // The text of a line edit (or of a spin edit's inner line) fits the edit's text area.
  void CheckEditText(QLineEdit* edit, QWidget* owner = nullptr) {
    if (!owner)
      owner = edit->parentWidget() && qobject_cast<QAbstractSpinBox*>(edit->parentWidget())
                  ? edit->parentWidget()
                  : edit;
    if (edit->text().isEmpty() || edit->echoMode() != QLineEdit::Normal ||
        qobject_cast<QComboBox*>(edit->parentWidget()) || Internal(owner, FWindow))
      return;
    QStyleOptionFrame panel;
    panel.initFrom(edit);
    panel.lineWidth = edit->hasFrame()
                          ? edit->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &panel, edit)
                          : 0;
    const QRect contents = edit->style()->subElementRect(QStyle::SE_LineEditContents, &panel, edit);
    const QMargins margins = edit->textMargins();
    constexpr int kHorizontalMargin = 2;  // the line edit's own padding at each side
    const int has = contents.width() - margins.left() - margins.right() - 2 * kHorizontalMargin;
    const int need = edit->fontMetrics().horizontalAdvance(edit->text());
    if (need > has)
      Fault(owner, QStringLiteral("shows \"%1\" cut: needs %2 px, has %3")
                       .arg(edit->text())
                       .arg(need)
                       .arg(has));
  }

  // Rows at least a check box and a line of text high; check-box columns at least a box wide.
  void CheckRows(kel::TKelTreeList* list) {
    if (list->ColumnCount() == 0) return;
    const bool added = list->RowCount() == 0;
    if (added) list->AddRow();
    const QStyle* style = list->style();
    const int rowHeight = list->visualItemRect(list->topLevelItem(0)).height();
    const int box = style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, list) + 2;
    const int text = list->fontMetrics().height() + 2;
    if (rowHeight < std::max(box, text))
      Fault(list, QStringLiteral("rows are %1 px high: a check box needs %2, a line of text %3")
                      .arg(rowHeight)
                      .arg(box)
                      .arg(text));
    const int boxWidth = style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, list) + 2;
    for (int c = 0; c < list->ColumnCount(); ++c)
      if (list->Column(c).Editor == kel::TCellEditor::Check && !list->isColumnHidden(c) &&
          list->columnWidth(c) < boxWidth)
        Fault(list, QStringLiteral("check-box column %1 is %2 px wide, a box needs %3")
                        .arg(c)
                        .arg(list->columnWidth(c))
                        .arg(boxWidth));
    if (added) list->DeleteRow(0);
  }

  void CheckHeader(QHeaderView* header) {
    if (header->orientation() != Qt::Horizontal) return;
    const int margin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
    for (int i = 0; i < header->count(); ++i) {
      if (header->isSectionHidden(i)) continue;
      const QString caption =
          header->model()->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
      if (caption.isEmpty()) continue;
      const int need = header->fontMetrics().horizontalAdvance(caption) + 2 * margin;
      // The last section may stretch; it is cut only when the view gives it less.
      const int has = header->sectionSize(i);
      if (has < need)
        Fault(header->parentWidget() ? header->parentWidget() : header,
              QStringLiteral("header caption \"%1\" (column %2) needs %3 px, has %4")
                  .arg(caption)
                  .arg(i)
                  .arg(need)
                  .arg(has));
    }
  }

  void CheckInsideWindow(QWidget* w) {
    const QRect inWindow(w->mapTo(FWindow, QPoint(0, 0)), w->size());
    if (!FWindow->rect().contains(inWindow))
      Fault(w, QStringLiteral("lies outside its window: %1,%2 %3x%4 in a %5x%6 window")
                   .arg(inWindow.x())
                   .arg(inWindow.y())
                   .arg(inWindow.width())
                   .arg(inWindow.height())
                   .arg(FWindow->width())
                   .arg(FWindow->height()));
  }

  // Each pair of visible siblings once: the later one of the pair reports it.
  void CheckSiblings(QWidget* w) {
    QWidget* parent = w->parentWidget();
    if (!parent || qobject_cast<QTabWidget*>(parent) || qobject_cast<QSplitter*>(parent)) return;
    for (QObject* o : parent->children()) {
      if (o == w) return;
      auto* other = qobject_cast<QWidget*>(o);
      if (!other || other->isWindow() || !other->isVisibleTo(FWindow) || Internal(other, FWindow))
        continue;
      const QRect overlap = w->geometry().intersected(other->geometry());
      if (overlap.width() > 1 && overlap.height() > 1)
        Fault(w, QStringLiteral("overlaps %1 by %2x%3 px")
                     .arg(Describe(other))
                     .arg(overlap.width())
                     .arg(overlap.height()));
    }
  }

  QWidget* FWindow;
  QString FDialog;
  QStringList FFaults;
};

// The workbench's menu bar letters.
QSet<QChar> MenuLetters() {
  QTemporaryDir dir;
  wb::TWorkbenchWindow window(
      std::make_unique<host::TFixtureConnection>(QJsonObject(), QJsonObject()),
      {QStringLiteral("test"), dir.path()});
  QSet<QChar> letters;
  for (QAction* a : window.menuBar()->actions()) {
    const QKeySequence key = QKeySequence::mnemonic(a->text());
    if (!key.isEmpty()) letters.insert(QChar(key[0].key()).toUpper());
  }
  return letters;
}

QString ScaleName() {
  return qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR")
             ? QStringLiteral("1")
             : QString::fromLocal8Bit(qgetenv("QT_SCALE_FACTOR"));
}

// Opens every dialog of the dispatch table in create mode and hands each window it shows to
// `check` with a name for the faults; returns how many windows were checked.
int ForEachDialog(const std::function<void(QWidget*, const QString&)>& check) {
  int opened = 0;
  for (const kel::TDispatchRow& row : kel::DispatchTable()) {
    if (!row.Routine) continue;
    test::TTestHost host;
    const QString name = QStringLiteral("%1 (%2, scale %3)")
                             .arg(QLatin1String(row.DialogClass), row.Word, ScaleName());
    const QList<QWidget*> before = QApplication::topLevelWidgets();
    bool seen = false;
    host.Open(row.Word, nullptr, [&](QWidget* window) {
      seen = true;
      ++opened;
      check(window, name);
    });
    if (!seen) {
      // A preview or other window shown without the host's child list.
      for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && !before.contains(w)) {
          ++opened;
          check(w, name);
        }
    }
    for (QWidget* w : QApplication::topLevelWidgets())
      if (w->isVisible() && !before.contains(w)) w->close();
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return opened;
}

TEST(Layout, EveryDialogFitsItsTextsAndKeepsItsControlsApart) {
  const QSet<QChar> menuLetters = MenuLetters();
  ASSERT_FALSE(menuLetters.isEmpty());
  QStringList faults;
  const int opened = ForEachDialog([&](QWidget* window, const QString& name) {
    TLayoutChecker checker(window, name);
    faults << checker.Check();
    faults << checker.CheckLongNumbers();
    const QSet<QChar> letters = TLayoutChecker::Mnemonics(window);
    for (QChar c : letters)
      if (menuLetters.contains(c))
        faults << QStringLiteral("%1: the Alt+%2 of a button is also a menu of the workbench")
                      .arg(name, QString(c));
  });
  EXPECT_GT(opened, 0) << "no dialog was opened";
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

// The keys a desktop sends for Tab and Shift+Tab, to whatever has the focus.
void PressTab(bool forward) {
  QWidget* target = QApplication::focusWidget();
  if (!target) return;
  if (forward)
    QTest::keyClick(target, Qt::Key_Tab);
  else
    QTest::keyClick(target, Qt::Key_Backtab, Qt::ShiftModifier);
}

bool InList(const kel::TKelTreeList* list) {
  const QWidget* f = QApplication::focusWidget();
  return f && (f == list || list->isAncestorOf(f));
}

// Walks a list with Tab from before its first cell and back with Shift+Tab: the walk stops on
// each editable cell once and then leaves the list; faults are described.
QStringList WalkList(kel::TKelTreeList* list, const QString& name) {
  QStringList faults;
  auto fault = [&](const QString& what) {
    faults << QStringLiteral("%1: list '%2' %3").arg(name, list->objectName(), what);
  };
  int editable = 0;
  for (int c = 0; c < list->ColumnCount(); ++c)
    if (list->Column(c).Visible && list->Column(c).Editable) ++editable;
  const int cells = editable * list->RowCount();
  const int limit = cells + 3;
  for (bool forward : {true, false}) {
    list->setFocus();
    if (forward) list->setCurrentIndex(QModelIndex());
    int stops = 0;
    QSet<QPair<int, int>> visited;
    for (int i = 0; i < limit && InList(list); ++i) {
      PressTab(forward);
      if (InList(list)) {
        ++stops;
        visited.insert({list->FocusedRow(), list->currentColumn()});
      }
    }
    // Backwards the walk starts on the last cell, which is not visited again.
    const int expected = forward ? cells : std::max(cells - 1, 0);
    if (InList(list))
      fault(QStringLiteral("keeps the focus after %1 presses of %2")
                .arg(limit)
                .arg(forward ? "Tab" : "Shift+Tab"));
    else if (stops != expected || int(visited.size()) != expected)
      fault(QStringLiteral("%1 stops on %2 cells (%3 different), %4 expected")
                .arg(forward ? "Tab" : "Shift+Tab")
                .arg(stops)
                .arg(visited.size())
                .arg(expected));
  }
  return faults;
}

// Tab and Shift+Tab reach every editable cell of every tree list of every dialog and hand the
// focus on at the ends.
TEST(Layout, TabAndShiftTabWalkEveryTreeListOfEveryDialog) {
  QStringList faults;
  int walked = 0;
  ForEachDialog([&](QWidget* window, const QString& name) {
    QList<kel::TKelTreeList*> lists;
    for (auto* list : window->findChildren<kel::TKelTreeList*>())
      if (list->isVisibleTo(window) && list->isEnabled() && list->ColumnCount() > 0) lists << list;
    if (lists.isEmpty()) return;
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window)) {
      faults << name + QStringLiteral(": the window does not become active");
      return;
    }
    for (auto* list : lists) {
      // Two rows at least, so that the walk crosses from one row to the next.
      while (list->RowCount() < 2) list->AddRow();
      faults << WalkList(list, name);
      ++walked;
    }
  });
  EXPECT_GT(walked, 0) << "no tree list was walked";
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

}  // namespace
