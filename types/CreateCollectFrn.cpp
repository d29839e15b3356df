#include "types/CreateCollectFrn.h"

#include <QSignalBlocker>

#include "plugin/KelQuery.h"
#include "types/TypePickers.h"
#include "ui_CreateCollectFrn.h"

namespace kel {

TCreateCollectFrm::TCreateCollectFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateCollectFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateCollectFrm"));
  SetIniSave(false);
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
  FillTypeCombo(ui->TypeCmb);
  {
    const QSignalBlocker block(ui->SchemaCmb);
    FillSchemaCombo(ui->SchemaCmb);
    ui->SchemaCmb->setCurrentIndex(-1);
  }
  TypeCmbChange();
  KindRdoClick();
}

void TCreateCollectFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Alter")) {
    try {
      FIsAlter = StrToBool(link->ParamByString(QStringLiteral("IsAlter")));
    } catch (const EKelError&) {
      FIsAlter = false;
    }
    FSchema = Trim(link->ParamByString(QStringLiteral("P_Schema")));
    FTypeName = Trim(link->ParamByString(QStringLiteral("P_ObjName")));
    SelectComboText(ui->CollectSchemaCmb, FSchema);
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    SelectComboText(ui->CollectSchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
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
  const TTypeRef element =
      ClassifyType(field("ELEM_TYPE_NAME"), field("ELEM_TYPE_MOD"), field("ELEM_TYPE_OWNER"));
  SelectItem(ui->TypeCmb, element.Type);
  if (IsObjectMarker(element.Type)) {
    SelectItem(ui->SchemaCmb, element.Schema);
    SchemaCmbChange();
    SelectItem(ui->ObjectCmb, element.Object);
  }
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
  const bool object = IsObjectMarker(type);
  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl})
    w->setEnabled(object);
}

void TCreateCollectFrm::SchemaCmbChange() {
  Guarded([this] { LoadObjectCombo(DBInfo(), ui->ObjectCmb, ui->SchemaCmb->currentText()); });
}

void TCreateCollectFrm::KindRdoClick() {
  // A nested table has no size limit.
  ui->LimitEd->setEnabled(ui->VarrayRdo->isChecked());
  ui->LimitLbl->setEnabled(ui->VarrayRdo->isChecked());
}

TTypeRef TCreateCollectFrm::Element() const {
  TTypeRef element{Trim(ui->TypeCmb->currentText()), {}, {}};
  if (IsObjectMarker(element.Type)) {
    element.Schema = Trim(ui->SchemaCmb->currentText());
    element.Object = Trim(ui->ObjectCmb->currentText());
  }
  return element;
}

bool TCreateCollectFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (ui->CollectSchemaCmb->currentIndex() < 0)
    return CheckFail(ui->CollectSchemaLbl, ui->CollectSchemaCmb);
  const TTypeRef element = Element();
  if (element.Type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (IsObjectMarker(element.Type)) {
    if (element.Schema.isEmpty()) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
    if (element.Object.isEmpty()) return CheckFail(ui->ObjectLbl, ui->ObjectCmb);
  }
  if (ui->VarrayRdo->isChecked() && ui->LimitEd->value() < 1)
    return CheckFail(ui->LimitLbl, ui->LimitEd);
  if (IsObjectMarker(element.Type) &&
      !ObjectTypesOf(DBInfo(), element.Schema).contains(element.Object)) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateTypeFrn.TypeGone"),
                               {element.Schema + u'.' + element.Object}, TMsgDlgType::Warning,
                               false);
    FocusControl(ui->ObjectCmb);
    return false;
  }
  return true;
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
