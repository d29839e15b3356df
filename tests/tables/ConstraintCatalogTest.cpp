// The constraint queries on the demo database, and the Constraints page loading its tables.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "host/core/RecordingHost.h"
#include "host/core/SqlConnection.h"
#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "tables/TableConstraints.h"
#include "tests/support/TestHost.h"

using namespace kel;
using P = TTableConstraintPage;

namespace {

class ConstraintCatalog : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { Connection = test::DemoConnection(); }
  void SetUp() override {
    Recorder = std::make_unique<host::TRecordingHost>(Connection, QJsonObject());
    SetApplication(Recorder.get());
  }
  void TearDown() override { SetApplication(nullptr); }

  static QStringList Column(const char* key, const QList<QPair<QString, QString>>& binds,
                            const char* column) {
    TKelQuery q(Connection);
    q.LoadSQL(key);
    for (const auto& [name, value] : binds) q.ParamByName(name) = value;
    q.Open();
    QStringList values;
    for (; !q.Eof(); q.Next()) values << q.FieldByName(column);
    return values;
  }
  // The page with APP.<table> loaded as the table dialog loads it.
  void Load(P& page, const char* table) {
    const QStringList columns = Column("CreateTableFrn.Constraint_04",
                                       {{"P_OWNER", "APP"}, {"P_TABLE", table}}, "COLUMN_NAME");
    page.SetTableColumns(columns);
    page.LoadConstraints(Connection, "APP", table, columns);
  }

  static inline host::TConnection* Connection = nullptr;
  std::unique_ptr<host::TRecordingHost> Recorder;
};

}  // namespace

TEST_F(ConstraintCatalog, QueriesReturnTheNamedColumns) {
  TKelQuery q(Connection);
  q.LoadSQL("CreateTableFrn.Constraint_01");
  q.ParamByName("P_OWNER") = "APP";
  q.ParamByName("P_TABLE") = "EMP";
  q.Open();
  for (const char* c :
       {"Generated", "Type", "Search Condition", "Ref. Owner", "Ref. Const", "Delete Rule",
        "Constraint", "Status", "Deferrable", "Deferred", "Validated", "Rely"})
    EXPECT_TRUE(q.HasField(c)) << c;
  EXPECT_EQ(Column("CreateTableFrn.Constraint_02", {{"P_NAME", "PK_DEPT"}}, "TABLE_NAME"),
            QStringList({"DEPT"}));
  EXPECT_EQ(
      Column("CreateTableFrn.Constraint_03", {{"P_CONSTRAINT", "FK_EMP_MGR"}}, "R_COLUMN_NAME"),
      QStringList({"EMPNO"}));
  // The foreign keys that would go with a dropped key: EMP's reference to DEPT's key.
  EXPECT_TRUE(Column("CreateTableFrn.Constraint_05",
                     {{"P_OWNER", "APP"}, {"P_CONSTRAINT", "PK_DEPT"}}, "CONSTRAINT_NAME")
                  .contains("FK_EMP_DEPT"));
  EXPECT_EQ(Column("CreateTableFrn.Constraint_05",
                   {{"P_OWNER", "APP"}, {"P_CONSTRAINT", "PK_DEPT"}}, "TABLE_NAME")
                .first(),
            "EMP");
  EXPECT_EQ(Column("CreateTableFrn.Constraint_04", {{"P_OWNER", "APP"}, {"P_TABLE", "DEPT"}},
                   "COLUMN_NAME")
                .first(),
            "DEPTNO");
}

TEST_F(ConstraintCatalog, LoadsKeysReferencesAndChecksButNotTheNotNullChecks) {
  QWidget sheet;
  P page(&sheet);
  Load(page, "EMP");
  TKelTreeList* list = page.ConstTreeList();
  QStringList names;
  for (int r = 0; r < list->RowCount(); ++r)
    names << list->Cell(r, P::ccType) + " " + list->Cell(r, P::ccName);
  EXPECT_EQ(names, QStringList({"PRIMARY PK_EMP", "UNIQUE UK_EMP_EMAIL", "FOREIGN FK_EMP_DEPT",
                                "FOREIGN FK_EMP_MGR", "CHECK CK_EMP_ACTIVE", "CHECK CK_EMP_COMM",
                                "CHECK CK_EMP_SAL"}));
  EXPECT_EQ(page.PrimaryKeyColumns(), QStringList({"EMPNO"}));
  EXPECT_EQ(list->RowCells(3).mid(2, 7),
            QStringList({"APP", "EMP", "", "False", "False", "True", "True"}));
  EXPECT_EQ(page.ColumnList(3) + "->" + page.ColumnList(3, true), "MGR->EMPNO");
  // Disabled, not validated, relied on.
  EXPECT_EQ(list->RowCells(5).mid(4, 7),
            QStringList({"COMM <= SAL", "True", "False", "False", "False", "True", "True"}));

  // Nothing touched, nothing to alter.
  TSqlMemo memo;
  page.AlterConstraintSql(memo, "APP", "EMP");
  EXPECT_EQ(memo.Lines(), QStringList());
}

TEST_F(ConstraintCatalog, ASystemNamedConstraintIsListedUnderItsName) {
  QWidget sheet;
  P page(&sheet);
  Load(page, "AUDIT_LOG");
  ASSERT_GE(page.ConstTreeList()->RowCount(), 1);
  EXPECT_EQ(page.ConstTreeList()->Cell(0, P::ccName), "SYS_C0011021");
  page.DropCostraintBtnClick();
  TSqlMemo memo;
  page.AlterConstraintSql(memo, "APP", "AUDIT_LOG");
  EXPECT_EQ(memo.Lines(),
            QStringList({"ALTER TABLE APP.AUDIT_LOG", "  DROP PRIMARY KEY CASCADE;"}));
}
