#include <gtest/gtest.h>

#include "host/core/Catalog.h"
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
  EXPECT_EQ(c.GetSQL("Unit.Two"), "-- what it returns\nSELECT ':x' FROM DUAL");
  EXPECT_EQ(c.GetSQL("Unit.Empty"), "");
  c.AddSqlText("-- name: Unit.One\nSELECT 2 FROM DUAL");  // later files replace
  EXPECT_EQ(c.GetSQL("Unit.One"), "SELECT 2 FROM DUAL");
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
