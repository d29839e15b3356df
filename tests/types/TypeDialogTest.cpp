// The row dialogs driven through their controls: an object type dropped while the attribute
// dialog is open, and the normalised sizes an attribute comes back with.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/KelSpinEdit.h"
#include "tests/support/TestHost.h"
#include "types/CreateAttributeFrn.h"

using namespace kel;

namespace {

// Answers the type picker with ADDRESS_T until `Dropped` is set.
class TDroppingConnection : public host::TFixtureConnection {
 public:
  TDroppingConnection()
      : host::TFixtureConnection(test::Json("{'user': 'APP', 'users': ['APP', 'HR'], "
                                            "'dataTypes': ['DATE', 'NUMBER', 'VARCHAR2']}"),
                                 QJsonObject()) {}
  bool Dropped = false;
  TQueryResult OpenQuery(const QString& key, const QString&, const TBindList&) override {
    TQueryResult result;
    result.Columns = {"TYPE_NAME"};
    if (key == QLatin1String("CreateAttributeFrn.Type")) {
      result.Rows << QStringList{"PERSON_T"};
      if (!Dropped) result.Rows << QStringList{"ADDRESS_T"};
    }
    return result;
  }
};

class AttributeDialog : public ::testing::Test {
 protected:
  void SetUp() override { SetApplication(&Host); }
  void TearDown() override { SetApplication(nullptr); }

  template <class T>
  T* Child(const char* name) {
    T* w = Form->findChild<T*>(QString::fromLatin1(name));
    if (!w) ADD_FAILURE() << "no control " << name;
    return w;
  }
  // Opens the dialog without a modal loop, adding to a list that holds `existing`.
  void Show(const QList<TTypeAttribute>& existing = {}, int edited = -1) {
    Form = std::make_unique<TCreateAttributeFrm>(nullptr);
    Form->SetParentControl(nullptr);
    Form->SetList(existing, edited);
    Form->show();
  }
  QList<QJsonObject> Messages() const {
    QList<QJsonObject> out;
    for (const QJsonValue& e : Host.Events())
      if (e.toObject().value("event") == "message") out << e.toObject();
    return out;
  }

  TDroppingConnection Connection;
  host::TRecordingHost Host{&Connection, QJsonObject()};
  std::unique_ptr<TCreateAttributeFrm> Form;
};

}  // namespace

TEST_F(AttributeDialog, ATypeDroppedSinceTheListWasReadIsRefusedAndTheInputKept) {
  Show();
  Child<QLineEdit>("ObjNameEd")->setText("HOME");
  Child<QComboBox>("TypeCmb")->setCurrentText(kNestedObject);
  Child<QComboBox>("SchemaCmb")->setCurrentText("APP");
  Child<QComboBox>("ObjectCmb")->setCurrentText("ADDRESS_T");
  ASSERT_EQ(Child<QComboBox>("ObjectCmb")->currentText(), "ADDRESS_T");

  Connection.Dropped = true;
  Child<QPushButton>("OkBtn")->click();
  ASSERT_EQ(Messages().size(), 1);
  EXPECT_EQ(Messages()[0].value("key"), "CreateTypeFrn.TypeGone");
  EXPECT_EQ(Messages()[0].value("args").toArray().at(0), "APP.ADDRESS_T");
  EXPECT_TRUE(Form->isVisible());
  EXPECT_EQ(Form->result(), 0);
  EXPECT_EQ(Child<QLineEdit>("ObjNameEd")->text(), "HOME");
  EXPECT_EQ(Child<QComboBox>("ObjectCmb")->currentText(), "ADDRESS_T");

  Connection.Dropped = false;
  Child<QPushButton>("OkBtn")->click();
  EXPECT_EQ(Form->result(), int(mrOk));
  EXPECT_EQ(Form->Attribute().Object, "ADDRESS_T");
  EXPECT_EQ(Form->Attribute().Schema, "APP");
}

TEST_F(AttributeDialog, SizesAreNormalisedForTheChosenTypeOnly) {
  Show();
  Child<QLineEdit>("ObjNameEd")->setText(" ENAME ");
  Child<QComboBox>("TypeCmb")->setCurrentText("VARCHAR2");
  Child<TKelSpinEdit>("LengthEd")->SetText("-3");
  EXPECT_FALSE(Child<TKelSpinEdit>("PrecisionEd")->isEnabled());
  Child<QPushButton>("OkBtn")->click();
  const TTypeAttribute a = Form->Attribute();
  EXPECT_EQ(a.Name, "ENAME");
  EXPECT_EQ(a.Length, "255");
  EXPECT_EQ(a.Precision, "");
  EXPECT_EQ(a.Schema, "");

  Show();
  Child<QComboBox>("TypeCmb")->setCurrentText("NUMBER");
  EXPECT_FALSE(Child<TKelSpinEdit>("LengthEd")->isEnabled());
  Child<TKelSpinEdit>("PrecisionEd")->SetText("9");
  Child<TKelSpinEdit>("ScaleEd")->SetText("0");
  EXPECT_EQ(Form->Attribute().Precision, "9");
  EXPECT_EQ(Form->Attribute().Scale, "");
  // Switching to a type without sizes resets the boxes to 0.
  Child<QComboBox>("TypeCmb")->setCurrentText("DATE");
  EXPECT_EQ(Child<TKelSpinEdit>("PrecisionEd")->Text(), "0");
  EXPECT_EQ(Form->Attribute().Precision, "");
}

TEST_F(AttributeDialog, EditingKeepsItsOwnNameButRefusesAnotherRowsName) {
  const QList<TTypeAttribute> rows = {{"ENAME", "DATE"}, {"SAL", "NUMBER"}};
  Show(rows, 0);
  EXPECT_EQ(Child<QLineEdit>("ObjNameEd")->text(), "ENAME");
  EXPECT_EQ(Child<QComboBox>("TypeCmb")->currentText(), "DATE");
  Child<QLineEdit>("ObjNameEd")->setText("ename");
  Child<QPushButton>("OkBtn")->click();
  EXPECT_EQ(Form->result(), int(mrOk));
  EXPECT_TRUE(Messages().isEmpty());

  Show(rows, 0);
  Child<QLineEdit>("ObjNameEd")->setText("sal");
  Child<QPushButton>("OkBtn")->click();
  ASSERT_EQ(Messages().size(), 1);
  EXPECT_EQ(Messages()[0].value("key"), "CreateMethodFrn.existMsg");
  EXPECT_TRUE(Form->isVisible());
}
