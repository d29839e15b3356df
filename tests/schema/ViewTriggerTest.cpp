// The view and trigger dialogs: their text rules, the picker driven through its window, large
// texts, and every catalog query of both dialogs on the demo database.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>

#include "host/core/RecordingHost.h"
#include "plugin/DataSelectFrn.h"
#include "plugin/Dispatch.h"
#include "plugin/KelEditor.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateTriggerFrn.h"
#include "schema/CreateViewFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}

namespace {

template <class T>
T* Child(QWidget* form, const char* name) {
  T* w = form->findChild<T*>(QString::fromLatin1(name));
  if (!w) ADD_FAILURE() << "no control " << name;
  return w;
}

void Click(QWidget* form, const char* button) {
  Child<QAbstractButton>(form, button)->click();
}

QDateTime FixedNow() {
  return QDateTime(QDate(2024, 3, 5), QTime(14, 7));
}

const char* const kTriggerFixture = R"({
  'connection': {'user': 'APP', 'users': ['APP', 'HR']},
  'catalog': {
    'CreateTrigger.LoadSchema': [{'Schema Name': 'APP', 'Created': '1'}, {'Schema Name': 'HR', 'Created': '2'}],
    'CreateTrigger.LoadColumn_01': [{'ColID': '1', 'Column Name': 'A', 'Data Type': 'NUMBER'},
                                    {'ColID': '2', 'Column Name': 'B', 'Data Type': 'DATE'},
                                    {'ColID': '3', 'Column Name': 'C', 'Data Type': 'CHAR'}]
  }
})";

// Fills the mandatory fields of a table trigger on APP.T.
void TableTrigger(QWidget* form) {
  Child<QLineEdit>(form, "TriggerNameEd")->setText("T1");
  Child<QLineEdit>(form, "SchemaEd")->setText("APP");
  Child<QLineEdit>(form, "TableEd")->setText("T");
  Child<QCheckBox>(form, "UpdateChk")->setChecked(true);
}

class Trigger : public ::testing::Test {
 protected:
  void SetUp() override {
    RegisterOpenRoutine("TRIGGER", &OpenModal<TCreateTriggerFrm>);
    TCreateTriggerFrm::Now = &FixedNow;
  }
};

}  // namespace

TEST(ViewText, FirstWordTestTakesOnlyTheNarrowSetAfterSelect) {
  EXPECT_TRUE(TCreateViewFrm::LooksLikeSelect("select*from dual"));
  EXPECT_TRUE(TCreateViewFrm::LooksLikeSelect("SeLeCt\tx from t"));
  EXPECT_TRUE(TCreateViewFrm::LooksLikeSelect("SELECT\nx from t"));
  EXPECT_TRUE(TCreateViewFrm::LooksLikeSelect("SELECT x"));
  EXPECT_FALSE(TCreateViewFrm::LooksLikeSelect("SELECT\r\nx from t"));
  EXPECT_FALSE(TCreateViewFrm::LooksLikeSelect("WITH q AS (SELECT 1 FROM dual) SELECT * FROM q"));
  EXPECT_FALSE(TCreateViewFrm::LooksLikeSelect("SELECTED"));
  EXPECT_FALSE(TCreateViewFrm::LooksLikeSelect("SELECT"));
  EXPECT_FALSE(TCreateViewFrm::LooksLikeSelect(""));
}

TEST(ViewText, StoredTextIsCutBeforeTheClauseThatEndsIt) {
  QString option;
  EXPECT_EQ(TCreateViewFrm::SplitViewText("SELECT 1 FROM T WITH READ ONLY", &option),
            "SELECT 1 FROM T ");
  EXPECT_EQ(option, "WITH READ ONLY");
  // A literal that spells a clause is part of the query; the clause at the end is the cut.
  EXPECT_EQ(TCreateViewFrm::SplitViewText("SELECT 'with read only' A FROM T\n  with check option",
                                          &option),
            "SELECT 'with read only' A FROM T\n  ");
  EXPECT_EQ(option, "WITH CHECK OPTION");
  EXPECT_EQ(TCreateViewFrm::SplitViewText("SELECT 1 FROM T", &option), "SELECT 1 FROM T");
  EXPECT_TRUE(option.isEmpty());
}

TEST(ViewDialog, LargeQueryWithQuotesAndTabsIsWrittenAsTyped) {
  test::TTestHost host(
      test::Json("{'connection': {'user': 'APP', 'users': ['APP']}, 'catalog': {}}"));
  RegisterOpenRoutine("VIEW", &OpenChild<TCreateViewFrm>);
  QStringList lines{"SELECT 'it''s'\tA"};
  for (int i = 1; i < 5000; ++i) lines << QStringLiteral("     , %1 AS C%1").arg(i);
  lines << "  FROM T;";
  const QString query = lines.join("\r\n");
  host.Open("VIEW", nullptr, [&](QWidget* form) {
    Child<QLineEdit>(form, "ViewNameEd")->setText("BIG_V");
    Child<TKelEditor>(form, "SQLEditor")->SetText(query);
    Child<QLineEdit>(form, "ViewNameEd")->setFocus();
    Click(form, "ViewSqlBtn");
    form->close();
  });
  const auto previews = host.EventsOf("preview");
  ASSERT_EQ(previews.size(), 1);
  EXPECT_EQ(previews[0].value("text").toString(),
            "CREATE VIEW APP.BIG_V\r\nAS\r\n" + query + ";\r\n\r\n");
}

TEST(TriggerText, UpdateListUsesLoneCarriageReturns) {
  EXPECT_EQ(TCreateTriggerFrm::UpdateColumnList({"A", "B"}), "OF A\r  ,B\r");
  EXPECT_EQ(TCreateTriggerFrm::UpdateColumnList({"A"}), "OF A\r");
  EXPECT_EQ(TCreateTriggerFrm::UpdateColumnList({}), "");
}

TEST(TriggerText, TemplateHasItsTwentyThreeLinesWithTrailingBlanks) {
  const QStringList lines = TCreateTriggerFrm::BodyTemplate("T1", FixedNow());
  ASSERT_EQ(lines.size(), 23);
  const QStringList expected{
      "DECLARE ",
      "tmpVar NUMBER; ",
      "/" + QString(78, '*') + " ",
      "   TRIGGER NAME :       T1 ",
      "   CREATE DATE  :       " + QLocale::system().toString(FixedNow(), QLocale::ShortFormat) +
          " ",
      "   NOTE         :        ",
      QString(78, '*') + "/ ",
      "BEGIN ",
      "   tmpVar := 0; ",
      "",
      "   SELECT MySeq.NEXTVAL INTO tmpVar FROM dual; ",
      "   :NEW.SequenceColumn := tmpVar; ",
      "   :NEW.CreatedDate := SYSDATE; ",
      "   :NEW.CreatedUser := USER; ",
      "",
      "   EXCEPTION ",
      "     WHEN OTHERS THEN ",
      "       -- Consider logging the error and then re-raise ",
      "       RAISE; ",
      "END  T1; ",
      "",
      "",
      "/ ",
  };
  for (int i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i], expected[i]) << "line " << i + 1;
}

TEST_F(Trigger, BlankPlsqlBodyBecomesTheTemplateButACallIsNeverReplaced) {
  test::TTestHost host(test::Json(kTriggerFixture));
  host.Open("TRIGGER", nullptr, [](QWidget* form) {
    TableTrigger(form);
    Click(form, "ViewSqlBtn");
    auto* body = Child<TKelEditor>(form, "BodyEditor");
    EXPECT_EQ(body->Text(), TCreateTriggerFrm::BodyTemplate("T1", FixedNow()).join("\r\n"));
    body->SetText("  ");
    Child<QRadioButton>(form, "ProcedureRadio")->setChecked(true);
    Click(form, "ViewSqlBtn");
    EXPECT_EQ(body->Text(), "  ");
    Click(form, "CancelBtn");
  });
  const auto previews = host.EventsOf("preview");
  ASSERT_EQ(previews.size(), 2);
  EXPECT_TRUE(previews[0].value("text").toString().endsWith("END  T1; \r\n\r\n\r\n/"));
  EXPECT_TRUE(previews[1].value("text").toString().endsWith("FOR EACH ROW \r\nCALL"));
}

TEST_F(Trigger, ViewTargetsForceInsteadOfAndRowLevelAndTableModeRestoresTiming) {
  test::TTestHost host(test::Json(kTriggerFixture));
  host.Open("TRIGGER", nullptr, [](QWidget* form) {
    auto* tabs = Child<QTabWidget>(form, "MainPage");
    Child<QRadioButton>(form, "StatmentRadio")->setChecked(true);
    Child<QRadioButton>(form, "AfterRadio")->setChecked(true);
    Child<QCheckBox>(form, "UpdateChk")->setChecked(true);
    EXPECT_TRUE(tabs->isTabVisible(2));
    for (const char* target : {"ViewRadio", "NestedRadio"}) {
      Child<QRadioButton>(form, target)->setChecked(true);
      EXPECT_TRUE(Child<QRadioButton>(form, "InsteadRadio")->isChecked());
      EXPECT_TRUE(Child<QRadioButton>(form, "RowRadio")->isChecked());
      EXPECT_FALSE(Child<QRadioButton>(form, "StatmentRadio")->isEnabled());
      EXPECT_FALSE(tabs->isTabVisible(1));
      EXPECT_FALSE(tabs->isTabVisible(2));
    }
    EXPECT_TRUE(Child<QLineEdit>(form, "ParaentasEd")->isEnabled());
    Child<QRadioButton>(form, "TableRadio")->setChecked(true);
    EXPECT_TRUE(Child<QRadioButton>(form, "BeforeRadio")->isChecked());
    EXPECT_FALSE(Child<QRadioButton>(form, "InsteadRadio")->isEnabled());
    EXPECT_FALSE(Child<QLineEdit>(form, "ParaentasEd")->isEnabled());
    EXPECT_TRUE(tabs->isTabVisible(1));
    EXPECT_TRUE(tabs->isTabVisible(2));
    Click(form, "CancelBtn");
  });
}

TEST_F(Trigger, DatabaseEventsFollowTheFireTime) {
  test::TTestHost host(test::Json(kTriggerFixture));
  host.Open("TRIGGER", nullptr, [](QWidget* form) {
    Child<QRadioButton>(form, "DatabaseRadio")->setChecked(true);
    Child<QRadioButton>(form, "AfterRadio")->setChecked(true);
    for (const char* box : {"ServerErrorChk", "LogonChk", "StartupChk", "SuspendChk"})
      Child<QCheckBox>(form, box)->setChecked(true);
    Child<QRadioButton>(form, "BeforeRadio")->setChecked(true);
    for (const char* box : {"ServerErrorChk", "LogonChk", "StartupChk"}) {
      EXPECT_FALSE(Child<QCheckBox>(form, box)->isChecked()) << box;
      EXPECT_FALSE(Child<QCheckBox>(form, box)->isEnabled()) << box;
    }
    EXPECT_TRUE(Child<QCheckBox>(form, "SuspendChk")->isChecked());
    EXPECT_TRUE(Child<QCheckBox>(form, "LogoffChk")->isEnabled());
    Click(form, "CancelBtn");
  });
}

TEST_F(Trigger, PickerChoosesByDoubleClickAndCancelChangesNothing) {
  test::TTestHost host(test::Json(kTriggerFixture));
  host.Open("TRIGGER", nullptr, [](QWidget* form) {
    auto* schema = Child<QLineEdit>(form, "SchemaEd");
    schema->setText("KEEP");
    QTimer::singleShot(0, [] {
      ASSERT_TRUE(DataSelectFrm);
      Child<QPushButton>(DataSelectFrm, "CancelBtn")->click();
    });
    Click(form, "SchemaSearchBtn");
    EXPECT_EQ(schema->text(), "KEEP");
    EXPECT_EQ(DataSelectFrm, nullptr);  // every pick leaves no picker behind
    QTimer::singleShot(0, [] {
      ASSERT_TRUE(DataSelectFrm);
      auto* grid = DataSelectFrm->DataGrd();
      EXPECT_EQ(DataSelectFrm->windowTitle(), "Select Schema");
      // What the view reports for a double click on the second row.
      const QModelIndex row = grid->model()->index(1, 0);
      grid->setCurrentIndex(row);
      emit grid->doubleClicked(row);
    });
    Click(form, "SchemaSearchBtn");
    EXPECT_EQ(schema->text(), "HR");
    Click(form, "CancelBtn");
  });
}

TEST_F(Trigger, ThousandColumnTableFillsTheUpdateListAndWritesTheChosenOnes) {
  QString rows;
  for (int i = 1; i <= 1000; ++i)
    rows += QStringLiteral("%1{'ColID': '%2', 'Column Name': 'C%2', 'Data Type': 'NUMBER'}")
                .arg(i > 1 ? "," : "")
                .arg(i);
  const QByteArray fixture = QStringLiteral(
                                 "{'connection': {'user': 'APP', 'users': ['APP']}, "
                                 "'catalog': {'CreateTrigger.LoadColumn_01': [%1]}}")
                                 .arg(rows)
                                 .toUtf8();
  test::TTestHost host(test::Json(fixture.constData()));
  host.Open("TRIGGER", nullptr, [](QWidget* form) {
    TableTrigger(form);
    Child<TKelEditor>(form, "BodyEditor")->SetText("BEGIN NULL; END;");
    Child<QRadioButton>(form, "UpdateRadio2")->setChecked(true);
    auto* list = Child<TKelTreeList>(form, "UpdateColumnsTreeList");
    ASSERT_EQ(list->RowCount(), 1000);
    ASSERT_TRUE(list->EditCell(0, 3, "True"));
    ASSERT_TRUE(list->EditCell(999, 3, "True"));
    Click(form, "ViewSqlBtn");
    Child<QRadioButton>(form, "UpdateRadio1")->setChecked(true);  // any column again
    Click(form, "ViewSqlBtn");
    Click(form, "CancelBtn");
  });
  const auto previews = host.EventsOf("preview");
  ASSERT_EQ(previews.size(), 2);
  EXPECT_EQ(previews[0].value("text").toString(),
            "CREATE OR REPLACE TRIGGER APP.T1 \r\nBEFORE UPDATE \r\nOF C1\r  ,C1000\r\r\n"
            "ON APP.T \r\nREFERENCING NEW AS  New OLD AS  Old\r\nFOR EACH ROW \r\n"
            "BEGIN NULL; END;");
  EXPECT_FALSE(previews[1].value("text").toString().contains("OF C1"));
}

// ---------------------------------------------------------------------------------------------
// Catalog queries on the demo database.

namespace {

QList<QMap<QString, QString>> Rows(const char* key, const QList<QPair<QString, QString>>& binds,
                                   const QString& suffix = {}) {
  TKelQuery q(test::DemoConnection());
  q.LoadSQL(key);
  if (!suffix.isEmpty()) q.SetSQL(q.SQL() + "\n" + suffix, key);
  for (const auto& [name, value] : binds) q.ParamByName(name) = value;
  q.Open();
  QList<QMap<QString, QString>> rows;
  for (; !q.Eof(); q.Next()) {
    QMap<QString, QString> row;
    for (const QString& c : q.Data().Columns) row.insert(c, q.FieldByName(c));
    rows << row;
  }
  return rows;
}

}  // namespace

TEST(ViewCatalog, EveryKeyReadsTheDemoViews) {
  const auto view = Rows("CreateViewFrn.Alter01", {{"P_OWN", "APP"}, {"P_NAME", "PERSON_OV"}});
  ASSERT_EQ(view.size(), 1);
  EXPECT_TRUE(view[0].value("TEXT").startsWith("SELECT PERSON_ID"));
  EXPECT_EQ(view[0].value("VIEW_TYPE"), "PERSON_T");
  EXPECT_EQ(view[0].value("VIEW_TYPE_OWNER"), "APP");
  EXPECT_EQ(view[0].value("OID_TEXT"), "PERSON_ID");
  EXPECT_TRUE(view[0].contains("SUPERVIEW_NAME"));
  // EMP_V's check option constraint has a system name: none is read back.
  EXPECT_TRUE(Rows("SchViewNrn.Script_01", {{"P_OWN", "APP"}, {"P_VIEW", "EMP_V"}}).isEmpty());
  const auto comment = Rows("SchTableNrn.Script_17", {{"P_OWN", "APP"}, {"P_TABLE", "EMP_V"}});
  ASSERT_EQ(comment.size(), 1);
  EXPECT_FALSE(comment[0].value("Comments").isEmpty());
  const auto types = Rows("SchTypeNrn.Object Type", {{"P_OWN", "APP"}, {"P_TYPE", "OBJECT"}});
  ASSERT_EQ(types.size(), 3);
  EXPECT_EQ(types[0].value("Name"), "ADDRESS_T");
  const auto attributes =
      Rows("SchTypeNrn.Attribute", {{"P_OWN", "APP"}, {"P_OBJECT", "ADDRESS_T"}});
  ASSERT_EQ(attributes.size(), 4);
  EXPECT_EQ(attributes[3].value("Name"), "COUNTRY");
  const auto supers = Rows("CreateViewFrn.SuperView", {{"P_OWN", "APP"}});
  ASSERT_EQ(supers.size(), 1);
  EXPECT_EQ(supers[0].value("Name"), "PERSON_OV");
}

TEST(TriggerCatalog, PickerListsTakeTheOwnerFilterAndOrdering) {
  const QString filter = "where owner = 'APP' order by 1,2 ";
  const auto schemas = Rows("CreateTrigger.LoadSchema", {}, "order by 1,2 ");
  ASSERT_FALSE(schemas.isEmpty());
  EXPECT_EQ(schemas[0].value("Schema Name"), "APP");
  const auto tables = Rows("CreateTrigger.LoadTable", {}, filter);
  ASSERT_FALSE(tables.isEmpty());
  for (const auto& t : tables) EXPECT_EQ(t.value("Schema Name"), "APP");
  EXPECT_EQ(tables[0].value("Table Name"), "AUDIT_LOG");
  const auto views = Rows("CreateTrigger.LoadView", {}, filter);
  ASSERT_EQ(views.size(), 4);
  EXPECT_EQ(views[0].value("View Name"), "CONTACTS_V");
  const auto nested =
      Rows("CreateTrigger.LoadColumn", {{"P_OWN", "APP"}, {"P_VIEW", "CONTACTS_V"}});
  ASSERT_EQ(nested.size(), 1);
  EXPECT_EQ(nested[0].value("Column Name"), "ADDRESSES");
}

TEST(TriggerCatalog, UpdateColumnsAndAlterKeysReadTheDemoTriggers) {
  const auto relational = Rows("CreateTrigger.ScanObject", {{"P_OWN", "APP"}, {"P_TABLE", "EMP"}});
  ASSERT_EQ(relational.size(), 1);
  EXPECT_EQ(relational[0].value("TABLE_TYPE"), "");
  const auto columns = Rows("CreateTrigger.LoadColumn_01", {{"P_OWN", "APP"}, {"P_TABLE", "DEPT"}});
  ASSERT_EQ(columns.size(), 3);
  EXPECT_EQ(columns[0].value("ColID"), "1");
  EXPECT_EQ(columns[1].value("Column Name"), "DNAME");
  EXPECT_EQ(columns[1].value("Data Type"), "VARCHAR2");
  const auto attributes =
      Rows("CreateTrigger.LoadType", {{"P_OWN", "APP"}, {"P_TYPE", "PERSON_T"}});
  ASSERT_EQ(attributes.size(), 6);
  EXPECT_EQ(attributes[0].value("Column Name"), "PERSON_ID");
  const auto trigger =
      Rows("CreateTrigger.AlterTrigger_01", {{"P_OWN", "APP"}, {"P_TRIGGER", "EMP_SAL_STMT"}});
  ASSERT_EQ(trigger.size(), 1);
  EXPECT_EQ(trigger[0].value("base_object_type"), "TABLE");
  EXPECT_EQ(trigger[0].value("trigger_type"), "AFTER STATEMENT");
  EXPECT_EQ(trigger[0].value("ACTION_TYPE"), "CALL");
  EXPECT_EQ(trigger[0].value("STATUS"), "DISABLED");
  EXPECT_TRUE(trigger[0].value("TRIGGER_BODY").startsWith("CALL APP.REFRESH_STATS"));
  for (const char* c : {"table_owner", "table_name", "column_name", "triggering_event",
                        "REFERENCING_NAMES", "WHEN_CLAUSE"})
    EXPECT_TRUE(trigger[0].contains(c)) << c;
  // Only the columns of the UPDATE OF list, not those the body reads.
  const auto used =
      Rows("CreateTrigger.TriggerColumn", {{"P_OWN", "APP"}, {"P_TRIGGER", "EMP_AUDIT_AIUD"}});
  ASSERT_EQ(used.size(), 2);
  EXPECT_EQ(used[0].value("TRIGGER_OWNER"), "APP");
  EXPECT_TRUE(
      Rows("CreateTrigger.TriggerColumn", {{"P_OWN", "APP"}, {"P_TRIGGER", "EMP_BIR"}}).isEmpty());
}
