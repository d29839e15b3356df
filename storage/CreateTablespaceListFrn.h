// The data-file list: the database's data files, one of which is picked. Reached through the
// module's entry under "SELECTDATAFILE"; the chosen path goes back in the caller's link as
// "filename".
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateTablespaceListFrm;
}

namespace kel {

class TCreateTablespaceListFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateTablespaceListFrm(QWidget* owner);
  ~TCreateTablespaceListFrm() override;

  void InitLoad() override;
  // Any verb: the link is kept to return the chosen file in it.
  void ReadParams(TXLink* link) override { FLink = link; }

 public slots:
  void OkBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;

 private:
  Ui::TCreateTablespaceListFrm* ui;
  TKelQuery DataFilesQry;
  TXLink* FLink = nullptr;
};

}  // namespace kel
