// The index dialog: creates a B-tree, unique or bitmap index on a table, or an index on a
// cluster, and changes the physical attributes of an existing index. Attributes an index can
// change in place go into one ALTER INDEX statement; those that need the index rebuilt go into
// a second, ALTER INDEX ... REBUILD.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateIndexFrm;
}

namespace kel {

class TKelTreeList;

class TCreateIndexFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateIndexFrm(QWidget* owner);
  ~TCreateIndexFrm() override;

  void InitLoad() override;
  // "Alter": the flag, owner and name of the index; "TableCreate": schema and table of the new
  // index; "ChangeOwner": the schema to preselect.
  void ReadParams(TXLink* link) override;

  // The statements as last built: in place (ALTER / CREATE) and rebuild.
  const TSqlMemo& MainList() { return SqlMemo(); }
  const TSqlMemo& RebuildList() const { return FRebuildList; }
  // What View SQL shows: the main text, then ";" and the rebuild text when there is one.
  QString PreviewText();

 public slots:
  void ViewSqlBtnClick();
  void OkBtnClick();
  void KindRadioClick();
  void TableIndexSchemaCmbChange();
  void TableIndexTblCmbChange();
  void ClusterIndexSchemaCmbChange();
  void ClusterIndexTblCmbChange();
  void TableRightBtnClick();
  void TableRightAllBtnClick();
  void TableLeftBtnClick();
  void TableLeftAllBtnClick();
  void TableUpperBtnClick();
  void TableLowerBtnClick();
  // Keeps the enabled state of the controls in step with the dialog's state.
  void UpdateState();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  // Shared by every numeric edit: digits and Backspace only.
  bool ValueEdKeyPress(QKeyEvent* event);
  void OptionClick(QWidget* box, bool checked);
  void FillCreate();
  void LoadIndex();
  void LoadIndexColumns(const QString& tableOwner, const QString& table);
  void FillTables();
  void FillClusters();
  void MoveRight(int row);
  void MoveLeft(int row);
  void RebuildKeyValueCmb();
  void InsertTableColumn(const QStringList& cells);
  bool IsTableKind() const;
  QString Loaded(const char* column) const;
  bool FailOnPageZero(QLabel* label, QWidget* control);
  void ShowMissing(const char* key, const QString& schema, const QString& name);

  // Create mode, one function per clause.
  void AddCreateHead();
  void AddOnClause();
  void AddPctFree();
  void AddTrans();
  void AddStorage();
  void AddLogging();
  void AddOnlineCompute();
  void AddTablespace();
  void AddCompress();
  void AddSortReverse();
  void AddParallel();
  // Alter mode.
  void BuildAlter();
  void BuildRebuild();
  QString ExtentUnit(const class QComboBox* combo) const;

  Ui::TCreateIndexFrm* ui;
  TKelQuery ColQry;
  TKelQuery TempQry;
  TKelQuery AlterQry01;
  TSqlMemo FRebuildList;

  bool FIsAlter = false;
  QString FSchema;
  QString FIndexName;
  QString FPresetTable;
  bool FLoading = false;
};

// A size in bytes as the kilobytes an extent edit shows: the shortest float form of bytes / 1024
// ("64", "62.5"); empty stays empty.
QString IndexBytesToKb(const QString& bytes);

}  // namespace kel
