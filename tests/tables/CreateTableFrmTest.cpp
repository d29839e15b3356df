// The table dialog driven through its controls: CREATE TABLE text, column editing rules,
// validation, and the ALTER TABLE / COMMENT text of a loaded table.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>

#include "plugin/Dispatch.h"
#include "plugin/KelEditor.h"
#include "plugin/KelTreeList.h"
#include "tables/CreateTableFrn.h"
#include "tables/TableConstraints.h"
#include "tests/support/TestHost.h"

using namespace kel;

// Failures show the statement text, with its line breaks escaped.
[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}
using C = TCreateTableFrm;

namespace {

const char* const kConnection =
    "'connection': {'user': 'APP', 'users': ['APP', 'HR'], 'tablespaces': ['USERS'],"
    " 'dataTypes': ['CHAR', 'DATE', 'NUMBER', 'VARCHAR2']}";

// A loaded table APP.T: A NUMBER(10,2) NOT NULL DEFAULT 0, B VARCHAR2(30) with a comment,
// C DATE DEFAULT SYSDATE, D CHAR(1).
const char* const kAlterCatalog =
    "'catalog': {"
    " 'SchTableNrn.Script': [{'Table Type': '', 'Tablespace': 'USERS'}],"
    " 'SchTableNrn.Column': ["
    "  {'Column': 'A', 'Data Type': 'NUMBER', 'Length': '22', 'Precision': '10', 'Scale': '2',"
    "   'Null?': 'N', 'Default': '0 ', 'Comments': '', 'column_id': '1'},"
    "  {'Column': 'B', 'Data Type': 'VARCHAR2', 'Length': '30', 'Precision': '', 'Scale': '',"
    "   'Null?': 'Y', 'Default': '', 'Comments': 'old', 'column_id': '2'},"
    "  {'Column': 'C', 'Data Type': 'DATE', 'Length': '7', 'Precision': '', 'Scale': '',"
    "   'Null?': 'Y', 'Default': 'SYSDATE', 'Comments': '', 'column_id': '3'},"
    "  {'Column': 'D', 'Data Type': 'CHAR', 'Length': '1', 'Precision': '', 'Scale': '',"
    "   'Null?': 'Y', 'Default': '', 'Comments': '', 'column_id': '4'}],"
    " 'CreateTableFrn.TableComment': [{'COMMENTS': 'Orders'}]}";

class TableDialog : public ::testing::Test {
 protected:
  // Opens the dialog; `alter` loads APP.T, from `catalog` when given.
  void Open(bool alter, const char* catalog = nullptr) {
    QString json = QString("{") + kConnection;
    if (catalog)
      json += QString(",") + catalog;
    else if (alter)
      json += QString(",") + kAlterCatalog;
    json += "}";
    Host = std::make_unique<test::TTestHost>(test::Json(json.toUtf8().constData()));
    RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
    TXLink link;
    if (alter) {
      link.SetVerb("Alter");
      link.AddParams("IsAlter", "True");
      link.AddParams("P_Schema", "APP");
      link.AddParams("P_TableName", "T");
    }
    if (!ChangeOwner.isEmpty()) {
      link.SetVerb("ChangeOwner");
      link.AddParams("ObjFrmOwner", ChangeOwner);
    }
    Host->Open("TABLE", &link);
    const QList<QWidget*> windows = Host->Host().ChildWindows();
    ASSERT_FALSE(windows.isEmpty());
    Form = qobject_cast<TCreateTableFrm*>(windows.last());
    ASSERT_NE(Form, nullptr);
    List = Form->ColumnTL();
  }

  template <class T>
  T* W(const char* name) {
    T* w = Form->findChild<T*>(name);
    EXPECT_NE(w, nullptr) << name;
    return w;
  }

  void Edit(int row, int col, const QString& value) {
    QString why;
    ASSERT_TRUE(List->EditCell(row, col, value, &why)) << why.toStdString();
  }

  QStringList MessageArgs(const char* kind = "message") {
    QStringList args;
    for (const QJsonObject& e : Host->EventsOf(kind))
      args << e.value("key").toString() + ":" + e.value("args").toArray().at(0).toString();
    return args;
  }

  QString ChangeOwner;
  std::unique_ptr<test::TTestHost> Host;
  TCreateTableFrm* Form = nullptr;
  TKelTreeList* List = nullptr;
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// Create mode.

TEST_F(TableDialog, CreateWritesOneColumnPerLineAndSkipsEmptyRows) {
  Open(false);
  EXPECT_EQ(List->RowCount(), 10);
  W<QLineEdit>("TableNameEd")->setText("T1");
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "NUMBER");
  Edit(0, C::ccPrec, "10");
  Edit(0, C::ccScale, "2");
  Edit(0, C::ccDefault, " 0 ");
  Edit(0, C::ccNull, "True");
  Edit(1, C::ccType, "VARCHAR2");  // no name: skipped although filled
  Edit(1, C::ccSize, "99");
  Edit(2, C::ccName, " B ");
  Edit(2, C::ccType, "VARCHAR2");
  Edit(2, C::ccSize, "30");
  Edit(4, C::ccName, "NOTYPE");
  Edit(5, C::ccName, "N");
  Edit(5, C::ccType, "NUMBER");
  Edit(5, C::ccScale, "2");  // scale without precision: the bare type
  EXPECT_EQ(Form->BuildText(),
            "CREATE TABLE APP.T1 \r\n"
            "(\r  A NUMBER(10,2) DEFAULT 0 NOT NULL,\r  B VARCHAR2(30),\r  NOTYPE ,\r  N NUMBER\r);"
            "\r\r\n");
}

TEST_F(TableDialog, TypeDecidesWhichSizeCellsAreEditableAndKept) {
  Open(false);
  List->SetFocusedRow(0);
  EXPECT_FALSE(List->EditCell(0, C::ccSize, "5"));
  EXPECT_FALSE(List->EditCell(0, C::ccPk, "True"));  // no name yet
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "VARCHAR2");
  Edit(0, C::ccSize, "20");
  EXPECT_FALSE(List->EditCell(0, C::ccPrec, "5"));
  EXPECT_FALSE(List->EditCell(0, C::ccSize, "10000"));
  Edit(0, C::ccType, "NUMBER");
  EXPECT_EQ(List->Cell(0, C::ccSize), "");
  Edit(0, C::ccPrec, "38");
  Edit(0, C::ccScale, "-84");
  Edit(0, C::ccType, "DATE");
  EXPECT_EQ(List->RowCells(0).mid(C::ccSize, 3), QStringList({"", "", ""}));
  // Editability follows the focused row.
  Edit(1, C::ccType, "CHAR");
  List->SetFocusedRow(0);
  EXPECT_FALSE(List->EditCell(0, C::ccSize, "1"));
  // The Primary Key cell marks the column NOT NULL.
  Edit(0, C::ccPk, "True");
  EXPECT_EQ(List->Cell(0, C::ccNull), "True");
}

TEST_F(TableDialog, QueryAndObjectTableReplaceTheColumnList) {
  Open(false,
       "'catalog': {'CreateTableFrn.Type': [{'type_name': 'ADDR_T'}],"
       " 'CreateTableFrn.TypeAttributeList': ["
       "  {'ATTR_NAME': 'STREET', 'ATTR_TYPE_MOD': '', 'LENGTH': '40', 'PRECISION': '',"
       "   'SCALE': '', 'ATTR_TYPE_NAME': 'VARCHAR2', 'ATTR_TYPE_OWNER': ''},"
       "  {'ATTR_NAME': 'NO', 'ATTR_TYPE_MOD': '', 'LENGTH': '', 'PRECISION': '6',"
       "   'SCALE': '0', 'ATTR_TYPE_NAME': 'NUMBER', 'ATTR_TYPE_OWNER': ''},"
       "  {'ATTR_NAME': 'CITY', 'ATTR_TYPE_MOD': 'REF', 'LENGTH': '', 'PRECISION': '',"
       "   'SCALE': '', 'ATTR_TYPE_NAME': 'CITY_T', 'ATTR_TYPE_OWNER': 'HR'}]}");
  W<QLineEdit>("TableNameEd")->setText("T2");
  Edit(0, C::ccName, "IGNORED");
  Edit(0, C::ccType, "DATE");
  W<QComboBox>("TableSpaceCmb")->setCurrentText("USERS");
  W<QRadioButton>("DefineQueryRdo")->setChecked(true);
  W<TKelEditor>("QueryEditor")->SetText("  select * from dual\n");
  EXPECT_EQ(Form->BuildText(),
            "CREATE TABLE APP.T2 \r\nTABLESPACE USERS\r\nAS\r\nselect * from dual;\r\r\n");

  W<QRadioButton>("ObjectTableRdo")->setChecked(true);
  W<QComboBox>("ObjectTableSchemaCmb")->setCurrentText("HR");
  W<QComboBox>("ObjectTypeCmb")->setCurrentText("ADDR_T");
  auto* attrs = W<TKelTreeList>("ObjectTableTreeList");
  ASSERT_EQ(attrs->RowCount(), 3);
  EXPECT_EQ(attrs->Cell(0, 1), "VARCHAR2(40)");
  EXPECT_EQ(attrs->Cell(1, 1), "NUMBER(6,0)");
  EXPECT_EQ(attrs->Cell(2, 1), "REF HR.CITY_T");
  EXPECT_EQ(Form->BuildText(), "CREATE TABLE APP.T2 \r\nOF HR.ADDR_T\r\nTABLESPACE USERS;\r\r\n");
}

TEST_F(TableDialog, CommentsAreTrimmedAndApostrophesDoubled) {
  Open(false);
  W<QLineEdit>("TableNameEd")->setText("T");
  W<QPlainTextEdit>("CommentEd")->setPlainText(" Bob's table ");
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "DATE");
  Edit(0, C::ccComment, "it's 'new'");
  Edit(1, C::ccName, "B");
  Edit(1, C::ccType, "DATE");
  EXPECT_EQ(Form->BuildText(),
            "CREATE TABLE APP.T \r\n(\r  A DATE,\r  B DATE\r);\r\r\n"
            "COMMENT ON TABLE APP.T IS 'Bob''s table';\r\n"
            "COMMENT ON COLUMN APP.T.A IS 'it''s ''new''';\r\n");
  // A comment of blanks is still a comment: written empty once trimmed.
  W<QPlainTextEdit>("CommentEd")->setPlainText(" \n");
  Edit(0, C::ccComment, "");
  Edit(1, C::ccComment, "  ");
  EXPECT_EQ(Form->BuildText(),
            "CREATE TABLE APP.T \r\n(\r  A DATE,\r  B DATE\r);\r\r\n"
            "COMMENT ON TABLE APP.T IS '';\r\n"
            "COMMENT ON COLUMN APP.T.B IS '';\r\n");
}

TEST_F(TableDialog, OkValidatesInControlOrderButViewSqlDoesNot) {
  Open(false);
  auto* ok = W<QPushButton>("OkBtn");
  ok->click();
  W<QPushButton>("ViewSqlBtn")->click();
  W<QLineEdit>("TableNameEd")->setText("T");
  W<QRadioButton>("DefineQueryRdo")->setChecked(true);
  ok->click();
  W<QRadioButton>("ObjectTableRdo")->setChecked(true);
  ok->click();
  W<QComboBox>("ObjectTableSchemaCmb")->setCurrentText("HR");
  ok->click();
  QStringList args;
  for (const QJsonObject& e : Host->EventsOf("message"))
    args << e.value("args").toArray().at(0).toString();
  EXPECT_EQ(args, QStringList({"Table Name", "Define Query", "Schema", "Object Type"}));
  EXPECT_TRUE(Host->EventsOf("execute").isEmpty());
  ASSERT_EQ(Host->EventsOf("preview").size(), 1);
}

// ---------------------------------------------------------------------------------------------
// Alter mode.

TEST_F(TableDialog, AlterLoadsTheTableAndLocksItsIdentity) {
  Open(true);
  EXPECT_EQ(Form->windowTitle(), Host->Host().esGetMSG("AlterTableCaption") + " [APP] - T ");
  ASSERT_EQ(List->RowCount(), 4);
  EXPECT_EQ(List->RowCells(0),
            QStringList({"A", "NUMBER", "", "10", "2", "False", "True", "0", "", "1"}));
  EXPECT_EQ(List->Cell(1, C::ccSize), "30");
  EXPECT_EQ(List->Cell(2, C::ccSize), "");  // a DATE's length is not a size
  EXPECT_EQ(Form->BakColumnTL()->RowCount(), 4);
  EXPECT_FALSE(W<QLineEdit>("TableNameEd")->isEnabled());
  EXPECT_FALSE(W<QComboBox>("SchemaCmb")->isEnabled());
  EXPECT_FALSE(W<QRadioButton>("DefineQueryRdo")->isEnabled());
  EXPECT_EQ(W<QComboBox>("TableSpaceCmb")->currentText(), "USERS");
  // The loaded copies sit on a page the user can neither see nor reach.
  auto* pages = W<QTabWidget>("MainPage");
  for (const char* sheet : {"BackupSheet", "TempSheet"}) {
    const int index = pages->indexOf(W<QWidget>(sheet));
    EXPECT_FALSE(pages->isTabVisible(index)) << sheet;
    EXPECT_FALSE(pages->isTabEnabled(index)) << sheet;
  }
  EXPECT_EQ(Form->BakColumnTL()->parentWidget(), W<QWidget>("BackupSheet"));
  EXPECT_EQ(W<TKelTreeList>("BakConstTreeList")->parentWidget(), W<QWidget>("BackupSheet"));
  const QList<QJsonObject> queries = Host->EventsOf("query");
  ASSERT_GE(queries.size(), 3);
  EXPECT_EQ(queries[0].value("key").toString(), "SchTableNrn.Script");
  EXPECT_EQ(queries[1].value("binds").toObject(), test::Json("{'P_OWN': 'APP', 'P_TABLE': 'T'}"));
  EXPECT_EQ(queries[2].value("binds").toObject(), test::Json("{'P_OWNER': 'APP', 'P_TABLE': 'T'}"));
  // Nothing changed: nothing to run, the dialog stays open.
  EXPECT_EQ(Trim(Form->BuildText()), "");
  W<QPushButton>("OkBtn")->click();
  EXPECT_TRUE(Host->EventsOf("execute").isEmpty());
  EXPECT_EQ(Host->Host().ChildWindows().size(), 1);
}

TEST_F(TableDialog, AlterWritesDropRenameAddModifyInThatOrder) {
  Open(true);
  List->SetFocusedRow(0);
  W<QToolButton>("DropFieldBtn")->click();  // A; B, C, D move up one row
  Edit(2, C::ccName, "D2");
  Edit(0, C::ccDefault, "5");  // B: the new default is read at B's loaded position (C's row)
  Edit(1, C::ccNull, "True");  // C
  W<QToolButton>("AddFieldBtn")->click();
  Edit(3, C::ccName, "E");
  Edit(3, C::ccType, "NUMBER");
  Edit(3, C::ccPrec, "5");
  EXPECT_EQ(Form->BuildText(),
            "ALTER TABLE APP.T\r DROP(A) CASCADE CONSTRAINTS;\r"
            "ALTER TABLE APP.T\rRENAME COLUMN D TO D2;\r"
            "ALTER TABLE APP.T\r ADD (\r  E NUMBER(5)\r);\r"
            "ALTER TABLE APP.T\rMODIFY (\r  B  DEFAULT SYSDATE,\r  C  NOT NULL\r);\r\n");
}

TEST_F(TableDialog, AlterModifiesOnlyWhatChanged) {
  Open(true);
  Edit(0, C::ccNull, "False");
  List->SetFocusedRow(1);  // Size is editable while a character column is focused
  Edit(1, C::ccSize, "40");
  Edit(2, C::ccNull, "True");
  Edit(2, C::ccNull, "False");  // back as loaded: nothing
  EXPECT_EQ(Form->BuildText(), "ALTER TABLE APP.T\rMODIFY (\r  A  NULL,\r  B VARCHAR2(40)\r);\r\n");
}

TEST_F(TableDialog, AlterWritesChangedAndEmptiedComments) {
  Open(true);
  W<QPlainTextEdit>("CommentEd")->setPlainText("");
  Edit(1, C::ccComment, "");
  Edit(3, C::ccComment, "D's");
  W<QToolButton>("AddFieldBtn")->click();
  Edit(4, C::ccName, "E");
  Edit(4, C::ccComment, "new");
  Edit(4, C::ccType, "DATE");
  EXPECT_EQ(Form->BuildText(),
            "ALTER TABLE APP.T\r ADD (\r  E DATE\r);\r\n"
            "COMMENT ON TABLE APP.T IS '';\r\n"
            "COMMENT ON COLUMN APP.T.B IS '';\r\n"
            "COMMENT ON COLUMN APP.T.D IS 'D''s';\r\n"
            "COMMENT ON COLUMN APP.T.E IS 'new';\r\n");
}

TEST_F(TableDialog, AlterOfAnObjectTableSelectsItsType) {
  Open(true,
       "'catalog': {'SchTableNrn.Script': [{'Table Type': 'ADDR_T', 'Table Type Owner': 'HR'}],"
       " 'CreateTableFrn.Type': [{'type_name': 'ADDR_T'}]}");
  EXPECT_TRUE(W<QRadioButton>("ObjectTableRdo")->isChecked());
  EXPECT_EQ(W<QComboBox>("ObjectTypeCmb")->currentText(), "ADDR_T");
  EXPECT_EQ(List->RowCount(), 0);
  for (const QJsonObject& e : Host->EventsOf("query"))
    EXPECT_NE(e.value("key").toString(), "SchTableNrn.Column");
}

// Leaving a storage edit by changing the page still checks it, and the check brings the page
// and the edit back; closing the dialog does not check.
TEST_F(TableDialog, AnExitCheckFollowsAPageChangeButNotTheClose) {
  Open(false);
  Form->activateWindow();
  QApplication::setActiveWindow(Form);
  auto* pages = W<QTabWidget>("MainPage");
  auto* pct = W<QLineEdit>("PctIncreaseEd");
  pages->setCurrentWidget(W<QWidget>("StorageSheet"));
  pct->setFocus();
  QApplication::processEvents();
  pct->setText("101");
  pages->setCurrentIndex(0);
  QApplication::processEvents();
  ASSERT_EQ(Host->EventsOf("message").size(), 1);
  EXPECT_EQ(Host->EventsOf("message")[0]["key"].toString(), "InsertNumber100Msg");
  EXPECT_EQ(pages->currentWidget(), W<QWidget>("StorageSheet"));
  EXPECT_EQ(QApplication::focusWidget(), pct);

  Host->Host().ClearEvents();
  Form->close();
  QApplication::processEvents();
  EXPECT_TRUE(Host->EventsOf("message").isEmpty());
}

// ---------------------------------------------------------------------------------------------
// Names, validation and valid DDL.

TEST_F(TableDialog, EveryNameIsCheckedAndANewTableNeedsANamedColumn) {
  Open(false);
  auto* ok = W<QPushButton>("OkBtn");
  W<QLineEdit>("TableNameEd")->setText("T1; DROP TABLE X");
  ok->click();
  W<QLineEdit>("TableNameEd")->setText("T1");
  ok->click();  // ten empty rows: no column at all
  Edit(0, C::ccName, "A B");
  ok->click();
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "DATE");
  Form->ConstraintPage()->AddCostraintBtnClick();
  QString why;
  ASSERT_TRUE(Form->ConstraintPage()->ConstTreeList()->EditCell(0, 1, "UQ X", &why));
  ok->click();
  EXPECT_EQ(MessageArgs(), QStringList({"Acm.Valid The:Table Name", "Acm.Check The:Define Columns",
                                        "Acm.Valid The:Column", "Acm.Valid The:Name"}));
  EXPECT_TRUE(Host->EventsOf("execute").isEmpty());
}

TEST_F(TableDialog, AQueryLosesItsSemicolonAndTypesClearWhatTheyDoNotTake) {
  Open(false);
  W<QLineEdit>("TableNameEd")->setText("T2");
  W<QRadioButton>("DefineQueryRdo")->setChecked(true);
  W<TKelEditor>("QueryEditor")->SetText("SELECT * FROM DUAL ; \n");
  EXPECT_EQ(Form->BuildText(), "CREATE TABLE APP.T2\r\nAS\r\nSELECT * FROM DUAL;\r\r\n");
  W<QRadioButton>("DefineColumnRdo")->setChecked(true);
  Edit(0, C::ccName, "N");
  Edit(0, C::ccType, "NUMBER");
  Edit(0, C::ccPrec, "10");
  Edit(0, C::ccScale, "2");
  Edit(0, C::ccType, "VARCHAR2");  // a sized type: precision and scale go
  EXPECT_EQ(List->RowCells(0).mid(2, 3), QStringList({"", "", ""}));
  Edit(1, C::ccName, "M");
  Edit(1, C::ccType, "CHAR");
  List->SetFocusedRow(1);
  W<QComboBox>("SchemaCmb");
  for (const char* type : {"NCHAR", "NVARCHAR2"}) {
    Form->ColumnTL()->SetColumnItems(C::ccType, {"CHAR", "DATE", "NCHAR", "NUMBER", "NVARCHAR2"});
    Edit(1, C::ccType, type);
    Edit(1, C::ccSize, "20");  // the national character types take a size
    EXPECT_EQ(List->Cell(1, C::ccSize), "20") << type;
  }
}

TEST_F(TableDialog, StorageExitChecksRunAgainBeforeOkAndViewSql) {
  Open(false);
  W<QLineEdit>("TableNameEd")->setText("T3");
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "DATE");
  W<QLineEdit>("PctIncreaseEd")->setText("101");
  W<QPushButton>("OkBtn")->click();
  W<QLineEdit>("PctIncreaseEd")->setText("");
  W<QLineEdit>("MaxTransEd")->setText("300");
  W<QPushButton>("ViewSqlBtn")->click();
  QStringList keys;
  for (const QJsonObject& e : Host->EventsOf("message")) keys << e.value("key").toString();
  EXPECT_EQ(keys, QStringList({"InsertNumber100Msg", "InsertNumber255Msg"}));
  EXPECT_TRUE(Host->EventsOf("execute").isEmpty());
  EXPECT_TRUE(Host->EventsOf("preview").isEmpty());
}

TEST_F(TableDialog, TheSchemaListIsUpperCaseAndTakesAnUnlistedOwner) {
  ChangeOwner = "scott";
  Open(false);
  auto* schema = W<QComboBox>("SchemaCmb");
  EXPECT_EQ(schema->itemText(1), "HR");
  EXPECT_EQ(schema->currentText(), "scott");
  W<QLineEdit>("TableNameEd")->setText("T");
  EXPECT_EQ(Form->BuildText().left(21), "CREATE TABLE scott.T;");
}

TEST_F(TableDialog, AlterWritesValidDefaultsAndRefusesAnEmptiedLoadedName) {
  Open(true);
  Edit(2, C::ccDefault, "");  // C: cleared
  EXPECT_EQ(Form->BuildText(), "ALTER TABLE APP.T\rMODIFY (\r  C  DEFAULT NULL\r);\r\n");
  Edit(2, C::ccDefault, "SYSDATE");
  List->SetFocusedRow(0);
  W<QToolButton>("DropFieldBtn")->click();  // A: three rows left, D's loaded position is gone
  Edit(2, C::ccDefault, "'X'");             // D: the matched row's default is written
  EXPECT_EQ(Form->BuildText(),
            "ALTER TABLE APP.T\r DROP(A) CASCADE CONSTRAINTS;\r"
            "ALTER TABLE APP.T\rMODIFY (\r  D  DEFAULT 'X'\r);\r\n");
  Edit(0, C::ccName, " ");
  W<QPushButton>("OkBtn")->click();
  EXPECT_EQ(MessageArgs(), QStringList({"Acm.Check The:Column"}));
  EXPECT_TRUE(Host->EventsOf("execute").isEmpty());
}

TEST_F(TableDialog, AVanishedTableGivesAMessageAndNoAlterDialog) {
  for (const char* catalog : {"'catalog': {'SchTableNrn.Script': []}",
                              "'catalog': {'SchTableNrn.Script': [{'Table Type': ''}],"
                              " 'SchTableNrn.Column': [{'Column': 'A', 'Data Type': 'DATE'}]}"}) {
    Open(true, catalog);
    const QPointer<QWidget> form = Form;
    QApplication::processEvents();
    EXPECT_EQ(Host->EventsOf("messageText").size(), 1) << catalog;
    EXPECT_TRUE(!form || !form->isVisible()) << catalog;
  }
}

// A loaded primary key on A: dropping the column drops the key with it; unticking its only
// column drops the key and adds nothing.
TEST_F(TableDialog, DroppingOrUntickingTheKeyColumnNeverWritesAnEmptyKey) {
  const QByteArray catalog =
      QByteArray(kAlterCatalog)
          .replace(" 'CreateTableFrn.TableComment'",
                   " 'CreateTableFrn.Constraint_01': [{'Type': 'Primary Key', 'Constraint': 'T_PK',"
                   "  'Status': 'ENABLED', 'Deferrable': 'NOT DEFERRABLE', 'Deferred': 'IMMEDIATE',"
                   "  'Validated': 'VALIDATED'}],"
                   " 'CreateTableFrn.Constraint_03': [{'COLUMN_NAME': 'A'}],"
                   " 'CreateTableFrn.TableComment'");
  Open(true, catalog.constData());
  ASSERT_EQ(List->Cell(0, C::ccPk), "True");
  Edit(0, C::ccPk, "False");
  EXPECT_EQ(Trim(Form->BuildText()), "ALTER TABLE APP.T\r\n  DROP PRIMARY KEY CASCADE;");
  Edit(0, C::ccPk, "True");
  EXPECT_EQ(Trim(Form->BuildText()), "");
  List->SetFocusedRow(0);
  W<QToolButton>("DropFieldBtn")->click();
  EXPECT_EQ(Trim(Form->BuildText()), "ALTER TABLE APP.T\r DROP(A) CASCADE CONSTRAINTS;");
}

TEST_F(TableDialog, KeyPairsFollowAColumnRename) {
  Open(false);
  W<QLineEdit>("TableNameEd")->setText("T4");
  Edit(0, C::ccName, "A");
  Edit(0, C::ccType, "DATE");
  Edit(0, C::ccPk, "True");
  Edit(0, C::ccName, "ID");
  EXPECT_EQ(Form->BuildText(),
            "CREATE TABLE APP.T4 \r\n(\r  ID DATE NOT NULL,\r  CONSTRAINT PK_T4 PRIMARY KEY(ID)\r);"
            "\r\r\n");
}
