// The add- and alter-constraint dialogs: the shared constraint rules, the primary-key query on
// the demo database, and the dialogs' interlocks driven as a user drives them.
#include <gtest/gtest.h>

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

#include "host/core/RecordingHost.h"
#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"
#include "tables/AlterConstraintFrn.h"
#include "tables/ConstraintRules.h"
#include "tables/CreateConstraintFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

TEST(ConstraintRules, TypesStateWordsAndDeleteRules) {
  EXPECT_EQ(ColumnTypeText("VARCHAR2", " 30 "), "VARCHAR2(30)");
  EXPECT_EQ(ColumnTypeText("DATE", ""), "DATE");
  EXPECT_TRUE(SameBaseType("NUMBER(22)", "NUMBER"));
  EXPECT_TRUE(SameBaseType("TIMESTAMP(6)(11)", "TIMESTAMP(3)"));
  EXPECT_FALSE(SameBaseType("VARCHAR2(10)", "NVARCHAR2(10)"));
  EXPECT_EQ(NullText("N"), "NOT NULL");
  EXPECT_EQ(NullText("Y"), "");

  TConstraintState s;
  s.Disable = true;
  EXPECT_EQ(ConstraintStateWords(s, true), QStringList({"DISABLE", "VALIDATE"}));
  EXPECT_EQ(ConstraintStateWords(s, false), QStringList({"DISABLE"}));
  s = {true, true, true, false, true};
  EXPECT_EQ(ConstraintStateWords(s, true),
            QStringList({"DEFERRABLE", "INITIALLY DEFERRED", "RELY", "NOVALIDATE"}));

  EXPECT_EQ(DeleteRuleClause("CASCADE"), "ON DELETE CASCADE");
  EXPECT_EQ(DeleteRuleClause("ON DELETE SET NULL"), "ON DELETE SET NULL");
  EXPECT_EQ(DeleteRuleClause("NO ACTION"), "");
}

TEST(ConstraintRules, UsingIndexOnlyWhenAnAttributeIsGiven) {
  TKeyIndexAttributes a;
  EXPECT_TRUE(UsingIndexLines(a).isEmpty());
  a.Tablespace = "IDX";
  EXPECT_EQ(UsingIndexLines(a), QStringList({"  USING INDEX ", "  TABLESPACE IDX"}));
  a = {};
  a.MaxExtentsUnlimited = true;
  a.MaxExtents = "5";  // the box wins over the typed number
  a.Initial = "1";
  a.InitialUnit = "MB";
  a.Next = "512";
  a.NextUnit = "Bytes";
  a.PctFree = "7";
  EXPECT_EQ(UsingIndexLines(a),
            QStringList({"  USING INDEX PCTFREE 7", "  STORAGE ( ", "    INITIAL 1M",
                         "    NEXT 512", "    MAXEXTENTS UNLIMITED ", "  )"}));
}

TEST(ConstraintCatalogKeys, PrimaryKeyQueryTakesTheTypeCondition) {
  host::TConnection* db = test::DemoConnection();
  TKelQuery q(db);
  q.SetSQL(db->GetSQL("CreateConstraintFrn.PrimaryKey") + "  AND A1.CONSTRAINT_TYPE = 'P' ");
  q.ParamByName("P_OWN") = "APP";
  q.ParamByName("P_TABLE") = "EMP";
  q.Open();
  ASSERT_EQ(q.RecordCount(), 1);
  EXPECT_EQ(q.FieldByName("Constraint"), "PK_EMP");
  q.ParamByName("P_TABLE") = "SESSION_CART";
  q.Open();
  EXPECT_TRUE(q.Eof());

  q.LoadSQL("AlterConstraintFrn.Constraint");
  q.ParamByName("P_OWN") = "APP";
  q.ParamByName("P_TABLE") = "EMP";
  q.ParamByName("P_CONSTRAINT") = "CK_EMP_COMM";
  q.Open();
  ASSERT_EQ(q.RecordCount(), 1);
  EXPECT_EQ(q.FieldByName("STATUS"), "DISABLED");
  EXPECT_EQ(q.FieldByName("RELY"), "RELY");
}

TEST(AlterConstraint, RelyNeverGoesWithStatusOrValidation) {
  RegisterOpenRoutine("ALTERCONSTRAINT", &OpenModal<TAlterConstraintFrm>);
  test::TTestHost host(test::Json(
      "{'catalog': {'AlterConstraintFrn.Constraint': [{'CONSTRAINT_TYPE': 'C', 'STATUS': "
      "'ENABLED', 'VALIDATED': 'VALIDATED', 'RELY': ''}]}}"));
  TXLink link;
  link.SetVerb("Alter");
  link.AddParams("P_Schema", " APP ");
  link.AddParams("P_TableName", "T");
  link.AddParams("P_ConstraintName", "C");
  host.Open("ALTERCONSTRAINT", &link, [](QWidget* form) {
    auto* status = form->findChild<QGroupBox*>("StatusRG");
    auto* validation = form->findChild<QGroupBox*>("ValidationRG");
    auto* rely = form->findChild<QGroupBox*>("RelyRG");
    form->findChild<QRadioButton*>("ValidationNoValidateRdo")->click();
    form->findChild<QRadioButton*>("RelyNoRelyRdo")->click();
    EXPECT_EQ(TAlterConstraintFrm::ItemIndex(validation), 0);
    EXPECT_EQ(TAlterConstraintFrm::ItemIndex(rely), 2);
    form->findChild<QRadioButton*>("StatusDisableRdo")->click();
    EXPECT_EQ(TAlterConstraintFrm::ItemIndex(rely), 0);
    EXPECT_EQ(TAlterConstraintFrm::ItemIndex(status), 2);
    form->findChild<QPushButton*>("OkBtn")->click();
  });
  ASSERT_EQ(host.EventsOf("message").size(), 2);
  ASSERT_EQ(host.EventsOf("execute").size(), 1);
  EXPECT_EQ(host.EventsOf("execute")[0].value("text").toString(),
            "ALTER TABLE APP.T\r\nMODIFY CONSTRAINT C\r\nDISABLE\r\n");
}
