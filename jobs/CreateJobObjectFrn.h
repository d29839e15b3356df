// The job object picker: chooses the stored procedure a job runs, a stand-alone procedure or a
// procedure of a package. It only chooses; the job dialog reads the choice from its combo boxes.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateJobObjectFrm;
}

namespace kel {

class TCreateJobObjectFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  enum TObjectType { otPackage, otProcedure };

  explicit TCreateJobObjectFrm(QWidget* owner);
  ~TCreateJobObjectFrm() override;

  void InitLoad() override;

  // The choice, for the caller: each text empty when its combo has no selected item.
  QString SchemaText() const;
  int TypeIndex() const;
  QString TypeText() const;
  QString ObjectText() const;
  QString SubObjectText() const;

 public slots:
  void TypeCmbChange();
  void ObjectNameCmbChange();
  void OkBtnClick();

 private:
  Ui::TCreateJobObjectFrm* ui;
  TKelQuery DataQry;
};

}  // namespace kel
