// The collection type dialog: creates or replaces a VARRAY or nested table type whose element is
// a built-in type, an object type or a REF to an object type.
#pragma once

#include "plugin/KelForms.h"
#include "types/TypePickers.h"
#include "types/TypeText.h"

namespace Ui {
class TCreateCollectFrm;
}

namespace kel {

class TCreateCollectFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateCollectFrm(QWidget* owner);
  ~TCreateCollectFrm() override;

  void InitLoad() override;
  void ReadParams(TXLink* link) override;

 public slots:
  void TypeCmbChange();
  void SchemaCmbChange();
  void KindRdoClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void LoadCollection();
  TTypeRef Element() const;
  void AddHead();
  void AddElement();

  Ui::TCreateCollectFrm* ui;
  TTypePicker FPicker;
  bool FIsAlter = false;
  QString FSchema;
  QString FTypeName;
};

}  // namespace kel
