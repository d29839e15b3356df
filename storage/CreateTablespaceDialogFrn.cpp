#include "storage/CreateTablespaceDialogFrn.h"

#include <QKeyEvent>

#include "ui_CreateTablespaceDialogFrn.h"

namespace kel {

TCreateTablespaceDialogFrm::TCreateTablespaceDialogFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateTablespaceDialogFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTablespaceDialogFrm"));
  SetIniSave(false);
  for (QLineEdit* size : {ui->FileSizeEd, ui->NextEd, ui->MaxSizeEd})
    OnKeyPress(size, [](QKeyEvent* e) { return IsNonDigitKey(e); });
  connect(ui->AutoExtendChk, &QAbstractButton::clicked, this,
          &TCreateTablespaceDialogFrm::AutoExtendChkClick);
  connect(ui->MaxSizeChk, &QAbstractButton::clicked, this,
          &TCreateTablespaceDialogFrm::MaxSizeChkClick);
  connect(ui->AddOmfChk, &QAbstractButton::clicked, this,
          &TCreateTablespaceDialogFrm::AddOmfChkClick);
  connect(ui->DataFileListBtn, &QAbstractButton::clicked, this,
          &TCreateTablespaceDialogFrm::DataFileListBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTablespaceDialogFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this,
          &TCreateTablespaceDialogFrm::CancelBtnClick);
}

TCreateTablespaceDialogFrm::~TCreateTablespaceDialogFrm() {
  delete ui;
}

void TCreateTablespaceDialogFrm::AutoExtendChkClick() {
  // Every click starts the autoextension values afresh.
  ui->NextEd->clear();
  ui->NextCmb->setCurrentIndex(0);
  ui->MaxSizeEd->clear();
  ui->MaxSizeChk->setChecked(false);
  const bool on = ui->AutoExtendChk->isChecked();
  for (QWidget* w : {static_cast<QWidget*>(ui->NextLbl), static_cast<QWidget*>(ui->NextEd),
                     static_cast<QWidget*>(ui->NextCmb), static_cast<QWidget*>(ui->MaxSizeLbl),
                     static_cast<QWidget*>(ui->MaxSizeEd), static_cast<QWidget*>(ui->MaxSizeCmb),
                     static_cast<QWidget*>(ui->MaxSizeChk)})
    w->setEnabled(on);
}

void TCreateTablespaceDialogFrm::MaxSizeChkClick() {
  const bool unlimited = ui->MaxSizeChk->isChecked();
  ui->MaxSizeEd->setEnabled(!unlimited);
  ui->MaxSizeCmb->setEnabled(!unlimited);
  if (unlimited) ui->MaxSizeEd->clear();
}

void TCreateTablespaceDialogFrm::AddOmfChkClick() {
  const bool omf = ui->AddOmfChk->isChecked();
  ui->DatafileNameLbl->setEnabled(!omf);
  if (omf) ui->DatafileNameEd->clear();
  ui->DatafileNameEd->setReadOnly(omf);
  ui->DataFileListBtn->setEnabled(!omf);
}

void TCreateTablespaceDialogFrm::DataFileListBtnClick() {
  if (!Application()) return;
  // The list is the module's own "SELECTDATAFILE" dialog, opened through the host like any
  // other request; the chosen path comes back in the link.
  TXLink link(this);
  if (Application()->OpenDLL(DLLName(), nullptr, &link, QStringLiteral("SELECTDATAFILE")) == mrOk)
    ui->DatafileNameEd->setText(link.ParamByString(QStringLiteral("filename")));
}

bool TCreateTablespaceDialogFrm::Validate() {
  const bool omf = ui->AddOmfChk->isChecked();
  const QString name = Trim(ui->DatafileNameEd->text());
  if (!omf && name.isEmpty())
    return CheckFail(ui->DatafileNameLbl,
                     ui->DatafileNameEd->isReadOnly() ? nullptr : ui->DatafileNameEd);
  if (Trim(ui->FileSizeEd->text()).isEmpty()) return CheckFail(ui->FileSizeLbl, ui->FileSizeEd);
  const bool extend = ui->AutoExtendChk->isChecked();
  if (extend && Trim(ui->NextEd->text()).isEmpty()) return CheckFail(ui->NextLbl, ui->NextEd);
  if (extend && !ui->MaxSizeChk->isChecked() && Trim(ui->MaxSizeEd->text()).isEmpty())
    return CheckFail(ui->MaxSizeLbl, ui->MaxSizeEd);
  // Sizes Oracle cannot take, and a file the caller already holds.
  const QString range = QStringLiteral("Storage.SizeRange");
  if (!IsSizeNumber(ui->FileSizeEd->text()))
    return CheckFail(ui->FileSizeLbl, ui->FileSizeEd, range);
  if (extend && !IsSizeNumber(ui->NextEd->text())) return CheckFail(ui->NextLbl, ui->NextEd, range);
  if (extend && !ui->MaxSizeChk->isChecked() && !IsSizeNumber(ui->MaxSizeEd->text()))
    return CheckFail(ui->MaxSizeLbl, ui->MaxSizeEd, range);
  if (!omf && FTaken.contains(name)) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("Storage.FileTwice"), {name}, TMsgDlgType::Warning,
                               false);
    FocusControl(ui->DatafileNameEd);
    return false;
  }
  return true;
}

void TCreateTablespaceDialogFrm::OkBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    // The values go back to the caller: closing with them asks nothing.
    if (Tracker()) Tracker()->SetChanged(false);
    SetModalResult(mrOk);
  });
}

TFileSpec TCreateTablespaceDialogFrm::FileSpec() const {
  TFileSpec f;
  f.Omf = ui->AddOmfChk->isChecked();
  f.Name = f.Omf ? QString() : Trim(ui->DatafileNameEd->text());
  f.Size = Trim(ui->FileSizeEd->text());
  f.SizeUnit = ui->FileSizeCmb->currentText();
  f.Reuse = ui->ReuseChk->isChecked();
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

}  // namespace kel
