// The grid component: editor kinds and their limits, commit signal, next-cell navigation.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalSpy>

#include "plugin/KelTreeList.h"

using namespace kel;

namespace {
struct Grid : ::testing::Test {
  Grid() {
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
