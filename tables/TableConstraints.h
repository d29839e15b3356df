// The "Constraints" page of the table dialog: the constraint list, the column pairs of the
// focused constraint, and the constraint text of CREATE TABLE and of ALTER TABLE.
#pragma once

#include <QHash>
#include <QMap>
#include <QStringList>
#include <QWidget>
#include <memory>

#include "plugin/KelHost.h"
#include "plugin/KelText.h"

namespace kel {

class TKelTreeList;
class TKelBaseFrm;

class TTableConstraintPage : public QWidget {
  Q_OBJECT
 public:
  // Builds the page's controls inside `sheet` (the dialog's ConstSheet).
  explicit TTableConstraintPage(QWidget* sheet);
  ~TTableConstraintPage() override;

  // Context the table dialog keeps up to date.
  void SetTableName(const QString& tableName);       // trimmed; used for the automatic names
  void SetTableColumns(const QStringList& columns);  // "Table Column" pick list
  // The data type of each column of the table, by name (upper case types, e.g. "NUMBER"): a key
  // whose foreign keys are created again must keep its columns' types.
  void SetTableColumnTypes(const QHash<QString, QString>& types);
  void SetSchemaList(const QStringList& schemas);  // "Referenced Schema" pick list

  // The column list's Primary Key cell of `column` was ticked or cleared.
  void PrimaryKeyColumnChanged(const QString& column, bool checked);
  // Columns of the primary-key constraint, in order (to tick the Primary Key cells).
  QStringList PrimaryKeyColumns() const;

  // Alter mode: loads the table's constraints into the list and the "before" copy.
  // `columns` are the table's column names (a check "<column> IS NOT NULL" is not listed).
  void LoadConstraints(TEsDBInfo* db, const QString& owner, const QString& table,
                       const QStringList& columns);

  // CREATE TABLE clauses: per constraint CR + two blanks + clause + ",".
  QString CreateClauses() const;
  // ALTER TABLE statements for the changes since loading, appended to `memo`.
  void AlterConstraintSql(TSqlMemo& memo, const QString& schema, const QString& table) const;
  // The same with the loaded columns this alter drops: constraints on them go with the column
  // drop and get no statement of their own.
  void AlterConstraintSql(TSqlMemo& memo, const QString& schema, const QString& table,
                          const QStringList& droppedColumns) const;

  // Alter mode, before a build: a loaded key whose new definition cannot carry the foreign keys
  // of other tables that reference it (not a key any more, or another number of columns) is
  // refused with a message naming them, the constraint focused. Dropping and adding it would
  // lose them.
  bool ValidateKeyChanges(const QString& schema, const QStringList& droppedColumns) const;

  // Alter mode, before a loaded column is dropped: when it belongs to a loaded primary or
  // unique key that foreign keys of other tables reference, the column drop would take them
  // along; the user is asked, naming them. True when nothing is referenced or the user agrees.
  bool ColumnDropAgreed(const QString& loadedColumn);

  // A column of the table was renamed or dropped in the column list: its pairs follow the
  // column (new name) or leave every constraint.
  void TableColumnRenamed(const QString& from, const QString& to);
  void TableColumnDropped(const QString& column);
  // Every constraint name typed or changed here passes the form's name check.
  bool ValidateNames(TKelBaseFrm& form) const;

  TKelTreeList* ConstTreeList() const;
  TKelTreeList* ConstConditionTreeList() const;
  // The constraints as loaded (alter mode), the "before" image of AlterConstraintSql.
  TKelTreeList* BakConstTreeList() const;

  // The connection for the referenced tables and columns (create mode; alter mode takes the one
  // given to LoadConstraints). Without one the host's current connection is used.
  void SetDBInfo(TEsDBInfo* db);

  // Cell indexes of the constraint list.
  enum TConstraintCell {
    ccType = 0,
    ccName = 1,
    ccRefSchema = 2,
    ccRefTable = 3,
    ccCheck = 4,
    ccDisable = 5,
    ccDeleteCascade = 6,
    ccDeferrable = 7,
    ccDeferred = 8,
    ccNovalidate = 9,
    ccRely = 10,
    ccIdx = 11,
  };
  // Cell indexes of the condition list.
  enum TConditionCell { dcTblCol = 0, dcRefCol = 1, dcIdx = 2, dcSeq = 3 };

  // The table columns (or, with `referenced`, the referenced columns) of the constraint in
  // `row`, joined with "," and no blanks.
  QString ColumnList(int row, bool referenced = false) const;

 public slots:
  void AddCostraintBtnClick();
  void DropCostraintBtnClick();
  void AddCostraintConditionBtnClick();
  void DropCostraintConditionBtnClick();
  void ConstTreeListEditValueChanged(int row, int column);
  void ConstTreeListFocusedNodeChanged(int row);
  // The Type drop-down's items for `row`: "PRIMARY" only while no other row has it. The list
  // asks for them whenever the row's Type editor opens.
  QStringList ConstTreeListColumn1PropertiesPopup(int row) const;
  void ConstConditionTreeListEditValueChanged(int row, int column);

 signals:
  // The primary key was dropped: the dialog clears these columns' Primary Key cells.
  void PrimaryKeyDropped(const QStringList& columns);

 private:
  struct TPrivate;
  std::unique_ptr<TPrivate> d;
};

}  // namespace kel
