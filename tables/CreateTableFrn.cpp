#include "tables/CreateTableFrn.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "plugin/KelEditor.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "tables/TableConstraints.h"
#include "tables/TableStorage.h"
#include "ui_CreateTableFrn.h"

namespace kel {

namespace {

const QString kDefaultTablespace = QStringLiteral("<DEFAULT>");
const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");
const QString kIndent = QStringLiteral("  ");
// The name a column row had when the constraint page last heard of it: a rename carries the
// row's constraint pairs over to the new name.
constexpr int kKnownNameRole = Qt::UserRole + 7;

// Types whose length is given in the Size cell, and those with precision and scale.
bool HasSize(const QString& type) {
  static const QStringList types{"CHAR", "VARCHAR2", "NCHAR", "NVARCHAR2", "RAW"};
  return types.contains(type);
}
bool HasPrecision(const QString& type) {
  return type == u"FLOAT" || type == u"NUMBER";
}

// A column of a catalog row, empty when the query does not return it.
QString Field(const TKelQuery& q, const QString& column) {
  return q.HasField(column) ? q.FieldByName(column) : QString();
}

// Selects `text` in a drop-down list, adding it first when the list does not hold it (a table
// in a schema or tablespace the connection's lists do not show).
void SelectOrAdd(QComboBox* combo, const QString& text) {
  if (text.isEmpty()) return;
  if (combo->findText(text, Qt::MatchFixedString) < 0) combo->addItem(text);
  TKelBaseFrm::SelectComboText(combo, text);
}

// A catalog row without a value the dialog cannot do without: the table changed or vanished
// between browsing and opening.
[[noreturn]] void Vanished(const QString& schema, const QString& table) {
  const QString templ = Application()
                            ? Application()->esGetMSG(QStringLiteral("CreateTableFrm.Vanished"))
                            : QString();
  throw EKelError(
      FormatMsg(templ.isEmpty() ? QStringLiteral("The table %s.%s no longer exists.") : templ,
                {schema, table}));
}

TKelTreeColumn Col(const char* name, const char* caption, TCellEditor editor, int width,
                   bool editable = true, int min = 0, int max = 0) {
  TKelTreeColumn c;
  c.Name = QString::fromLatin1(name);
  c.Caption = QString::fromLatin1(caption);
  c.Editor = editor;
  c.Width = width;
  c.Editable = editable;
  c.Min = min;
  c.Max = max;
  return c;
}

}  // namespace

TCreateTableFrm::TCreateTableFrm(QWidget* owner)
    : TKelDllChildFrm(owner), ui(new Ui::TCreateTableFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTableFrm"));

  // The columns as loaded: never shown, never edited.
  FBakColumnTL = new TKelTreeList(ui->BackupSheet);
  FBakColumnTL->setObjectName(QStringLiteral("BakColumnTL"));
  FBakColumnTL->hide();
  SetupColumnLists();

  ui->QueryEditor->PlSqlEditor();
  ui->QueryEditor->setTabWidth(4);
  ui->MainPage->setCurrentIndex(0);
  ui->DefinePage->setCurrentIndex(dkColumns);

  FConstraints = new TTableConstraintPage(ui->ConstSheet);
  if (!ui->ConstSheet->layout()) {
    auto* layout = new QVBoxLayout(ui->ConstSheet);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(FConstraints);
  }
  FStorage = new TTableStorage(ui->StorageSheet, ui->OptionSheet);

  // The loaded copies live on a page that is never shown, next to the statement buffer's page.
  ui->BackupSheet->layout()->addWidget(FBakColumnTL);
  ui->BackupSheet->layout()->addWidget(FConstraints->BakConstTreeList());
  for (QWidget* sheet : {ui->BackupSheet, ui->TempSheet}) {
    const int index = ui->MainPage->indexOf(sheet);
    ui->MainPage->setTabVisible(index, false);
    ui->MainPage->setTabEnabled(index, false);
  }

  for (QRadioButton* rdo : {ui->DefineColumnRdo, ui->DefineQueryRdo, ui->ObjectTableRdo})
    connect(rdo, &QRadioButton::toggled, this, [this](bool on) {
      if (on) DefineColumnRdoClick();
    });
  connect(ui->AddFieldBtn, &QAbstractButton::clicked, this, &TCreateTableFrm::AddFieldBtnClick);
  connect(ui->DropFieldBtn, &QAbstractButton::clicked, this, &TCreateTableFrm::DropFieldBtnClick);
  connect(ui->ColumnTL, &TKelTreeList::EditValueChanged, this,
          &TCreateTableFrm::ColumnTLEditValueChanged);
  connect(ui->ColumnTL, &TKelTreeList::FocusedRowChanged, this,
          &TCreateTableFrm::ColumnTLFocusedNodeChanged);
  connect(ui->ObjectTableSchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateTableFrm::ObjectTableSchemaCmbChange);
  connect(ui->ObjectTypeCmb, &QComboBox::currentIndexChanged, this,
          &TCreateTableFrm::ObjectTypeCmbChange);
  connect(ui->TableNameEd, &QLineEdit::textChanged, this, &TCreateTableFrm::TableNameEdChange);
  connect(FConstraints, &TTableConstraintPage::PrimaryKeyDropped, this,
          &TCreateTableFrm::ConstraintPagePrimaryKeyDropped);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateTableFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTableFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateTableFrm::CancelBtnClick);
}

TCreateTableFrm::~TCreateTableFrm() {
  DisconnectControls();
  delete ui;
}

TKelTreeList* TCreateTableFrm::ColumnTL() const {
  return ui->ColumnTL;
}

void TCreateTableFrm::SetupColumnLists() {
  const QList<TKelTreeColumn> columns{
      Col("ColumnTreeColumnName", "Column", TCellEditor::Text, 150),
      Col("ColumnTreeColumnType", "Data Type", TCellEditor::PickList, 110),
      Col("ColumnTreeColumnSize", "Size", TCellEditor::Spin, 55, false, 0, 9999),
      Col("ColumnTreeColumnPrec", "Precision", TCellEditor::Spin, 60, false, 0, 38),
      Col("ColumnTreeColumnScale", "Scale", TCellEditor::Spin, 55, false, -84, 127),
      Col("ColumnTreeColumnPk", "Primary Key", TCellEditor::Check, 85, false),
      Col("ColumnTreeColumnNull", "Not Null?", TCellEditor::Check, 65),
      Col("ColumnTreeColumnDefault", "Default", TCellEditor::Text, 110),
      Col("ColumnTreeColumnComment", "Comment", TCellEditor::Text, 160),
      Col("ColumnTreeColumnID", "ColumnID", TCellEditor::Text, 60, false),
  };
  for (const TKelTreeColumn& c : columns) {
    ui->ColumnTL->AddColumn(c);
    FBakColumnTL->AddColumn(c);
  }
  ui->ColumnTL->SetColumnVisible(ccID, false);

  // The attributes of the chosen object type, for reading only.
  for (const TKelTreeColumn& c :
       {Col("ObjectTableTreeListColumn", "Column", TCellEditor::Text, 150, false),
        Col("ObjectTableTreeListType", "Data Type", TCellEditor::Text, 180, false),
        Col("ObjectTableTreeListNull", "Not Null?", TCellEditor::Text, 65, false),
        Col("ObjectTableTreeListDefault", "Default", TCellEditor::Text, 110, false)})
    ui->ObjectTableTreeList->AddColumn(c);
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateTableFrm::InitLoad() {
  TKelDllChildFrm::InitLoad();
  FillSchemaCombo(ui->SchemaCmb);
  UpperCaseItems(ui->SchemaCmb);

  ui->TableSpaceCmb->clear();
  ui->TableSpaceCmb->addItem(kDefaultTablespace);
  QStringList list;
  if (Application()) Application()->esOraTblspaceList(DBInfo(), list);
  ui->TableSpaceCmb->addItems(list);
  ui->TableSpaceCmb->setCurrentIndex(0);

  list.clear();
  if (Application()) Application()->esDataTypeList(list);
  ui->ColumnTL->SetColumnItems(ccType, list);
  FBakColumnTL->SetColumnItems(ccType, list);

  // The object type's owner is chosen by the user: no preselection, no query yet.
  const QStringList users = DBInfo() ? DBInfo()->UserList() : QStringList();
  {
    const QSignalBlocker block(ui->ObjectTableSchemaCmb);
    ui->ObjectTableSchemaCmb->clear();
    ui->ObjectTableSchemaCmb->addItems(users);
    ui->ObjectTableSchemaCmb->setCurrentIndex(-1);
  }
  FConstraints->SetSchemaList(users);
}

void TCreateTableFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FTableName = link->ParamByString(QStringLiteral("P_TableName"));
    SelectOrAdd(ui->SchemaCmb, FSchema);
    ui->TableNameEd->setText(FTableName);
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    SelectOrAdd(ui->SchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
}

void TCreateTableFrm::KelDllChildFrmShow() {
  if (FIsAlter) {
    LoadTable();
    ui->ColumnTL->SetFocusedRow(0);
    ui->ColumnTL->setFocus();
    return;
  }
  for (int i = 0; i < 10; ++i) AddFieldBtnClick();
  ui->ColumnTL->SetFocusedRow(0);
  ui->ColumnTL->setFocus();
  if (ui->TableNameEd->isEnabled()) ui->TableNameEd->setFocus();
}

// ---------------------------------------------------------------------------------------------
// Loading an existing table.

void TCreateTableFrm::LoadTable() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("SchTableNrn.Script"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_TABLE")) = FTableName;
  q.Open();
  if (q.Eof()) Vanished(FSchema, FTableName);
  TTableAttributes attributes;
  for (const QString& column : q.Data().Columns) attributes.insert(column, q.FieldByName(column));

  SelectOrAdd(ui->TableSpaceCmb, Trim(attributes.value(QStringLiteral("Tablespace"))));
  const QString tableType = Trim(attributes.value(QStringLiteral("Table Type")));
  if (!tableType.isEmpty()) {
    ui->ObjectTableRdo->setChecked(true);
    SelectOrAdd(ui->ObjectTableSchemaCmb,
                Trim(attributes.value(QStringLiteral("Table Type Owner"))));
    SelectOrAdd(ui->ObjectTypeCmb, tableType);
  } else {
    ui->DefineColumnRdo->setChecked(true);
    LoadColumns();
  }
  FStorage->Load(attributes);
  LoadTableComment();
  LoadConstraints();
  DisableHeader();
  const QString caption =
      Application() ? Application()->esGetMSG(QStringLiteral("AlterTableCaption")) : QString();
  setWindowTitle(FormatMsg(QStringLiteral("%s [%s] - %s "), {caption, FSchema, FTableName}));
}

void TCreateTableFrm::LoadColumns() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("SchTableNrn.Column"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_TABLE")) = FTableName;
  q.Open();
  QList<QStringList> rows;
  for (; !q.Eof(); q.Next()) {
    const QString type = Field(q, QStringLiteral("Data Type"));
    QStringList cells(ccID + 1);
    cells[ccName] = Field(q, QStringLiteral("Column"));
    cells[ccType] = type;
    if (HasSize(type)) cells[ccSize] = Trim(Field(q, QStringLiteral("Length")));
    // CHAR and VARCHAR2 sized in characters ("Length" is then the number of characters).
    if ((type == u"CHAR" || type == u"VARCHAR2") &&
        Trim(Field(q, QStringLiteral("Char Used"))) == u"C")
      FCharSemantics.insert(Trim(Field(q, QStringLiteral("column_id"))));
    if (HasPrecision(type)) {
      cells[ccPrec] = Trim(Field(q, QStringLiteral("Precision")));
      cells[ccScale] = Trim(Field(q, QStringLiteral("Scale")));
    }
    cells[ccPk] = kFalse;
    cells[ccNull] = Trim(Field(q, QStringLiteral("Null?"))) == u"N" ? kTrue : kFalse;
    // The dictionary keeps a default as typed, often with a trailing line break.
    cells[ccDefault] = Trim(Field(q, QStringLiteral("Default")));
    cells[ccComment] = Field(q, QStringLiteral("Comments"));
    cells[ccID] = Trim(Field(q, QStringLiteral("column_id")));
    // Rows are paired with their loaded copy by column id and name: without them every column
    // would read as renamed or dropped.
    if (cells[ccID].isEmpty() || Trim(cells[ccName]).isEmpty()) Vanished(FSchema, FTableName);
    rows << cells;
  }
  if (rows.isEmpty()) Vanished(FSchema, FTableName);
  for (TKelTreeList* list : {ui->ColumnTL, FBakColumnTL}) {
    list->ClearRows();
    list->AddRows(rows);
  }
  for (int r = 0; r < ui->ColumnTL->RowCount(); ++r)
    ui->ColumnTL->topLevelItem(r)->setData(ccName, kKnownNameRole, Trim(rows[r][ccName]));
  PublishColumnNames();
}

void TCreateTableFrm::LoadTableComment() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTableFrn.TableComment"));
  q.ParamByName(QStringLiteral("P_OWNER")) = FSchema;
  q.ParamByName(QStringLiteral("P_TABLE")) = FTableName;
  q.Open();
  ui->CommentEd->setPlainText(q.Eof() ? QString() : Field(q, QStringLiteral("COMMENTS")));
  // Kept as the editor holds it, so that an untouched comment compares equal.
  FLoadedComment = ui->CommentEd->toPlainText();
}

void TCreateTableFrm::LoadConstraints() {
  FConstraints->SetTableName(TableName());
  FConstraints->LoadConstraints(DBInfo(), FSchema, FTableName, ColumnNames());
  const QStringList pk = FConstraints->PrimaryKeyColumns();
  if (pk.isEmpty()) return;
  for (TKelTreeList* list : {ui->ColumnTL, FBakColumnTL})
    for (int r = 0; r < list->RowCount(); ++r)
      if (pk.contains(Trim(list->Cell(r, ccName)))) list->SetCell(r, ccPk, kTrue);
}

void TCreateTableFrm::DisableHeader() {
  for (QWidget* w : std::initializer_list<QWidget*>{
           ui->TableNameEd, ui->SchemaCmb, ui->TableSpaceCmb, ui->DefineColumnRdo,
           ui->DefineQueryRdo, ui->ObjectTableRdo, ui->ObjectTableSchemaCmb, ui->ObjectTypeCmb})
    w->setEnabled(false);
}

// ---------------------------------------------------------------------------------------------
// The column list.

void TCreateTableFrm::AddFieldBtnClick() {
  TKelTreeList* list = ui->ColumnTL;
  const int r = list->AddRow();
  for (int c = 0; c < list->ColumnCount(); ++c) list->SetCell(r, c, QString());
  list->topLevelItem(r)->setData(ccName, kKnownNameRole, QString());
  list->SetFocusedRow(r);
  list->SelectRows({r});
  list->setFocus();
}

void TCreateTableFrm::DropFieldBtnClick() {
  TKelTreeList* list = ui->ColumnTL;
  const int r = list->FocusedRow();
  if (list->RowCount() < 2 || r < 0) return;
  const QString name = Trim(list->Cell(r, ccName));
  const bool inPrimaryKey = list->Cell(r, ccPk) == kTrue;
  // A loaded column of a referenced key takes the key and the foreign keys of other tables
  // with it (CASCADE CONSTRAINTS): only when the user agrees.
  if (const QString id = list->Cell(r, ccID); FIsAlter && !id.isEmpty())
    for (int b = 0; b < FBakColumnTL->RowCount(); ++b)
      if (FBakColumnTL->Cell(b, ccID) == id &&
          !FConstraints->ColumnDropAgreed(Trim(FBakColumnTL->Cell(b, ccName))))
        return;
  list->SetFocusedRow(r > 0 ? r - 1 : 1);
  list->DeleteRow(r);
  if (inPrimaryKey && !name.isEmpty()) FConstraints->PrimaryKeyColumnChanged(name, false);
  // The column leaves every constraint that covered it (unless another row has its name).
  if (!name.isEmpty() && !ColumnNames().contains(name)) FConstraints->TableColumnDropped(name);
  PublishColumnNames();
}

void TCreateTableFrm::ColumnTLEditValueChanged(int row, int column) {
  Guarded([&] {
    if (column == ccPk) ColumnTreeColumnPkPropertiesEditValueChanged(row);
    ApplyTypeRules(row);
    ApplyEditability(row);
    if (column == ccName) ColumnRenamed(row);
    if (column == ccName || column == ccType) PublishColumnNames();
  });
}

// The constraint pairs of a row follow its name: they belong to the column, not to the text.
void TCreateTableFrm::ColumnRenamed(int row) {
  QTreeWidgetItem* item = ui->ColumnTL->topLevelItem(row);
  if (!item) return;
  const QString before = item->data(ccName, kKnownNameRole).toString();
  const QString now = Trim(ui->ColumnTL->Cell(row, ccName));
  item->setData(ccName, kKnownNameRole, now);
  if (before.isEmpty() || before == now) return;
  int others = 0;  // another row still carrying the old name keeps the pairs
  for (int r = 0; r < ui->ColumnTL->RowCount(); ++r)
    if (r != row && Trim(ui->ColumnTL->Cell(r, ccName)) == before) ++others;
  if (others == 0) FConstraints->TableColumnRenamed(before, now);
}

void TCreateTableFrm::ColumnTreeColumnPkPropertiesEditValueChanged(int row) {
  TKelTreeList* list = ui->ColumnTL;
  const bool checked = list->Cell(row, ccPk) == kTrue;
  FConstraints->SetTableName(TableName());
  FConstraints->PrimaryKeyColumnChanged(Trim(list->Cell(row, ccName)), checked);
  if (checked) list->SetCell(row, ccNull, kTrue);
}

void TCreateTableFrm::ColumnTLFocusedNodeChanged(int row) {
  if (row >= 0) ApplyEditability(row);
}

// Size for the character and raw types, precision and scale for the numeric ones; the cells
// a type does not take are emptied.
void TCreateTableFrm::ApplyTypeRules(int row) {
  TKelTreeList* list = ui->ColumnTL;
  const QString type = list->Cell(row, ccType);
  if (!HasSize(type)) list->SetCell(row, ccSize, QString());
  if (!HasPrecision(type)) {
    list->SetCell(row, ccPrec, QString());
    list->SetCell(row, ccScale, QString());
  }
}

void TCreateTableFrm::ApplyEditability(int row) {
  TKelTreeList* list = ui->ColumnTL;
  const QString type = list->Cell(row, ccType);
  list->SetColumnEditable(ccSize, HasSize(type));
  list->SetColumnEditable(ccPrec, HasPrecision(type));
  list->SetColumnEditable(ccScale, HasPrecision(type));
  list->SetColumnEditable(ccPk, !Trim(list->Cell(row, ccName)).isEmpty());
}

QStringList TCreateTableFrm::ColumnNames() const {
  QStringList names;
  const TKelTreeList* list = ui->ColumnTL;
  for (int r = 0; r < list->RowCount(); ++r) {
    const QString name = Trim(list->Cell(r, ccName));
    if (!name.isEmpty()) names << name;
  }
  return names;
}

void TCreateTableFrm::PublishColumnNames() {
  FConstraints->SetTableColumns(ColumnNames());
  QHash<QString, QString> types;
  const TKelTreeList* list = ui->ColumnTL;
  for (int r = 0; r < list->RowCount(); ++r)
    if (const QString name = Trim(list->Cell(r, ccName)); !name.isEmpty())
      types.insert(name, Trim(list->Cell(r, ccType)).toUpper());
  FConstraints->SetTableColumnTypes(types);
}

void TCreateTableFrm::ConstraintPagePrimaryKeyDropped(const QStringList& columns) {
  TKelTreeList* list = ui->ColumnTL;
  for (int r = 0; r < list->RowCount(); ++r)
    if (columns.contains(Trim(list->Cell(r, ccName)))) list->SetCell(r, ccPk, kFalse);
}

void TCreateTableFrm::TableNameEdChange() {
  FConstraints->SetTableName(TableName());
}

// ---------------------------------------------------------------------------------------------
// Definition kind and object tables.

void TCreateTableFrm::DefineColumnRdoClick() {
  ui->DefinePage->setCurrentIndex(DefineKind());
}

TCreateTableFrm::TDefineKind TCreateTableFrm::DefineKind() const {
  if (ui->DefineQueryRdo->isChecked()) return dkQuery;
  if (ui->ObjectTableRdo->isChecked()) return dkObjectTable;
  return dkColumns;
}

void TCreateTableFrm::ObjectTableSchemaCmbChange() {
  Guarded([this] { FillObjectTypes(); });
}

void TCreateTableFrm::ObjectTypeCmbChange() {
  Guarded([this] { FillTypeAttributes(); });
}

void TCreateTableFrm::FillObjectTypes() {
  {
    const QSignalBlocker block(ui->ObjectTypeCmb);
    ui->ObjectTypeCmb->clear();
  }
  ui->ObjectTableTreeList->ClearRows();
  const QString owner = Trim(ui->ObjectTableSchemaCmb->currentText());
  if (owner.isEmpty()) return;
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTableFrn.Type"));
  q.ParamByName(QStringLiteral("P_OWNER")) = owner;
  q.Open();
  QStringList types;
  for (; !q.Eof(); q.Next()) types << q.FieldByName(QStringLiteral("type_name"));
  const QSignalBlocker block(ui->ObjectTypeCmb);
  ui->ObjectTypeCmb->addItems(types);
  ui->ObjectTypeCmb->setCurrentIndex(-1);
}

void TCreateTableFrm::FillTypeAttributes() {
  TKelTreeList* list = ui->ObjectTableTreeList;
  list->ClearRows();
  const QString typeName = Trim(ui->ObjectTypeCmb->currentText());
  if (typeName.isEmpty()) return;
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTableFrn.TypeAttributeList"));
  q.ParamByName(QStringLiteral("P_OWNER")) = Trim(ui->ObjectTableSchemaCmb->currentText());
  q.ParamByName(QStringLiteral("P_TYPENAME")) = typeName;
  q.Open();
  for (; !q.Eof(); q.Next()) {
    const QString owner = Trim(Field(q, QStringLiteral("ATTR_TYPE_OWNER")));
    const QString modifier = Trim(Field(q, QStringLiteral("ATTR_TYPE_MOD")));
    const QString length = Trim(Field(q, QStringLiteral("LENGTH")));
    const QString precision = Trim(Field(q, QStringLiteral("PRECISION")));
    const QString scale = Trim(Field(q, QStringLiteral("SCALE")));
    QString type = Field(q, QStringLiteral("ATTR_TYPE_NAME"));
    if (!owner.isEmpty()) type = owner + u'.' + type;
    if (!modifier.isEmpty()) type = modifier + u' ' + type;
    // An attribute sized in characters shows it: "VARCHAR2(40 CHAR)" (NCHAR types always are).
    const bool inChars = Trim(Field(q, QStringLiteral("CHAR_USED"))) == u"C" &&
                         (type == u"CHAR" || type == u"VARCHAR2");
    if (length.toInt() > 0)
      type += u'(' + length + (inChars ? QStringLiteral(" CHAR") : QString()) + u')';
    else if (!precision.isEmpty() && !scale.isEmpty())
      type += u'(' + precision + u',' + scale + u')';
    const int r = list->AddRow();
    list->SetCell(r, 0, Field(q, QStringLiteral("ATTR_NAME")));
    list->SetCell(r, 1, type);
  }
}

// ---------------------------------------------------------------------------------------------
// Validation, View SQL and the statement build.

bool TCreateTableFrm::Validate() {
  if (TableName().isEmpty()) return CheckFail(ui->TableNameLbl, ui->TableNameEd);
  // A loaded table keeps the name it has; only a name typed here is checked.
  if (!FIsAlter && !CheckName(ui->TableNameLbl, ui->TableNameEd, TableName())) return false;
  switch (DefineKind()) {
    case dkColumns:
      if (ui->ColumnTL->RowCount() == 0)
        return CheckFail(ui->DefineColumnRdo->text(), ui->ColumnTL);
      if (!ValidateColumnNames()) return false;
      break;
    case dkQuery:
      if (Trim(ui->QueryEditor->Text()).isEmpty())
        return CheckFail(ui->DefineQueryRdo->text(), ui->QueryEditor);
      break;
    case dkObjectTable:
      if (Trim(ui->ObjectTableSchemaCmb->currentText()).isEmpty())
        return CheckFail(ui->ObjectTableSchemaLbl, ui->ObjectTableSchemaCmb);
      if (Trim(ui->ObjectTypeCmb->currentText()).isEmpty())
        return CheckFail(ui->ObjectTypeLbl, ui->ObjectTypeCmb);
      break;
  }
  if (ConstraintsShown() && !FConstraints->ValidateNames(*this)) return false;
  if (!KeyChangesPass()) return false;
  return FStorage->ExitChecksPass();
}

// A new table needs at least one named column; a loaded column cannot lose its name (that
// would drop it silently); every name typed or changed here is an identifier.
bool TCreateTableFrm::ValidateColumnNames() {
  TKelTreeList* list = ui->ColumnTL;
  const QString caption = list->Column(ccName).Caption;
  QHash<QString, QString> loadedName;
  for (int b = 0; b < FBakColumnTL->RowCount(); ++b)
    loadedName.insert(FBakColumnTL->Cell(b, ccID), Trim(FBakColumnTL->Cell(b, ccName)));
  int named = 0;
  for (int r = 0; r < list->RowCount(); ++r) {
    const QString name = Trim(list->Cell(r, ccName));
    const QString id = list->Cell(r, ccID);
    const auto focusRow = [list, r] {
      list->setCurrentItem(list->topLevelItem(r), ccName);
      return list;
    };
    if (name.isEmpty()) {
      if (FIsAlter && !id.isEmpty()) return CheckFail(caption, focusRow());
      continue;
    }
    ++named;
    const bool typedHere = !FIsAlter || id.isEmpty() || loadedName.value(id) != name;
    if (typedHere && !CheckName(caption, focusRow(), name)) return false;
  }
  if (named == 0 && !FIsAlter) return CheckFail(ui->DefineColumnRdo->text(), list);
  return true;
}

// A key change that would lose other tables' foreign keys is refused before anything is built,
// for the preview as for OK: the constraint page shows its message and focuses the constraint.
bool TCreateTableFrm::KeyChangesPass() {
  if (!FIsAlter || !ConstraintsShown()) return true;
  if (FConstraints->ValidateKeyChanges(Schema(), DroppedColumns())) return true;
  ui->MainPage->setCurrentWidget(ui->ConstSheet);
  FConstraints->ConstTreeList()->setFocus();
  return false;
}

void TCreateTableFrm::ViewSqlBtnClick() {
  Guarded([this] {
    // What an exit of the storage page refuses is never built, not even for the preview.
    if (!FStorage->ExitChecksPass()) return;
    if (!KeyChangesPass()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, SqlMemo().Text());
  });
}

QString TCreateTableFrm::BuildText() {
  BuildSql();
  return SqlMemo().Text();
}

void TCreateTableFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAlter)
    AlterBuild();
  else
    CreateBuild();
}

bool TCreateTableFrm::ConstraintsShown() const {
  return ui->MainPage->isTabVisible(ui->MainPage->indexOf(ui->ConstSheet));
}

bool TCreateTableFrm::OptionsShown() const {
  return ui->MainPage->isTabVisible(ui->MainPage->indexOf(ui->OptionSheet));
}

QString TCreateTableFrm::Schema() const {
  return Trim(ui->SchemaCmb->currentText());
}
QString TCreateTableFrm::TableName() const {
  return Trim(ui->TableNameEd->text());
}
QString TCreateTableFrm::QualifiedName() const {
  return Schema() + u'.' + TableName();
}

void TCreateTableFrm::CreateBuild() {
  TSqlMemo& memo = SqlMemo();
  const TDefineKind kind = DefineKind();
  memo.Add(QStringLiteral("CREATE TABLE ") + QualifiedName() + u' ');
  if (kind == dkColumns)
    memo.Add(Trim(ColumnBlock()));
  else if (kind == dkObjectTable)
    memo.Add(QStringLiteral("OF ") + Trim(ui->ObjectTableSchemaCmb->currentText()) + u'.' +
             Trim(ui->ObjectTypeCmb->currentText()));
  if (ui->TableSpaceCmb->currentText() != kDefaultTablespace)
    memo.Add(QStringLiteral("TABLESPACE ") + ui->TableSpaceCmb->currentText());
  memo.Add(FStorage->PhysicalFragment());
  if (OptionsShown())
    for (const QString& line : FStorage->OptionLines()) memo.Add(line);
  if (kind == dkQuery) {
    memo.SetText(Trim(memo.Text()));
    memo.Add(QStringLiteral("AS"));
    memo.Add(QueryText());
  }
  memo.SetText(Trim(memo.Text()) + u';' + QChar(CR));
  if (const QString line = TableCommentLine(); !line.isEmpty()) memo.Add(line);
  if (kind == dkColumns)
    for (const QString& line : ColumnCommentLines()) memo.Add(line);
}

// The query of CREATE TABLE ... AS, trimmed, without the ";" that ends it in an editor: the
// statement gets its own ";" and a second one would be refused.
QString TCreateTableFrm::QueryText() const {
  QString text = Trim(ui->QueryEditor->Text());
  while (text.endsWith(u';')) text = Trim(text.chopped(1));
  return text;
}

void TCreateTableFrm::AlterBuild() {
  TSqlMemo& memo = SqlMemo();
  const bool columns = DefineKind() == dkColumns;
  if (columns) memo.Add(Trim(ColumnChanges()));
  const QString options = Trim(OptionChanges());
  if (!options.isEmpty())
    memo.SetText(memo.Text() + QStringLiteral("ALTER TABLE ") + QualifiedName() + QChar(CR) +
                 options + u';');
  if (ConstraintsShown())
    FConstraints->AlterConstraintSql(memo, Schema(), TableName(), DroppedColumns());
  if (const QString line = TableCommentLine(); !line.isEmpty()) memo.Add(line);
  if (columns)
    for (const QString& line : ColumnCommentLines()) memo.Add(line);
}

// Physical attribute changes, then the option changes, each ending in CR.
QString TCreateTableFrm::OptionChanges() const {
  QString text = Trim(FStorage->PhysicalChanges()) + QChar(CR);
  if (OptionsShown()) text += FStorage->OptionChanges();
  return text;
}

// "NUMBER(10,2)", "VARCHAR2(30)", "NUMBER(5)" or the bare type.
QString TCreateTableFrm::TypeSpec(const QStringList& cells) {
  const QString& type = cells[ccType];
  const QString& size = cells[ccSize];
  const QString& precision = cells[ccPrec];
  const QString& scale = cells[ccScale];
  if (!type.isEmpty() && !size.isEmpty()) return type + u'(' + size + u')';
  if (!precision.isEmpty() && !scale.isEmpty())
    return type + u'(' + precision + u',' + scale + u')';
  if (!precision.isEmpty()) return type + u'(' + precision + u')';
  return type;
}

// The type of a loaded column as MODIFY writes it: a column sized in characters keeps its
// length semantics while it stays CHAR or VARCHAR2 ("VARCHAR2(20 CHAR)").
QString TCreateTableFrm::LoadedTypeSpec(const QStringList& cells) const {
  QString typeText = TypeSpec(cells);
  const QString& type = cells[ccType];
  if (FCharSemantics.contains(cells[ccID]) && (type == u"CHAR" || type == u"VARCHAR2") &&
      !cells[ccSize].isEmpty() && typeText.endsWith(u')'))
    typeText.insert(typeText.size() - 1, QStringLiteral(" CHAR"));
  return typeText;
}

// One column of a column list: CR, two blanks, name, type, default, NOT NULL and a comma.
QString TCreateTableFrm::ColumnDefinition(const QStringList& cells) {
  QString text = QChar(CR) + kIndent + Trim(cells[ccName]) + u' ' + TypeSpec(cells);
  const QString defaultValue = Trim(cells[ccDefault]);
  if (!defaultValue.isEmpty()) text += QStringLiteral(" DEFAULT ") + defaultValue;
  if (cells[ccNull] == kTrue) text += QStringLiteral(" NOT NULL");
  return text + u',';
}

QString TCreateTableFrm::ColumnBlock() const {
  const TKelTreeList* list = ui->ColumnTL;
  QString text;
  for (int r = 0; r < list->RowCount(); ++r) {
    const QStringList cells = list->RowCells(r);
    if (!Trim(cells[ccName]).isEmpty()) text += ColumnDefinition(cells);
  }
  if (ConstraintsShown()) text += FConstraints->CreateClauses();
  if (text.isEmpty()) return text;
  text.chop(1);
  return u'(' + text + QChar(CR) + u')';
}

QString TCreateTableFrm::DropClause(const QString& dropList) const {
  return QStringLiteral("ALTER TABLE ") + QualifiedName() + QChar(CR) + QStringLiteral(" DROP(") +
         dropList + QStringLiteral(") CASCADE CONSTRAINTS;") + QChar(CR);
}

QString TCreateTableFrm::AddClause(const QString& addList) const {
  return QStringLiteral("ALTER TABLE ") + QualifiedName() + QChar(CR) + QStringLiteral(" ADD (") +
         addList.chopped(1) + QChar(CR) + QStringLiteral(");") + QChar(CR);
}

QString TCreateTableFrm::ModifyClause(const QString& modifyList) const {
  return QStringLiteral("ALTER TABLE ") + QualifiedName() + QChar(CR) + QStringLiteral("MODIFY (") +
         modifyList.chopped(1) + QChar(CR) + QStringLiteral(");") + QChar(CR);
}

// Names of the loaded columns that no row of the list carries any more (by column id).
QStringList TCreateTableFrm::DroppedColumns() const {
  QSet<QString> ids;
  for (int r = 0; r < ui->ColumnTL->RowCount(); ++r) ids.insert(ui->ColumnTL->Cell(r, ccID));
  QStringList dropped;
  for (int b = 0; b < FBakColumnTL->RowCount(); ++b)
    if (!ids.contains(FBakColumnTL->Cell(b, ccID))) dropped << Trim(FBakColumnTL->Cell(b, ccName));
  return dropped;
}

// The column changes since loading: drops first, then renames, additions and modifications.
QString TCreateTableFrm::ColumnChanges() const {
  const TKelTreeList* list = ui->ColumnTL;
  const TKelTreeList* loaded = FBakColumnTL;
  QHash<QString, int> rowOfId;
  rowOfId.reserve(list->RowCount());
  for (int r = 0; r < list->RowCount(); ++r) {
    const QString id = list->Cell(r, ccID);
    if (!rowOfId.contains(id)) rowOfId.insert(id, r);  // the first row of an id pairs with it
  }

  QString dropList, renames, modifyList, addList;
  for (int b = 0; b < loaded->RowCount(); ++b) {
    const QStringList before = loaded->RowCells(b);
    const auto found = rowOfId.constFind(before[ccID]);
    if (found == rowOfId.constEnd()) {
      if (!dropList.isEmpty()) dropList += u',';
      dropList += Trim(before[ccName]);
      continue;
    }
    const QStringList now = list->RowCells(*found);
    const QString oldName = Trim(before[ccName]);
    const QString newName = Trim(now[ccName]);
    if (newName != oldName)
      renames += QStringLiteral("ALTER TABLE ") + QualifiedName() + QChar(CR) +
                 QStringLiteral("RENAME COLUMN %1 TO %2;").arg(oldName, newName) + QChar(CR);

    const bool typeChanged = now[ccType] != before[ccType] || now[ccSize] != before[ccSize] ||
                             now[ccPrec] != before[ccPrec] || now[ccScale] != before[ccScale];
    const bool defaultChanged = Trim(now[ccDefault]) != Trim(before[ccDefault]);
    const bool notNull = now[ccNull] == kTrue;
    const bool nullChanged = notNull != (before[ccNull] == kTrue);
    if (!typeChanged && !defaultChanged && !nullChanged) continue;

    modifyList += QChar(CR) + kIndent + newName + u' ';
    if (typeChanged) modifyList += LoadedTypeSpec(now);
    // The new default is read from the row at the loaded column's position (the matched row's
    // when no row stands there); a cleared default is written as NULL, which removes it.
    if (defaultChanged) {
      const QString value =
          b < list->RowCount() ? Trim(list->Cell(b, ccDefault)) : Trim(now[ccDefault]);
      modifyList +=
          QStringLiteral(" DEFAULT ") + (value.isEmpty() ? QStringLiteral("NULL") : value);
    }
    if (nullChanged) modifyList += notNull ? QStringLiteral(" NOT NULL") : QStringLiteral(" NULL");
    modifyList += u',';
  }
  for (int r = 0; r < list->RowCount(); ++r) {
    const QStringList cells = list->RowCells(r);
    if (cells[ccID].isEmpty() && !Trim(cells[ccName]).isEmpty()) addList += ColumnDefinition(cells);
  }

  QString text;
  if (!dropList.isEmpty()) text += DropClause(dropList);
  if (!renames.isEmpty()) text += Trim(renames) + QChar(CR);
  if (!addList.isEmpty()) text += AddClause(addList);
  if (!modifyList.isEmpty()) text += ModifyClause(modifyList);
  return text;
}

// A comment box that holds anything, even only blanks or a line break, is written (as an
// empty comment once trimmed); in alter mode only a comment that differs from the loaded one.
QString TCreateTableFrm::TableCommentLine() const {
  if (TableName().isEmpty()) return {};
  const QString comment = ui->CommentEd->toPlainText();
  if (FIsAlter ? comment == FLoadedComment : comment.isEmpty()) return {};
  return QStringLiteral("COMMENT ON TABLE ") + QualifiedName() + QStringLiteral(" IS '") +
         QuoteSql(Trim(comment)) + QStringLiteral("';");
}

QString TCreateTableFrm::ColumnCommentLine(const QString& column, const QString& comment) const {
  return QStringLiteral("COMMENT ON COLUMN ") + QualifiedName() + u'.' + column +
         QStringLiteral(" IS '") + QuoteSql(Trim(comment)) + QStringLiteral("';");
}

// New columns (and every column when creating) get their comment when the cell holds anything;
// loaded columns when it differs from the loaded one, so an emptied comment is written too.
QStringList TCreateTableFrm::ColumnCommentLines() const {
  const TKelTreeList* list = ui->ColumnTL;
  QHash<QString, QString> loadedComment;
  if (FIsAlter) {
    loadedComment.reserve(FBakColumnTL->RowCount());
    for (int b = 0; b < FBakColumnTL->RowCount(); ++b) {
      const QString id = FBakColumnTL->Cell(b, ccID);
      if (!loadedComment.contains(id)) loadedComment.insert(id, FBakColumnTL->Cell(b, ccComment));
    }
  }
  QStringList lines;
  for (int r = 0; r < list->RowCount(); ++r) {
    const QString name = Trim(list->Cell(r, ccName));
    if (name.isEmpty()) continue;
    const QString id = list->Cell(r, ccID);
    const QString comment = list->Cell(r, ccComment);
    const bool write =
        FIsAlter && !id.isEmpty() ? comment != loadedComment.value(id) : !comment.isEmpty();
    if (write) lines << ColumnCommentLine(name, comment);
  }
  return lines;
}

}  // namespace kel
