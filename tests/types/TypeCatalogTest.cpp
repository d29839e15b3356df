// The type dialogs' catalog queries on the demo database, and the dialogs loading the demo's
// types through them.
#include <gtest/gtest.h>

#include "host/core/RecordingHost.h"
#include "plugin/KelQuery.h"
#include "tests/support/TestHost.h"
#include "types/CreateCollectFrn.h"
#include "types/CreateTypeFrn.h"

using namespace kel;

namespace {

using TRows = QList<QMap<QString, QString>>;

TRows Rows(const char* key, const QList<QPair<QString, QString>>& binds) {
  TKelQuery q(test::DemoConnection());
  q.LoadSQL(key);
  for (const auto& [name, value] : binds) q.ParamByName(name) = value;
  q.Open();
  TRows rows;
  for (; !q.Eof(); q.Next()) {
    QMap<QString, QString> row;
    for (const QString& c : q.Data().Columns) row.insert(c, q.FieldByName(c));
    rows << row;
  }
  return rows;
}

QStringList Column(const TRows& rows, const char* column) {
  QStringList values;
  for (const auto& row : rows) values << row.value(column);
  return values;
}

}  // namespace

TEST(TypeCatalog, InfoTellsFinalSubAndMissingTypes) {
  const TRows account = Rows("CreateTypeFrn.Info", {{"P_OWN", "SALES"}, {"P_NAME", "ACCOUNT_T"}});
  ASSERT_EQ(account.size(), 1);
  EXPECT_EQ(account[0].value("TYPECODE"), "OBJECT");
  EXPECT_EQ(account[0].value("FINAL"), "YES");
  EXPECT_EQ(
      Rows("CreateTypeFrn.Info", {{"P_OWN", "APP"}, {"P_NAME", "PERSON_T"}})[0].value("FINAL"),
      "NO");
  EXPECT_EQ(Rows("CreateTypeFrn.Info", {{"P_OWN", "APP"}, {"P_NAME", "EMPLOYEE_T"}})[0].value(
                "SUPERTYPE_NAME"),
            "PERSON_T");
  EXPECT_TRUE(Rows("CreateTypeFrn.Info", {{"P_OWN", "APP"}, {"P_NAME", "ACCOUNT_T"}}).isEmpty());
}

TEST(TypeCatalog, AttributesInOrderWithSizesAndOnlyLocalOnes) {
  const TRows attrs =
      Rows("CreateTypeFrn.attribute", {{"P_OWN", "SALES"}, {"P_NAME", "ACCOUNT_T"}});
  EXPECT_EQ(Column(attrs, "ATTR_NAME"),
            (QStringList{"ACCOUNT_NO", "HOLDER", "OPENED", "AMOUNT", "BRANCH", "OPENED_BY"}));
  EXPECT_EQ(attrs[1].value("LENGTH"), "60");
  EXPECT_EQ(attrs[3].value("PRECISION"), "14");
  EXPECT_EQ(attrs[3].value("SCALE"), "2");
  EXPECT_EQ(attrs[5].value("ATTR_TYPE_MOD"), "REF");
  EXPECT_EQ(attrs[5].value("ATTR_TYPE_OWNER"), "APP");
  const TRows sub = Rows("CreateTypeFrn.attribute", {{"P_OWN", "APP"}, {"P_NAME", "EMPLOYEE_T"}});
  EXPECT_EQ(Column(sub, "ATTR_NAME"), (QStringList{"SALARY", "BADGE"}));
}

TEST(TypeCatalog, MethodsWithResultsAndParametersPerMethodNumber) {
  const TRows methods = Rows("CreateTypeFrn.Method", {{"P_OWN", "SALES"}, {"P_NAME", "ACCOUNT_T"}});
  EXPECT_EQ(Column(methods, "METHOD_NAME"),
            (QStringList{"BALANCE", "DEPOSIT", "MAILING", "SORT_KEY"}));
  EXPECT_EQ(Column(methods, "RESULTS"), (QStringList{"1", "0", "1", "1"}));
  EXPECT_EQ(Column(methods, "METHOD_TYPE"), (QStringList{"PUBLIC", "PUBLIC", "PUBLIC", "MAP"}));
  EXPECT_EQ(methods[2].value("RESULT_TYPE_OWNER"), "APP");
  EXPECT_EQ(methods[2].value("RESULT_TYPE_NAME"), "ADDRESS_T");
  EXPECT_EQ(methods[1].value("RESULT_TYPE_NAME"), "");

  const TRows params = Rows("CreateTypeFrn.Parameter",
                            {{"P_OWN", "SALES"}, {"P_NAME", "ACCOUNT_T"}, {"P_METHOD_NO", "2"}});
  EXPECT_EQ(Column(params, "PARAM_NAME"), (QStringList{"SELF", "SUM_IN", "BOOKED_ON"}));
  EXPECT_EQ(Column(params, "PARAM_MODE"), (QStringList{"IN OUT", "IN", "IN"}));
}

TEST(TypeCatalog, BodyLinesBeginWithTypeBody) {
  const TRows body = Rows("CreateTypeFrn.Body", {{"P_OWN", "SALES"}, {"P_NAME", "ACCOUNT_T"}});
  ASSERT_EQ(body.size(), 18);
  EXPECT_TRUE(body[0].value("TEXT").startsWith("TYPE BODY ACCOUNT_T AS"));
  EXPECT_EQ(body[17].value("TEXT"), "END;");
  EXPECT_TRUE(Rows("CreateTypeFrn.Body", {{"P_OWN", "APP"}, {"P_NAME", "ADDRESS_T"}}).isEmpty());
}

TEST(TypeCatalog, TypePickerListsObjectAndCollectionTypesOfOneOwner) {
  const QStringList app = Column(Rows("CreateAttributeFrn.Type", {{"P_OWN", "APP"}}), "TYPE_NAME");
  EXPECT_TRUE(app.contains("ADDRESS_T"));
  EXPECT_TRUE(app.contains("PHONE_LIST_T"));
  EXPECT_FALSE(app.contains("NUMBER"));
  EXPECT_TRUE(Rows("CreateAttributeFrn.Type", {{"P_OWN", "NOBODY"}}).isEmpty());
}

TEST(TypeCatalog, CollectionReadsKindLimitAndElement) {
  const TRows phones =
      Rows("CreateCollectFrn.Alter001", {{"P_OWN", "APP"}, {"P_NAME", "PHONE_LIST_T"}});
  ASSERT_EQ(phones.size(), 1);
  EXPECT_EQ(phones[0].value("COLL_TYPE"), "VARYING ARRAY");
  EXPECT_EQ(phones[0].value("Limit"), "5");
  EXPECT_EQ(phones[0].value("LENGTH"), "20");
  const TRows refs =
      Rows("CreateCollectFrn.Alter001", {{"P_OWN", "APP"}, {"P_NAME", "PERSON_REF_LIST_T"}});
  EXPECT_EQ(refs[0].value("ELEM_TYPE_MOD"), "REF");
  const TRows ids = Rows("CreateCollectFrn.Alter001", {{"P_OWN", "APP"}, {"P_NAME", "ID_LIST_T"}});
  EXPECT_EQ(ids[0].value("COLL_TYPE"), "TABLE");
  EXPECT_EQ(ids[0].value("PRECISION"), "12");
}

TEST(TypeCatalog, TypeDialogLoadsMethodsAndParametersFromTheDemo) {
  host::TRecordingHost recorder(test::DemoConnection(), QJsonObject());
  SetApplication(&recorder);
  {
    TCreateTypeFrm form(nullptr);
    form.SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", "APP");
    link.AddParams("P_ObjName", "PERSON_T");
    form.ReadParams(&link);
    form.show();
    ASSERT_EQ(form.Methods().size(), 3);
    // SELF is implicit and not listed.
    ASSERT_EQ(form.Methods()[1].Params.size(), 2);
    EXPECT_EQ(form.Methods()[1].Params[0].Type, kNestedObject);
    EXPECT_EQ(form.Methods()[1].Params[0].Object, "ADDRESS_T");
    EXPECT_EQ(form.Methods()[0].Kind, "FUNCTION");
    EXPECT_EQ(form.Methods()[1].Kind, "PROCEDURE");
    EXPECT_EQ(form.Methods()[2].Kind, "MAP MEMBER FUNCTION");
    EXPECT_EQ(form.Attributes()[4].Object, "PHONE_LIST_T");
  }
  SetApplication(nullptr);
}

// The workbench's browser folders list the demo's types, which its "Alter..." hands to the
// dialogs with IsAlter, P_Schema and P_ObjName.
TEST(TypeCatalog, WorkbenchFoldersListTheDemoTypesByKind) {
  EXPECT_EQ(Column(Rows("Workbench.ObjectTypes", {{"P_OWNER", "SALES"}}), "NAME"),
            (QStringList{"ACCOUNT_T", "LEGACY_T"}));
  const QStringList app = Column(Rows("Workbench.ObjectTypes", {{"P_OWNER", "APP"}}), "NAME");
  EXPECT_TRUE(app.contains("PERSON_T"));
  EXPECT_FALSE(app.contains("PHONE_LIST_T"));
  EXPECT_EQ(Column(Rows("Workbench.CollectionTypes", {{"P_OWNER", "SALES"}}), "NAME"),
            (QStringList{"DATE_LIST_T"}));
  EXPECT_TRUE(Column(Rows("Workbench.CollectionTypes", {{"P_OWNER", "APP"}}), "NAME")
                  .contains("PHONE_LIST_T"));
}

namespace {
// Opens a type in alter mode on the demo database, presses View SQL and returns the statement.
template <class TForm>
QString DemoPreview(const char* schema, const char* name) {
  host::TRecordingHost recorder(test::DemoConnection(), QJsonObject());
  SetApplication(&recorder);
  QString text;
  {
    TForm form(nullptr);
    form.SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", schema);
    link.AddParams("P_ObjName", name);
    form.ReadParams(&link);
    form.show();
    form.ViewSqlBtnClick();
    text = form.SqlMemo().Text();
  }
  SetApplication(nullptr);
  return text;
}
}  // namespace

TEST(TypeCatalog, DemoTypesAreWrittenBackAsTheyStand) {
  const QString account = DemoPreview<TCreateTypeFrm>("SALES", "ACCOUNT_T");
  EXPECT_TRUE(account.startsWith(
      "CREATE OR REPLACE TYPE SALES.ACCOUNT_T AS OBJECT\r\n(\r\n  ACCOUNT_NO NUMBER(12,0),\r\n"
      "  HOLDER   VARCHAR2(60),\r\n  OPENED DATE,\r\n  AMOUNT NUMBER(14,2),\r\n"
      "  BRANCH APP.ADDRESS_T,\r\n  OPENED_BY REF APP.PERSON_T,\r\n"
      "  MEMBER FUNCTION BALANCE RETURN NUMBER,\r\n"
      "  MEMBER PROCEDURE DEPOSIT(SUM_IN IN NUMBER,BOOKED_ON IN DATE),\r\n"
      "  MEMBER FUNCTION MAILING(KIND IN VARCHAR2) RETURN APP.ADDRESS_T,\r\n"
      "  MAP MEMBER FUNCTION SORT_KEY RETURN NUMBER\r\n);\r\n\r\n"
      "CREATE OR REPLACE \r\nTYPE BODY SALES.ACCOUNT_T AS\r\n"))
      << account.toStdString();
  EXPECT_TRUE(account.endsWith("    RETURN ACCOUNT_NO;\r\n  END;\r\nEND;\r\n"));

  EXPECT_EQ(DemoPreview<TCreateCollectFrm>("APP", "PHONE_LIST_T"),
            "CREATE OR REPLACE TYPE APP.PHONE_LIST_T AS VARRAY(5) \r\nOF   VARCHAR2(20)\r\n");
  EXPECT_EQ(DemoPreview<TCreateCollectFrm>("APP", "ADDRESS_TAB_T"),
            "CREATE OR REPLACE TYPE APP.ADDRESS_TAB_T AS TABLE \r\nOF APP.ADDRESS_T\r\n");
  EXPECT_EQ(DemoPreview<TCreateCollectFrm>("SALES", "DATE_LIST_T"),
            "CREATE OR REPLACE TYPE SALES.DATE_LIST_T AS VARRAY(31) \r\nOF DATE\r\n");
}
