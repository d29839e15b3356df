// The grid component: editor kinds and their limits, commit signal, next- and previous-cell
// navigation, row and column sizes, the current cell's mark; the spin edit's width.
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QVBoxLayout>

#include "plugin/KelSpinEdit.h"
#include "plugin/KelTreeList.h"

using namespace kel;

namespace {
void AddColumns(TKelTreeList& list) {
  list.AddColumn({.Name = "Name", .Caption = "Column"});
  list.AddColumn({.Name = "Type",
                  .Caption = "Data Type",
                  .Editor = TCellEditor::PickList,
                  .Items = {"DATE", "NUMBER"}});
  list.AddColumn({.Name = "Size",
                  .Caption = "Size",
                  .Editor = TCellEditor::Spin,
                  .Max = 9999,
                  .Editable = false});
  list.AddColumn(
      {.Name = "Scale", .Caption = "Scale", .Editor = TCellEditor::Spin, .Min = -84, .Max = 127});
  list.AddColumn({.Name = "Pk", .Caption = "Primary Key", .Editor = TCellEditor::Check});
  list.AddColumn({.Name = "Id", .Caption = "ColumnID", .Visible = false});
}

struct Grid : ::testing::Test {
  Grid() {
    AddColumns(list);
    list.AddRow();
    list.AddRow();
  }
  TKelTreeList list;
};

void Key(QWidget* w, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(w, &press);
}
}  // namespace

TEST_F(Grid, EditCellEnforcesEachEditorKindAndSignalsEachCommit) {
  QSignalSpy changed(&list, &TKelTreeList::EditValueChanged);
  QString why;
  EXPECT_TRUE(list.EditCell(0, 1, "NUMBER", &why));
  EXPECT_FALSE(list.EditCell(0, 1, "VARCHAR2", &why));  // not in the fixed list
  EXPECT_FALSE(list.EditCell(0, 2, "10", &why));        // read-only column
  list.SetColumnEditable(2, true);
  EXPECT_TRUE(list.EditCell(0, 2, "10", &why));
  EXPECT_FALSE(list.EditCell(0, 2, "10000", &why));  // above the range
  EXPECT_EQ(why, "\"10000\" is not a whole number from 0 to 9999");
  EXPECT_TRUE(list.EditCell(0, 3, "-84", &why));
  EXPECT_FALSE(list.EditCell(0, 3, "-85", &why));
  EXPECT_FALSE(list.EditCell(0, 3, "1.5", &why));
  EXPECT_TRUE(list.EditCell(0, 4, "true", &why));
  EXPECT_EQ(list.Cell(0, 4), "True");  // check boxes hold "True" / "False"
  EXPECT_FALSE(list.EditCell(0, 4, "yes", &why));
  EXPECT_FALSE(list.EditCell(0, 5, "7", &why));  // hidden column
  EXPECT_FALSE(list.EditCell(5, 0, "A", &why));  // no such row
  EXPECT_EQ(changed.count(), 4);
  EXPECT_EQ(list.RowCells(0), QStringList({"", "NUMBER", "10", "-84", "True", ""}));
  EXPECT_EQ(list.FocusedRow(), 0);
}

TEST_F(Grid, EnterCommitsTheEditorAndMovesToTheNextEditableCell) {
  list.show();
  QSignalSpy changed(&list, &TKelTreeList::EditValueChanged);
  list.setCurrentItem(list.topLevelItem(0), 0);
  list.editItem(list.topLevelItem(0), 0);
  auto* editor = list.findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  editor->setText("AMOUNT");
  Key(editor, Qt::Key_Return);
  EXPECT_EQ(list.Cell(0, 0), "AMOUNT");
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(list.currentColumn(), 1);  // Data Type
  // Size is read-only and ColumnID hidden: from Scale the cursor goes on to Primary Key, then
  // to the next row's first cell.
  list.setCurrentItem(list.topLevelItem(0), 3);
  list.MoveToNextCell();
  EXPECT_EQ(list.currentColumn(), 4);
  list.MoveToNextCell();
  EXPECT_EQ(list.FocusedRow(), 1);
  EXPECT_EQ(list.currentColumn(), 0);
}

TEST_F(Grid, RowsAreAddedDeletedAndReadAsStrings) {
  QSignalSpy rows(&list, &TKelTreeList::RowsChanged);
  EXPECT_EQ(list.AddRow(), 2);
  list.SetCell(2, 0, "C");
  list.DeleteRow(0);
  list.DeleteRow(7);  // out of range: ignored
  EXPECT_EQ(list.RowCount(), 2);
  EXPECT_EQ(list.Cell(1, 0), "C");
  EXPECT_EQ(list.Cell(1, 99), "");
  EXPECT_EQ(list.Cell(9, 0), "");  // no such row
  EXPECT_EQ(list.Cell(-1, 0), "");
  EXPECT_EQ(rows.count(), 2);
  list.SelectRows({0, 1});
  EXPECT_EQ(list.SelectedRows(), QList<int>({0, 1}));
}

// Passing through a cell with Enter commits nothing the user did not type: an empty spin cell
// stays empty, a fixed drop-down keeps a loaded value its list does not offer.
TEST_F(Grid, EnterThroughSpinAndDropDownCellsKeepsTheirValues) {
  list.show();
  QSignalSpy changed(&list, &TKelTreeList::EditValueChanged);
  list.SetCell(0, 1, "TIMESTAMP(6)");
  for (int col : {1, 3}) {
    list.setCurrentItem(list.topLevelItem(0), col);
    list.editItem(list.topLevelItem(0), col);
    QWidget* editor = list.indexWidget(list.currentIndex());
    ASSERT_NE(editor, nullptr) << col;
    Key(editor, Qt::Key_Return);
  }
  EXPECT_EQ(list.Cell(0, 1), "TIMESTAMP(6)");
  EXPECT_EQ(list.Cell(0, 3), "");
  EXPECT_EQ(changed.count(), 0);
  // An edit through the spin editor still takes a value within the range, "007" as 7.
  QString why;
  EXPECT_TRUE(list.EditCell(0, 3, "007", &why)) << why.toStdString();
  EXPECT_EQ(list.Cell(0, 3), "7");
  EXPECT_TRUE(list.EditCell(0, 3, "", &why));
  EXPECT_EQ(list.Cell(0, 3), "");
  // Text cells take no control characters but tab and line breaks.
  EXPECT_TRUE(list.EditCell(0, 0, QString("A") + QChar(0) + "B" + QChar(0x1b), &why));
  EXPECT_EQ(list.Cell(0, 0), "AB");
}

TEST_F(Grid, TabMovesToTheNextCellAsEnterDoes) {
  list.show();
  list.setFocus();
  list.setCurrentItem(list.topLevelItem(0), 0);
  Key(&list, Qt::Key_Tab);
  EXPECT_EQ(list.currentColumn(), 1);  // the focus stays in the list
  QWidget* editor = list.indexWidget(list.currentIndex());
  ASSERT_NE(editor, nullptr);  // the drop-down is open for editing
  Key(editor, Qt::Key_Tab);    // Size is read-only: on to Scale
  EXPECT_EQ(list.currentColumn(), 3);
}

// A list between two line edits in an active window, keys sent as a desktop sends them to
// whatever has the focus (the list or its open cell editor).
struct TabGrid : ::testing::Test {
  TabGrid() {
    auto* layout = new QVBoxLayout(&window);
    before = new QLineEdit(&window);
    list = new TKelTreeList(&window);
    after = new QLineEdit(&window);
    layout->addWidget(before);
    layout->addWidget(list);
    layout->addWidget(after);
    AddColumns(*list);
    list->AddRow();
    list->AddRow();
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    list->setFocus();
  }
  void Press(Qt::Key key) {
    QWidget* target = QApplication::focusWidget();
    ASSERT_NE(target, nullptr);
    if (key == Qt::Key_Backtab)
      QTest::keyClick(target, Qt::Key_Backtab, Qt::ShiftModifier);
    else
      QTest::keyClick(target, key);
  }
  QPoint Cell() const { return {list->FocusedRow(), list->currentColumn()}; }
  bool Editing() const { return list->indexWidget(list->currentIndex()) != nullptr; }

  QWidget window;
  QLineEdit* before;
  TKelTreeList* list;
  QLineEdit* after;
};

// Editable columns are 0, 1, 3 and 4 (Size is read-only, ColumnID hidden).
TEST_F(TabGrid, TabAndShiftTabVisitEveryEditableCellBothWaysThenLeaveTheList) {
  list->setCurrentItem(list->topLevelItem(0), 0);
  const QList<QPoint> forward = {{0, 1}, {0, 3}, {0, 4}, {1, 0}, {1, 1}, {1, 3}, {1, 4}};
  for (const QPoint& cell : forward) {
    Press(Qt::Key_Tab);
    EXPECT_EQ(Cell(), cell);
    // Text, drop-down and spin cells open their editor; a check box is toggled in place.
    EXPECT_EQ(Editing(), cell.y() != 4) << cell.x() << "," << cell.y();
  }
  Press(Qt::Key_Tab);  // past the last cell: on to the next control, the list keeps its cursor
  EXPECT_TRUE(after->hasFocus());
  EXPECT_EQ(Cell(), QPoint(1, 4));

  list->setFocus();
  for (auto it = forward.rbegin() + 1; it != forward.rend(); ++it) {
    Press(Qt::Key_Backtab);
    EXPECT_EQ(Cell(), *it);
  }
  Press(Qt::Key_Backtab);
  EXPECT_EQ(Cell(), QPoint(0, 0));
  EXPECT_TRUE(Editing());
  Press(Qt::Key_Backtab);  // before the first cell: back to the previous control
  EXPECT_TRUE(before->hasFocus());
  EXPECT_FALSE(Editing());
}

// What is typed into a cell editor is committed by either key, whichever way the cursor goes.
TEST_F(TabGrid, TabAndShiftTabCommitTheOpenEditor) {
  QSignalSpy changed(list, &TKelTreeList::EditValueChanged);
  list->setCurrentItem(list->topLevelItem(1), 3);
  list->editItem(list->topLevelItem(1), 3);
  ASSERT_TRUE(Editing());
  QTest::keyClicks(QApplication::focusWidget(), "42");
  Press(Qt::Key_Backtab);
  EXPECT_EQ(list->Cell(1, 3), "42");
  EXPECT_EQ(Cell(), QPoint(1, 1));
  ASSERT_TRUE(Editing());
  Press(Qt::Key_Backtab);  // an untouched drop-down commits nothing
  EXPECT_EQ(Cell(), QPoint(1, 0));
  QTest::keyClicks(QApplication::focusWidget(), "NAME");
  Press(Qt::Key_Tab);
  EXPECT_EQ(list->Cell(1, 0), "NAME");
  EXPECT_EQ(changed.count(), 2);
}

TEST(TreeList, ALoneReadOnlyListPassesTabOn) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  auto* list = new TKelTreeList(&window);
  auto* after = new QLineEdit(&window);
  layout->addWidget(list);
  layout->addWidget(after);
  list->AddColumn({.Name = "Name", .Caption = "Name", .Editable = false});
  list->AddRows({{"A"}, {"B"}});
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  list->setFocus();
  QTest::keyClick(list, Qt::Key_Tab);
  EXPECT_TRUE(after->hasFocus());
}

TEST_F(Grid, RowsHoldACheckBoxAndALineOfTextAndColumnsTheirCaptionsAndValues) {
  list.resize(900, 300);
  list.show();
  const QStyle* style = list.style();
  const int rowHeight = list.visualItemRect(list.topLevelItem(0)).height();
  EXPECT_GE(rowHeight, style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &list) + 2);
  EXPECT_GE(rowHeight, list.fontMetrics().height() + 2);
  // The rows do not overlap: the second starts below the first.
  EXPECT_GE(list.visualItemRect(list.topLevelItem(1)).top(),
            list.visualItemRect(list.topLevelItem(0)).bottom());

  TKelTreeList narrow;
  narrow.AddColumn({.Name = "Long", .Caption = "A rather long column caption", .Width = 20});
  narrow.AddColumn({.Name = "Box", .Caption = "", .Editor = TCellEditor::Check, .Width = 2});
  narrow.AddColumn({.Name = "Last", .Caption = "Last"});
  EXPECT_GE(narrow.columnWidth(0),
            narrow.header()->fontMetrics().horizontalAdvance("A rather long column caption"));
  EXPECT_GE(narrow.columnWidth(1), style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &narrow));
  // Loaded values widen their column to show them whole, an edit too; a very long one is cut
  // at a limit instead of pushing every other column out of sight.
  const QString value = "SOME_RATHER_LONG_COLUMN_NAME_X";
  narrow.AddRows({{"A"}, {value}});
  EXPECT_GE(narrow.columnWidth(0), narrow.fontMetrics().horizontalAdvance(value));
  const int before = narrow.columnWidth(0);
  narrow.AddRows({{"SHORT"}});
  EXPECT_EQ(narrow.columnWidth(0), before);  // never narrowed
  narrow.SetCell(0, 0, QString(500, u'W'));
  EXPECT_GT(narrow.columnWidth(0), before);
  EXPECT_LE(narrow.columnWidth(0), 400);
}

// The current cell is framed apart from the rest of its highlighted row.
TEST_F(Grid, TheCurrentCellIsMarkedWithinItsRow) {
  list.resize(900, 300);
  list.show();
  list.setFocus();
  list.setCurrentItem(list.topLevelItem(0), 1);
  auto pixel = [this](int col, QPoint at) {
    const QImage image = list.viewport()->grab().toImage();
    const QRect cell = list.visualRect(list.model()->index(0, col));
    const qreal ratio = image.devicePixelRatio();
    return image.pixelColor(QPoint(cell.left() + at.x(), cell.top() + at.y()) * ratio);
  };
  const QPoint edge(1, list.visualItemRect(list.topLevelItem(0)).height() / 2);
  // Column 1 (current) and column 3 (same row, empty) differ at the left edge ...
  EXPECT_NE(pixel(1, edge), pixel(3, edge));
  // ... and once the cursor moves on, the mark moves with it.
  list.setCurrentItem(list.topLevelItem(0), 3);
  EXPECT_EQ(pixel(1, edge), pixel(0, edge));
  EXPECT_NE(pixel(3, edge), pixel(0, edge));
}

// A value longer than the spin edit's usual eight digits widens its minimum size, so a layout
// never cuts it to its last digits.
TEST(SpinEdit, TheMinimumWidthHoldsTheWholeValue) {
  TKelSpinEdit spin;
  const int empty = spin.minimumSizeHint().width();
  spin.SetText("1000000");
  EXPECT_EQ(spin.minimumSizeHint().width(), empty);  // within the eight digits
  EXPECT_GE(spin.minimumSizeHint().width(),
            spin.fontMetrics().horizontalAdvance("1000000") +
                spin.style()->pixelMetric(QStyle::PM_SpinBoxFrameWidth) * 2);
  spin.SetText("123456789012345678901234");
  EXPECT_GE(spin.minimumSizeHint().width(),
            empty + spin.fontMetrics().horizontalAdvance("1234567890123456"));
  EXPECT_GE(spin.sizeHint().width(), spin.minimumSizeHint().width());
}
