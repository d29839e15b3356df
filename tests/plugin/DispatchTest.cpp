// Entry and dispatch: word matching, the three open shapes, the link and error handling.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <set>

#include "plugin/Dispatch.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

// A modal dialog that records what the open routine did to it.
struct TProbeLog {
  int Created = 0;
  int Destroyed = 0;
  int ParamsRead = 0;
  QString Verb;
};
TProbeLog gProbe;

class TProbeFrm : public TKelDllDBDlgFrm {
 public:
  explicit TProbeFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
    setObjectName("ProbeFrm");
    auto* edit = new QLineEdit(this);
    edit->setObjectName("NameEd");
    ++gProbe.Created;
  }
  ~TProbeFrm() override { ++gProbe.Destroyed; }
  void ReadParams(TXLink* link) override {
    ++gProbe.ParamsRead;
    gProbe.Verb = link->Verb();
    if (link->Verb() == "Throw") throw EKelError("reader failed");
    if (link->Verb() == "Alter") (void)StrToBool(link->ParamByString("IsAlter"));
  }
};

// Presses Escape in the dialog as soon as it is up.
void Escape(QWidget* dlg) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(dlg, &press);
}

class Dispatch : public ::testing::Test {
 protected:
  void SetUp() override {
    gProbe = {};
    RegisterOpenRoutine("REDOLOGGROUP", &OpenModal<TProbeFrm>);
  }
  void TearDown() override { RegisterOpenRoutine("REDOLOGGROUP", nullptr); }
  test::TTestHost FHost;
};

}  // namespace

TEST(DispatchTable, HoldsTheTwentyTwoDistinctWordsWithConstraintWordsSharingADialog) {
  const auto table = DispatchTable();
  ASSERT_EQ(table.size(), 22u);
  std::set<QString> words;
  for (const TDispatchRow& row : table) {
    words.insert(row.Word);
    EXPECT_EQ(QString(row.Word), QString(row.Word).toUpper());
  }
  EXPECT_EQ(words.size(), 22u);
  EXPECT_STREQ(table[0].Word, "CONSTRAINT");
  EXPECT_STREQ(table[1].Word, "ADDCONSTRAINT");
  EXPECT_STREQ(table[0].DialogClass, table[1].DialogClass);
  EXPECT_EQ(table[0].Routine, table[1].Routine);
  for (const TDispatchRow& row : table) {
    const QString w = row.Word;
    const TFormShape want = w == "TABLE" || w == "VIEW"
                                ? TFormShape::Child
                                : (w == "VIEWSQLFRN" ? TFormShape::Preview : TFormShape::Modal);
    EXPECT_EQ(row.Shape, want) << row.Word;
  }
}

TEST_F(Dispatch, WordsMatchInAnyLetterCaseAndTheModalResultIsReturned) {
  for (const char* word : {"REDOLOGGROUP", "redologgroup", "RedoLogGroup"}) {
    EXPECT_EQ(FHost.Open(word, nullptr, Escape), mrCancel) << word;
  }
  EXPECT_EQ(gProbe.Created, 3);
  EXPECT_EQ(gProbe.Destroyed, 3);  // the modal dialog is always freed
}

TEST_F(Dispatch, UnknownOrUnbuiltWordsDoNothingAndLeaveResultUntouched) {
  // Only a to z are upper-cased: a long s is no S.
  RegisterOpenRoutine("ROLLBACKSEGMENT", &OpenModal<TProbeFrm>);
  for (const char* word : {"REDOLOGGROUPS", "", "NOSUCH", "PROFILE ", "rollback\u017Fegment"}) {
    int result = 42;
    test::TestOpen(&FHost.Host(), &result, nullptr, nullptr, word);
    EXPECT_EQ(result, 42) << word;
  }
  RegisterOpenRoutine("ROLLBACKSEGMENT", nullptr);
  EXPECT_EQ(gProbe.Created, 0);
  EXPECT_TRUE(FHost.Events().isEmpty());
}

TEST_F(Dispatch, ANullLinkSkipsTheParameterReader) {
  EXPECT_EQ(FHost.Open("REDOLOGGROUP", nullptr, Escape), mrCancel);
  EXPECT_EQ(gProbe.ParamsRead, 0);
  TXLink link;
  link.SetVerb("ChangeOwner");
  EXPECT_EQ(FHost.Open("REDOLOGGROUP", &link, Escape), mrCancel);
  EXPECT_EQ(gProbe.ParamsRead, 1);
  EXPECT_EQ(gProbe.Verb, "ChangeOwner");
}

TEST_F(Dispatch, ExceptionsAreSwallowedResultKeepsItsLastValueAndTheDialogIsFreed) {
  TXLink link;
  link.SetVerb("Throw");
  int result = 42;
  test::TestOpen(&FHost.Host(), &result, nullptr, &link, "REDOLOGGROUP");
  EXPECT_EQ(result, 1);  // what SetParentControl returned; the dialog was never shown
  EXPECT_EQ(gProbe.Destroyed, 1);

  // A flag that is not a Boolean fails the reader the same way.
  link.SetVerb("Alter");
  link.AddParams("IsAlter", "perhaps");
  result = 42;
  test::TestOpen(&FHost.Host(), &result, nullptr, &link, "REDOLOGGROUP");
  EXPECT_EQ(result, 1);
  EXPECT_EQ(gProbe.Destroyed, 2);
}

TEST_F(Dispatch, TheExportedEntrySurvivesANullWord) {
  int result = 42;
  test::TestOpen(&FHost.Host(), &result, nullptr, nullptr, "");
  EXPECT_EQ(result, 42);
}
