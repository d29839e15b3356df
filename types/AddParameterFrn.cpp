#include "types/AddParameterFrn.h"

#include "types/TypePickers.h"
#include "ui_AddParameterFrn.h"

namespace kel {

TAddParameterFrm::TAddParameterFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TAddParameterFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("AddParameterFrm"));
  SetIniSave(false);
  FPicker = {ui->TypeCmb, ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl};
  ui->ModeCmb->addItems({QStringLiteral("IN"), QStringLiteral("OUT"), QStringLiteral("IN OUT")});
  ui->ModeCmb->setCurrentIndex(0);
  connect(ui->TypeCmb, &QComboBox::currentIndexChanged, this, &TAddParameterFrm::TypeCmbChange);
  connect(ui->SchemaCmb, &QComboBox::currentIndexChanged, this, &TAddParameterFrm::SchemaCmbChange);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TAddParameterFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TAddParameterFrm::CancelBtnClick);
}

TAddParameterFrm::~TAddParameterFrm() {
  delete ui;
}

void TAddParameterFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  FillTypePicker(this, FPicker);
  TypeCmbChange();
}

void TAddParameterFrm::SetList(const QList<TTypeParam>& list, int edited) {
  FList = list;
  FEdited = edited >= 0 && edited < list.size() ? edited : -1;
}

void TAddParameterFrm::KelDllDBDlgFrmShow() {
  const bool edit = FEdited >= 0;
  if (Application())
    setWindowTitle(Application()->esGetMSG(edit ? QStringLiteral("AddParameterFrm.Edit")
                                                : QStringLiteral("AddParameterFrm.Add")));
  if (edit) {
    const TTypeParam& p = FList[FEdited];
    ui->ObjNameEd->setText(p.Name);
    SelectItem(ui->ModeCmb, p.Mode);
    ShowTypeRef(this, FPicker, {p.Type, p.Schema, p.Object});
  }
  ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

void TAddParameterFrm::TypeCmbChange() {
  EnableObjectPart(FPicker, IsObjectMarker(ui->TypeCmb->currentText()));
}

void TAddParameterFrm::SchemaCmbChange() {
  LoadPickerObjects(this, FPicker);
}

bool TAddParameterFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (Trim(ui->ModeCmb->currentText()).isEmpty()) return CheckFail(ui->ModeLbl, ui->ModeCmb);
  const QString type = Trim(ui->TypeCmb->currentText());
  if (type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (!CheckObjectPart(this, FPicker, type)) return false;
  if (NameTaken(FList, FEdited, name))
    return RefuseDuplicate(QStringLiteral("Parameter Name"), name, ui->ObjNameEd);
  return true;
}

TTypeParam TAddParameterFrm::Param() const {
  TTypeParam p;
  p.Name = Trim(ui->ObjNameEd->text());
  const TTypeRef ref = PickedType(FPicker);
  p.Type = ref.Type;
  p.Mode = Trim(ui->ModeCmb->currentText());
  p.Schema = ref.Schema;
  p.Object = ref.Object;
  return p;
}

void TAddParameterFrm::OkBtnClick() {
  Guarded([this] {
    if (Validate()) SetModalResult(mrOk);
  });
}

bool TAddParameterFrm::KelDllDBDlgFrmClose() {
  FreeTracker();
  return true;
}

}  // namespace kel
