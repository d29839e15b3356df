// The table dialog: CREATE TABLE with its columns, constraints, physical attributes and
// options, or, for an existing table, the ALTER TABLE and COMMENT statements of the changes.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include "plugin/KelForms.h"

namespace Ui {
class TCreateTableFrm;
}

namespace kel {

class TKelTreeList;
class TKelEditor;
class TTableConstraintPage;
class TTableStorage;

class TCreateTableFrm : public TKelDllChildFrm {
  Q_OBJECT
 public:
  // Cell indexes of the column list (and of its loaded copy).
  enum TColumnCell {
    ccName = 0,
    ccType = 1,
    ccSize = 2,
    ccPrec = 3,
    ccScale = 4,
    ccPk = 5,
    ccNull = 6,
    ccDefault = 7,
    ccComment = 8,
    ccID = 9,
  };

  explicit TCreateTableFrm(QWidget* owner);
  ~TCreateTableFrm() override;

  void InitLoad() override;
  void ReadParams(TXLink* link) override;

  bool IsAlter() const { return FIsAlter; }
  TKelTreeList* ColumnTL() const;
  TKelTreeList* BakColumnTL() const { return FBakColumnTL; }
  TTableConstraintPage* ConstraintPage() const { return FConstraints; }
  TTableStorage* Storage() const { return FStorage; }

  // The statement text of the current state (what View SQL shows).
  QString BuildText();

 public slots:
  // View SQL previews the statement as it stands; only OK validates.
  void ViewSqlBtnClick();
  void DefineColumnRdoClick();
  void AddFieldBtnClick();
  void DropFieldBtnClick();
  void ColumnTLEditValueChanged(int row, int column);
  void ColumnTreeColumnPkPropertiesEditValueChanged(int row);
  void ColumnTLFocusedNodeChanged(int row);
  void ObjectTableSchemaCmbChange();
  void ObjectTypeCmbChange();
  void TableNameEdChange();
  void ConstraintPagePrimaryKeyDropped(const QStringList& columns);

 protected:
  void KelDllChildFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  // Definition kinds, by the tag of their radio button.
  enum TDefineKind { dkColumns = 0, dkQuery = 1, dkObjectTable = 2 };

  void SetupColumnLists();
  TDefineKind DefineKind() const;
  bool ConstraintsShown() const;
  bool OptionsShown() const;
  QString Schema() const;
  QString TableName() const;
  QString QualifiedName() const;  // schema + "." + table

  // Loading an existing table.
  void LoadTable();
  void LoadColumns();
  void LoadTableComment();
  void LoadConstraints();
  void DisableHeader();

  // Column list helpers.
  void ApplyTypeRules(int row);
  void ApplyEditability(int row);
  void ColumnRenamed(int row);
  bool ValidateColumnNames();
  bool KeyChangesPass();
  QStringList DroppedColumns() const;
  QString QueryText() const;
  void PublishColumnNames();
  QStringList ColumnNames() const;

  // Object tables.
  void FillObjectTypes();
  void FillTypeAttributes();

  // Statement fragments.
  static QString TypeSpec(const QStringList& cells);
  QString LoadedTypeSpec(const QStringList& cells) const;
  static QString ColumnDefinition(const QStringList& cells);
  QString ColumnBlock() const;
  QString ColumnChanges() const;
  QString DropClause(const QString& dropList) const;
  QString AddClause(const QString& addList) const;
  QString ModifyClause(const QString& modifyList) const;
  QString OptionChanges() const;
  QString TableCommentLine() const;
  QStringList ColumnCommentLines() const;
  QString ColumnCommentLine(const QString& column, const QString& comment) const;
  void CreateBuild();
  void AlterBuild();

  Ui::TCreateTableFrm* ui;
  TKelTreeList* FBakColumnTL;
  TTableConstraintPage* FConstraints;
  TTableStorage* FStorage;

  bool FIsAlter = false;
  QString FSchema;
  QString FTableName;
  QString FLoadedComment;
  QSet<QString> FCharSemantics;  // column ids of loaded columns sized in characters
};

}  // namespace kel
