// The user, role and profile dialogs on the demo database: the grant editor's pages filled once,
// changed rows painted, browsing not counted as an edit, the Tab key's way through the pages,
// and the alter flag of the host's link.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTabWidget>

#include "host/core/RecordingHost.h"
#include "plugin/KelTreeList.h"
#include "security/CreateProfileFrn.h"
#include "security/CreateRoleFrn.h"
#include "security/CreateUserFrn.h"
#include "security/GrantEditor.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

class GrantEditorDialog : public ::testing::Test {
 protected:
  void SetUp() override {
    Recorder = std::make_unique<host::TRecordingHost>(test::DemoConnection(), QJsonObject());
    SetApplication(Recorder.get());
  }
  void TearDown() override {
    SetApplication(nullptr);
    Recorder.reset();
  }
  template <class TForm>
  std::unique_ptr<TForm> Open(const char* param, const char* name, const char* isAlter = "True") {
    auto form = std::make_unique<TForm>(nullptr);
    form->SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("Alter");
    link.AddParams("IsAlter", isAlter);
    link.AddParams(param, name);
    form->ReadParams(&link);
    form->show();
    return form;
  }
  static void ShowPage(QWidget* form, int index) {
    form->findChild<QTabWidget*>("MainPage")->setCurrentIndex(index);
  }
  static bool Painted(TKelTreeList* list, int row, int col) {
    return list->topLevelItem(row)->background(col).style() != Qt::NoBrush;
  }
  int Queries(const char* key) const {
    int n = 0;
    for (const QJsonValue& e : Recorder->Events())
      if (e["event"] == "query" && e["key"] == key) ++n;
    return n;
  }
  std::unique_ptr<host::TRecordingHost> Recorder;
};

// The controls the Tab key visits from `from` on, up to and including `to`.
QStringList TabChain(QWidget* from, const QWidget* to) {
  QStringList names;
  QWidget* w = from;
  do {
    if (w->focusPolicy() & Qt::TabFocus) names << w->objectName();
    w = w->nextInFocusChain();
  } while (w != to && w != from);
  names << to->objectName();
  return names;
}

}  // namespace

TEST_F(GrantEditorDialog, ChangedRowsAndAdminCellsArePainted) {
  auto form = Open<TCreateUserFrm>("P_UserName", "APP");
  ShowPage(form.get(), 2);
  TGrantEditor* g = form->GrantEditor();
  TKelTreeList* granted = g->GrantedRolesTreeList();
  TKelTreeList* available = g->RolesTreeList();
  for (int r = 0; r < granted->RowCount(); ++r) EXPECT_FALSE(Painted(granted, r, 0)) << r;
  // CONNECT (row 2) out, EXECUTE_CATALOG_ROLE (row 0 of the available list) in.
  granted->SelectRows({2});
  g->RoleUpBtnClick();
  available->SelectRows({1});
  g->RoleDownBtnClick();
  ASSERT_EQ(available->Cell(0, 0), "CONNECT");
  EXPECT_TRUE(Painted(available, 0, 0));
  EXPECT_FALSE(Painted(available, 1, 0));
  // Sorted in: APP_READ, APP_WRITE, DBA, EXECUTE_CATALOG_ROLE, RESOURCE.
  const int added = 3;
  ASSERT_EQ(granted->Cell(added, 0), "EXECUTE_CATALOG_ROLE");
  EXPECT_TRUE(Painted(granted, added, 0));
  EXPECT_TRUE(Painted(granted, added, 3));
  // A loaded role whose admin option changes: only that cell, and only while it differs.
  ASSERT_TRUE(granted->EditCell(0, 1, "False"));
  EXPECT_TRUE(Painted(granted, 0, 1));
  EXPECT_FALSE(Painted(granted, 0, 0));
  ASSERT_TRUE(granted->EditCell(0, 1, "True"));
  EXPECT_FALSE(Painted(granted, 0, 1));
  EXPECT_TRUE(form->Tracker()->Changed());
}

TEST_F(GrantEditorDialog, PagesFillOnceAndBrowsingIsNoEdit) {
  auto form = Open<TCreateRoleFrm>("P_ObjName", "APP_WRITE");
  for (int page : {1, 2, 3, 4, 0, 1, 3}) ShowPage(form.get(), page);
  EXPECT_EQ(Queries("CreateRoleFrn.Alter02"), 1);
  EXPECT_EQ(Queries("CreateRoleFrn.002"), 1);
  EXPECT_EQ(Queries("SchUserNrn.Object Priv"), 1);
  EXPECT_EQ(Queries("CreateRoleFrn.004"), 1);
  TGrantEditor* g = form->GrantEditor();
  g->SearchBtnClick();
  g->ObjNameTv()->setCurrentItem(g->ObjNameTv()->topLevelItem(0)->child(0));
  EXPECT_GT(g->ObjGrantTv()->RowCount(), 0);
  EXPECT_FALSE(form->Tracker()->Changed());
  // A new object grant is painted; a loaded one only in its ticked "Revoke?" cell.
  g->ObjGrantTv()->SelectRows({0});
  g->ObjDownBtnClick();
  TKelTreeList* objects = g->ObjTreeList();
  const int last = objects->RowCount() - 1;
  EXPECT_TRUE(Painted(objects, last, 1));
  ASSERT_TRUE(objects->EditCell(0, 0, "True"));
  EXPECT_TRUE(Painted(objects, 0, 0));
  EXPECT_FALSE(Painted(objects, 0, 1));
  EXPECT_TRUE(form->Tracker()->Changed());
}

TEST_F(GrantEditorDialog, CreateModePaintsNothing) {
  auto form = std::make_unique<TCreateRoleFrm>(nullptr);
  form->SetParentControl(nullptr);
  form->show();
  ShowPage(form.get(), 1);
  TGrantEditor* g = form->GrantEditor();
  g->RolesTreeList()->SelectRows({0});
  g->RoleDownBtnClick();
  ASSERT_EQ(g->GrantedRolesTreeList()->RowCount(), 1);
  EXPECT_FALSE(Painted(g->GrantedRolesTreeList(), 0, 0));
  EXPECT_EQ(Queries("CreateRoleFrn.Alter02"), 0);
}

TEST_F(GrantEditorDialog, TabRunsThroughTheGrantPagesBeforeTheStatementAndButtons) {
  TCreateRoleFrm form(nullptr);
  const QStringList expected = {"VerifyPasswordEd",
                                "RolesTreeList",
                                "RoleDownBtn",
                                "RoleDownAllBtn",
                                "RoleUpBtn",
                                "RoleUpAllBtn",
                                "GrantedRolesTreeList",
                                "PrivilegeTreeList",
                                "SystemDownBtn",
                                "SystemDownAllBtn",
                                "SystemUpBtn",
                                "SystemUpAllBtn",
                                "GrantedPrivilegeTreeList",
                                "ObjTypeCmb",
                                "SchemaCmb",
                                "SearchBtn",
                                "ObjNameTv",
                                "ObjGrantTv",
                                "ObjDownBtn",
                                "ObjDownAllBtn",
                                "ObjUpBtn",
                                "ObjUpAllBtn",
                                "ObjTreeList",
                                "ResourceGroupTreeList",
                                "ResrcDownBtn",
                                "ResrcDownAllBtn",
                                "ResrcUpBtn",
                                "ResrcUpAllBtn",
                                "GrantedResourceGroupTreeList",
                                "SqlText",
                                "ViewSqlBtn",
                                "OkBtn",
                                "CancelBtn"};
  EXPECT_EQ(
      TabChain(form.findChild<QWidget*>("VerifyPasswordEd"), form.findChild<QWidget*>("CancelBtn")),
      expected);
}

TEST_F(GrantEditorDialog, MalformedAlterFlagOpensTheCreateDialog) {
  auto createMode = [this](QWidget* form, const char* nameEdit, const char* title,
                           const char* loadKey) {
    EXPECT_EQ(form->windowTitle(), title);
    auto* name = form->findChild<QLineEdit*>(nameEdit);
    ASSERT_NE(name, nullptr) << nameEdit;
    EXPECT_TRUE(name->isEnabled()) << nameEdit;
    EXPECT_TRUE(name->text().isEmpty()) << nameEdit;
    EXPECT_EQ(Queries(loadKey), 0) << loadKey;
  };
  createMode(Open<TCreateUserFrm>("P_UserName", "APP", "maybe").get(), "UserNameEd", "Create User",
             "CreateUserFrn.Alt.001");
  createMode(Open<TCreateRoleFrm>("P_ObjName", "APP_WRITE", "maybe").get(), "RoleNameEd",
             "Create Role", "CreateRoleFrn.Alter01");
  createMode(Open<TCreateProfileFrm>("P_ObjName", "APP_PROFILE", "maybe").get(), "ProfileEd",
             "Create Profile", "CreateProfileFrn.Exists");
}
