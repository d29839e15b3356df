// The parameter dialog: one parameter of a method (name, mode, built-in type or object type).
// Opened by the method dialog, which takes the row back.
#pragma once

#include "plugin/KelForms.h"
#include "types/TypePickers.h"
#include "types/TypeText.h"

namespace Ui {
class TAddParameterFrm;
}

namespace kel {

class TAddParameterFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TAddParameterFrm(QWidget* owner);
  ~TAddParameterFrm() override;

  void InitLoad() override;
  // The parameters of the method (for the duplicate test) and, in edit mode, the index of the
  // one being edited (-1 to add).
  void SetList(const QList<TTypeParam>& list, int edited);
  TTypeParam Param() const;

 public slots:
  void TypeCmbChange();
  void SchemaCmbChange();
  void OkBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool KelDllDBDlgFrmClose() override;
  bool Validate() override;

 private:
  Ui::TAddParameterFrm* ui;
  TTypePicker FPicker;
  QList<TTypeParam> FList;
  int FEdited = -1;
};

}  // namespace kel
