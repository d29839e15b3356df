#include "types/CreateAttributeFrn.h"

#include <QSignalBlocker>

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
  FillTypeCombo(ui->TypeCmb);
  const QSignalBlocker block(ui->SchemaCmb);
  FillSchemaCombo(ui->SchemaCmb);
  ui->SchemaCmb->setCurrentIndex(-1);
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
    SelectItem(ui->TypeCmb, a.Type);
    if (IsObjectMarker(a.Type)) {
      // The schema first, so that its object list is loaded before the object is chosen.
      SelectItem(ui->SchemaCmb, a.Schema);
      SchemaCmbChange();
      SelectItem(ui->ObjectCmb, a.Object);
    }
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
  const bool object = IsObjectMarker(type);
  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl})
    w->setEnabled(object);
}

void TCreateAttributeFrm::SchemaCmbChange() {
  Guarded([this] { LoadObjectCombo(DBInfo(), ui->ObjectCmb, ui->SchemaCmb->currentText()); });
}

bool TCreateAttributeFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  const QString type = Trim(ui->TypeCmb->currentText());
  if (type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (IsObjectMarker(type)) {
    if (Trim(ui->SchemaCmb->currentText()).isEmpty())
      return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
    if (Trim(ui->ObjectCmb->currentText()).isEmpty())
      return CheckFail(ui->ObjectLbl, ui->ObjectCmb);
  }
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
  const bool renamed = FEdited < 0 || NameIdentity(FList[FEdited].Name) != NameIdentity(name);
  if (renamed) {
    for (int i = 0; i < FList.size(); ++i) {
      if (i == FEdited || NameIdentity(FList[i].Name) != NameIdentity(name)) continue;
      if (Application())
        Application()->esMsgDBox(QStringLiteral("CreateMethodFrn.existMsg"),
                                 {QStringLiteral("Attribute Name"), name}, TMsgDlgType::Warning,
                                 false);
      FocusControl(ui->ObjNameEd);
      return false;
    }
  }
  if (IsObjectMarker(type)) {
    // The list was read when the schema was chosen; the type may have been dropped since.
    const QString schema = Trim(ui->SchemaCmb->currentText());
    const QString object = Trim(ui->ObjectCmb->currentText());
    if (!ObjectTypesOf(DBInfo(), schema).contains(object)) {
      if (Application())
        Application()->esMsgDBox(QStringLiteral("CreateTypeFrn.TypeGone"), {schema + u'.' + object},
                                 TMsgDlgType::Warning, false);
      FocusControl(ui->ObjectCmb);
      return false;
    }
  }
  return true;
}

TTypeAttribute TCreateAttributeFrm::Attribute() const {
  TTypeAttribute a;
  a.Name = Trim(ui->ObjNameEd->text());
  a.Type = Trim(ui->TypeCmb->currentText());
  if (IsObjectMarker(a.Type)) {
    a.Schema = Trim(ui->SchemaCmb->currentText());
    a.Object = Trim(ui->ObjectCmb->currentText());
  }
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
