// The role dialog: creates a role or changes how it is authenticated, and grants or revokes its
// roles and privileges through the grant editor.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateRoleFrm;
}

namespace kel {

class TGrantEditor;

class TCreateRoleFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateRoleFrm(QWidget* owner);
  ~TCreateRoleFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the role's name and the page shown first.
  void ReadParams(TXLink* link) override;

  TGrantEditor* GrantEditor() const { return FGrants; }

 public slots:
  void AuthRdoClick();
  void MainPageChange(int index);

 protected:
  void KelDllDBDlgFrmShow() override;
  void showEvent(QShowEvent* event) override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void LoadRole();
  QString RoleName() const;
  bool PasswordRequired() const;

  // One function per statement.
  void AddCreateRole();
  void AddAlterRole();

  Ui::TCreateRoleFrm* ui;
  TGrantEditor* FGrants;

  TKelQuery AlterQry01;
  bool FIsAlter = false;
  int FActiveTab = 0;
  QString FRoleName;
  QString FPasswordRequired;  // as loaded: YES, NO, EXTERNAL or GLOBAL
};

}  // namespace kel
