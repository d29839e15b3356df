// The alter-constraint dialog: changes the status, the validation or the rely flag of one
// existing constraint with ALTER TABLE ... MODIFY CONSTRAINT.
#pragma once

#include "plugin/KelForms.h"

class QGroupBox;

namespace Ui {
class TAlterConstraintFrm;
}

namespace kel {

class TAlterConstraintFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TAlterConstraintFrm(QWidget* owner);
  ~TAlterConstraintFrm() override;

  // "Alter": schema, table and name of the constraint.
  void ReadParams(TXLink* link) override;

  // The chosen position (0 = NoChange) of a radio group.
  static int ItemIndex(const QGroupBox* group);
  static void SetItemIndex(QGroupBox* group, int index);

 public slots:
  void OkBtnClick();
  // Shared by the three groups: rely is never changed together with status or validation.
  void StatusRGClick(QGroupBox* group);

 protected:
  void KelDllDBDlgFrmShow() override;
  void BuildSql() override;

 private:
  Ui::TAlterConstraintFrm* ui;
  QString FSchema;
  QString FTableName;
  QString FConstraintName;
};

}  // namespace kel
