// The grant editor's statement builder, moves, privilege lists and colouring rules.
#include <gtest/gtest.h>

#include "plugin/KelTreeList.h"
#include "security/GrantEditor.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}

namespace {

TSysPrivilegeTexts Sys() {
  TSysPrivilegeTexts sys;
  sys.Grant = [](const QString& g, const QString& p, bool admin, int kind) {
    return QStringLiteral("G %1 %2 %3 %4").arg(p, g, QString::number(admin), QString::number(kind));
  };
  sys.Revoke = [](const QString& g, const QString& p, int kind) {
    return QStringLiteral("R %1 %2 %3").arg(p, g, QString::number(kind));
  };
  return sys;
}

TGrantRow Loaded(const char* name, bool admin, bool adminSave, const char* property = "") {
  return TGrantRow{name, property, admin, true, adminSave};
}
TGrantRow Added(const char* name, bool admin = false, const char* property = "") {
  return TGrantRow{name, property, admin, false, false};
}

}  // namespace

TEST(GrantStatements, AlterWritesOnlyTheDifferencesInPageOrder) {
  TGrantLists l;
  l.Roles = {Loaded("CONNECT", false, false), Added("DBA")};  // CONNECT moved out
  l.GrantedRoles = {Loaded("APP_READ", true, false), Loaded("APP_WRITE", false, true),
                    Loaded("RESOURCE", false, false), Added("HR_ADMIN", true),
                    Added("SALES_ANALYST")};
  l.Privileges = {Loaded("CREATE VIEW", false, false, "0"), Added("CREATE TABLE")};
  l.GrantedPrivileges = {Loaded("CREATE JOB", false, true, " 1 "), Added("CREATE TYPE", true, "0"),
                         Loaded("CREATE SYNONYM", false, false, "0")};
  l.Objects = {{true, "SELECT", "HR", "EMPLOYEES", false},
               {false, "SELECT", "HR", "DEPARTMENTS", false},
               {false, "UPDATE (DNAME)", "APP", "DEPT", true},
               {true, "INSERT", "APP", "DEPT", true}};
  l.Groups = {TGrantRow{"INTERACTIVE_GROUP", "", false, true, false},
              TGrantRow{"LOW_GROUP", "", false, false, false}};
  l.GrantedGroups = {TGrantRow{"BATCH_GROUP", "", false, false, false},
                     TGrantRow{"SYS_GROUP", "", false, true, false}};

  const QStringList user = GrantStatements(l, "APP", true, UserGrantTexts(), Sys());
  const QStringList expected = {"REVOKE CONNECT FROM APP ;",
                                "REVOKE APP_READ FROM APP;",
                                "GRANT APP_READ TO APP WITH ADMIN OPTION;",
                                "REVOKE APP_WRITE FROM APP;",
                                "GRANT APP_WRITE TO APP ;",
                                "GRANT HR_ADMIN TO APP WITH ADMIN OPTION;",
                                "GRANT SALES_ANALYST TO APP ;",
                                "R CREATE VIEW APP 0",
                                "R CREATE JOB APP 1",
                                "G CREATE JOB APP 0 1",
                                "G CREATE TYPE APP 1 0",
                                "REVOKE SELECT ON HR.EMPLOYEES FROM APP;",
                                "GRANT UPDATE (DNAME) ON APP.DEPT TO APP;",
                                "GRANT INSERT ON APP.DEPT TO APP;",
                                "BEGIN",
                                "  SYS.DBMS_RESOURCE_MANAGER_PRIVS.REVOKE_SWITCH_CONSUMER_GROUP(",
                                "    REVOKEE_NAME => 'APP',",
                                "    CONSUMER_GROUP => 'INTERACTIVE_GROUP' ",
                                "  );",
                                "END;",
                                "/",
                                "BEGIN",
                                "  SYS.DBMS_RESOURCE_MANAGER_PRIVS.GRANT_SWITCH_CONSUMER_GROUP(",
                                "    GRANTEE_NAME => 'APP',",
                                "    CONSUMER_GROUP => 'BATCH_GROUP',",
                                "    GRANT_OPTION => FALSE",
                                "  );",
                                "END;",
                                "/"};
  EXPECT_EQ(user, expected);

  // The role dialog differs only in its spacing of the role revoke and the object statements.
  const QStringList role = GrantStatements(l, "APP", true, RoleGrantTexts(), Sys());
  ASSERT_EQ(role.size(), user.size());
  EXPECT_EQ(role[0], "REVOKE CONNECT FROM APP;");
  EXPECT_EQ(role[11], "REVOKE SELECT ON HR.EMPLOYEES FROM APP ;");
  EXPECT_EQ(role[12], "GRANT UPDATE (DNAME) ON APP.DEPT TO APP ;");
  for (int i = 1; i < 11; ++i) EXPECT_EQ(role[i], user[i]);
}

TEST(GrantStatements, CreateModeCountsTheGrantedListsOnly) {
  TGrantLists l;
  l.Roles = {Added("DBA")};
  l.GrantedRoles = {Added("CONNECT"), Added("APP_READ", true)};
  l.Privileges = {Added("CREATE VIEW")};
  l.GrantedPrivileges = {Added("CREATE SESSION", false, "0")};
  l.Objects = {{false, "SELECT", "APP", "EMP", true}};
  l.GrantedGroups = {Added("LOW_GROUP")};
  const QStringList out = GrantStatements(l, "NEWU", false, UserGrantTexts(), Sys());
  ASSERT_EQ(out.size(), 12);
  EXPECT_EQ(out[0], "GRANT CONNECT TO NEWU ;");
  EXPECT_EQ(out[1], "GRANT APP_READ TO NEWU WITH ADMIN OPTION;");
  EXPECT_EQ(out[2], "G CREATE SESSION NEWU 0 0");
  EXPECT_EQ(out[3], "GRANT SELECT ON APP.EMP TO NEWU;");
  EXPECT_EQ(out[5], "  SYS.DBMS_RESOURCE_MANAGER_PRIVS.GRANT_SWITCH_CONSUMER_GROUP(");
  EXPECT_TRUE(GrantStatements({}, "NEWU", false, UserGrantTexts(), Sys()).isEmpty());
}

TEST(GrantStatements, UntouchedAlterGivesNothing) {
  TGrantLists l;
  l.Roles = {Added("DBA")};
  l.GrantedRoles = {Loaded("CONNECT", true, true)};
  l.GrantedPrivileges = {Loaded("CREATE SESSION", false, false, "0")};
  l.Objects = {{false, "SELECT", "HR", "EMPLOYEES", false}};
  l.Groups = {Added("LOW_GROUP")};
  l.GrantedGroups = {TGrantRow{"BATCH_GROUP", "", false, true, false}};
  EXPECT_TRUE(GrantStatements(l, "APP", true, RoleGrantTexts(), Sys()).isEmpty());
}

TEST(ObjectPrivileges, ListsPerTypeCutByServerVersion) {
  EXPECT_EQ(ObjectPrivileges("TABLE", 19),
            QStringList({"ALTER", "UPDATE", "INSERT", "DELETE", "SELECT", "FLASHBACK", "DEBUG",
                         "QUERY REWRITE", "ON COMMIT REFRESH", "INDEX"}));
  EXPECT_EQ(ObjectPrivileges("TABLE", 8),
            QStringList({"ALTER", "UPDATE", "INSERT", "DELETE", "SELECT", "INDEX"}));
  EXPECT_EQ(ObjectPrivileges("VIEW", 9),
            QStringList({"DELETE", "INSERT", "UPDATE", "SELECT", "REFERENCES", "UNDER"}));
  EXPECT_EQ(ObjectPrivileges("VIEW", 8),
            QStringList({"DELETE", "INSERT", "UPDATE", "SELECT", "REFERENCES"}));
  EXPECT_EQ(ObjectPrivileges("MATERIALIZED VIEW", 10),
            QStringList({"FLASHBACK", "UPDATE", "INSERT", "DELETE", "SELECT"}));
  EXPECT_EQ(ObjectPrivileges("PROCEDURE", 9), QStringList({"EXECUTE"}));
  EXPECT_EQ(ObjectPrivileges("COLUMN", 8), QStringList({"INSERT", "REFERENCES", "UPDATE"}));
  EXPECT_EQ(ObjectPrivileges("SEQUENCE", 11), QStringList({"ALTER", "SELECT"}));
  EXPECT_TRUE(ObjectPrivileges("DIRECTORY", 19).isEmpty());
  EXPECT_TRUE(ObjectPrivileges("", 19).isEmpty());
}

TEST(ObjectPrivileges, MajorVersionIsTheNumberBeforeTheFirstPoint) {
  EXPECT_EQ(MajorVersion("Oracle9i Enterprise Edition Release 9.2.0.1.0 - Production"), 9);
  EXPECT_EQ(MajorVersion("19.0.0.0.0"), 19);
  EXPECT_EQ(MajorVersion("8.1.7"), 8);
  EXPECT_EQ(MajorVersion("Oracle Database"), -1);
  EXPECT_EQ(MajorVersion(".5"), -1);
}

TEST(GrantColouring, RowsAndAdminCells) {
  EXPECT_TRUE(RowPainted(TGrantListKind::Available, true, false));
  EXPECT_FALSE(RowPainted(TGrantListKind::Available, false, false));
  EXPECT_TRUE(RowPainted(TGrantListKind::Granted, false, false));
  EXPECT_FALSE(RowPainted(TGrantListKind::Granted, true, false));
  EXPECT_TRUE(RowPainted(TGrantListKind::Objects, false, true));
  EXPECT_FALSE(RowPainted(TGrantListKind::Objects, false, false));
  EXPECT_TRUE(AdminCellPainted(TGrantListKind::Granted, true, true, false));
  EXPECT_FALSE(AdminCellPainted(TGrantListKind::Granted, true, true, true));
  EXPECT_FALSE(AdminCellPainted(TGrantListKind::Granted, false, true, false));
  EXPECT_FALSE(AdminCellPainted(TGrantListKind::Available, true, true, false));
}

namespace {
TKelTreeList* NamedList(QStringList names) {
  auto* list = new TKelTreeList();
  list->AddColumn({"Name", "Name"});
  list->AddColumn({"Flag", "Flag", TCellEditor::Check});
  QList<QStringList> rows;
  for (const QString& n : names) rows << QStringList{n, n.endsWith('*') ? "True" : "False"};
  list->AddRows(rows);
  return list;
}
QStringList Names(const TKelTreeList* list) {
  QStringList out;
  for (int r = 0; r < list->RowCount(); ++r) out << list->Cell(r, 0) + "/" + list->Cell(r, 1);
  return out;
}
}  // namespace

TEST(GrantMoves, SelectedRowsMoveWithTheirFlagsAndTheRightRowsAreDeleted) {
  std::unique_ptr<TKelTreeList> from(NamedList({"A", "B*", "C", "D*", "E", "F"}));
  std::unique_ptr<TKelTreeList> to(NamedList({"X"}));
  // Unsorted selection, one duplicate and one row out of range.
  MoveRows(from.get(), to.get(), {4, 1, 3, 4, 9});
  EXPECT_EQ(Names(from.get()), QStringList({"A/False", "C/False", "F/False"}));
  EXPECT_EQ(Names(to.get()), QStringList({"X/False", "B*/True", "D*/True", "E/False"}));
  MoveRows(from.get(), to.get(), {});
  EXPECT_EQ(from->RowCount(), 3);
  // The last row and the first together.
  MoveRows(from.get(), to.get(), {2, 0});
  EXPECT_EQ(Names(from.get()), QStringList({"C/False"}));
}

TEST(GrantMoves, MoveAllEmptiesTheSourceInOrder) {
  std::unique_ptr<TKelTreeList> from(NamedList({"A", "B*", "C"}));
  std::unique_ptr<TKelTreeList> to(NamedList({}));
  MoveAllRows(from.get(), to.get());
  EXPECT_EQ(from->RowCount(), 0);
  EXPECT_EQ(Names(to.get()), QStringList({"A/False", "B*/True", "C/False"}));
  MoveAllRows(from.get(), to.get());
  EXPECT_EQ(to->RowCount(), 3);
}
