// The security dialogs' catalog queries on the demo database.
#include <gtest/gtest.h>

#include "host/core/SqlConnection.h"
#include "plugin/KelQuery.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

using TRows = QList<QMap<QString, QString>>;

TRows Rows(const char* key, const QList<QPair<QString, QString>>& binds = {}) {
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
  QStringList out;
  for (const auto& r : rows) out << r.value(column);
  return out;
}

}  // namespace

TEST(SecurityCatalog, RolesAndRoleGrants) {
  EXPECT_EQ(Rows("CreateRoleFrn.Alter01", {{"P_NAME", "APP_WRITE"}})[0]["PASSWORD_REQUIRED"],
            "YES");
  EXPECT_EQ(Rows("CreateRoleFrn.Alter01", {{"P_NAME", "HR_ADMIN"}})[0]["PASSWORD_REQUIRED"],
            "EXTERNAL");
  EXPECT_TRUE(Rows("CreateRoleFrn.Alter01", {{"P_NAME", "NO_SUCH_ROLE"}}).isEmpty());
  const TRows granted = Rows("CreateRoleFrn.Alter02", {{"P_NAME", "APP"}});
  EXPECT_EQ(Column(granted, "GRANTED_ROLE"),
            QStringList({"APP_READ", "APP_WRITE", "CONNECT", "DBA", "RESOURCE"}));
  EXPECT_EQ(Column(granted, "ADMIN_OPTION"), QStringList({"YES", "YES", "NO", "NO", "NO"}));
  const QStringList roles = Column(Rows("CreateRoleFrn.001"), "ROLE");
  EXPECT_EQ(roles.size(), 11);
  EXPECT_TRUE(roles.contains("SALES_ANALYST"));
}

TEST(SecurityCatalog, SystemPrivilegesMarkWhatTheGranteeHolds) {
  const TRows app = Rows("CreateRoleFrn.002", {{"P_USER", "APP"}});
  EXPECT_GT(app.size(), 100);
  QStringList held;
  for (const auto& r : app)
    if (!r["Privilege"].isEmpty()) held << r["Name"] + ":" + r["ADMIN_OPTION"];
  EXPECT_EQ(held,
            QStringList({"CREATE DATABASE LINK:NO", "CREATE JOB:YES", "CREATE MATERIALIZED VIEW:NO",
                         "CREATE SYNONYM:NO", "CREATE VIEW:NO", "UNLIMITED TABLESPACE:NO"}));
  for (const auto& r : app)
    if (r["Name"] == "ADMINISTER RESOURCE MANAGER") {
      EXPECT_EQ(r["Property"], "1");
    }
  // Unbound (create mode): nothing is held.
  TKelQuery q(test::DemoConnection());
  q.LoadSQL("CreateRoleFrn.002");
  q.Open();
  for (; !q.Eof(); q.Next()) ASSERT_EQ(q.FieldByName("Privilege"), "");
}

TEST(SecurityCatalog, ResourceGroups) {
  EXPECT_EQ(Column(Rows("CreateRoleFrn.Alter03", {{"P_NAME", "BATCH_USER"}}), "GRANTED_GROUP"),
            QStringList({"BATCH_GROUP"}));
  EXPECT_TRUE(Column(Rows("CreateRoleFrn.004"), "Consumer_Group").contains("OTHER_GROUPS"));
}

TEST(SecurityCatalog, ObjectBrowserSearches) {
  EXPECT_TRUE(
      Column(Rows("CreateRoleFrn.Table", {{"P_OWNER", "APP"}}), "TABLE_NAME").contains("EMP"));
  EXPECT_TRUE(
      Column(Rows("CreateRoleFrn.View", {{"P_OWNER", "APP"}}), "VIEW_NAME").contains("EMP_V"));
  EXPECT_TRUE(Column(Rows("CreateRoleFrn.Sequence", {{"P_OWNER", "APP"}}), "SEQUENCE_NAME")
                  .contains("EMP_SEQ"));
  EXPECT_TRUE(
      Column(Rows("CreateRoleFrn.Type", {{"P_OWNER", "APP"}}), "TYPE_NAME").contains("ADDRESS_T"));
  EXPECT_TRUE(Column(Rows("CreateRoleFrn.Snapshot", {{"P_OWNER", "SALES"}}), "NAME")
                  .contains("MONTHLY_SALES_MV"));
  EXPECT_TRUE(
      Column(Rows("CreateRoleFrn.Proc", {{"P_OWNER", "APP"}, {"P_TYPE", "PACKAGE"}}), "OBJECT_NAME")
          .contains("EMP_PKG"));
  EXPECT_TRUE(Column(Rows("CreateRoleFrn.Proc", {{"P_OWNER", "APP"}, {"P_TYPE", "FUNCTION"}}),
                     "OBJECT_NAME")
                  .contains("GET_DEPT_NAME"));
  const QStringList columns = Column(
      Rows("CreateRoleFrn.Column", {{"P_OWNER", "APP"}, {"P_TABLE", "DEPT"}}), "COLUMN_NAME");
  EXPECT_EQ(columns.value(0), "DEPTNO");
  const TRows synonyms = Rows("CreateRoleFrn.Synonym", {{"P_OWNER", "APP"}});
  ASSERT_FALSE(synonyms.isEmpty());
  const TRows type = Rows("CreateRoleFrn.SynonymType",
                          {{"P_OWNER", "APP"}, {"P_OBJNAME", synonyms[0]["SYNONYM_NAME"]}});
  ASSERT_EQ(type.size(), 1) << synonyms[0]["SYNONYM_NAME"].toStdString();
  EXPECT_FALSE(type[0]["OBJECT_TYPE"].isEmpty());
}

TEST(SecurityCatalog, UserQuotasProfilesAndObjectPrivileges) {
  const TRows app = Rows("CreateUserFrn.Alt.001", {{"P_USERNAME", "OPS$MONITOR"}});
  ASSERT_EQ(app.size(), 1);
  EXPECT_EQ(app[0]["PASSWORD"], "EXTERNAL");
  EXPECT_EQ(app[0]["TEMPORARY_TABLESPACE"], "TEMP");
  EXPECT_EQ(Rows("CreateUserFrn.Alt.001", {{"P_USERNAME", "OUTLN"}})[0]["ACCOUNT_STATUS"],
            "EXPIRED & LOCKED");
  QStringList quotas;
  for (const auto& r : Rows("CreateUserFrn.AlterQuota", {{"P_NAME", "APP"}}))
    quotas << r["TABLESPACE_NAME"] + "=" + r["QUOTA"] + r["UNITS"];
  EXPECT_EQ(quotas, QStringList({"APP_DATA=UNLIMITED", "APP_INDEX=UNLIMITED", "USERS=10MB"}));
  EXPECT_EQ(Column(Rows("CreateUserFrn.002"), "Profile"),
            QStringList({"APP_PROFILE", "BATCH_PROFILE", "DEFAULT"}));
  QStringList privs;
  for (const auto& r : Rows("SchUserNrn.Object Priv", {{"P_USER", "APP_WRITE"}}))
    privs << r["Privilege"] + " " + r["Object Owner"] + "." + r["Object Name"];
  EXPECT_EQ(privs, QStringList({"DELETE APP.EMP", "INSERT APP.EMP", "UPDATE APP.EMP",
                                "SELECT APP.EMP_SEQ"}));
  EXPECT_EQ(Rows("CreateProfileFrn.Exists", {{"P_NAME", "APP_PROFILE"}}).size(), 1);
  EXPECT_TRUE(Rows("CreateProfileFrn.Exists", {{"P_NAME", "GONE"}}).isEmpty());
}

TEST(SecurityCatalog, TemporaryTablespacesComeFromTheContents) {
  QStringList temporary;
  for (const auto& r : Rows("Acm.Tablespace"))
    if (r["Contents"] == "TEMPORARY") temporary << r["Tablespace"];
  EXPECT_EQ(temporary, QStringList({"TEMP", "TEMP_BATCH"}));
}
