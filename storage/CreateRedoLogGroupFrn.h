// The redo log group dialog: adds an online redo log group with its first member, or a further
// member to an existing group, as one ALTER DATABASE statement.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

class QLineEdit;

namespace Ui {
class TCreateRedoLogGroupFrm;
}

namespace kel {

// A member size in bytes as the dialog shows it: megabytes from 1 MB on, kilobytes below, with
// at most four decimals ("512" and "KB" for 524288).
void RedoLogSizeText(qint64 bytes, QString& number, QString& unit);

class TCreateRedoLogGroupFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateRedoLogGroupFrm(QWidget* owner);
  ~TCreateRedoLogGroupFrm() override;

  void InitLoad() override;
  // "Alter": "IsAddGroup", then the group, member file and size of the group a member is
  // added to. Without it the dialog adds a member.
  void ReadParams(TXLink* link) override;

 public slots:
  void FindFileBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  // Shared by GroupEd and FileSizeEd: digits and Backspace only.
  bool GroupEdKeyPress(QKeyEvent* event);
  // Runs a proposal query; a failing one leaves the field as it was.
  void Propose(const QString& key, const QString& column, QLineEdit* edit);
  QString UnitLetter() const;
  QString ReuseWord() const;
  QString QuotedFileName() const;

  Ui::TCreateRedoLogGroupFrm* ui;
  TKelQuery TempQry;
  bool FIsAddGroup = false;
  QString FGroupNum;
  QString FFileName;
  qint64 FFileSize = 0;
};

}  // namespace kel
