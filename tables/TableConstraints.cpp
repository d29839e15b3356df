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

// A check box of the constraint list: ticked or not. A new row's boxes stay blank (the cell
// shows nothing rather than "False") until the user sets them.
struct TBox {
  bool On = false;
  bool Blank = true;

  QString Text() const { return Blank ? QString() : On ? kTrue : kFalse; }
  static TBox Of(bool on) { return {on, false}; }
  static TBox FromText(const QString& text) {
    return text.isEmpty() ? TBox() : TBox::Of(text == kTrue);
  }
};

// One column pair of a constraint: the table's column and, for a foreign key, the referenced
// one; `Seq` numbers the pairs of a constraint and is never reused.
struct TConsPair {
  QString TblCol;
  QString RefCol;
  int Seq = 0;
};

// One constraint of the page: the row of the constraint list is its view. Texts are kept as
// typed; the statements trim them.
struct TConstraint {
  int Idx = 0;  // the constraint's number, unique within the dialog
  QString TypeText, NameText, RefSchema, RefTable, Check;
  TBox Disable, DeleteCascade, Deferrable, Deferred, Novalidate, Rely;
  // A loaded foreign key whose rule is ON DELETE SET NULL (the grid shows cascade only): kept
  // when the key is written anew.
  bool DeleteSetNull = false;
  QList<TConsPair> Pairs;

  QString Type() const { return Trim(TypeText); }
  QString Name() const { return Trim(NameText); }
  bool TakesColumns() const {
    return Type() == kPrimary || Type() == kUnique || Type() == kForeign;
  }
  // The table's (or the referenced) columns in pair order; pairs with nothing chosen are left
  // out.
  QStringList Columns(bool referenced = false) const {
    QStringList out;
    for (const TConsPair& pair : Pairs)
      if (const QString col = Trim(referenced ? pair.RefCol : pair.TblCol); !col.isEmpty())
        out << col;
    return out;
  }
  QStringList RefColumns() const { return Columns(true); }
  // A primary or unique key left without columns (its last Primary Key cell cleared, its pairs
  // removed, its columns dropped) is no key: it is never written as "PRIMARY KEY()" or
  // "UNIQUE()", which Oracle refuses.
  bool IsEmptyKey() const {
    return (Type() == kPrimary || Type() == kUnique) && Columns().isEmpty();
  }
  int NextSeq() const {
    int seq = 0;
    for (const TConsPair& pair : Pairs) seq = qMax(seq, pair.Seq);
    return seq + 1;
  }

  // The list's cells, in cell-index order.
  QStringList Cells() const {
    return {TypeText,
            NameText,
            RefSchema,
            RefTable,
            Check,
            Disable.Text(),
            DeleteCascade.Text(),
            Deferrable.Text(),
            Deferred.Text(),
            Novalidate.Text(),
            Rely.Text(),
            QString::number(Idx)};
  }
  // A committed edit of cell `cell` (the type goes through the page's type rules instead).
  void SetCell(int cell, const QString& text) {
    switch (cell) {
      case P::ccType:
        TypeText = text;
        break;
      case P::ccName:
        NameText = text;
        break;
      case P::ccRefSchema:
        RefSchema = text;
        break;
      case P::ccRefTable:
        RefTable = text;
        break;
      case P::ccCheck:
        Check = text;
        break;
      case P::ccDisable:
        Disable = TBox::FromText(text);
        break;
      case P::ccDeleteCascade:
        DeleteCascade = TBox::FromText(text);
        break;
      case P::ccDeferrable:
        Deferrable = TBox::FromText(text);
        break;
      case P::ccDeferred:
        Deferred = TBox::FromText(text);
        break;
      case P::ccNovalidate:
        Novalidate = TBox::FromText(text);
        break;
      case P::ccRely:
        Rely = TBox::FromText(text);
        break;
      default:
        break;
    }
  }
};

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
  if (type == kCheck) return QStringLiteral("CHECK(") + c.Check + u')';
  const QString columns = c.Columns().join(u',');
  if (type == kUnique) return QStringLiteral("UNIQUE(") + columns + u')';
  if (type == kPrimary) return QStringLiteral("PRIMARY KEY(") + columns + u')';
  return QStringLiteral("FOREIGN KEY(") + columns + u')';
}

QString ReferencedTable(const TConstraint& c) {
  return Trim(c.RefSchema) + u'.' + Trim(c.RefTable);
}

// Deferral, reliance and state, the same in CREATE TABLE and in ADD.
QString StateClause(const TConstraint& c) {
  QString text;
  if (c.Deferrable.On) text += QStringLiteral(" DEFERRABLE");
  if (c.Deferred.On) text += QStringLiteral(" INITIALLY DEFERRED");
  if (c.Rely.On) text += QStringLiteral(" RELY");
  if (c.Disable.On) {
    text += QStringLiteral(" DISABLE");
    if (!c.Novalidate.On) text += QStringLiteral(" VALIDATE");
  } else if (c.Novalidate.On) {
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
    text += QStringLiteral(" REFERENCES ") + ReferencedTable(c) + u'(' + c.RefColumns().join(u',') +
            u')';
    if (c.DeleteCascade.On)
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
  if (before.Deferrable.On != now.Deferrable.On) return true;
  if (now.Type() == kCheck) return Trim(before.Check) != Trim(now.Check);
  if (before.Columns() != now.Columns()) return true;
  if (now.Type() != kForeign) return false;
  return ReferencedTable(before) != ReferencedTable(now) || before.RefColumns() != now.RefColumns();
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
    return k.Columns.size() == now.Columns().size();
  });
}

// The first key column whose data type differs from the column it takes the place of, as
// {old column, old type, new column, new type}; empty when every known type is kept. A foreign
// key's columns match the old key's types, and Oracle refuses one whose types differ from the
// key it references (ORA-02267), so it could not be created again on such a key.
QStringList ChangedKeyType(const TConstraint& before, const TConstraint& now,
                           const QHash<QString, QString>& types) {
  const QStringList was = before.Columns(), is = now.Columns();
  for (int i = 0; i < qMin(was.size(), is.size()); ++i) {
    const QString from = types.value(was[i]), to = types.value(is[i]);
    if (!from.isEmpty() && !to.isEmpty() && from != to) return {was[i], from, is[i], to};
  }
  return {};
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
  QHash<QString, QString> ColumnTypes;  // the table's columns and their data types
  int Counter = 0;                      // numbers constraints; never reused

  // The constraints, one per row of ConstTreeList in the same order: the list shows them, edits
  // of its cells are written back here and the rules run on this data.
  QList<TConstraint> Rows;
  // The constraints as loaded (alter mode), the "before" image; BakConstTreeList shows them.
  QList<TConstraint> Loaded;
  TKelTreeList* BakConstTreeList = nullptr;  // never shown

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
  bool Valid(int row) const { return row >= 0 && row < Rows.size(); }
  int Idx(int row) const { return Rows[row].Idx; }
  QString Type(int row) const { return Valid(row) ? Rows[row].Type() : QString(); }
  int PrimaryRow(int except = -1) const {
    for (int r = 0; r < Rows.size(); ++r)
      if (r != except && Type(r) == kPrimary) return r;
    return -1;
  }
  TConstraint* ByIdx(int idx) {
    for (TConstraint& c : Rows)
      if (c.Idx == idx) return &c;
    return nullptr;
  }
  const TConstraint* LoadedByIdx(int idx) const {
    for (const TConstraint& c : Loaded)
      if (c.Idx == idx) return &c;
    return nullptr;
  }
  // Shows the constraint of `row` in its list row (only the cells that differ are set).
  void ShowRow(int row) {
    const QStringList cells = Rows[row].Cells();
    for (int c = 0; c < cells.size(); ++c)
      if (ConstTreeList->Cell(row, c) != cells[c]) ConstTreeList->SetCell(row, c, cells[c]);
  }
  int AddConstraintRow(const QString& type, const QString& name) {
    TConstraint c;
    c.Idx = ++Counter;
    c.TypeText = type;
    c.NameText = name;
    return AppendRow(c);
  }
  // The list row first, then the data: a focus change signalled while the list changes finds
  // the rows it knows (a row not yet in the data shows nothing).
  int AppendRow(const TConstraint& c) {
    const int row = ConstTreeList->AddRow();
    Rows << c;
    ShowRow(row);
    return row;
  }
  void DeleteConstraintRow(int row) {
    ConstTreeList->DeleteRow(row);
    Rows.removeAt(row);
  }

  QStringList Tables(const QString& schema);
  QStringList TableColumns(const QString& schema, const QString& table);
  const QList<TReferencingKey>& Referencing(const QString& owner, const QString& name);
  bool Agreed(const QString& decision, const QString& messageKey, const QStringList& args,
              QHash<QString, bool>& answers) const;
  bool DropAgreed(int idx);
  static bool Ask(const QString& messageKey, const QStringList& args) {
    return Application() &&
           Application()->esMsgDBox(messageKey, args, TMsgDlgType::Confirmation, false) == mrYes;
  }
  QList<TLoadedConstraint> LoadedConstraints(const QStringList& droppedColumns) const;
  QStringList TypeItems(int row) const;
  void ReadReferenceLists(int row);
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
  const TConstraint* loaded = LoadedByIdx(idx);
  if (!loaded || (loaded->Type() != kPrimary && loaded->Type() != kUnique)) return true;
  const QList<TReferencingKey>& referencing = Referencing(Owner, loaded->Name());
  return referencing.isEmpty() || Ask(QStringLiteral("CreateTableFrm.DropReferencedKey"),
                                      {loaded->Name(), QualifiedNames(referencing)});
}

// Every loaded constraint with what became of it.
QList<TLoadedConstraint> TTableConstraintPage::TPrivate::LoadedConstraints(
    const QStringList& droppedColumns) const {
  QHash<int, int> rowOfIdx;
  for (int row = 0; row < Rows.size(); ++row) rowOfIdx.insert(Rows[row].Idx, row);
  QList<TLoadedConstraint> out;
  for (const TConstraint& before : Loaded) {
    TLoadedConstraint l;
    l.Before = before;
    l.Idx = before.Idx;
    const QStringList columns = before.Columns();
    l.GoneWithColumn = std::any_of(columns.begin(), columns.end(), [&](const QString& column) {
      return droppedColumns.contains(column);
    });
    const auto found = rowOfIdx.constFind(l.Idx);
    if (found != rowOfIdx.constEnd()) {
      l.Row = *found;
      l.Now = Rows[*found];
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

// The Type items of one row: "PRIMARY" only while no other row has it.
QStringList TTableConstraintPage::TPrivate::TypeItems(int row) const {
  QStringList items{kUnique, kForeign, kCheck};
  if (PrimaryRow(row) < 0) items.prepend(kPrimary);
  return items;
}

// The tables of the row's referenced schema and the columns of its referenced table, read
// when the row is focused or its reference changes, so the pick lists open without a wait.
void TTableConstraintPage::TPrivate::ReadReferenceLists(int row) {
  if (!Valid(row)) return;
  const QString schema = Trim(Rows[row].RefSchema);
  Tables(schema);
  TableColumns(schema, Trim(Rows[row].RefTable));
}

void TTableConstraintPage::TPrivate::RefreshConditions() {
  TKelTreeList* list = ConstConditionTreeList;
  const QSignalBlocker block(list);
  list->ClearRows();
  const int row = ConstTreeList->FocusedRow();
  if (Valid(row) && Type(row) != kCheck) {
    for (const TConsPair& pair : Rows[row].Pairs) {
      const int r = list->AddRow();
      list->SetCell(r, dcTblCol, pair.TblCol);
      list->SetCell(r, dcRefCol, pair.RefCol);
      list->SetCell(r, dcIdx, QString::number(Rows[row].Idx));
      list->SetCell(r, dcSeq, QString::number(pair.Seq));
    }
  }
  ConsNameLbl->setText(Valid(row) ? Rows[row].NameText : QString());
}

void TTableConstraintPage::TPrivate::UpdateConditionButtons() {
  const int row = ConstTreeList->FocusedRow();
  const bool takesColumns = Valid(row) && Rows[row].TakesColumns();
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
  // Pick lists that depend on the row's data: the Type items of each row, the tables of the
  // row's referenced schema, the columns of the focused constraint's referenced table.
  d->ConstTreeList->SetCellItemsProvider([this](int row, int col) {
    if (!d->Valid(row)) return d->ConstTreeList->Column(col).Items;
    if (col == ccType) return ConstTreeListColumn1PropertiesPopup(row);
    if (col == ccRefTable) return d->Tables(Trim(d->Rows[row].RefSchema));
    return d->ConstTreeList->Column(col).Items;
  });
  d->ConstConditionTreeList->SetCellItemsProvider([this](int, int col) {
    const int row = d->ConstTreeList->FocusedRow();
    if (col != dcRefCol || !d->Valid(row)) return d->ConstConditionTreeList->Column(col).Items;
    return d->TableColumns(Trim(d->Rows[row].RefSchema), Trim(d->Rows[row].RefTable));
  });
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
void TTableConstraintPage::SetTableColumnTypes(const QHash<QString, QString>& types) {
  d->ColumnTypes = types;
}
void TTableConstraintPage::SetSchemaList(const QStringList& schemas) {
  d->ConstTreeList->SetColumnItems(ccRefSchema, schemas);
}

QString TTableConstraintPage::ColumnList(int row, bool referenced) const {
  return d->Valid(row) ? d->Rows[row].Columns(referenced).join(u',') : QString();
}

// ---------------------------------------------------------------------------------------------
// Editing.

void TTableConstraintPage::AddCostraintBtnClick() {
  const int row = d->AddConstraintRow(kUnique, AutoName(kUnique, d->TableName));
  d->ConstTreeList->SetFocusedRow(row);
}

void TTableConstraintPage::DropCostraintBtnClick() {
  const int row = d->ConstTreeList->FocusedRow();
  if (!d->Valid(row)) return;
  if (!d->DropAgreed(d->Idx(row))) return;
  const bool primary = d->Type(row) == kPrimary;
  const QStringList columns = d->Rows[row].Columns();
  if (primary) emit PrimaryKeyDropped(columns);
  d->DeleteConstraintRow(row);
  ConstTreeListFocusedNodeChanged(d->ConstTreeList->FocusedRow());
}

void TTableConstraintPage::AddCostraintConditionBtnClick() {
  const int row = d->ConstTreeList->FocusedRow();
  if (!d->Valid(row) || d->Type(row) == kCheck || d->Type(row).isEmpty()) return;
  TConstraint& c = d->Rows[row];
  c.Pairs.append({QString(), QString(), c.NextSeq()});
  d->RefreshConditions();
  d->ConstConditionTreeList->SetFocusedRow(d->ConstConditionTreeList->RowCount() - 1);
  emit d->ConstConditionTreeList->RowsChanged();  // a user's edit, for the change tracker
}

void TTableConstraintPage::DropCostraintConditionBtnClick() {
  TKelTreeList* list = d->ConstConditionTreeList;
  const int pair = list->FocusedRow();
  if (pair < 0) return;
  TConstraint* c = d->ByIdx(list->Cell(pair, dcIdx).toInt());
  if (!c) return;
  const int seq = list->Cell(pair, dcSeq).toInt();
  const QString column = Trim(list->Cell(pair, dcTblCol));
  c->Pairs.removeIf([seq](const TConsPair& p) { return p.Seq == seq; });
  // A column taken out of the primary key is no longer ticked in the column list.
  if (c->Type() == kPrimary && !column.isEmpty() && !c->Columns().contains(column))
    emit PrimaryKeyDropped({column});
  d->RefreshConditions();
  list->SetFocusedRow(qMin(pair, list->RowCount() - 1));
  emit list->RowsChanged();  // a user's edit, for the change tracker
}

void TTableConstraintPage::ConstConditionTreeListEditValueChanged(int row, int column) {
  TKelTreeList* list = d->ConstConditionTreeList;
  if (column != dcTblCol && column != dcRefCol) return;
  TConstraint* c = d->ByIdx(list->Cell(row, dcIdx).toInt());
  if (!c) return;
  const int seq = list->Cell(row, dcSeq).toInt();
  for (TConsPair& pair : c->Pairs)
    if (pair.Seq == seq) {
      pair.TblCol = list->Cell(row, dcTblCol);
      pair.RefCol = list->Cell(row, dcRefCol);
      break;
    }
}

void TTableConstraintPage::ConstTreeListFocusedNodeChanged(int row) {
  RunGuarded([&] {
    d->ReadReferenceLists(row);
    d->RefreshConditions();
    d->UpdateConditionButtons();
  });
}

QStringList TTableConstraintPage::ConstTreeListColumn1PropertiesPopup(int row) const {
  return d->TypeItems(row);
}

// A new type: the cells it does not use are cleared and an automatic (or empty) name becomes
// the automatic name of the new type. A second primary key is refused (the row keeps its type).
void TTableConstraintPage::TPrivate::ApplyTypeChange(int row) {
  TConstraint& c = Rows[row];
  const QString typed = ConstTreeList->Cell(row, ccType);
  const QString type = Trim(typed);
  if (type == kPrimary && PrimaryRow(row) >= 0) {
    ShowRow(row);
    return;
  }
  c.TypeText = typed;
  if (type != kForeign) {
    c.RefSchema.clear();
    c.RefTable.clear();
    c.DeleteCascade = TBox();
  }
  if (type != kCheck) c.Check.clear();

  const QString name = c.Name();
  const bool automatic = name.isEmpty() || name == AutoName(kUnique, TableName) ||
                         name == AutoName(kPrimary, TableName) ||
                         name == AutoName(kForeign, TableName) ||
                         name == AutoName(kCheck, TableName);
  if (automatic && !type.isEmpty()) c.NameText = AutoName(type, TableName);
  ShowRow(row);
}

void TTableConstraintPage::ConstTreeListEditValueChanged(int row, int column) {
  RunGuarded([&] {
    if (!d->Valid(row)) return;
    TConstraint& c = d->Rows[row];
    if (column == ccType) {
      const bool wasPrimary = c.Type() == kPrimary;
      d->ApplyTypeChange(row);
      if (wasPrimary && c.Type() != kPrimary) emit PrimaryKeyDropped(c.Columns());
      d->ReadReferenceLists(row);
      d->RefreshConditions();
      d->UpdateConditionButtons();
      return;
    }
    c.SetCell(column, d->ConstTreeList->Cell(row, column));
    switch (column) {
      case ccName:
        if (row == d->ConstTreeList->FocusedRow()) d->ConsNameLbl->setText(c.NameText);
        break;
      case ccRefSchema:
        c.RefTable.clear();
        d->ShowRow(row);
        d->ReadReferenceLists(row);
        break;
      case ccRefTable:
        d->ReadReferenceLists(row);
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
  TConstraint& c = d->Rows[row];
  const QString name = Trim(column);
  if (checked) {
    if (!c.Columns().contains(name)) c.Pairs.append({name, QString(), c.NextSeq()});
  } else {
    c.Pairs.removeIf([&](const TConsPair& pair) { return Trim(pair.TblCol) == name; });
  }
  if (d->ConstTreeList->FocusedRow() == row)
    ConstTreeListFocusedNodeChanged(row);  // same row: refresh the pairs shown
  else
    d->ConstTreeList->SetFocusedRow(row);
}

QStringList TTableConstraintPage::PrimaryKeyColumns() const {
  const int row = d->PrimaryRow();
  return row < 0 ? QStringList() : d->Rows[row].Columns();
}

// ---------------------------------------------------------------------------------------------
// Alter mode: loading.

void TTableConstraintPage::LoadConstraints(TEsDBInfo* db, const QString& owner,
                                           const QString& table, const QStringList& columns) {
  d->DB = db;
  d->Owner = owner;
  d->Answers.clear();
  d->Rows.clear();
  d->Loaded.clear();
  d->ConstTreeList->ClearRows();
  d->BakConstTreeList->ClearRows();

  static const QHash<QString, QString> kTypes = {
      {QStringLiteral("Check"), kCheck},
      {QStringLiteral("Unique Key"), kUnique},
      {QStringLiteral("Primary Key"), kPrimary},
      {QStringLiteral("Referential Integrity"), kForeign}};
  const QSet<QString> columnSet(columns.begin(), columns.end());

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
    TConstraint c;
    c.Idx = ++d->Counter;
    c.TypeText = type;
    c.NameText = Trim(Field(list, "Constraint"));
    if (type == kCheck) c.Check = condition;
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
      c.RefSchema = refOwner;
      c.RefTable = tableOfConstraint.value(key);
    }
    c.Disable = TBox::Of(Trim(Field(list, "Status")) != u"ENABLED");
    // DELETE_RULE is CASCADE, SET NULL or NO ACTION.
    const QString deleteRule = Trim(Field(list, "Delete Rule"));
    c.DeleteCascade = TBox::Of(deleteRule == u"CASCADE");
    c.DeleteSetNull = type == kForeign && deleteRule == u"SET NULL";
    c.Deferrable = TBox::Of(Trim(Field(list, "Deferrable")) != u"NOT DEFERRABLE");
    c.Deferred = TBox::Of(Trim(Field(list, "Deferred")) != u"IMMEDIATE");
    c.Novalidate = TBox::Of(Trim(Field(list, "Validated")) != u"VALIDATED");
    c.Rely = TBox::Of(!Trim(Field(list, "Rely")).isEmpty());

    if (type != kCheck) {
      pairs.ParamByName(QStringLiteral("P_CONSTRAINT")) = c.NameText;
      pairs.Open();
      for (; !pairs.Eof(); pairs.Next()) {
        if (pairs.HasField(QStringLiteral("OWNER")) && !OwnedBy(pairs, owner)) continue;
        TConsPair pair{Trim(Field(pairs, "COLUMN_NAME")), QString(), c.NextSeq()};
        if (type == kForeign) pair.RefCol = Trim(Field(pairs, "R_COLUMN_NAME"));
        c.Pairs.append(pair);
      }
    }
    d->AppendRow(c);
  }
  d->Loaded = d->Rows;
  QList<QStringList> loaded;
  for (const TConstraint& c : d->Loaded) loaded << c.Cells();
  d->BakConstTreeList->AddRows(loaded);
  if (d->ConstTreeList->RowCount() > 0) d->ConstTreeList->SetFocusedRow(0);
  ConstTreeListFocusedNodeChanged(d->ConstTreeList->FocusedRow());
}

// ---------------------------------------------------------------------------------------------
// Statement text.

QString TTableConstraintPage::CreateClauses() const {
  QString text;
  for (const TConstraint& c : d->Rows)
    if (!c.Type().isEmpty() && !c.IsEmptyKey()) text += CreateClause(c);
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
            QStringLiteral("  (") + c.RefColumns().join(u',') + u')';
    if (c.DeleteCascade.On)
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
    // An emptied key is a drop the user asked for; the foreign keys of other tables
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
                            ChangedKeyType(before, now, d->ColumnTypes).isEmpty() &&
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
    const auto changed = [](const TBox& a, const TBox& b) { return a.On != b.On; };
    if (changed(before.Disable, now.Disable))
      ModifyConstraintStatement(
          memo, header, name,
          now.Disable.On ? QStringLiteral("DISABLE;") : QStringLiteral("ENABLE;"));
    if (changed(before.DeleteCascade, now.DeleteCascade))
      ModifyConstraintStatement(memo, header, name, QStringLiteral("ON DELETE CASCADE;"));
    if (changed(before.Deferred, now.Deferred))
      ModifyConstraintStatement(memo, header, name,
                                now.Deferred.On ? QStringLiteral("INITIALLY DEFERRED;")
                                                : QStringLiteral("INITIALLY IMMEDIATE;"));
    if (changed(before.Novalidate, now.Novalidate))
      ModifyConstraintStatement(
          memo, header, name,
          now.Novalidate.On ? QStringLiteral("NOVALIDATE;") : QStringLiteral("VALIDATE;"));
    if (changed(before.Rely, now.Rely))
      ModifyConstraintStatement(memo, header, name,
                                now.Rely.On ? QStringLiteral("RELY;") : QStringLiteral("NORELY;"));
  }

  for (const TConstraint& c : d->Rows) {
    const int idx = c.Idx;
    if (loadedKept.contains(idx)) continue;
    if (c.Type().isEmpty() || c.IsEmptyKey()) continue;
    AddConstraintStatement(memo, header, c);
    for (const TReferencingKey& k : reAdd)
      if (reAddOn.value(idx).contains(k.Name))
        ReAddReferencingKey(memo, k, schema, table, c.Columns());
  }
  d->Answers = answers;
}

bool TTableConstraintPage::ColumnDropAgreed(const QString& loadedColumn) {
  QStringList keys;
  QList<TReferencingKey> referencing;
  for (const TConstraint& c : d->Loaded) {
    if ((c.Type() != kPrimary && c.Type() != kUnique) || !c.Columns().contains(loadedColumn))
      continue;
    const QList<TReferencingKey>& of = d->Referencing(d->Owner, c.Name());
    if (of.isEmpty()) continue;
    keys << c.Name();
    referencing << of;
  }
  return referencing.isEmpty() ||
         d->Ask(QStringLiteral("CreateTableFrm.DropReferencedColumn"),
                {loadedColumn, keys.join(QStringLiteral(", ")), QualifiedNames(referencing)});
}

bool TTableConstraintPage::ValidateKeyChanges(const QString& schema,
                                              const QStringList& droppedColumns) const {
  for (const TLoadedConstraint& l : d->LoadedConstraints(droppedColumns)) {
    if (l.Row < 0 || l.GoneWithColumn || l.Now.IsEmptyKey()) continue;
    if (!DefinitionChanged(l.Before, l.Now)) continue;
    if (l.Before.Type() != kPrimary && l.Before.Type() != kUnique) continue;
    const QList<TReferencingKey>& referencing = d->Referencing(schema, l.Before.Name());
    if (referencing.isEmpty()) continue;
    if (!ReAddable(l.Now, referencing)) {
      d->ConstTreeList->SetFocusedRow(l.Row);
      const QString count = QString::number(referencing.first().Columns.size());
      if (Application())
        Application()->esMsgDBox(QStringLiteral("CreateTableFrm.ReferencedKeyColumns"),
                                 {l.Before.Name(), QualifiedNames(referencing), count, count},
                                 TMsgDlgType::Error, false);
      return false;
    }
    if (const QStringList changed = ChangedKeyType(l.Before, l.Now, d->ColumnTypes);
        !changed.isEmpty()) {
      d->ConstTreeList->SetFocusedRow(l.Row);
      if (Application())
        Application()->esMsgDBox(
            QStringLiteral("CreateTableFrm.ReferencedKeyTypes"),
            QStringList{l.Before.Name(), QualifiedNames(referencing)} + changed, TMsgDlgType::Error,
            false);
      return false;
    }
  }
  return true;
}

void TTableConstraintPage::TableColumnRenamed(const QString& from, const QString& to) {
  const QString name = Trim(from);
  for (TConstraint& c : d->Rows)
    for (TConsPair& pair : c.Pairs)
      if (Trim(pair.TblCol) == name) pair.TblCol = Trim(to);
  d->RefreshConditions();
}

void TTableConstraintPage::TableColumnDropped(const QString& column) {
  const QString name = Trim(column);
  for (TConstraint& c : d->Rows)
    c.Pairs.removeIf([&](const TConsPair& pair) { return Trim(pair.TblCol) == name; });
  d->RefreshConditions();
}

bool TTableConstraintPage::ValidateNames(TKelBaseFrm& form) const {
  TKelTreeList* list = d->ConstTreeList;
  for (int row = 0; row < d->Rows.size(); ++row) {
    const TConstraint& c = d->Rows[row];
    if (c.Type().isEmpty() || c.Name().isEmpty()) continue;
    const TConstraint* loaded = d->LoadedByIdx(c.Idx);
    if (loaded && loaded->Name() == c.Name()) continue;  // as the database has it
    list->setCurrentItem(list->topLevelItem(row), ccName);
    if (!form.CheckName(list->Column(ccName).Caption, list, c.Name())) return false;
  }
  return true;
}

}  // namespace kel
