#include "storage/CreateRedoLogGroupFrn.h"

#include <QKeyEvent>

#include "ui_CreateRedoLogGroupFrn.h"

namespace kel {

void RedoLogSizeText(qint64 bytes, QString& number, QString& unit) {
  const bool mega = bytes >= 1048576;
  const double value = double(bytes) / (mega ? 1048576.0 : 1024.0);
  number = QString::number(value, 'f', 4);
  while (number.endsWith(u'0')) number.chop(1);
  if (number.endsWith(u'.')) number.chop(1);
  unit = mega ? QStringLiteral("MB") : QStringLiteral("KB");
}

TCreateRedoLogGroupFrm::TCreateRedoLogGroupFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateRedoLogGroupFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateRedoLogGroupFrm"));
  SetIniSave(false);
  OnKeyPress(ui->GroupEd, [this](QKeyEvent* e) { return GroupEdKeyPress(e); });
  OnKeyPress(ui->FileSizeEd, [this](QKeyEvent* e) { return GroupEdKeyPress(e); });
  connect(ui->FindFileBtn, &QAbstractButton::clicked, this,
          &TCreateRedoLogGroupFrm::FindFileBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this,
          &TCreateRedoLogGroupFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateRedoLogGroupFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateRedoLogGroupFrm::CancelBtnClick);
}

TCreateRedoLogGroupFrm::~TCreateRedoLogGroupFrm() {
  delete ui;
}

void TCreateRedoLogGroupFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
}

void TCreateRedoLogGroupFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAddGroup = LinkFlag(link, QStringLiteral("IsAddGroup"));
  FGroupNum = link->ParamByString(QStringLiteral("P_GroupNum"));
  FFileName = link->ParamByString(QStringLiteral("P_FileName"));
  FFileSize = link->ParamByInteger(QStringLiteral("P_FileSize"));
  // A member of 2 GB or more does not fit the integer parameter: its text is read whole.
  const QString sizeText = Trim(link->ParamByString(QStringLiteral("P_FileSize")));
  bool ok = false;
  if (const qint64 wide = sizeText.toLongLong(&ok); ok && wide != FFileSize) FFileSize = wide;
}

void TCreateRedoLogGroupFrm::Propose(const QString& key, const QString& column, QLineEdit* edit) {
  try {
    TempQry.Close();
    TempQry.LoadSQL(key);
    TempQry.Open();
    edit->setText(TempQry.FieldByName(column));
    TempQry.Close();
  } catch (const std::exception&) {
  }
}

void TCreateRedoLogGroupFrm::KelDllDBDlgFrmShow() {
  if (FIsAddGroup) {
    Propose(QStringLiteral("CreateRedoLogGroupFrn.MaxGroup#"), QStringLiteral("MaxGroup"),
            ui->GroupEd);
    Propose(QStringLiteral("CreateRedoLogGroupFrn.MaxGroupLogFile"), QStringLiteral("Member"),
            ui->FileNameEd);
    ui->FileSizeEd->setText(QStringLiteral("1024"));
    ui->FileSizeCmb->setCurrentText(QStringLiteral("KB"));
    ui->GroupEd->setEnabled(true);
    ui->FileSizeEd->setEnabled(true);
    ui->FileSizeCmb->setEnabled(true);
    ui->GroupEd->setFocus(Qt::OtherFocusReason);
    return;
  }
  ui->GroupEd->setText(FGroupNum);
  if (Application())
    setWindowTitle(Application()->esGetMSG(QStringLiteral("AddMemberFile")) +
                   QStringLiteral(" - ") + (DBInfo() ? DBInfo()->ConnectionName() : QString()));
  ui->FileNameEd->setText(FFileName);
  QString number, unit;
  RedoLogSizeText(FFileSize, number, unit);
  ui->FileSizeEd->setText(number);
  ui->FileSizeCmb->setCurrentText(unit);
  // A member has the size of its group.
  ui->GroupEd->setEnabled(false);
  ui->FileSizeEd->setEnabled(false);
  ui->FileSizeCmb->setEnabled(false);
  ui->FileNameEd->setFocus(Qt::OtherFocusReason);
}

bool TCreateRedoLogGroupFrm::GroupEdKeyPress(QKeyEvent* event) {
  return IsNonDigitKey(event);
}

void TCreateRedoLogGroupFrm::FindFileBtnClick() {
  QString name = ui->FileNameEd->text();
  if (!Application() || !Application()->SaveFileDialog(this, name)) return;
  ui->FileNameEd->setText(name);
  ui->FileNameEd->setFocus(Qt::OtherFocusReason);
}

bool TCreateRedoLogGroupFrm::Validate() {
  bool ok = false;
  Trim(ui->GroupEd->text()).toInt(&ok);
  if (!ok) return CheckFail(ui->GroupLbl, ui->GroupEd);
  if (Trim(ui->FileNameEd->text()).isEmpty())
    return CheckFail(ui->FileNameLbl, nullptr, QStringLiteral("Acm.Select The"));
  // A new member takes its group's size: the shown size is not used and not checked.
  if (FIsAddGroup) {
    const int size = Trim(ui->FileSizeEd->text()).toInt(&ok);
    if (!ok) return CheckFail(ui->FileSizeLbl, ui->FileSizeEd);
    if (size <= 0)
      return CheckFail(ui->FileSizeLbl, ui->FileSizeEd, QStringLiteral("Storage.SizeRange"));
  }
  return true;
}

QString TCreateRedoLogGroupFrm::UnitLetter() const {
  switch (ui->FileSizeCmb->currentIndex()) {
    case 0:
      return QStringLiteral("K");
    case 1:
      return QStringLiteral("M");
    default:
      return QString();
  }
}

QString TCreateRedoLogGroupFrm::ReuseWord() const {
  return ui->ReuseChk->isChecked() ? QStringLiteral("REUSE") : QString();
}

QString TCreateRedoLogGroupFrm::QuotedFileName() const {
  // A quote inside the path is doubled, or the literal would end there.
  return u'\'' + QuoteSql(ui->FileNameEd->text()) + u'\'';
}

void TCreateRedoLogGroupFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAddGroup)
    SqlMemo().Add(QStringLiteral("ALTER DATABASE ADD LOGFILE GROUP %1 %2 SIZE %3 %4 %5")
                      .arg(ui->GroupEd->text(), QuotedFileName(), ui->FileSizeEd->text(),
                           UnitLetter(), ReuseWord()));
  else
    SqlMemo().Add(QStringLiteral("ALTER DATABASE ADD LOGFILE MEMBER %1 %2 TO GROUP %3 ")
                      .arg(QuotedFileName(), ReuseWord(), ui->GroupEd->text()));
  RefreshOwnedPreview();
}

}  // namespace kel
