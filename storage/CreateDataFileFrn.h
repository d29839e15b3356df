// The data file dialog. "Create" adds a data file (or temp file) to a tablespace; "Alter"
// resizes an existing file, changes its autoextension or takes it online or offline, one ALTER
// DATABASE statement per change.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "storage/FileSpec.h"

class QLineEdit;

namespace Ui {
class TCreateDataFileFrm;
}

namespace kel {

class TCreateDataFileFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateDataFileFrm(QWidget* owner);
  ~TCreateDataFileFrm() override;

  void InitLoad() override;
  // The mode comes from the verb ("Alter" or "Create"), then "TableSpaceName" and
  // "DataFileName".
  void ReadParams(TXLink* link) override;

 public slots:
  void TableSpaceCmbChange();
  void AutoExtendChkClick();
  void MaxSizeChkClick();
  void OmfChkClick();
  void DataFileListBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void LoadFile();
  void ShowFile(const TFileSpec& file);
  // Kind and file type of the chosen tablespace (create mode).
  void LoadTablespaceKind();
  TFileSpec Edited() const;
  bool CheckSize(QLabel* label, QLineEdit* edit, bool required);

  Ui::TCreateDataFileFrm* ui;
  TKelQuery TempQry;
  bool FIsAlter = false;
  QString FTablespace;
  QString FFileName;
  bool FTempFile = false;
  bool FBigfile = false;
  TFileSpec FLoaded;
  bool FLoadedOnline = true;
};

}  // namespace kel
