// The row picker: OK and double click choose the focused row, Escape leaves the caller alone.
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include "plugin/DataSelectFrn.h"
#include "plugin/KelQuery.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {
class TOwners : public TEsDBInfo {
 public:
  QString UserName() const override { return "APP"; }
  QStringList UserList() const override { return {}; }
  QString ConnectionName() const override { return ""; }
  QString ServerVersion() const override { return ""; }
  bool PublicLinks() const override { return false; }
  bool OCIMode() const override { return false; }
  QString GetSQL(const QString&) const override { return "select 1"; }
  TQueryResult OpenQuery(const QString&, const QString&, const TBindList&) override {
    return {{"Schema Name", "Objects"}, {{"APP", "3"}, {"HR", "5"}, {"SALES", "1"}}};
  }
};

// Runs the picker modally and lets `drive` act on it.
int Pick(TKelQuery& q, const std::function<void(TDataSelectFrm*)>& drive) {
  TDataSelectFrm picker(nullptr);
  picker.Bind(&q);
  picker.SetColumn(0, "Schema Name", "Owner");
  QTimer::singleShot(0, [&] { drive(&picker); });
  return picker.ShowModal();
}
}  // namespace

TEST(DataSelect, DoubleClickChoosesTheRowUnderThePointerLikeOk) {
  test::TTestHost host;
  TOwners db;
  TKelQuery q(&db);
  q.Open();
  EXPECT_EQ(Pick(q, [](TDataSelectFrm* p) { emit p->DataGrd()->cellDoubleClicked(2, 0); }), mrOk);
  EXPECT_EQ(q.FieldByName("Schema Name"), "SALES");
}

TEST(DataSelect, EscapeCancelsAndOkTakesTheFocusedRow) {
  test::TTestHost host;
  TOwners db;
  TKelQuery q(&db);
  q.Open();
  EXPECT_EQ(Pick(q,
                 [](TDataSelectFrm* p) {
                   QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                   QApplication::sendEvent(p, &esc);
                 }),
            mrCancel);
  EXPECT_EQ(Pick(q,
                 [](TDataSelectFrm* p) {
                   p->SetFocusedRow(1);
                   p->findChild<QPushButton*>("OkBtn")->click();
                 }),
            mrOk);
  EXPECT_EQ(q.FieldByName("Schema Name"), "HR");
}
