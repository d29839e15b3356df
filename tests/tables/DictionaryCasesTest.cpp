// The alter mode on demo tables whose dictionary rows differ from the plain case: no segment of
// their own (partitioned, index-organized, temporary), a NOT NULL constraint that is disabled or
// not validated, columns sized in characters and a foreign key with ON DELETE SET NULL.
#include <gtest/gtest.h>

#include <QComboBox>

#include "host/core/RecordingHost.h"
#include "plugin/KelTreeList.h"
#include "tables/CreateTableFrn.h"
#include "tables/TableConstraints.h"
#include "tests/support/TestHost.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}
using C = TCreateTableFrm;
using P = TTableConstraintPage;

namespace {

class DictionaryCases : public ::testing::Test {
 protected:
  TCreateTableFrm* Load(const char* table) {
    Recorder = std::make_unique<host::TRecordingHost>(test::DemoConnection(), QJsonObject());
    SetApplication(Recorder.get());
    Form.reset(new TCreateTableFrm(nullptr));
    Form->SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", "True");
    link.AddParams("P_Schema", "APP");
    link.AddParams("P_TableName", table);
    Form->ReadParams(&link);
    Form->show();
    return Form.get();
  }
  void TearDown() override {
    Form.reset();
    SetApplication(nullptr);
    Recorder.reset();
  }
  // The loaded table's constraint rows as "NAME:flags" (D disabled, N not validated).
  QStringList ConstraintRows() {
    auto* list = Form->findChild<TKelTreeList*>("ConstTreeList");
    QStringList rows;
    for (int r = 0; r < list->RowCount(); ++r)
      rows << list->Cell(r, P::ccName) + u':' +
                  (list->Cell(r, P::ccDisable) == u"True" ? "D" : "") +
                  (list->Cell(r, P::ccNovalidate) == u"True" ? "N" : "");
    return rows;
  }

  std::unique_ptr<host::TRecordingHost> Recorder;
  std::unique_ptr<TCreateTableFrm> Form;
};

}  // namespace

// NULL storage attributes and tablespace read as "not set": loading alone writes nothing.
TEST_F(DictionaryCases, TablesWithoutASegmentLoadWithoutChanges) {
  for (const char* table : {"SALES_HISTORY", "COUNTRY_CODES", "SESSION_CART"}) {
    const QString text = Load(table)->BuildText();
    for (const char* clause :
         {"PCTFREE", "PCTUSED", "INITRANS", "MAXTRANS", "STORAGE", "TABLESPACE", "LOGGING",
          "PARALLEL", "CACHE", "MODIFY", "CONSTRAINT", "COMMENT"})
      EXPECT_FALSE(text.contains(clause)) << table << ": " << text.toStdString();
  }
}

// A disabled or unvalidated NOT NULL check is no Not Null flag, and it stays on the
// constraint page as the check it is, untouched by an alter that does not ask.
TEST_F(DictionaryCases, DisabledAndUnvalidatedNotNullChecksAreKept) {
  Load("SALES_HISTORY");
  TKelTreeList* columns = Form->ColumnTL();
  ASSERT_EQ(columns->RowCount(), 4);
  EXPECT_EQ(columns->Cell(1, C::ccNull), "False");  // SOLD_ON
  EXPECT_EQ(columns->Cell(3, C::ccNull), "False");  // AMOUNT
  EXPECT_EQ(ConstraintRows(), QStringList({"PK_SALES_HISTORY:", "NN_SALES_HISTORY_AMOUNT:DN",
                                           "NN_SALES_HISTORY_SOLD_ON:N"}));
  EXPECT_FALSE(Form->BuildText().contains("NN_SALES_HISTORY"));
  // An enabled, validated one is the column flag, as before.
  Load("EMP");
  for (const QString& row : ConstraintRows())
    EXPECT_FALSE(row.startsWith("SYS_C")) << row.toStdString();
}

// VARCHAR2(10 CHAR) reloads in characters and keeps its semantics when its size changes.
TEST_F(DictionaryCases, CharacterSemanticsSurviveLoadAndAlter) {
  Load("SALES_HISTORY");
  TKelTreeList* list = Form->ColumnTL();
  EXPECT_EQ(list->Cell(2, C::ccName), "REGION");
  EXPECT_EQ(list->Cell(2, C::ccSize), "10");
  list->SetFocusedRow(2);
  QString why;
  ASSERT_TRUE(list->EditCell(2, C::ccSize, "20", &why)) << why.toStdString();
  EXPECT_TRUE(Form->BuildText().contains("\r  REGION VARCHAR2(20 CHAR)\r"))
      << Form->BuildText().toStdString();

  // A byte-sized column of the same kind stays in bytes; CHAR(2 CHAR) keeps its semantics.
  Load("COUNTRY_CODES");
  list = Form->ColumnTL();
  list->SetFocusedRow(0);
  ASSERT_TRUE(list->EditCell(0, C::ccSize, "3", &why)) << why.toStdString();
  list->SetFocusedRow(1);
  ASSERT_TRUE(list->EditCell(1, C::ccSize, "80", &why)) << why.toStdString();
  const QString text = Form->BuildText();
  EXPECT_TRUE(text.contains("\r  CODE CHAR(3 CHAR),")) << text.toStdString();
  EXPECT_TRUE(text.contains("\r  NAME VARCHAR2(80)\r")) << text.toStdString();
}

TEST_F(DictionaryCases, AnObjectTypeAttributeSizedInCharactersSaysSo) {
  Load("PERSONS");
  auto* type = Form->findChild<QComboBox*>("ObjectTypeCmb");
  ASSERT_NE(type, nullptr);
  if (type->findText("ADDRESS_T") < 0) type->addItem("ADDRESS_T");
  type->setCurrentText("ADDRESS_T");
  auto* attrs = Form->findChild<TKelTreeList*>("ObjectTableTreeList");
  QStringList shown;
  for (int r = 0; r < attrs->RowCount(); ++r) shown << attrs->Cell(r, 0) + u' ' + attrs->Cell(r, 1);
  EXPECT_TRUE(shown.contains("CITY VARCHAR2(40 CHAR)")) << shown.join(", ").toStdString();
  EXPECT_TRUE(shown.contains("STREET VARCHAR2(60)")) << shown.join(", ").toStdString();
}

// ON DELETE SET NULL is read as such: a key written anew keeps it.
TEST_F(DictionaryCases, OnDeleteSetNullIsKeptWhenTheKeyIsWrittenAnew) {
  Load("EMP");
  EXPECT_FALSE(Form->BuildText().contains("FK_EMP_MGR"));
  auto* list = Form->findChild<TKelTreeList*>("ConstTreeList");
  int row = -1;
  for (int r = 0; r < list->RowCount(); ++r)
    if (list->Cell(r, P::ccName) == u"FK_EMP_MGR") row = r;
  ASSERT_GE(row, 0);
  EXPECT_EQ(list->Cell(row, P::ccDeleteCascade), "False");
  // Not deferrable any more: the key is dropped and added again, with its delete rule.
  list->SetFocusedRow(row);
  QString why;
  ASSERT_TRUE(list->EditCell(row, P::ccDeferred, "False", &why)) << why.toStdString();
  ASSERT_TRUE(list->EditCell(row, P::ccDeferrable, "False", &why)) << why.toStdString();
  const QString text = Form->BuildText();
  EXPECT_TRUE(text.contains("  DROP CONSTRAINT FK_EMP_MGR")) << text.toStdString();
  EXPECT_TRUE(text.contains("\r   ON DELETE SET NULL NOT DEFERRABLE") ||
              text.contains("\r   ON DELETE SET NULL;"))
      << text.toStdString();
}
