#include "security/CreateUserFrn.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "plugin/KelTreeList.h"
#include "security/GrantEditor.h"
#include "security/SecurityForm.h"
#include "ui_CreateUserFrn.h"

namespace kel {

namespace {

enum TQuotaColumn { qcTablespace, qcUnlimited, qcQuota, qcUnits };

QString QuotaClause(const TQuotaRow& row) {
  const QString quota = Trim(row.Quota);
  if (quota.isEmpty() || quota.toLongLong() <= 0) return QString();
  // Anything but kilobytes is megabytes.
  const QString templ = row.Units == u"KB" ? QStringLiteral("\tQUOTA %sK ON %s")
                                           : QStringLiteral("\tQUOTA %sM ON %s");
  return FormatMsg(templ, {quota, row.Tablespace}) + CRLF;
}

QString NewQuotaClause(const TQuotaRow& row) {
  if (row.Unlimited)
    return FormatMsg(QStringLiteral("\tQUOTA UNLIMITED ON %s"), {row.Tablespace}) + CRLF;
  return QuotaClause(row);
}

QString ChangedQuotaClause(const TQuotaRow& row, const TQuotaRow& loaded) {
  if (row.Unlimited == loaded.Unlimited && Trim(row.Quota) == Trim(loaded.Quota) &&
      row.Units == loaded.Units)
    return QString();
  if (row.Unlimited) return NewQuotaClause(row);
  const QString clause = QuotaClause(row);
  if (!clause.isEmpty()) return clause;
  // No quota any more: the tablespace's quota is removed.
  return FormatMsg(QStringLiteral("\tQUOTA 0 ON %s"), {row.Tablespace}) + CRLF;
}

}  // namespace

QString QuotaClauses(const QList<TQuotaRow>& rows, const QMap<QString, TQuotaRow>& loaded) {
  QString out;
  for (const TQuotaRow& row : rows) {
    const auto it = loaded.constFind(row.Tablespace);
    out += it == loaded.constEnd() ? NewQuotaClause(row) : ChangedQuotaClause(row, *it);
  }
  return out;
}

TCreateUserFrm::TCreateUserFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateUserFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateUserFrm"));
  SetIniSave(false);
  AddQuotaColumns();
  FGrants = new TGrantEditor(
      this, this, {ui->RolesTabSheet, ui->SystemTabSheet, ui->ObjectTabSheet, ui->ResourceTabSheet},
      UserGrantTexts(), [this] { return UserName(); });
  FGrants->SetTabOrder(ui->QuotaTreeList);

  connect(ui->ViewSqlBtn, &QPushButton::clicked, this, &TCreateUserFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QPushButton::clicked, this, &TCreateUserFrm::OkBtnClick);
  connect(ui->CancelBtn, &QPushButton::clicked, this, &TCreateUserFrm::CancelBtnClick);
  connect(ui->MainPage, &QTabWidget::currentChanged, this, &TCreateUserFrm::MainPageChange);
  for (QRadioButton* r : {ui->DBAuthRdo, ui->OSAuthRdo, ui->EnterpriseRdo})
    connect(r, &QRadioButton::toggled, this, &TCreateUserFrm::AuthRdoClick);
}

TCreateUserFrm::~TCreateUserFrm() {
  delete ui;
}

void TCreateUserFrm::AddQuotaColumns() {
  TKelTreeList* list = ui->QuotaTreeList;
  list->AddColumn({QStringLiteral("QuotaTreeListTablespace"),
                   QStringLiteral("Tablespace"),
                   TCellEditor::Text,
                   {},
                   0,
                   0,
                   false,
                   true,
                   180});
  list->AddColumn({QStringLiteral("QuotaTreeListUnlimited"),
                   QStringLiteral("Unlimited"),
                   TCellEditor::Check,
                   {},
                   0,
                   0,
                   true,
                   true,
                   80});
  list->AddColumn({QStringLiteral("QuotaTreeListQuota"),
                   QStringLiteral("Quota"),
                   TCellEditor::Spin,
                   {},
                   0,
                   2147483647,
                   true,
                   true,
                   120});
  list->AddColumn({QStringLiteral("QuotaTreeListUnits"),
                   QStringLiteral("Units"),
                   TCellEditor::PickList,
                   {QStringLiteral("KB"), QStringLiteral("MB")},
                   0,
                   0,
                   true,
                   true,
                   70});
}

void TCreateUserFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  FGrants->InitLoad();
  Guarded([this] {
    QStringList tablespaces;
    if (Application()) Application()->esOraTblspaceList(DBInfo(), tablespaces);
    ui->DefaultTableSpaceCmb->clear();
    ui->DefaultTableSpaceCmb->addItems(tablespaces);
    ui->DefaultTableSpaceCmb->setCurrentIndex(-1);
    FillTemporaryTablespaces();
    FillProfiles();
  });
}

void TCreateUserFrm::FillTemporaryTablespaces() {
  // The list routine's all-rows switch is off here: temporary tablespaces only.
  const bool allRows = false;
  ui->TemporaryTableSpaceCmb->clear();
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("Acm.Tablespace"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next())
    if (allRows || TempQry.FieldByName(QStringLiteral("Contents")) == u"TEMPORARY")
      ui->TemporaryTableSpaceCmb->addItem(TempQry.FieldByName(QStringLiteral("Tablespace")));
  TempQry.Close();
  ui->TemporaryTableSpaceCmb->setCurrentIndex(-1);
}

void TCreateUserFrm::FillProfiles() {
  ui->ResourceProfileCmb->clear();
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateUserFrn.002"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next())
    ui->ResourceProfileCmb->addItem(TempQry.FieldByName(QStringLiteral("Profile")));
  TempQry.Close();
  ui->ResourceProfileCmb->setCurrentIndex(-1);
}

void TCreateUserFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
  FUserName = link->ParamByString(QStringLiteral("P_UserName"));
  FActiveTab = link->ParamByInteger(QStringLiteral("ActiveTab"));
  FGrants->SetAlter(FIsAlter);
}

void TCreateUserFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(ui->SqlText, nullptr, Tracker(), nullptr);
  FGrants->Untrack();
  if (Tracker())
    QObject::disconnect(ui->QuotaTreeList, &TKelTreeList::RowsChanged, Tracker(), nullptr);
}

void TCreateUserFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadUser();
  AuthRdoClick();
  ShowActiveTab(ui->MainPage, FActiveTab, ui->SqlTabSheet);
  if (ui->UserNameEd->isEnabled()) ui->UserNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateUserFrm::LoadUser() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateUserFrn.Alt.001"));
  TempQry.ParamByName(QStringLiteral("P_USERNAME")) = FUserName;
  TempQry.Open();
  if (TempQry.Eof()) ThrowNotFound("CreateUserFrn.NotFound", FUserName);
  FAuth = TempQry.FieldByName(QStringLiteral("PASSWORD"));
  FExternalName = TempQry.FieldByName(QStringLiteral("EXTERNAL_NAME"));
  FProfile = TempQry.FieldByName(QStringLiteral("PROFILE"));
  FDefaultTablespace = TempQry.FieldByName(QStringLiteral("DEFAULT_TABLESPACE"));
  FTemporaryTablespace = TempQry.FieldByName(QStringLiteral("TEMPORARY_TABLESPACE"));
  FStatus = TempQry.FieldByName(QStringLiteral("ACCOUNT_STATUS"));
  TempQry.Close();

  setWindowTitle(Application()->esGetMSG(QStringLiteral("AlterUser")));
  ui->UserNameEd->setText(FUserName);
  ui->UserNameEd->setEnabled(false);
  if (FAuth == u"EXTERNAL")
    ui->OSAuthRdo->setChecked(true);
  else if (FAuth == u"GLOBAL")
    ui->EnterpriseRdo->setChecked(true);
  else
    ui->DBAuthRdo->setChecked(true);
  ui->ExternalNameEd->setText(FExternalName);
  SelectComboText(ui->DefaultTableSpaceCmb, FDefaultTablespace);
  SelectComboText(ui->TemporaryTableSpaceCmb, FTemporaryTablespace);
  SelectComboText(ui->ResourceProfileCmb, FProfile);
  ui->PasswordExpiredChk->setChecked(FStatus == u"EXPIRED" || FStatus == u"EXPIRED & LOCKED");
  if (FStatus == u"LOCKED" || FStatus == u"EXPIRED & LOCKED")
    ui->LockRdo->setChecked(true);
  else
    ui->UnLockRdo->setChecked(true);
}

void TCreateUserFrm::AuthRdoClick() {
  const bool db = ui->DBAuthRdo->isChecked();
  ui->PasswordEd->setEnabled(db);
  ui->VerifyPasswordEd->setEnabled(db);
  ui->ExternalNameEd->setEnabled(ui->EnterpriseRdo->isChecked());
}

void TCreateUserFrm::MainPageChange(int index) {
  QWidget* page = ui->MainPage->widget(index);
  if (page == ui->QuotaTabSheet)
    Guarded([this] { FillQuotaPage(); });
  else
    FGrants->MainPageChange(page);
}

void TCreateUserFrm::FillQuotaPage() {
  if (FQuotaLoaded) return;
  FQuotaLoaded = true;
  QList<QStringList> rows;
  for (int i = 0; i < ui->DefaultTableSpaceCmb->count(); ++i)
    rows << QStringList{ui->DefaultTableSpaceCmb->itemText(i), BoolToStr(false), QString(),
                        QStringLiteral("KB")};
  ui->QuotaTreeList->AddRows(rows);
  if (!FIsAlter) return;
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateUserFrn.AlterQuota"));
  TempQry.ParamByName(QStringLiteral("P_NAME")) = FUserName;
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next()) {
    TQuotaRow q;
    q.Tablespace = TempQry.FieldByName(QStringLiteral("TABLESPACE_NAME"));
    // The catalog reports an unlimited quota as the word UNLIMITED.
    q.Unlimited = Trim(TempQry.FieldByName(QStringLiteral("QUOTA"))) == u"UNLIMITED";
    if (!q.Unlimited) {
      q.Quota = Trim(TempQry.FieldByName(QStringLiteral("QUOTA")));
      q.Units = Trim(TempQry.FieldByName(QStringLiteral("UNITS")));
    }
    FLoadedQuotas.insert(q.Tablespace, q);
    for (int r = 0; r < ui->QuotaTreeList->RowCount(); ++r) {
      if (ui->QuotaTreeList->Cell(r, qcTablespace) != q.Tablespace) continue;
      ui->QuotaTreeList->SetCell(r, qcUnlimited, BoolToStr(q.Unlimited));
      ui->QuotaTreeList->SetCell(r, qcQuota, q.Quota);
      ui->QuotaTreeList->SetCell(r, qcUnits, q.Units);
    }
  }
  TempQry.Close();
}

QList<TQuotaRow> TCreateUserFrm::QuotaRows() const {
  QList<TQuotaRow> rows;
  for (int r = 0; r < ui->QuotaTreeList->RowCount(); ++r)
    rows << TQuotaRow{ui->QuotaTreeList->Cell(r, qcTablespace),
                      ui->QuotaTreeList->Cell(r, qcUnlimited) == u"True",
                      ui->QuotaTreeList->Cell(r, qcQuota), ui->QuotaTreeList->Cell(r, qcUnits)};
  return rows;
}

QString TCreateUserFrm::UserName() const {
  return Trim(ui->UserNameEd->text());
}

bool TCreateUserFrm::PasswordRequired() const {
  if (!ui->DBAuthRdo->isChecked()) return false;
  // A user without a password of its own (EXTERNAL, GLOBAL, or NONE for a schema-only account)
  // needs one to switch to database authentication.
  return !FIsAlter || FAuth != u"PASSWORD";
}

bool TCreateUserFrm::Validate() {
  if (!CheckNameField(this, ui->UserNameLbl, ui->UserNameEd, UserName())) return false;
  return CheckPasswords(this, PasswordRequired(), ui->DBAuthRdo->isChecked(), ui->PasswordLbl,
                        ui->PasswordEd, ui->VerifyPasswordLbl, ui->VerifyPasswordEd);
}

QString TCreateUserFrm::IdentifiedClause() const {
  if (ui->OSAuthRdo->isChecked()) return QStringLiteral(" IDENTIFIED EXTERNALLY");
  if (ui->EnterpriseRdo->isChecked())
    return QStringLiteral(" IDENTIFIED GLOBALLY AS '") + QuoteSql(ui->ExternalNameEd->text()) +
           u'\'';
  return QStringLiteral(" IDENTIFIED BY \"") + ui->PasswordEd->text() + u'"';
}

void TCreateUserFrm::AddCreateUser() {
  TSqlMemo head;
  head.Add(QStringLiteral("CREATE USER ") + UserName() + IdentifiedClause());
  if (!ui->DefaultTableSpaceCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tDEFAULT TABLESPACE %s"),
                       {ui->DefaultTableSpaceCmb->currentText()}));
  if (!ui->TemporaryTableSpaceCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tTEMPORARY TABLESPACE %s"),
                       {ui->TemporaryTableSpaceCmb->currentText()}));
  const QString quota = Trim(QuotaClauses(QuotaRows(), {}));
  if (!quota.isEmpty()) head.Add(QStringLiteral("\t") + quota);
  if (!ui->ResourceProfileCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tPROFILE %s"), {ui->ResourceProfileCmb->currentText()}));
  if (ui->DBAuthRdo->isChecked() && ui->PasswordExpiredChk->isChecked())
    head.Add(QStringLiteral("\tPASSWORD EXPIRE"));
  if (ui->LockRdo->isChecked()) head.Add(QStringLiteral("\tACCOUNT LOCK"));
  SqlMemo().SetText(Trim(head.Text()) + QStringLiteral(";") + CRLF + CRLF);
}

QString TCreateUserFrm::AlterIdentifiedClause() const {
  if (ui->EnterpriseRdo->isChecked()) {
    if (FAuth == u"GLOBAL" && FExternalName == ui->ExternalNameEd->text()) return QString();
    return ui->ExternalNameEd->text().isEmpty()
               ? QStringLiteral("\tIDENTIFIED GLOBALLY")
               : FormatMsg(QStringLiteral("\tIDENTIFIED GLOBALLY '%s'"),
                           {QuoteSql(ui->ExternalNameEd->text())});
  }
  if (ui->OSAuthRdo->isChecked())
    return FAuth == u"EXTERNAL" ? QString() : QStringLiteral("\tIDENTIFIED EXTERNALLY");
  if (FAuth == u"PASSWORD" && ui->PasswordEd->text().isEmpty()) return QString();
  return QStringLiteral("\tIDENTIFIED BY \"") + ui->PasswordEd->text() + u'"';
}

void TCreateUserFrm::AddAlterUser() {
  QStringList clauses;
  const QString identified = AlterIdentifiedClause();
  if (!identified.isEmpty()) clauses << identified;
  auto changed = [&](QComboBox* combo, const QString& loaded, const char* templ) {
    const QString text = combo->currentText();
    if (!text.isEmpty() && text != loaded) clauses << FormatMsg(QString::fromLatin1(templ), {text});
  };
  changed(ui->DefaultTableSpaceCmb, FDefaultTablespace, "\tDEFAULT TABLESPACE %s");
  changed(ui->TemporaryTableSpaceCmb, FTemporaryTablespace, "\tTEMPORARY TABLESPACE %s");
  changed(ui->ResourceProfileCmb, FProfile, "\tPROFILE %s");
  const bool expired = FStatus == u"EXPIRED" || FStatus == u"EXPIRED & LOCKED";
  if (ui->DBAuthRdo->isChecked() && ui->PasswordExpiredChk->isChecked() &&
      (!expired || !ui->PasswordEd->text().isEmpty()))
    clauses << QStringLiteral("\tPASSWORD EXPIRE");
  const bool locked = FStatus == u"LOCKED" || FStatus == u"EXPIRED & LOCKED";
  if (!locked && ui->LockRdo->isChecked()) clauses << QStringLiteral("\tACCOUNT LOCK");
  if (locked && ui->UnLockRdo->isChecked()) clauses << QStringLiteral("\tACCOUNT UNLOCK");
  SqlMemo().Clear();
  if (clauses.isEmpty()) return;
  SqlMemo().SetText(
      Trim(QStringLiteral("ALTER USER ") + UserName() + CRLF + clauses.join(CRLF) + CRLF) +
      QStringLiteral(";") + CRLF + CRLF);
}

void TCreateUserFrm::AddAlterQuota(const QString& quota) {
  if (quota.isEmpty()) return;
  SqlMemo().Add(FormatMsg(QStringLiteral("ALTER USER %s"), {UserName()}));
  SqlMemo().Add(QStringLiteral("\t") + quota + QStringLiteral(";"));
}

void TCreateUserFrm::BuildSql() {
  if (FIsAlter) {
    AddAlterUser();
    FGrants->AddStatements(SqlMemo());
    AddAlterQuota(Trim(QuotaClauses(QuotaRows(), FLoadedQuotas)));
  } else {
    AddCreateUser();
    FGrants->AddStatements(SqlMemo());
  }
  ui->SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

void TCreateUserFrm::AfterExecute() {
  if (Application()) Application()->esResetOraUserList(DBInfo());
}

}  // namespace kel
