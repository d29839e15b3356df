#include "security/CreateProfileFrn.h"

#include <QComboBox>
#include <QPushButton>

#include "security/SecurityForm.h"
#include "ui_CreateProfileFrn.h"

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

TCreateProfileFrm::TCreateProfileFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateProfileFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateProfileFrm"));
  SetIniSave(false);
  FLimits = {{ui->CpuSessCmb, QStringLiteral("CPU_PER_SESSION")},
             {ui->CpuCallCmb, QStringLiteral("CPU_PER_CALL")},
             {ui->ConnTimeCmb, QStringLiteral("CONNECT_TIME")},
             {ui->IdleTimeCmb, QStringLiteral("IDLE_TIME")},
             {ui->SessUserCmb, QStringLiteral("SESSIONS_PER_USER")},
             {ui->ReadSessCmb, QStringLiteral("LOGICAL_READS_PER_SESSION")},
             {ui->ReadCallCmb, QStringLiteral("LOGICAL_READS_PER_CALL")},
             {ui->PrivSgaCmb, QStringLiteral("PRIVATE_SGA")},
             {ui->CompLimitCmb, QStringLiteral("COMPOSITE_LIMIT")},
             {ui->PwdAttemptCmb, QStringLiteral("FAILED_LOGIN_ATTEMPTS")},
             {ui->PwdLockCmb, QStringLiteral("PASSWORD_LOCK_TIME")},
             {ui->PwdGraceCmb, QStringLiteral("PASSWORD_GRACE_TIME")},
             {ui->PwdLifeCmb, QStringLiteral("PASSWORD_LIFE_TIME")},
             {ui->PwdReMaxCmb, QStringLiteral("PASSWORD_REUSE_MAX")},
             {ui->PwdReTimeCmb, QStringLiteral("PASSWORD_REUSE_TIME")},
             {ui->PwdVerifyCmb, QStringLiteral("PASSWORD_VERIFY_FUNCTION")}};
  connect(ui->ViewSqlBtn, &QPushButton::clicked, this, &TCreateProfileFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QPushButton::clicked, this, &TCreateProfileFrm::OkBtnClick);
  connect(ui->CancelBtn, &QPushButton::clicked, this, &TCreateProfileFrm::CancelBtnClick);
}

TCreateProfileFrm::~TCreateProfileFrm() {
  delete ui;
}

void TCreateProfileFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  AlterQry.SetSession(DBInfo());
}

void TCreateProfileFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
  FProfileName = link->ParamByString(QStringLiteral("P_ObjName"));
}

void TCreateProfileFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(ui->SqlText, nullptr, Tracker(), nullptr);
}

void TCreateProfileFrm::KelDllDBDlgFrmShow() {
  ui->MainPage->setTabVisible(ui->MainPage->indexOf(ui->SqlTabSheet), false);
  if (FIsAlter) {
    LoadProfile();
    return;
  }
  for (const auto& [combo, keyword] : FLimits) combo->setCurrentIndex(0);
  ui->ProfileEd->setFocus(Qt::OtherFocusReason);
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
  ui->ProfileEd->setText(FProfileName);
  ui->ProfileEd->setEnabled(false);
  for (const auto& [combo, keyword] : FLimits) {
    combo->setCurrentIndex(-1);
    combo->setEditText(QString());
  }
}

QString TCreateProfileFrm::ProfileName() const {
  return Trim(ui->ProfileEd->text());
}

bool TCreateProfileFrm::Validate() {
  return CheckNameField(this, ui->ProfileLbl, ui->ProfileEd, ProfileName());
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
  ui->SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

}  // namespace kel
