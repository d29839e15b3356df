#include "types/AddParameterFrn.h"

#include <QSignalBlocker>

#include "types/TypePickers.h"
#include "ui_AddParameterFrn.h"

namespace kel {

TAddParameterFrm::TAddParameterFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TAddParameterFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("AddParameterFrm"));
  SetIniSave(false);
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
  FillTypeCombo(ui->TypeCmb);
  const QSignalBlocker block(ui->SchemaCmb);
  FillSchemaCombo(ui->SchemaCmb);
  ui->SchemaCmb->setCurrentIndex(-1);
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
    SelectItem(ui->TypeCmb, p.Type);
    if (IsObjectMarker(p.Type)) {
      SelectItem(ui->SchemaCmb, p.Schema);
      SchemaCmbChange();
      SelectItem(ui->ObjectCmb, p.Object);
    }
  }
  ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

void TAddParameterFrm::TypeCmbChange() {
  const bool object = IsObjectMarker(ui->TypeCmb->currentText());
  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->SchemaCmb, ui->SchemaLbl, ui->ObjectCmb, ui->ObjectLbl})
    w->setEnabled(object);
}

void TAddParameterFrm::SchemaCmbChange() {
  Guarded([this] { LoadObjectCombo(DBInfo(), ui->ObjectCmb, ui->SchemaCmb->currentText()); });
}

bool TAddParameterFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (Trim(ui->ModeCmb->currentText()).isEmpty()) return CheckFail(ui->ModeLbl, ui->ModeCmb);
  const QString type = Trim(ui->TypeCmb->currentText());
  if (type.isEmpty()) return CheckFail(ui->TypeLbl, ui->TypeCmb);
  if (IsObjectMarker(type)) {
    if (Trim(ui->SchemaCmb->currentText()).isEmpty())
      return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
    if (Trim(ui->ObjectCmb->currentText()).isEmpty())
      return CheckFail(ui->ObjectLbl, ui->ObjectCmb);
  }
  const bool renamed = FEdited < 0 || NameIdentity(FList[FEdited].Name) != NameIdentity(name);
  if (renamed) {
    for (int i = 0; i < FList.size(); ++i) {
      if (i == FEdited || NameIdentity(FList[i].Name) != NameIdentity(name)) continue;
      if (Application())
        Application()->esMsgDBox(QStringLiteral("CreateMethodFrn.existMsg"),
                                 {QStringLiteral("Parameter Name"), name}, TMsgDlgType::Warning,
                                 false);
      FocusControl(ui->ObjNameEd);
      return false;
    }
  }
  return true;
}

TTypeParam TAddParameterFrm::Param() const {
  TTypeParam p;
  p.Name = Trim(ui->ObjNameEd->text());
  p.Type = Trim(ui->TypeCmb->currentText());
  p.Mode = Trim(ui->ModeCmb->currentText());
  if (IsObjectMarker(p.Type)) {
    p.Schema = Trim(ui->SchemaCmb->currentText());
    p.Object = Trim(ui->ObjectCmb->currentText());
  }
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
