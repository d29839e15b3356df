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

// One pick through the caller's protocol, with `drive` acting on the picker once it is up.
int Pick(TKelQuery& q, const std::function<void(TDataSelectFrm*)>& drive) {
  QTimer::singleShot(0, [&] { drive(DataSelectFrm); });
  return SelectData(&q, {{"Schema Name", "Owner"}});
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

TEST(DataSelect, EveryPickGetsAFreshPickerShowingOnlyTheAskedColumns) {
  test::TTestHost host;
  TOwners db;
  TKelQuery q(&db);
  q.Open();
  QList<TDataSelectFrm*> seen;
  for (int i = 0; i < 2; ++i) {
    Pick(q, [&](TDataSelectFrm* p) {
      seen << p;
      EXPECT_FALSE(p->DataGrd()->isColumnHidden(0));
      EXPECT_EQ(p->DataGrd()->horizontalHeaderItem(0)->text(), "Owner");
      EXPECT_EQ(p->DataGrd()->item(2, 0)->text(), "SALES");
      for (int c = 1; c < TDataSelectFrm::kColumnCount; ++c)
        EXPECT_TRUE(p->DataGrd()->isColumnHidden(c));
      p->findChild<QPushButton*>("CancelBtn")->click();
    });
    EXPECT_EQ(DataSelectFrm, nullptr);  // freed and cleared after the pick
  }
  ASSERT_EQ(seen.size(), 2);
  EXPECT_NE(seen[0], nullptr);
}
