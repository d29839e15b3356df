#include "security/CreateRoleFrn.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "security/GrantEditor.h"
#include "security/SecurityForm.h"

namespace kel {

TCreateRoleFrm::TCreateRoleFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
  setObjectName(QStringLiteral("CreateRoleFrm"));
  setWindowTitle(QStringLiteral("Create Role"));
  SetIniSave(false);
  BuildForm();
}

TCreateRoleFrm::~TCreateRoleFrm() = default;

void TCreateRoleFrm::BuildForm() {
  auto* layout = new QVBoxLayout(this);
  MainPage = new QTabWidget(this);
  MainPage->setObjectName(QStringLiteral("MainPage"));
  FGrants = new TGrantEditor(this, this, RoleGrantTexts(), [this] { return RoleName(); });
  MainPage->addTab(BuildRoleInfoPage(), QStringLiteral("Role Info"));
  AddGrantPages(MainPage, FGrants, QStringLiteral("Object Grants"));
  FSqlPage = AddSqlPage(MainPage, &SqlText);
  layout->addWidget(MainPage, 1);

  QPushButton *view, *ok, *cancel;
  layout->addLayout(NewButtonRow(this, &view, &ok, &cancel));
  connect(view, &QPushButton::clicked, this, &TCreateRoleFrm::ViewSqlBtnClick);
  connect(ok, &QPushButton::clicked, this, &TCreateRoleFrm::OkBtnClick);
  connect(cancel, &QPushButton::clicked, this, &TCreateRoleFrm::CancelBtnClick);
  connect(MainPage, &QTabWidget::currentChanged, this, &TCreateRoleFrm::MainPageChange);
  for (QRadioButton* r : {NotIdentRdo, DBAuthRdo, OSAuthRdo, EnterpriseRdo})
    connect(r, &QRadioButton::toggled, this, &TCreateRoleFrm::AuthRdoClick);
  resize(640, 520);
}

QWidget* TCreateRoleFrm::BuildRoleInfoPage() {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("RoleInfoTabSheet"));
  auto* grid = new QGridLayout(page);
  RoleNameLbl = new QLabel(QStringLiteral("Role Name :"), page);
  RoleNameLbl->setObjectName(QStringLiteral("RoleNameLbl"));
  RoleNameEd = new QLineEdit(page);
  RoleNameEd->setObjectName(QStringLiteral("RoleNameEd"));
  grid->addWidget(RoleNameLbl, 0, 0);
  grid->addWidget(RoleNameEd, 0, 1);

  auto* auth = new QGroupBox(QStringLiteral("Authentication"), page);
  auth->setObjectName(QStringLiteral("AuthenticationGrp"));
  auto* authLayout = new QVBoxLayout(auth);
  auto radio = [auth, authLayout](const char* name, const char* caption) {
    auto* r = new QRadioButton(QString::fromLatin1(caption), auth);
    r->setObjectName(QString::fromLatin1(name));
    authLayout->addWidget(r);
    return r;
  };
  NotIdentRdo = radio("NotIdentRdo", "Not Identified");
  DBAuthRdo = radio("DBAuthRdo", "Use Database Authentication");
  OSAuthRdo = radio("OSAuthRdo", "Use Operating System Authentication");
  EnterpriseRdo = radio("EnterpriseRdo", "Use Enterprise Authentication");
  NotIdentRdo->setChecked(true);
  grid->addWidget(auth, 1, 0, 1, 2);

  auto* password = new QGroupBox(QStringLiteral("Password"), page);
  password->setObjectName(QStringLiteral("PasswordGrp"));
  auto* pwdGrid = new QGridLayout(password);
  PasswordLbl = new QLabel(QStringLiteral("Password :"), password);
  PasswordLbl->setObjectName(QStringLiteral("PasswordLbl"));
  PasswordEd = NewPasswordEdit("PasswordEd", password);
  VerifyPasswordLbl = new QLabel(QStringLiteral("Verity Password :"), password);
  VerifyPasswordLbl->setObjectName(QStringLiteral("VerifyPasswordLbl"));
  VerifyPasswordEd = NewPasswordEdit("VerifyPasswordEd", password);
  pwdGrid->addWidget(PasswordLbl, 0, 0);
  pwdGrid->addWidget(PasswordEd, 0, 1);
  pwdGrid->addWidget(VerifyPasswordLbl, 1, 0);
  pwdGrid->addWidget(VerifyPasswordEd, 1, 1);
  grid->addWidget(password, 2, 0, 1, 2);
  grid->setRowStretch(3, 1);
  return page;
}

void TCreateRoleFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  AlterQry01.SetSession(DBInfo());
  FGrants->InitLoad();
}

void TCreateRoleFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = StrToBool(link->ParamByString(QStringLiteral("IsAlter")));
  FRoleName = link->ParamByString(QStringLiteral("P_ObjName"));
  FActiveTab = link->ParamByInteger(QStringLiteral("ActiveTab"));
  FGrants->SetAlter(FIsAlter);
}

void TCreateRoleFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(SqlText, nullptr, Tracker(), nullptr);
  FGrants->Untrack();
}

void TCreateRoleFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadRole();
  AuthRdoClick();
  ShowActiveTab(MainPage, FActiveTab, FSqlPage);
  if (RoleNameEd->isEnabled()) RoleNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateRoleFrm::LoadRole() {
  setWindowTitle(Application()->esGetMSG(QStringLiteral("AlterRoles")));
  RoleNameEd->setText(FRoleName);
  RoleNameEd->setEnabled(false);
  AlterQry01.Close();
  AlterQry01.LoadSQL(QStringLiteral("CreateRoleFrn.Alter01"));
  AlterQry01.ParamByName(QStringLiteral("P_NAME")) = FRoleName;
  AlterQry01.Open();
  if (AlterQry01.Eof()) ThrowNotFound("CreateRoleFrn.NotFound", FRoleName);
  FPasswordRequired = Trim(AlterQry01.FieldByName(QStringLiteral("PASSWORD_REQUIRED")));
  if (FPasswordRequired == u"YES")
    DBAuthRdo->setChecked(true);
  else if (FPasswordRequired == u"EXTERNAL")
    OSAuthRdo->setChecked(true);
  else if (FPasswordRequired == u"GLOBAL")
    EnterpriseRdo->setChecked(true);
  else
    NotIdentRdo->setChecked(true);
}

void TCreateRoleFrm::AuthRdoClick() {
  PasswordEd->setEnabled(DBAuthRdo->isChecked());
  VerifyPasswordEd->setEnabled(DBAuthRdo->isChecked());
}

void TCreateRoleFrm::MainPageChange(int index) {
  FGrants->MainPageChange(MainPage->widget(index));
}

QString TCreateRoleFrm::RoleName() const {
  return Trim(RoleNameEd->text());
}

bool TCreateRoleFrm::PasswordRequired() const {
  // An existing password stays when the edit is left empty.
  return DBAuthRdo->isChecked() && !(FIsAlter && FPasswordRequired == u"YES");
}

bool TCreateRoleFrm::Validate() {
  if (!CheckNameField(this, RoleNameLbl, RoleNameEd, RoleName())) return false;
  return CheckPasswords(this, PasswordRequired(), DBAuthRdo->isChecked(), PasswordLbl, PasswordEd,
                        VerifyPasswordLbl, VerifyPasswordEd);
}

void TCreateRoleFrm::AddCreateRole() {
  QString auth;
  if (DBAuthRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED BY \"") + PasswordEd->text() + QStringLiteral("\";");
  else if (OSAuthRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED EXTERNALLY;");
  else if (EnterpriseRdo->isChecked())
    auth = QStringLiteral(" IDENTIFIED GLOBALLY;");
  else
    auth = QStringLiteral(" NOT IDENTIFIED;");
  SqlMemo().Add(QStringLiteral("CREATE ROLE ") + RoleName() + auth);
}

void TCreateRoleFrm::AddAlterRole() {
  const QString head = QStringLiteral("ALTER ROLE ") + RoleName();
  if (EnterpriseRdo->isChecked() && FPasswordRequired != u"GLOBAL")
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED GLOBALLY;"));
  else if (OSAuthRdo->isChecked() && FPasswordRequired != u"EXTERNAL")
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED EXTERNALLY;"));
  else if (DBAuthRdo->isChecked() && (FPasswordRequired != u"YES" || !PasswordEd->text().isEmpty()))
    SqlMemo().Add(head + QStringLiteral(" IDENTIFIED BY \"") + PasswordEd->text() +
                  QStringLiteral("\";"));
  else if (NotIdentRdo->isChecked() && FPasswordRequired != u"NO")
    SqlMemo().Add(head + QStringLiteral(" NOT IDENTIFIED;"));
}

void TCreateRoleFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAlter)
    AddAlterRole();
  else
    AddCreateRole();
  FGrants->AddStatements(SqlMemo());
  SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

}  // namespace kel
