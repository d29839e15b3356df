// The method dialog: one method declaration of an object type (name, kind, return type,
// parameters edited in the parameter dialog, pragma flags). Its caller takes the row back.
#pragma once

#include "plugin/KelForms.h"
#include "types/TypePickers.h"
#include "types/TypeText.h"

namespace Ui {
class TCreateMethodFrm;
}

namespace kel {

class TCreateMethodFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateMethodFrm(QWidget* owner);
  ~TCreateMethodFrm() override;

  void InitLoad() override;
  // The methods of the type (for the duplicate test) and, in edit mode, the index of the one
  // being edited (-1 to add).
  void SetList(const QList<TTypeMethod>& list, int edited);
  // The method as the dialog returns it, with its parameters.
  TTypeMethod Method() const;

 public slots:
  void TypeCmbChange();
  void ReturnTypeCmbChange();
  void ReturnSchemaCmbChange();
  void AddBtnClick();
  void EditBtnClick();
  void DelBtnClick();
  void OkBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool KelDllDBDlgFrmClose() override;
  bool Validate() override;

 private:
  // Opens the parameter dialog on `row` (-1 adds); true when it came back with OK.
  bool EditParam(int row);
  void ShowParams();
  bool IsFunction() const;

  Ui::TCreateMethodFrm* ui;
  TTypePicker FPicker;
  QList<TTypeMethod> FList;
  int FEdited = -1;
  QList<TTypeParam> FParams;
};

}  // namespace kel
