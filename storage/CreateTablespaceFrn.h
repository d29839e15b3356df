// The tablespace dialog: creates a permanent, temporary or undo tablespace with its data files
// (or temp files) and options, or changes an existing one. Alter mode writes one ALTER
// TABLESPACE statement per change; kind, file type, block size and extent and segment space
// management are fixed once the tablespace exists.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "storage/TablespaceDef.h"

namespace Ui {
class TCreateTablespaceFrm;
}

namespace kel {

class TCreateTablespaceFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateTablespaceFrm(QWidget* owner);
  ~TCreateTablespaceFrm() override;

  void InitLoad() override;
  // "Alter": the flag and the tablespace's name.
  void ReadParams(TXLink* link) override;

 public slots:
  void ContentsRdoClick();
  void ExtentMgmtCmbChange();
  void StatusCmbChange();
  void AddDataFileBtnClick();
  void RemoveDataFileBtnClick();
  void DataFileTLFocusedRowChanged();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  TTablespaceKind Kind() const;
  // The definition as the controls hold it.
  TTablespaceDef Edited() const;
  void LoadTablespace();
  void LoadFiles();
  void ShowDefinition(const TTablespaceDef& def);
  void AddFileRow(const TFileSpec& file);
  // Enables exactly the controls the kind and the mode allow.
  void ApplyRules();

  Ui::TCreateTablespaceFrm* ui;
  TKelQuery TempQry;
  bool FIsAlter = false;
  QString FTablespace;
  TTablespaceDef FLoaded;
  QList<TFileSpec> FFiles;  // the rows of DataFileTL
};

}  // namespace kel
