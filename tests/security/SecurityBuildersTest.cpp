// The user dialog's quota clauses, the profile statement and the journal's password mask.
#include <gtest/gtest.h>

#include "host/core/DemoDatabase.h"
#include "security/CreateProfileFrn.h"
#include "security/CreateUserFrn.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}

TEST(QuotaClauses, CreateModeWritesUnlimitedAndPositiveQuotasOnly) {
  const QList<TQuotaRow> rows = {{"A", true, "5", "KB"},  {"B", false, " 10 ", "KB"},
                                 {"C", false, "3", "MB"}, {"D", false, "7", "GB"},
                                 {"E", false, "0", "KB"}, {"F", false, "", "MB"}};
  EXPECT_EQ(QuotaClauses(rows, {}),
            "\tQUOTA UNLIMITED ON A\r\n\tQUOTA 10K ON B\r\n\tQUOTA 3M ON C\r\n"
            "\tQUOTA 7M ON D\r\n");
}

TEST(QuotaClauses, AlterModeComparesWithTheLoadedQuota) {
  const QMap<QString, TQuotaRow> loaded = {{"A", {"A", true, "", "KB"}},
                                           {"B", {"B", false, "10", "MB"}},
                                           {"C", {"C", false, "10", "MB"}},
                                           {"D", {"D", false, "10", "MB"}},
                                           {"E", {"E", false, "10", "MB"}}};
  const QList<TQuotaRow> rows = {{"A", true, "", "KB"},     // unchanged
                                 {"B", false, "10", "KB"},  // units changed
                                 {"C", false, "0", "MB"},   // removed
                                 {"D", false, "", "MB"},    // removed
                                 {"E", true, "10", "MB"},   // now unlimited
                                 {"F", false, "0", "MB"},   // no quota before, none now
                                 {"G", false, "2", "MB"}};  // new
  EXPECT_EQ(QuotaClauses(rows, loaded),
            "\tQUOTA 10K ON B\r\n\tQUOTA 0 ON C\r\n\tQUOTA 0 ON D\r\n"
            "\tQUOTA UNLIMITED ON E\r\n\tQUOTA 2M ON G\r\n");
  EXPECT_EQ(QuotaClauses({{"A", false, "", "KB"}}, loaded), "\tQUOTA 0 ON A\r\n");
}

TEST(ProfileStatement, EveryFilledLimitInOrderTrimmedWithoutSuffix) {
  const QStringList lines =
      ProfileStatement("ALTER PROFILE P LIMIT", {{"CPU_PER_SESSION", " UNLIMITED "},
                                                 {"CPU_PER_CALL", ""},
                                                 {"PRIVATE_SGA", "16"},
                                                 {"PASSWORD_VERIFY_FUNCTION", "NULL"}});
  EXPECT_EQ(lines, QStringList({"ALTER PROFILE P LIMIT", "  CPU_PER_SESSION UNLIMITED",
                                "  PRIVATE_SGA 16", "  PASSWORD_VERIFY_FUNCTION NULL"}));
  EXPECT_TRUE(ProfileStatement("ALTER PROFILE P LIMIT", {{"IDLE_TIME", " "}}).isEmpty());
}

TEST(ScriptJournal, PasswordsAreMasked) {
  EXPECT_EQ(host::MaskPasswords("CREATE USER U IDENTIFIED BY \"Se cret\"\r\n\tPROFILE P;"),
            "CREATE USER U IDENTIFIED BY \"********\"\r\n\tPROFILE P;");
  EXPECT_EQ(host::MaskPasswords("alter role r identified by s3cr3t;"),
            "alter role r identified by ********;");
  EXPECT_EQ(
      host::MaskPasswords("CREATE DATABASE LINK L CONNECT TO X IDENTIFIED BY 'it''s' USING 'S'"),
      "CREATE DATABASE LINK L CONNECT TO X IDENTIFIED BY '********' USING 'S'");
  EXPECT_EQ(host::MaskPasswords("ALTER USER U IDENTIFIED BY VALUES 'ABCDEF'"),
            "ALTER USER U IDENTIFIED BY VALUES '********'");
  EXPECT_EQ(
      host::MaskPasswords("ALTER USER A IDENTIFIED BY \"a\";\nALTER USER B IDENTIFIED BY \"b\""),
      "ALTER USER A IDENTIFIED BY \"********\";\nALTER USER B IDENTIFIED BY \"********\"");
  EXPECT_EQ(host::MaskPasswords("CREATE ROLE R IDENTIFIED EXTERNALLY;"),
            "CREATE ROLE R IDENTIFIED EXTERNALLY;");
}
