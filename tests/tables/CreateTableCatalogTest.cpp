// The table dialog's catalog queries on the demo database, and the alter mode loading the
// demo's tables through them.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTemporaryDir>

#include "host/core/RecordingHost.h"
#include "host/core/SqlConnection.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "tables/CreateTableFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

// Failures show the statement text, with its line breaks escaped.
[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}
using C = TCreateTableFrm;

namespace {

class TableCatalog : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { Connection = test::DemoConnection(); }

  // The rows of a catalog query as "column=value" lists.
  static QList<QMap<QString, QString>> Rows(const char* key,
                                            const QList<QPair<QString, QString>>& binds) {
    TKelQuery q(Connection);
    q.LoadSQL(key);
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

  // Opens APP.<table> in alter mode on the demo database.
  TCreateTableFrm* Load(const char* table) {
    Recorder = std::make_unique<host::TRecordingHost>(Connection, QJsonObject());
    SetApplication(Recorder.get());
    auto* form = new TCreateTableFrm(nullptr);
    form->SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", "APP");
    link.AddParams("P_TableName", table);
    form->ReadParams(&link);
    form->show();
    return form;
  }

  void TearDown() override {
    SetApplication(nullptr);
    Recorder.reset();
  }

  static inline host::TConnection* Connection = nullptr;
  std::unique_ptr<host::TRecordingHost> Recorder;
};

}  // namespace

TEST_F(TableCatalog, ScriptReadsRelationalAndObjectTablesWithTrimmedFlags) {
  const auto audit = Rows("SchTableNrn.Script", {{"P_OWN", "APP"}, {"P_TABLE", "AUDIT_LOG"}});
  ASSERT_EQ(audit.size(), 1);
  EXPECT_EQ(audit[0].value("Table Type"), "");
  EXPECT_EQ(audit[0].value("Degree"), "4");
  EXPECT_EQ(audit[0].value("Cache"), "CACHE");
  EXPECT_EQ(audit[0].value("Buffer Pool"), "KEEP");
  EXPECT_EQ(audit[0].value("Logging"), "NO");
  EXPECT_EQ(audit[0].value("Monitoring"), "NO");
  EXPECT_EQ(audit[0].value("MaxExtents"), "2147483645");
  EXPECT_EQ(audit[0].value("Tablespace"), "USERS");
  EXPECT_EQ(audit[0].keys().size(), 19);

  const auto persons = Rows("SchTableNrn.Script", {{"P_OWN", "APP"}, {"P_TABLE", "PERSONS"}});
  ASSERT_EQ(persons.size(), 1);
  EXPECT_EQ(persons[0].value("Table Type"), "PERSON_T");
  EXPECT_EQ(persons[0].value("Table Type Owner"), "APP");
  EXPECT_TRUE(Rows("SchTableNrn.Script", {{"P_OWN", "HR"}, {"P_TABLE", "PERSONS"}}).isEmpty());
}

TEST_F(TableCatalog, TypeQueriesListObjectTypesAndTheirAttributes) {
  QStringList types;
  for (const auto& r : Rows("CreateTableFrn.Type", {{"P_OWNER", "APP"}}))
    types << r.value("type_name");
  EXPECT_EQ(types, QStringList({"ADDRESS_T", "EMPLOYEE_T", "PERSON_T"}));
  const auto attrs =
      Rows("CreateTableFrn.TypeAttributeList", {{"P_OWNER", "APP"}, {"P_TYPENAME", "PERSON_T"}});
  ASSERT_EQ(attrs.size(), 6);
  EXPECT_EQ(attrs[0].value("ATTR_NAME"), "PERSON_ID");
  EXPECT_EQ(attrs[5].value("ATTR_TYPE_MOD"), "REF");
  EXPECT_EQ(attrs[5].value("ATTR_TYPE_OWNER"), "APP");
}

TEST_F(TableCatalog, AlterLoadsSizesPrecisionDefaultsAndComments) {
  TCreateTableFrm* form = Load("PROJECTS");
  TKelTreeList* list = form->ColumnTL();
  ASSERT_EQ(list->RowCount(), 11);
  auto row = [&](int r) { return list->RowCells(r); };
  EXPECT_EQ(row(1).mid(0, 5), QStringList({"NAME", "NVARCHAR2", "100", "", ""}));  // characters
  EXPECT_EQ(row(2).mid(0, 8),
            QStringList({"BUDGET", "NUMBER", "", "12", "2", "False", "False", "0"}));
  EXPECT_EQ(row(5).mid(0, 5), QStringList({"RATING", "FLOAT", "", "63", ""}));
  EXPECT_EQ(row(6).mid(0, 3), QStringList({"CODE", "RAW", "16"}));
  EXPECT_EQ(row(3).mid(0, 3), QStringList({"START_DATE", "DATE", ""}));
  EXPECT_EQ(row(0)[C::ccNull], "True");
  EXPECT_EQ(row(10)[C::ccID], "11");
  EXPECT_EQ(form->findChild<QPlainTextEdit*>("CommentEd")->toPlainText(),
            "Projects with budget and schedule");
  // As loaded, no column or comment changes (a monitored table always repeats MONITORING).
  const QString text = form->BuildText();
  EXPECT_EQ(form->SqlMemo().Lines().value(0), "");
  EXPECT_FALSE(text.contains("COMMENT")) << text.toStdString();
  delete form;

  form = Load("DEPT");
  EXPECT_EQ(form->ColumnTL()->Cell(2, C::ccDefault), "'NEW YORK'");
  EXPECT_EQ(form->ColumnTL()->Cell(2, C::ccComment), "City of the department's office");
  form->ColumnTL()->EditCell(2, C::ccComment, "Office's city");
  EXPECT_TRUE(
      form->BuildText().endsWith("\r\nCOMMENT ON COLUMN APP.DEPT.LOC IS 'Office''s city';\r\n"));
  EXPECT_EQ(form->SqlMemo().Lines().value(0), "");
  delete form;
}

TEST_F(TableCatalog, AlterOfTheDemoObjectTableShowsItsTypeAttributes) {
  TCreateTableFrm* form = Load("PERSONS");
  EXPECT_TRUE(form->findChild<QRadioButton*>("ObjectTableRdo")->isChecked());
  EXPECT_EQ(form->findChild<QComboBox*>("ObjectTypeCmb")->currentText(), "PERSON_T");
  auto* attrs = form->findChild<TKelTreeList*>("ObjectTableTreeList");
  ASSERT_EQ(attrs->RowCount(), 6);
  EXPECT_EQ(attrs->Cell(0, 1), "NUMBER(10,0)");
  EXPECT_EQ(attrs->Cell(1, 1), "VARCHAR2(60)");
  EXPECT_EQ(attrs->Cell(3, 1), "APP.ADDRESS_T");
  EXPECT_EQ(attrs->Cell(5, 1), "REF APP.PERSON_T");
  delete form;
}
