#include <gtest/gtest.h>

#include <QKeyEvent>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "plugin/KelText.h"

using namespace kel;

TEST(Text, TrimStripsControlsAndBlanksOnly) {
  EXPECT_EQ(Trim(QString("\t\r\n  A B \x01\r")), "A B");
  EXPECT_EQ(Trim(QString("  ")), "");
  EXPECT_EQ(TrimRight(QString(" x \r")), " x");
  EXPECT_EQ(TrimLeft(QString("\r x ")), "x ");
}

TEST(Text, TrimNameCleansLabelCaptions) {
  EXPECT_EQ(TrimName("&Table Name :"), "Table Name");
  EXPECT_EQ(TrimName("Schema :"), "Schema");
  EXPECT_EQ(TrimName("Define Columns"), "Define Columns");
  EXPECT_EQ(TrimName("Save && Close:"), "Save & Close");
}

TEST(Text, FormatMsgFillsPlaceholdersInOrderAndLeavesArgumentsAlone) {
  EXPECT_EQ(FormatMsg("%s [%s] - %s ", {"Alter Table", "APP", "T"}), "Alter Table [APP] - T ");
  EXPECT_EQ(FormatMsg("Alter Sequence - %s", {"S%s1"}), "Alter Sequence - S%s1");
  EXPECT_EQ(FormatMsg("100%% of %s and %s", {"A"}), "100% of A and ");
}

TEST(Text, StrToBoolAcceptsTheStandardForms) {
  EXPECT_TRUE(StrToBool("True"));
  EXPECT_TRUE(StrToBool("true"));
  EXPECT_TRUE(StrToBool("-1"));
  EXPECT_FALSE(StrToBool("False"));
  EXPECT_FALSE(StrToBool("0"));
  EXPECT_THROW(StrToBool("yes"), EKelError);
  EXPECT_THROW(StrToBool(""), EKelError);
}

// The worked example of the statement buffer: fragments with lone CRs, an empty fragment, the
// text set to its trimmed self plus ";" CR, then a comment line.
TEST(Text, NamesAreOracleIdentifiersAndNothingElse) {
  for (const char* good : {"S1", "emp_2", "A$#", "\"Mixed Case\"", "\"a.b@c\"", "\u00C4RGER"})
    EXPECT_TRUE(IsValidName(QString::fromUtf8(good))) << good;
  for (const char* bad :
       {"", "1A", "_A", "A B", "A;", "S1 NOCACHE;\r\nDROP TABLE HR.E;\r\n--", "\"\"", "\"a\"b\"",
        "\"open", "A\tB", "\"a\nb\"", "\"a;b\"", "A.B", "A@B"})
    EXPECT_FALSE(IsValidName(QString::fromUtf8(bad))) << bad;
  EXPECT_FALSE(IsValidName(QStringLiteral("A") + QChar(0) + QStringLiteral("B")));
  EXPECT_TRUE(IsValidName(QString(128, u'A')));
  EXPECT_FALSE(IsValidName(QString(129, u'A')));
  EXPECT_TRUE(IsValidName(u'"' + QString(128, u'a') + u'"'));
  // 64 two-byte letters are 128 bytes; one more is too long.
  EXPECT_TRUE(IsValidName(QString(64, QChar(0xC4))));
  EXPECT_FALSE(IsValidName(QString(65, QChar(0xC4))));

  for (const char* good : {"REMOTE", "sales.example.com", "SALES.EXAMPLE.COM@HQ", "\"x.y\".Z"})
    EXPECT_TRUE(IsValidName(QString::fromUtf8(good), TNameKind::DbLink)) << good;
  for (const char* bad : {"A..B", ".A", "A.", "A@", "@A", "A@B@C", "A@B.C", "L;DROP", "A B.C"})
    EXPECT_FALSE(IsValidName(QString::fromUtf8(bad), TNameKind::DbLink)) << bad;
}

TEST(SqlMemo, KeepsLoneCrsAndSplitsOnlyAtCrLf) {
  TSqlMemo memo;
  memo.Add("CREATE TABLE APP.T1 ");
  memo.Add("(\r  A DATE\r)");
  memo.Add("");
  EXPECT_EQ(memo.Text(), "CREATE TABLE APP.T1 \r\n(\r  A DATE\r)\r\n\r\n");
  memo.SetText(Trim(memo.Text()) + ";" + QChar(CR));
  ASSERT_EQ(memo.Count(), 2);
  memo.Add("COMMENT ON TABLE APP.T1 IS 'x';");
  EXPECT_EQ(memo.Text(),
            "CREATE TABLE APP.T1 \r\n(\r  A DATE\r);\r\r\nCOMMENT ON TABLE APP.T1 IS 'x';\r\n");
}

TEST(SqlMemo, FinalCrLfAddsNoEmptyItemButInnerEmptyLinesStay) {
  TSqlMemo memo;
  memo.SetText("a\r\n\r\nb\r\n");
  EXPECT_EQ(memo.Lines(), QStringList({"a", "", "b"}));
  memo.SetText("a\nb\rc");
  EXPECT_EQ(memo.Count(), 1);
  memo.SetText("");
  EXPECT_TRUE(memo.IsEmpty());
}

TEST(Query, DeclaredParamsSkipLiteralsCommentsAndDuplicates) {
  const QString sql =
      "select ':P_NO' as \"a:P_NO2\" from t -- :P_NO3\n"
      "where o = :P_OWN and n = :p_seq /* :P_NO4 */ and x = :P_OWN and y = a::b";
  EXPECT_EQ(TKelQuery::DeclaredParams(sql), QStringList({"P_OWN", "p_seq"}));
}

namespace {
class TEchoDB : public TEsDBInfo {
 public:
  QString UserName() const override { return "APP"; }
  QStringList UserList() const override { return {"APP"}; }
  QString ConnectionName() const override { return "T"; }
  QString ServerVersion() const override { return ""; }
  bool PublicLinks() const override { return false; }
  bool OCIMode() const override { return false; }
  QString GetSQL(const QString& key) const override {
    if (key != "K") throw EKelError("no key " + key);
    return "select :P_A from dual where :P_B is null";
  }
  TQueryResult OpenQuery(const QString&, const QString&, const TBindList& binds) override {
    Binds = binds;
    return {{"Value", "Other"}, {{"1", "x"}, {"2", "y"}}};
  }
  TBindList Binds;
};
}  // namespace

TEST(Query, BindsOnlyDeclaredParametersAndReadsFieldsCaseInsensitively) {
  TEchoDB db;
  TKelQuery q(&db);
  q.LoadSQL("K");
  q.ParamByName("P_A") = "a";
  q.ParamByName("P_UNUSED") = "u";
  q.Open();
  ASSERT_EQ(db.Binds.size(), 2);
  EXPECT_EQ(db.Binds[0].first, "P_A");
  EXPECT_EQ(db.Binds[0].second.toString(), "a");
  EXPECT_EQ(db.Binds[1].first, "P_B");
  EXPECT_TRUE(db.Binds[1].second.isNull());
  EXPECT_EQ(q.FieldByName("value"), "1");
  q.Next();
  EXPECT_EQ(q.FieldByName("Other"), "y");
  EXPECT_THROW(q.FieldByName("Missing"), EKelError);
  q.Next();
  EXPECT_TRUE(q.Eof());
  EXPECT_EQ(q.FieldByName("Missing"), "");
  EXPECT_THROW(q.LoadSQL("nope"), EKelError);
}

// Digits-only edits: editing keys pass (Delete carries U+007F on X11 desktops), characters that
// arrive without a key of their own (pasted, key 0) only as digits.
TEST(Text, DigitFilterLetsEditingKeysThroughButNoPastedControls) {
  const auto nonDigit = [](int key, const QString& text) {
    QKeyEvent e(QEvent::KeyPress, key, Qt::NoModifier, text);
    return IsNonDigitKey(&e);
  };
  EXPECT_FALSE(nonDigit(Qt::Key_Delete, QString(QChar(0x7f))));
  EXPECT_FALSE(nonDigit(Qt::Key_Backspace, "\b"));
  EXPECT_FALSE(nonDigit(Qt::Key_7, "7"));
  EXPECT_TRUE(nonDigit(Qt::Key_Minus, "-"));
  EXPECT_TRUE(nonDigit(0, "\t"));
  EXPECT_TRUE(nonDigit(0, QString(QChar(0))));
  EXPECT_FALSE(nonDigit(0, "5"));
  EXPECT_EQ(StripBannedControls(QString("a") + QChar(0) + "\tb\r\n" + QChar(0x7f)), "a\tb\r\n");
}
