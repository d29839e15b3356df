#include "storage/CreateDataFileFrn.h"

#include <QKeyEvent>

#include "ui_CreateDataFileFrn.h"

namespace kel {

TCreateDataFileFrm::TCreateDataFileFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateDataFileFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateDataFileFrm"));
  SetIniSave(false);
  for (QLineEdit* size : {ui->FileSizeEd, ui->NextEd, ui->MaxSizeEd})
    OnKeyPress(size, [](QKeyEvent* e) { return IsNonDigitKey(e); });
  connect(ui->TableSpaceCmb, &QComboBox::currentIndexChanged, this,
          &TCreateDataFileFrm::TableSpaceCmbChange);
  // Bound to `toggled`, so loading an existing file's settings enables the fields too.
  connect(ui->AutoExtendChk, &QAbstractButton::toggled, this,
          &TCreateDataFileFrm::AutoExtendChkClick);
  connect(ui->MaxSizeChk, &QAbstractButton::toggled, this, &TCreateDataFileFrm::MaxSizeChkClick);
  connect(ui->OmfChk, &QAbstractButton::toggled, this, &TCreateDataFileFrm::OmfChkClick);
  connect(ui->DataFileListBtn, &QAbstractButton::clicked, this,
          &TCreateDataFileFrm::DataFileListBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateDataFileFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateDataFileFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateDataFileFrm::CancelBtnClick);
}

TCreateDataFileFrm::~TCreateDataFileFrm() {
  delete ui;
}

void TCreateDataFileFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  QStringList tablespaces;
  if (Application()) Application()->esOraTblspaceList(DBInfo(), tablespaces);
  QSignalBlocker block(ui->TableSpaceCmb);
  ui->TableSpaceCmb->clear();
  ui->TableSpaceCmb->addItems(tablespaces);
  UpperCaseItems(ui->TableSpaceCmb);
  ui->TableSpaceCmb->setCurrentIndex(-1);
}

void TCreateDataFileFrm::ReadParams(TXLink* link) {
  const QString verb = link->Verb();
  if (verb != QLatin1String("Alter") && verb != QLatin1String("Create")) return;
  FIsAlter = verb == QLatin1String("Alter");
  FTablespace = Trim(link->ParamByString(QStringLiteral("TableSpaceName")));
  FFileName = Trim(link->ParamByString(QStringLiteral("DataFileName")));
  QSignalBlocker block(ui->TableSpaceCmb);
  SelectComboText(ui->TableSpaceCmb, FTablespace);
  ui->DataFileNameEd->setText(FFileName);
}

void TCreateDataFileFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) {
    LoadFile();
    if (Application())
      setWindowTitle(FormatMsg(Application()->esGetMSG(QStringLiteral("CreateDataFileFrm.Alter")),
                               {FFileName}));
    // The file and its tablespace are fixed; creation-only choices do not apply.
    for (QWidget* w :
         {static_cast<QWidget*>(ui->TableSpaceCmb), static_cast<QWidget*>(ui->DataFileNameEd),
          static_cast<QWidget*>(ui->DataFileListBtn), static_cast<QWidget*>(ui->OmfChk),
          static_cast<QWidget*>(ui->ReuseChk)})
      w->setEnabled(false);
    ui->OnlineRdo->setEnabled(true);
    ui->OfflineRdo->setEnabled(true);
    ui->FileSizeEd->setFocus(Qt::OtherFocusReason);
    return;
  }
  LoadTablespaceKind();
  if (!FTablespace.isEmpty() && Application())
    setWindowTitle(
        FormatMsg(Application()->esGetMSG(QStringLiteral("CreateDataFileFrm.Add")), {FTablespace}));
  ui->DataFileNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateDataFileFrm::LoadFile() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateDataFileFrn.Info"));
  TempQry.ParamByName(QStringLiteral("P_TABLESPACE")) = FTablespace;
  TempQry.ParamByName(QStringLiteral("P_FILE")) = FFileName;
  TempQry.Open();
  if (TempQry.Eof()) {
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("Storage.ObjectGone")) : QString();
    throw EKelError(FormatMsg(text, {QStringLiteral("data file"), FFileName}));
  }
  auto field = [this](const char* column) {
    return Trim(TempQry.FieldByName(QString::fromLatin1(column)));
  };
  FTempFile = field("Contents").toUpper() == u"TEMPORARY";
  TFileSpec& file = FLoaded;
  file.Name = FFileName;
  SplitBytes(field("Bytes").toLongLong(), file.Size, file.SizeUnit);
  file.AutoExtend = field("Autoextensible").toUpper() == u"YES";
  if (file.AutoExtend) {
    SplitBytes(field("Next Bytes").toLongLong(), file.Next, file.NextUnit);
    file.Unlimited = field("Max Bytes").toUpper() == u"UNLIMITED";
    if (!file.Unlimited) SplitBytes(field("Max Bytes").toLongLong(), file.MaxSize, file.MaxUnit);
  }
  const QString status = field("Status").toUpper();
  // SYSTEM is how the dictionary reports the online files of the SYSTEM tablespace.
  FLoadedOnline = status == u"ONLINE" || status == u"SYSTEM";
  TempQry.Close();
  ShowFile(file);
}

void TCreateDataFileFrm::ShowFile(const TFileSpec& file) {
  ui->FileSizeEd->setText(file.Size);
  ui->FileSizeCmb->setCurrentText(file.SizeUnit);
  ui->AutoExtendChk->setChecked(file.AutoExtend);
  ui->NextEd->setText(file.Next);
  ui->NextCmb->setCurrentText(file.NextUnit);
  ui->MaxSizeChk->setChecked(file.Unlimited);
  ui->MaxSizeEd->setText(file.MaxSize);
  ui->MaxSizeCmb->setCurrentText(file.MaxUnit);
  ui->OnlineRdo->setChecked(FLoadedOnline);
  ui->OfflineRdo->setChecked(!FLoadedOnline);
}

void TCreateDataFileFrm::LoadTablespaceKind() {
  FTempFile = false;
  FBigfile = false;
  const QString tablespace = ui->TableSpaceCmb->currentText();
  if (tablespace.isEmpty()) return;
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateDataFileFrn.Tablespace"));
  TempQry.ParamByName(QStringLiteral("P_TABLESPACE")) = tablespace;
  TempQry.Open();
  FTempFile = Trim(TempQry.FieldByName(QStringLiteral("Contents"))).toUpper() == u"TEMPORARY";
  FBigfile = Trim(TempQry.FieldByName(QStringLiteral("Bigfile"))).toUpper() == u"YES";
  TempQry.Close();
}

void TCreateDataFileFrm::TableSpaceCmbChange() {
  if (!FIsAlter) Guarded([this] { LoadTablespaceKind(); });
}

void TCreateDataFileFrm::AutoExtendChkClick() {
  const bool on = ui->AutoExtendChk->isChecked();
  for (QWidget* w : {static_cast<QWidget*>(ui->NextLbl), static_cast<QWidget*>(ui->NextEd),
                     static_cast<QWidget*>(ui->NextCmb), static_cast<QWidget*>(ui->MaxSizeLbl),
                     static_cast<QWidget*>(ui->MaxSizeChk)})
    w->setEnabled(on);
  MaxSizeChkClick();
}

void TCreateDataFileFrm::MaxSizeChkClick() {
  const bool limited = ui->AutoExtendChk->isChecked() && !ui->MaxSizeChk->isChecked();
  ui->MaxSizeEd->setEnabled(limited);
  ui->MaxSizeCmb->setEnabled(limited);
}

void TCreateDataFileFrm::OmfChkClick() {
  const bool omf = ui->OmfChk->isChecked();
  ui->DataFileNameLbl->setEnabled(!omf);
  if (omf) ui->DataFileNameEd->clear();
  ui->DataFileNameEd->setReadOnly(omf);
  ui->DataFileListBtn->setEnabled(!omf);
  ui->ReuseChk->setEnabled(!omf);
  if (omf) ui->ReuseChk->setChecked(false);
}

void TCreateDataFileFrm::DataFileListBtnClick() {
  if (!Application()) return;
  TXLink link(this);
  if (Application()->OpenDLL(DLLName(), nullptr, &link, QStringLiteral("SELECTDATAFILE")) == mrOk)
    ui->DataFileNameEd->setText(link.ParamByString(QStringLiteral("filename")));
}

bool TCreateDataFileFrm::CheckSize(QLabel* label, QLineEdit* edit, bool required) {
  const QString text = Trim(edit->text());
  if (text.isEmpty()) return required ? CheckFail(label, edit) : true;
  if (!IsSizeNumber(text)) return CheckFail(label, edit, QStringLiteral("Storage.SizeRange"));
  return true;
}

bool TCreateDataFileFrm::Validate() {
  if (!FIsAlter) {
    if (ui->TableSpaceCmb->currentIndex() < 0)
      return CheckFail(ui->TableSpaceLbl, ui->TableSpaceCmb, QStringLiteral("Acm.Select The"));
    if (!ui->OmfChk->isChecked() && Trim(ui->DataFileNameEd->text()).isEmpty())
      return CheckFail(ui->DataFileNameLbl, ui->DataFileNameEd);
  }
  if (!CheckSize(ui->FileSizeLbl, ui->FileSizeEd, true)) return false;
  if (ui->AutoExtendChk->isChecked()) {
    if (!CheckSize(ui->NextLbl, ui->NextEd, false)) return false;
    if (!ui->MaxSizeChk->isChecked() && !CheckSize(ui->MaxSizeLbl, ui->MaxSizeEd, false))
      return false;
  }
  if (!FIsAlter && FBigfile) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("Storage.BigfileOneFile"), TMsgDlgType::Warning,
                               TMsgDlgButtons::Ok, false);
    FocusControl(ui->TableSpaceCmb);
    return false;
  }
  return true;
}

TFileSpec TCreateDataFileFrm::Edited() const {
  TFileSpec f;
  f.Omf = ui->OmfChk->isChecked();
  f.Name = FIsAlter ? FFileName : f.Omf ? QString() : Trim(ui->DataFileNameEd->text());
  f.Size = Trim(ui->FileSizeEd->text());
  f.SizeUnit = ui->FileSizeCmb->currentText();
  f.Reuse = !FIsAlter && ui->ReuseChk->isChecked();
  f.AutoExtend = ui->AutoExtendChk->isChecked();
  if (f.AutoExtend) {
    f.Next = Trim(ui->NextEd->text());
    f.NextUnit = ui->NextCmb->currentText();
    f.Unlimited = ui->MaxSizeChk->isChecked();
    if (!f.Unlimited) {
      f.MaxSize = Trim(ui->MaxSizeEd->text());
      f.MaxUnit = ui->MaxSizeCmb->currentText();
    }
  }
  return f;
}

void TCreateDataFileFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAlter) {
    for (const QString& line :
         AlterFileLines(FTempFile, FLoaded, FLoadedOnline, Edited(), ui->OnlineRdo->isChecked()))
      SqlMemo().Add(line);
  } else {
    SqlMemo().Add(AddFileLine(ui->TableSpaceCmb->currentText(), FTempFile, Edited()));
  }
  RefreshOwnedPreview();
}

}  // namespace kel
