// The database link dialog: creates a private or public database link, connecting as the current
// user or as a fixed account. A link's target cannot be changed in place, so changing a link
// drops and re-creates it. After a successful create the user may test the link.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateDBLinkFrm;
}

namespace kel {

class TCreateDBLinkFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateDBLinkFrm(QWidget* owner);
  ~TCreateDBLinkFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the owner ("PUBLIC" for a public link) and the link's name;
  // "ChangeOwner": the owner.
  void ReadParams(TXLink* link) override;

 public slots:
  void CustomUserRBClick();
  void CurrentUserRBClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;
  // Offers to test the new link.
  void AfterExecute() override;

 private:
  void LoadDBLink();
  void FillServices();
  void SetAccountEnabled(bool on);
  // The schema a private link lives in: the owner given by the host, else the connected user.
  QString PrivateOwner() const;
  bool LinkExists(const QString& name, const QString& owner);

  // One function per statement piece.
  void AddDropOriginal();
  void AddDropExisting();
  void AddCreate();
  void AddConnectTo();
  void AddUsing();

  Ui::TCreateDBLinkFrm* ui;
  TKelQuery DBLinkQry;
  TKelQuery DBLinkQry1;

  bool FIsAlter = false;
  QString FOwner;
  QString FDBLinkName;
  bool FLoadedPublic = false;
};

}  // namespace kel
