// The tree-list component of the dialogs' grids: string cells, an editor kind per column (text,
// fixed pick list, spin edit with a range, check box holding "True"/"False"), Enter and Tab move
// to the next editable cell and Shift+Tab to the previous one, and `EditValueChanged` after every
// committed edit. Rows are tall enough for a check box and a line of text, columns at least as
// wide as their captions, and the current cell carries a frame of its own.
#pragma once

#include <QStringList>
#include <QTreeWidget>
#include <functional>

namespace kel {

enum class TCellEditor { Text, PickList, Spin, Check };

struct TKelTreeColumn {
  QString Name = {};     // the column object's name, e.g. "ColumnTreeColumnType"
  QString Caption = {};  // header text
  TCellEditor Editor = TCellEditor::Text;
  QStringList Items = {};  // pick-list items
  int Min = 0;             // spin range
  int Max = 0;
  bool Editable = true;
  bool Visible = true;
  int Width = 100;
};

class TKelTreeList : public QTreeWidget {
  Q_OBJECT
 public:
  // The Q_INVOKABLE members are what a host drives the list through by name (the headless
  // runner reaches a list inside the module only through the meta-object system).
  explicit TKelTreeList(QWidget* parent = nullptr);

  int AddColumn(const TKelTreeColumn& column);
  int ColumnCount() const { return int(FColumns.size()); }
  const TKelTreeColumn& Column(int col) const { return FColumns[col]; }
  Q_INVOKABLE int ColumnByName(const QString& name) const;  // -1 when absent
  void SetColumnEditable(int col, bool editable) { FColumns[col].Editable = editable; }
  void SetColumnVisible(int col, bool visible);
  void SetColumnItems(int col, const QStringList& items) { FColumns[col].Items = items; }
  // The pick-list items of one cell: the column's items, unless a provider gives each cell its
  // own (choices that depend on the row's data). The provider is asked when an editor opens.
  using TCellItemsProvider = std::function<QStringList(int row, int col)>;
  void SetCellItemsProvider(TCellItemsProvider provider) { FCellItems = std::move(provider); }
  QStringList CellItems(int row, int col) const {
    return FCellItems ? FCellItems(row, col) : FColumns[col].Items;
  }

  Q_INVOKABLE int RowCount() const { return topLevelItemCount(); }
  int AddRow();  // appends a row of empty cells, returns its index
  int InsertRow(int row);
  // Appends whole rows at once (missing cells are empty): the cells are filled before the rows
  // join the list, so a large load costs one insertion instead of a signal per cell.
  void AddRows(const QList<QStringList>& rows);
  void DeleteRow(int row);
  void ClearRows();
  Q_INVOKABLE QString Cell(int row, int col) const;
  void SetCell(int row, int col, const QString& value);
  QStringList RowCells(int row) const;

  Q_INVOKABLE int FocusedRow() const;  // -1 when none
  Q_INVOKABLE void SetFocusedRow(int row);
  int FocusedColumn() const { return currentColumn(); }
  QList<int> SelectedRows() const;
  Q_INVOKABLE void SelectRows(const QList<int>& rows);

  // Edits a cell as the user would through its editor and commits it: refused (false, with the
  // reason) when the column is hidden or read-only, a pick-list value is not in the list, or a
  // spin value is not a whole number within the range.
  Q_INVOKABLE bool EditCell(int row, int col, const QString& value, QString* why = nullptr);
  // Moves the cell cursor to the next editable cell (Enter and Tab).
  void MoveToNextCell();
  // Tab (forward) and Shift+Tab: commits an open editor, moves to the next or previous editable
  // cell, and past the first or last one hands the focus on to the dialog's next or previous
  // control instead of keeping it in the list.
  void TabToCell(bool forward);
  // The height of a row: a line of text or a check box, with the style's margins.
  int RowHeight() const;

 signals:
  void EditValueChanged(int row, int column);
  void FocusedRowChanged(int row);
  void RowsChanged();
  void RowDoubleClicked(int row);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  bool focusNextPrevChild(bool next) override;
  void changeEvent(QEvent* event) override;

 private:
  friend class TKelTreeDelegate;
  void CommitCell(int row, int col, const QString& value);
  void RefreshCell(QTreeWidgetItem* item, int col);
  bool NextEditableCell(int& row, int& col) const;
  bool PreviousEditableCell(int& row, int& col) const;
  void MoveToCell(int row, int col);
  // Widens a column to show `text` whole, up to a limit (never narrows it).
  void FitColumnTo(int col, const QString& text);
  int CellTextWidth(const QString& text) const;

  QList<TKelTreeColumn> FColumns;
  TCellItemsProvider FCellItems;
  mutable int FRowHeight = 0;  // 0: to be measured for the current font and style
};

}  // namespace kel
