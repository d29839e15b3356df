#include "storage/CreateTablespaceListFrn.h"

#include <QApplication>
#include <QHeaderView>

#include "ui_CreateTablespaceListFrn.h"

namespace kel {

TCreateTablespaceListFrm::TCreateTablespaceListFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateTablespaceListFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTablespaceListFrm"));
  SetIniSave(false);
  QTableWidget* grid = ui->DatafilesListGrd;
  grid->setColumnCount(1);
  grid->setHorizontalHeaderItem(0, new QTableWidgetItem(QStringLiteral("File Name")));
  grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid->setSelectionMode(QAbstractItemView::SingleSelection);
  grid->verticalHeader()->hide();
  grid->horizontalHeader()->setStretchLastSection(true);
  connect(grid, &QTableWidget::doubleClicked, this, &TCreateTablespaceListFrm::OkBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTablespaceListFrm::OkBtnClick);
}

TCreateTablespaceListFrm::~TCreateTablespaceListFrm() {
  delete ui;
}

void TCreateTablespaceListFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  DataFilesQry.SetSession(DBInfo());
}

void TCreateTablespaceListFrm::KelDllDBDlgFrmShow() {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  struct TRestore {
    ~TRestore() { QApplication::restoreOverrideCursor(); }
  } restore;
  DataFilesQry.Close();
  DataFilesQry.LoadSQL(QStringLiteral("TablespaceMgrFrn.DataFilesList"));
  DataFilesQry.Open();
  QTableWidget* grid = ui->DatafilesListGrd;
  grid->setRowCount(DataFilesQry.RecordCount());
  for (int row = 0; !DataFilesQry.Eof(); DataFilesQry.Next(), ++row)
    grid->setItem(row, 0,
                  new QTableWidgetItem(DataFilesQry.FieldByName(QStringLiteral("File Name"))));
  if (grid->rowCount() > 0) grid->setCurrentCell(0, 0);
}

void TCreateTablespaceListFrm::OkBtnClick() {
  const QTableWidgetItem* item = ui->DatafilesListGrd->currentItem();
  // An empty list has nothing to pick: OK then closes as a cancel would.
  if (!item) {
    SetModalResult(mrCancel);
    return;
  }
  if (FLink) FLink->AddParams(QStringLiteral("filename"), item->text());
  SetModalResult(mrOk);
}

}  // namespace kel
