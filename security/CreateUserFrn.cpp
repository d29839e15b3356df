#include "security/CreateUserFrn.h"

#include <QCheckBox>
#include <QComboBox>
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

#include "plugin/KelTreeList.h"
#include "security/GrantEditor.h"
#include "security/SecurityForm.h"

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

QLabel* NewLabel(const QString& name, const QString& caption, QWidget* parent) {
  auto* label = new QLabel(caption, parent);
  label->setObjectName(name);
  return label;
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

TCreateUserFrm::TCreateUserFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
  setObjectName(QStringLiteral("CreateUserFrm"));
  setWindowTitle(QStringLiteral("Create User"));
  SetIniSave(false);
  BuildForm();
}

TCreateUserFrm::~TCreateUserFrm() = default;

void TCreateUserFrm::BuildForm() {
  auto* layout = new QVBoxLayout(this);
  MainPage = new QTabWidget(this);
  MainPage->setObjectName(QStringLiteral("MainPage"));
  FGrants = new TGrantEditor(this, this, UserGrantTexts(), [this] { return UserName(); });
  MainPage->addTab(BuildUserInfoPage(), QStringLiteral("User Info"));
  FQuotaPage = BuildQuotaPage();
  MainPage->addTab(FQuotaPage, QStringLiteral("Quota"));
  AddGrantPages(MainPage, FGrants, QStringLiteral("Object Privileges"));
  FSqlPage = AddSqlPage(MainPage, &SqlText);
  layout->addWidget(MainPage, 1);

  QPushButton *view, *ok, *cancel;
  layout->addLayout(NewButtonRow(this, &view, &ok, &cancel));
  connect(view, &QPushButton::clicked, this, &TCreateUserFrm::ViewSqlBtnClick);
  connect(ok, &QPushButton::clicked, this, &TCreateUserFrm::OkBtnClick);
  connect(cancel, &QPushButton::clicked, this, &TCreateUserFrm::CancelBtnClick);
  resize(640, 560);

  connect(MainPage, &QTabWidget::currentChanged, this, &TCreateUserFrm::MainPageChange);
  for (QRadioButton* r : {DBAuthRdo, OSAuthRdo, EnterpriseRdo})
    connect(r, &QRadioButton::toggled, this, &TCreateUserFrm::AuthRdoClick);
}

QWidget* TCreateUserFrm::BuildUserInfoPage() {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("UserInfoTabSheet"));
  auto* grid = new QGridLayout(page);
  int row = 0;
  UserNameLbl = NewLabel(QStringLiteral("UserNameLbl"), QStringLiteral("User Name :"), page);
  UserNameEd = new QLineEdit(page);
  UserNameEd->setObjectName(QStringLiteral("UserNameEd"));
  grid->addWidget(UserNameLbl, row, 0);
  grid->addWidget(UserNameEd, row++, 1);

  auto* auth = new QGroupBox(QStringLiteral("Authentication"), page);
  auth->setObjectName(QStringLiteral("AuthenticationGrp"));
  auto* authLayout = new QVBoxLayout(auth);
  DBAuthRdo = new QRadioButton(QStringLiteral("Use Database Authentication"), auth);
  DBAuthRdo->setObjectName(QStringLiteral("DBAuthRdo"));
  OSAuthRdo = new QRadioButton(QStringLiteral("Use Operating System Authentication"), auth);
  OSAuthRdo->setObjectName(QStringLiteral("OSAuthRdo"));
  EnterpriseRdo = new QRadioButton(QStringLiteral("Use Enterprise Authentication"), auth);
  EnterpriseRdo->setObjectName(QStringLiteral("EnterpriseRdo"));
  for (QRadioButton* r : {DBAuthRdo, OSAuthRdo, EnterpriseRdo}) authLayout->addWidget(r);
  DBAuthRdo->setChecked(true);
  grid->addWidget(auth, row++, 0, 1, 2);

  PasswordLbl = NewLabel(QStringLiteral("PasswordLbl"), QStringLiteral("Password :"), page);
  PasswordEd = NewPasswordEdit("PasswordEd", page);
  grid->addWidget(PasswordLbl, row, 0);
  grid->addWidget(PasswordEd, row++, 1);
  VerifyPasswordLbl =
      NewLabel(QStringLiteral("VerifyPasswordLbl"), QStringLiteral("Verity Password :"), page);
  VerifyPasswordEd = NewPasswordEdit("VerifyPasswordEd", page);
  grid->addWidget(VerifyPasswordLbl, row, 0);
  grid->addWidget(VerifyPasswordEd, row++, 1);
  ExternalNameLbl =
      NewLabel(QStringLiteral("ExternalNameLbl"), QStringLiteral("External Name :"), page);
  ExternalNameEd = new QLineEdit(page);
  ExternalNameEd->setObjectName(QStringLiteral("ExternalNameEd"));
  grid->addWidget(ExternalNameLbl, row, 0);
  grid->addWidget(ExternalNameEd, row++, 1);
  PasswordExpiredChk = new QCheckBox(QStringLiteral("Expire Password Now"), page);
  PasswordExpiredChk->setObjectName(QStringLiteral("PasswordExpiredChk"));
  grid->addWidget(PasswordExpiredChk, row++, 1);

  auto* ts = new QGroupBox(QStringLiteral("Tablespace"), page);
  ts->setObjectName(QStringLiteral("TablespaceGrp"));
  auto* tsLayout = new QGridLayout(ts);
  DefaultTableSpaceCmb = new QComboBox(ts);
  DefaultTableSpaceCmb->setObjectName(QStringLiteral("DefaultTableSpaceCmb"));
  TemporaryTableSpaceCmb = new QComboBox(ts);
  TemporaryTableSpaceCmb->setObjectName(QStringLiteral("TemporaryTableSpaceCmb"));
  tsLayout->addWidget(
      NewLabel(QStringLiteral("DefaultTableSpaceLbl"), QStringLiteral("Default :"), ts), 0, 0);
  tsLayout->addWidget(DefaultTableSpaceCmb, 0, 1);
  tsLayout->addWidget(
      NewLabel(QStringLiteral("TemporaryTableSpaceLbl"), QStringLiteral("Temporary :"), ts), 1, 0);
  tsLayout->addWidget(TemporaryTableSpaceCmb, 1, 1);
  grid->addWidget(ts, row++, 0, 1, 2);

  ResourceProfileCmb = new QComboBox(page);
  ResourceProfileCmb->setObjectName(QStringLiteral("ResourceProfileCmb"));
  grid->addWidget(
      NewLabel(QStringLiteral("ResourceProfileLbl"), QStringLiteral("Resource Profile :"), page),
      row, 0);
  grid->addWidget(ResourceProfileCmb, row++, 1);

  auto* status = new QGroupBox(QStringLiteral("Account Status"), page);
  status->setObjectName(QStringLiteral("AccountStatusGrp"));
  auto* statusLayout = new QHBoxLayout(status);
  LockRdo = new QRadioButton(QStringLiteral("Lock"), status);
  LockRdo->setObjectName(QStringLiteral("LockRdo"));
  UnLockRdo = new QRadioButton(QStringLiteral("UnLock"), status);
  UnLockRdo->setObjectName(QStringLiteral("UnLockRdo"));
  statusLayout->addWidget(LockRdo);
  statusLayout->addWidget(UnLockRdo);
  UnLockRdo->setChecked(true);
  grid->addWidget(status, row++, 0, 1, 2);
  grid->setRowStretch(row, 1);
  return page;
}

QWidget* TCreateUserFrm::BuildQuotaPage() {
  auto* page = new QWidget();
  page->setObjectName(QStringLiteral("QuotaTabSheet"));
  auto* layout = new QVBoxLayout(page);
  QuotaTreeList = new TKelTreeList(page);
  QuotaTreeList->setObjectName(QStringLiteral("QuotaTreeList"));
  QuotaTreeList->AddColumn({QStringLiteral("QuotaTreeListTablespace"),
                            QStringLiteral("Tablespace"),
                            TCellEditor::Text,
                            {},
                            0,
                            0,
                            false,
                            true,
                            180});
  QuotaTreeList->AddColumn({QStringLiteral("QuotaTreeListUnlimited"),
                            QStringLiteral("Unlimited"),
                            TCellEditor::Check,
                            {},
                            0,
                            0,
                            true,
                            true,
                            80});
  QuotaTreeList->AddColumn({QStringLiteral("QuotaTreeListQuota"),
                            QStringLiteral("Quota"),
                            TCellEditor::Spin,
                            {},
                            0,
                            2147483647,
                            true,
                            true,
                            120});
  QuotaTreeList->AddColumn({QStringLiteral("QuotaTreeListUnits"),
                            QStringLiteral("Units"),
                            TCellEditor::PickList,
                            {QStringLiteral("KB"), QStringLiteral("MB")},
                            0,
                            0,
                            true,
                            true,
                            70});
  layout->addWidget(QuotaTreeList);
  return page;
}

void TCreateUserFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  FGrants->InitLoad();
  Guarded([this] {
    QStringList tablespaces;
    if (Application()) Application()->esOraTblspaceList(DBInfo(), tablespaces);
    DefaultTableSpaceCmb->clear();
    DefaultTableSpaceCmb->addItems(tablespaces);
    DefaultTableSpaceCmb->setCurrentIndex(-1);
    FillTemporaryTablespaces();
    FillProfiles();
  });
}

void TCreateUserFrm::FillTemporaryTablespaces() {
  // The list routine's all-rows switch is off here: temporary tablespaces only.
  const bool allRows = false;
  TemporaryTableSpaceCmb->clear();
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("Acm.Tablespace"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next())
    if (allRows || TempQry.FieldByName(QStringLiteral("Contents")) == u"TEMPORARY")
      TemporaryTableSpaceCmb->addItem(TempQry.FieldByName(QStringLiteral("Tablespace")));
  TempQry.Close();
  TemporaryTableSpaceCmb->setCurrentIndex(-1);
}

void TCreateUserFrm::FillProfiles() {
  ResourceProfileCmb->clear();
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateUserFrn.002"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next())
    ResourceProfileCmb->addItem(TempQry.FieldByName(QStringLiteral("Profile")));
  TempQry.Close();
  ResourceProfileCmb->setCurrentIndex(-1);
}

void TCreateUserFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = StrToBool(link->ParamByString(QStringLiteral("IsAlter")));
  FUserName = link->ParamByString(QStringLiteral("P_UserName"));
  FActiveTab = link->ParamByInteger(QStringLiteral("ActiveTab"));
  FGrants->SetAlter(FIsAlter);
}

void TCreateUserFrm::showEvent(QShowEvent* event) {
  TKelDllDBDlgFrm::showEvent(event);
  // The statement page shows what was built; writing it is not an edit.
  if (Tracker()) QObject::disconnect(SqlText, nullptr, Tracker(), nullptr);
  FGrants->Untrack();
  if (Tracker()) QObject::disconnect(QuotaTreeList, &TKelTreeList::RowsChanged, Tracker(), nullptr);
}

void TCreateUserFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadUser();
  AuthRdoClick();
  ShowActiveTab(MainPage, FActiveTab, FSqlPage);
  if (UserNameEd->isEnabled()) UserNameEd->setFocus(Qt::OtherFocusReason);
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
  UserNameEd->setText(FUserName);
  UserNameEd->setEnabled(false);
  if (FAuth == u"EXTERNAL")
    OSAuthRdo->setChecked(true);
  else if (FAuth == u"GLOBAL")
    EnterpriseRdo->setChecked(true);
  else
    DBAuthRdo->setChecked(true);
  ExternalNameEd->setText(FExternalName);
  SelectComboText(DefaultTableSpaceCmb, FDefaultTablespace);
  SelectComboText(TemporaryTableSpaceCmb, FTemporaryTablespace);
  SelectComboText(ResourceProfileCmb, FProfile);
  PasswordExpiredChk->setChecked(FStatus == u"EXPIRED" || FStatus == u"EXPIRED & LOCKED");
  if (FStatus == u"LOCKED" || FStatus == u"EXPIRED & LOCKED")
    LockRdo->setChecked(true);
  else
    UnLockRdo->setChecked(true);
}

void TCreateUserFrm::AuthRdoClick() {
  const bool db = DBAuthRdo->isChecked();
  PasswordEd->setEnabled(db);
  VerifyPasswordEd->setEnabled(db);
  ExternalNameEd->setEnabled(EnterpriseRdo->isChecked());
}

void TCreateUserFrm::MainPageChange(int index) {
  QWidget* page = MainPage->widget(index);
  if (page == FQuotaPage)
    Guarded([this] { FillQuotaPage(); });
  else
    FGrants->MainPageChange(page);
}

void TCreateUserFrm::FillQuotaPage() {
  if (FQuotaLoaded) return;
  FQuotaLoaded = true;
  QList<QStringList> rows;
  for (int i = 0; i < DefaultTableSpaceCmb->count(); ++i)
    rows << QStringList{DefaultTableSpaceCmb->itemText(i), BoolToStr(false), QString(),
                        QStringLiteral("KB")};
  QuotaTreeList->AddRows(rows);
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
    for (int r = 0; r < QuotaTreeList->RowCount(); ++r) {
      if (QuotaTreeList->Cell(r, qcTablespace) != q.Tablespace) continue;
      QuotaTreeList->SetCell(r, qcUnlimited, BoolToStr(q.Unlimited));
      QuotaTreeList->SetCell(r, qcQuota, q.Quota);
      QuotaTreeList->SetCell(r, qcUnits, q.Units);
    }
  }
  TempQry.Close();
}

QList<TQuotaRow> TCreateUserFrm::QuotaRows() const {
  QList<TQuotaRow> rows;
  for (int r = 0; r < QuotaTreeList->RowCount(); ++r)
    rows << TQuotaRow{QuotaTreeList->Cell(r, qcTablespace),
                      QuotaTreeList->Cell(r, qcUnlimited) == u"True",
                      QuotaTreeList->Cell(r, qcQuota), QuotaTreeList->Cell(r, qcUnits)};
  return rows;
}

QString TCreateUserFrm::UserName() const {
  return Trim(UserNameEd->text());
}

bool TCreateUserFrm::PasswordRequired() const {
  if (!DBAuthRdo->isChecked()) return false;
  // A user without a password of its own (EXTERNAL, GLOBAL, or NONE for a schema-only account)
  // needs one to switch to database authentication.
  return !FIsAlter || FAuth != u"PASSWORD";
}

bool TCreateUserFrm::Validate() {
  if (!CheckNameField(this, UserNameLbl, UserNameEd, UserName())) return false;
  return CheckPasswords(this, PasswordRequired(), DBAuthRdo->isChecked(), PasswordLbl, PasswordEd,
                        VerifyPasswordLbl, VerifyPasswordEd);
}

QString TCreateUserFrm::IdentifiedClause() const {
  if (OSAuthRdo->isChecked()) return QStringLiteral(" IDENTIFIED EXTERNALLY");
  if (EnterpriseRdo->isChecked())
    return QStringLiteral(" IDENTIFIED GLOBALLY AS '") + QuoteSql(ExternalNameEd->text()) + u'\'';
  return QStringLiteral(" IDENTIFIED BY \"") + PasswordEd->text() + u'"';
}

void TCreateUserFrm::AddCreateUser() {
  TSqlMemo head;
  head.Add(QStringLiteral("CREATE USER ") + UserName() + IdentifiedClause());
  if (!DefaultTableSpaceCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tDEFAULT TABLESPACE %s"),
                       {DefaultTableSpaceCmb->currentText()}));
  if (!TemporaryTableSpaceCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tTEMPORARY TABLESPACE %s"),
                       {TemporaryTableSpaceCmb->currentText()}));
  const QString quota = Trim(QuotaClauses(QuotaRows(), {}));
  if (!quota.isEmpty()) head.Add(QStringLiteral("\t") + quota);
  if (!ResourceProfileCmb->currentText().isEmpty())
    head.Add(FormatMsg(QStringLiteral("\tPROFILE %s"), {ResourceProfileCmb->currentText()}));
  if (DBAuthRdo->isChecked() && PasswordExpiredChk->isChecked())
    head.Add(QStringLiteral("\tPASSWORD EXPIRE"));
  if (LockRdo->isChecked()) head.Add(QStringLiteral("\tACCOUNT LOCK"));
  SqlMemo().SetText(Trim(head.Text()) + QStringLiteral(";") + CRLF + CRLF);
}

QString TCreateUserFrm::AlterIdentifiedClause() const {
  if (EnterpriseRdo->isChecked()) {
    if (FAuth == u"GLOBAL" && FExternalName == ExternalNameEd->text()) return QString();
    return ExternalNameEd->text().isEmpty()
               ? QStringLiteral("\tIDENTIFIED GLOBALLY")
               : FormatMsg(QStringLiteral("\tIDENTIFIED GLOBALLY '%s'"),
                           {QuoteSql(ExternalNameEd->text())});
  }
  if (OSAuthRdo->isChecked())
    return FAuth == u"EXTERNAL" ? QString() : QStringLiteral("\tIDENTIFIED EXTERNALLY");
  if (FAuth == u"PASSWORD" && PasswordEd->text().isEmpty()) return QString();
  return QStringLiteral("\tIDENTIFIED BY \"") + PasswordEd->text() + u'"';
}

void TCreateUserFrm::AddAlterUser() {
  QStringList clauses;
  const QString identified = AlterIdentifiedClause();
  if (!identified.isEmpty()) clauses << identified;
  auto changed = [&](QComboBox* combo, const QString& loaded, const char* templ) {
    const QString text = combo->currentText();
    if (!text.isEmpty() && text != loaded) clauses << FormatMsg(QString::fromLatin1(templ), {text});
  };
  changed(DefaultTableSpaceCmb, FDefaultTablespace, "\tDEFAULT TABLESPACE %s");
  changed(TemporaryTableSpaceCmb, FTemporaryTablespace, "\tTEMPORARY TABLESPACE %s");
  changed(ResourceProfileCmb, FProfile, "\tPROFILE %s");
  const bool expired = FStatus == u"EXPIRED" || FStatus == u"EXPIRED & LOCKED";
  if (DBAuthRdo->isChecked() && PasswordExpiredChk->isChecked() &&
      (!expired || !PasswordEd->text().isEmpty()))
    clauses << QStringLiteral("\tPASSWORD EXPIRE");
  const bool locked = FStatus == u"LOCKED" || FStatus == u"EXPIRED & LOCKED";
  if (!locked && LockRdo->isChecked()) clauses << QStringLiteral("\tACCOUNT LOCK");
  if (locked && UnLockRdo->isChecked()) clauses << QStringLiteral("\tACCOUNT UNLOCK");
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
  SqlText->setPlainText(SqlMemo().Text());
  RefreshOwnedPreview();
}

void TCreateUserFrm::AfterExecute() {
  if (Application()) Application()->esResetOraUserList(DBInfo());
}

}  // namespace kel
