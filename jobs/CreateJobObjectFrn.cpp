#include "jobs/CreateJobObjectFrn.h"

#include "ui_CreateJobObjectFrn.h"

namespace kel {

namespace {
QString SelectedText(const QComboBox* combo) {
  return combo->currentIndex() < 0 ? QString() : combo->currentText();
}
}  // namespace

TCreateJobObjectFrm::TCreateJobObjectFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateJobObjectFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateJobObjectFrm"));
  // The picker remembers its size and position.
  SetIniSave(true);
  ui->TypeCmb->setCurrentIndex(otProcedure);

  // The lists follow the user's choices (a choice made by the program reloads nothing).
  connect(ui->TypeCmb, &QComboBox::activated, this,
          [this] { Guarded([this] { TypeCmbChange(); }); });
  connect(ui->SchemaCmb, &QComboBox::activated, this,
          [this] { Guarded([this] { TypeCmbChange(); }); });
  connect(ui->ObjectNameCmb, &QComboBox::activated, this,
          [this] { Guarded([this] { ObjectNameCmbChange(); }); });
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateJobObjectFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateJobObjectFrm::CancelBtnClick);
}

TCreateJobObjectFrm::~TCreateJobObjectFrm() {
  delete ui;
}

void TCreateJobObjectFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  DataQry.SetSession(DBInfo());
  FillSchemaCombo(ui->SchemaCmb);
  TypeCmbChange();
}

QString TCreateJobObjectFrm::SchemaText() const {
  return SelectedText(ui->SchemaCmb);
}
int TCreateJobObjectFrm::TypeIndex() const {
  return ui->TypeCmb->currentIndex();
}
QString TCreateJobObjectFrm::TypeText() const {
  return ui->TypeCmb->currentText();
}
QString TCreateJobObjectFrm::ObjectText() const {
  return SelectedText(ui->ObjectNameCmb);
}
QString TCreateJobObjectFrm::SubObjectText() const {
  return SelectedText(ui->SubObjectCmb);
}

void TCreateJobObjectFrm::TypeCmbChange() {
  ui->ObjectNameCmb->clear();
  ui->SubObjectCmb->clear();
  const bool package = ui->TypeCmb->currentIndex() == otPackage;
  ui->SubObjectCmb->setEnabled(package);
  ui->SubObjLbl->setEnabled(package);
  if (!DBInfo()) return;
  DataQry.Close();
  DataQry.LoadSQL(QStringLiteral("CreateJobObjectFrn.001"));
  DataQry.ParamByName(QStringLiteral("P_OWN")) = ui->SchemaCmb->currentText();
  // A package is offered by its body: only a package whose body compiled can run.
  if (ui->TypeCmb->currentIndex() == otPackage)
    DataQry.ParamByName(QStringLiteral("P_OBJTYPE")) = QStringLiteral("PACKAGE BODY");
  else if (ui->TypeCmb->currentIndex() == otProcedure)
    DataQry.ParamByName(QStringLiteral("P_OBJTYPE")) = QStringLiteral("PROCEDURE");
  DataQry.Open();
  QStringList names;
  for (; !DataQry.Eof(); DataQry.Next())
    if (Trim(DataQry.FieldByName(QStringLiteral("Status"))).toUpper() == u"VALID")
      names << DataQry.FieldByName(QStringLiteral("Object_Name"));
  DataQry.Close();
  ui->ObjectNameCmb->addItems(names);
  ui->ObjectNameCmb->setCurrentIndex(-1);
}

void TCreateJobObjectFrm::ObjectNameCmbChange() {
  ui->SubObjectCmb->clear();
  if (!DBInfo()) return;
  DataQry.Close();
  DataQry.LoadSQL(QStringLiteral("CreateJobObjectFrn.002"));
  DataQry.ParamByName(QStringLiteral("P_OWN")) = ui->SchemaCmb->currentText();
  DataQry.ParamByName(QStringLiteral("P_PKGNAME")) = ui->ObjectNameCmb->currentText();
  DataQry.Open();
  QStringList names;
  for (; !DataQry.Eof(); DataQry.Next())
    names << DataQry.FieldByName(QStringLiteral("Object_Name"));
  DataQry.Close();
  ui->SubObjectCmb->addItems(names);
  ui->SubObjectCmb->setCurrentIndex(-1);
}

void TCreateJobObjectFrm::OkBtnClick() {
  if (Trim(ui->ObjectNameCmb->currentText()).isEmpty()) {
    CheckFail(ui->ObjectNameLbl, ui->ObjectNameCmb);
    return;
  }
  if (ui->SubObjectCmb->isEnabled() && Trim(ui->SubObjectCmb->currentText()).isEmpty()) {
    CheckFail(ui->SubObjLbl, ui->SubObjectCmb);
    return;
  }
  if (Tracker()) Tracker()->SetChanged(false);
  SetModalResult(mrOk);
}

}  // namespace kel
