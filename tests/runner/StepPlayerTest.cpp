#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QJsonArray>
#include <QJsonDocument>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>
#include <memory>

#include "host/runner/StepPlayer.h"
#include "plugin/KelForms.h"
#include "plugin/KelTreeList.h"

namespace {

QJsonObject Step(const char* json) {
  return QJsonDocument::fromJson(QByteArray(json)).object();
}

// A small form with one control of every kind the steps act on.
class TPlayerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Form = std::make_unique<QDialog>();
    Form->setObjectName("SampleFrm");
    Form->setWindowTitle("Sample");
    auto* layout = new QVBoxLayout(Form.get());
    NameEd = Add<QLineEdit>(layout, "NameEd");
    DigitsEd = Add<QLineEdit>(layout, "DigitsEd");
    kel::OnKeyPress(DigitsEd, [](QKeyEvent* e) { return kel::IsNonDigitKey(e); });
    kel::OnExit(NameEd, [this] { ++NameExits; });
    KindCmb = Add<QComboBox>(layout, "KindCmb");
    KindCmb->addItems({"Default", "KB", "MB"});
    CycleChk = Add<QCheckBox>(layout, "CycleChk");
    SizeSpin = Add<QSpinBox>(layout, "SizeSpin");
    SizeSpin->setRange(0, 99);
    // A radio group whose layout order differs from the creation order.
    StatusRG = Add<QGroupBox>(layout, "StatusRG");
    auto* rg = new QHBoxLayout(StatusRG);
    auto* second = new QRadioButton("Offline");
    second->setObjectName("OfflineRdo");
    auto* first = new QRadioButton("Online");
    first->setObjectName("OnlineRdo");
    rg->addWidget(first);
    rg->addWidget(second);
    first->setChecked(true);
    Tabs = Add<QTabWidget>(layout, "MainPage");
    Tabs->addTab(new QWidget, "General");
    Tabs->addTab(new QWidget, "Storage");
    List = Add<kel::TKelTreeList>(layout, "ColumnTL");
    List->AddColumn({"NameCol", "Name"});
    List->AddColumn({"TypeCol", "Type", kel::TCellEditor::PickList, {"DATE", "NUMBER"}});
    List->AddColumn({"HiddenCol", "Hidden", kel::TCellEditor::Text, {}, 0, 0, true, false});
    List->AddRow();
    List->AddRow();
    Form->show();
    QApplication::processEvents();
    Player.OnEvent = [this](const QJsonObject& e) { Events << e; };
  }

  template <class T>
  T* Add(QVBoxLayout* layout, const char* name) {
    auto* w = new T;
    w->setObjectName(name);
    layout->addWidget(w);
    return w;
  }

  bool Play(const char* json) {
    Why.clear();
    return Player.Play(Step(json), &Why);
  }

  runner::TWindowTracker Windows;
  runner::TStepPlayer Player{Windows};
  std::unique_ptr<QDialog> Form;
  QLineEdit *NameEd, *DigitsEd;
  QComboBox* KindCmb;
  QCheckBox* CycleChk;
  QSpinBox* SizeSpin;
  QGroupBox* StatusRG;
  QTabWidget* Tabs;
  kel::TKelTreeList* List;
  int NameExits = 0;
  QList<QJsonObject> Events;
  QString Why;
};

TEST_F(TPlayerTest, SetEditsAsTheUserDoesAndRunsTheExitHandlerOfTheControlLeft) {
  QStringList edited;
  QObject::connect(NameEd, &QLineEdit::textEdited, [&](const QString& t) { edited << t; });
  NameEd->setText("old");
  ASSERT_TRUE(Play(R"({"set": "NameEd", "text": "S1"})")) << Why.toStdString();
  EXPECT_EQ(NameEd->text(), "S1");
  EXPECT_EQ(edited, QStringList{"S1"});
  ASSERT_TRUE(Play(R"({"set": "NameEd", "text": ""})"));
  EXPECT_EQ(NameEd->text(), "");
  EXPECT_EQ(NameExits, 0);
  ASSERT_TRUE(Play(R"({"set": "SizeSpin", "text": "42"})")) << Why.toStdString();
  EXPECT_EQ(SizeSpin->value(), 42);
  EXPECT_EQ(NameExits, 1) << "moving to another control leaves the name edit";
}

TEST_F(TPlayerTest, SetRefusesWhatAUserCouldNotEnter) {
  NameEd->setReadOnly(true);
  EXPECT_FALSE(Play(R"({"set": "NameEd", "text": "S1"})"));
  EXPECT_TRUE(Why.contains("read-only")) << Why.toStdString();
  DigitsEd->setEnabled(false);
  EXPECT_FALSE(Play(R"({"set": "DigitsEd", "text": "1"})"));
  EXPECT_TRUE(Why.contains("disabled")) << Why.toStdString();
  EXPECT_FALSE(Play(R"({"set": "SizeSpin", "text": "100"})"));
  EXPECT_TRUE(Why.contains("does not take")) << Why.toStdString();
  EXPECT_FALSE(Play(R"({"set": "KindCmb", "text": "MB"})"));
  EXPECT_TRUE(Why.contains("select")) << Why.toStdString();
}

TEST_F(TPlayerTest, TypePassesEveryCharacterThroughTheKeyFilters) {
  ASSERT_TRUE(Play(R"({"type": "DigitsEd", "text": "-5a7"})")) << Why.toStdString();
  EXPECT_EQ(DigitsEd->text(), "57");
  ASSERT_TRUE(Play(R"({"type": "NameEd", "text": "Ab c"})"));
  EXPECT_EQ(NameEd->text(), "Ab c");
}

TEST_F(TPlayerTest, CheckClicksOnlyWhenTheStateDiffers) {
  int clicks = 0;
  QObject::connect(CycleChk, &QCheckBox::clicked, [&] { ++clicks; });
  ASSERT_TRUE(Play(R"({"check": "CycleChk", "value": true})"));
  ASSERT_TRUE(Play(R"({"check": "CycleChk", "value": true})"));
  EXPECT_TRUE(CycleChk->isChecked());
  EXPECT_EQ(clicks, 1);
  ASSERT_TRUE(Play(R"({"check": "OfflineRdo", "value": true})"));
  EXPECT_TRUE(StatusRG->findChild<QRadioButton*>("OfflineRdo")->isChecked());
  EXPECT_FALSE(Play(R"({"check": "OfflineRdo", "value": false})"));
  EXPECT_FALSE(Play(R"({"check": "CycleChk", "value": "yes"})"));
}

TEST_F(TPlayerTest, SelectChoosesByTextOrIndexAndNamesTheItemsWhenAbsent) {
  QList<int> activated;
  QObject::connect(KindCmb, &QComboBox::activated, [&](int i) { activated << i; });
  ASSERT_TRUE(Play(R"({"select": "KindCmb", "item": "MB"})"));
  ASSERT_TRUE(Play(R"({"select": "KindCmb", "index": 1})"));
  EXPECT_EQ(activated, (QList<int>{2, 1}));
  EXPECT_FALSE(Play(R"({"select": "KindCmb", "item": "GB"})"));
  EXPECT_TRUE(Why.contains(R"("Default", "KB", "MB")")) << Why.toStdString();
  EXPECT_FALSE(Play(R"({"select": "KindCmb", "index": 3})"));
}

TEST_F(TPlayerTest, RadioGroupItemsFollowTheLayoutOrder) {
  ASSERT_TRUE(Play(R"({"click": "StatusRG", "index": 1})")) << Why.toStdString();
  EXPECT_TRUE(StatusRG->findChild<QRadioButton*>("OfflineRdo")->isChecked());
  ASSERT_TRUE(Play(R"({"dump": "StatusRG"})"));
  EXPECT_EQ(Events.last().value("index").toInt(), 1);
  EXPECT_FALSE(Play(R"({"click": "StatusRG", "index": 2})"));
  EXPECT_FALSE(Play(R"({"click": "StatusRG"})")) << "a group box is not a button";
}

TEST_F(TPlayerTest, TreeListCellsGoThroughTheListsOwnEditing) {
  ASSERT_TRUE(Play(R"({"cell": "ColumnTL", "row": 1, "column": "TypeCol", "value": "DATE"})"))
      << Why.toStdString();
  EXPECT_EQ(List->Cell(1, 1), "DATE");
  EXPECT_FALSE(Play(R"({"cell": "ColumnTL", "row": 0, "column": 1, "value": "BLOB"})"));
  EXPECT_TRUE(Why.contains("not in the list")) << Why.toStdString();
  EXPECT_FALSE(Play(R"({"cell": "ColumnTL", "row": 2, "column": 0, "value": "A"})"));
  ASSERT_TRUE(Play(R"({"focus": "ColumnTL", "row": 0})"));
  ASSERT_TRUE(Play(R"({"dump": "ColumnTL"})"));
  const QJsonObject dump = Events.last();
  EXPECT_EQ(dump.value("columns").toArray(), (QJsonArray{"Name", "Type"}));
  EXPECT_EQ(dump.value("rows").toArray(), (QJsonArray{QJsonArray{"", ""}, QJsonArray{"", "DATE"}}));
  EXPECT_EQ(dump.value("focusedRow").toInt(), 0);
}

TEST_F(TPlayerTest, KeysReachTheFormThroughTheFocusedControl) {
  int rejected = 0;
  QObject::connect(Form.get(), &QDialog::rejected, [&] { ++rejected; });
  ASSERT_TRUE(Play(R"({"set": "NameEd", "text": "x"})"));
  ASSERT_TRUE(Play(R"({"key": "Escape"})")) << Why.toStdString();
  EXPECT_EQ(rejected, 1);
  EXPECT_FALSE(Play(R"({"key": "NoSuchKey"})"));
}

TEST_F(TPlayerTest, DumpReportsWhatAppliesToTheKindOfControl) {
  KindCmb->setCurrentIndex(1);
  ASSERT_TRUE(Play(R"({"page": "MainPage", "index": 1})"));
  for (const char* step : {R"({"dump": "KindCmb"})", R"({"dump": "MainPage"})",
                           R"({"dump": "SampleFrm"})", R"({"dump": "CycleChk"})"})
    ASSERT_TRUE(Play(step)) << step;
  EXPECT_EQ(Events[0], (QJsonObject{{"event", "widget"},
                                    {"name", "KindCmb"},
                                    {"enabled", true},
                                    {"visible", true},
                                    {"text", "KB"},
                                    {"index", 1},
                                    {"items", QJsonArray{"Default", "KB", "MB"}}}));
  EXPECT_EQ(Events[1].value("page").toInt(), 1);
  EXPECT_EQ(Events[2].value("caption").toString(), "Sample");
  EXPECT_FALSE(Events[3].value("checked").toBool());
}

TEST_F(TPlayerTest, StepsThatCannotBePlayedSayWhy) {
  EXPECT_FALSE(Play(R"({"click": "OkBtn"})"));
  EXPECT_EQ(Why, R"(no control named "OkBtn" in SampleFrm)");
  EXPECT_FALSE(Play(R"({"dump": "NameEd", "form": "OtherFrm"})"));
  EXPECT_TRUE(Why.contains("OtherFrm"));
  EXPECT_FALSE(Play(R"({"wiggle": "NameEd"})"));
  EXPECT_TRUE(Why.startsWith("unknown step"));
  EXPECT_FALSE(Play(R"({"page": "MainPage", "index": 5})"));
  Form->hide();
  EXPECT_FALSE(Play(R"({"dump": "NameEd"})"));
  EXPECT_EQ(Why, "no dialog is open");
}

TEST_F(TPlayerTest, TheActiveWindowIsTheInnermostModalOne) {
  QDialog inner(Form.get());
  inner.setObjectName("InnerFrm");
  inner.setWindowModality(Qt::ApplicationModal);
  inner.show();
  QApplication::processEvents();
  EXPECT_EQ(Windows.ActiveWindow(), &inner);
  EXPECT_EQ(Windows.OpenWindows(), (QList<QWidget*>{Form.get(), &inner}));
  ASSERT_TRUE(Play(R"({"dump": "NameEd", "form": "SampleFrm"})")) << Why.toStdString();
  EXPECT_FALSE(Play(R"({"dump": "NameEd"})")) << "the modal dialog has no such control";
}

}  // namespace

TEST_F(TPlayerTest, NumbersThatAreNoWholeIntAreRefusedWithTheReason) {
  for (const char* step : {R"({"cell": "ColumnTL", "row": 1e300, "column": 0, "value": "A"})",
                           R"({"cell": "ColumnTL", "row": 1.5, "column": 0, "value": "A"})",
                           R"({"page": "MainPage", "index": -1e300})"}) {
    EXPECT_FALSE(Play(step)) << step;
    EXPECT_TRUE(Why.contains("whole number")) << Why.toStdString();
  }
  EXPECT_EQ(List->Cell(1, 0), "");
}

TEST_F(TPlayerTest, TypeSendsWholeCodePointsAndDeleteCarriesItsDesktopText) {
  ASSERT_TRUE(Play(R"({"type": "NameEd", "text": "a\ud83d\ude00b"})")) << Why.toStdString();
  EXPECT_EQ(NameEd->text(), QString::fromUtf8("a\xF0\x9F\x98\x80"
                                              "b"));
  QString seen;
  kel::OnKeyPress(DigitsEd, [&](QKeyEvent* e) {
    seen += e->text();
    return false;
  });
  ASSERT_TRUE(Play(R"({"type": "DigitsEd", "text": "123"})"));
  DigitsEd->setCursorPosition(0);
  ASSERT_TRUE(Play(R"({"key": "Delete"})")) << Why.toStdString();
  EXPECT_EQ(DigitsEd->text(), "23");
  EXPECT_TRUE(seen.endsWith(QChar(0x7f)));
}
