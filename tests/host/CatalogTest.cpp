#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include "host/core/Catalog.h"
#include "host/core/SqlText.h"
#include "plugin/KelHost.h"

using host::TCatalog;

TEST(Catalog, ParsesNamedQueriesOfAnSqlText) {
  TCatalog c;
  c.AddSqlText(
      "-- header comment, no query yet\r\n"
      "-- name: Unit.One\r\n"
      "SELECT 1\r\n  FROM DUAL;\r\n\r\n"
      "--name:Unit.Two\n"
      "-- what it returns\n"
      "SELECT ':x' FROM DUAL\n"
      "-- name: Unit.Empty\n");
  EXPECT_EQ(c.SqlKeys(), QStringList({"Unit.Empty", "Unit.One", "Unit.Two"}));
  EXPECT_EQ(c.GetSQL("Unit.One"), "SELECT 1\n  FROM DUAL");
  EXPECT_EQ(c.GetSQL("Unit.Two"), "SELECT ':x' FROM DUAL");
  EXPECT_EQ(c.GetSQL("Unit.Empty"), "");
  c.AddSqlText("-- name: Unit.One\nSELECT 2 FROM DUAL");  // later files replace
  EXPECT_EQ(c.GetSQL("Unit.One"), "SELECT 2 FROM DUAL");
}

// The files explain their queries in comments; the text a driver receives has none, and no
// line left blank where a comment was.
TEST(Catalog, BuiltinQueriesReachTheDriverWithoutComments) {
  const TCatalog& c = TCatalog::Builtin();
  for (const QString& key : c.SqlKeys()) {
    const QString sql = c.GetSQL(key);
    for (const host::TSqlToken& t : host::TokenizeSql(sql))
      EXPECT_FALSE(t.Is(host::TSqlToken::TKind::Comment)) << key.toStdString();
    EXPECT_FALSE(sql.contains("\n\n")) << key.toStdString();
  }
  TCatalog one;
  one.AddSqlText(
      "-- name: K\n-- the owner's row\nSELECT 'a -- b' /* it's */ AS \"x--\"\n  FROM DUAL -- "
      "end\n");
  EXPECT_EQ(one.GetSQL("K"), "SELECT 'a -- b' AS \"x--\"\n  FROM DUAL");
}

TEST(Catalog, MissingKeyIsAnErrorNamingIt) {
  TCatalog c;
  try {
    c.GetSQL("Nowhere.Key");
    FAIL() << "no error";
  } catch (const kel::EKelError& e) {
    EXPECT_TRUE(e.Message().contains("\"Nowhere.Key\"")) << e.Message().toStdString();
  }
}

TEST(Catalog, BuiltinHoldsTheHostQueriesAndTheMessages) {
  const TCatalog& c = TCatalog::Builtin();
  for (const char* key : {"Host.Users", "Host.ConnectedUser", "Host.Tablespaces", "Host.Tables",
                          "Host.BlockSize", "Host.DataTypes", "Host.Services", "Acm.Tablespace"})
    EXPECT_TRUE(c.HasSQL(key)) << key;
  for (const char* key : {"Acm.Check The", "Acm.Valid The", "Acm.Select The", "Acm.Select Fire",
                          "Acm.PasswordsDoNotMatch", "Acm.Tablespace", "Acm.OCIOnly", "CancelWork"})
    EXPECT_TRUE(c.HasMessage(key)) << key;
  EXPECT_EQ(host::FormatMessage(c.Message("Acm.Check The"), {"Name"}), "Please check the Name.");
  // Every message that takes arguments uses %s placeholders only.
  for (const QString& key : c.MessageKeys())
    EXPECT_FALSE(c.Message(key).contains("%1")) << key.toStdString();
}

// Every message key and catalog key named in the dialogs' sources is in the host's
// repositories, so no dialog shows a bare key or fails on a missing query.
TEST(Catalog, HoldsEveryKeyTheDialogsName) {
  static const QRegularExpression kMessageUse(QStringLiteral(
      R"re((?:esGetMSG|esMsgDBox)\(\s*(?:QStringLiteral|QLatin1String|QString::fromLatin1)\("([^"]+)"\))re"));
  static const QRegularExpression kCheckFailKey(
      QStringLiteral(R"re(CheckFail\([^;]*,\s*QStringLiteral\("([^"]+)"\)\s*\))re"));
  static const QRegularExpression kExitCheckKey(
      QStringLiteral(R"re(ExitCheck\([^;]*,\s*"([^"]+)"\))re"));
  static const QRegularExpression kSqlUse(
      QStringLiteral(R"re((?:LoadSQL|GetSQL)\(\s*QStringLiteral\("([^"]+)"\))re"));
  const TCatalog& c = TCatalog::Builtin();
  QSet<QString> messages, queries;
  for (const char* folder :
       {"plugin", "schema", "tables", "types", "storage", "security", "jobs"}) {
    QDirIterator it(QStringLiteral(NOD_SOURCE_DIR "/") + QLatin1String(folder), {"*.cpp", "*.h"},
                    QDir::Files);
    while (it.hasNext()) {
      QFile f(it.next());
      ASSERT_TRUE(f.open(QIODevice::ReadOnly));
      const QString text = QString::fromUtf8(f.readAll());
      for (const QRegularExpression* re : {&kMessageUse, &kCheckFailKey, &kExitCheckKey})
        for (const auto& m : re->globalMatch(text)) messages << m.captured(1);
      for (const auto& m : kSqlUse.globalMatch(text)) queries << m.captured(1);
    }
  }
  // The scan finds what the frame itself asks for.
  for (const char* key : {"CancelWork", "OverWrite", "ClipboardCopy"})
    EXPECT_TRUE(messages.contains(key)) << key;
  for (const QString& key : messages) EXPECT_TRUE(c.HasMessage(key)) << key.toStdString();
  for (const QString& key : queries) EXPECT_TRUE(c.HasSQL(key)) << key.toStdString();
}
