// The demo database fails where Oracle fails: its dictionary views have the columns Oracle 19c
// documents and no others, catalog queries use LONG columns only where Oracle accepts them,
// every catalog query survives Qt's Oracle driver, numbers keep all their digits, and a session
// without DBA rights is refused the DBA_ and V$ views.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <cmath>
#include <memory>

#include "DictionaryGuard.h"
#include "host/core/Catalog.h"
#include "host/core/RecordingHost.h"
#include "host/core/SqlConnection.h"
#include "host/core/SqlText.h"
#include "plugin/KelQuery.h"

namespace {

const test::TDictionary& Dictionary() {
  return test::Oracle19cDictionary();
}

// One demo database for the file, opened once with DBA rights and once without.
class DemoDictionary : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    FDir = new QTemporaryDir;
    QString error;
    const QString url = "demo:" + FDir->filePath("demo.db");
    FDba = host::OpenConnection(url, &error).release();
    ASSERT_NE(FDba, nullptr) << error.toStdString();
    FUser = host::OpenConnection(url + "?nodba", &error).release();
    ASSERT_NE(FUser, nullptr) << error.toStdString();
  }
  static void TearDownTestSuite() {
    delete FUser;
    delete FDba;
    delete FDir;
    FUser = FDba = nullptr;
    FDir = nullptr;
  }
  static QSqlDatabase Db() { return dynamic_cast<host::TSqlConnection*>(FDba)->Database(); }
  static kel::TQueryResult Run(host::TConnection* c, const QString& key,
                               const kel::TBindList& binds = {}) {
    return c->OpenQuery(key, host::TCatalog::Builtin().GetSQL(key), binds);
  }

  static inline QTemporaryDir* FDir = nullptr;
  static inline host::TConnection* FDba = nullptr;
  static inline host::TConnection* FUser = nullptr;
};

// Every table and view of the demo that imitates the dictionary (all but the demo's own NOD_
// tables) is a documented Oracle view with documented columns only.
TEST_F(DemoDictionary, EveryViewHasOnlyTheColumnsOracleDocuments) {
  QSqlQuery objects(Db());
  ASSERT_TRUE(
      objects.exec("SELECT name FROM sqlite_master WHERE type IN ('table', 'view') "
                   "AND name NOT LIKE 'sqlite_%' AND name NOT LIKE 'NOD_%' ORDER BY name"));
  int checked = 0;
  while (objects.next()) {
    const QString view = objects.value(0).toString();
    ++checked;
    if (!Dictionary().contains(view)) {
      ADD_FAILURE() << view.toStdString()
                    << " is not in tests/host/data/oracle19c-dictionary.txt: add it with the "
                       "columns Oracle 19c documents, or name a demo-only table NOD_...";
      continue;
    }
    const QStringList documented = Dictionary().value(view).Columns;
    QSqlQuery columns(Db());
    ASSERT_TRUE(columns.exec(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(view)));
    while (columns.next()) {
      const QString column = columns.value(0).toString();
      EXPECT_TRUE(documented.contains(column)) << view.toStdString() << "." << column.toStdString()
                                               << " is no column of the Oracle 19c view";
    }
  }
  EXPECT_GT(checked, 100);
}

TEST(DictionaryList, DerivedViewsAndLongColumns) {
  const auto& d = Dictionary();
  ASSERT_TRUE(d.contains("USER_TABLES"));
  EXPECT_FALSE(d.value("USER_TABLES").Columns.contains("OWNER"));
  EXPECT_TRUE(d.value("USER_CONSTRAINTS").Columns.contains("OWNER"));
  EXPECT_FALSE(d.value("USER_TABLESPACES").Columns.contains("PLUGGED_IN"));
  EXPECT_FALSE(d.value("ALL_TAB_COLUMNS").Columns.contains("HIDDEN_COLUMN"));
  EXPECT_FALSE(d.value("DBA_TYPE_ATTRS").Columns.contains("CHAR_USED"));
  for (const char* view : {"ALL_VIEWS", "DBA_VIEWS", "USER_VIEWS"})
    EXPECT_TRUE(d.value(view).Longs.contains("TEXT")) << view;
  EXPECT_TRUE(d.value("ALL_CONSTRAINTS").Longs.contains("SEARCH_CONDITION"));
  EXPECT_FALSE(d.value("ALL_CONSTRAINTS").Longs.contains("SEARCH_CONDITION_VC"));
}

// The guard itself: the places Oracle refuses a LONG, and the ones it accepts.
TEST(LongColumnGuard, AcceptsPlainSelectItemsOnly) {
  const auto misuse = [](const char* sql) {
    return test::LongColumnMisuse(QString::fromLatin1(sql), Dictionary());
  };
  EXPECT_TRUE(misuse("SELECT V.TEXT AS \"Text\", V.VIEW_NAME FROM ALL_VIEWS V "
                     "WHERE V.OWNER = :P_OWNER ORDER BY V.VIEW_NAME")
                  .isEmpty());
  EXPECT_TRUE(misuse("SELECT TEXT FROM ALL_SOURCE WHERE TEXT LIKE '%x%'").isEmpty());
  EXPECT_TRUE(misuse("SELECT C.DATA_DEFAULT \"Default\" FROM SYS.ALL_TAB_COLUMNS C").isEmpty());
  EXPECT_TRUE(misuse("SELECT NULL AS \"TEXT\", V.VIEW_NAME FROM ALL_VIEWS V").isEmpty());

  const QStringList where = misuse("SELECT VIEW_NAME FROM ALL_VIEWS WHERE TEXT IS NOT NULL");
  ASSERT_EQ(where.size(), 1);
  EXPECT_EQ(where[0], "LONG column ALL_VIEWS.TEXT used in WHERE");
  EXPECT_EQ(misuse("SELECT T.TRIGGER_NAME FROM ALL_TRIGGERS T ORDER BY T.TRIGGER_BODY"),
            QStringList("LONG column ALL_TRIGGERS.TRIGGER_BODY used in ORDER BY"));
  EXPECT_EQ(misuse("SELECT SUBSTR(C.SEARCH_CONDITION, 1, 10) FROM ALL_CONSTRAINTS C"),
            QStringList("LONG column ALL_CONSTRAINTS.SEARCH_CONDITION used in an expression"));
  EXPECT_EQ(misuse("SELECT CASE WHEN C.SEARCH_CONDITION IS NULL THEN 1 END FROM ALL_CONSTRAINTS C"),
            QStringList("LONG column ALL_CONSTRAINTS.SEARCH_CONDITION used in an expression"));
  EXPECT_EQ(misuse("SELECT C.DATA_DEFAULT || 'x' FROM ALL_TAB_COLUMNS C"),
            QStringList("LONG column ALL_TAB_COLUMNS.DATA_DEFAULT used in an expression"));
  EXPECT_EQ(misuse("SELECT DISTINCT V.TEXT FROM DBA_VIEWS V"),
            QStringList("LONG column DBA_VIEWS.TEXT selected with DISTINCT"));
  EXPECT_EQ(
      misuse("SELECT V.TEXT FROM ALL_VIEWS V UNION ALL SELECT M.QUERY FROM ALL_MVIEWS M").size(),
      2);
  EXPECT_EQ(misuse("SELECT (SELECT V.TEXT FROM ALL_VIEWS V WHERE ROWNUM = 1) FROM DUAL"),
            QStringList("LONG column ALL_VIEWS.TEXT selected in a subquery"));
  EXPECT_EQ(
      misuse("SELECT 1 FROM ALL_TAB_COLUMNS C JOIN ALL_VIEWS V ON V.TEXT = C.DATA_DEFAULT").size(),
      2);
}

// Every catalog query, the dialogs' included.
TEST(LongColumnGuard, EveryCatalogQueryUsesLongColumnsAsOracleAllows) {
  const host::TCatalog& catalog = host::TCatalog::Builtin();
  for (const QString& key : catalog.SqlKeys())
    for (const QString& m : test::LongColumnMisuse(catalog.GetSQL(key), Dictionary()))
      ADD_FAILURE() << key.toStdString() << ": " << m.toStdString();
}

// Every view a catalog query reads is one the list knows, so that the guard sees its LONGs.
TEST(LongColumnGuard, EveryCatalogQueryReadsKnownViews) {
  const host::TCatalog& catalog = host::TCatalog::Builtin();
  int views = 0;
  for (const QString& key : catalog.SqlKeys())
    for (const QString& name : test::ObjectsRead(catalog.GetSQL(key))) {
      if (name == u"DUAL" || name.startsWith(u"NOD_") || name == u"SYS") continue;
      ++views;
      EXPECT_TRUE(Dictionary().contains(name))
          << key.toStdString() << " reads " << name.toStdString()
          << ", which tests/host/data/oracle19c-dictionary.txt does not list";
    }
  EXPECT_GT(views, 30);
  EXPECT_EQ(
      test::ObjectsRead("SELECT USER_ID, (SELECT 1 FROM DUAL) FROM ALL_USERS U, SYS.DBA_ROLES R "
                        "JOIN V$LOG L ON L.X = U.USER_ID WHERE U.USERNAME IN (SELECT "
                        "GRANTEE FROM DBA_ROLE_PRIVS)"),
      QStringList({"DUAL", "ALL_USERS", "DBA_ROLES", "V$LOG", "DBA_ROLE_PRIVS"}));
}

// Qt's Oracle driver turns our "?" placeholders back into named ones with a scan that knows
// quotes but no comments: every bind must survive it, in order.
TEST(QociBinds, EveryCatalogQueryKeepsItsBindsThroughTheDriver) {
  const host::TCatalog& catalog = host::TCatalog::Builtin();
  for (const QString& key : catalog.SqlKeys()) {
    QStringList names;
    const QString positional = host::PositionalBinds(catalog.GetSQL(key), &names);
    int converted = 0;
    bool unclosed = false;
    test::QociNamedBinding(positional, &converted, &unclosed);
    EXPECT_EQ(converted, names.size()) << key.toStdString();
    EXPECT_FALSE(unclosed) << key.toStdString();
  }
}

TEST(QociBinds, ACommentWithAnApostropheWouldHideTheBind) {
  const QString sql =
      "SELECT C.TABLE_NAME\n"
      "-- the owner's row\n"
      "  FROM ALL_CONSTRAINTS C WHERE C.CONSTRAINT_NAME = :P_NAME";
  QStringList names;
  int converted = 0;
  bool unclosed = false;
  test::QociNamedBinding(host::PositionalBinds(sql, &names), &converted, &unclosed);
  EXPECT_EQ(names, QStringList("P_NAME"));
  EXPECT_EQ(converted, 0);
  EXPECT_TRUE(unclosed);
  // Loaded through the repository, the comment is gone and the bind survives.
  host::TCatalog catalog;
  catalog.AddSqlText("-- name: K\n" + sql);
  const QString text = test::QociNamedBinding(host::PositionalBinds(catalog.GetSQL("K"), &names),
                                              &converted, &unclosed);
  EXPECT_EQ(converted, 1);
  EXPECT_FALSE(unclosed);
  EXPECT_TRUE(text.endsWith("= :0")) << text.toStdString();
}

TEST(SqlBinds, NamedBindsOutsideLiteralsCommentsAndQuotedNamesOnly) {
  QStringList names;
  EXPECT_EQ(
      host::PositionalBinds(
          "SELECT q'[it's :X]', :A, ':B', \"C:D\" FROM T -- :E\n WHERE :p_a = 1 /* :F */", &names),
      "SELECT q'[it's :X]', ?, ':B', \"C:D\" FROM T -- :E\n WHERE ? = 1 /* :F */");
  EXPECT_EQ(names, QStringList({"A", "p_a"}));
}

TEST(SqlComments, StrippedOutsideLiteralsAndQuotedNames) {
  EXPECT_EQ(host::StripSqlComments("SELECT 1 -- it's one\nFROM DUAL"), "SELECT 1\nFROM DUAL");
  EXPECT_EQ(host::StripSqlComments("-- head\n  -- more\nSELECT 1\n/* a\n b's */\nFROM DUAL"),
            "SELECT 1\nFROM DUAL");
  EXPECT_EQ(host::StripSqlComments("SELECT 1/*x*/+2 FROM DUAL"), "SELECT 1 +2 FROM DUAL");
  EXPECT_EQ(host::StripSqlComments("SELECT '-- no', '/* no */' AS \"--x\" FROM DUAL"),
            "SELECT '-- no', '/* no */' AS \"--x\" FROM DUAL");
  EXPECT_EQ(host::StripSqlComments("SELECT q'[it's -- here]' FROM DUAL -- gone"),
            "SELECT q'[it's -- here]' FROM DUAL");
  EXPECT_EQ(host::StripSqlComments("SELECT 'a''--b' FROM DUAL"), "SELECT 'a''--b' FROM DUAL");
}

// Numbers of up to 28 digits are stored and read back exactly; a 64-bit float keeps 15 to 17
// digits, so any value the demo holds as a float that large has lost some.
TEST_F(DemoDictionary, NumbersBeyondSixtyFourBitsAreExact) {
  QSqlQuery objects(Db());
  ASSERT_TRUE(objects.exec(
      "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'"));
  while (objects.next()) {
    const QString table = objects.value(0).toString();
    QSqlQuery columns(Db());
    ASSERT_TRUE(
        columns.exec(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table)));
    while (columns.next()) {
      const QString column = columns.value(0).toString();
      QSqlQuery bad(Db());
      ASSERT_TRUE(bad.exec(QStringLiteral("SELECT COUNT(*) FROM \"%1\" WHERE typeof(\"%2\") = "
                                          "'real' AND abs(\"%2\") >= 9007199254740992")
                               .arg(table, column)));
      ASSERT_TRUE(bad.next());
      EXPECT_EQ(bad.value(0).toInt(), 0)
          << table.toStdString() << "." << column.toStdString()
          << " holds a number too large for a float: insert it as a quoted literal";
    }
  }
  const kel::TQueryResult info =
      Run(FDba, "SchSequenceNrn.Info", {{"P_OWN", "APP"}, {"P_SEQUENCE", "COUNTDOWN_SEQ"}});
  ASSERT_EQ(info.Rows.size(), 1);
  EXPECT_EQ(info.Rows[0][1], "-99999999999999999999999999");
  EXPECT_EQ(info.Rows[0][2], "-1");
  const kel::TQueryResult none =
      Run(FDba, "SchSequenceNrn.Info", {{"P_OWN", "HR"}, {"P_SEQUENCE", "EMPLOYEES_SEQ"}});
  ASSERT_EQ(none.Rows.size(), 1);
  EXPECT_EQ(none.Rows[0][2], "NONE");
}

// A session without DBA rights: every query that names a DBA_ or V$ view fails as on Oracle,
// every other one runs.
TEST_F(DemoDictionary, APlainUserIsRefusedTheDbaViewsOnly) {
  const host::TCatalog& catalog = host::TCatalog::Builtin();
  int refused = 0;
  for (const QString& key : catalog.SqlKeys()) {
    const QString sql = catalog.GetSQL(key);
    kel::TBindList binds;
    for (const QString& name : kel::TKelQuery::DeclaredParams(sql)) binds.append({name, "APP"});
    const bool privileged = !host::PrivilegedViews(sql).isEmpty();
    try {
      FUser->OpenQuery(key, sql, binds);
      EXPECT_FALSE(privileged) << key.toStdString() << " ran without DBA rights";
    } catch (const kel::EKelError& e) {
      EXPECT_TRUE(privileged) << key.toStdString() << ": " << e.Message().toStdString();
      EXPECT_TRUE(e.Message().contains("ORA-00942")) << e.Message().toStdString();
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
  EXPECT_EQ(host::PrivilegedViews("SELECT X FROM SYS.DBA_USERS, v$log WHERE 'DBA_X' = \"V$Y\""),
            QStringList({"DBA_USERS", "V$LOG", "V$Y"}));
}

// The host lists fall back to the USER_ views, and say what they could not read.
TEST_F(DemoDictionary, HostListsFallBackForAPlainUser) {
  QStringList own;
  for (const QStringList& row : Run(FDba, "Host.UserTablespaces").Rows) own << row[0];
  EXPECT_EQ(FUser->Tablespaces(), own);
  EXPECT_FALSE(FUser->Tablespaces().isEmpty());
  EXPECT_EQ(FUser->BlockSize(), 8192);
  EXPECT_TRUE(FUser->ReadProblems().isEmpty()) << FUser->ReadProblems().join("\n").toStdString();
  EXPECT_TRUE(FDba->ReadProblems().isEmpty());

  // A database where neither source can be read: nothing is made up, and the host is told.
  QSqlDatabase db = dynamic_cast<host::TSqlConnection*>(FUser)->Database();
  QSqlQuery q(db);
  ASSERT_TRUE(q.exec("UPDATE NOD_CONNECTION SET VALUE = 'NOBODY' WHERE NAME = 'SESSION_USER'"));
  host::TRecordingHost recorder(FUser, {});
  const int size = recorder.esGetBlockLen(nullptr, "USERS");
  ASSERT_TRUE(q.exec("UPDATE NOD_CONNECTION SET VALUE = 'APP' WHERE NAME = 'SESSION_USER'"));
  EXPECT_EQ(size, 0);
  ASSERT_EQ(FUser->ReadProblems().size(), 1);
  EXPECT_TRUE(FUser->ReadProblems()[0].startsWith("The database block size cannot be read"));
  // The host says so on its status line.
  ASSERT_EQ(recorder.Events().size(), 1);
  EXPECT_EQ(recorder.Events()[0].toObject().value("event").toString(), "status");
  EXPECT_EQ(recorder.Events()[0].toObject().value("text").toString(), FUser->ReadProblems()[0]);
}

// The rows the table dialog needs for each dictionary case.
TEST_F(DemoDictionary, TheTableCasesReadAsOracleShowsThem) {
  QStringList tables;
  for (const QStringList& row : Run(FDba, "Workbench.Tables", {{"P_OWNER", "APP"}}).Rows)
    tables << row[0];
  EXPECT_TRUE(tables.contains("PERSONS"));            // an object table
  EXPECT_FALSE(tables.contains("CONTACTS_ADDR_NT"));  // storage of a nested-table column
  EXPECT_TRUE(tables.contains("SALES_HISTORY"));
  EXPECT_EQ(FDba->Tables("APP"), tables);

  const kel::TQueryResult script =
      Run(FDba, "SchTableNrn.Script", {{"P_OWN", "APP"}, {"P_TABLE", "SALES_HISTORY"}});
  ASSERT_EQ(script.Rows.size(), 1);
  for (const char* c : {"Initial", "Next", "PctFree", "IniTrans", "Tablespace", "Logging"})
    EXPECT_EQ(script.Rows[0][script.Columns.indexOf(c)], "") << c;

  const kel::TQueryResult columns =
      Run(FDba, "SchTableNrn.Column", {{"P_OWN", "APP"}, {"P_TABLE", "SALES_HISTORY"}});
  const auto cell = [&](int row, const char* c) {
    return columns.Rows[row][columns.Columns.indexOf(c)];
  };
  ASSERT_EQ(columns.Rows.size(), 4);
  EXPECT_EQ(cell(2, "Column"), "REGION");
  EXPECT_EQ(cell(2, "Length"), "10");
  EXPECT_EQ(cell(2, "Char Used"), "C");
  // Only declared lengths: a DATE or NUMBER column's storage size is no part of its type.
  EXPECT_EQ(cell(0, "Length"), "");
  EXPECT_EQ(cell(1, "Length"), "");
  EXPECT_EQ(cell(3, "Null?"), "Y");  // the NOT NULL constraint on AMOUNT is disabled

  QStringList rules;
  for (const QStringList& row :
       Run(FDba, "CreateTableFrn.Constraint_01", {{"P_OWNER", "APP"}, {"P_TABLE", "EMP"}}).Rows)
    rules << row[5];
  EXPECT_TRUE(rules.contains("SET NULL"));
  EXPECT_TRUE(rules.contains("NO ACTION"));
}

}  // namespace
