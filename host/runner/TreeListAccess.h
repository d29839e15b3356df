// The module's tree list (kel::TKelTreeList) as the runner drives it. Its code lives inside the
// module, so the runner reaches it by class name and through its invokable members, never by
// a cast to the class.
#pragma once

#include <QList>
#include <QString>

class QObject;
class QTreeWidget;

namespace runner {

class TTreeListAccess {
 public:
  // The tree list behind `o`, or an access for which IsValid() is false.
  explicit TTreeListAccess(QObject* o);

  bool IsValid() const { return FTree != nullptr; }
  QTreeWidget* Tree() const { return FTree; }

  int RowCount() const;
  int ColumnCount() const;
  QString Caption(int col) const;
  bool ColumnVisible(int col) const;
  int ColumnByName(const QString& name) const;  // -1 when absent
  QString Cell(int row, int col) const;
  int FocusedRow() const;
  void SetFocusedRow(int row);
  void SelectRows(const QList<int>& rows);
  // The list's own cell editing; false with the list's reason when it refuses the value.
  bool EditCell(int row, int col, const QString& value, QString* why);

 private:
  QTreeWidget* FTree = nullptr;
};

}  // namespace runner
