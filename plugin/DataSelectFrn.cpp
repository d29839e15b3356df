#include "plugin/DataSelectFrn.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "plugin/KelQuery.h"

namespace kel {

TDataSelectFrm* DataSelectFrm = nullptr;

TDataSelectFrm::TDataSelectFrm(QWidget* owner) : TKelDllDBDlgFrm(owner) {
  setObjectName(QStringLiteral("DataSelectFrm"));
  setWindowTitle(QStringLiteral("DataSelect"));
  resize(420, 320);
  FGrid = new QTableWidget(0, kColumnCount, this);
  FGrid->setObjectName(QStringLiteral("DataGrd"));
  FGrid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  FGrid->setSelectionBehavior(QAbstractItemView::SelectRows);
  FGrid->setSelectionMode(QAbstractItemView::SingleSelection);
  FGrid->verticalHeader()->hide();
  FGrid->horizontalHeader()->setStretchLastSection(true);
  for (int i = 0; i < kColumnCount; ++i) FGrid->setColumnHidden(i, true);
  FOkBtn = new QPushButton(QStringLiteral("OK"), this);
  FOkBtn->setObjectName(QStringLiteral("OkBtn"));
  FCancelBtn = new QPushButton(QStringLiteral("Cancel"), this);
  FCancelBtn->setObjectName(QStringLiteral("CancelBtn"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(FOkBtn);
  buttons->addWidget(FCancelBtn);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(FGrid);
  layout->addLayout(buttons);
  connect(FOkBtn, &QPushButton::clicked, this, [this] { SetModalResult(mrOk); });
  connect(FCancelBtn, &QPushButton::clicked, this, [this] { SetModalResult(mrCancel); });
  connect(FGrid, &QTableWidget::cellDoubleClicked, this, [this](int row, int) {
    SetFocusedRow(row);
    DataGrdDBTableViewDblClick();
  });
  connect(FGrid, &QTableWidget::currentCellChanged, this, [this] { SyncRecord(); });
}

void TDataSelectFrm::Bind(TKelQuery* dataset) {
  FDataset = dataset;
  Refill();
}

void TDataSelectFrm::SetColumn(int index, const QString& fieldName, const QString& caption) {
  if (index < 0 || index >= kColumnCount) return;
  FFields[index] = fieldName;
  FShownColumn[index] = true;
  FGrid->setHorizontalHeaderItem(index, new QTableWidgetItem(caption));
  FGrid->setColumnHidden(index, false);
  Refill();
}

void TDataSelectFrm::HideColumn(int index) {
  if (index < 0 || index >= kColumnCount) return;
  FShownColumn[index] = false;
  FGrid->setColumnHidden(index, true);
}

void TDataSelectFrm::Refill() {
  FGrid->setRowCount(0);
  if (!FDataset || !FDataset->Active()) return;
  const TQueryResult& data = FDataset->Data();
  FGrid->setRowCount(int(data.Rows.size()));
  for (int c = 0; c < kColumnCount; ++c) {
    if (!FShownColumn[c]) continue;
    const int src = int(data.Columns.indexOf(FFields[c]));
    for (int r = 0; r < data.Rows.size(); ++r) {
      const QString v = src >= 0 && src < data.Rows[r].size() ? data.Rows[r][src] : QString();
      FGrid->setItem(r, c, new QTableWidgetItem(v));
    }
  }
  if (FGrid->rowCount() > 0)
    SetFocusedRow(FDataset->RecNo() < FGrid->rowCount() ? FDataset->RecNo() : 0);
}

void TDataSelectFrm::SetFocusedRow(int row) {
  if (row < 0 || row >= FGrid->rowCount()) return;
  int col = 0;
  while (col < kColumnCount - 1 && !FShownColumn[col]) ++col;
  FGrid->setCurrentCell(row, col);
  SyncRecord();
}

void TDataSelectFrm::SyncRecord() {
  if (FDataset && FGrid->currentRow() >= 0) FDataset->SetRecNo(FGrid->currentRow());
}

void TDataSelectFrm::DataGrdDBTableViewDblClick() {
  SetModalResult(mrOk);
}

int SelectData(TKelQuery* dataset, const QList<TDataSelectColumn>& columns) {
  struct TRelease {
    ~TRelease() {
      if (!DataSelectFrm) return;
      DataSelectFrm->Bind(nullptr);
      delete DataSelectFrm;
      DataSelectFrm = nullptr;
    }
  } release;
  if (!DataSelectFrm)
    DataSelectFrm = new TDataSelectFrm(Application() ? Application()->MainForm() : nullptr);
  DataSelectFrm->Bind(dataset);
  for (int i = 0; i < TDataSelectFrm::kColumnCount; ++i) {
    if (i < columns.size())
      DataSelectFrm->SetColumn(i, columns[i].FieldName, columns[i].Caption);
    else
      DataSelectFrm->HideColumn(i);
  }
  return DataSelectFrm->ShowModal();
}

void TDataSelectFrm::KelDllDBDlgFrmKeyDown(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) SetModalResult(mrCancel);
}

}  // namespace kel
