#include "types/CreateAttributeFrn.h"

#include "types/TypePickers.h"
#include "ui_CreateAttributeFrn.h"

namespace kel {

namespace {
// A spin box's text as a size: empty when the box is not used by the type.
int SizeValue(const QString& text, bool* ok) {
  return Trim(text).toInt(ok);
}
}  // namespace

TCreateAttributeFrm::TCreateAttributeFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateAttributeFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateAttributeFrm"));
  SetIniSave(false);
  FPicker = {ui->TypeCmb, ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl};
  for (TKelSpinEdit* box : {ui->LengthEd, ui->PrecisionEd, ui->ScaleEd})
    box->SetText(QStringLiteral("0"));
  connect(ui->TypeCmb, &QComboBox::currentIndexChanged, this, &TCreateAttributeFrm::TypeCmbChange);
  connect(ui->SchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateAttributeFrm::SchemaCmbChange);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateAttributeFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateAttributeFrm::CancelBtnClick);
}

TCreateAttributeFrm::~TCreateAttributeFrm() {
  delete ui;
}

void TCreateAttributeFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  FillTypePicker(this, FPicker);
  TypeCmbChange();
}

void TCreateAttributeFrm::SetList(const QList<TTypeAttribute>& list, int edited) {
  FList = list;
  FEdited = edited >= 0 && edited < list.size() ? edited : -1;
}

void TCreateAttributeFrm::KelDllDBDlgFrmShow() {
  const bool edit = FEdited >= 0;
  if (Application())
    setWindowTitle(Application()->esGetMSG(edit ? QStringLiteral("CreateAttributeFrm.Alter")
                                                : QStringLiteral("CreateAttributeFrm.Add")));
  if (edit) {
    const TTypeAttribute& a = FList[FEdited];
    ui->ObjNameEd->setText(a.Name);
    ShowTypeRef(this, FPicker, {a.Type, a.Schema, a.Object});
    ui->LengthEd->SetText(a.Length.isEmpty() ? QStringLiteral("0") : a.Length);
    ui->PrecisionEd->SetText(a.Precision.isEmpty() ? QStringLiteral("0") : a.Precision);
    ui->ScaleEd->SetText(a.Scale.isEmpty() ? QStringLiteral("0") : a.Scale);
  }
  ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateAttributeFrm::TypeCmbChange() {
  const QString type = ui->TypeCmb->currentText();
  const bool length = IsLengthType(type);
  const bool number = type == u"NUMBER";
  const auto use = [](TKelSpinEdit* box, QLabel* label, bool on) {
    if (!on) box->SetText(QStringLiteral("0"));
    box->setEnabled(on);
    label->setEnabled(on);
  };
  use(ui->LengthEd, ui->LengthLbl, length);
  use(ui->PrecisionEd, ui->PrecisionLbl, number);
  use(ui->ScaleEd, ui->ScaleLbl, number);
  EnableObjectPart(FPicker, IsObjectMarker(type));
}

void TCreateAttributeFrm::SchemaCmbChange() {
  LoadPickerObjects(this, FPicker);
}

bool TCreateAttributeFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  const QString type = Trim(ui->TypeCmb->currentText());
  if (type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (!CheckObjectPart(this, FPicker, type)) return false;
  for (TKelSpinEdit* box : {ui->LengthEd, ui->PrecisionEd, ui->ScaleEd}) {
    bool ok = false;
    SizeValue(box->Text(), &ok);
    // A size beyond any Oracle limit is no number the dialog can keep.
    if (box->isEnabled() && !Trim(box->Text()).isEmpty() && !ok) {
      QLabel* label = box == ui->LengthEd      ? ui->LengthLbl
                      : box == ui->PrecisionEd ? ui->PrecisionLbl
                                               : ui->ScaleLbl;
      return CheckFail(label, box);
    }
  }
  if (NameTaken(FList, FEdited, name))
    return RefuseDuplicate(QStringLiteral("Attribute Name"), name, ui->ObjNameEd);
  return !IsObjectMarker(type) ||
         CheckObjectTypeExists(DBInfo(), PickedType(FPicker), ui->ObjectCmb);
}

TTypeAttribute TCreateAttributeFrm::Attribute() const {
  TTypeAttribute a;
  a.Name = Trim(ui->ObjNameEd->text());
  const TTypeRef ref = PickedType(FPicker);
  a.Type = ref.Type;
  a.Schema = ref.Schema;
  a.Object = ref.Object;
  if (ui->LengthEd->isEnabled()) {
    const QString length = Trim(ui->LengthEd->Text());
    a.Length = length.isEmpty() || length.toLongLong() < 1 ? QStringLiteral("255") : length;
  }
  if (ui->PrecisionEd->isEnabled()) {
    const QString precision = Trim(ui->PrecisionEd->Text());
    a.Precision = precision.toLongLong() < 1 ? QString() : precision;
    // A scale without a precision cannot be written: NUMBER stays bare.
    const QString scale = Trim(ui->ScaleEd->Text());
    a.Scale = a.Precision.isEmpty() || scale.toLongLong() < 1 ? QString() : scale;
  }
  return a;
}

void TCreateAttributeFrm::OkBtnClick() {
  Guarded([this] {
    if (Validate()) SetModalResult(mrOk);
  });
}

bool TCreateAttributeFrm::KelDllDBDlgFrmClose() {
  // A row editor keeps nothing of its own: closing it never asks.
  FreeTracker();
  return true;
}

}  // namespace kel
