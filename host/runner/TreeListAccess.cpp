#include "host/runner/TreeListAccess.h"

#include <QMetaObject>
#include <QTreeWidget>

namespace runner {

TTreeListAccess::TTreeListAccess(QObject* o) {
  if (o && o->inherits("kel::TKelTreeList")) FTree = qobject_cast<QTreeWidget*>(o);
}

int TTreeListAccess::RowCount() const {
  int n = 0;
  QMetaObject::invokeMethod(FTree, "RowCount", Qt::DirectConnection, Q_RETURN_ARG(int, n));
  return n;
}

int TTreeListAccess::ColumnCount() const {
  return FTree->columnCount();
}

QString TTreeListAccess::Caption(int col) const {
  const QTreeWidgetItem* header = FTree->headerItem();
  return header ? header->text(col) : QString();
}

bool TTreeListAccess::ColumnVisible(int col) const {
  return !FTree->isColumnHidden(col);
}

int TTreeListAccess::ColumnByName(const QString& name) const {
  int col = -1;
  QMetaObject::invokeMethod(FTree, "ColumnByName", Qt::DirectConnection, Q_RETURN_ARG(int, col),
                            Q_ARG(QString, name));
  return col;
}

QString TTreeListAccess::Cell(int row, int col) const {
  QString value;
  QMetaObject::invokeMethod(FTree, "Cell", Qt::DirectConnection, Q_RETURN_ARG(QString, value),
                            Q_ARG(int, row), Q_ARG(int, col));
  return value;
}

int TTreeListAccess::FocusedRow() const {
  int row = -1;
  QMetaObject::invokeMethod(FTree, "FocusedRow", Qt::DirectConnection, Q_RETURN_ARG(int, row));
  return row;
}

void TTreeListAccess::SetFocusedRow(int row) {
  QMetaObject::invokeMethod(FTree, "SetFocusedRow", Qt::DirectConnection, Q_ARG(int, row));
}

void TTreeListAccess::SelectRows(const QList<int>& rows) {
  QMetaObject::invokeMethod(FTree, "SelectRows", Qt::DirectConnection, Q_ARG(QList<int>, rows));
}

bool TTreeListAccess::EditCell(int row, int col, const QString& value, QString* why) {
  bool ok = false;
  QString reason;
  const bool called = QMetaObject::invokeMethod(
      FTree, "EditCell", Qt::DirectConnection, Q_RETURN_ARG(bool, ok), Q_ARG(int, row),
      Q_ARG(int, col), Q_ARG(QString, value), Q_ARG(QString*, &reason));
  if (!called) reason = QStringLiteral("the list offers no cell editing");
  if (!ok && why) *why = reason;
  return ok;
}

}  // namespace runner
