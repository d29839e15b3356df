// The index dialog: its catalog queries on the demo database, the column lists and their
// buttons, and the alter text built from a loaded index.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "host/core/RecordingHost.h"
#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateIndexFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

template <class T>
T* Child(QWidget* form, const char* name) {
  T* w = form->findChild<T*>(QString::fromLatin1(name));
  if (!w) ADD_FAILURE() << "no control " << name;
  return w;
}

QStringList Rows(TKelTreeList* list, int col) {
  QStringList out;
  for (int r = 0; r < list->RowCount(); ++r) out << list->Cell(r, col);
  return out;
}

class Index : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("INDEX", &OpenModal<TCreateIndexFrm>); }
};

const char* const kTableFixture = R"({
  'connection': {'user': 'APP', 'users': ['APP'], 'tables': {'APP': ['T']}},
  'catalog': {'SchTableNrn.Column': [
    {'Column': 'C', 'Data Type': 'NUMBER', 'Length': ''},
    {'Column': 'A', 'Data Type': 'VARCHAR2', 'Length': '30'},
    {'Column': 'B', 'Data Type': 'DATE', 'Length': ''}]}
})";

}  // namespace

TEST(IndexText, KilobytesInTheShortestFloatForm) {
  EXPECT_EQ(IndexBytesToKb("65536"), "64");
  EXPECT_EQ(IndexBytesToKb("64000"), "62.5");
  EXPECT_EQ(IndexBytesToKb(" "), "");
}

TEST(IndexCatalog, EveryKeyRunsOnTheDemoDatabase) {
  host::TConnection* db = test::DemoConnection();
  TKelQuery q(db);
  q.LoadSQL("CreateIndexFrn.Cluster");
  q.ParamByName("P_OWN") = "SALES";
  q.Open();
  ASSERT_FALSE(q.Eof());
  EXPECT_EQ(q.FieldByName("CLUSTER_NAME"), "CUSTOMER_CLU");

  q.LoadSQL("CreateIndexFrn.ClusterColumn");
  q.ParamByName("P_OWN") = "SALES";
  q.ParamByName("P_CLUSTER") = "CUSTOMER_CLU";
  q.Open();
  ASSERT_EQ(q.RecordCount(), 1);
  EXPECT_EQ(q.FieldByName("column_name"), "CUSTOMER_ID");
  EXPECT_EQ(q.FieldByName("data_type"), "NUMBER");

  q.LoadSQL("CreateIndexFrn.Alter.001");
  q.ParamByName("P_OWN") = "APP";
  q.ParamByName("P_INDEX") = "AUDIT_LOG_CHANGED_IX";
  q.Open();
  ASSERT_EQ(q.RecordCount(), 1);
  EXPECT_EQ(q.FieldByName("DEGREE"), "4");
  EXPECT_EQ(q.FieldByName("TABLE_TYPE"), "TABLE");
  EXPECT_EQ(q.FieldByName("BUFFER_POOL"), "RECYCLE");
  for (const char* c :
       {"TABLESPACE_NAME", "TABLE_OWNER", "TABLE_NAME", "UNIQUENESS", "INDEX_TYPE", "LOGGING",
        "INITIAL_EXTENT", "NEXT_EXTENT", "PCT_INCREASE", "MIN_EXTENTS", "MAX_EXTENTS", "PCT_FREE",
        "INI_TRANS", "MAX_TRANS", "FREELISTS", "FREELIST_GROUPS"})
    EXPECT_TRUE(q.HasField(c)) << c;

  // The expression column of a function-based index has no type but keeps its place.
  q.LoadSQL("CreateIndexFrn.Alter.003");
  q.ParamByName("P_IDX_OWNER") = "APP";
  q.ParamByName("P_IDX") = "EMP_NAME_JOB_IX";
  q.ParamByName("P_TBL_OWNER") = "APP";
  q.ParamByName("P_TBL") = "EMP";
  q.Open();
  ASSERT_EQ(q.RecordCount(), 2);
  EXPECT_EQ(q.FieldByName("COLUMN_NAME"), "ENAME");
  EXPECT_EQ(q.FieldByName("DATA_TYPE"), "VARCHAR2");
  q.Next();
  EXPECT_EQ(q.FieldByName("DESCEND"), "DESC");
  EXPECT_EQ(q.FieldByName("DATA_TYPE"), "");
}

TEST_F(Index, ColumnMovesKeepTheTableListSortedAndDriveTheButtons) {
  test::TTestHost host(test::Json(kTableFixture));
  TXLink link;
  link.SetVerb("TableCreate");
  link.AddParams("P_Schema", "APP");
  link.AddParams("P_TblName", "T");
  host.Open("INDEX", &link, [](QWidget* form) {
    auto* tv1 = Child<TKelTreeList>(form, "TableTV1");
    auto* tv2 = Child<TKelTreeList>(form, "TableTV2");
    auto* up = Child<QToolButton>(form, "TableUpperBtn");
    auto* down = Child<QToolButton>(form, "TableLowerBtn");
    EXPECT_EQ(Rows(tv1, 0), QStringList({"A", "B", "C"}));
    EXPECT_EQ(Rows(tv1, 1), QStringList({"VARCHAR2(30)", "DATE", "NUMBER"}));
    EXPECT_FALSE(Child<QToolButton>(form, "TableLeftBtn")->isEnabled());

    tv1->SetFocusedRow(2);
    Child<QToolButton>(form, "TableRightBtn")->click();  // C
    EXPECT_FALSE(up->isEnabled());
    EXPECT_FALSE(down->isEnabled());  // a single column has no order to change
    Child<QToolButton>(form, "TableRightAllBtn")->click();
    EXPECT_EQ(Rows(tv2, 1), QStringList({"C", "A", "B"}));
    EXPECT_FALSE(Child<QToolButton>(form, "TableRightBtn")->isEnabled());
    tv2->SetFocusedRow(0);
    EXPECT_FALSE(up->isEnabled());
    EXPECT_TRUE(down->isEnabled());
    tv2->SetFocusedRow(2);
    EXPECT_TRUE(up->isEnabled());
    EXPECT_FALSE(down->isEnabled());
    up->click();
    EXPECT_EQ(Rows(tv2, 1), QStringList({"C", "B", "A"}));
    EXPECT_EQ(tv2->FocusedRow(), 1);

    // Desc through the check-box cell's editor; moving the column back drops the mark.
    EXPECT_TRUE(tv2->EditCell(1, 0, "True"));
    QString why;
    EXPECT_FALSE(tv2->EditCell(1, 1, "X", &why));  // names are not editable
    Child<QLineEdit>(form, "IndexNameEd")->setText("T_IX");
    Child<QPushButton>(form, "ViewSqlBtn")->click();
    tv2->SetFocusedRow(1);
    Child<QToolButton>(form, "TableLeftBtn")->click();
    EXPECT_EQ(Rows(tv1, 0), QStringList({"B"}));
    tv1->SetFocusedRow(0);
    Child<QToolButton>(form, "TableRightBtn")->click();
    EXPECT_EQ(tv2->Cell(2, 0), "False");
    EXPECT_EQ(Child<QComboBox>(form, "KeyValueCmb")->count(), 3);
    Child<QToolButton>(form, "TableLeftAllBtn")->click();
    EXPECT_EQ(Rows(tv1, 0), QStringList({"A", "B", "C"}));
    EXPECT_EQ(Child<QComboBox>(form, "KeyValueCmb")->count(), 0);
  });
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(),
            "CREATE INDEX APP.T_IX \r\nON APP.T \r\n(\r\n\t\"C\",\"B\" Desc,\"A\"\r\n)\r\n");
}

TEST_F(Index, AlterComparesWithTheLoadedRowAndSplitsTheRebuild) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP'], 'tablespaces': ['IDX', 'USERS'],
                   'tables': {'APP': ['OTHER']}},
    'catalog': {
      'CreateIndexFrn.Alter.001': [{'TABLESPACE_NAME': 'IDX', 'TABLE_TYPE': 'TABLE',
        'TABLE_OWNER': 'APP', 'TABLE_NAME': 'T', 'UNIQUENESS': 'UNIQUE', 'INDEX_TYPE': 'NORMAL',
        'DEGREE': '1', 'LOGGING': 'YES', 'INITIAL_EXTENT': '64000', 'NEXT_EXTENT': '',
        'PCT_INCREASE': '', 'MIN_EXTENTS': '1', 'MAX_EXTENTS': '2147483645',
        'BUFFER_POOL': 'DEFAULT', 'PCT_FREE': '10', 'INI_TRANS': '2', 'MAX_TRANS': '255',
        'FREELISTS': '', 'FREELIST_GROUPS': ''}],
      'CreateIndexFrn.Alter.003': [{'DESCEND': 'DESC', 'COLUMN_NAME': 'A', 'DATA_TYPE': 'DATE'}],
      'SchTableNrn.Column': [{'Column': 'A', 'Data Type': 'DATE', 'Length': ''}]}
  })"));
  TXLink link;
  link.SetVerb("Alter");
  link.AddParams("IsAlter", "True");
  link.AddParams("P_Schema", "app");
  link.AddParams("P_ObjName", "t_ix");
  host.Open("INDEX", &link, [](QWidget* form) {
    auto* dlg = static_cast<TCreateIndexFrm*>(form);
    EXPECT_EQ(form->windowTitle(), "Alter Index - APP.T_IX");
    EXPECT_EQ(Child<QLineEdit>(form, "InitialExtentEd")->text(), "62.5");
    EXPECT_TRUE(Child<QCheckBox>(form, "UniqueChk")->isChecked());
    // The index's table is shown even when the host does not list it for its owner.
    EXPECT_EQ(Child<QComboBox>(form, "TableIndexTblCmb")->currentText(), "T");
    EXPECT_EQ(Child<TKelTreeList>(form, "TableTV2")->Cell(0, 0), "True");
    EXPECT_FALSE(Child<QWidget>(form, "KeyCompressionChk")->isEnabled());
    // No next extent is stored: a typed one is not compared and not written.
    Child<QLineEdit>(form, "NextExtentEd")->setText("128");
    Child<QPushButton>(form, "ViewSqlBtn")->click();
    EXPECT_EQ(dlg->PreviewText(), "");
    // A serial index cannot be made parallel here.
    Child<QCheckBox>(form, "ParallelChk")->setChecked(true);
    Child<QComboBox>(form, "LoggingCmb")->setCurrentIndex(0);
    Child<QLineEdit>(form, "PercentFreeEd")->setText("5");
    Child<QPushButton>(form, "ViewSqlBtn")->click();
    EXPECT_EQ(dlg->PreviewText(), "ALTER INDEX APP.T_IX REBUILD \r\nPCTFREE 5\r\n");
    Child<QComboBox>(form, "LoggingCmb")->setCurrentIndex(2);
    Child<QComboBox>(form, "TableSpaceCmb")->setCurrentText("USERS");
    Child<QPushButton>(form, "ViewSqlBtn")->click();
    EXPECT_EQ(dlg->PreviewText(),
              "ALTER INDEX APP.T_IX\r\nNOLOGGING\r\n;\r\nALTER INDEX APP.T_IX REBUILD \r\n"
              "TABLESPACE USERS\r\nPCTFREE 5\r\n");
    Child<QPushButton>(form, "OkBtn")->click();
  });
  const auto runs = host.EventsOf("execute");
  ASSERT_EQ(runs.size(), 2);
  EXPECT_EQ(runs[0].value("text").toString(), "ALTER INDEX APP.T_IX\r\nNOLOGGING\r\n");
}
