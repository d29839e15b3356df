// The attribute dialog: one attribute of an object type (name, built-in type with its size, or
// an object type by value or by REF). It writes no statement; its caller takes the row.
#pragma once

#include "plugin/KelForms.h"
#include "types/TypePickers.h"
#include "types/TypeText.h"

namespace Ui {
class TCreateAttributeFrm;
}

namespace kel {

class TCreateAttributeFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateAttributeFrm(QWidget* owner);
  ~TCreateAttributeFrm() override;

  void InitLoad() override;
  // The attributes of the list being edited (for the duplicate test) and, in edit mode, the
  // index of the row being edited (-1 to add).
  void SetList(const QList<TTypeAttribute>& list, int edited);
  // The row as the dialog returns it: trimmed texts, sizes normalised for the chosen type.
  TTypeAttribute Attribute() const;

 public slots:
  void TypeCmbChange();
  void SchemaCmbChange();
  void OkBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool KelDllDBDlgFrmClose() override;
  bool Validate() override;

 private:
  Ui::TCreateAttributeFrm* ui;
  TTypePicker FPicker;
  QList<TTypeAttribute> FList;
  int FEdited = -1;
};

}  // namespace kel
