// The synonym dialog driven through the module's dispatch on a fixture host: the object search,
// moving objects and remote entries into the synonym list, the statements, and its catalog
// queries on the demo database.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>

#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateSynonymFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

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

const char* const kFixture = R"({
  'connection': {'user': 'APP', 'users': ['APP', 'HR'], 'publicLinks': false},
  'catalog': {
    'SchemaFrn.DBLink': [{'DB Link': 'SALESDB', 'Owner': 'APP'},
                         {'DB Link': 'REPORTING.EXAMPLE.COM', 'Owner': 'PUBLIC'}],
    'CreateSynonymFrn.Object01': [{'OBJECT_NAME': 'DEPT', 'OBJECT_TYPE': 'TABLE'},
                                  {'OBJECT_NAME': 'EMP', 'OBJECT_TYPE': 'TABLE'},
                                  {'OBJECT_NAME': 'PROJECTS', 'OBJECT_TYPE': 'TABLE'},
                                  {'OBJECT_NAME': 'SALGRADE', 'OBJECT_TYPE': 'TABLE'}],
    'CreateSynonymFrn.Object03': [{'OBJECT_NAME': 'EMP_V', 'OBJECT_TYPE': 'VIEW'}]
  }
})";

class Synonym : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("SYNONYM", &OpenModal<TCreateSynonymFrm>); }
};

QStringList Column(TKelTreeList* list, int col) {
  QStringList out;
  for (int r = 0; r < list->RowCount(); ++r) out << list->Cell(r, col);
  return out;
}

void AddRemote(QWidget* form, const QString& name, const QString& schema, const QString& object,
               int link) {
  Child<QRadioButton>(form, "RemoteRdo")->click();
  Child<QLineEdit>(form, "SynonymNameEd")->setText(name);
  Child<QComboBox>(form, "DBLinkCmb")->setCurrentIndex(link);
  Child<QLineEdit>(form, "SchemaEd")->setText(schema);
  Child<QLineEdit>(form, "ObjectEd")->setText(object);
  Click(form, "RightBtn");
}

}  // namespace

TEST_F(Synonym, SelectedObjectsMoveInListOrderAndGiveOneStatementEach) {
  test::TTestHost host(test::Json(kFixture));
  const int result = host.Open("SYNONYM", nullptr, [](QWidget* form) {
    auto* obj = Child<TKelTreeList>(form, "ObjTList");
    auto* syn = Child<TKelTreeList>(form, "SynTList");
    auto* add = Child<QToolButton>(form, "RightBtn");
    Child<QComboBox>(form, "ObjectTypeCmb")->setCurrentText("TABLE");
    Child<QLineEdit>(form, "SearchOptionEd")->setText("e");
    Click(form, "SearchBtn");
    ASSERT_EQ(obj->RowCount(), 4);
    EXPECT_FALSE(add->isEnabled());
    EXPECT_FALSE(Child<QToolButton>(form, "LeftBtn")->isEnabled());
    obj->SelectRows({3, 0, 2});
    EXPECT_TRUE(add->isEnabled());
    Click(form, "RightBtn");
    EXPECT_EQ(Column(obj, 0), QStringList({"EMP"}));
    EXPECT_EQ(Column(syn, 0), QStringList({"DEPT", "PROJECTS", "SALGRADE"}));
    // Private by default without the public-link permission; the searched schema.
    EXPECT_EQ(syn->RowCells(0), QStringList({"DEPT", "DEPT", "TABLE", "False", "APP", ""}));
    EXPECT_FALSE(add->isEnabled());
    Click(form, "ViewSqlBtn");
    Click(form, "PublicAllBtn");
    Click(form, "ViewSqlBtn");
    // Drop removes the selected rows.
    syn->SelectRows({1});
    Click(form, "LeftBtn");
    EXPECT_EQ(Column(syn, 0), QStringList({"DEPT", "SALGRADE"}));
    Click(form, "PrivateAllBtn");
    Click(form, "OkBtn");
  });
  EXPECT_EQ(result, mrOk);
  const auto queries = host.EventsOf("query");
  ASSERT_EQ(queries.size(), 2);
  EXPECT_EQ(queries[1].value("key").toString(), "CreateSynonymFrn.Object01");
  EXPECT_EQ(queries[1].value("binds").toObject(),
            test::Json("{'P_OWNER': 'APP', 'P_TYPE': 'TABLE', 'P_NAME': 'E%'}"));
  // A second View SQL refreshes the open preview and shows it again: two events.
  const auto previews = host.EventsOf("preview");
  ASSERT_EQ(previews.size(), 4);
  EXPECT_EQ(previews[0].value("text").toString(),
            "CREATE SYNONYM \"DEPT\" FOR \"APP\".\"DEPT\";\r\n"
            "CREATE SYNONYM \"PROJECTS\" FOR \"APP\".\"PROJECTS\";\r\n"
            "CREATE SYNONYM \"SALGRADE\" FOR \"APP\".\"SALGRADE\";\r\n");
  EXPECT_EQ(previews[2].value("text").toString(),
            "CREATE PUBLIC SYNONYM \"DEPT\" FOR \"APP\".\"DEPT\";\r\n"
            "CREATE PUBLIC SYNONYM \"PROJECTS\" FOR \"APP\".\"PROJECTS\";\r\n"
            "CREATE PUBLIC SYNONYM \"SALGRADE\" FOR \"APP\".\"SALGRADE\";\r\n");
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            "CREATE SYNONYM \"DEPT\" FOR \"APP\".\"DEPT\";\r\n"
            "CREATE SYNONYM \"SALGRADE\" FOR \"APP\".\"SALGRADE\";\r\n");
}

TEST_F(Synonym, SearchPicksTheQueryByTypeAndGrantedObjects) {
  test::TTestHost host(test::Json(kFixture));
  TXLink link;
  link.SetVerb("ChangeOwner");
  link.AddParams("ObjFrmOwner", "hr");
  host.Open("SYNONYM", &link, [](QWidget* form) {
    EXPECT_EQ(Child<QComboBox>(form, "SchemaCmb")->currentText(), "HR");
    Click(form, "SearchBtn");  // no type, no keyword
    EXPECT_EQ(Child<TKelTreeList>(form, "ObjTList")->RowCells(0),
              QStringList({"EMP_V", "VIEW", "HR"}));
    auto* type = Child<QComboBox>(form, "ObjectTypeCmb");
    type->setCurrentIndex(type->findText("MASTERIALIZED VIEW"));
    Child<QLineEdit>(form, "SearchOptionEd")->setText("x_");
    Child<QAbstractButton>(form, "IncludeChk")->click();
    Click(form, "SearchBtn");
    EXPECT_EQ(Child<TKelTreeList>(form, "ObjTList")->RowCount(), 0);
  });
  const auto queries = host.EventsOf("query");
  ASSERT_EQ(queries.size(), 3);
  EXPECT_EQ(queries[1].value("key").toString(), "CreateSynonymFrn.Object03");
  EXPECT_EQ(queries[1].value("binds").toObject(), test::Json("{'P_OWNER': 'HR', 'P_NAME': '%'}"));
  EXPECT_EQ(queries[2].value("key").toString(), "CreateSynonymFrn.Object02");
  EXPECT_EQ(queries[2].value("binds").toObject(),
            test::Json("{'P_OWNER': 'HR', 'P_TYPE': 'MASTERIALIZED VIEW', 'P_NAME': 'X_%', "
                       "'P_CURSCHEMA': 'APP'}"));
}

TEST_F(Synonym, RemoteEntriesUseTheLinkNameAndAreAddedOnce) {
  test::TTestHost host(test::Json(kFixture));
  host.Open("SYNONYM", nullptr, [](QWidget* form) {
    auto* links = Child<QComboBox>(form, "DBLinkCmb");
    EXPECT_EQ(links->itemText(1), "REPORTING.EXAMPLE.COM(PUBLIC)");
    auto* syn = Child<TKelTreeList>(form, "SynTList");
    auto* add = Child<QToolButton>(form, "RightBtn");
    Child<QRadioButton>(form, "RemoteRdo")->click();
    Child<QLineEdit>(form, "SynonymNameEd")->setText("r_orders");
    Child<QLineEdit>(form, "SchemaEd")->setText("sales");
    Child<QLineEdit>(form, "ObjectEd")->setText("orders");
    EXPECT_FALSE(add->isEnabled());  // no link chosen yet
    AddRemote(form, "r_orders", "sales", "orders", 1);
    EXPECT_EQ(syn->RowCells(0), QStringList({"R_ORDERS", "ORDERS", "REMOTE", "False", "SALES",
                                             "REPORTING.EXAMPLE.COM"}));
    AddRemote(form, "LOCAL_DEPT", "APP", "DEPT", 0);
    syn->SetFocusedRow(1);
    AddRemote(form, "R_ORDERS", "SALES", "ORDERS", 1);  // the same entry in upper case
    EXPECT_EQ(syn->RowCount(), 2);
    EXPECT_EQ(syn->FocusedRow(), 0);
    // A name Oracle does not take is refused before it reaches the list.
    AddRemote(form, "BAD NAME", "SALES", "ORDERS", 1);
    EXPECT_EQ(syn->RowCount(), 2);
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SynonymNameEd"));
    Click(form, "ViewSqlBtn");
  });
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages[0].value("key").toString(), "Acm.Valid The");
  EXPECT_EQ(messages[0].value("args").toArray().at(0).toString(), "Name");
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(),
            "CREATE SYNONYM \"R_ORDERS\" FOR \"SALES\".\"ORDERS\"@REPORTING.EXAMPLE.COM;\r\n"
            "CREATE SYNONYM \"LOCAL_DEPT\" FOR \"APP\".\"DEPT\"@SALESDB;\r\n");
}

TEST_F(Synonym, EmptyListIsRefusedAndAFailedExecutionKeepsTheRows) {
  QJsonObject fixture = test::Json(kFixture);
  fixture.insert("execute", QJsonArray{1});
  fixture["connection"] = test::Json("{'user': 'APP', 'users': ['APP'], 'publicLinks': true}");
  test::TTestHost host(fixture);
  const int result = host.Open("SYNONYM", nullptr, [](QWidget* form) {
    Click(form, "OkBtn");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "SynTList"));
    Click(form, "ViewSqlBtn");  // the preview does not validate
    AddRemote(form, "S1", "APP", "EMP", 0);
    auto* syn = Child<TKelTreeList>(form, "SynTList");
    EXPECT_EQ(syn->Cell(0, TCreateSynonymFrm::scPublic), "True");
    // The synonym name is edited in its cell and checked like any name.
    ASSERT_TRUE(syn->EditCell(0, TCreateSynonymFrm::scName, "1ST"));
    Click(form, "OkBtn");
    ASSERT_TRUE(syn->EditCell(0, TCreateSynonymFrm::scName, "FIRST"));
    Click(form, "OkBtn");  // fails in the database
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(syn->RowCount(), 1);
  });
  EXPECT_EQ(result, mrCancel);
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 2);
  EXPECT_EQ(messages[0].value("key").toString(), "Acm.Check The");
  EXPECT_EQ(messages[0].value("args").toArray().at(0).toString(), "Synonym Name");
  EXPECT_EQ(messages[1].value("key").toString(), "Acm.Valid The");
  ASSERT_FALSE(host.EventsOf("preview").isEmpty());
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(), "");
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            "CREATE PUBLIC SYNONYM \"FIRST\" FOR \"APP\".\"EMP\"@SALESDB;\r\n");
}

// The search queries on the demo database.
TEST(SynonymCatalog, SearchQueriesRunOnTheDemoDatabase) {
  auto rows = [](const char* key, const QList<QPair<QString, QString>>& binds) {
    TKelQuery q(test::DemoConnection());
    q.LoadSQL(key);
    for (const auto& [name, value] : binds) q.ParamByName(name) = value;
    q.Open();
    QStringList out;
    for (; !q.Eof(); q.Next())
      out << q.FieldByName("OBJECT_NAME") + u':' + q.FieldByName("OBJECT_TYPE");
    return out;
  };
  const QStringList tables = rows("CreateSynonymFrn.Object01",
                                  {{"P_OWNER", "APP"}, {"P_TYPE", "TABLE"}, {"P_NAME", "E%"}});
  EXPECT_TRUE(tables.contains("EMP:TABLE"));
  for (const QString& t : tables) EXPECT_TRUE(t.startsWith(u'E') && t.endsWith(":TABLE"));
  // The list's spelling of materialized views finds them.
  EXPECT_TRUE(rows("CreateSynonymFrn.Object01",
                   {{"P_OWNER", "SALES"}, {"P_TYPE", "MASTERIALIZED VIEW"}, {"P_NAME", "%"}})
                  .contains("MONTHLY_SALES_MV:MATERIALIZED VIEW"));
  const QStringList granted =
      rows("CreateSynonymFrn.Object02",
           {{"P_OWNER", "HR"}, {"P_TYPE", "TABLE"}, {"P_NAME", "%"}, {"P_CURSCHEMA", "APP"}});
  EXPECT_FALSE(granted.isEmpty());
  EXPECT_EQ(granted.size(), QSet<QString>(granted.begin(), granted.end()).size());
  const QStringList all = rows("CreateSynonymFrn.Object03", {{"P_OWNER", "APP"}, {"P_NAME", "%"}});
  EXPECT_TRUE(all.contains("EMP:TABLE"));
  EXPECT_TRUE(all.contains("EMP_PKG:PACKAGE"));
  for (const QString& o : all) {
    EXPECT_FALSE(o.endsWith(":INDEX")) << o.toStdString();
    EXPECT_FALSE(o.endsWith(":PACKAGE BODY")) << o.toStdString();
  }
}
