// The behaviour every dialog shares: Escape, the "CancelWork" question, the OK pattern.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>

#include "plugin/Dispatch.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

// A minimal create dialog: one required name on the second page of a page control.
class TNameFrm : public TKelDllDBDlgFrm {
 public:
  explicit TNameFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
    setObjectName("NameFrm");
    auto* pages = new QTabWidget(this);
    pages->setObjectName("MainPage");
    pages->addTab(new QWidget, "General");
    auto* second = new QWidget;
    pages->addTab(second, "Name");
    Label = new QLabel("&Name :", second);
    Name = new QLineEdit(second);
    Name->setObjectName("NameEd");
    Pages = pages;
  }
  bool Validate() override {
    if (Trim(Name->text()).isEmpty()) return CheckFail(Label, Name);
    return true;
  }
  void BuildSql() override {
    SqlMemo().Clear();
    SqlMemo().Add("DROP THING " + Trim(Name->text()));
  }
  QTabWidget* Pages;
  QLabel* Label;
  QLineEdit* Name;
};

void PressEscape(QWidget* w) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(w, &press);
}

class BaseForm : public ::testing::Test {
 protected:
  void SetUp() override { RegisterOpenRoutine("ROLLBACKSEGMENT", &OpenModal<TNameFrm>); }
  void TearDown() override { RegisterOpenRoutine("ROLLBACKSEGMENT", nullptr); }
};

}  // namespace

TEST_F(BaseForm, EscapeOnAnUneditedDialogClosesAtOnceWithCancel) {
  test::TTestHost host;
  EXPECT_EQ(host.Open("ROLLBACKSEGMENT", nullptr, PressEscape), mrCancel);
  EXPECT_TRUE(host.EventsOf("confirm").isEmpty());
}

TEST_F(BaseForm, AnEditedDialogAsksCancelWorkAndOnlyYesCloses) {
  for (int answer : {mrNo, mrCancel}) {
    test::TTestHost host(
        test::Json(("{'answers': {'CancelWork': " + std::to_string(answer) + "}}").c_str()));
    bool stayedOpen = false;
    host.Open("ROLLBACKSEGMENT", nullptr, [&](QWidget* w) {
      auto* dlg = static_cast<TNameFrm*>(w);
      dlg->Name->setText("X");
      PressEscape(dlg);
      stayedOpen = dlg->isVisible();
      dlg->done(mrCancel);
    });
    EXPECT_TRUE(stayedOpen) << answer;
    ASSERT_EQ(host.EventsOf("confirm").size(), 1);
    EXPECT_EQ(host.EventsOf("confirm")[0]["key"].toString(), "CancelWork");
  }
  test::TTestHost yes;
  EXPECT_EQ(yes.Open("ROLLBACKSEGMENT", nullptr,
                     [](QWidget* w) {
                       static_cast<TNameFrm*>(w)->Name->setText("X");
                       PressEscape(w);
                     }),
            mrCancel);
  EXPECT_EQ(yes.EventsOf("confirm").size(), 1);
}

TEST_F(BaseForm, ValidationWarnsWithTheCleanedCaptionShowsThePageAndExecutesNothing) {
  test::TTestHost host;
  bool onNamePage = false;
  host.Open("ROLLBACKSEGMENT", nullptr, [&](QWidget* w) {
    auto* dlg = static_cast<TNameFrm*>(w);
    dlg->OkBtnClick();
    onNamePage = dlg->Pages->currentIndex() == 1;
    dlg->ViewSqlBtnClick();
  });
  EXPECT_TRUE(onNamePage);
  const auto messages = host.EventsOf("message");
  ASSERT_EQ(messages.size(), 2);
  EXPECT_EQ(messages[0]["key"].toString(), "Acm.Check The");
  EXPECT_EQ(messages[0]["args"].toArray().at(0).toString(), "Name");
  EXPECT_TRUE(host.EventsOf("execute").isEmpty());
  EXPECT_TRUE(host.EventsOf("preview").isEmpty());
}

TEST_F(BaseForm, AFailedExecutionKeepsTheDialogOpenAndASuccessClosesWithoutAsking) {
  test::TTestHost host(test::Json("{'execute': [1, 0]}"));
  bool openAfterFailure = false;
  QString kept;
  const int result = host.Open("ROLLBACKSEGMENT", nullptr, [&](QWidget* w) {
    auto* dlg = static_cast<TNameFrm*>(w);
    dlg->Name->setText("T1");
    dlg->OkBtnClick();
    openAfterFailure = dlg->isVisible();
    kept = dlg->Name->text();
    dlg->OkBtnClick();
  });
  EXPECT_TRUE(openAfterFailure);
  EXPECT_EQ(kept, "T1");
  EXPECT_EQ(result, mrOk);
  const auto runs = host.EventsOf("execute");
  ASSERT_EQ(runs.size(), 2);
  EXPECT_EQ(runs[0]["text"].toString(), "DROP THING T1\r\n");
  EXPECT_TRUE(host.EventsOf("confirm").isEmpty());
}

TEST_F(BaseForm, TheSettingsFileIsNamedAfterTheFormWithoutItsT) {
  test::TTestHost host;
  TNameFrm form(nullptr);
  EXPECT_EQ(form.KelIniFile(), "NameFrm.sfm");
  EXPECT_EQ(form.DLLName(), "NewObjDlg.dll");
}
