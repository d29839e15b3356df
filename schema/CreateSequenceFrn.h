// The sequence dialog: creates a sequence, or changes the increment, limits, cycling, caching
// and ordering of an existing one. The statement is written one clause per line; in alter mode
// only the clauses whose values the user changed are written.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateSequenceFrm;
}

namespace kel {

class TCreateSequenceFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateSequenceFrm(QWidget* owner);
  ~TCreateSequenceFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the owner and the name of the sequence to change; "ChangeOwner": the
  // schema to preselect.
  void ReadParams(TXLink* link) override;

 public slots:
  void NoCacheChkClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  // Shared by MaxValueEd and CacheEd: digits and Backspace only.
  bool MaxValueEdKeyPress(QKeyEvent* event);
  void LoadSequence();
  // In alter mode: does the control's text differ from the value loaded from the catalog?
  bool Changed(const QString& text, const QString& loaded) const;

  // One function per statement line.
  void AddHead();
  void AddIncrementBy();
  void AddStartWith();
  void AddMinValue();
  void AddMaxValue();
  void AddCycle();
  void AddCache();
  void AddOrder();

  Ui::TCreateSequenceFrm* ui;
  TKelQuery TempQry;

  bool FIsAlter = false;
  QString FSchema;
  QString FSequenceName;
  // The sequence as loaded in alter mode, kept as text for comparison.
  QString FLastValue;
  QString FMinValue;
  QString FMaxValue;
  QString FIncrement;
  QString FCacheSize;
  bool FCycle = false;
  bool FNoCache = false;
  bool FOrder = false;
};

}  // namespace kel
