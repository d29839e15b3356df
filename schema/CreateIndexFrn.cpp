#include "schema/CreateIndexFrn.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <QTabBar>
#include <algorithm>

#include "plugin/KelTreeList.h"
#include "ui_CreateIndexFrn.h"

namespace kel {

namespace {

const QString kDefaultTablespace = QStringLiteral("[Default]");
const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

// Cells of the column lists.
enum { c1Name = 0, c1Type = 1 };
enum { c2Desc = 0, c2Name = 1, c2Type = 2 };

TKelTreeColumn Col(const char* name, const char* caption, TCellEditor editor, int width,
                   bool editable) {
  TKelTreeColumn c;
  c.Name = QString::fromLatin1(name);
  c.Caption = QString::fromLatin1(caption);
  c.Editor = editor;
  c.Width = width;
  c.Editable = editable;
  return c;
}

// A numeric column read as a number; text that is not one ("DEFAULT") counts as 0.
double AsNumber(const QString& text) {
  bool ok = false;
  const double value = Trim(text).toDouble(&ok);
  return ok ? value : 0;
}

// Fits the columns of a list to its texts. Only the longest texts of a column are measured:
// a table of a thousand columns would otherwise measure every cell.
void FitColumns(TKelTreeList* list) {
  const QFontMetrics metrics(list->font());
  for (int col = 0; col < list->ColumnCount(); ++col) {
    qsizetype longest = 0;
    for (int row = 0; row < list->RowCount(); ++row)
      longest = std::max(longest, list->Cell(row, col).size());
    int width = metrics.horizontalAdvance(list->Column(col).Caption);
    for (int row = 0; row < list->RowCount(); ++row) {
      const QString text = list->Cell(row, col);
      if (text.size() * 5 >= longest * 4) width = std::max(width, metrics.horizontalAdvance(text));
    }
    list->setColumnWidth(col, width + 16);
  }
}

// Selects `text`; an item the list does not hold (the index's table is not among the tables
// the host lists for its owner) is added first, so the loaded index is shown as it is.
void SelectOrAdd(QComboBox* combo, const QString& text) {
  TKelBaseFrm::SelectComboText(combo, text);
  if (combo->currentIndex() >= 0 || text.isEmpty()) return;
  combo->addItem(text);
  combo->setCurrentIndex(combo->count() - 1);
}

}  // namespace

QString IndexBytesToKb(const QString& bytes) {
  const QString text = Trim(bytes);
  if (text.isEmpty()) return {};
  return QString::number(AsNumber(text) / 1024.0, 'g', QLocale::FloatingPointShortest);
}

TCreateIndexFrm::TCreateIndexFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateIndexFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateIndexFrm"));
  SetIniSave(false);
  // The kind radio buttons choose the inner page; its tabs are not for the user.
  ui->GeneralPage->tabBar()->hide();

  for (const TKelTreeColumn& c :
       {Col("TableTV1FieldName", "Field Name", TCellEditor::Text, 140, false),
        Col("TableTV1Type", "Type", TCellEditor::Text, 110, false)})
    ui->TableTV1->AddColumn(c);
  for (const TKelTreeColumn& c :
       {Col("TableTV2Desc", "Desc", TCellEditor::Check, 45, true),
        Col("TableTV2FieldName", "Field Name", TCellEditor::Text, 140, false),
        Col("TableTV2Type", "Type", TCellEditor::Text, 110, false)})
    ui->TableTV2->AddColumn(c);
  for (const TKelTreeColumn& c :
       {Col("ClusterTV1FieldName", "Field Name", TCellEditor::Text, 160, false),
        Col("ClusterTV1Type", "Type", TCellEditor::Text, 120, false)})
    ui->ClusterTV1->AddColumn(c);

  for (QLineEdit* edit : {ui->ParallelEd, ui->InitialExtentEd, ui->NextExtentEd, ui->PctIncreaseEd,
                          ui->MinExtentsEd, ui->MaxExtentsEd, ui->PercentFreeEd, ui->IniTransEd,
                          ui->MaxTransEd, ui->FreeListsEd, ui->FreeListGroupsEd})
    OnKeyPress(edit, [this](QKeyEvent* e) { return ValueEdKeyPress(e); });

  connect(ui->TableRadio, &QAbstractButton::toggled, this, &TCreateIndexFrm::KindRadioClick);
  connect(ui->ClusterRadio, &QAbstractButton::toggled, this, &TCreateIndexFrm::KindRadioClick);
  connect(ui->TableIndexSchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateIndexFrm::TableIndexSchemaCmbChange);
  connect(ui->TableIndexTblCmb, &QComboBox::currentIndexChanged, this,
          &TCreateIndexFrm::TableIndexTblCmbChange);
  connect(ui->ClusterIndexSchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateIndexFrm::ClusterIndexSchemaCmbChange);
  connect(ui->ClusterIndexTblCmb, &QComboBox::currentIndexChanged, this,
          &TCreateIndexFrm::ClusterIndexTblCmbChange);

  connect(ui->TableRightBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::TableRightBtnClick);
  connect(ui->TableRightAllBtn, &QAbstractButton::clicked, this,
          &TCreateIndexFrm::TableRightAllBtnClick);
  connect(ui->TableLeftBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::TableLeftBtnClick);
  connect(ui->TableLeftAllBtn, &QAbstractButton::clicked, this,
          &TCreateIndexFrm::TableLeftAllBtnClick);
  connect(ui->TableUpperBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::TableUpperBtnClick);
  connect(ui->TableLowerBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::TableLowerBtnClick);
  connect(ui->TableTV1, &TKelTreeList::RowDoubleClicked, this, [this](int row) {
    if (!ui->TableRightBtn->isEnabled()) return;
    ui->TableTV1->SetFocusedRow(row);
    TableRightBtnClick();
  });
  connect(ui->TableTV2, &TKelTreeList::RowDoubleClicked, this, [this](int row) {
    if (!ui->TableLeftBtn->isEnabled()) return;
    ui->TableTV2->SetFocusedRow(row);
    TableLeftBtnClick();
  });
  for (TKelTreeList* list : {ui->TableTV1, ui->TableTV2}) {
    connect(list, &TKelTreeList::FocusedRowChanged, this, &TCreateIndexFrm::UpdateState);
    connect(list, &TKelTreeList::RowsChanged, this, &TCreateIndexFrm::UpdateState);
  }

  for (QCheckBox* box :
       {ui->BitmapChk, ui->NosortChk, ui->ReverseChk, ui->UniqueChk, ui->ComputeChk, ui->OnlineChk})
    connect(box, &QAbstractButton::toggled, this,
            [this, box](bool checked) { OptionClick(box, checked); });
  for (QAbstractButton* box : {static_cast<QAbstractButton*>(ui->ParallelChk),
                               static_cast<QAbstractButton*>(ui->KeyCompressionChk),
                               static_cast<QAbstractButton*>(ui->KeyValueRB),
                               static_cast<QAbstractButton*>(ui->PrefixDefaultRB)})
    connect(box, &QAbstractButton::toggled, this, &TCreateIndexFrm::UpdateState);

  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateIndexFrm::CancelBtnClick);
  UpdateState();
}

TCreateIndexFrm::~TCreateIndexFrm() {
  delete ui;
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateIndexFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  for (TKelQuery* q : {&ColQry, &TempQry, &AlterQry01}) q->SetSession(DBInfo());
  for (QComboBox* combo : {ui->SchemaCmb, ui->TableIndexSchemaCmb, ui->ClusterIndexSchemaCmb}) {
    const QSignalBlocker block(combo);
    FillSchemaCombo(combo);
    UpperCaseItems(combo);
  }
  ui->TableSpaceCmb->clear();
  QStringList list;
  if (Application()) Application()->esOraTblspaceList(DBInfo(), list);
  ui->TableSpaceCmb->addItem(kDefaultTablespace);
  ui->TableSpaceCmb->addItems(list);
  ui->TableSpaceCmb->setCurrentIndex(0);
}

void TCreateIndexFrm::ReadParams(TXLink* link) {
  const QString verb = link->Verb();
  if (verb == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FIndexName = link->ParamByString(QStringLiteral("P_ObjName"));
  } else if (verb == QLatin1String("TableCreate")) {
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FPresetTable = link->ParamByString(QStringLiteral("P_TblName"));
  } else if (verb == QLatin1String("ChangeOwner")) {
    FSchema = link->ParamByString(QStringLiteral("ObjFrmOwner"));
  }
}

void TCreateIndexFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter)
    LoadIndex();
  else
    FillCreate();
  if (ui->IndexNameEd->isEnabled()) ui->IndexNameEd->setFocus(Qt::OtherFocusReason);
  UpdateState();
}

void TCreateIndexFrm::FillCreate() {
  if (!Trim(FSchema).isEmpty())
    for (QComboBox* combo : {ui->SchemaCmb, ui->TableIndexSchemaCmb, ui->ClusterIndexSchemaCmb}) {
      const QSignalBlocker block(combo);
      SelectComboText(combo, Trim(FSchema));
    }
  TableIndexSchemaCmbChange();
  ClusterIndexSchemaCmbChange();
  const QString table = Trim(FPresetTable);
  if (!table.isEmpty()) {
    SelectComboText(ui->TableIndexTblCmb, table);
    if (ui->TableIndexTblCmb->currentIndex() < 0)
      ShowMissing("CreateIndexFrn.TableNotFound", ui->TableIndexSchemaCmb->currentText(), table);
  }
  KindRadioClick();
}

void TCreateIndexFrm::ShowMissing(const char* key, const QString& schema, const QString& name) {
  if (!Application()) return;
  const QString text = FormatMsg(Application()->esGetMSG(QString::fromLatin1(key)), {schema, name});
  Application()->esMsgBox(text, TMsgDlgType::Warning, false);
}

// ---------------------------------------------------------------------------------------------
// Pickers.

void TCreateIndexFrm::KindRadioClick() {
  ui->GeneralPage->setCurrentIndex(ui->ClusterRadio->isChecked() ? 1 : 0);
}

bool TCreateIndexFrm::IsTableKind() const {
  return !ui->ClusterRadio->isChecked();
}

void TCreateIndexFrm::TableIndexSchemaCmbChange() {
  Guarded([this] { FillTables(); });
}

void TCreateIndexFrm::FillTables() {
  QStringList tables;
  const QString schema = ui->TableIndexSchemaCmb->currentText();
  if (Application() && !schema.isEmpty()) Application()->esOraTableList(DBInfo(), schema, tables);
  {
    const QSignalBlocker block(ui->TableIndexTblCmb);
    ui->TableIndexTblCmb->clear();
    ui->TableIndexTblCmb->addItems(tables);
    ui->TableIndexTblCmb->setCurrentIndex(-1);
  }
  TableIndexTblCmbChange();
}

void TCreateIndexFrm::TableIndexTblCmbChange() {
  ui->TableTV1->ClearRows();
  ui->TableTV2->ClearRows();
  RebuildKeyValueCmb();
  const QString table = ui->TableIndexTblCmb->currentText();
  if (table.isEmpty()) {
    UpdateState();
    return;
  }
  Guarded([&] {
    ColQry.Close();
    ColQry.LoadSQL(QStringLiteral("SchTableNrn.Column"));
    ColQry.ParamByName(QStringLiteral("P_OWN")) = ui->TableIndexSchemaCmb->currentText();
    ColQry.ParamByName(QStringLiteral("P_TABLE")) = table;
    ColQry.Open();
    QList<QStringList> rows;
    for (; !ColQry.Eof(); ColQry.Next()) {
      QString type = ColQry.FieldByName(QStringLiteral("Data Type"));
      const QString length = Trim(ColQry.FieldByName(QStringLiteral("Length")));
      if (!length.isEmpty()) type += u'(' + length + u')';
      rows << QStringList{ColQry.FieldByName(QStringLiteral("Column")), type};
    }
    ColQry.Close();
    std::stable_sort(rows.begin(), rows.end(),
                     [](const QStringList& a, const QStringList& b) { return a[0] < b[0]; });
    ui->TableTV1->AddRows(rows);
    if (!rows.isEmpty()) ui->TableTV1->SetFocusedRow(0);
    // A table always has a column: none means it was dropped since the list was read.
    if (rows.isEmpty() && !FLoading)
      ShowMissing("CreateIndexFrn.TableNotFound", ui->TableIndexSchemaCmb->currentText(), table);
  });
  FitColumns(ui->TableTV1);
  UpdateState();
}

void TCreateIndexFrm::ClusterIndexSchemaCmbChange() {
  Guarded([this] { FillClusters(); });
}

void TCreateIndexFrm::FillClusters() {
  QStringList clusters;
  const QString schema = ui->ClusterIndexSchemaCmb->currentText();
  if (!schema.isEmpty()) {
    TempQry.Close();
    TempQry.LoadSQL(QStringLiteral("CreateIndexFrn.Cluster"));
    TempQry.ParamByName(QStringLiteral("P_OWN")) = schema;
    TempQry.Open();
    for (; !TempQry.Eof(); TempQry.Next())
      clusters << TempQry.FieldByName(QStringLiteral("CLUSTER_NAME"));
    TempQry.Close();
  }
  {
    const QSignalBlocker block(ui->ClusterIndexTblCmb);
    ui->ClusterIndexTblCmb->clear();
    ui->ClusterIndexTblCmb->addItems(clusters);
    ui->ClusterIndexTblCmb->setCurrentIndex(-1);
  }
  ClusterIndexTblCmbChange();
}

void TCreateIndexFrm::ClusterIndexTblCmbChange() {
  ui->ClusterTV1->ClearRows();
  const QString cluster = ui->ClusterIndexTblCmb->currentText();
  if (cluster.isEmpty()) return;
  Guarded([&] {
    TempQry.Close();
    TempQry.LoadSQL(QStringLiteral("CreateIndexFrn.ClusterColumn"));
    TempQry.ParamByName(QStringLiteral("P_OWN")) = ui->ClusterIndexSchemaCmb->currentText();
    TempQry.ParamByName(QStringLiteral("P_CLUSTER")) = cluster;
    TempQry.Open();
    QList<QStringList> rows;
    for (; !TempQry.Eof(); TempQry.Next())
      rows << QStringList{TempQry.FieldByName(QStringLiteral("column_name")),
                          TempQry.FieldByName(QStringLiteral("data_type"))};
    TempQry.Close();
    ui->ClusterTV1->AddRows(rows);
    if (rows.isEmpty() && !FLoading)
      ShowMissing("CreateIndexFrn.ClusterNotFound", ui->ClusterIndexSchemaCmb->currentText(),
                  cluster);
  });
}

// ---------------------------------------------------------------------------------------------
// Column moves.

void TCreateIndexFrm::InsertTableColumn(const QStringList& cells) {
  // The table's columns stay sorted by name.
  TKelTreeList* list = ui->TableTV1;
  int at = 0;
  while (at < list->RowCount() && list->Cell(at, c1Name) < cells[c1Name]) ++at;
  list->InsertRow(at);
  list->SetCell(at, c1Name, cells[c1Name]);
  list->SetCell(at, c1Type, cells[c1Type]);
}

void TCreateIndexFrm::MoveRight(int row) {
  const QStringList cells = ui->TableTV1->RowCells(row);
  ui->TableTV1->DeleteRow(row);
  const int at = ui->TableTV2->AddRow();
  ui->TableTV2->SetCell(at, c2Desc, kFalse);
  ui->TableTV2->SetCell(at, c2Name, cells.value(c1Name));
  ui->TableTV2->SetCell(at, c2Type, cells.value(c1Type));
}

void TCreateIndexFrm::MoveLeft(int row) {
  const QStringList cells = ui->TableTV2->RowCells(row);
  ui->TableTV2->DeleteRow(row);
  InsertTableColumn({cells.value(c2Name), cells.value(c2Type)});
}

void TCreateIndexFrm::TableRightBtnClick() {
  const int row = ui->TableTV1->FocusedRow();
  if (row < 0) return;
  MoveRight(row);
  ui->TableTV1->SetFocusedRow(std::min(row, ui->TableTV1->RowCount() - 1));
  ui->TableTV2->SetFocusedRow(ui->TableTV2->RowCount() - 1);
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::TableRightAllBtnClick() {
  QList<QStringList> rows;
  for (int row = 0; row < ui->TableTV1->RowCount(); ++row)
    rows << QStringList{kFalse, ui->TableTV1->Cell(row, c1Name), ui->TableTV1->Cell(row, c1Type)};
  ui->TableTV1->ClearRows();
  ui->TableTV2->AddRows(rows);
  if (ui->TableTV2->RowCount() > 0) ui->TableTV2->SetFocusedRow(0);
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::TableLeftBtnClick() {
  const int row = ui->TableTV2->FocusedRow();
  if (row < 0) return;
  MoveLeft(row);
  ui->TableTV2->SetFocusedRow(std::min(row, ui->TableTV2->RowCount() - 1));
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::TableLeftAllBtnClick() {
  QList<QStringList> rows;
  for (int row = 0; row < ui->TableTV1->RowCount(); ++row) rows << ui->TableTV1->RowCells(row);
  for (int row = 0; row < ui->TableTV2->RowCount(); ++row)
    rows << QStringList{ui->TableTV2->Cell(row, c2Name), ui->TableTV2->Cell(row, c2Type)};
  std::stable_sort(rows.begin(), rows.end(),
                   [](const QStringList& a, const QStringList& b) { return a[0] < b[0]; });
  ui->TableTV2->ClearRows();
  ui->TableTV1->ClearRows();
  ui->TableTV1->AddRows(rows);
  if (!rows.isEmpty()) ui->TableTV1->SetFocusedRow(0);
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::TableUpperBtnClick() {
  TKelTreeList* list = ui->TableTV2;
  const int row = list->FocusedRow();
  if (row <= 0) return;
  const QStringList cells = list->RowCells(row);
  list->DeleteRow(row);
  list->InsertRow(row - 1);
  for (int col = 0; col < cells.size(); ++col) list->SetCell(row - 1, col, cells[col]);
  list->SetFocusedRow(row - 1);
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::TableLowerBtnClick() {
  TKelTreeList* list = ui->TableTV2;
  const int row = list->FocusedRow();
  if (row < 0 || row >= list->RowCount() - 1) return;
  const QStringList cells = list->RowCells(row);
  list->DeleteRow(row);
  list->InsertRow(row + 1);
  for (int col = 0; col < cells.size(); ++col) list->SetCell(row + 1, col, cells[col]);
  list->SetFocusedRow(row + 1);
  RebuildKeyValueCmb();
  UpdateState();
}

void TCreateIndexFrm::RebuildKeyValueCmb() {
  ui->KeyValueCmb->clear();
  ui->KeyValueCmb->setEditText(QString());
  for (int i = 1; i <= ui->TableTV2->RowCount(); ++i) ui->KeyValueCmb->addItem(QString::number(i));
  ui->KeyValueCmb->setCurrentIndex(ui->KeyValueCmb->count() > 0 ? 0 : -1);
}

// ---------------------------------------------------------------------------------------------
// State and input rules.

bool TCreateIndexFrm::ValueEdKeyPress(QKeyEvent* event) {
  return IsNonDigitKey(event);
}

void TCreateIndexFrm::OptionClick(QWidget* box, bool checked) {
  if (!checked) return;
  QList<QCheckBox*> off;
  if (box == ui->BitmapChk)
    off = {ui->UniqueChk, ui->NosortChk, ui->ReverseChk};
  else if (box == ui->ReverseChk)
    off = {ui->BitmapChk, ui->NosortChk};
  else if (box == ui->UniqueChk)
    off = {ui->BitmapChk};
  else if (box == ui->NosortChk)
    off = {ui->BitmapChk, ui->ReverseChk};
  else if (box == ui->ComputeChk)
    off = {ui->OnlineChk};
  else if (box == ui->OnlineChk)
    off = {ui->ComputeChk, ui->NosortChk, ui->ReverseChk};
  for (QCheckBox* other : off) other->setChecked(false);
  UpdateState();
}

void TCreateIndexFrm::UpdateState() {
  if (FIsAlter) {
    for (QWidget* w : {static_cast<QWidget*>(ui->SchemaCmb),
                       static_cast<QWidget*>(ui->IndexNameEd),
                       static_cast<QWidget*>(ui->TableRadio),
                       static_cast<QWidget*>(ui->ClusterRadio),
                       static_cast<QWidget*>(ui->TableIndexSchemaCmb),
                       static_cast<QWidget*>(ui->TableIndexTblCmb),
                       static_cast<QWidget*>(ui->TableTV1),
                       static_cast<QWidget*>(ui->TableTV2),
                       ui->TableMoveTBar,
                       ui->TableOrderTBar,
                       static_cast<QWidget*>(ui->UniqueChk),
                       static_cast<QWidget*>(ui->BitmapChk),
                       static_cast<QWidget*>(ui->NosortChk),
                       static_cast<QWidget*>(ui->ReverseChk),
                       static_cast<QWidget*>(ui->ClusterIndexSchemaCmb),
                       static_cast<QWidget*>(ui->ClusterIndexTblCmb),
                       static_cast<QWidget*>(ui->ClusterTV1),
                       static_cast<QWidget*>(ui->ComputeChk),
                       static_cast<QWidget*>(ui->OnlineChk),
                       static_cast<QWidget*>(ui->InitialExtentEd),
                       static_cast<QWidget*>(ui->InitialExtentCmb),
                       static_cast<QWidget*>(ui->KeyCompressionChk),
                       static_cast<QWidget*>(ui->PrefixLengthLbl),
                       static_cast<QWidget*>(ui->PrefixDefaultRB),
                       static_cast<QWidget*>(ui->KeyValueRB),
                       static_cast<QWidget*>(ui->KeyValueCmb)})
      w->setEnabled(false);
    ui->ParallelEd->setEnabled(ui->ParallelChk->isChecked());
    return;
  }
  const int available = ui->TableTV1->RowCount();
  const int chosen = ui->TableTV2->RowCount();
  const int focused = ui->TableTV2->FocusedRow();
  ui->TableRightBtn->setEnabled(available > 0);
  ui->TableRightAllBtn->setEnabled(available > 0);
  ui->TableLeftBtn->setEnabled(chosen > 0);
  ui->TableLeftAllBtn->setEnabled(chosen > 0);
  const bool order = chosen >= 2 && focused >= 0;
  ui->TableUpperBtn->setEnabled(order && focused > 0);
  ui->TableLowerBtn->setEnabled(order && focused < chosen - 1);

  const bool compressible =
      chosen > 0 && !ui->UniqueChk->isChecked() && !ui->BitmapChk->isChecked();
  if (!compressible) ui->KeyCompressionChk->setChecked(false);
  ui->KeyCompressionChk->setEnabled(compressible);
  const bool compress = ui->KeyCompressionChk->isChecked();
  ui->PrefixLengthLbl->setEnabled(compress);
  ui->PrefixDefaultRB->setEnabled(compress);
  ui->KeyValueRB->setEnabled(compress);
  ui->KeyValueCmb->setEnabled(compress && ui->KeyValueRB->isChecked());
  ui->ParallelEd->setEnabled(ui->ParallelChk->isChecked());
}

// ---------------------------------------------------------------------------------------------
// Loading an existing index.

QString TCreateIndexFrm::Loaded(const char* column) const {
  return Trim(AlterQry01.FieldByName(QString::fromLatin1(column)));
}

void TCreateIndexFrm::LoadIndex() {
  const QString schema = Trim(FSchema).toUpper();
  const QString name = Trim(FIndexName).toUpper();
  if (Application())
    setWindowTitle(
        FormatMsg(Application()->esGetMSG(QStringLiteral("CreateIndexFrm.Alter")), {schema, name}));
  {
    const QSignalBlocker block(ui->SchemaCmb);
    SelectComboText(ui->SchemaCmb, schema);
    if (ui->SchemaCmb->currentIndex() < 0) {
      ui->SchemaCmb->addItem(schema);
      ui->SchemaCmb->setCurrentIndex(ui->SchemaCmb->count() - 1);
    }
  }
  ui->IndexNameEd->setText(name);

  AlterQry01.Close();
  AlterQry01.LoadSQL(QStringLiteral("CreateIndexFrn.Alter.001"));
  AlterQry01.ParamByName(QStringLiteral("P_OWN")) = schema;
  AlterQry01.ParamByName(QStringLiteral("P_INDEX")) = name;
  AlterQry01.Open();
  if (AlterQry01.Eof()) {
    // Dropped since it was listed: nothing to alter, the dialog closes.
    const QString text = Application()
                             ? Application()->esGetMSG(QStringLiteral("CreateIndexFrn.NotFound"))
                             : QString();
    throw EKelError(FormatMsg(text, {schema, name}));
  }

  FLoading = true;
  const QString tablespace = Loaded("TABLESPACE_NAME");
  SelectComboText(ui->TableSpaceCmb, tablespace);
  if (ui->TableSpaceCmb->currentIndex() < 0 && !tablespace.isEmpty()) {
    ui->TableSpaceCmb->addItem(tablespace);
    ui->TableSpaceCmb->setCurrentIndex(ui->TableSpaceCmb->count() - 1);
  }
  const QString owner = Loaded("TABLE_OWNER");
  const QString table = Loaded("TABLE_NAME");
  if (Loaded("TABLE_TYPE").toUpper() == u"TABLE") {
    ui->TableRadio->setChecked(true);
    {
      const QSignalBlocker block(ui->TableIndexSchemaCmb);
      SelectComboText(ui->TableIndexSchemaCmb, owner);
    }
    FillTables();
    SelectOrAdd(ui->TableIndexTblCmb, table);
    ui->UniqueChk->setChecked(Loaded("UNIQUENESS").toUpper() == u"UNIQUE");
    ui->BitmapChk->setChecked(Loaded("INDEX_TYPE").toUpper() == u"BITMAP");
    if (AsNumber(Loaded("DEGREE")) > 1) {
      ui->ParallelChk->setChecked(true);
      ui->ParallelEd->setText(Loaded("DEGREE"));
    }
    LoadIndexColumns(owner, table);
  } else {
    ui->ClusterRadio->setChecked(true);
    {
      const QSignalBlocker block(ui->ClusterIndexSchemaCmb);
      SelectComboText(ui->ClusterIndexSchemaCmb, owner);
    }
    FillClusters();
    SelectOrAdd(ui->ClusterIndexTblCmb, table);
  }
  KindRadioClick();
  ui->LoggingCmb->setCurrentIndex(Loaded("LOGGING").toUpper() == u"YES" ? 1 : 2);
  ui->InitialExtentEd->setText(IndexBytesToKb(Loaded("INITIAL_EXTENT")));
  ui->NextExtentEd->setText(IndexBytesToKb(Loaded("NEXT_EXTENT")));
  ui->PctIncreaseEd->setText(Loaded("PCT_INCREASE"));
  ui->MinExtentsEd->setText(Loaded("MIN_EXTENTS"));
  ui->MaxExtentsEd->setText(Loaded("MAX_EXTENTS"));
  ui->PercentFreeEd->setText(Loaded("PCT_FREE"));
  ui->IniTransEd->setText(Loaded("INI_TRANS"));
  ui->MaxTransEd->setText(Loaded("MAX_TRANS"));
  ui->FreeListsEd->setText(Loaded("FREELISTS"));
  ui->FreeListGroupsEd->setText(Loaded("FREELIST_GROUPS"));
  SelectComboText(ui->BufferPoolCmb, Loaded("BUFFER_POOL"));
  FLoading = false;
}

void TCreateIndexFrm::LoadIndexColumns(const QString& tableOwner, const QString& table) {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateIndexFrn.Alter.003"));
  TempQry.ParamByName(QStringLiteral("P_IDX_OWNER")) = ui->SchemaCmb->currentText();
  TempQry.ParamByName(QStringLiteral("P_IDX")) = ui->IndexNameEd->text();
  TempQry.ParamByName(QStringLiteral("P_TBL_OWNER")) = tableOwner;
  TempQry.ParamByName(QStringLiteral("P_TBL")) = table;
  TempQry.Open();
  QList<QStringList> rows;
  for (; !TempQry.Eof(); TempQry.Next())
    rows << QStringList{
        Trim(TempQry.FieldByName(QStringLiteral("DESCEND"))).toUpper() == u"DESC" ? kTrue : kFalse,
        TempQry.FieldByName(QStringLiteral("COLUMN_NAME")),
        TempQry.FieldByName(QStringLiteral("DATA_TYPE"))};
  TempQry.Close();
  ui->TableTV2->ClearRows();
  ui->TableTV2->AddRows(rows);
  RebuildKeyValueCmb();
}

// ---------------------------------------------------------------------------------------------
// Validation.

namespace {
// A value the user changed: different from the loaded one and not emptied (an emptied edit
// keeps the attribute as it is; an empty value would be no clause at all).
bool Differs(const QString& text, const QString& loaded) {
  const QString value = Trim(text);
  return !value.isEmpty() && value != Trim(loaded);
}
}  // namespace

bool TCreateIndexFrm::FailOnPageZero(QLabel* label, QWidget* control) {
  CheckFail(label, nullptr);
  ui->MainPage->setCurrentIndex(0);
  ui->GeneralPage->setCurrentIndex(0);
  if (control) control->setFocus(Qt::OtherFocusReason);
  return false;
}

bool TCreateIndexFrm::Validate() {
  const QString name = Trim(ui->IndexNameEd->text());
  if (name.isEmpty()) return FailOnPageZero(ui->IndexNameLbl, ui->IndexNameEd);
  if (!FIsAlter) {
    if (!CheckName(ui->IndexNameLbl, ui->IndexNameEd, name)) return false;
    // Without an owner the statement would name no schema.
    if (ui->SchemaCmb->currentText().isEmpty()) return FailOnPageZero(ui->SchemaLbl, ui->SchemaCmb);
  }
  if (IsTableKind()) {
    if (ui->TableIndexTblCmb->currentText().isEmpty())
      return FailOnPageZero(ui->TableIndexTblLbl, ui->TableIndexTblCmb);
    if (ui->TableTV2->RowCount() == 0) {
      if (Application())
        Application()->esMsgDBox(QStringLiteral("CreateIndexFrn.002"), QStringList(),
                                 TMsgDlgType::Warning, false);
      return false;
    }
  } else if (ui->ClusterIndexTblCmb->currentText().isEmpty()) {
    // The inner page goes back to the table page here too: the message names the field.
    return FailOnPageZero(ui->ClusterIndexTblLbl, ui->ClusterIndexTblCmb);
  }
  if (FIsAlter && ui->TableSpaceCmb->currentText() == kDefaultTablespace &&
      ui->TableSpaceCmb->currentText() != Loaded("TABLESPACE_NAME")) {
    // A rebuild moves the index only to a named tablespace.
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateIndexFrn.DefaultTablespace"), QStringList(),
                               TMsgDlgType::Warning, false);
    FocusControl(ui->TableSpaceCmb);
    return false;
  }
  if (FIsAlter && Differs(ui->FreeListGroupsEd->text(), Loaded("FREELIST_GROUPS"))) {
    // Free list groups are fixed when the segment is created; a rebuild cannot change them.
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateIndexFrn.FreeListGroups"), QStringList(),
                               TMsgDlgType::Warning, false);
    FocusControl(ui->FreeListGroupsEd);
    return false;
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Create mode: one function per clause.

QString TCreateIndexFrm::ExtentUnit(const QComboBox* combo) const {
  return combo->currentText() == u"MB" ? QStringLiteral("M") : QStringLiteral("K");
}

void TCreateIndexFrm::AddCreateHead() {
  QString head = QStringLiteral("CREATE INDEX %1.%2 ");
  if (IsTableKind()) {
    if (ui->UniqueChk->isChecked())
      head = QStringLiteral("CREATE UNIQUE INDEX %1.%2 ");
    else if (ui->BitmapChk->isChecked())
      head = QStringLiteral("CREATE BITMAP INDEX %1.%2 ");
  }
  SqlMemo().Add(head.arg(ui->SchemaCmb->currentText(), Trim(ui->IndexNameEd->text())));
}

void TCreateIndexFrm::AddOnClause() {
  if (!IsTableKind()) {
    SqlMemo().Add(
        QStringLiteral("ON CLUSTER %1.%2 ")
            .arg(ui->ClusterIndexSchemaCmb->currentText(), ui->ClusterIndexTblCmb->currentText()));
    return;
  }
  SqlMemo().Add(
      QStringLiteral("ON %1.%2 ")
          .arg(ui->TableIndexSchemaCmb->currentText(), ui->TableIndexTblCmb->currentText()));
  const TKelTreeList* list = ui->TableTV2;
  if (list->RowCount() == 0) return;
  QStringList columns;
  for (int row = 0; row < list->RowCount(); ++row) {
    QString column = AddDQ(list->Cell(row, c2Name));
    if (list->Cell(row, c2Desc) == kTrue) column += QStringLiteral(" Desc");
    columns << column;
  }
  SqlMemo().Add(QStringLiteral("("));
  SqlMemo().Add(u'\t' + columns.join(u','));
  SqlMemo().Add(QStringLiteral(")"));
}

void TCreateIndexFrm::AddPctFree() {
  const QString value = Trim(ui->PercentFreeEd->text());
  if (!value.isEmpty()) SqlMemo().Add(QStringLiteral("PCTFREE ") + value);
}

void TCreateIndexFrm::AddTrans() {
  const QString initial = Trim(ui->IniTransEd->text());
  if (!initial.isEmpty()) SqlMemo().Add(QStringLiteral("INITRANS ") + initial);
  const QString maximum = Trim(ui->MaxTransEd->text());
  if (!maximum.isEmpty()) SqlMemo().Add(QStringLiteral("MAXTRANS ") + maximum);
}

void TCreateIndexFrm::AddStorage() {
  const QString initial = Trim(ui->InitialExtentEd->text());
  const QString next = Trim(ui->NextExtentEd->text());
  const QString increase = Trim(ui->PctIncreaseEd->text());
  const QString minimum = Trim(ui->MinExtentsEd->text());
  const QString maximum = Trim(ui->MaxExtentsEd->text());
  const QString lists = Trim(ui->FreeListsEd->text());
  const QString groups = Trim(ui->FreeListGroupsEd->text());
  const int pool = ui->BufferPoolCmb->currentIndex();
  // The Unlimited box alone does not open the block.
  if (initial.isEmpty() && next.isEmpty() && increase.isEmpty() && minimum.isEmpty() &&
      maximum.isEmpty() && lists.isEmpty() && groups.isEmpty() && pool <= 0)
    return;
  TSqlMemo& memo = SqlMemo();
  memo.Add(QStringLiteral("STORAGE ("));
  if (!initial.isEmpty())
    memo.Add(QStringLiteral("\tINITIAL ") + initial + ExtentUnit(ui->InitialExtentCmb));
  if (!next.isEmpty()) memo.Add(QStringLiteral("\tNEXT ") + next + ExtentUnit(ui->NextExtentCmb));
  if (!minimum.isEmpty()) memo.Add(QStringLiteral("\tMINEXTENTS ") + minimum);
  if (ui->MaxExtentsChk->isChecked())
    memo.Add(QStringLiteral("\tMAXEXTENTS UNLIMITED "));
  else if (!maximum.isEmpty())
    memo.Add(QStringLiteral("\tMAXEXTENTS ") + maximum);
  if (!increase.isEmpty()) memo.Add(QStringLiteral("\tPCTINCREASE ") + increase);
  if (!lists.isEmpty()) memo.Add(QStringLiteral("\tFREELISTS ") + lists);
  if (!groups.isEmpty()) memo.Add(QStringLiteral("\tFREELIST GROUPS ") + groups);
  if (pool == 1) memo.Add(QStringLiteral("\tBUFFER_POOL KEEP"));
  if (pool == 2) memo.Add(QStringLiteral("\tBUFFER_POOL RECYCLE"));
  memo.Add(QStringLiteral(")"));
}

void TCreateIndexFrm::AddLogging() {
  const int logging = ui->LoggingCmb->currentIndex();
  if (logging == 1) SqlMemo().Add(QStringLiteral("LOGGING"));
  if (logging == 2) SqlMemo().Add(QStringLiteral("NOLOGGING"));
}

void TCreateIndexFrm::AddOnlineCompute() {
  if (ui->OnlineChk->isChecked()) SqlMemo().Add(QStringLiteral("ONLINE"));
  if (ui->ComputeChk->isChecked()) SqlMemo().Add(QStringLiteral("COMPUTE STATISTICS"));
}

void TCreateIndexFrm::AddTablespace() {
  if (ui->TableSpaceCmb->currentIndex() > 0)
    SqlMemo().Add(QStringLiteral("TABLESPACE %1").arg(ui->TableSpaceCmb->currentText()));
}

void TCreateIndexFrm::AddCompress() {
  if (!ui->KeyCompressionChk->isChecked()) return;
  if (ui->KeyValueRB->isChecked())
    SqlMemo().Add(QStringLiteral("COMPRESS %1").arg(ui->KeyValueCmb->currentText()));
  else
    SqlMemo().Add(QStringLiteral("COMPRESS"));
}

void TCreateIndexFrm::AddSortReverse() {
  if (!IsTableKind()) return;
  if (ui->NosortChk->isChecked()) SqlMemo().Add(QStringLiteral("NOSORT"));
  if (ui->ReverseChk->isChecked()) SqlMemo().Add(QStringLiteral("REVERSE"));
}

void TCreateIndexFrm::AddParallel() {
  if (!ui->ParallelChk->isChecked()) return;
  const QString degree = Trim(ui->ParallelEd->text());
  SqlMemo().Add(degree.isEmpty() ? QStringLiteral("PARALLEL ( DEGREE DEFAULT ) ")
                                 : QStringLiteral("PARALLEL ( DEGREE %1 ) ").arg(degree));
}

// ---------------------------------------------------------------------------------------------
// Alter mode: the loaded row against the controls.

void TCreateIndexFrm::BuildAlter() {
  const bool wasLogging = Loaded("LOGGING").toUpper() == u"YES";
  const int logging = ui->LoggingCmb->currentIndex();
  QString loggingWord;
  if (wasLogging && logging == 2) loggingWord = QStringLiteral("NOLOGGING");
  if (!wasLogging && logging != 2) loggingWord = QStringLiteral("LOGGING");

  QString parallel;
  if (AsNumber(Loaded("DEGREE")) > 1) {
    const QString degree = Trim(ui->ParallelEd->text());
    if (!ui->ParallelChk->isChecked())
      parallel = QStringLiteral("NOPARALLEL");
    else if (degree != Loaded("DEGREE"))
      parallel = QStringLiteral("PARALLEL(DEGREE %1)")
                     .arg(degree.isEmpty() ? QStringLiteral("DEFAULT") : degree);
  }

  QString initrans, maxtrans, next, increase, pool;
  if (Differs(ui->IniTransEd->text(), Loaded("INI_TRANS")))
    initrans = QStringLiteral("INITRANS ") + Trim(ui->IniTransEd->text());
  if (Differs(ui->MaxTransEd->text(), Loaded("MAX_TRANS")))
    maxtrans = QStringLiteral("MAXTRANS ") + Trim(ui->MaxTransEd->text());
  const QString nextValue = Trim(ui->NextExtentEd->text());
  if (!Loaded("NEXT_EXTENT").isEmpty() && !nextValue.isEmpty() &&
      (nextValue != IndexBytesToKb(Loaded("NEXT_EXTENT")) ||
       ui->NextExtentCmb->currentText() == u"MB"))
    next = QStringLiteral("NEXT ") + nextValue + ui->NextExtentCmb->currentText().left(1);
  if (Differs(ui->PctIncreaseEd->text(), Loaded("PCT_INCREASE")))
    increase = QStringLiteral("PCTINCREASE ") + Trim(ui->PctIncreaseEd->text());
  if (ui->BufferPoolCmb->currentText() != Loaded("BUFFER_POOL"))
    pool = QStringLiteral("BUFFER_POOL ") + ui->BufferPoolCmb->currentText();

  if (loggingWord.isEmpty() && parallel.isEmpty() && initrans.isEmpty() && maxtrans.isEmpty() &&
      next.isEmpty() && increase.isEmpty() && pool.isEmpty())
    return;
  TSqlMemo& memo = SqlMemo();
  memo.Add(QStringLiteral("ALTER INDEX %1.%2")
               .arg(ui->SchemaCmb->currentText(), ui->IndexNameEd->text()));
  for (const QString& line : {initrans, maxtrans, loggingWord})
    if (!line.isEmpty()) memo.Add(line);
  if (!next.isEmpty() || !increase.isEmpty() || !pool.isEmpty()) {
    memo.Add(QStringLiteral("STORAGE ("));
    for (const QString& line : {next, increase, pool})
      if (!line.isEmpty()) memo.Add(u'\t' + line);
    memo.Add(QStringLiteral(")"));
  }
  if (!parallel.isEmpty()) memo.Add(parallel);
}

void TCreateIndexFrm::BuildRebuild() {
  QString tablespace, pctfree, minimum, maximum, lists, groups;
  if (ui->TableSpaceCmb->currentText() != Loaded("TABLESPACE_NAME") &&
      ui->TableSpaceCmb->currentText() != kDefaultTablespace)
    tablespace = QStringLiteral("TABLESPACE ") + ui->TableSpaceCmb->currentText();
  if (Differs(ui->PercentFreeEd->text(), Loaded("PCT_FREE")))
    pctfree = QStringLiteral("PCTFREE ") + Trim(ui->PercentFreeEd->text());
  if (Differs(ui->MinExtentsEd->text(), Loaded("MIN_EXTENTS")))
    minimum = QStringLiteral("MINEXTENTS ") + Trim(ui->MinExtentsEd->text());
  if (ui->MaxExtentsChk->isChecked())
    maximum = QStringLiteral("MAXEXTENTS UNLIMITED");
  else if (Differs(ui->MaxExtentsEd->text(), Loaded("MAX_EXTENTS")))
    maximum = QStringLiteral("MAXEXTENTS ") + Trim(ui->MaxExtentsEd->text());
  if (Differs(ui->FreeListsEd->text(), Loaded("FREELISTS")))
    lists = QStringLiteral("FREELISTS ") + Trim(ui->FreeListsEd->text());
  if (Differs(ui->FreeListGroupsEd->text(), Loaded("FREELIST_GROUPS")))
    groups = QStringLiteral("FREELIST GROUPS ") + Trim(ui->FreeListGroupsEd->text());

  const bool storage =
      !minimum.isEmpty() || !maximum.isEmpty() || !lists.isEmpty() || !groups.isEmpty();
  if (tablespace.isEmpty() && pctfree.isEmpty() && !storage) return;
  FRebuildList.Add(QStringLiteral("ALTER INDEX %1.%2 REBUILD ")
                       .arg(ui->SchemaCmb->currentText(), ui->IndexNameEd->text()));
  if (!tablespace.isEmpty()) FRebuildList.Add(tablespace);
  if (!pctfree.isEmpty()) FRebuildList.Add(pctfree);
  if (storage) {
    FRebuildList.Add(QStringLiteral("STORAGE ("));
    for (const QString& line : {minimum, maximum, lists, groups})
      if (!line.isEmpty()) FRebuildList.Add(u'\t' + line);
    FRebuildList.Add(QStringLiteral(")"));
  }
}

void TCreateIndexFrm::BuildSql() {
  SqlMemo().Clear();
  FRebuildList.Clear();
  if (FIsAlter) {
    BuildAlter();
    BuildRebuild();
  } else {
    AddCreateHead();
    AddOnClause();
    AddPctFree();
    AddTrans();
    AddStorage();
    AddLogging();
    AddOnlineCompute();
    AddTablespace();
    AddCompress();
    AddSortReverse();
    AddParallel();
  }
  // An open preview follows the in-place statement.
  RefreshOwnedPreview();
}

QString TCreateIndexFrm::PreviewText() {
  QString text = SqlMemo().Text();
  if (!FRebuildList.IsEmpty()) {
    if (!text.isEmpty()) text += QStringLiteral(";") + CRLF;
    text += FRebuildList.Text();
  }
  return text;
}

// ---------------------------------------------------------------------------------------------
// Buttons.

void TCreateIndexFrm::ViewSqlBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, PreviewText());
  });
}

void TCreateIndexFrm::OkBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    const QString main = SqlMemo().Text();
    const QString rebuild = FRebuildList.Text();
    if ((Trim(main).isEmpty() && Trim(rebuild).isEmpty()) || !Application()) return;
    if (!Trim(main).isEmpty() && Application()->esScriptExecute(this, DBInfo(), main) != 0) return;
    // The dialog closes only after the rebuild statement ran: a create, or an alter made
    // entirely in place, leaves it open.
    if (Trim(rebuild).isEmpty()) return;
    if (Application()->esScriptExecute(this, DBInfo(), rebuild) != 0) return;
    if (Tracker()) Tracker()->SetChanged(false);
    SetModalResult(mrOk);
  });
}

}  // namespace kel
