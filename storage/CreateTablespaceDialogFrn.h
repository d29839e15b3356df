// The add-data-file dialog: one data file's path, size, reuse flag, autoextension and the
// Oracle-managed-file choice. It only collects and checks; the tablespace dialog reads the file
// back (FileSpec) and writes the clause itself.
#pragma once

#include <QStringList>

#include "plugin/KelForms.h"
#include "storage/FileSpec.h"

namespace Ui {
class TCreateTablespaceDialogFrm;
}

namespace kel {

class TCreateTablespaceDialogFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateTablespaceDialogFrm(QWidget* owner);
  ~TCreateTablespaceDialogFrm() override;

  // Paths already in the caller's list: a second pick of one of them is refused.
  void SetTakenFiles(const QStringList& paths) { FTaken = paths; }
  // The file as entered (valid after OK).
  TFileSpec FileSpec() const;

 public slots:
  void AutoExtendChkClick();
  void MaxSizeChkClick();
  void AddOmfChkClick();
  void DataFileListBtnClick();
  void OkBtnClick();

 protected:
  bool Validate() override;

 private:
  Ui::TCreateTablespaceDialogFrm* ui;
  QStringList FTaken;
};

}  // namespace kel
