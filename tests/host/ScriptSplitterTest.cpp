#include <gtest/gtest.h>

#include "host/core/ScriptSplitter.h"

using host::IsPlSqlUnit;
using host::SplitScript;

TEST(ScriptSplitter, SemicolonAtLineEndEndsAStatementWhateverTheLineEnd) {
  EXPECT_EQ(SplitScript("CREATE SEQUENCE APP.S1\r\nINCREMENT BY 1 \r\nNOORDER;\r\n"
                        "DROP TABLE X;\nDROP TABLE Y;\rDROP TABLE Z"),
            QStringList({"CREATE SEQUENCE APP.S1\r\nINCREMENT BY 1 \r\nNOORDER", "DROP TABLE X",
                         "DROP TABLE Y", "DROP TABLE Z"}));
  // A semicolon inside a line, a literal or a comment does not end the statement.
  EXPECT_EQ(SplitScript("SELECT 'a;\nb;' FROM DUAL; -- done;\nSELECT 1 /* x;\n*/ FROM DUAL;"),
            QStringList({"SELECT 'a;\nb;' FROM DUAL", "SELECT 1 /* x;\n*/ FROM DUAL"}));
  EXPECT_EQ(SplitScript("A; B;\n"), QStringList({"A; B"}));
}

// The table dialog joins the lines of one statement with lone CRs and ends its text with CR
// before the buffer's CR LF.
TEST(ScriptSplitter, LoneCrsInsideATableStatementStayInIt) {
  const QString script =
      "CREATE TABLE APP.T1 \r\n(\r  A DATE,\r  B NUMBER(5)\r);\r\r\n"
      "COMMENT ON TABLE APP.T1 IS 'x';\r\n";
  EXPECT_EQ(SplitScript(script),
            QStringList({"CREATE TABLE APP.T1 \r\n(\r  A DATE,\r  B NUMBER(5)\r)",
                         "COMMENT ON TABLE APP.T1 IS 'x'"}));
}

TEST(ScriptSplitter, PlSqlUnitsEndOnlyAtASlashLine) {
  const QString trigger =
      "CREATE OR REPLACE TRIGGER APP.T1\r\nBEFORE INSERT ON APP.EMP\r\nDECLARE \r\n"
      "tmpVar NUMBER; \r\nBEGIN \r\n   tmpVar := 0; \r\nEND  T1; \r\n\r\n\r\n/ \r\n"
      "/ \r\n \r\nALTER TRIGGER APP.T1 DISABLE \r\n/ \r\n";
  const QStringList parts = SplitScript(trigger);
  ASSERT_EQ(parts.size(), 2);
  EXPECT_TRUE(parts[0].startsWith("CREATE OR REPLACE TRIGGER APP.T1"));
  EXPECT_TRUE(parts[0].endsWith("END  T1;"));
  EXPECT_EQ(parts[1], "ALTER TRIGGER APP.T1 DISABLE");

  EXPECT_EQ(SplitScript("BEGIN\n  NULL;\nEND;\n/\nGRANT X TO Y;\n"),
            QStringList({"BEGIN\n  NULL;\nEND;", "GRANT X TO Y"}));
  // A unit without its slash runs to the end of the script.
  EXPECT_EQ(SplitScript("DECLARE\n  N NUMBER;\nBEGIN\n  N := 1;\nEND;\n"),
            QStringList({"DECLARE\n  N NUMBER;\nBEGIN\n  N := 1;\nEND;"}));
}

// The object type dialog writes the type, an empty line, then "CREATE OR REPLACE " and the
// body on the next line.
TEST(ScriptSplitter, TypeSpecEndsAtSemicolonButTypeBodyIsPlSql) {
  const QString script =
      "CREATE OR REPLACE TYPE APP.T AS OBJECT\r\n(\r\n  A NUMBER,\r\n"
      "  MEMBER FUNCTION F RETURN NUMBER\r\n);\r\n\r\nCREATE OR REPLACE \r\n"
      "TYPE BODY T AS\r\n  MEMBER FUNCTION F RETURN NUMBER IS\r\n  BEGIN\r\n    RETURN 1;\r\n"
      "  END;\r\nEND;\r\n";
  const QStringList parts = SplitScript(script);
  ASSERT_EQ(parts.size(), 2);
  EXPECT_TRUE(parts[0].endsWith(")"));
  EXPECT_TRUE(parts[1].startsWith("CREATE OR REPLACE \r\nTYPE BODY T AS"));
  EXPECT_TRUE(parts[1].endsWith("END;"));
}

TEST(ScriptSplitter, BlankInputAndCommentsOnlyGiveNoStatement) {
  EXPECT_TRUE(SplitScript("").isEmpty());
  EXPECT_TRUE(SplitScript(" \r\n\r\n\t").isEmpty());
  EXPECT_TRUE(SplitScript(";\n/\n-- nothing\n/* at all */\n").isEmpty());
  EXPECT_EQ(SplitScript("-- heading\nDROP TABLE X;\n"), QStringList({"-- heading\nDROP TABLE X"}));
}

TEST(ScriptSplitter, RecognisesThePlSqlHeads) {
  EXPECT_TRUE(IsPlSqlUnit("begin null; end;"));
  EXPECT_TRUE(IsPlSqlUnit("-- c\n/* d */ DECLARE x NUMBER;"));
  EXPECT_TRUE(IsPlSqlUnit("CREATE PROCEDURE P IS"));
  EXPECT_TRUE(IsPlSqlUnit("create or replace package body P as"));
  EXPECT_TRUE(IsPlSqlUnit("CREATE OR REPLACE EDITIONABLE FUNCTION F RETURN NUMBER"));
  EXPECT_TRUE(IsPlSqlUnit("CREATE OR REPLACE\r\nTYPE BODY T AS"));
  EXPECT_FALSE(IsPlSqlUnit("CREATE OR REPLACE TYPE T AS OBJECT (A NUMBER)"));
  EXPECT_FALSE(IsPlSqlUnit("CREATE TABLE BEGIN (A NUMBER)"));
  EXPECT_FALSE(IsPlSqlUnit("CREATE OR REPLACE VIEW V AS SELECT 1 FROM DUAL"));
  EXPECT_FALSE(IsPlSqlUnit(""));
}

// q'X...X' literals may hold quotes, semicolons and slash lines of their own.
TEST(ScriptSplitter, AlternativeQuotingKeepsItsTextTogether) {
  EXPECT_EQ(SplitScript("COMMENT ON TABLE APP.T IS q'[it's; done]';\nDROP TABLE X;\n"),
            QStringList({"COMMENT ON TABLE APP.T IS q'[it's; done]'", "DROP TABLE X"}));
  EXPECT_EQ(SplitScript("SELECT Nq'{a'}' FROM DUAL;\nSELECT q'!x;\n/\ny!' FROM DUAL;\n"),
            QStringList({"SELECT Nq'{a'}' FROM DUAL", "SELECT q'!x;\n/\ny!' FROM DUAL"}));
  // A name ending in q before a quote is no such literal.
  EXPECT_EQ(SplitScript("SELECT seq'x;' FROM DUAL;\nDROP TABLE Y;\n"),
            QStringList({"SELECT seq'x;' FROM DUAL", "DROP TABLE Y"}));
}
