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
#include <QTextDocument>
#include <QToolButton>

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

TEST(Layout, EveryDialogFitsItsTextsAndKeepsItsControlsApart) {
  const QSet<QChar> menuLetters = MenuLetters();
  ASSERT_FALSE(menuLetters.isEmpty());
  const QString scale = qEnvironmentVariableIsEmpty("QT_SCALE_FACTOR")
                            ? QStringLiteral("1")
                            : QString::fromLocal8Bit(qgetenv("QT_SCALE_FACTOR"));
  int opened = 0;
  QStringList faults;
  for (const kel::TDispatchRow& row : kel::DispatchTable()) {
    if (!row.Routine) continue;
    test::TTestHost host;
    const QString name =
        QStringLiteral("%1 (%2, scale %3)").arg(QLatin1String(row.DialogClass), row.Word, scale);
    const QList<QWidget*> before = QApplication::topLevelWidgets();
    auto check = [&](QWidget* window) {
      ++opened;
      TLayoutChecker checker(window, name);
      faults << checker.Check();
      faults << checker.CheckLongNumbers();
      const QSet<QChar> letters = TLayoutChecker::Mnemonics(window);
      for (QChar c : letters)
        if (menuLetters.contains(c))
          faults << QStringLiteral("%1: the Alt+%2 of a button is also a menu of the workbench")
                        .arg(name, QString(c));
    };
    bool seen = false;
    host.Open(row.Word, nullptr, [&](QWidget* window) {
      seen = true;
      check(window);
    });
    if (!seen) {
      // A preview or other window shown without the host's child list.
      for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && !before.contains(w)) check(w);
    }
    for (QWidget* w : QApplication::topLevelWidgets())
      if (w->isVisible() && !before.contains(w)) w->close();
    QApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_GT(opened, 0) << "no dialog was opened";
  EXPECT_TRUE(faults.isEmpty()) << faults.join(u'\n').toStdString();
}

}  // namespace
