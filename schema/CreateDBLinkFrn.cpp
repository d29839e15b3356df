#include "schema/CreateDBLinkFrn.h"

#include <QKeyEvent>

#include "ui_CreateDBLinkFrn.h"

namespace kel {

namespace {
const QString kPublic = QStringLiteral("PUBLIC");

// The catalog text of the link query with conditions appended on lines of their own. The link
// name is bound like the owner, so no typed text becomes part of the query.
QString LinkSql(TEsDBInfo* db, const QString& conditions) {
  return db->GetSQL(QStringLiteral("SchemaFrn.DBLink")) + u'\n' + conditions;
}
}  // namespace

TCreateDBLinkFrm::TCreateDBLinkFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateDBLinkFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateDBLinkFrm"));
  SetIniSave(false);

  // The account name is typed in upper case, as Oracle stores user names.
  connect(ui->UserNameEd, &QLineEdit::textEdited, this, [this](const QString& text) {
    const int caret = ui->UserNameEd->cursorPosition();
    if (text != text.toUpper()) {
      ui->UserNameEd->setText(text.toUpper());
      ui->UserNameEd->setCursorPosition(caret);
    }
  });
  connect(ui->CustomUserRB, &QAbstractButton::clicked, this, &TCreateDBLinkFrm::CustomUserRBClick);
  connect(ui->CurrentUserRB, &QAbstractButton::clicked, this,
          &TCreateDBLinkFrm::CurrentUserRBClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateDBLinkFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateDBLinkFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateDBLinkFrm::CancelBtnClick);
  SetAccountEnabled(false);
}

TCreateDBLinkFrm::~TCreateDBLinkFrm() {
  delete ui;
}

void TCreateDBLinkFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  DBLinkQry.SetSession(DBInfo());
  DBLinkQry1.SetSession(DBInfo());
  // Only a user allowed to create public links may tick the box.
  ui->PublicChk->setEnabled(DBInfo() && DBInfo()->PublicLinks());
}

void TCreateDBLinkFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FOwner = link->ParamByString(QStringLiteral("P_Schema"));
    FDBLinkName = link->ParamByString(QStringLiteral("P_DBLinkName"));
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    FOwner = link->ParamByString(QStringLiteral("ObjFrmOwner"));
  }
}

void TCreateDBLinkFrm::KelDllDBDlgFrmShow() {
  if (DBInfo() && !DBInfo()->OCIMode()) {
    // Links need the Oracle client: the dialog can only be cancelled.
    if (Application())
      Application()->esMsgBox(Application()->esGetMSG(QStringLiteral("Acm.OCIOnly")),
                              TMsgDlgType::Information, false);
    ui->OkBtn->hide();
    return;
  }
  if (FIsAlter) LoadDBLink();
  if (ui->DBLinkNameEd->isEnabled()) ui->DBLinkNameEd->setFocus(Qt::OtherFocusReason);
  FillServices();
}

void TCreateDBLinkFrm::FillServices() {
  const QString current = ui->ServerCmb->currentText();
  ui->ServerCmb->clear();
  if (DBInfo()) ui->ServerCmb->addItems(DBInfo()->Services());
  ui->ServerCmb->setCurrentIndex(ui->ServerCmb->findText(current, Qt::MatchFixedString));
  ui->ServerCmb->setEditText(current);
}

void TCreateDBLinkFrm::LoadDBLink() {
  setWindowTitle(QStringLiteral("Alter DB Link"));
  DBLinkQry.Close();
  DBLinkQry.SetSQL(
      LinkSql(DBInfo(), QStringLiteral(" AND DB_LINK = :P_DBLINK\n AND OWNER = :P_SHEMA ")),
      QStringLiteral("SchemaFrn.DBLink"));
  DBLinkQry.ParamByName(QStringLiteral("P_DBLINK")) = FDBLinkName.toUpper();
  DBLinkQry.ParamByName(QStringLiteral("P_SHEMA")) = FOwner;
  DBLinkQry.Open();
  if (DBLinkQry.Eof()) {
    // Dropped since it was browsed: no half-loaded dialog.
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("CreateDBLinkFrm.Gone")) : QString();
    throw EKelError(FormatMsg(text, {FDBLinkName}));
  }
  // An existing link is always dropped before it is created again.
  ui->DropLinkFirstChk->setChecked(true);
  ui->DropLinkFirstChk->setEnabled(false);
  ui->DBLinkNameEd->setText(DBLinkQry.FieldByName(QStringLiteral("DB Link")));
  ui->ServerCmb->setEditText(DBLinkQry.FieldByName(QStringLiteral("Host")));
  FLoadedPublic = DBLinkQry.FieldByName(QStringLiteral("Owner")).toUpper() == kPublic;
  if (FLoadedPublic) ui->PublicChk->setChecked(true);
  if (!Trim(DBLinkQry.FieldByName(QStringLiteral("User Name"))).isEmpty()) {
    ui->CustomUserRB->setChecked(true);
    SetAccountEnabled(true);
    ui->UserNameEd->setText(DBLinkQry.FieldByName(QStringLiteral("User Name")));
    // Oracle does not disclose a link's password: it is typed again.
    ui->PasswordEd->setText(DBLinkQry.FieldByName(QStringLiteral("Password")));
  }
  DBLinkQry.Close();
}

void TCreateDBLinkFrm::SetAccountEnabled(bool on) {
  for (QWidget* w : {static_cast<QWidget*>(ui->UserNameLbl), static_cast<QWidget*>(ui->UserNameEd),
                     static_cast<QWidget*>(ui->PasswordLbl), static_cast<QWidget*>(ui->PasswordEd)})
    w->setEnabled(on);
}

void TCreateDBLinkFrm::CustomUserRBClick() {
  Guarded([this] {
    SetAccountEnabled(true);
    ui->UserNameEd->setFocus(Qt::OtherFocusReason);
    BuildSql();
  });
}

void TCreateDBLinkFrm::CurrentUserRBClick() {
  Guarded([this] {
    ui->UserNameEd->clear();
    ui->PasswordEd->clear();
    SetAccountEnabled(false);
    BuildSql();
  });
}

bool TCreateDBLinkFrm::Validate() {
  const QString name = Trim(ui->DBLinkNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->DBLinkNameLbl, ui->DBLinkNameEd);
  if (!CheckName(ui->DBLinkNameLbl, ui->DBLinkNameEd, name, TNameKind::DbLink)) return false;
  if (Trim(ui->ServerCmb->currentText()).isEmpty())
    return CheckFail(ui->ServiceNameLbl, ui->ServerCmb);
  if (ui->CustomUserRB->isChecked()) {
    // CONNECT TO "" IDENTIFIED BY "" is refused by Oracle: both are required.
    const QString user = Trim(ui->UserNameEd->text());
    if (user.isEmpty()) return CheckFail(ui->UserNameLbl, ui->UserNameEd);
    if (!CheckName(ui->UserNameLbl, ui->UserNameEd, user)) return false;
    const QString password = ui->PasswordEd->text();
    if (password.isEmpty()) return CheckFail(ui->PasswordLbl, ui->PasswordEd);
    // The password is written in double quotes, which it therefore cannot hold.
    if (password.contains(u'"'))
      return CheckFail(ui->PasswordLbl, ui->PasswordEd, QStringLiteral("Acm.Valid The"));
  }
  return true;
}

QString TCreateDBLinkFrm::PrivateOwner() const {
  if (!FOwner.isEmpty() && FOwner.toUpper() != kPublic) return FOwner;
  return DBInfo() ? DBInfo()->UserName() : QString();
}

bool TCreateDBLinkFrm::LinkExists(const QString& name, const QString& owner) {
  DBLinkQry.Close();
  DBLinkQry.SetSQL(LinkSql(DBInfo(), QStringLiteral("AND DB_LINK = :P_DBLINK\nAND OWNER = :P_OWN")),
                   QStringLiteral("SchemaFrn.DBLink"));
  DBLinkQry.ParamByName(QStringLiteral("P_DBLINK")) = name.toUpper();
  DBLinkQry.ParamByName(QStringLiteral("P_OWN")) = owner;
  DBLinkQry.Open();
  const bool found = !DBLinkQry.Eof();
  DBLinkQry.Close();
  return found;
}

void TCreateDBLinkFrm::AddDropOriginal() {
  if (!FIsAlter) return;
  const bool renamed = FDBLinkName.toUpper() != Trim(ui->DBLinkNameEd->text()).toUpper();
  // A link that changes between private and public moves to another owner: the original goes
  // as it would on a rename.
  const bool moved = ui->PublicChk->isChecked() != FLoadedPublic;
  if (!renamed && !moved) return;
  if (FOwner.toUpper() == kPublic)
    SqlMemo().Add(QStringLiteral("DROP PUBLIC DATABASE LINK ") + FDBLinkName + u';');
  else
    SqlMemo().Add(QStringLiteral("DROP DATABASE LINK \"") + FDBLinkName + QStringLiteral("\";"));
}

void TCreateDBLinkFrm::AddDropExisting() {
  if (!ui->DropLinkFirstChk->isChecked()) return;
  const QString name = ui->DBLinkNameEd->text();
  const bool isPublic = ui->PublicChk->isChecked();
  if (!LinkExists(name, isPublic ? kPublic : PrivateOwner())) return;
  SqlMemo().Add((isPublic ? QStringLiteral("DROP PUBLIC DATABASE LINK ")
                          : QStringLiteral("DROP DATABASE LINK ")) +
                name + u';');
}

void TCreateDBLinkFrm::AddCreate() {
  SqlMemo().Add((ui->PublicChk->isChecked() ? QStringLiteral("CREATE PUBLIC DATABASE LINK ")
                                            : QStringLiteral("CREATE DATABASE LINK ")) +
                ui->DBLinkNameEd->text() + u' ');
}

void TCreateDBLinkFrm::AddConnectTo() {
  if (!ui->CustomUserRB->isChecked()) return;
  SqlMemo().Add(QStringLiteral("CONNECT TO \"%1\"\tIDENTIFIED BY \"%2\" ")
                    .arg(ui->UserNameEd->text(), ui->PasswordEd->text()));
}

void TCreateDBLinkFrm::AddUsing() {
  const QString service = Trim(ui->ServerCmb->currentText());
  if (service.isEmpty()) return;
  SqlMemo().Add(QStringLiteral("USING '%1'; ").arg(QuoteSql(service)));
}

void TCreateDBLinkFrm::BuildSql() {
  SqlMemo().Clear();
  if (!Trim(ui->DBLinkNameEd->text()).isEmpty()) {
    AddDropOriginal();
    AddDropExisting();
    AddCreate();
    AddConnectTo();
    AddUsing();
  }
  RefreshOwnedPreview();
}

void TCreateDBLinkFrm::AfterExecute() {
  if (!Application()) return;
  const int answer = Application()->esMsgDBox(
      QStringLiteral("DBLinkCreateMsg"), TMsgDlgType::Confirmation, TMsgDlgButtons::YesNo, false);
  if (answer == mrYes) Application()->esDBLinkTest(DBInfo(), Trim(ui->DBLinkNameEd->text()));
}

}  // namespace kel
