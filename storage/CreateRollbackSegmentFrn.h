// The rollback segment dialog: creates a rollback segment (public or private) with its storage
// and optionally brings it online; in alter mode it changes the next extent, max extents,
// optimal size and the online state of an existing segment.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateRollbackSegmentFrm;
}

namespace kel {

// A byte count split into a number and a unit, the unit chosen as large as the count allows
// exactly: "512" and "KB" for 524288, "1" and "MB" for 1048576, the bare count and an empty
// unit below a kilobyte or for an uneven count.
void SplitUnitSize(const QString& bytes, QString& number, QString& unit);

class TCreateRollbackSegmentFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateRollbackSegmentFrm(QWidget* owner);
  ~TCreateRollbackSegmentFrm() override;

  void InitLoad() override;
  // "Alter": the flag and the segment's name.
  void ReadParams(TXLink* link) override;

 public slots:
  void MaxExtentsChkClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  bool EditKeyPress(QKeyEvent* event);
  void LoadSegment();

  // Create statement, one function per part.
  void AddCreateHead();
  void AddTablespace();
  void AddCreateStorage();
  void AddOnline();
  // Alter statements.
  bool StorageUnchanged() const;
  void AddAlterStorage();
  void AddAlterStatus();

  Ui::TCreateRollbackSegmentFrm* ui;
  TKelQuery AlterQry;
  bool FIsAlter = false;
  QString FSegment;
  // The segment as loaded: numbers and units as the controls show them.
  QString FNextNum, FNextUnit, FMaxExtents, FOptimalNum, FOptimalUnit;
  bool FOnline = false;
};

}  // namespace kel
