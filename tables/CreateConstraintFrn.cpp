#include "tables/CreateConstraintFrn.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTabBar>

#include "plugin/KelEditor.h"
#include "plugin/KelTreeList.h"
#include "tables/ConstraintRules.h"
#include "ui_CreateConstraintFrn.h"

namespace kel {

namespace {

// Cells of the column lists (key lists and the two foreign column lists).
enum { ccName = 0, ccType = 1, ccNull = 2 };
// Cells of the pair list.
enum { pcColumn = 0, pcRefColumn = 1, pcRefTable = 2 };

TKelTreeColumn Col(const char* name, const char* caption, int width) {
  TKelTreeColumn c;
  c.Name = QString::fromLatin1(name);
  c.Caption = QString::fromLatin1(caption);
  c.Width = width;
  c.Editable = false;
  return c;
}

void AddColumnCells(TKelTreeList* list, const char* prefix, bool withNull) {
  const QByteArray p(prefix);
  list->AddColumn(Col(p + "FieldName", "Field Name", 140));
  list->AddColumn(Col(p + "Type", "Type", 110));
  if (withNull) list->AddColumn(Col(p + "Null", "Null", 70));
}

QStringList Cells(const TKelTreeList* list, int col) {
  QStringList out;
  for (int row = 0; row < list->RowCount(); ++row) out << list->Cell(row, col);
  return out;
}

// Moves row `row` of `from` to the end of `to`.
void MoveRow(TKelTreeList* from, int row, TKelTreeList* to) {
  const QStringList cells = from->RowCells(row);
  from->DeleteRow(row);
  to->AddRows({cells});
}

void SwapWithNext(TKelTreeList* list, int row) {
  const QStringList cells = list->RowCells(row);
  list->DeleteRow(row);
  list->InsertRow(row + 1);
  for (int col = 0; col < cells.size(); ++col) list->SetCell(row + 1, col, cells[col]);
}

}  // namespace

TCreateConstraintFrm::TCreateConstraintFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateConstraintFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateConstraintFrm"));
  SetIniSave(false);
  // The type radio buttons choose the page.
  ui->ConstraintPage->tabBar()->hide();
  ui->CheckEditor->PlSqlEditor();

  AddColumnCells(ui->PrimaryTreeList1, "PrimaryTreeList1", true);
  AddColumnCells(ui->PrimaryTreeList2, "PrimaryTreeList2", true);
  AddColumnCells(ui->ForeignTreeList1, "ForeignTreeList1", false);
  AddColumnCells(ui->ForeignTreeList2, "ForeignTreeList2", false);
  ui->ForeignTreeList3->AddColumn(Col("ForeignTreeList3FieldName", "Field Name", 140));
  ui->ForeignTreeList3->AddColumn(
      Col("ForeignTreeList3ConstraintFieldName", "Constraint Field Name", 160));
  ui->ForeignTreeList3->AddColumn(Col("ForeignTreeList3ConstraintTable", "Constraint Table", 160));
  ui->InitialExtentCmb->setCurrentIndex(1);
  ui->NextExtentCmb->setCurrentIndex(1);
  ui->CascadeCmb->setCurrentIndex(-1);

  for (QLineEdit* edit : {ui->InitialExtentEd, ui->NextExtentEd, ui->MinExtentsEd, ui->MaxExtentsEd,
                          ui->PctIncreaseEd, ui->PercentFreeEd})
    OnKeyPress(edit, [](QKeyEvent* e) { return IsNonDigitKey(e); });

  for (QRadioButton* radio : {ui->PrimaryRdo, ui->CheckRdo, ui->UniqueRdo, ui->ForeignRdo})
    connect(radio, &QAbstractButton::toggled, this, &TCreateConstraintFrm::TypeRadioClick);
  connect(ui->SchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateConstraintFrm::SchemaCmbChange);
  connect(ui->TblCmb, &QComboBox::currentIndexChanged, this, &TCreateConstraintFrm::TblCmbChange);
  connect(ui->FSchemaCmb2, &QComboBox::currentIndexChanged, this,
          &TCreateConstraintFrm::FSchemaCmb2Change);
  connect(ui->FTblCmb2, &QComboBox::currentIndexChanged, this,
          &TCreateConstraintFrm::FTblCmb2Change);
  connect(ui->RightBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::RightBtnClick);
  connect(ui->RightAllBtn, &QAbstractButton::clicked, this,
          &TCreateConstraintFrm::RightAllBtnClick);
  connect(ui->LeftBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::LeftBtnClick);
  connect(ui->LeftAllBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::LeftAllBtnClick);
  connect(ui->UpperBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::UpperBtnClick);
  connect(ui->LowerBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::LowerBtnClick);
  connect(ui->PrimaryTreeList1, &TKelTreeList::RowDoubleClicked, this, [this](int row) {
    ui->PrimaryTreeList1->SetFocusedRow(row);
    RightBtnClick();
  });
  connect(ui->PrimaryTreeList2, &TKelTreeList::RowDoubleClicked, this, [this](int row) {
    ui->PrimaryTreeList2->SetFocusedRow(row);
    LeftBtnClick();
  });
  for (TKelTreeList* list : {ui->PrimaryTreeList1, ui->PrimaryTreeList2, ui->ForeignTreeList1,
                             ui->ForeignTreeList2, ui->ForeignTreeList3}) {
    connect(list, &TKelTreeList::FocusedRowChanged, this, &TCreateConstraintFrm::UpdateState);
    connect(list, &TKelTreeList::RowsChanged, this, &TCreateConstraintFrm::UpdateState);
  }
  connect(ui->FKSetBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::FKSetBtnClick);
  connect(ui->FKDeleteBtn, &QAbstractButton::clicked, this,
          &TCreateConstraintFrm::FKDeleteBtnClick);
  connect(ui->MainPage, &QTabWidget::currentChanged, this, [this](int page) {
    // The SQL page shows the statement as it stands, checked or not.
    if (ui->MainPage->widget(page) != ui->SQLTab) return;
    Guarded([this] {
      BuildSql();
      ui->SQLMemo->setPlainText(SqlMemo().Text());
    });
  });

  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateConstraintFrm::CancelBtnClick);
  UpdateState();
}

TCreateConstraintFrm::~TCreateConstraintFrm() {
  delete ui;
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateConstraintFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  for (QComboBox* combo : {ui->SchemaCmb, ui->FSchemaCmb1, ui->FSchemaCmb2}) {
    const QSignalBlocker block(combo);
    FillSchemaCombo(combo);
    UpperCaseItems(combo);
  }
  QStringList list;
  if (Application()) Application()->esOraTblspaceList(DBInfo(), list);
  ui->TableSpaceCmb->clear();
  ui->TableSpaceCmb->addItem(QString());  // no tablespace named
  ui->TableSpaceCmb->addItems(list);
  ui->TableSpaceCmb->setCurrentIndex(0);
}

void TCreateConstraintFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Add")) {
    try {
      FIsAdd = StrToBool(link->ParamByString(QStringLiteral("IsAdd")));
    } catch (const EKelError&) {
      FIsAdd = false;
    }
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FTableName = link->ParamByString(QStringLiteral("P_TableName"));
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    FSchema = link->ParamByString(QStringLiteral("ObjFrmOwner"));
  }
}

void TCreateConstraintFrm::KelDllDBDlgFrmShow() {
  if (!Trim(FSchema).isEmpty())
    for (QComboBox* combo : {ui->SchemaCmb, ui->FSchemaCmb1, ui->FSchemaCmb2}) {
      const QSignalBlocker block(combo);
      SelectComboText(combo, Trim(FSchema));
    }
  SchemaCmbChange();
  FSchemaCmb2Change();
  const QString table = Trim(FTableName);
  if (!table.isEmpty()) {
    SelectComboText(ui->TblCmb, table);
    if (ui->TblCmb->currentIndex() < 0) ShowMissing(ui->SchemaCmb->currentText(), table);
  }
  TypeRadioClick();
  ui->ConstraintNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateConstraintFrm::ShowMissing(const QString& schema, const QString& table) {
  if (!Application()) return;
  Application()->esMsgBox(
      FormatMsg(Application()->esGetMSG(QStringLiteral("CreateConstraintFrn.TableNotFound")),
                {schema, table}),
      TMsgDlgType::Warning, false);
}

// ---------------------------------------------------------------------------------------------
// Pickers and lists.

TCreateConstraintFrm::TKind TCreateConstraintFrm::Kind() const {
  if (ui->CheckRdo->isChecked()) return TKind::Check;
  if (ui->UniqueRdo->isChecked()) return TKind::Unique;
  if (ui->ForeignRdo->isChecked()) return TKind::Foreign;
  return TKind::Primary;
}

void TCreateConstraintFrm::TypeRadioClick() {
  const TKind kind = Kind();
  ui->ConstraintPage->setCurrentWidget(kind == TKind::Check     ? ui->CheckTab
                                       : kind == TKind::Foreign ? ui->ForeignTab
                                                                : ui->KeyTab);
  UpdateState();
}

void TCreateConstraintFrm::FillTables(QComboBox* combo, const QString& schema) {
  QStringList tables;
  if (Application() && !schema.isEmpty()) Application()->esOraTableList(DBInfo(), schema, tables);
  const QSignalBlocker block(combo);
  combo->clear();
  combo->addItems(tables);
  combo->setCurrentIndex(-1);
}

void TCreateConstraintFrm::SchemaCmbChange() {
  Guarded([this] { FillTables(ui->TblCmb, ui->SchemaCmb->currentText()); });
  TblCmbChange();
}

QList<QStringList> TCreateConstraintFrm::TableColumns(const QString& schema, const QString& table) {
  QList<QStringList> rows;
  if (schema.isEmpty() || table.isEmpty()) return rows;
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("SchTableNrn.Column"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = schema;
  TempQry.ParamByName(QStringLiteral("P_TABLE")) = table;
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next())
    rows << QStringList{TempQry.FieldByName(QStringLiteral("Column")),
                        ColumnTypeText(TempQry.FieldByName(QStringLiteral("Data Type")),
                                       TempQry.FieldByName(QStringLiteral("Length"))),
                        NullText(TempQry.FieldByName(QStringLiteral("Null?")))};
  TempQry.Close();
  // A table always has a column: none means it was dropped since the list was read.
  if (rows.isEmpty()) ShowMissing(schema, table);
  return rows;
}

void TCreateConstraintFrm::TblCmbChange() {
  const QString schema = ui->SchemaCmb->currentText();
  const QString table = ui->TblCmb->currentText();
  for (TKelTreeList* list :
       {ui->PrimaryTreeList1, ui->PrimaryTreeList2, ui->ForeignTreeList1, ui->ForeignTreeList3})
    list->ClearRows();
  {
    const QSignalBlocker block1(ui->FSchemaCmb1), block2(ui->FTblCmb1);
    SelectComboText(ui->FSchemaCmb1, schema);
    ui->FTblCmb1->clear();
    if (!table.isEmpty()) ui->FTblCmb1->addItem(table);
  }
  Guarded([&] {
    const QList<QStringList> rows = TableColumns(schema, table);
    ui->PrimaryTreeList1->AddRows(rows);
    QList<QStringList> names;
    for (const QStringList& row : rows) names << QStringList{row[ccName], row[ccType]};
    ui->ForeignTreeList1->AddRows(names);
    if (!rows.isEmpty()) {
      ui->PrimaryTreeList1->SetFocusedRow(0);
      ui->ForeignTreeList1->SetFocusedRow(0);
    }
  });
  UpdateState();
}

void TCreateConstraintFrm::FSchemaCmb2Change() {
  Guarded([this] { FillTables(ui->FTblCmb2, ui->FSchemaCmb2->currentText()); });
  FTblCmb2Change();
}

void TCreateConstraintFrm::FTblCmb2Change() {
  ui->ForeignTreeList2->ClearRows();
  // The pairs name columns of the referenced table: another table makes them meaningless.
  ui->ForeignTreeList3->ClearRows();
  Guarded([this] {
    QList<QStringList> names;
    for (const QStringList& row :
         TableColumns(ui->FSchemaCmb2->currentText(), ui->FTblCmb2->currentText()))
      names << QStringList{row[ccName], row[ccType]};
    ui->ForeignTreeList2->AddRows(names);
    if (!names.isEmpty()) ui->ForeignTreeList2->SetFocusedRow(0);
  });
  UpdateState();
}

void TCreateConstraintFrm::RightBtnClick() {
  const int row = ui->PrimaryTreeList1->FocusedRow();
  if (row < 0) return;
  MoveRow(ui->PrimaryTreeList1, row, ui->PrimaryTreeList2);
  ui->PrimaryTreeList1->SetFocusedRow(std::min(row, ui->PrimaryTreeList1->RowCount() - 1));
  ui->PrimaryTreeList2->SetFocusedRow(ui->PrimaryTreeList2->RowCount() - 1);
  UpdateState();
}

void TCreateConstraintFrm::RightAllBtnClick() {
  while (ui->PrimaryTreeList1->RowCount() > 0)
    MoveRow(ui->PrimaryTreeList1, 0, ui->PrimaryTreeList2);
  UpdateState();
}

void TCreateConstraintFrm::LeftBtnClick() {
  const int row = ui->PrimaryTreeList2->FocusedRow();
  if (row < 0) return;
  MoveRow(ui->PrimaryTreeList2, row, ui->PrimaryTreeList1);
  ui->PrimaryTreeList2->SetFocusedRow(std::min(row, ui->PrimaryTreeList2->RowCount() - 1));
  UpdateState();
}

void TCreateConstraintFrm::LeftAllBtnClick() {
  while (ui->PrimaryTreeList2->RowCount() > 0)
    MoveRow(ui->PrimaryTreeList2, 0, ui->PrimaryTreeList1);
  UpdateState();
}

void TCreateConstraintFrm::UpperBtnClick() {
  const int row = ui->PrimaryTreeList2->FocusedRow();
  if (row <= 0) return;
  SwapWithNext(ui->PrimaryTreeList2, row - 1);
  ui->PrimaryTreeList2->SetFocusedRow(row - 1);
  UpdateState();
}

void TCreateConstraintFrm::LowerBtnClick() {
  const int row = ui->PrimaryTreeList2->FocusedRow();
  if (row < 0 || row >= ui->PrimaryTreeList2->RowCount() - 1) return;
  SwapWithNext(ui->PrimaryTreeList2, row);
  ui->PrimaryTreeList2->SetFocusedRow(row + 1);
  UpdateState();
}

void TCreateConstraintFrm::FKSetBtnClick() {
  const int row = ui->ForeignTreeList1->FocusedRow();
  const int ref = ui->ForeignTreeList2->FocusedRow();
  if (row < 0 || ref < 0) return;
  if (!SameBaseType(ui->ForeignTreeList1->Cell(row, ccType),
                    ui->ForeignTreeList2->Cell(ref, ccType))) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateConstraintFrn.002"), QStringList(),
                               TMsgDlgType::Warning, false);
    return;
  }
  ui->ForeignTreeList3->AddRows(
      {{ui->ForeignTreeList1->Cell(row, ccName), ui->ForeignTreeList2->Cell(ref, ccName),
        ui->FTblCmb2->currentText()}});
  ui->ForeignTreeList3->SetFocusedRow(ui->ForeignTreeList3->RowCount() - 1);
  UpdateState();
}

void TCreateConstraintFrm::FKDeleteBtnClick() {
  const int row = ui->ForeignTreeList3->FocusedRow();
  if (row < 0) return;
  ui->ForeignTreeList3->DeleteRow(row);
  ui->ForeignTreeList3->SetFocusedRow(std::min(row, ui->ForeignTreeList3->RowCount() - 1));
  UpdateState();
}

void TCreateConstraintFrm::UpdateState() {
  const int available = ui->PrimaryTreeList1->RowCount();
  const int chosen = ui->PrimaryTreeList2->RowCount();
  const int focused = ui->PrimaryTreeList2->FocusedRow();
  ui->RightBtn->setEnabled(available > 0);
  ui->RightAllBtn->setEnabled(available > 0);
  ui->LeftBtn->setEnabled(chosen > 0);
  ui->LeftAllBtn->setEnabled(chosen > 0);
  ui->UpperBtn->setEnabled(chosen >= 2 && focused > 0);
  ui->LowerBtn->setEnabled(chosen >= 2 && focused >= 0 && focused < chosen - 1);
  ui->FKSetBtn->setEnabled(ui->ForeignTreeList1->FocusedRow() >= 0 &&
                           ui->ForeignTreeList2->FocusedRow() >= 0);
  ui->FKDeleteBtn->setEnabled(ui->ForeignTreeList3->FocusedRow() >= 0);
}

// ---------------------------------------------------------------------------------------------
// Validation.

bool TCreateConstraintFrm::SelectFail(QAbstractButton* radio, QWidget* control) {
  return CheckFail(radio->text(), control, QStringLiteral("Acm.Select The"));
}

bool TCreateConstraintFrm::Validate() {
  const QString name = Trim(ui->ConstraintNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ConstraintNameLbl, ui->ConstraintNameEd);
  if (!CheckName(ui->ConstraintNameLbl, ui->ConstraintNameEd, name)) return false;
  if (ui->SchemaCmb->currentText().isEmpty()) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
  if (ui->TblCmb->currentText().isEmpty()) return CheckFail(ui->TblLbl, ui->TblCmb);
  switch (Kind()) {
    case TKind::Primary:
      if (ui->PrimaryTreeList2->RowCount() == 0) return SelectFail(ui->PrimaryRdo, nullptr);
      break;
    case TKind::Check:
      if (Trim(ui->CheckEditor->Text()).isEmpty()) {
        if (Application())
          Application()->esMsgDBox(QStringLiteral("CreateConstraintFrn.001"), QStringList(),
                                   TMsgDlgType::Warning, false);
        FocusControl(ui->CheckEditor);
        return false;
      }
      break;
    case TKind::Unique:
      if (ui->PrimaryTreeList2->RowCount() == 0) return SelectFail(ui->UniqueRdo, nullptr);
      break;
    case TKind::Foreign:
      if (ui->ForeignTreeList3->RowCount() == 0) return SelectFail(ui->ForeignRdo, nullptr);
      break;
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// Statement building: one function per part.

QString TCreateConstraintFrm::ExistingPrimaryKey() {
  const QString text =
      DBInfo() ? DBInfo()->GetSQL(QStringLiteral("CreateConstraintFrn.PrimaryKey")) : QString();
  if (text.isEmpty()) return {};
  TempQry.Close();
  TempQry.SetSQL(text + QStringLiteral("  AND A1.CONSTRAINT_TYPE = 'P' "),
                 QStringLiteral("CreateConstraintFrn.PrimaryKey"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = ui->SchemaCmb->currentText();
  TempQry.ParamByName(QStringLiteral("P_TABLE")) = ui->TblCmb->currentText();
  TempQry.Open();
  const QString name =
      TempQry.Eof() ? QString() : Trim(TempQry.FieldByName(QStringLiteral("Constraint")));
  TempQry.Close();
  return name;
}

void TCreateConstraintFrm::AddDropPrimaryKey() {
  // The new key replaces the table's present one.
  FReplacedKey = ExistingPrimaryKey();
  if (FReplacedKey.isEmpty()) return;
  AddHead();
  SqlMemo().Add(QStringLiteral("DROP CONSTRAINT ") + FReplacedKey + u';');
}

void TCreateConstraintFrm::AddHead() {
  SqlMemo().Add(QStringLiteral("ALTER TABLE ") + ui->SchemaCmb->currentText() + u'.' +
                ui->TblCmb->currentText());
}

void TCreateConstraintFrm::AddKeyBody() {
  const QString word =
      Kind() == TKind::Primary ? QStringLiteral("PRIMARY KEY(") : QStringLiteral("UNIQUE(");
  SqlMemo().Add(word + Cells(ui->PrimaryTreeList2, ccName).join(QStringLiteral(", ")) +
                QStringLiteral(") "));
}

void TCreateConstraintFrm::AddCheckBody() {
  SqlMemo().Add(QStringLiteral("  CHECK(") + ui->CheckEditor->Text() + QStringLiteral(") "));
}

void TCreateConstraintFrm::AddForeignBody() {
  TSqlMemo& memo = SqlMemo();
  memo.Add(QStringLiteral("  FOREIGN KEY (") + Cells(ui->ForeignTreeList3, pcColumn).join(u',') +
           QStringLiteral(") "));
  memo.Add(QStringLiteral("  REFERENCES "));
  memo.Add(QStringLiteral("    ") + ui->FSchemaCmb2->currentText() + u'.' +
           ui->FTblCmb2->currentText() + u'(' +
           Cells(ui->ForeignTreeList3, pcRefColumn).join(u',') + u')');
  if (ui->CascadeCmb->currentIndex() >= 0)
    memo.Add(QStringLiteral("  ") + DeleteRuleClause(ui->CascadeCmb->currentText()));
}

void TCreateConstraintFrm::AddState(bool withIndex) {
  TConstraintState state;
  state.Deferred = ui->DeferRdo->isChecked();
  state.Rely = ui->RelyRdo->isChecked();
  state.Disable = ui->DisableRdo->isChecked();
  state.Novalidate = ui->NoValidateRdo->isChecked();
  const QStringList words = ConstraintStateWords(state, false);
  // The index attributes of a key come after its deferment and rely words, before its status.
  for (const QString& word : words)
    if (word == u"INITIALLY DEFERRED" || word == u"RELY")
      SqlMemo().Add(QStringLiteral("  ") + word);
  if (withIndex) {
    TKeyIndexAttributes a;
    a.PctFree = ui->PercentFreeEd->text();
    a.Initial = ui->InitialExtentEd->text();
    a.InitialUnit = ui->InitialExtentCmb->currentText();
    a.Next = ui->NextExtentEd->text();
    a.NextUnit = ui->NextExtentCmb->currentText();
    a.MinExtents = ui->MinExtentsEd->text();
    a.MaxExtents = ui->MaxExtentsEd->text();
    a.MaxExtentsUnlimited = ui->MaxExtentsChk->isChecked();
    a.PctIncrease = ui->PctIncreaseEd->text();
    a.Tablespace = ui->TableSpaceCmb->currentText();
    for (const QString& line : UsingIndexLines(a)) SqlMemo().Add(line);
  }
  for (const QString& word : words)
    if (word == u"DISABLE" || word == u"NOVALIDATE") SqlMemo().Add(QStringLiteral("  ") + word);
}

void TCreateConstraintFrm::BuildSql() {
  SqlMemo().Clear();
  FReplacedKey.clear();
  const TKind kind = Kind();
  if (kind == TKind::Primary) AddDropPrimaryKey();
  AddHead();
  SqlMemo().Add(QStringLiteral("ADD CONSTRAINT ") + Trim(ui->ConstraintNameEd->text()));
  switch (kind) {
    case TKind::Primary:
    case TKind::Unique:
      AddKeyBody();
      break;
    case TKind::Check:
      AddCheckBody();
      break;
    case TKind::Foreign:
      AddForeignBody();
      break;
  }
  AddState(kind == TKind::Primary || kind == TKind::Unique);
  RefreshOwnedPreview();
}

void TCreateConstraintFrm::OkBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    // Replacing the primary key drops the present one first: the user confirms that.
    if (!FReplacedKey.isEmpty() && Application() &&
        Application()->esMsgDBox(QStringLiteral("CreateConstraintFrn.ReplacePrimaryKey"),
                                 {FReplacedKey}, TMsgDlgType::Confirmation, false) != mrYes)
      return;
    if (!ExecuteSqlMemo()) return;
    SetModalResult(mrOk);
  });
}

}  // namespace kel
