// The database link dialog driven through the module's dispatch on a fixture host: create with
// an account, alter as drop and re-create, the link test, the masked password, and the link
// query on the demo database.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "host/core/DemoDatabase.h"
#include "host/core/SqlConnection.h"
#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"
#include "schema/CreateDBLinkFrn.h"
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

class DBLink : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("DBLINK", &OpenModal<TCreateDBLinkFrm>); }
  static TXLink* AlterLink(TXLink& link, const char* owner, const char* name) {
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", owner);
    link.AddParams("P_DBLinkName", name);
    return &link;
  }
};

// Links known to the fixture: APP.SALESDB (with an account) and APP.ARCHIVE.
const char* const kLinks = R"({
  'connection': {'user': 'APP', 'users': ['APP'], 'services': ['ORCL', 'SALESDB']},
  'catalog': {'SchemaFrn.DBLink': [
    {'binds': {'P_SHEMA': 'APP', 'P_DBLINK': 'SALESDB'}, 'rows': [{'DB Link': 'SALESDB', 'Host': 'SALESDB',
        'Owner': 'APP', 'User Name': 'SALES', 'Password': ''}]},
    {'binds': {'P_OWN': 'APP', 'P_DBLINK': 'ARCHIVE'}, 'rows': [{'DB Link': 'ARCHIVE', 'Host': 'ORCL', 'Owner': 'APP',
        'User Name': '', 'Password': ''}]}]},
  'answers': {'DBLinkCreateMsg': 7}
})";

}  // namespace

TEST_F(DBLink, CreateWithAnAccountOffersTheTestAndMasksThePassword) {
  test::TTestHost host(test::Json(
      "{'connection': {'user': 'APP', 'users': ['APP'], 'services': ['ORCL', 'SALESDB'], "
      "'publicLinks': false}}"));
  const int result = host.Open("dblink", nullptr, [](QWidget* form) {
    EXPECT_EQ(form->windowTitle(), "Create DBLink");
    EXPECT_FALSE(Child<QCheckBox>(form, "PublicChk")->isEnabled());
    EXPECT_EQ(Child<QComboBox>(form, "ServerCmb")->count(), 2);
    EXPECT_FALSE(Child<QLineEdit>(form, "UserNameEd")->isEnabled());
    Child<QLineEdit>(form, "DBLinkNameEd")->setText("SALES_LINK");
    Child<QComboBox>(form, "ServerCmb")->setEditText("sales'db");
    Click(form, "CustomUserRB");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "UserNameEd"));
    auto* user = Child<QLineEdit>(form, "UserNameEd");
    user->insert("sales");
    EXPECT_EQ(user->text(), "SALES");
    auto* password = Child<QLineEdit>(form, "PasswordEd");
    password->setText("Secret1");
    EXPECT_EQ(password->echoMode(), QLineEdit::Password);
    EXPECT_EQ(password->displayText(), "*******");
    Click(form, "OkBtn");
  });
  EXPECT_EQ(result, mrOk);
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            "CREATE DATABASE LINK SALES_LINK \r\n"
            "CONNECT TO \"SALES\"\tIDENTIFIED BY \"Secret1\" \r\n"
            "USING 'sales''db'; \r\n");
  ASSERT_EQ(host.EventsOf("confirm").size(), 1);
  EXPECT_EQ(host.EventsOf("confirm")[0].value("key").toString(), "DBLinkCreateMsg");
  ASSERT_EQ(host.EventsOf("linkTest").size(), 1);
  EXPECT_EQ(host.EventsOf("linkTest")[0].value("name").toString(), "SALES_LINK");
}

TEST_F(DBLink, RenamingAPrivateLinkDropsTheOldQuotedAndAnExistingNewOne) {
  test::TTestHost host(test::Json(kLinks));
  TXLink link;
  const int result = host.Open("DBLINK", AlterLink(link, "APP", "salesdb"), [](QWidget* form) {
    EXPECT_EQ(form->windowTitle(), "Alter DB Link");
    auto* dropFirst = Child<QCheckBox>(form, "DropLinkFirstChk");
    EXPECT_TRUE(dropFirst->isChecked());
    EXPECT_FALSE(dropFirst->isEnabled());
    EXPECT_TRUE(Child<QRadioButton>(form, "CustomUserRB")->isChecked());
    EXPECT_EQ(Child<QLineEdit>(form, "UserNameEd")->text(), "SALES");
    EXPECT_EQ(Child<QComboBox>(form, "ServerCmb")->currentText(), "SALESDB");
    // The password is not in the dictionary: it must be typed again.
    Click(form, "OkBtn");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "PasswordEd"));
    Child<QLineEdit>(form, "PasswordEd")->setText("pw");
    Child<QLineEdit>(form, "DBLinkNameEd")->setText("ARCHIVE");
    Click(form, "OkBtn");
  });
  EXPECT_EQ(result, mrOk);
  const auto queries = host.EventsOf("query");
  ASSERT_GE(queries.size(), 2);
  EXPECT_EQ(queries[0].value("binds").toObject(),
            test::Json("{'P_SHEMA': 'APP', 'P_DBLINK': 'SALESDB'}"));
  EXPECT_EQ(queries.last().value("binds").toObject(),
            test::Json("{'P_OWN': 'APP', 'P_DBLINK': 'ARCHIVE'}"));
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            "DROP DATABASE LINK \"salesdb\";\r\n"
            "DROP DATABASE LINK ARCHIVE;\r\n"
            "CREATE DATABASE LINK ARCHIVE \r\n"
            "CONNECT TO \"SALES\"\tIDENTIFIED BY \"pw\" \r\n"
            "USING 'SALESDB'; \r\n");
  EXPECT_TRUE(host.EventsOf("linkTest").isEmpty());  // the test was declined
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 1);
  EXPECT_EQ(messages[0].value("args").toArray().at(0).toString(), "Password");
}

TEST_F(DBLink, CurrentUserClearsTheAccountAndAPublicLinkIsDroppedAsPublic) {
  test::TTestHost host(test::Json(R"({
    'connection': {'user': 'APP', 'users': ['APP'], 'publicLinks': true},
    'catalog': {'SchemaFrn.DBLink': [{'binds': {'P_OWN': 'PUBLIC', 'P_DBLINK': 'REP'}, 'rows': [{'DB Link': 'REP',
        'Host': 'REP', 'Owner': 'PUBLIC', 'User Name': '', 'Password': ''}]}]}
  })"));
  host.Open("DBLINK", nullptr, [](QWidget* form) {
    Child<QLineEdit>(form, "DBLinkNameEd")->setText("rep");
    Child<QComboBox>(form, "ServerCmb")->setEditText("REP");
    Click(form, "CustomUserRB");
    Child<QLineEdit>(form, "UserNameEd")->setText("U");
    Child<QLineEdit>(form, "PasswordEd")->setText("P");
    Click(form, "ViewSqlBtn");
    Click(form, "CurrentUserRB");
    EXPECT_EQ(Child<QLineEdit>(form, "UserNameEd")->text(), "");
    EXPECT_EQ(Child<QLineEdit>(form, "PasswordEd")->text(), "");
    EXPECT_FALSE(Child<QLineEdit>(form, "PasswordEd")->isEnabled());
    Child<QCheckBox>(form, "PublicChk")->setChecked(true);
    Child<QCheckBox>(form, "DropLinkFirstChk")->setChecked(true);
    Click(form, "ViewSqlBtn");
  });
  const auto previews = host.EventsOf("preview");
  ASSERT_GE(previews.size(), 2);
  EXPECT_EQ(previews.first().value("text").toString(),
            "CREATE DATABASE LINK rep \r\nCONNECT TO \"U\"\tIDENTIFIED BY \"P\" \r\n"
            "USING 'REP'; \r\n");
  EXPECT_EQ(previews.last().value("text").toString(),
            "DROP PUBLIC DATABASE LINK rep;\r\nCREATE PUBLIC DATABASE LINK rep \r\n"
            "USING 'REP'; \r\n");
}

TEST_F(DBLink, ValidationStopsAtTheFirstFailureInControlOrder) {
  test::TTestHost host(test::Json("{'connection': {'user': 'APP', 'users': ['APP']}}"));
  host.Open("DBLINK", nullptr, [](QWidget* form) {
    Click(form, "OkBtn");
    auto* name = Child<QLineEdit>(form, "DBLinkNameEd");
    name->setText("LINK;DROP");
    Click(form, "OkBtn");
    EXPECT_EQ(form->focusWidget(), name);
    name->setText("remote.example.com@hr");  // a qualified link name is a valid name
    Click(form, "OkBtn");
    EXPECT_EQ(form->focusWidget(), Child<QWidget>(form, "ServerCmb"));
    Child<QComboBox>(form, "ServerCmb")->setEditText("ORCL");
    Click(form, "CustomUserRB");
    Click(form, "ViewSqlBtn");
    Child<QLineEdit>(form, "UserNameEd")->setText("SCOTT");
    Child<QLineEdit>(form, "PasswordEd")->setText("a\"b");
    Click(form, "ViewSqlBtn");
  });
  QStringList seen;
  for (const QJsonObject& m : host.EventsOf("message"))
    seen << m.value("key").toString() + u'/' + m.value("args").toArray().at(0).toString();
  EXPECT_EQ(seen, QStringList({"Acm.Check The/DB Link Name", "Acm.Valid The/DB Link Name",
                               "Acm.Check The/Service Name", "Acm.Check The/User Name",
                               "Acm.Valid The/Password"}));
  EXPECT_TRUE(host.EventsOf("preview").isEmpty());
}

TEST_F(DBLink, WithoutTheOracleClientTheDialogCanOnlyBeCancelled) {
  test::TTestHost host(test::Json("{'connection': {'user': 'APP', 'oci': false}}"));
  host.Open("DBLINK", nullptr,
            [](QWidget* form) { EXPECT_FALSE(Child<QPushButton>(form, "OkBtn")->isVisible()); });
  ASSERT_EQ(host.EventsOf("messageText").size(), 1);
  EXPECT_TRUE(host.EventsOf("messageText")[0].value("text").toString().contains("(OCI)"));
}

TEST_F(DBLink, AVanishedLinkGivesAMessageAndNoDialog) {
  test::TTestHost host(test::Json("{'connection': {'user': 'APP'}, 'catalog': {}}"));
  TXLink link;
  const int result = host.Open("DBLINK", AlterLink(link, "APP", "GONE"), [](QWidget*) {});
  EXPECT_EQ(result, mrCancel);
  ASSERT_EQ(host.EventsOf("messageText").size(), 1);
  EXPECT_TRUE(host.EventsOf("messageText")[0].value("text").toString().contains("GONE"));
}

TEST(DBLinkCatalog, LinkQueryTakesTheAppendedConditionsOnTheDemoDatabase) {
  TKelQuery q(test::DemoConnection());
  q.SetSQL(test::DemoConnection()->GetSQL("SchemaFrn.DBLink") +
               "\n AND DB_LINK = :P_DBLINK\n AND OWNER = :P_SHEMA ",
           "SchemaFrn.DBLink");
  q.ParamByName("P_DBLINK") = "REPORTING.EXAMPLE.COM";
  q.ParamByName("P_SHEMA") = "PUBLIC";
  q.Open();
  ASSERT_FALSE(q.Eof());
  EXPECT_EQ(q.FieldByName("Host"), "REPORTING");
  EXPECT_EQ(q.FieldByName("User Name"), "REPORTER");
  EXPECT_EQ(q.FieldByName("Password"), "");
  q.Next();
  EXPECT_TRUE(q.Eof());
  q.LoadSQL("SchemaFrn.DBLink");
  q.Open();
  EXPECT_EQ(q.RecordCount(), 3);
}

TEST(ScriptJournal, PasswordsAreMasked) {
  EXPECT_EQ(host::MaskPasswords("CONNECT TO \"SCOTT\"\tIDENTIFIED BY \"tiger\" USING 'X';"),
            "CONNECT TO \"SCOTT\"\tIDENTIFIED BY \"********\" USING 'X';");
  EXPECT_EQ(host::MaskPasswords("ALTER USER u identified by s3cr;et replace \"old\""),
            "ALTER USER u identified by ********;et replace \"********\"");
  EXPECT_EQ(host::MaskPasswords("ALTER USER u IDENTIFIED BY new REPLACE old"),
            "ALTER USER u IDENTIFIED BY ******** REPLACE ********");
  EXPECT_EQ(host::MaskPasswords("CREATE USER u IDENTIFIED BY VALUES 'S:ABC'"),
            "CREATE USER u IDENTIFIED BY VALUES '********'");
  EXPECT_EQ(host::MaskPasswords("CREATE USER u IDENTIFIED EXTERNALLY"),
            "CREATE USER u IDENTIFIED EXTERNALLY");
}

TEST(ScriptJournal, TheDemoJournalNeverHoldsALinkPassword) {
  auto* db = dynamic_cast<host::TSqlConnection*>(test::DemoConnection());
  ASSERT_NE(db, nullptr);
  QString failed, error;
  ASSERT_EQ(db->ExecuteScript("CREATE DATABASE LINK L \r\nCONNECT TO \"U\"\tIDENTIFIED BY "
                              "\"Top;Secret\" \r\nUSING 'ORCL'; \r\n",
                              &failed, &error),
            0)
      << error.toStdString();
  const auto log = db->ScriptLog();
  ASSERT_FALSE(log.isEmpty());
  EXPECT_FALSE(log.last().Statement.contains("Secret"));
  EXPECT_TRUE(log.last().Statement.contains("IDENTIFIED BY \"********\""));
}
