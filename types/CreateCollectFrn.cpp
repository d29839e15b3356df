#include "types/CreateCollectFrn.h"

#include "plugin/KelQuery.h"
#include "types/TypePickers.h"
#include "ui_CreateCollectFrn.h"

namespace kel {

TCreateCollectFrm::TCreateCollectFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateCollectFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateCollectFrm"));
  SetIniSave(false);
  FPicker = {ui->TypeCmb, ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl};
  for (QSpinBox* box : {ui->LimitEd, ui->LengthEd, ui->PrecisionEd, ui->ScaleEd}) {
    box->setRange(0, 100000);
    box->setValue(0);
  }
  connect(ui->TypeCmb, &QComboBox::currentIndexChanged, this, &TCreateCollectFrm::TypeCmbChange);
  connect(ui->SchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateCollectFrm::SchemaCmbChange);
  connect(ui->VarrayRdo, &QAbstractButton::toggled, this, &TCreateCollectFrm::KindRdoClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateCollectFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateCollectFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateCollectFrm::CancelBtnClick);
}

TCreateCollectFrm::~TCreateCollectFrm() {
  delete ui;
}

void TCreateCollectFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  FillSchemaCombo(ui->CollectSchemaCmb);
  UpperCaseItems(ui->CollectSchemaCmb);
  FillTypePicker(this, FPicker);
  TypeCmbChange();
  KindRdoClick();
}

void TCreateCollectFrm::ReadParams(TXLink* link) {
  ReadTypeLink(link, ui->CollectSchemaCmb, &FIsAlter, &FSchema, &FTypeName);
}

void TCreateCollectFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadCollection();
  if (ui->ObjNameEd->isEnabled()) ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateCollectFrm::LoadCollection() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateCollectFrn.Alter001"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
  q.Open();
  if (q.Eof()) {
    const QString templ = Application()
                              ? Application()->esGetMSG(QStringLiteral("CreateCollectFrn.Gone"))
                              : QStringLiteral("CreateCollectFrn.Gone");
    throw EKelError(FormatMsg(templ, {FSchema + u'.' + FTypeName}));
  }
  const auto field = [&q](const char* column) {
    return Trim(q.FieldByName(QString::fromLatin1(column)));
  };
  if (Application())
    setWindowTitle(
        FormatMsg(Application()->esGetMSG(QStringLiteral("CreateCollectFrm.Alter")), {FTypeName}));
  ui->ObjNameEd->setText(LoadedName(FTypeName));
  SelectComboText(ui->CollectSchemaCmb, FSchema);
  if (field("COLL_TYPE") == u"TABLE")
    ui->TableRdo->setChecked(true);
  else
    ui->VarrayRdo->setChecked(true);
  ui->LimitEd->setValue(field("Limit").toInt());
  ShowTypeRef(
      this, FPicker,
      ClassifyType(field("ELEM_TYPE_NAME"), field("ELEM_TYPE_MOD"), field("ELEM_TYPE_OWNER")));
  // Boxes the element type does not use stay at 0.
  if (ui->LengthEd->isEnabled()) ui->LengthEd->setValue(field("LENGTH").toInt());
  if (ui->PrecisionEd->isEnabled()) ui->PrecisionEd->setValue(field("PRECISION").toInt());
  if (ui->ScaleEd->isEnabled()) ui->ScaleEd->setValue(field("SCALE").toInt());
  ui->ObjNameEd->setEnabled(false);
  ui->CollectSchemaCmb->setEnabled(false);
}

void TCreateCollectFrm::TypeCmbChange() {
  const QString type = ui->TypeCmb->currentText();
  const bool length = IsLengthType(type);
  const bool number = type == u"NUMBER";
  const auto use = [](QSpinBox* box, QLabel* label, bool on) {
    if (!on) box->setValue(0);
    box->setEnabled(on);
    label->setEnabled(on);
  };
  use(ui->LengthEd, ui->LengthLbl, length);
  use(ui->PrecisionEd, ui->PrecisionLbl, number);
  use(ui->ScaleEd, ui->ScaleLbl, number);
  EnableObjectPart(FPicker, IsObjectMarker(type));
}

void TCreateCollectFrm::SchemaCmbChange() {
  LoadPickerObjects(this, FPicker);
}

void TCreateCollectFrm::KindRdoClick() {
  // A nested table has no size limit.
  ui->LimitEd->setEnabled(ui->VarrayRdo->isChecked());
  ui->LimitLbl->setEnabled(ui->VarrayRdo->isChecked());
}

TTypeRef TCreateCollectFrm::Element() const {
  return PickedType(FPicker);
}

bool TCreateCollectFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (ui->CollectSchemaCmb->currentIndex() < 0)
    return CheckFail(ui->CollectSchemaLbl, ui->CollectSchemaCmb);
  const TTypeRef element = Element();
  if (element.Type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (!CheckObjectPart(this, FPicker, element.Type)) return false;
  if (ui->VarrayRdo->isChecked() && ui->LimitEd->value() < 1)
    return CheckFail(ui->LimitLbl, ui->LimitEd);
  return !IsObjectMarker(element.Type) || CheckObjectTypeExists(DBInfo(), element, ui->ObjectCmb);
}

void TCreateCollectFrm::AddHead() {
  SqlMemo().Add(CollectionHeadLine(ui->CollectSchemaCmb->currentText(), Trim(ui->ObjNameEd->text()),
                                   ui->VarrayRdo->isChecked(), ui->LimitEd->value()));
}

void TCreateCollectFrm::AddElement() {
  SqlMemo().Add(CollectionElementLine(Element(), ui->LengthEd->value(), ui->PrecisionEd->value(),
                                      ui->ScaleEd->value()));
}

void TCreateCollectFrm::BuildSql() {
  SqlMemo().Clear();
  AddHead();
  AddElement();
  RefreshOwnedPreview();
}

}  // namespace kel
