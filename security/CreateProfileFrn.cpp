#include "security/CreateProfileFrn.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "security/SecurityForm.h"

namespace kel {

QStringList ProfileStatement(const QString& head, const QList<TProfileLimit>& limits) {
  QStringList lines;
  for (const TProfileLimit& limit : limits) {
    // An empty limit has no value Oracle would take: it is left as it is.
    const QString value = Trim(limit.Value);
    if (!value.isEmpty()) lines << QStringLiteral("  ") + limit.Keyword + u' ' + value;
  }
  if (lines.isEmpty()) return {};
  lines.prepend(head);
  return lines;
}

TCreateProfileFrm::TCreateProfileFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
  setObjectName(QStringLiteral("CreateProfileFrm"));
  setWindowTitle(QStringLiteral("Create Profile"));
  SetIniSave(false);
  BuildForm();
}

TCreateProfileFrm::~TCreateProfileFrm() = default;

void TCreateProfileFrm::BuildForm() {
  auto* layout = new QVBoxLayout(this);
  auto* nameRow = new QHBoxLayout();
  ProfileLbl = new QLabel(QStringLiteral("Profile Name :"), this);
  ProfileLbl->setObjectName(QStringLiteral("ProfileLbl"));
  ProfileEd = new QLineEdit(this);
  ProfileEd->setObjectName(QStringLiteral("ProfileEd"));
  nameRow->addWidget(ProfileLbl);
  nameRow->addWidget(ProfileEd, 1);
  layout->addLayout(nameRow);

  MainPage = new QTabWidget(this);
  MainPage->setObjectName(QStringLiteral("MainPage"));
  MainPage->addTab(BuildResourcePage(), QStringLiteral("Resource"));
  MainPage->addTab(BuildPasswordPage(), QStringLiteral("Password"));
  FSqlPage = AddSqlPage(MainPage, &SqlText);
  layout->addWidget(MainPage, 1);

  QPushButton *view, *ok, *cancel;
  layout->addLayout(NewButtonRow(this, &view, &ok, &cancel));
  connect(view, &QPushButton::clicked, this, &TCreateProfileFrm::ViewSqlBtnClick);
  connect(ok, &QPushButton::clicked, this, &TCreateProfileFrm::OkBtnClick);
  connect(cancel, &QPushButton::clicked, this, &TCreateProfileFrm::CancelBtnClick);
  resize(560, 460);
}

QComboBox* TCreateProfileFrm::AddLimit(QWidget* group, const char* name, const char* caption,
                                       const char* unit, const char* keyword,
                                       const QStringList& items) {
  auto* grid = static_cast<QGridLayout*>(group->layout());
  const int row = grid->rowCount();
  const QString base = QString::fromLatin1(name).chopped(3);  // without "Cmb"
  auto* label = new QLabel(QString::fromLatin1(caption), group);
  label->setObjectName(base + QStringLiteral("Lbl"));
  auto* combo = new QComboBox(group);
  combo->setObjectName(QString::fromLatin1(name));
  combo->setEditable(true);
  combo->setInsertPolicy(QComboBox::NoInsert);
  combo->addItems(items);
  auto* unitLbl = new QLabel(QString::fromLatin1(unit), group);
  unitLbl->setObjectName(base + QStringLiteral("UnitLbl"));
  grid->addWidget(label, row, 0);
  grid->addWidget(combo, row, 1);
  grid->addWidget(unitLbl, row, 2);
  FLimits << qMakePair(combo, QString::fromLatin1(keyword));
  return combo;
}

namespace {
QGroupBox* NewGroup(QWidget* page, QVBoxLayout* layout, const char* name, const char* caption) {
  auto* group = new QGroupBox(QString::fromLatin1(caption), page);
  group->setObjectName(QString::fromLatin1(name));
  new QGridLayout(group);
  layout->addWidget(group);
  return group;
}
QStringList Items(std::initializer_list<const char*> values) {
  QStringList items{QStringLiteral("DEFAULT"), QStringLiteral("UNLIMITED")};
  for (const char* v : values) items << QString::fromLatin1(v);
  return items;
}
}  // namespace

QWidget* TCreateProfileFrm::BuildResourcePage() {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("ResourceTabSheet"));
  auto* layout = new QVBoxLayout(page);
  QGroupBox* detail = NewGroup(page, layout, "DetailGrp", "Detail Information");
  AddLimit(detail, "CpuSessCmb", "CPU / Session :", "Sec/100", "CPU_PER_SESSION",
           Items({"1000", "6000", "36000"}));
  AddLimit(detail, "CpuCallCmb", "CPU / Call :", "Sec/100", "CPU_PER_CALL",
           Items({"1000", "6000", "36000"}));
  AddLimit(detail, "ConnTimeCmb", "Connect Time :", "Min", "CONNECT_TIME",
           Items({"30", "60", "120"}));
  AddLimit(detail, "IdleTimeCmb", "Idle Time :", "Min", "IDLE_TIME", Items({"1", "15", "60"}));
  QGroupBox* service = NewGroup(page, layout, "ServiceGrp", "Database Service");
  AddLimit(service, "SessUserCmb", "Sessions / User :", "Concurrent Sessions", "SESSIONS_PER_USER",
           Items({"1", "2", "10"}));
  AddLimit(service, "ReadSessCmb", "Reads / Session :", "Block", "LOGICAL_READS_PER_SESSION",
           Items({"1000", "5000", "10000"}));
  AddLimit(service, "ReadCallCmb", "Reads / Call :", "Block", "LOGICAL_READS_PER_CALL",
           Items({"1000", "5000", "10000"}));
  AddLimit(service, "PrivSgaCmb", "Private SGA :", "KB", "PRIVATE_SGA", Items({"4", "16", "256"}));
  AddLimit(service, "CompLimitCmb", "Composite Limit :", "Service Units", "COMPOSITE_LIMIT",
           Items({"1000000", "5000000", "10000000"}));
  layout->addStretch(1);
  return page;
}

QWidget* TCreateProfileFrm::BuildPasswordPage() {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("PasswordTabSheet"));
  auto* layout = new QVBoxLayout(page);
  QGroupBox* failed = NewGroup(page, layout, "LoginFailedGrp", "Password Login Failed Count");
  AddLimit(failed, "PwdAttemptCmb", "Failed Login Attempts :", "", "FAILED_LOGIN_ATTEMPTS",
           Items({"3", "5", "10"}));
  AddLimit(failed, "PwdLockCmb", "Lock Time :", "Days", "PASSWORD_LOCK_TIME",
           Items({"5", "10", "20"}));
  QGroupBox* expire = NewGroup(page, layout, "ExpireGrp", "Password Expire");
  AddLimit(expire, "PwdGraceCmb", "Grace Time :", "Days", "PASSWORD_GRACE_TIME",
           Items({"30", "60", "120"}));
  AddLimit(expire, "PwdLifeCmb", "Life Time :", "Days", "PASSWORD_LIFE_TIME",
           Items({"30", "60", "120"}));
  QGroupBox* reuse = NewGroup(page, layout, "ReuseGrp", "Password Reuse");
  AddLimit(reuse, "PwdReMaxCmb", "Reuse Max :", "Times", "PASSWORD_REUSE_MAX",
           Items({"1", "2", "10"}));
  AddLimit(reuse, "PwdReTimeCmb", "Reuse Time :", "Days", "PASSWORD_REUSE_TIME",
           Items({"30", "60", "120"}));
  QGroupBox* verify = NewGroup(page, layout, "VerifyGrp", "Password Verify Function");
  AddLimit(verify, "PwdVerifyCmb", "Verify Function :", "", "PASSWORD_VERIFY_FUNCTION",
           {QStringLiteral("DEFAULT"), QStringLiteral("NULL")});
  layout->addStretch(1);
  return page;
}

void TCreateProfileFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  AlterQry.SetSession(DBInfo());
}

void TCreateProfileFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = StrToBool(link->ParamByString(QStringLiteral("IsAlter")));
  FProfileName = link->ParamByString(QStringLiteral("P_ObjName"));
}

void TCreateProfileFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(SqlText, nullptr, Tracker(), nullptr);
}

void TCreateProfileFrm::KelDllDBDlgFrmShow() {
  MainPage->setTabVisible(MainPage->indexOf(FSqlPage), false);
  if (FIsAlter) {
    LoadProfile();
    return;
  }
  for (const auto& [combo, keyword] : FLimits) combo->setCurrentIndex(0);
  ProfileEd->setFocus(Qt::OtherFocusReason);
}

void TCreateProfileFrm::LoadProfile() {
  AlterQry.Close();
  AlterQry.LoadSQL(QStringLiteral("CreateProfileFrn.Exists"));
  AlterQry.ParamByName(QStringLiteral("P_NAME")) = FProfileName;
  AlterQry.Open();
  if (AlterQry.Eof()) ThrowNotFound("CreateProfileFrn.NotFound", FProfileName);
  // The limits are not loaded: an empty box leaves its limit as it is.
  AlterQry.Close();
  AlterQry.LoadSQL(QStringLiteral("CreateRoleFrn.Alter01"));
  AlterQry.ParamByName(QStringLiteral("P_NAME")) = FProfileName;
  AlterQry.Open();
  setWindowTitle(Application()->esGetMSG(QStringLiteral("CreateProfileFrm.Alter")));
  ProfileEd->setText(FProfileName);
  ProfileEd->setEnabled(false);
  for (const auto& [combo, keyword] : FLimits) {
    combo->setCurrentIndex(-1);
    combo->setEditText(QString());
  }
}

QString TCreateProfileFrm::ProfileName() const {
  return Trim(ProfileEd->text());
}

bool TCreateProfileFrm::Validate() {
  return CheckNameField(this, ProfileLbl, ProfileEd, ProfileName());
}

void TCreateProfileFrm::BuildSql() {
  const QString head =
      FIsAlter ? FormatMsg(QStringLiteral("ALTER PROFILE %s LIMIT"), {Trim(FProfileName)})
               : FormatMsg(QStringLiteral("CREATE PROFILE %s LIMIT"), {ProfileName()});
  QList<TProfileLimit> limits;
  for (const auto& [combo, keyword] : FLimits)
    limits << TProfileLimit{keyword, combo->currentText()};
  SqlMemo().Clear();
  for (const QString& line : ProfileStatement(head, limits)) SqlMemo().Add(line);
  SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

}  // namespace kel
