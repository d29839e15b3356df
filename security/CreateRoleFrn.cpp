#include "security/CreateRoleFrn.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "security/GrantEditor.h"
#include "security/SecurityForm.h"
#include "ui_CreateRoleFrn.h"

namespace kel {

TCreateRoleFrm::TCreateRoleFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateRoleFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateRoleFrm"));
  SetIniSave(false);
  FGrants = new TGrantEditor(
      this, this, {ui->RolesTabSheet, ui->SystemTabSheet, ui->ObjectTabSheet, ui->ResourceTabSheet},
      RoleGrantTexts(), [this] { return RoleName(); });
  FGrants->SetTabOrder(ui->VerifyPasswordEd);

  connect(ui->ViewSqlBtn, &QPushButton::clicked, this, &TCreateRoleFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QPushButton::clicked, this, &TCreateRoleFrm::OkBtnClick);
  connect(ui->CancelBtn, &QPushButton::clicked, this, &TCreateRoleFrm::CancelBtnClick);
  connect(ui->MainPage, &QTabWidget::currentChanged, this, &TCreateRoleFrm::MainPageChange);
  for (QRadioButton* r : {ui->NotIdentRdo, ui->DBAuthRdo, ui->OSAuthRdo, ui->EnterpriseRdo})
    connect(r, &QRadioButton::toggled, this, &TCreateRoleFrm::AuthRdoClick);
}

TCreateRoleFrm::~TCreateRoleFrm() {
  delete ui;
}

void TCreateRoleFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  AlterQry01.SetSession(DBInfo());
  FGrants->InitLoad();
}

void TCreateRoleFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
  FRoleName = link->ParamByString(QStringLiteral("P_ObjName"));
  FActiveTab = link->ParamByInteger(QStringLiteral("ActiveTab"));
  FGrants->SetAlter(FIsAlter);
}

void TCreateRoleFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(ui->SqlText, nullptr, Tracker(), nullptr);
  FGrants->Untrack();
}

void TCreateRoleFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadRole();
  AuthRdoClick();
  ShowActiveTab(ui->MainPage, FActiveTab, ui->SqlTabSheet);
  if (ui->RoleNameEd->isEnabled()) ui->RoleNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateRoleFrm::LoadRole() {
  setWindowTitle(Application()->esGetMSG(QStringLiteral("AlterRoles")));
  ui->RoleNameEd->setText(FRoleName);
  ui->RoleNameEd->setEnabled(false);
  AlterQry01.Close();
  AlterQry01.LoadSQL(QStringLiteral("CreateRoleFrn.Alter01"));
  AlterQry01.ParamByName(QStringLiteral("P_NAME")) = FRoleName;
  AlterQry01.Open();
  if (AlterQry01.Eof()) ThrowNotFound("CreateRoleFrn.NotFound", FRoleName);
  FPasswordRequired = Trim(AlterQry01.FieldByName(QStringLiteral("PASSWORD_REQUIRED")));
  if (FPasswordRequired == u"YES")
    ui->DBAuthRdo->setChecked(true);
  else if (FPasswordRequired == u"EXTERNAL")
    ui->OSAuthRdo->setChecked(true);
  else if (FPasswordRequired == u"GLOBAL")
    ui->EnterpriseRdo->setChecked(true);
  else
    ui->NotIdentRdo->setChecked(true);
}

void TCreateRoleFrm::AuthRdoClick() {
  ui->PasswordEd->setEnabled(ui->DBAuthRdo->isChecked());
  ui->VerifyPasswordEd->setEnabled(ui->DBAuthRdo->isChecked());
}

void TCreateRoleFrm::MainPageChange(int index) {
  FGrants->MainPageChange(ui->MainPage->widget(index));
}

QString TCreateRoleFrm::RoleName() const {
  return Trim(ui->RoleNameEd->text());
}

bool TCreateRoleFrm::PasswordRequired() const {
  // An existing password stays when the edit is left empty.
  return ui->DBAuthRdo->isChecked() && !(FIsAlter && FPasswordRequired == u"YES");
}

bool TCreateRoleFrm::Validate() {
  if (!CheckNameField(this, ui->RoleNameLbl, ui->RoleNameEd, RoleName())) return false;
  return CheckPasswords(this, PasswordRequired(), ui->DBAuthRdo->isChecked(), ui->PasswordLbl,
                        ui->PasswordEd, ui->VerifyPasswordLbl, ui->VerifyPasswordEd);
}

void TCreateRoleFrm::AddCreateRole() {
  QString auth;
  if (ui->DBAuthRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED BY \"") + ui->PasswordEd->text() + QStringLiteral("\";");
  else if (ui->OSAuthRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED EXTERNALLY;");
  else if (ui->EnterpriseRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED GLOBALLY;");
  else
    auth = QStringLiteral(" NOT IDENTIFIED;");
  SqlMemo().Add(QStringLiteral("CREATE ROLE ") + RoleName() + auth);
}

void TCreateRoleFrm::AddAlterRole() {
  const QString head = QStringLiteral("ALTER ROLE ") + RoleName();
  if (ui->EnterpriseRdo->isChecked() && FPasswordRequired != u"GLOBAL")
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED GLOBALLY;"));
  else if (ui->OSAuthRdo->isChecked() && FPasswordRequired != u"EXTERNAL")
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED EXTERNALLY;"));
  else if (ui->DBAuthRdo->isChecked() &&
           (FPasswordRequired != u"YES" || !ui->PasswordEd->text().isEmpty()))
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED BY \"") + ui->PasswordEd->text() +
                  QStringLiteral("\";"));
  else if (ui->NotIdentRdo->isChecked() && FPasswordRequired != u"NO")
    SqlMemo().Add(head + QStringLiteral(" NOT IDENTIFIED;"));
}

void TCreateRoleFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAlter)
    AddAlterRole();
  else
    AddCreateRole();
  FGrants->AddStatements(SqlMemo());
  ui->SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

}  // namespace kel
