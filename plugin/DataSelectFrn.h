// A generic modal pick-one-row list over a dataset of the calling dialog.
#pragma once

#include "plugin/KelForms.h"

class QTableWidget;
class QPushButton;

namespace kel {

class TKelQuery;

class TDataSelectFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  static constexpr int kColumnCount = 4;

  explicit TDataSelectFrm(QWidget* owner);

  // Binds the grid to the caller's opened query; the query's current record follows the
  // grid's focused row. Null unbinds.
  void Bind(TKelQuery* dataset);
  // Shows column `index` (0..3) with the field `fieldName` under `caption`.
  void SetColumn(int index, const QString& fieldName, const QString& caption);
  void HideColumn(int index);
  QTableWidget* DataGrd() const { return FGrid; }
  void SetFocusedRow(int row);

 public slots:
  void DataGrdDBTableViewDblClick();

 protected:
  void KelDllDBDlgFrmKeyDown(QKeyEvent* event) override;
  bool KelDllDBDlgFrmClose() override { return true; }

 private:
  void Refill();
  void SyncRecord();

  QTableWidget* FGrid;
  QPushButton* FOkBtn;
  QPushButton* FCancelBtn;
  TKelQuery* FDataset = nullptr;
  QString FFields[kColumnCount];
  bool FShownColumn[kColumnCount] = {};
};

// The module-wide picker reference: each pick creates a fresh picker here and clears it after.
extern TDataSelectFrm* DataSelectFrm;

// A field of the caller's dataset shown in the picker, under a caption.
struct TDataSelectColumn {
  QString FieldName;
  QString Caption;
};

// One pick as a calling dialog makes it: a fresh picker in DataSelectFrm, bound to `dataset`
// (already opened by the caller), showing `columns` in order (at most four, the rest hidden), run
// modally. Whatever happens the binding is undone, the picker freed and the reference cleared.
// Returns the modal result; on 1 (OK) the dataset's current record is the chosen row.
int SelectData(TKelQuery* dataset, const QList<TDataSelectColumn>& columns);

}  // namespace kel
