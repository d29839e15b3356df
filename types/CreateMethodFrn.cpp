#include "types/CreateMethodFrn.h"

#include "types/AddParameterFrn.h"
#include "types/TypePickers.h"
#include "ui_CreateMethodFrn.h"

namespace kel {

TCreateMethodFrm::TCreateMethodFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateMethodFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateMethodFrm"));
  SetIniSave(false);
  FPicker = {ui->ReturnTypeCmb, ui->ReturnSchemaCmb, ui->ReturnSchemaLbl, ui->ReturnObjectCmb,
             ui->ReturnObjectLbl};
  for (const TKelTreeColumn& c :
       {ReadOnlyColumn("ParamTListName", "Name", 120),
        ReadOnlyColumn("ParamTListType", "Type", 110), ReadOnlyColumn("ParamTListMode", "Mode", 60),
        ReadOnlyColumn("ParamTListSchema", "Schema", 80),
        ReadOnlyColumn("ParamTListObject", "Object", 110)})
    ui->ParamTList->AddColumn(c);
  ui->TypeCmb->addItems(MethodKinds());
  ui->TypeCmb->setCurrentIndex(0);
  connect(ui->TypeCmb, &QComboBox::currentIndexChanged, this, &TCreateMethodFrm::TypeCmbChange);
  connect(ui->ReturnTypeCmb, &QComboBox::currentIndexChanged, this,
          &TCreateMethodFrm::ReturnTypeCmbChange);
  connect(ui->ReturnSchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateMethodFrm::ReturnSchemaCmbChange);
  connect(ui->AddBtn, &QAbstractButton::clicked, this, &TCreateMethodFrm::AddBtnClick);
  connect(ui->EditBtn, &QAbstractButton::clicked, this, &TCreateMethodFrm::EditBtnClick);
  connect(ui->DelBtn, &QAbstractButton::clicked, this, &TCreateMethodFrm::DelBtnClick);
  connect(ui->ParamTList, &TKelTreeList::RowDoubleClicked, this, &TCreateMethodFrm::EditBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateMethodFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateMethodFrm::CancelBtnClick);
}

TCreateMethodFrm::~TCreateMethodFrm() {
  delete ui;
}

void TCreateMethodFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  FillTypePicker(this, FPicker);
  TypeCmbChange();
}

void TCreateMethodFrm::SetList(const QList<TTypeMethod>& list, int edited) {
  FList = list;
  FEdited = edited >= 0 && edited < list.size() ? edited : -1;
}

void TCreateMethodFrm::KelDllDBDlgFrmShow() {
  const bool edit = FEdited >= 0;
  if (Application())
    setWindowTitle(Application()->esGetMSG(edit ? QStringLiteral("CreateMethodFrm.Alter")
                                                : QStringLiteral("CreateMethodFrm.Add")));
  if (edit) {
    const TTypeMethod& m = FList[FEdited];
    ui->ObjNameEd->setText(m.Name);
    SelectItem(ui->TypeCmb, m.Kind);
    ShowTypeRef(this, FPicker, {m.ReturnType, m.ReturnSchema, m.ReturnObject});
    ui->WndsChk->setChecked(m.Wnds);
    ui->WnpsChk->setChecked(m.Wnps);
    ui->RndsChk->setChecked(m.Rnds);
    ui->RnpsChk->setChecked(m.Rnps);
    FParams = m.Params;
    ShowParams();
  }
  ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

bool TCreateMethodFrm::IsFunction() const {
  return ui->TypeCmb->currentText() != u"PROCEDURE";
}

void TCreateMethodFrm::TypeCmbChange() {
  // A procedure returns nothing: its return type is not asked for.
  const bool function = IsFunction();
  ui->ReturnTypeCmb->setEnabled(function);
  ui->ReturnTypeLbl->setEnabled(function);
  ReturnTypeCmbChange();
}

void TCreateMethodFrm::ReturnTypeCmbChange() {
  EnableObjectPart(FPicker, IsFunction() && IsObjectMarker(ui->ReturnTypeCmb->currentText()));
}

void TCreateMethodFrm::ReturnSchemaCmbChange() {
  LoadPickerObjects(this, FPicker);
}

void TCreateMethodFrm::ShowParams() {
  QList<QStringList> rows;
  for (const TTypeParam& p : FParams)
    rows << QStringList{p.Name, p.Type, p.Mode, p.Schema, p.Object};
  const int focused = ui->ParamTList->FocusedRow();
  ui->ParamTList->ClearRows();
  ui->ParamTList->AddRows(rows);
  if (!rows.isEmpty()) ui->ParamTList->SetFocusedRow(std::clamp(focused, 0, int(rows.size()) - 1));
}

bool TCreateMethodFrm::EditParam(int row) {
  TAddParameterFrm form(this);
  form.SetParentControl(this);
  form.SetList(FParams, row);
  if (form.ShowModal() != mrOk) return false;
  if (row >= 0)
    FParams[row] = form.Param();
  else
    FParams << form.Param();
  ShowParams();
  if (row < 0) ui->ParamTList->SetFocusedRow(int(FParams.size()) - 1);
  return true;
}

void TCreateMethodFrm::AddBtnClick() {
  Guarded([this] { EditParam(-1); });
}

void TCreateMethodFrm::EditBtnClick() {
  const int row = ui->ParamTList->FocusedRow();
  if (row < 0 || row >= FParams.size()) return;
  Guarded([this, row] { EditParam(row); });
}

void TCreateMethodFrm::DelBtnClick() {
  const int row = ui->ParamTList->FocusedRow();
  if (row < 0 || row >= FParams.size()) return;
  FParams.removeAt(row);
  ShowParams();
}

bool TCreateMethodFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (Trim(ui->TypeCmb->currentText()).isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (IsFunction()) {
    // A function without a return type would give a declaration Oracle refuses.
    const QString type = Trim(ui->ReturnTypeCmb->currentText());
    if (type.isEmpty()) return CheckFail(ui->ReturnTypeGrp->title(), ui->ReturnTypeCmb);
    if (!CheckObjectPart(this, FPicker, type)) return false;
  }
  if (NameTaken(FList, FEdited, name))
    return RefuseDuplicate(QStringLiteral("Method Name"), name, ui->ObjNameEd);
  return true;
}

TTypeMethod TCreateMethodFrm::Method() const {
  TTypeMethod m;
  m.Name = Trim(ui->ObjNameEd->text());
  m.Kind = Trim(ui->TypeCmb->currentText());
  if (IsFunction()) {
    const TTypeRef ref = PickedType(FPicker);
    m.ReturnType = ref.Type;
    m.ReturnSchema = ref.Schema;
    m.ReturnObject = ref.Object;
  }
  m.Wnds = ui->WndsChk->isChecked();
  m.Wnps = ui->WnpsChk->isChecked();
  m.Rnds = ui->RndsChk->isChecked();
  m.Rnps = ui->RnpsChk->isChecked();
  m.Params = FParams;
  return m;
}

void TCreateMethodFrm::OkBtnClick() {
  Guarded([this] {
    if (Validate()) SetModalResult(mrOk);
  });
}

bool TCreateMethodFrm::KelDllDBDlgFrmClose() {
  FreeTracker();
  return true;
}

}  // namespace kel
