#include "storage/CreateTablespaceFrn.h"

#include <QKeyEvent>

#include "plugin/KelTreeList.h"
#include "storage/CreateTablespaceDialogFrn.h"
#include "ui_CreateTablespaceFrn.h"

namespace kel {

namespace {

// The combo's choice as a clause word; the first item ("Default") writes nothing.
QString Choice(const QComboBox* combo) {
  return combo->currentIndex() > 0 ? combo->currentText() : QString();
}

void SelectOrDefault(QComboBox* combo, const QString& text) {
  const int index = combo->findText(text);
  combo->setCurrentIndex(index < 0 ? 0 : index);
}

// A byte count from the catalog as a size the file clause writes ("100M").
void SetBytes(const QString& bytes, QString& number, QString& unit) {
  SplitBytes(Trim(bytes).toLongLong(), number, unit);
}

}  // namespace

TCreateTablespaceFrm::TCreateTablespaceFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateTablespaceFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTablespaceFrm"));
  SetIniSave(false);

  TKelTreeList* list = ui->DataFileTL;
  const struct {
    const char* Name;
    const char* Caption;
    int Width;
  } columns[] = {
      {"DataFileTLFileName", "File Name", 240}, {"DataFileTLSize", "Size", 70},
      {"DataFileTLReuse", "Reuse", 50},         {"DataFileTLAutoExtend", "Auto Extend", 85},
      {"DataFileTLNext", "Next", 60},           {"DataFileTLMaxSize", "Max Size", 80}};
  for (const auto& c : columns) {
    TKelTreeColumn column;
    column.Name = QLatin1String(c.Name);
    column.Caption = QLatin1String(c.Caption);
    column.Editable = false;
    column.Width = c.Width;
    list->AddColumn(column);
  }
  OnKeyPress(ui->UniformSizeEd, [](QKeyEvent* e) { return IsNonDigitKey(e); });
  for (QAbstractButton* kind : {static_cast<QAbstractButton*>(ui->PermanentRdo),
                                static_cast<QAbstractButton*>(ui->TemporaryRdo),
                                static_cast<QAbstractButton*>(ui->UndoRdo)})
    connect(kind, &QAbstractButton::toggled, this, &TCreateTablespaceFrm::ContentsRdoClick);
  connect(ui->ExtentMgmtCmb, &QComboBox::currentIndexChanged, this,
          &TCreateTablespaceFrm::ExtentMgmtCmbChange);
  connect(ui->StatusCmb, &QComboBox::currentIndexChanged, this,
          &TCreateTablespaceFrm::StatusCmbChange);
  connect(ui->FileTypeCmb, &QComboBox::currentIndexChanged, this,
          &TCreateTablespaceFrm::ApplyRules);
  connect(ui->AddDataFileBtn, &QAbstractButton::clicked, this,
          &TCreateTablespaceFrm::AddDataFileBtnClick);
  connect(ui->RemoveDataFileBtn, &QAbstractButton::clicked, this,
          &TCreateTablespaceFrm::RemoveDataFileBtnClick);
  connect(list, &TKelTreeList::FocusedRowChanged, this,
          &TCreateTablespaceFrm::DataFileTLFocusedRowChanged);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateTablespaceFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTablespaceFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateTablespaceFrm::CancelBtnClick);
  ApplyRules();
}

TCreateTablespaceFrm::~TCreateTablespaceFrm() {
  delete ui;
}

void TCreateTablespaceFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
}

void TCreateTablespaceFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
  FTablespace = Trim(link->ParamByString(QStringLiteral("TableSpace")));
  ui->TablespaceNameEd->setText(FTablespace);
}

void TCreateTablespaceFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) {
    LoadTablespace();
    if (Application())
      setWindowTitle(FormatMsg(Application()->esGetMSG(QStringLiteral("CreateTablespaceFrm.Alter")),
                               {FTablespace}));
  }
  ApplyRules();
  ui->TablespaceNameEd->setFocus(Qt::OtherFocusReason);
}

// ---------------------------------------------------------------------------------------------
// Loading an existing tablespace.

void TCreateTablespaceFrm::LoadTablespace() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateTablespaceFrn.Info"));
  TempQry.ParamByName(QStringLiteral("P_NAME")) = FTablespace;
  TempQry.Open();
  if (TempQry.Eof()) {
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("Storage.ObjectGone")) : QString();
    throw EKelError(FormatMsg(text, {QStringLiteral("tablespace"), FTablespace}));
  }
  auto field = [this](const char* column) {
    return Trim(TempQry.FieldByName(QString::fromLatin1(column))).toUpper();
  };
  TTablespaceDef& def = FLoaded;
  def.Name = FTablespace;
  const QString contents = field("Contents");
  def.Kind = contents == u"TEMPORARY" ? TTablespaceKind::Temporary
             : contents == u"UNDO"    ? TTablespaceKind::Undo
                                      : TTablespaceKind::Permanent;
  def.FileType =
      field("Bigfile") == u"YES" ? QStringLiteral("BIGFILE") : QStringLiteral("SMALLFILE");
  const qint64 block = field("Block Size").toLongLong();
  def.BlockSize = block > 0 ? QString::number(block / 1024) + u'K' : QString();
  def.Logging = field("Logging");
  def.ForceLogging = field("Force Logging") == u"YES";
  const QString status = field("Status");
  def.Status = status == u"OFFLINE" ? QStringLiteral("OFFLINE") : QStringLiteral("ONLINE");
  def.ReadOnly = status == u"READ ONLY";
  const QString allocation = field("Allocation Type");
  if (field("Extent Management") == u"LOCAL")
    def.ExtentManagement =
        allocation == u"UNIFORM" ? QStringLiteral("UNIFORM") : QStringLiteral("AUTOALLOCATE");
  if (def.ExtentManagement == u"UNIFORM") {
    QString number, unit;
    SetBytes(field("Next Extent"), number, unit);
    def.UniformSize = SizeText(number, unit);
  }
  def.SegmentSpace = field("Segment Space Management");
  const QString retention = field("Retention");
  def.Retention = retention == u"GUARANTEE" || retention == u"NOGUARANTEE" ? retention : QString();
  TempQry.Close();
  LoadFiles();
  ShowDefinition(def);
}

void TCreateTablespaceFrm::LoadFiles() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateTablespaceFrn.Files"));
  TempQry.ParamByName(QStringLiteral("P_NAME")) = FTablespace;
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next()) {
    TFileSpec file;
    file.Name = TempQry.FieldByName(QStringLiteral("File Name"));
    SetBytes(TempQry.FieldByName(QStringLiteral("Bytes")), file.Size, file.SizeUnit);
    file.AutoExtend =
        Trim(TempQry.FieldByName(QStringLiteral("Autoextensible"))).toUpper() == u"YES";
    if (file.AutoExtend) {
      SetBytes(TempQry.FieldByName(QStringLiteral("Next Bytes")), file.Next, file.NextUnit);
      const QString max = Trim(TempQry.FieldByName(QStringLiteral("Max Bytes")));
      file.Unlimited = max.toUpper() == u"UNLIMITED";
      if (!file.Unlimited) SetBytes(max, file.MaxSize, file.MaxUnit);
    }
    FLoaded.Files << file;
  }
  TempQry.Close();
}

void TCreateTablespaceFrm::ShowDefinition(const TTablespaceDef& def) {
  ui->TablespaceNameEd->setText(def.Name);
  ui->PermanentRdo->setChecked(def.Kind == TTablespaceKind::Permanent);
  ui->TemporaryRdo->setChecked(def.Kind == TTablespaceKind::Temporary);
  ui->UndoRdo->setChecked(def.Kind == TTablespaceKind::Undo);
  SelectOrDefault(ui->FileTypeCmb, def.FileType);
  SelectOrDefault(ui->BlockSizeCmb, def.BlockSize);
  SelectOrDefault(ui->LoggingCmb, def.Logging);
  ui->ForceLoggingChk->setChecked(def.ForceLogging);
  SelectOrDefault(ui->StatusCmb, def.Status);
  ui->ReadOnlyChk->setChecked(def.ReadOnly);
  SelectOrDefault(ui->ExtentMgmtCmb, def.ExtentManagement);
  if (!def.UniformSize.isEmpty()) {
    ui->UniformSizeEd->setText(def.UniformSize.chopped(1));
    SelectOrDefault(ui->UniformSizeCmb, def.UniformSize.right(1) + u'B');
  }
  SelectOrDefault(ui->SegmentSpaceCmb, def.SegmentSpace);
  SelectOrDefault(ui->RetentionCmb, def.Retention);
  for (const TFileSpec& file : def.Files) AddFileRow(file);
}

// ---------------------------------------------------------------------------------------------
// Controls.

TTablespaceKind TCreateTablespaceFrm::Kind() const {
  if (ui->TemporaryRdo->isChecked()) return TTablespaceKind::Temporary;
  if (ui->UndoRdo->isChecked()) return TTablespaceKind::Undo;
  return TTablespaceKind::Permanent;
}

void TCreateTablespaceFrm::ContentsRdoClick() {
  // The extent choices follow the kind; a choice the kind does not take falls back to Default.
  const QString extent = ui->ExtentMgmtCmb->currentText();
  {
    QSignalBlocker block(ui->ExtentMgmtCmb);
    ui->ExtentMgmtCmb->clear();
    ui->ExtentMgmtCmb->addItems(ExtentChoices(Kind()));
    SelectOrDefault(ui->ExtentMgmtCmb, extent);
  }
  ApplyRules();
}

void TCreateTablespaceFrm::ExtentMgmtCmbChange() {
  ApplyRules();
}

void TCreateTablespaceFrm::StatusCmbChange() {
  ApplyRules();
}

void TCreateTablespaceFrm::ApplyRules() {
  const TTablespaceKind kind = Kind();
  const bool create = !FIsAlter;
  for (QWidget* w :
       {static_cast<QWidget*>(ui->PermanentRdo), static_cast<QWidget*>(ui->TemporaryRdo),
        static_cast<QWidget*>(ui->UndoRdo), static_cast<QWidget*>(ui->FileTypeCmb),
        static_cast<QWidget*>(ui->ExtentMgmtCmb)})
    w->setEnabled(create);
  ui->BlockSizeCmb->setEnabled(create && TakesBlockSize(kind));
  ui->SegmentSpaceCmb->setEnabled(create && TakesSegmentSpace(kind));
  ui->LoggingCmb->setEnabled(TakesLogging(kind));
  ui->ForceLoggingChk->setEnabled(TakesLogging(kind));
  // A new undo tablespace always starts online.
  ui->StatusCmb->setEnabled(FIsAlter ? TakesStatus(kind) : kind == TTablespaceKind::Permanent);
  ui->ReadOnlyChk->setEnabled(FIsAlter && TakesReadOnly(kind) &&
                              ui->StatusCmb->currentText() != u"OFFLINE");
  ui->RetentionLbl->setEnabled(TakesRetention(kind));
  ui->RetentionCmb->setEnabled(TakesRetention(kind));
  const bool uniform = create && ui->ExtentMgmtCmb->currentText() == u"UNIFORM";
  ui->UniformSizeLbl->setEnabled(uniform);
  ui->UniformSizeEd->setEnabled(uniform);
  ui->UniformSizeCmb->setEnabled(uniform);
  // A bigfile tablespace has exactly one file: none can be added once it exists.
  ui->AddDataFileBtn->setEnabled(create || FLoaded.FileType != u"BIGFILE");
  DataFileTLFocusedRowChanged();
}

void TCreateTablespaceFrm::AddFileRow(const TFileSpec& file) {
  TKelTreeList* list = ui->DataFileTL;
  const int row = list->AddRow();
  list->SetCell(row, 0, file.Omf ? QStringLiteral("(Oracle managed)") : file.Name);
  list->SetCell(row, 1, SizeText(file.Size, file.SizeUnit));
  list->SetCell(row, 2, file.Reuse && !file.Omf ? QStringLiteral("Yes") : QString());
  list->SetCell(row, 3, file.AutoExtend ? QStringLiteral("ON") : QStringLiteral("OFF"));
  list->SetCell(row, 4, file.AutoExtend ? SizeText(file.Next, file.NextUnit) : QString());
  list->SetCell(row, 5, MaxSizeText(file));
  FFiles << file;
  list->SetFocusedRow(row);
}

void TCreateTablespaceFrm::AddDataFileBtnClick() {
  Guarded([this] {
    TCreateTablespaceDialogFrm dialog(this);
    dialog.SetParentControl(this);
    QStringList taken;
    for (const TFileSpec& file : FFiles)
      if (!file.Omf) taken << file.Name;
    dialog.SetTakenFiles(taken);
    if (dialog.ShowModal() == mrOk) AddFileRow(dialog.FileSpec());
  });
}

void TCreateTablespaceFrm::RemoveDataFileBtnClick() {
  const int row = ui->DataFileTL->FocusedRow();
  // Files of an existing tablespace are not dropped here.
  if (row < FLoaded.Files.size() || row >= FFiles.size()) return;
  ui->DataFileTL->DeleteRow(row);
  FFiles.removeAt(row);
  DataFileTLFocusedRowChanged();
}

void TCreateTablespaceFrm::DataFileTLFocusedRowChanged() {
  const int row = ui->DataFileTL->FocusedRow();
  ui->RemoveDataFileBtn->setEnabled(row >= FLoaded.Files.size() && row < FFiles.size());
}

// ---------------------------------------------------------------------------------------------
// Validation and statements.

bool TCreateTablespaceFrm::Validate() {
  const QString name = Trim(ui->TablespaceNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->TablespaceNameLbl, ui->TablespaceNameEd);
  if (!CheckName(ui->TablespaceNameLbl, ui->TablespaceNameEd, name)) return false;
  if (!FIsAlter && ui->FileTypeCmb->currentText() == u"BIGFILE" && FFiles.size() > 1) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("Storage.BigfileOneFile"), TMsgDlgType::Warning,
                               TMsgDlgButtons::Ok, false);
    FocusControl(ui->DataFileTL);
    return false;
  }
  if (ui->UniformSizeEd->isEnabled() && !Trim(ui->UniformSizeEd->text()).isEmpty() &&
      !IsSizeNumber(ui->UniformSizeEd->text()))
    return CheckFail(ui->UniformSizeLbl, ui->UniformSizeEd, QStringLiteral("Storage.SizeRange"));
  return true;
}

TTablespaceDef TCreateTablespaceFrm::Edited() const {
  TTablespaceDef def;
  def.Name = Trim(ui->TablespaceNameEd->text());
  def.Kind = Kind();
  def.FileType = Choice(ui->FileTypeCmb);
  def.Files = FFiles;
  def.BlockSize = Choice(ui->BlockSizeCmb);
  def.Logging = Choice(ui->LoggingCmb);
  def.ForceLogging = ui->ForceLoggingChk->isChecked();
  def.Status = Choice(ui->StatusCmb);
  def.ReadOnly = ui->ReadOnlyChk->isChecked();
  def.ExtentManagement = Choice(ui->ExtentMgmtCmb);
  if (ui->UniformSizeEd->isEnabled())
    def.UniformSize = SizeText(ui->UniformSizeEd->text(), ui->UniformSizeCmb->currentText());
  def.SegmentSpace = Choice(ui->SegmentSpaceCmb);
  def.Retention = Choice(ui->RetentionCmb);
  return def;
}

void TCreateTablespaceFrm::BuildSql() {
  SqlMemo().Clear();
  const QStringList lines =
      FIsAlter ? AlterTablespaceLines(FLoaded, Edited()) : CreateTablespaceLines(Edited());
  for (const QString& line : lines) SqlMemo().Add(line);
  RefreshOwnedPreview();
}

}  // namespace kel
