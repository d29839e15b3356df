#include "tables/TableConstraints.h"

#include <QHash>
#include <QLabel>
#include <QSet>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"

namespace kel {

namespace {

using P = TTableConstraintPage;

const QString kPrimary = QStringLiteral("PRIMARY");
const QString kUnique = QStringLiteral("UNIQUE");
const QString kForeign = QStringLiteral("FOREIGN");
const QString kCheck = QStringLiteral("CHECK");
const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

// One column pair of a constraint (the in-memory tables ConsDefTbl and BakConsDefTbl).
struct TConsDef {
  QString TblCol;
  QString RefCol;
  int Idx = 0;
  int Seq = 0;
};

// A constraint with its column pairs, whether from the list or from the loaded copy.
struct TConstraint {
  QStringList Cells;
  QStringList Columns;
  QStringList RefColumns;
  // A loaded foreign key whose rule is ON DELETE SET NULL (the grid shows cascade only): kept
  // when the key is written anew.
  bool DeleteSetNull = false;

  QString Cell(int c) const { return Cells.value(c); }
  QString Type() const { return Trim(Cell(P::ccType)); }
  QString Name() const { return Trim(Cell(P::ccName)); }
  bool Flag(int c) const { return Cell(c) == kTrue; }
  bool TakesColumns() const {
    return Type() == kPrimary || Type() == kUnique || Type() == kForeign;
  }
  // A primary key left without columns (its last Primary Key cell cleared, its columns
  // dropped) is no key: it is never written as "PRIMARY KEY()".
  bool IsEmptyKey() const { return Type() == kPrimary && Columns.isEmpty(); }
};

// The pairs of every constraint number, in table order: one pass over the table.
QHash<int, QList<const TConsDef*>> GroupByIdx(const QList<TConsDef>& table) {
  QHash<int, QList<const TConsDef*>> groups;
  for (const TConsDef& def : table) groups[def.Idx].append(&def);
  return groups;
}

// The column list of one constraint: pairs with nothing chosen are left out.
void FillColumns(TConstraint& c, const QList<const TConsDef*>& defs) {
  for (const TConsDef* def : defs) {
    if (!Trim(def->TblCol).isEmpty()) c.Columns << Trim(def->TblCol);
    if (!Trim(def->RefCol).isEmpty()) c.RefColumns << Trim(def->RefCol);
  }
}

// The automatic name of a constraint type: "UNI_", "PK_", "FK_" or "CHK_" + table.
QString AutoName(const QString& type, const QString& table) {
  if (type == kUnique) return QStringLiteral("UNI_") + table;
  if (type == kPrimary) return QStringLiteral("PK_") + table;
  if (type == kForeign) return QStringLiteral("FK_") + table;
  if (type == kCheck) return QStringLiteral("CHK_") + table;
  return QString();
}

// The key part of a constraint: what it checks or which columns it covers.
QString KeyClause(const TConstraint& c) {
  const QString type = c.Type();
  if (type == kCheck) return QStringLiteral("CHECK(") + c.Cell(P::ccCheck) + u')';
  const QString columns = c.Columns.join(u',');
  if (type == kUnique) return QStringLiteral("UNIQUE(") + columns + u')';
  if (type == kPrimary) return QStringLiteral("PRIMARY KEY(") + columns + u')';
  return QStringLiteral("FOREIGN KEY(") + columns + u')';
}

QString ReferencedTable(const TConstraint& c) {
  return Trim(c.Cell(P::ccRefSchema)) + u'.' + Trim(c.Cell(P::ccRefTable));
}

// Deferral, reliance and state, the same in CREATE TABLE and in ADD.
QString StateClause(const TConstraint& c) {
  QString text;
  if (c.Flag(P::ccDeferrable)) text += QStringLiteral(" DEFERRABLE");
  if (c.Flag(P::ccDeferred)) text += QStringLiteral(" INITIALLY DEFERRED");
  if (c.Flag(P::ccRely)) text += QStringLiteral(" RELY");
  if (c.Flag(P::ccDisable)) {
    text += QStringLiteral(" DISABLE");
    if (!c.Flag(P::ccNovalidate)) text += QStringLiteral(" VALIDATE");
  } else if (c.Flag(P::ccNovalidate)) {
    text += QStringLiteral(" NOVALIDATE");
  }
  return text;
}

// One constraint inside CREATE TABLE: CR, two blanks, the clause and a comma.
QString CreateClause(const TConstraint& c) {
  QString text = QString(CR) + QStringLiteral("  ");
  if (!c.Name().isEmpty()) text += QStringLiteral("CONSTRAINT ") + c.Name() + u' ';
  text += KeyClause(c);
  if (c.Type() == kForeign) {
    text +=
        QStringLiteral(" REFERENCES ") + ReferencedTable(c) + u'(' + c.RefColumns.join(u',') + u')';
    if (c.Flag(P::ccDeleteCascade))
      text += QStringLiteral(" ON DELETE CASCADE");
    else if (c.DeleteSetNull)
      text += QStringLiteral(" ON DELETE SET NULL");
  }
  return text + StateClause(c) + u',';
}

// Whether a loaded constraint can keep its definition: type, columns, condition, reference and
// deferrability can only change by dropping the constraint and adding it anew.
bool DefinitionChanged(const TConstraint& before, const TConstraint& now) {
  if (before.Type() != now.Type()) return true;
  if (before.Flag(P::ccDeferrable) != now.Flag(P::ccDeferrable)) return true;
  if (now.Type() == kCheck) return Trim(before.Cell(P::ccCheck)) != Trim(now.Cell(P::ccCheck));
  if (before.Columns != now.Columns) return true;
  if (now.Type() != kForeign) return false;
  return ReferencedTable(before) != ReferencedTable(now) || before.RefColumns != now.RefColumns;
}

// The check condition of a NOT NULL column constraint: the column's name (bare or in double
// quotes, as the dictionary writes it) followed by " IS NOT NULL".
bool IsNotNullCheck(const QString& condition, const QSet<QString>& columns) {
  static const QString kSuffix = QStringLiteral(" IS NOT NULL");
  const QString text = Trim(condition);
  if (!text.endsWith(kSuffix, Qt::CaseInsensitive)) return false;
  QString column = text.left(text.size() - kSuffix.size());
  if (column.size() > 2 && column.startsWith(u'"') && column.endsWith(u'"'))
    column = column.mid(1, column.size() - 2);
  return columns.contains(column);
}

// A column of the current row; empty when the query has no such column.
QString Field(const TKelQuery& query, const char* column) {
  const QString name = QString::fromLatin1(column);
  return query.HasField(name) ? query.FieldByName(name) : QString();
}

// Whether the query's current row belongs to `owner` (rows without an OWNER column do).
bool OwnedBy(const TKelQuery& query, const QString& owner) {
  return !query.HasField(QStringLiteral("OWNER")) ||
         Trim(query.FieldByName(QStringLiteral("OWNER"))) == owner;
}

// A foreign key of another table that references a key of this one, as loaded.
struct TReferencingKey {
  QString Owner, Table, Name, DeleteRule;
  QStringList Columns;
  bool Deferrable = false, Deferred = false, Disabled = false, Novalidate = false;
  QString Qualified() const { return Owner + u'.' + Table + u'.' + Name; }
};

// The foreign keys that reference constraint `name` of `owner` (none for check constraints).
QList<TReferencingKey> ReferencingKeys(TEsDBInfo* db, const QString& owner, const QString& name) {
  QList<TReferencingKey> keys;
  if (!db || name.isEmpty()) return keys;
  TKelQuery q(db);
  q.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_05"));
  q.ParamByName(QStringLiteral("P_OWNER")) = owner;
  q.ParamByName(QStringLiteral("P_CONSTRAINT")) = name;
  q.Open();
  for (; !q.Eof(); q.Next()) {
    TReferencingKey k;
    k.Owner = Trim(Field(q, "OWNER"));
    k.Table = Trim(Field(q, "TABLE_NAME"));
    k.Name = Trim(Field(q, "CONSTRAINT_NAME"));
    k.DeleteRule = Trim(Field(q, "DELETE_RULE"));
    k.Deferrable = Trim(Field(q, "DEFERRABLE")) == u"DEFERRABLE";
    k.Deferred = Trim(Field(q, "DEFERRED")) == u"DEFERRED";
    k.Disabled = Trim(Field(q, "STATUS")) == u"DISABLED";
    k.Novalidate = Trim(Field(q, "VALIDATED")) == u"NOT VALIDATED";
    keys << k;
  }
  TKelQuery columns(db);
  columns.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_03"));
  for (TReferencingKey& k : keys) {
    columns.ParamByName(QStringLiteral("P_CONSTRAINT")) = k.Name;
    columns.Open();
    for (; !columns.Eof(); columns.Next())
      if (OwnedBy(columns, k.Owner)) k.Columns << Trim(Field(columns, "COLUMN_NAME"));
  }
  return keys;
}

// A loaded constraint and its row in the list now (none when the user dropped it).
struct TLoadedConstraint {
  TConstraint Before;
  TConstraint Now;
  int Idx = 0;
  int Row = -1;
  bool GoneWithColumn = false;  // a column of it is dropped: the column drop removes it
};

// The names of foreign keys as the questions list them: owner.table.name.
QString QualifiedNames(const QList<TReferencingKey>& keys) {
  QStringList names;
  for (const TReferencingKey& k : keys) names << k.Qualified();
  return names.join(QStringLiteral(", "));
}

// Whether the referencing foreign keys can be created again on the new definition of their
// key: it must still be a primary or unique key with as many columns as they have.
bool ReAddable(const TConstraint& now, const QList<TReferencingKey>& keys) {
  if (now.Type() != kPrimary && now.Type() != kUnique) return false;
  return std::all_of(keys.begin(), keys.end(), [&](const TReferencingKey& k) {
    return k.Columns.size() == now.Columns.size();
  });
}

QToolButton* ToolButton(QToolBar* bar, const char* name, const char* caption) {
  auto* button = new QToolButton(bar);
  button->setObjectName(QString::fromLatin1(name));
  button->setText(QString::fromLatin1(caption));
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  bar->addWidget(button);
  return button;
}

}  // namespace

struct TTableConstraintPage::TPrivate {
  TKelTreeList* ConstTreeList = nullptr;
  TKelTreeList* ConstConditionTreeList = nullptr;
  QLabel* ConsNameLbl = nullptr;
  QToolButton* AddCostraintBtn = nullptr;
  QToolButton* DropCostraintBtn = nullptr;
  QToolButton* AddCostraintConditionBtn = nullptr;
  QToolButton* DropCostraintConditionBtn = nullptr;

  TEsDBInfo* DB = nullptr;
  QString TableName;
  int Counter = 0;  // numbers constraints; never reused

  QList<TConsDef> ConsDefTbl;
  QList<TConsDef> BakConsDefTbl;
  TKelTreeList* BakConstTreeList = nullptr;  // the constraints as loaded; never shown
  QHash<int, QString> TypeOf;                // the last accepted type of every constraint number
  QSet<int> DeleteSetNull;                   // loaded foreign keys with ON DELETE SET NULL

  // Catalog lists, read once per dialog.
  QHash<QString, QStringList> TablesOfSchema;
  QHash<QString, QStringList> ColumnsOfTable;
  QHash<QString, QList<TReferencingKey>> ReferencingOf;  // owner.constraint -> foreign keys

  QString Owner;  // the loaded table's schema (alter mode)
  // The user's answers to the questions of the last build, by decision (constraint number and
  // what is done to it): the next build reuses them while the same change stands, so View SQL
  // then OK ask once.
  QHash<QString, bool> Answers;

  TEsDBInfo* Connection() const {
    return DB ? DB : Application() ? Application()->CurrentDBInfo() : nullptr;
  }
  int Idx(int row) const { return ConstTreeList->Cell(row, ccIdx).toInt(); }
  QString Type(int row) const { return Trim(ConstTreeList->Cell(row, ccType)); }
  int PrimaryRow(int except = -1) const {
    for (int r = 0; r < ConstTreeList->RowCount(); ++r)
      if (r != except && Type(r) == kPrimary) return r;
    return -1;
  }
  int NextSeq(int idx) const {
    int seq = 0;
    for (const TConsDef& def : ConsDefTbl)
      if (def.Idx == idx) seq = qMax(seq, def.Seq);
    return seq + 1;
  }
  QStringList Columns(int idx, bool referenced) const {
    QStringList out;
    for (const TConsDef& def : ConsDefTbl)
      if (def.Idx == idx) {
        const QString col = Trim(referenced ? def.RefCol : def.TblCol);
        if (!col.isEmpty()) out << col;
      }
    return out;
  }
  int AddConstraintRow(const QString& type, const QString& name) {
    const int row = ConstTreeList->AddRow();
    ConstTreeList->SetCell(row, ccType, type);
    ConstTreeList->SetCell(row, ccName, name);
    ConstTreeList->SetCell(row, ccIdx, QString::number(++Counter));
    TypeOf.insert(Counter, type);
    return row;
  }

  QStringList Tables(const QString& schema);
  const QList<TReferencingKey>& Referencing(const QString& owner, const QString& name);
  bool Agreed(const QString& decision, const QString& messageKey, const QStringList& args,
              QHash<QString, bool>& answers) const;
  QList<TLoadedConstraint> LoadedConstraints(const QStringList& droppedColumns) const;
  bool DropAgreed(int idx);
  static bool Ask(const QString& messageKey, const QStringList& args) {
    return Application() &&
           Application()->esMsgDBox(messageKey, args, TMsgDlgType::Confirmation, false) == mrYes;
  }
  QStringList TableColumns(const QString& schema, const QString& table);
  TConstraint Current(int row, const QHash<int, QList<const TConsDef*>>& groups) const;
  void FillReferenceLists(int row);
  void RefreshConditions();
  void UpdateConditionButtons();
  void ApplyTypeChange(int row);
};

QStringList TTableConstraintPage::TPrivate::Tables(const QString& schema) {
  if (schema.isEmpty()) return {};
  auto it = TablesOfSchema.find(schema);
  if (it != TablesOfSchema.end()) return *it;
  QStringList list;
  if (Application()) Application()->esOraTableList(Connection(), schema, list);
  TablesOfSchema.insert(schema, list);
  return list;
}

const QList<TReferencingKey>& TTableConstraintPage::TPrivate::Referencing(const QString& owner,
                                                                          const QString& name) {
  const QString key = owner + u'.' + name;
  auto it = ReferencingOf.find(key);
  if (it == ReferencingOf.end())
    it = ReferencingOf.insert(key, ReferencingKeys(Connection(), owner, name));
  return *it;
}

// The answer to a Yes/No question about dropping other tables' foreign keys: the one given for
// the same decision in the last build, else the user's. Every answer used goes into `answers`.
bool TTableConstraintPage::TPrivate::Agreed(const QString& decision, const QString& messageKey,
                                            const QStringList& args,
                                            QHash<QString, bool>& answers) const {
  auto it = Answers.constFind(decision);
  const bool yes = it != Answers.constEnd() ? *it : Ask(messageKey, args);
  answers.insert(decision, yes);
  return yes;
}

// Dropping a loaded key also drops the foreign keys of other tables that reference it (the drop
// has CASCADE): the user is asked first, naming them. Anything else is dropped at once.
bool TTableConstraintPage::TPrivate::DropAgreed(int idx) {
  for (int b = 0; b < BakConstTreeList->RowCount(); ++b) {
    if (BakConstTreeList->Cell(b, ccIdx).toInt() != idx) continue;
    const QString type = Trim(BakConstTreeList->Cell(b, ccType));
    if (type != kPrimary && type != kUnique) return true;
    const QString name = Trim(BakConstTreeList->Cell(b, ccName));
    const QList<TReferencingKey>& referencing = Referencing(Owner, name);
    if (referencing.isEmpty()) return true;
    return Ask(QStringLiteral("CreateTableFrm.DropReferencedKey"),
               {name, QualifiedNames(referencing)});
  }
  return true;
}

// Every loaded constraint with what became of it.
QList<TLoadedConstraint> TTableConstraintPage::TPrivate::LoadedConstraints(
    const QStringList& droppedColumns) const {
  const auto groups = GroupByIdx(ConsDefTbl);
  const auto loadedGroups = GroupByIdx(BakConsDefTbl);
  QHash<int, int> rowOfIdx;
  for (int row = 0; row < ConstTreeList->RowCount(); ++row) rowOfIdx.insert(Idx(row), row);
  QList<TLoadedConstraint> out;
  for (int loadedRow = 0; loadedRow < BakConstTreeList->RowCount(); ++loadedRow) {
    TLoadedConstraint l;
    l.Before.Cells = BakConstTreeList->RowCells(loadedRow);
    l.Idx = l.Before.Cells.value(ccIdx).toInt();
    FillColumns(l.Before, loadedGroups.value(l.Idx));
    l.GoneWithColumn =
        std::any_of(l.Before.Columns.begin(), l.Before.Columns.end(),
                    [&](const QString& column) { return droppedColumns.contains(column); });
    const auto found = rowOfIdx.constFind(l.Idx);
    if (found != rowOfIdx.constEnd()) {
      l.Row = *found;
      l.Now = Current(*found, groups);
    }
    out << l;
  }
  return out;
}

QStringList TTableConstraintPage::TPrivate::TableColumns(const QString& schema,
                                                         const QString& table) {
  if (schema.isEmpty() || table.isEmpty() || !Connection()) return {};
  const QString key = schema + u'.' + table;
  auto it = ColumnsOfTable.find(key);
  if (it != ColumnsOfTable.end()) return *it;
  QStringList list;
  TKelQuery query(Connection());
  query.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_04"));
  query.ParamByName(QStringLiteral("P_OWNER")) = schema;
  query.ParamByName(QStringLiteral("P_TABLE")) = table;
  query.Open();
  for (; !query.Eof(); query.Next()) list << query.FieldByName(QStringLiteral("COLUMN_NAME"));
  ColumnsOfTable.insert(key, list);
  return list;
}

TConstraint TTableConstraintPage::TPrivate::Current(
    int row, const QHash<int, QList<const TConsDef*>>& groups) const {
  TConstraint c;
  c.Cells = ConstTreeList->RowCells(row);
  FillColumns(c, groups.value(Idx(row)));
  c.DeleteSetNull = DeleteSetNull.contains(Idx(row));
  return c;
}

// The Referenced Table items follow the focused row's schema, the Referenced Column items its
// table (one list per column of the grid).
void TTableConstraintPage::TPrivate::FillReferenceLists(int row) {
  const QString schema = row < 0 ? QString() : Trim(ConstTreeList->Cell(row, ccRefSchema));
  const QString table = row < 0 ? QString() : Trim(ConstTreeList->Cell(row, ccRefTable));
  ConstTreeList->SetColumnItems(ccRefTable, Tables(schema));
  ConstConditionTreeList->SetColumnItems(dcRefCol, TableColumns(schema, table));
}

void TTableConstraintPage::TPrivate::RefreshConditions() {
  TKelTreeList* list = ConstConditionTreeList;
  const QSignalBlocker block(list);
  list->ClearRows();
  const int row = ConstTreeList->FocusedRow();
  if (row >= 0 && Type(row) != kCheck) {
    const int idx = Idx(row);
    for (const TConsDef& def : ConsDefTbl) {
      if (def.Idx != idx) continue;
      const int r = list->AddRow();
      list->SetCell(r, dcTblCol, def.TblCol);
      list->SetCell(r, dcRefCol, def.RefCol);
      list->SetCell(r, dcIdx, QString::number(def.Idx));
      list->SetCell(r, dcSeq, QString::number(def.Seq));
    }
  }
  ConsNameLbl->setText(row >= 0 ? ConstTreeList->Cell(row, ccName) : QString());
}

void TTableConstraintPage::TPrivate::UpdateConditionButtons() {
  const int row = ConstTreeList->FocusedRow();
  const QString type = row >= 0 ? Type(row) : QString();
  const bool takesColumns = type == kPrimary || type == kUnique || type == kForeign;
  AddCostraintConditionBtn->setEnabled(takesColumns);
  DropCostraintConditionBtn->setEnabled(takesColumns);
}

// ---------------------------------------------------------------------------------------------

TTableConstraintPage::TTableConstraintPage(QWidget* sheet) : QWidget(sheet), d(new TPrivate) {
  setObjectName(QStringLiteral("ConstraintPage"));
  if (sheet) {
    if (!sheet->layout()) new QVBoxLayout(sheet);
    sheet->layout()->addWidget(this);
  }
  auto* page = new QVBoxLayout(this);
  page->setContentsMargins(0, 0, 0, 0);

  auto* caption = new QLabel(QStringLiteral("Table Constraints :"), this);
  caption->setObjectName(QStringLiteral("ConstLbl"));
  page->addWidget(caption);

  auto* bar = new QToolBar(this);
  bar->setObjectName(QStringLiteral("ConstTbar"));
  d->AddCostraintBtn = ToolButton(bar, "AddCostraintBtn", "Add Constraint");
  d->DropCostraintBtn = ToolButton(bar, "DropCostraintBtn", "Drop Constraint");
  page->addWidget(bar);

  d->ConstTreeList = new TKelTreeList(this);
  d->ConstTreeList->setObjectName(QStringLiteral("ConstTreeList"));
  const auto column = [this](const char* name, const char* caption, TCellEditor editor,
                             const QStringList& items = {}, bool visible = true) {
    TKelTreeColumn c;
    c.Name = QString::fromLatin1(name);
    c.Caption = QString::fromLatin1(caption);
    c.Editor = editor;
    c.Items = items;
    c.Visible = visible;
    c.Width = editor == TCellEditor::Check ? 70 : 110;
    d->ConstTreeList->AddColumn(c);
  };
  column("ConstTreeListColumn1", "Type", TCellEditor::PickList,
         {kPrimary, kUnique, kForeign, kCheck});
  column("ConstTreeListColumn2", "Name", TCellEditor::Text);
  column("ConstTreeListColumn3", "Referenced Schema", TCellEditor::PickList);
  column("ConstTreeListColumn4", "Referenced Table", TCellEditor::PickList);
  column("ConstTreeListColumn5", "Check Constraint", TCellEditor::Text);
  column("ConstTreeListColumn6", "Disable", TCellEditor::Check);
  column("ConstTreeListColumn7", "Delete by Steps", TCellEditor::Check);
  column("ConstTreeListColumn8", "Deferrable", TCellEditor::Check);
  column("ConstTreeListColumn9", "Initially Deferred", TCellEditor::Check);
  column("ConstTreeListColumn10", "Novalidate", TCellEditor::Check);
  column("ConstTreeListColumn11", "Rely", TCellEditor::Check);
  column("ConstTreeListColumn12", "Idx", TCellEditor::Text, {}, false);
  page->addWidget(d->ConstTreeList, 2);

  // The "before" image of alter mode: same cells, never shown, never edited.
  d->BakConstTreeList = new TKelTreeList(this);
  d->BakConstTreeList->setObjectName(QStringLiteral("BakConstTreeList"));
  for (int c = 0; c < d->ConstTreeList->ColumnCount(); ++c)
    d->BakConstTreeList->AddColumn(d->ConstTreeList->Column(c));
  d->BakConstTreeList->hide();

  d->ConsNameLbl = new QLabel(this);
  d->ConsNameLbl->setObjectName(QStringLiteral("ConsNameLbl"));
  page->addWidget(d->ConsNameLbl);

  bar = new QToolBar(this);
  bar->setObjectName(QStringLiteral("ConstCondiTBar"));
  d->AddCostraintConditionBtn = ToolButton(bar, "AddCostraintConditionBtn", "Add");
  d->DropCostraintConditionBtn = ToolButton(bar, "DropCostraintConditionBtn", "Drop");
  page->addWidget(bar);

  d->ConstConditionTreeList = new TKelTreeList(this);
  d->ConstConditionTreeList->setObjectName(QStringLiteral("ConstConditionTreeList"));
  const auto pairColumn = [this](const char* name, const char* caption, TCellEditor editor,
                                 bool visible) {
    TKelTreeColumn c;
    c.Name = QString::fromLatin1(name);
    c.Caption = QString::fromLatin1(caption);
    c.Editor = editor;
    c.Visible = visible;
    c.Width = 160;
    d->ConstConditionTreeList->AddColumn(c);
  };
  pairColumn("ConstConditionTreeListColumn1", "Table Column", TCellEditor::PickList, true);
  pairColumn("ConstConditionTreeListColumn2", "Referenced Column", TCellEditor::PickList, true);
  pairColumn("ConstConditionTreeListColumn3", "Idx", TCellEditor::Text, false);
  pairColumn("ConstConditionTreeListColumn4", "Seq", TCellEditor::Text, false);
  page->addWidget(d->ConstConditionTreeList, 1);

  d->AddCostraintConditionBtn->setEnabled(false);
  d->DropCostraintConditionBtn->setEnabled(false);

  connect(d->AddCostraintBtn, &QAbstractButton::clicked, this, &P::AddCostraintBtnClick);
  connect(d->DropCostraintBtn, &QAbstractButton::clicked, this, &P::DropCostraintBtnClick);
  connect(d->AddCostraintConditionBtn, &QAbstractButton::clicked, this,
          &P::AddCostraintConditionBtnClick);
  connect(d->DropCostraintConditionBtn, &QAbstractButton::clicked, this,
          &P::DropCostraintConditionBtnClick);
  connect(d->ConstTreeList, &TKelTreeList::EditValueChanged, this,
          &P::ConstTreeListEditValueChanged);
  connect(d->ConstTreeList, &TKelTreeList::FocusedRowChanged, this,
          &P::ConstTreeListFocusedNodeChanged);
  connect(d->ConstConditionTreeList, &TKelTreeList::EditValueChanged, this,
          &P::ConstConditionTreeListEditValueChanged);
}

TTableConstraintPage::~TTableConstraintPage() = default;

TKelTreeList* TTableConstraintPage::ConstTreeList() const {
  return d->ConstTreeList;
}
TKelTreeList* TTableConstraintPage::ConstConditionTreeList() const {
  return d->ConstConditionTreeList;
}
TKelTreeList* TTableConstraintPage::BakConstTreeList() const {
  return d->BakConstTreeList;
}

void TTableConstraintPage::SetDBInfo(TEsDBInfo* db) {
  d->DB = db;
}
void TTableConstraintPage::SetTableName(const QString& tableName) {
  d->TableName = Trim(tableName);
}
void TTableConstraintPage::SetTableColumns(const QStringList& columns) {
  d->ConstConditionTreeList->SetColumnItems(dcTblCol, columns);
}
void TTableConstraintPage::SetSchemaList(const QStringList& schemas) {
  d->ConstTreeList->SetColumnItems(ccRefSchema, schemas);
}

QString TTableConstraintPage::ColumnList(int row, bool referenced) const {
  if (row < 0 || row >= d->ConstTreeList->RowCount()) return QString();
  return d->Columns(d->Idx(row), referenced).join(u',');
}

// ---------------------------------------------------------------------------------------------
// Editing.

void TTableConstraintPage::AddCostraintBtnClick() {
  const int row = d->AddConstraintRow(kUnique, AutoName(kUnique, d->TableName));
  d->ConstTreeList->SetFocusedRow(row);
}

void TTableConstraintPage::DropCostraintBtnClick() {
  const int row = d->ConstTreeList->FocusedRow();
  if (row < 0) return;
  const int idx = d->Idx(row);
  if (!d->DropAgreed(idx)) return;
  const bool primary = d->Type(row) == kPrimary;
  const QStringList columns = d->Columns(idx, false);
  d->ConsDefTbl.removeIf([idx](const TConsDef& def) { return def.Idx == idx; });
  if (primary) emit PrimaryKeyDropped(columns);
  d->TypeOf.remove(idx);
  d->ConstTreeList->DeleteRow(row);
  ConstTreeListFocusedNodeChanged(d->ConstTreeList->FocusedRow());
}

void TTableConstraintPage::AddCostraintConditionBtnClick() {
  const int row = d->ConstTreeList->FocusedRow();
  if (row < 0 || d->Type(row) == kCheck || d->Type(row).isEmpty()) return;
  const int idx = d->Idx(row);
  d->ConsDefTbl.append({QString(), QString(), idx, d->NextSeq(idx)});
  d->RefreshConditions();
  d->ConstConditionTreeList->SetFocusedRow(d->ConstConditionTreeList->RowCount() - 1);
  emit d->ConstConditionTreeList->RowsChanged();  // a user's edit, for the change tracker
}

void TTableConstraintPage::DropCostraintConditionBtnClick() {
  TKelTreeList* list = d->ConstConditionTreeList;
  const int pair = list->FocusedRow();
  if (pair < 0) return;
  const int idx = list->Cell(pair, dcIdx).toInt();
  const int seq = list->Cell(pair, dcSeq).toInt();
  const QString column = Trim(list->Cell(pair, dcTblCol));
  d->ConsDefTbl.removeIf([=](const TConsDef& def) { return def.Idx == idx && def.Seq == seq; });
  const int row = d->ConstTreeList->FocusedRow();
  // A column taken out of the primary key is no longer ticked in the column list.
  if (row >= 0 && d->Type(row) == kPrimary && !column.isEmpty() &&
      !d->Columns(idx, false).contains(column))
    emit PrimaryKeyDropped({column});
  d->RefreshConditions();
  list->SetFocusedRow(qMin(pair, list->RowCount() - 1));
  emit list->RowsChanged();  // a user's edit, for the change tracker
}

void TTableConstraintPage::ConstConditionTreeListEditValueChanged(int row, int column) {
  TKelTreeList* list = d->ConstConditionTreeList;
  if (column != dcTblCol && column != dcRefCol) return;
  const int idx = list->Cell(row, dcIdx).toInt();
  const int seq = list->Cell(row, dcSeq).toInt();
  for (TConsDef& def : d->ConsDefTbl)
    if (def.Idx == idx && def.Seq == seq) {
      def.TblCol = list->Cell(row, dcTblCol);
      def.RefCol = list->Cell(row, dcRefCol);
      break;
    }
}

void TTableConstraintPage::ConstTreeListFocusedNodeChanged(int row) {
  RunGuarded([&] {
    ConstTreeListColumn1PropertiesPopup();
    d->FillReferenceLists(row);
    d->RefreshConditions();
    d->UpdateConditionButtons();
  });
}

void TTableConstraintPage::ConstTreeListColumn1PropertiesPopup() {
  const int row = d->ConstTreeList->FocusedRow();
  QStringList items{kUnique, kForeign, kCheck};
  if (d->PrimaryRow(row) < 0) items.prepend(kPrimary);
  d->ConstTreeList->SetColumnItems(ccType, items);
}

// A new type: the cells it does not use are cleared and an automatic (or empty) name becomes
// the automatic name of the new type. A second primary key is refused.
void TTableConstraintPage::TPrivate::ApplyTypeChange(int row) {
  const int idx = Idx(row);
  const QString type = Type(row);
  const QString before = TypeOf.value(idx);
  if (type == kPrimary && PrimaryRow(row) >= 0) {
    ConstTreeList->SetCell(row, ccType, before);
    return;
  }
  TypeOf.insert(idx, type);
  if (type != kForeign) {
    ConstTreeList->SetCell(row, ccRefSchema, QString());
    ConstTreeList->SetCell(row, ccRefTable, QString());
    ConstTreeList->SetCell(row, ccDeleteCascade, QString());
  }
  if (type != kCheck) ConstTreeList->SetCell(row, ccCheck, QString());

  const QString name = Trim(ConstTreeList->Cell(row, ccName));
  const bool automatic = name.isEmpty() || name == AutoName(kUnique, TableName) ||
                         name == AutoName(kPrimary, TableName) ||
                         name == AutoName(kForeign, TableName) ||
                         name == AutoName(kCheck, TableName);
  if (automatic && !type.isEmpty()) ConstTreeList->SetCell(row, ccName, AutoName(type, TableName));
}

void TTableConstraintPage::ConstTreeListEditValueChanged(int row, int column) {
  RunGuarded([&] {
    switch (column) {
      case ccType: {
        const int idx = d->Idx(row);
        const bool wasPrimary = d->TypeOf.value(idx) == kPrimary;
        d->ApplyTypeChange(row);
        if (wasPrimary && d->Type(row) != kPrimary) emit PrimaryKeyDropped(d->Columns(idx, false));
        ConstTreeListColumn1PropertiesPopup();
        d->FillReferenceLists(row);
        d->RefreshConditions();
        d->UpdateConditionButtons();
        break;
      }
      case ccName:
        if (row == d->ConstTreeList->FocusedRow())
          d->ConsNameLbl->setText(d->ConstTreeList->Cell(row, ccName));
        break;
      case ccRefSchema:
        d->ConstTreeList->SetCell(row, ccRefTable, QString());
        d->FillReferenceLists(row);
        break;
      case ccRefTable:
        d->FillReferenceLists(row);
        break;
      default:
        break;
    }
  });
}

// ---------------------------------------------------------------------------------------------
// The column list's Primary Key cells.

void TTableConstraintPage::PrimaryKeyColumnChanged(const QString& column, bool checked) {
  int row = d->PrimaryRow();
  if (row < 0) row = d->AddConstraintRow(kPrimary, AutoName(kPrimary, d->TableName));
  const int idx = d->Idx(row);
  const QString name = Trim(column);
  if (checked) {
    if (!d->Columns(idx, false).contains(name))
      d->ConsDefTbl.append({name, QString(), idx, d->NextSeq(idx)});
  } else {
    d->ConsDefTbl.removeIf(
        [&](const TConsDef& def) { return def.Idx == idx && Trim(def.TblCol) == name; });
  }
  if (d->ConstTreeList->FocusedRow() == row)
    ConstTreeListFocusedNodeChanged(row);  // same row: refresh the pairs shown
  else
    d->ConstTreeList->SetFocusedRow(row);
}

QStringList TTableConstraintPage::PrimaryKeyColumns() const {
  const int row = d->PrimaryRow();
  return row < 0 ? QStringList() : d->Columns(d->Idx(row), false);
}

// ---------------------------------------------------------------------------------------------
// Alter mode: loading.

void TTableConstraintPage::LoadConstraints(TEsDBInfo* db, const QString& owner,
                                           const QString& table, const QStringList& columns) {
  d->DB = db;
  d->Owner = owner;
  d->Answers.clear();
  d->ConstTreeList->ClearRows();
  d->ConsDefTbl.clear();
  d->BakConsDefTbl.clear();
  d->BakConstTreeList->ClearRows();
  d->TypeOf.clear();
  d->DeleteSetNull.clear();

  static const QHash<QString, QString> kTypes = {
      {QStringLiteral("Check"), kCheck},
      {QStringLiteral("Unique Key"), kUnique},
      {QStringLiteral("Primary Key"), kPrimary},
      {QStringLiteral("Referential Integrity"), kForeign}};
  const QSet<QString> columnSet(columns.begin(), columns.end());
  const auto flag = [](bool on) { return on ? kTrue : kFalse; };

  TKelQuery list(db);
  list.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_01"));
  list.ParamByName(QStringLiteral("P_OWNER")) = owner;
  list.ParamByName(QStringLiteral("P_TABLE")) = table;
  list.Open();

  TKelQuery refTable(db);
  refTable.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_02"));
  TKelQuery pairs(db);
  pairs.LoadSQL(QStringLiteral("CreateTableFrn.Constraint_03"));
  QHash<QString, QString> tableOfConstraint;  // referenced constraint -> its table

  for (; !list.Eof(); list.Next()) {
    const QString type = kTypes.value(Trim(Field(list, "Type")));
    if (type.isEmpty()) continue;  // a view or object constraint: not the table's own
    const QString condition = Field(list, "Search Condition");
    // An enabled, validated NOT NULL check is the column's Not Null flag; a disabled or
    // unvalidated one is no flag (NULLABLE stays Y) and is listed as the check it is.
    const bool enforced =
        Trim(Field(list, "Status")) == u"ENABLED" && Trim(Field(list, "Validated")) == u"VALIDATED";
    if (type == kCheck && enforced && IsNotNullCheck(condition, columnSet)) continue;

    // A name the database generated (SYS_C...) is listed as it is: it is the only handle the
    // ALTER statements have on the constraint.
    const QString name = Trim(Field(list, "Constraint"));
    const int row = d->AddConstraintRow(type, name);
    TKelTreeList* tl = d->ConstTreeList;
    if (type == kCheck) tl->SetCell(row, ccCheck, condition);
    if (type == kForeign) {
      const QString refOwner = Trim(Field(list, "Ref. Owner"));
      const QString refConst = Trim(Field(list, "Ref. Const"));
      const QString key = refOwner + u'.' + refConst;
      if (!tableOfConstraint.contains(key)) {
        refTable.ParamByName(QStringLiteral("P_NAME")) = refConst;
        refTable.Open();
        // The name may exist in several schemas: the referenced owner's row wins.
        QString found = Trim(Field(refTable, "TABLE_NAME"));
        for (; !refTable.Eof(); refTable.Next())
          if (OwnedBy(refTable, refOwner)) {
            found = Trim(Field(refTable, "TABLE_NAME"));
            break;
          }
        tableOfConstraint.insert(key, found);
      }
      tl->SetCell(row, ccRefSchema, refOwner);
      tl->SetCell(row, ccRefTable, tableOfConstraint.value(key));
    }
    tl->SetCell(row, ccDisable, flag(Trim(Field(list, "Status")) != u"ENABLED"));
    // DELETE_RULE is CASCADE, SET NULL or NO ACTION.
    const QString deleteRule = Trim(Field(list, "Delete Rule"));
    tl->SetCell(row, ccDeleteCascade, flag(deleteRule == u"CASCADE"));
    if (type == kForeign && deleteRule == u"SET NULL") d->DeleteSetNull.insert(d->Idx(row));
    tl->SetCell(row, ccDeferrable, flag(Trim(Field(list, "Deferrable")) != u"NOT DEFERRABLE"));
    tl->SetCell(row, ccDeferred, flag(Trim(Field(list, "Deferred")) != u"IMMEDIATE"));
    tl->SetCell(row, ccNovalidate, flag(Trim(Field(list, "Validated")) != u"VALIDATED"));
    tl->SetCell(row, ccRely, flag(!Trim(Field(list, "Rely")).isEmpty()));

    if (type != kCheck) {
      const int idx = d->Idx(row);
      pairs.ParamByName(QStringLiteral("P_CONSTRAINT")) = name;
      pairs.Open();
      int seq = 0;
      for (; !pairs.Eof(); pairs.Next()) {
        if (pairs.HasField(QStringLiteral("OWNER")) && !OwnedBy(pairs, owner)) continue;
        TConsDef def{Trim(Field(pairs, "COLUMN_NAME")), QString(), idx, ++seq};
        if (type == kForeign) def.RefCol = Trim(Field(pairs, "R_COLUMN_NAME"));
        d->ConsDefTbl.append(def);
      }
    }
  }
  QList<QStringList> loaded;
  for (int row = 0; row < d->ConstTreeList->RowCount(); ++row)
    loaded << d->ConstTreeList->RowCells(row);
  d->BakConstTreeList->AddRows(loaded);
  d->BakConsDefTbl = d->ConsDefTbl;
  if (d->ConstTreeList->RowCount() > 0) d->ConstTreeList->SetFocusedRow(0);
  ConstTreeListFocusedNodeChanged(d->ConstTreeList->FocusedRow());
}

// ---------------------------------------------------------------------------------------------
// Statement text.

QString TTableConstraintPage::CreateClauses() const {
  const auto groups = GroupByIdx(d->ConsDefTbl);
  QString text;
  for (int row = 0; row < d->ConstTreeList->RowCount(); ++row) {
    const TConstraint c = d->Current(row, groups);
    if (!c.Type().isEmpty() && !c.IsEmptyKey()) text += CreateClause(c);
  }
  return text;
}

namespace {

// ALTER TABLE ... ADD: the statement's lines, the last one ending in ";" and CR.
void AddConstraintStatement(TSqlMemo& memo, const QString& header, const TConstraint& c) {
  memo.Add(header);
  QString body;
  if (c.Name().isEmpty()) {
    body = QStringLiteral("  ADD ");
  } else {
    memo.Add(QStringLiteral("  ADD CONSTRAINT ") + c.Name());
    body = QStringLiteral("  ");
  }
  body += KeyClause(c);
  if (c.Type() == kForeign) {
    body += QString(CR) + QStringLiteral("   REFERENCES ") + ReferencedTable(c) +
            QStringLiteral("  (") + c.RefColumns.join(u',') + u')';
    if (c.Flag(P::ccDeleteCascade))
      body += QString(CR) + QStringLiteral("   ON DELETE CASCADE");
    else if (c.DeleteSetNull)
      body += QString(CR) + QStringLiteral("   ON DELETE SET NULL");
  }
  memo.Add(body + StateClause(c) + u';' + CR);
}

// The drop the user asked for takes the foreign keys that reference the constraint with it
// (CASCADE); the drop of a drop-and-add only does so when `cascade` says the user agreed.
void DropConstraintStatement(TSqlMemo& memo, const QString& header, const TConstraint& loaded,
                             bool cascade = true) {
  const QString tail = cascade ? QStringLiteral(" CASCADE;") : QStringLiteral(";");
  memo.Add(header);
  if (loaded.Type() == kPrimary)
    memo.Add(QStringLiteral("  DROP PRIMARY KEY") + tail);
  else
    memo.Add(QStringLiteral("  DROP CONSTRAINT ") + loaded.Name() + tail);
}

// Creates a referencing foreign key again, on the key as it now is.
void ReAddReferencingKey(TSqlMemo& memo, const TReferencingKey& k, const QString& schema,
                         const QString& table, const QStringList& keyColumns) {
  memo.Add(QStringLiteral("ALTER TABLE ") + k.Owner + u'.' + k.Table);
  memo.Add(QStringLiteral("  ADD CONSTRAINT ") + k.Name);
  QString body = QStringLiteral("  FOREIGN KEY(") + k.Columns.join(u',') + u')' + QString(CR) +
                 QStringLiteral("   REFERENCES ") + schema + u'.' + table + QStringLiteral("  (") +
                 keyColumns.join(u',') + u')';
  if (k.DeleteRule == u"CASCADE") body += QString(CR) + QStringLiteral("   ON DELETE CASCADE");
  if (k.DeleteRule == u"SET NULL") body += QString(CR) + QStringLiteral("   ON DELETE SET NULL");
  if (k.Deferrable) body += QStringLiteral(" DEFERRABLE");
  if (k.Deferred) body += QStringLiteral(" INITIALLY DEFERRED");
  if (k.Disabled)
    body += k.Novalidate ? QStringLiteral(" DISABLE") : QStringLiteral(" DISABLE VALIDATE");
  else if (k.Novalidate)
    body += QStringLiteral(" NOVALIDATE");
  memo.Add(body + u';' + CR);
}

void ModifyConstraintStatement(TSqlMemo& memo, const QString& header, const QString& name,
                               const QString& change) {
  memo.Add(header);
  memo.Add(QStringLiteral("  MODIFY CONSTRAINT ") + name);
  memo.Add(QStringLiteral("  ") + change);
}

}  // namespace

void TTableConstraintPage::AlterConstraintSql(TSqlMemo& memo, const QString& schema,
                                              const QString& table) const {
  AlterConstraintSql(memo, schema, table, {});
}

void TTableConstraintPage::AlterConstraintSql(TSqlMemo& memo, const QString& schema,
                                              const QString& table,
                                              const QStringList& droppedColumns) const {
  const QString header = QStringLiteral("ALTER TABLE ") + schema + u'.' + table;
  QList<TReferencingKey> reAdd;     // foreign keys to create again once their key is back
  QHash<int, QStringList> reAddOn;  // constraint number -> names of the keys waiting for it
  QHash<QString, bool> answers;     // the answers this build used
  const auto referencingOf = [&](const TConstraint& c) {
    return c.Type() == kPrimary || c.Type() == kUnique ? d->Referencing(schema, c.Name())
                                                       : QList<TReferencingKey>();
  };

  QSet<int> loadedKept;  // loaded constraints that stay (possibly renamed or modified)
  for (const TLoadedConstraint& l : d->LoadedConstraints(droppedColumns)) {
    const TConstraint& before = l.Before;
    const TConstraint& now = l.Now;
    const int idx = l.Idx;
    // A constraint on a dropped column goes with the column (DROP ... CASCADE CONSTRAINTS):
    // no statement of its own; what is left of it, if anything, is added below.
    if (l.Row < 0) {
      if (!l.GoneWithColumn) DropConstraintStatement(memo, header, before);
      continue;
    }
    if (l.GoneWithColumn) continue;
    // An emptied primary key is a drop the user asked for; the foreign keys of other tables
    // that reference it go with it only when the user agrees, else the key stays.
    if (now.IsEmptyKey()) {
      const QList<TReferencingKey> referencing = referencingOf(before);
      if (referencing.isEmpty() || d->Agreed(QString::number(idx) + QStringLiteral("|drop"),
                                             QStringLiteral("CreateTableFrm.DropReferencedKey"),
                                             {before.Name(), QualifiedNames(referencing)}, answers))
        DropConstraintStatement(memo, header, before);
      else
        loadedKept.insert(idx);
      continue;
    }
    // A new definition replaces the constraint: dropped here, added with the new ones below.
    // Foreign keys of other tables that reference it would go with it: only with the user's
    // consent, and then they are created again after the add. When they could not be created
    // on the new definition (ValidateKeyChanges refuses that before any build), nothing is
    // built for the change.
    if (DefinitionChanged(before, now)) {
      const QList<TReferencingKey> referencing = referencingOf(before);
      if (!referencing.isEmpty()) {
        const bool agreed = ReAddable(now, referencing) &&
                            d->Agreed(QString::number(idx) + u'|' + CreateClause(now),
                                      QStringLiteral("CreateTableFrm.ReferencedKey"),
                                      {before.Name(), QualifiedNames(referencing)}, answers);
        if (!agreed) {
          loadedKept.insert(idx);  // nothing is built for this change
          continue;
        }
        for (const TReferencingKey& k : referencing) reAddOn[idx] << k.Name;
        reAdd << referencing;
      }
      DropConstraintStatement(memo, header, before, !referencing.isEmpty());
      continue;
    }
    loadedKept.insert(idx);

    QString name = before.Name();
    if (!now.Name().isEmpty() && now.Name() != before.Name()) {
      memo.Add(header);
      memo.Add(QStringLiteral("  RENAME CONSTRAINT %1").arg(before.Name()));
      memo.Add(QStringLiteral("  TO %1 ;").arg(now.Name()));
      name = now.Name();
    }
    const auto changed = [&](int cell) { return before.Flag(cell) != now.Flag(cell); };
    if (changed(ccDisable))
      ModifyConstraintStatement(
          memo, header, name,
          now.Flag(ccDisable) ? QStringLiteral("DISABLE;") : QStringLiteral("ENABLE;"));
    if (changed(ccDeleteCascade))
      ModifyConstraintStatement(memo, header, name, QStringLiteral("ON DELETE CASCADE;"));
    if (changed(ccDeferred))
      ModifyConstraintStatement(memo, header, name,
                                now.Flag(ccDeferred) ? QStringLiteral("INITIALLY DEFERRED;")
                                                     : QStringLiteral("INITIALLY IMMEDIATE;"));
    if (changed(ccNovalidate))
      ModifyConstraintStatement(
          memo, header, name,
          now.Flag(ccNovalidate) ? QStringLiteral("NOVALIDATE;") : QStringLiteral("VALIDATE;"));
    if (changed(ccRely))
      ModifyConstraintStatement(
          memo, header, name,
          now.Flag(ccRely) ? QStringLiteral("RELY;") : QStringLiteral("NORELY;"));
  }

  const auto groups = GroupByIdx(d->ConsDefTbl);
  for (int row = 0; row < d->ConstTreeList->RowCount(); ++row) {
    const int idx = d->Idx(row);
    if (loadedKept.contains(idx)) continue;
    const TConstraint c = d->Current(row, groups);
    if (c.Type().isEmpty() || c.IsEmptyKey()) continue;
    AddConstraintStatement(memo, header, c);
    for (const TReferencingKey& k : reAdd)
      if (reAddOn.value(idx).contains(k.Name))
        ReAddReferencingKey(memo, k, schema, table, c.Columns);
  }
  d->Answers = answers;
}

bool TTableConstraintPage::ValidateKeyChanges(const QString& schema,
                                              const QStringList& droppedColumns) const {
  for (const TLoadedConstraint& l : d->LoadedConstraints(droppedColumns)) {
    if (l.Row < 0 || l.GoneWithColumn || l.Now.IsEmptyKey()) continue;
    if (!DefinitionChanged(l.Before, l.Now)) continue;
    if (l.Before.Type() != kPrimary && l.Before.Type() != kUnique) continue;
    const QList<TReferencingKey>& referencing = d->Referencing(schema, l.Before.Name());
    if (referencing.isEmpty() || ReAddable(l.Now, referencing)) continue;
    d->ConstTreeList->SetFocusedRow(l.Row);
    const QString count = QString::number(referencing.first().Columns.size());
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateTableFrm.ReferencedKeyColumns"),
                               {l.Before.Name(), QualifiedNames(referencing), count, count},
                               TMsgDlgType::Error, false);
    return false;
  }
  return true;
}

void TTableConstraintPage::TableColumnRenamed(const QString& from, const QString& to) {
  const QString name = Trim(from);
  for (TConsDef& def : d->ConsDefTbl)
    if (Trim(def.TblCol) == name) def.TblCol = Trim(to);
  d->RefreshConditions();
}

void TTableConstraintPage::TableColumnDropped(const QString& column) {
  const QString name = Trim(column);
  d->ConsDefTbl.removeIf([&](const TConsDef& def) { return Trim(def.TblCol) == name; });
  d->RefreshConditions();
}

bool TTableConstraintPage::ValidateNames(TKelBaseFrm& form) const {
  QHash<int, QString> loadedName;
  for (int b = 0; b < d->BakConstTreeList->RowCount(); ++b)
    loadedName.insert(d->BakConstTreeList->Cell(b, ccIdx).toInt(),
                      Trim(d->BakConstTreeList->Cell(b, ccName)));
  TKelTreeList* list = d->ConstTreeList;
  for (int row = 0; row < list->RowCount(); ++row) {
    const QString name = Trim(list->Cell(row, ccName));
    if (d->Type(row).isEmpty() || name.isEmpty()) continue;
    const auto loaded = loadedName.constFind(d->Idx(row));
    if (loaded != loadedName.constEnd() && *loaded == name) continue;  // as the database has it
    list->setCurrentItem(list->topLevelItem(row), ccName);
    if (!form.CheckName(list->Column(ccName).Caption, list, name)) return false;
  }
  return true;
}

}  // namespace kel
