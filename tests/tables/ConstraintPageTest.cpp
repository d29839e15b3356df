#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QJsonArray>
#include <QLabel>
#include <QSignalSpy>

#include "plugin/KelTreeList.h"
#include "tables/TableConstraints.h"
#include "tests/support/TestHost.h"

using namespace kel;
using P = TTableConstraintPage;

// Readable failures: the text with its control characters spelled out.
static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").toStdString() << '"';
}

namespace {

// The constraints of HR.EMP as the dictionary reports them: a primary key with a generated
// name, a unique key, a foreign key to DEPT, a check and two NOT NULL column checks (one in the
// dictionary's quoted form, one bare).
const char* const kCatalog = R"({
  'connection': {'user': 'HR', 'users': ['HR', 'APP'], 'tables': {'HR': ['DEPT', 'EMP']}},
  'catalog': {
    'CreateTableFrn.Constraint_01': [
      {'Generated': 'GENERATED NAME', 'Type': 'Primary Key', 'Search Condition': '',
       'Ref. Owner': '', 'Ref. Const': '', 'Delete Rule': '', 'Constraint': 'SYS_C0011',
       'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE', 'Deferred': 'IMMEDIATE',
       'Validated': 'VALIDATED', 'Rely': ''},
      {'Generated': 'USER NAME', 'Type': 'Unique Key', 'Search Condition': '',
       'Ref. Owner': '', 'Ref. Const': '', 'Delete Rule': '', 'Constraint': 'EMP_MAIL_UK',
       'Status': 'DISABLED', 'Deferrable': 'DEFERRABLE', 'Deferred': 'DEFERRED',
       'Validated': 'NOT VALIDATED', 'Rely': 'RELY'},
      {'Generated': 'USER NAME', 'Type': 'Referential Integrity', 'Search Condition': '',
       'Ref. Owner': 'HR', 'Ref. Const': 'DEPT_PK', 'Delete Rule': 'CASCADE',
       'Constraint': 'EMP_DEPT_FK', 'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE',
       'Deferred': 'IMMEDIATE', 'Validated': 'VALIDATED', 'Rely': ''},
      {'Generated': 'USER NAME', 'Type': 'Check', 'Search Condition': 'SAL > 0',
       'Ref. Owner': '', 'Ref. Const': '', 'Delete Rule': '', 'Constraint': 'EMP_SAL_CK',
       'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE', 'Deferred': 'IMMEDIATE',
       'Validated': 'VALIDATED', 'Rely': ''},
      {'Generated': 'GENERATED NAME', 'Type': 'Check', 'Search Condition': '\"ID\" IS NOT NULL',
       'Constraint': 'SYS_C0012', 'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE',
       'Deferred': 'IMMEDIATE', 'Validated': 'VALIDATED', 'Rely': ''},
      {'Generated': 'GENERATED NAME', 'Type': 'Check', 'Search Condition': 'MAIL IS NOT NULL',
       'Constraint': 'SYS_C0013', 'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE',
       'Deferred': 'IMMEDIATE', 'Validated': 'VALIDATED', 'Rely': ''}],
    'CreateTableFrn.Constraint_02': [
      {'binds': {'P_NAME': 'DEPT_PK'}, 'rows': [{'TABLE_NAME': 'DEPT', 'OWNER': 'HR'}]}],
    'CreateTableFrn.Constraint_03': [
      {'binds': {'P_CONSTRAINT': 'SYS_C0011'}, 'rows': [{'COLUMN_NAME': 'ID', 'OWNER': 'HR'}]},
      {'binds': {'P_CONSTRAINT': 'EMP_MAIL_UK'},
       'rows': [{'COLUMN_NAME': 'MAIL', 'OWNER': 'APP'}, {'COLUMN_NAME': 'MAIL', 'OWNER': 'HR'},
                {'COLUMN_NAME': 'ORG', 'OWNER': 'HR'}]},
      {'binds': {'P_CONSTRAINT': 'EMP_DEPT_FK'},
       'rows': [{'COLUMN_NAME': 'DEPT_ID', 'R_COLUMN_NAME': 'ID', 'OWNER': 'HR'}]},
      {'binds': {'P_CONSTRAINT': 'ORD_EMP_FK'},
       'rows': [{'COLUMN_NAME': 'EMP_MAIL', 'R_COLUMN_NAME': 'MAIL', 'OWNER': 'APP'},
                {'COLUMN_NAME': 'EMP_ORG', 'R_COLUMN_NAME': 'ORG', 'OWNER': 'APP'}]}],
    'CreateTableFrn.Constraint_05': [
      {'binds': {'P_OWNER': 'HR', 'P_CONSTRAINT': 'EMP_MAIL_UK'},
       'rows': [{'OWNER': 'APP', 'TABLE_NAME': 'ORD', 'CONSTRAINT_NAME': 'ORD_EMP_FK',
                 'DELETE_RULE': 'SET NULL', 'DEFERRABLE': 'NOT DEFERRABLE',
                 'DEFERRED': 'IMMEDIATE', 'STATUS': 'ENABLED', 'VALIDATED': 'VALIDATED'}]},
      {'binds': {'P_OWNER': 'HR'}, 'rows': []}],
    'CreateTableFrn.Constraint_04': [
      {'binds': {'P_OWNER': 'HR', 'P_TABLE': 'DEPT'}, 'rows': [{'COLUMN_NAME': 'ID'},
                                                              {'COLUMN_NAME': 'NAME'}]}]
  }
})";

const QString CR1 = QString(CR);

class ConstraintPage : public ::testing::Test {
 protected:
  ConstraintPage() : Host(test::Json(kCatalog)), Page(&Sheet) {
    Page.SetTableName(" T ");
    Page.SetTableColumns({"A", "B", "C"});
    Page.SetSchemaList({"APP", "HR"});
  }
  TKelTreeList* List() { return Page.ConstTreeList(); }
  TKelTreeList* Pairs() { return Page.ConstConditionTreeList(); }
  void Edit(int row, int col, const QString& value) {
    QString why;
    ASSERT_TRUE(List()->EditCell(row, col, value, &why)) << why.toStdString();
  }
  void AddPair(int row, const QString& column, const QString& referenced = {}) {
    List()->SetFocusedRow(row);
    Page.AddCostraintConditionBtnClick();
    const int pair = Pairs()->RowCount() - 1;
    ASSERT_TRUE(Pairs()->EditCell(pair, P::dcTblCol, column));
    if (!referenced.isEmpty()) {
      QString why;
      ASSERT_TRUE(Pairs()->EditCell(pair, P::dcRefCol, referenced, &why)) << why.toStdString();
    }
  }
  QStringList AlterLines() {
    TSqlMemo memo;
    Page.AlterConstraintSql(memo, "HR", "EMP");
    return memo.Lines();
  }
  void LoadEmp() {
    Page.SetTableColumns({"ID", "MAIL", "DEPT_ID", "SAL"});
    Page.LoadConstraints(Host.Host().CurrentDBInfo(), "HR", "EMP", {"ID", "MAIL"});
  }

  test::TTestHost Host;
  QWidget Sheet;
  TTableConstraintPage Page;
};

}  // namespace

TEST_F(ConstraintPage, AutomaticNamesFollowTheTypeButTypedNamesStay) {
  Page.AddCostraintBtnClick();
  Page.AddCostraintBtnClick();
  // Every constraint of one type gets the same name; uniqueness is the database's business.
  EXPECT_EQ(List()->Cell(0, P::ccName), "UNI_T");
  EXPECT_EQ(List()->Cell(1, P::ccName), "UNI_T");
  EXPECT_EQ(List()->Cell(0, P::ccType), "UNIQUE");
  EXPECT_NE(List()->Cell(0, P::ccIdx), List()->Cell(1, P::ccIdx));

  Edit(0, P::ccType, "PRIMARY");
  EXPECT_EQ(List()->Cell(0, P::ccName), "PK_T");
  Edit(0, P::ccType, "CHECK");
  EXPECT_EQ(List()->Cell(0, P::ccName), "CHK_T");

  Edit(1, P::ccName, "EMP_UK");
  EXPECT_EQ(Page.findChild<QLabel*>("ConsNameLbl")->text(), "EMP_UK");
  Edit(1, P::ccType, "FOREIGN");
  EXPECT_EQ(List()->Cell(1, P::ccName), "EMP_UK");

  Edit(1, P::ccName, "");
  Edit(1, P::ccType, "CHECK");
  EXPECT_EQ(List()->Cell(1, P::ccName), "CHK_T");
}

TEST_F(ConstraintPage, OnlyOneRowCanBePrimary) {
  Page.AddCostraintBtnClick();
  Page.AddCostraintBtnClick();
  EXPECT_EQ(List()->CellItems(0, P::ccType),
            QStringList({"PRIMARY", "UNIQUE", "FOREIGN", "CHECK"}));
  Edit(0, P::ccType, "PRIMARY");
  // Each row's items follow the data: the primary row keeps the item, first; the others lose it.
  EXPECT_EQ(List()->CellItems(1, P::ccType), QStringList({"UNIQUE", "FOREIGN", "CHECK"}));
  EXPECT_EQ(List()->CellItems(0, P::ccType).first(), "PRIMARY");
  // Choosing the type on another row focuses that row first: "PRIMARY" is not offered there.
  QString why;
  EXPECT_FALSE(List()->EditCell(1, P::ccType, "PRIMARY", &why));
  EXPECT_EQ(List()->Cell(1, P::ccType), "UNIQUE");
  EXPECT_EQ(List()->Cell(1, P::ccName), "UNI_T");
}

TEST_F(ConstraintPage, TypeChangeClearsTheCellsTheNewTypeDoesNotUse) {
  Page.AddCostraintBtnClick();
  Edit(0, P::ccType, "FOREIGN");
  Edit(0, P::ccRefSchema, "HR");
  EXPECT_EQ(List()->CellItems(0, P::ccRefTable), QStringList({"DEPT", "EMP"}));
  Edit(0, P::ccRefTable, "DEPT");
  EXPECT_EQ(Pairs()->CellItems(0, P::dcRefCol), QStringList({"ID", "NAME"}));
  Edit(0, P::ccDeleteCascade, "True");
  Edit(0, P::ccRely, "True");
  // A new referenced schema empties the referenced table.
  Edit(0, P::ccRefSchema, "APP");
  EXPECT_EQ(List()->Cell(0, P::ccRefTable), "");
  Edit(0, P::ccType, "CHECK");
  EXPECT_EQ(List()->Cell(0, P::ccRefSchema), "");
  EXPECT_EQ(List()->Cell(0, P::ccDeleteCascade), "");
  EXPECT_EQ(List()->Cell(0, P::ccRely), "True");
  Edit(0, P::ccCheck, "A > 0");
  Edit(0, P::ccType, "UNIQUE");
  EXPECT_EQ(List()->Cell(0, P::ccCheck), "");
}

TEST_F(ConstraintPage, PairButtonsAndPairsFollowTheFocusedConstraint) {
  auto* add = Page.findChild<QAbstractButton*>("AddCostraintConditionBtn");
  auto* drop = Page.findChild<QAbstractButton*>("DropCostraintConditionBtn");
  EXPECT_FALSE(add->isEnabled());
  Page.AddCostraintBtnClick();
  EXPECT_TRUE(add->isEnabled());
  AddPair(0, "A");
  AddPair(0, "B");
  Page.AddCostraintBtnClick();
  Edit(1, P::ccType, "CHECK");
  EXPECT_FALSE(add->isEnabled());
  EXPECT_FALSE(drop->isEnabled());
  EXPECT_EQ(Pairs()->RowCount(), 0);

  List()->SetFocusedRow(0);
  ASSERT_EQ(Pairs()->RowCount(), 2);
  EXPECT_EQ(Page.ColumnList(0), "A,B");
  Pairs()->SetFocusedRow(0);
  Page.DropCostraintConditionBtnClick();
  EXPECT_EQ(Page.ColumnList(0), "B");
  AddPair(0, "C");
  EXPECT_EQ(Page.ColumnList(0), "B,C");
  EXPECT_EQ(Pairs()->Cell(1, P::dcSeq), "3");  // sequence numbers are not reused
}

TEST_F(ConstraintPage, PrimaryKeyCellsBuildAndDropThePrimaryKey) {
  QSignalSpy dropped(&Page, &P::PrimaryKeyDropped);
  Page.PrimaryKeyColumnChanged("A", true);
  Page.PrimaryKeyColumnChanged("B", true);
  Page.PrimaryKeyColumnChanged("A", true);  // ticked twice: listed once
  ASSERT_EQ(List()->RowCount(), 1);
  EXPECT_EQ(List()->Cell(0, P::ccType), "PRIMARY");
  EXPECT_EQ(List()->Cell(0, P::ccName), "PK_T");
  EXPECT_EQ(List()->FocusedRow(), 0);
  EXPECT_EQ(Page.PrimaryKeyColumns(), QStringList({"A", "B"}));
  Page.PrimaryKeyColumnChanged("A", false);
  EXPECT_EQ(Page.PrimaryKeyColumns(), QStringList({"B"}));
  EXPECT_EQ(Pairs()->RowCount(), 1);

  Page.DropCostraintBtnClick();
  EXPECT_EQ(List()->RowCount(), 0);
  ASSERT_EQ(dropped.count(), 1);
  EXPECT_EQ(dropped.at(0).at(0).toStringList(), QStringList({"B"}));
  // The next primary key gets a fresh number.
  Page.PrimaryKeyColumnChanged("C", true);
  EXPECT_EQ(List()->Cell(0, P::ccIdx), "2");
}

TEST_F(ConstraintPage, CreateClausesWriteEveryTypeAndState) {
  Page.PrimaryKeyColumnChanged("A", true);
  Page.AddCostraintBtnClick();  // unnamed unique, disabled without novalidate
  Edit(1, P::ccName, "");
  Edit(1, P::ccDisable, "True");
  AddPair(1, "B");
  AddPair(1, "C");
  Page.AddCostraintBtnClick();  // foreign key with cascade and every flag
  Edit(2, P::ccType, "FOREIGN");
  Edit(2, P::ccRefSchema, "HR");
  Edit(2, P::ccRefTable, "DEPT");
  Edit(2, P::ccDeleteCascade, "True");
  Edit(2, P::ccDeferrable, "True");
  Edit(2, P::ccDeferred, "True");
  Edit(2, P::ccRely, "True");
  Edit(2, P::ccNovalidate, "True");
  AddPair(2, "B", "ID");
  Page.AddCostraintBtnClick();  // foreign key without referenced columns
  Edit(3, P::ccType, "FOREIGN");
  Edit(3, P::ccName, "FK2");
  Page.AddCostraintBtnClick();  // check, disabled and not validated
  Edit(4, P::ccType, "CHECK");
  Edit(4, P::ccCheck, "A > 0");
  Edit(4, P::ccDisable, "True");
  Edit(4, P::ccNovalidate, "True");
  Page.AddCostraintBtnClick();  // no type: skipped
  Edit(5, P::ccType, "");

  EXPECT_EQ(Page.CreateClauses(),
            CR1 + "  CONSTRAINT PK_T PRIMARY KEY(A)," + CR1 + "  UNIQUE(B,C) DISABLE VALIDATE," +
                CR1 +
                "  CONSTRAINT FK_T FOREIGN KEY(B) REFERENCES HR.DEPT(ID) ON DELETE CASCADE"
                " DEFERRABLE INITIALLY DEFERRED RELY NOVALIDATE," +
                CR1 + "  CONSTRAINT FK2 FOREIGN KEY() REFERENCES .()," + CR1 +
                "  CONSTRAINT CHK_T CHECK(A > 0) DISABLE,");
}

TEST_F(ConstraintPage, LoadingListsTheTableConstraintsAndAltersNothingUntouched) {
  LoadEmp();
  ASSERT_EQ(List()->RowCount(), 4);  // the two NOT NULL checks are not listed
  EXPECT_EQ(List()->RowCells(0).mid(0, 11),
            QStringList({"PRIMARY", "SYS_C0011", "", "", "", "False", "False", "False", "False",
                         "False", "False"}));
  EXPECT_EQ(List()->RowCells(1).mid(5, 6),
            QStringList({"True", "False", "True", "True", "True", "True"}));
  EXPECT_EQ(List()->RowCells(2).mid(0, 7),
            QStringList({"FOREIGN", "EMP_DEPT_FK", "HR", "DEPT", "", "False", "True"}));
  EXPECT_EQ(List()->Cell(3, P::ccCheck), "SAL > 0");
  // Columns of a same-named constraint in another schema are left out.
  EXPECT_EQ(Page.ColumnList(1), "MAIL,ORG");
  EXPECT_EQ(Page.ColumnList(2, true), "ID");
  EXPECT_EQ(Page.PrimaryKeyColumns(), QStringList({"ID"}));
  EXPECT_EQ(AlterLines(), QStringList());
}

TEST_F(ConstraintPage, AlterWritesOneStatementPerChange) {
  LoadEmp();
  Edit(1, P::ccName, "EMP_MAIL_UQ");
  Edit(1, P::ccDisable, "False");
  Edit(1, P::ccRely, "False");
  Edit(1, P::ccNovalidate, "False");
  Edit(1, P::ccDeferred, "False");
  Edit(2, P::ccDeleteCascade, "False");
  Edit(2, P::ccName, "");  // an emptied name keeps the loaded one
  List()->SetFocusedRow(0);
  Page.DropCostraintBtnClick();
  // The loaded copy keeps every constraint as it was.
  ASSERT_EQ(Page.BakConstTreeList()->RowCount(), 4);
  EXPECT_EQ(Page.BakConstTreeList()->Cell(1, P::ccName), "EMP_MAIL_UK");
  EXPECT_EQ(AlterLines(), QStringList({"ALTER TABLE HR.EMP",
                                       "  DROP PRIMARY KEY CASCADE;",
                                       "ALTER TABLE HR.EMP",
                                       "  RENAME CONSTRAINT EMP_MAIL_UK",
                                       "  TO EMP_MAIL_UQ ;",
                                       "ALTER TABLE HR.EMP",
                                       "  MODIFY CONSTRAINT EMP_MAIL_UQ",
                                       "  ENABLE;",
                                       "ALTER TABLE HR.EMP",
                                       "  MODIFY CONSTRAINT EMP_MAIL_UQ",
                                       "  INITIALLY IMMEDIATE;",
                                       "ALTER TABLE HR.EMP",
                                       "  MODIFY CONSTRAINT EMP_MAIL_UQ",
                                       "  VALIDATE;",
                                       "ALTER TABLE HR.EMP",
                                       "  MODIFY CONSTRAINT EMP_MAIL_UQ",
                                       "  NORELY;",
                                       "ALTER TABLE HR.EMP",
                                       "  MODIFY CONSTRAINT EMP_DEPT_FK",
                                       "  ON DELETE CASCADE;"}));
}

TEST_F(ConstraintPage, AlterAddsNewConstraintsNamedOrNot) {
  LoadEmp();
  Page.AddCostraintBtnClick();
  Edit(4, P::ccType, "FOREIGN");
  Edit(4, P::ccRefSchema, "HR");
  Edit(4, P::ccRefTable, "DEPT");
  Edit(4, P::ccDeleteCascade, "True");
  Edit(4, P::ccDisable, "True");
  AddPair(4, "DEPT_ID", "ID");
  Page.AddCostraintBtnClick();
  Edit(5, P::ccType, "CHECK");
  Edit(5, P::ccName, "");
  Edit(5, P::ccCheck, "SAL < 100");
  EXPECT_EQ(AlterLines(),
            QStringList({"ALTER TABLE HR.EMP", "  ADD CONSTRAINT FK_T",
                         "  FOREIGN KEY(DEPT_ID)" + CR1 + "   REFERENCES HR.DEPT  (ID)" + CR1 +
                             "   ON DELETE CASCADE DISABLE VALIDATE;" + CR1,
                         "ALTER TABLE HR.EMP", "  ADD CHECK(SAL < 100);" + CR1}));
}

// A loaded constraint whose columns or condition change is dropped and added anew: the
// database cannot change either in place.
// The drop of a drop-and-add takes no foreign key of another table with it silently: without
// referencing keys it has no CASCADE; with them the user is asked, naming them, and on Yes they
// are created again after the add.
TEST_F(ConstraintPage, AlterReplacesAConstraintWhoseDefinitionChanged) {
  LoadEmp();
  Edit(1, P::ccDeferrable, "False");  // EMP_MAIL_UK, referenced by APP.ORD.ORD_EMP_FK
  Edit(1, P::ccDeferred, "False");
  Edit(3, P::ccCheck, "SAL >= 0");
  Edit(0, P::ccName, "EMP_PK");  // a rename alone stays a rename
  EXPECT_EQ(AlterLines(),
            QStringList(
                {"ALTER TABLE HR.EMP", "  RENAME CONSTRAINT SYS_C0011", "  TO EMP_PK ;",
                 "ALTER TABLE HR.EMP", "  DROP CONSTRAINT EMP_MAIL_UK CASCADE;",
                 "ALTER TABLE HR.EMP", "  DROP CONSTRAINT EMP_SAL_CK;", "ALTER TABLE HR.EMP",
                 "  ADD CONSTRAINT EMP_MAIL_UK", "  UNIQUE(MAIL,ORG) RELY DISABLE;" + CR1,
                 "ALTER TABLE APP.ORD", "  ADD CONSTRAINT ORD_EMP_FK",
                 "  FOREIGN KEY(EMP_MAIL,EMP_ORG)" + CR1 + "   REFERENCES HR.EMP  (MAIL,ORG)" +
                     CR1 + "   ON DELETE SET NULL;" + CR1,
                 "ALTER TABLE HR.EMP", "  ADD CONSTRAINT EMP_SAL_CK", "  CHECK(SAL >= 0);" + CR1}));
  const auto asked = Host.EventsOf("confirm");
  ASSERT_EQ(asked.size(), 1);
  EXPECT_EQ(asked[0].value("args").toArray().at(1).toString(), "APP.ORD.ORD_EMP_FK");
}

TEST(ConstraintPageAnswers, NoToTheReferencingKeysBuildsNothingForThatChange) {
  const QByteArray fixture = QByteArray(kCatalog).replace(
      "'catalog': {", "'answers': {'CreateTableFrm.ReferencedKey': 7}, 'catalog': {");
  test::TTestHost host(test::Json(fixture.constData()));
  QWidget sheet;
  TTableConstraintPage page(&sheet);
  page.LoadConstraints(host.Host().CurrentDBInfo(), "HR", "EMP", {"ID", "MAIL"});
  QString why;
  ASSERT_TRUE(page.ConstTreeList()->EditCell(1, P::ccDeferrable, "False", &why));
  ASSERT_TRUE(page.ConstTreeList()->EditCell(1, P::ccName, "EMP_MAIL_UQ", &why));
  TSqlMemo memo;
  page.AlterConstraintSql(memo, "HR", "EMP");
  EXPECT_EQ(memo.Lines(), QStringList());
}

// Keys left without columns: never "PRIMARY KEY()"; a loaded one emptied is dropped, one whose
// column the alter drops goes with the column; pairs follow a renamed column.
TEST_F(ConstraintPage, EmptiedKeysDroppedColumnsAndRenamedColumns) {
  Page.PrimaryKeyColumnChanged("A", true);
  Page.TableColumnRenamed("A", "ID");
  EXPECT_EQ(Page.CreateClauses(), CR1 + "  CONSTRAINT PK_T PRIMARY KEY(ID),");
  Page.PrimaryKeyColumnChanged("ID", false);
  EXPECT_EQ(Page.CreateClauses(), "");

  LoadEmp();
  Page.PrimaryKeyColumnChanged("ID", false);
  EXPECT_EQ(AlterLines(), QStringList({"ALTER TABLE HR.EMP", "  DROP PRIMARY KEY CASCADE;"}));
  Page.PrimaryKeyColumnChanged("ID", true);
  Page.TableColumnDropped("ID");
  Page.TableColumnDropped("MAIL");
  TSqlMemo memo;
  Page.AlterConstraintSql(memo, "HR", "EMP", {"ID", "MAIL"});
  EXPECT_EQ(memo.Lines(), QStringList({"ALTER TABLE HR.EMP", "  ADD CONSTRAINT EMP_MAIL_UK",
                                       "  UNIQUE(ORG) DEFERRABLE INITIALLY DEFERRED RELY "
                                       "DISABLE;" +
                                           CR1}));
}

// A unique key without pairs is no key either: nothing in CREATE TABLE, a drop in an alter.
TEST_F(ConstraintPage, UniqueKeysWithoutPairsAreNeverWrittenEmpty) {
  Page.AddCostraintBtnClick();
  Edit(0, P::ccType, "UNIQUE");
  EXPECT_EQ(Page.CreateClauses(), "");
  AddPair(0, "B");
  EXPECT_EQ(Page.CreateClauses(), CR1 + "  CONSTRAINT UNI_T UNIQUE(B),");

  Page.SetTableColumns({"ID", "MAIL", "ORG", "DEPT_ID", "SAL"});
  Page.LoadConstraints(Host.Host().CurrentDBInfo(), "HR", "EMP", {"ID", "MAIL", "ORG"});
  int unique = -1;
  for (int r = 0; r < List()->RowCount(); ++r)
    if (List()->Cell(r, P::ccName) == "EMP_MAIL_UK") unique = r;
  ASSERT_GE(unique, 0);
  List()->SetFocusedRow(unique);
  while (Pairs()->RowCount() > 0) {
    Pairs()->SetFocusedRow(0);
    Page.DropCostraintConditionBtnClick();
  }
  const QStringList lines = AlterLines();
  EXPECT_FALSE(lines.join('\n').contains("UNIQUE()")) << lines.join('\n').toStdString();
}

// PRIMARY is offered again once the primary row is gone; unnamed keys are added with "ADD".
TEST_F(ConstraintPage, PrimaryComesBackAndUnnamedKeysAreAddedBare) {
  LoadEmp();
  EXPECT_FALSE(List()->CellItems(1, P::ccType).contains("PRIMARY"));
  List()->SetFocusedRow(0);
  Page.DropCostraintBtnClick();
  EXPECT_EQ(List()->CellItems(0, P::ccType).first(), "PRIMARY");
  Page.AddCostraintBtnClick();
  Edit(3, P::ccType, "PRIMARY");
  Edit(3, P::ccName, "");
  AddPair(3, "ID");
  Page.AddCostraintBtnClick();
  Edit(4, P::ccType, "FOREIGN");
  Edit(4, P::ccName, "");
  Edit(4, P::ccRefSchema, "HR");
  Edit(4, P::ccRefTable, "DEPT");
  AddPair(4, "DEPT_ID", "ID");
  EXPECT_EQ(
      AlterLines(),
      QStringList({"ALTER TABLE HR.EMP", "  DROP PRIMARY KEY CASCADE;", "ALTER TABLE HR.EMP",
                   "  ADD PRIMARY KEY(ID);" + CR1, "ALTER TABLE HR.EMP",
                   "  ADD FOREIGN KEY(DEPT_ID)" + CR1 + "   REFERENCES HR.DEPT  (ID);" + CR1}));
}

namespace {

// HR.EMP with its primary key referenced by APP.BONUS and the questions answered `answer`.
QByteArray ReferencedPrimaryKey(int answer) {
  return QByteArray(kCatalog)
      .replace("'catalog': {", "'answers': {'CreateTableFrm.DropReferencedKey': " +
                                   QByteArray::number(answer) + "}, 'catalog': {")
      .replace("'CreateTableFrn.Constraint_05': [",
               "'CreateTableFrn.Constraint_05': [{'binds': {'P_OWNER': 'HR', 'P_CONSTRAINT': "
               "'SYS_C0011'}, 'rows': [{'OWNER': 'APP', 'TABLE_NAME': 'BONUS', "
               "'CONSTRAINT_NAME': 'BONUS_EMP_FK', 'DELETE_RULE': 'NO ACTION'}]},");
}

QStringList Alter(TTableConstraintPage& page) {
  TSqlMemo memo;
  page.AlterConstraintSql(memo, "HR", "EMP");
  return memo.Lines();
}

}  // namespace

// Unticking the last column of a referenced loaded key drops the foreign keys of other tables
// only when the user agrees; the answer holds for every build while the change stands.
TEST(ConstraintPageAnswers, AnEmptiedReferencedKeyIsDroppedOnlyWhenTheUserAgrees) {
  for (const int answer : {6, 7}) {
    test::TTestHost host(test::Json(ReferencedPrimaryKey(answer).constData()));
    QWidget sheet;
    TTableConstraintPage page(&sheet);
    page.LoadConstraints(host.Host().CurrentDBInfo(), "HR", "EMP", {"ID", "MAIL"});
    page.PrimaryKeyColumnChanged("ID", false);
    const QStringList expected =
        answer == 6 ? QStringList({"ALTER TABLE HR.EMP", "  DROP PRIMARY KEY CASCADE;"})
                    : QStringList();
    EXPECT_EQ(Alter(page), expected);
    EXPECT_EQ(Alter(page), expected);  // View SQL, then OK
    const auto asked = host.EventsOf("confirm");
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0].value("args").toArray().at(1).toString(), "APP.BONUS.BONUS_EMP_FK");
    // Ticked again, the key stays; emptied once more, it is a new question.
    page.PrimaryKeyColumnChanged("ID", true);
    EXPECT_EQ(Alter(page), QStringList());
    page.PrimaryKeyColumnChanged("ID", false);
    EXPECT_EQ(Alter(page), expected);
    EXPECT_EQ(host.EventsOf("confirm").size(), 2);
  }
}

// Drop Constraint on a referenced loaded key asks first; No keeps the row. A key that nothing
// references is dropped without a question.
TEST(ConstraintPageAnswers, DroppingAReferencedKeyRowAsksFirst) {
  test::TTestHost host(test::Json(ReferencedPrimaryKey(7).constData()));
  QWidget sheet;
  TTableConstraintPage page(&sheet);
  page.LoadConstraints(host.Host().CurrentDBInfo(), "HR", "EMP", {"ID", "MAIL"});
  page.ConstTreeList()->SetFocusedRow(0);
  page.DropCostraintBtnClick();
  EXPECT_EQ(page.ConstTreeList()->RowCount(), 4);
  EXPECT_EQ(host.EventsOf("confirm").size(), 1);
  page.ConstTreeList()->SetFocusedRow(3);  // the check constraint: no question
  page.DropCostraintBtnClick();
  EXPECT_EQ(page.ConstTreeList()->RowCount(), 3);
  EXPECT_EQ(host.EventsOf("confirm").size(), 1);
  EXPECT_EQ(Alter(page),
            QStringList({"ALTER TABLE HR.EMP", "  DROP CONSTRAINT EMP_SAL_CK CASCADE;"}));
}

// A referenced key whose new definition could not carry its foreign keys is refused before any
// build, naming them; one that keeps its column count is replaced and they are re-created.
TEST_F(ConstraintPage, AKeyChangeThatWouldLoseReferencingKeysIsRefused) {
  LoadEmp();
  EXPECT_TRUE(Page.ValidateKeyChanges("HR", {}));
  List()->SetFocusedRow(1);  // EMP_MAIL_UK (MAIL,ORG), referenced by APP.ORD.ORD_EMP_FK
  Pairs()->SetFocusedRow(1);
  Page.DropCostraintConditionBtnClick();
  List()->SetFocusedRow(0);
  EXPECT_FALSE(Page.ValidateKeyChanges("HR", {}));
  EXPECT_EQ(List()->FocusedRow(), 1);
  const auto refused = Host.EventsOf("message");
  ASSERT_EQ(refused.size(), 1);
  EXPECT_EQ(refused[0].value("key").toString(), "CreateTableFrm.ReferencedKeyColumns");
  EXPECT_EQ(refused[0].value("args").toArray().at(1).toString(), "APP.ORD.ORD_EMP_FK");
  EXPECT_EQ(refused[0].value("args").toArray().at(2).toString(), "2");
  EXPECT_EQ(AlterLines(), QStringList());  // never a drop that loses them
  EXPECT_TRUE(Host.EventsOf("confirm").isEmpty());

  AddPair(1, "SAL");  // two columns again: replaced, the foreign key re-created on them
  EXPECT_TRUE(Page.ValidateKeyChanges("HR", {}));
  EXPECT_EQ(AlterLines().mid(0, 2),
            QStringList({"ALTER TABLE HR.EMP", "  DROP CONSTRAINT EMP_MAIL_UK CASCADE;"}));
  EXPECT_TRUE(AlterLines().join(u'|').contains("REFERENCES HR.EMP  (MAIL,SAL)"));
  EXPECT_EQ(Host.EventsOf("confirm").size(), 1);  // asked once for both builds

  Edit(1, P::ccType, "CHECK");  // no key any more
  EXPECT_FALSE(Page.ValidateKeyChanges("HR", {}));
}

// Same column count, another type in a key column: the foreign keys could not be created again
// either, so the change is refused and nothing is built for it.
TEST_F(ConstraintPage, AKeyColumnOfAnotherTypeIsRefusedWhenReferenced) {
  LoadEmp();
  Page.SetTableColumnTypes({{"MAIL", "VARCHAR2"},
                            {"ORG", "NUMBER"},
                            {"SAL", "NUMBER"},
                            {"ID", "NUMBER"},
                            {"DEPT_ID", "NUMBER"}});
  List()->SetFocusedRow(1);  // EMP_MAIL_UK (MAIL,ORG), referenced by APP.ORD.ORD_EMP_FK
  Pairs()->SetFocusedRow(0);
  ASSERT_TRUE(Pairs()->EditCell(0, P::dcTblCol, "ID"));  // VARCHAR2 -> NUMBER
  EXPECT_FALSE(Page.ValidateKeyChanges("HR", {}));
  const auto refused = Host.EventsOf("message");
  ASSERT_EQ(refused.size(), 1);
  EXPECT_EQ(refused[0].value("key").toString(), "CreateTableFrm.ReferencedKeyTypes");
  EXPECT_EQ(refused[0].value("args").toArray().at(2).toString(), "MAIL");
  EXPECT_EQ(refused[0].value("args").toArray().at(3).toString(), "VARCHAR2");
  EXPECT_EQ(refused[0].value("args").toArray().at(4).toString(), "ID");
  EXPECT_EQ(AlterLines(), QStringList());  // never a drop that loses them

  ASSERT_TRUE(Pairs()->EditCell(0, P::dcTblCol, "MAIL"));
  ASSERT_TRUE(Pairs()->EditCell(1, P::dcTblCol, "SAL"));  // NUMBER for NUMBER: re-created
  EXPECT_TRUE(Page.ValidateKeyChanges("HR", {}));
  EXPECT_TRUE(AlterLines().join(u'|').contains("REFERENCES HR.EMP  (MAIL,SAL)"));
}

// Each row's pick lists come from its own data, whichever row has the focus.
TEST_F(ConstraintPage, PickListsFollowEachRowsOwnReference) {
  Page.AddCostraintBtnClick();
  Edit(0, P::ccType, "FOREIGN");
  Edit(0, P::ccRefSchema, "HR");
  Page.AddCostraintBtnClick();
  Edit(1, P::ccType, "FOREIGN");
  Edit(1, P::ccRefSchema, "APP");
  EXPECT_EQ(List()->CellItems(0, P::ccRefTable), QStringList({"DEPT", "EMP"}));
  EXPECT_EQ(List()->CellItems(1, P::ccRefTable), QStringList());
  Edit(0, P::ccRefTable, "DEPT");
  EXPECT_EQ(List()->FocusedRow(), 0);
  EXPECT_EQ(Pairs()->CellItems(0, P::dcRefCol), QStringList({"ID", "NAME"}));
  List()->SetFocusedRow(1);
  EXPECT_EQ(Pairs()->CellItems(0, P::dcRefCol), QStringList());
}
