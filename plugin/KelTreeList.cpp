#include "plugin/KelTreeList.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>
#include <algorithm>

#include "plugin/KelSpinEdit.h"
#include "plugin/KelText.h"

namespace kel {

namespace {
constexpr int kValueRole = Qt::UserRole + 1;  // the cell's string
// Loaded values widen a column up to this many pixels; longer ones are cut at the edge (the
// user still widens the column by hand).
constexpr int kMaxFittedWidth = 320;
}  // namespace

class TKelTreeDelegate : public QStyledItemDelegate {
 public:
  explicit TKelTreeDelegate(TKelTreeList* list) : QStyledItemDelegate(list), FList(list) {}

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                        const QModelIndex& index) const override {
    const TKelTreeColumn& c = FList->Column(index.column());
    if (!c.Editable || c.Editor == TCellEditor::Check) return nullptr;
    switch (c.Editor) {
      case TCellEditor::PickList: {
        auto* cb = new QComboBox(parent);
        cb->addItems(FList->CellItems(index.row(), index.column()));
        cb->setMaxVisibleItems(15);
        return cb;
      }
      case TCellEditor::Spin: {
        auto* sp = new TKelSpinEdit(parent);
        sp->SetRange(c.Min, c.Max);
        return sp;
      }
      default:
        return new QLineEdit(parent);
    }
  }

  void setEditorData(QWidget* editor, const QModelIndex& index) const override {
    const QString v = index.data(kValueRole).toString();
    if (auto* cb = qobject_cast<QComboBox*>(editor)) {
      // A loaded value the list does not offer (a "TIMESTAMP(6)" among plain type names) stays
      // the cell's value: it is shown as the first item instead of being lost to no selection.
      int i = cb->findText(v, Qt::MatchExactly | Qt::MatchCaseSensitive);
      if (i < 0 && !v.isEmpty()) {
        cb->insertItem(0, v);
        i = 0;
      }
      cb->setCurrentIndex(i);
    } else if (auto* sp = qobject_cast<TKelSpinEdit*>(editor)) {
      sp->SetText(v);
    } else if (auto* le = qobject_cast<QLineEdit*>(editor)) {
      le->setText(v);
    }
  }

  void setModelData(QWidget* editor, QAbstractItemModel*, const QModelIndex& index) const override {
    const QString before = index.data(kValueRole).toString();
    QString v;
    if (auto* cb = qobject_cast<QComboBox*>(editor)) {
      v = cb->currentIndex() < 0 ? QString() : cb->currentText();
    } else if (auto* sp = qobject_cast<TKelSpinEdit*>(editor)) {
      // An entry outside the range is not taken; empty stays empty (no value given).
      if (!sp->IsAcceptable()) return;
      v = sp->Text().trimmed();
      if (!v.isEmpty()) v = AddToInteger(v, 0);  // "007" is 7
    } else if (auto* le = qobject_cast<QLineEdit*>(editor)) {
      v = StripBannedControls(le->text());  // as typed: no control characters
    }
    if (v != before) FList->CommitCell(index.row(), index.column(), v);
  }

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(std::max(size.height(), FList->RowHeight()));
    return size;
  }

  // The row of the current cell is highlighted as a whole; the cell itself gets a frame, so
  // that the user sees which cell Tab, Space or typing acts on.
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem opt(option);
    opt.state &= ~QStyle::State_HasFocus;
    QStyledItemDelegate::paint(painter, opt, index);
    if (index != FList->currentIndex() || FList->indexWidget(index)) return;
    const bool selected = option.state & QStyle::State_Selected;
    QColor color = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight);
    if (!FList->hasFocus()) color.setAlphaF(0.6f);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, false);
    QPen pen(color, 2);
    pen.setJoinStyle(Qt::MiterJoin);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(QRectF(option.rect).adjusted(1, 1, -1, -1));
    painter->restore();
  }

  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
    const TKelTreeColumn& c = FList->Column(index.column());
    if (c.Editor == TCellEditor::Check && event->type() == QEvent::MouseButtonRelease) {
      if (c.Editable) {
        const bool on = index.data(kValueRole).toString() == QLatin1String("True");
        FList->CommitCell(index.row(), index.column(), on ? "False" : "True");
      }
      return true;
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
  }

 protected:
  bool eventFilter(QObject* editor, QEvent* event) override {
    if (event->type() == QEvent::KeyPress) {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        auto* w = static_cast<QWidget*>(editor);
        emit commitData(w);
        emit closeEditor(w, QAbstractItemDelegate::EditNextItem);
        return true;
      }
      if (!(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        if (key->key() == Qt::Key_Backtab ||
            (key->key() == Qt::Key_Tab && (key->modifiers() & Qt::ShiftModifier))) {
          FList->TabToCell(false);
          return true;
        }
        if (key->key() == Qt::Key_Tab) {
          FList->TabToCell(true);
          return true;
        }
      }
    }
    return QStyledItemDelegate::eventFilter(editor, event);
  }

 private:
  TKelTreeList* FList;
};

TKelTreeList::TKelTreeList(QWidget* parent) : QTreeWidget(parent) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setSortingEnabled(false);
  setAllColumnsShowFocus(false);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  // Tab reaches keyPressEvent (next cell) instead of moving the focus out of the list.
  setTabKeyNavigation(true);
  setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                  QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
  setItemDelegate(new TKelTreeDelegate(this));
  header()->setSectionsMovable(false);
  setColumnCount(0);
  connect(this, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* cur, QTreeWidgetItem*) {
            emit FocusedRowChanged(cur ? indexOfTopLevelItem(cur) : -1);
          });
  connect(this, &QTreeWidget::itemDoubleClicked, this,
          [this](QTreeWidgetItem* item, int) { emit RowDoubleClicked(indexOfTopLevelItem(item)); });
}

int TKelTreeList::AddColumn(const TKelTreeColumn& column) {
  FColumns.append(column);
  const int n = int(FColumns.size());
  setColumnCount(n);
  QStringList captions;
  for (const TKelTreeColumn& c : FColumns) captions << c.Caption;
  setHeaderLabels(captions);
  // At least the caption's width (the header's hint holds its margins), and a check box's.
  int width = std::max(column.Width, header()->sectionSizeHint(n - 1));
  if (column.Editor == TCellEditor::Check)
    width =
        std::max(width, style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                            4 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this));
  setColumnWidth(n - 1, width);
  setColumnHidden(n - 1, !column.Visible);
  for (int r = 0; r < RowCount(); ++r) SetCell(r, n - 1, QString());
  return n - 1;
}

int TKelTreeList::ColumnByName(const QString& name) const {
  for (int i = 0; i < FColumns.size(); ++i)
    if (FColumns[i].Name == name) return i;
  return -1;
}

void TKelTreeList::SetColumnVisible(int col, bool visible) {
  FColumns[col].Visible = visible;
  setColumnHidden(col, !visible);
}

int TKelTreeList::AddRow() {
  return InsertRow(RowCount());
}

int TKelTreeList::InsertRow(int row) {
  auto* item = new QTreeWidgetItem();
  item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
  insertTopLevelItem(row, item);
  for (int c = 0; c < ColumnCount(); ++c) {
    item->setData(c, kValueRole, QString());
    RefreshCell(item, c);
  }
  emit RowsChanged();
  return row;
}

void TKelTreeList::AddRows(const QList<QStringList>& rows) {
  if (rows.isEmpty()) return;
  QList<QTreeWidgetItem*> items;
  items.reserve(rows.size());
  for (const QStringList& cells : rows) {
    auto* item = new QTreeWidgetItem();
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable);
    for (int c = 0; c < ColumnCount(); ++c) {
      item->setData(c, kValueRole, cells.value(c));
      RefreshCell(item, c);
    }
    items << item;
  }
  insertTopLevelItems(RowCount(), items);
  for (int c = 0; c < ColumnCount(); ++c) {
    if (FColumns[c].Editor == TCellEditor::Check) continue;
    int widest = 0;
    QString text;
    for (const QStringList& cells : rows)
      if (cells.value(c).size() > widest) {
        widest = int(cells.value(c).size());
        text = cells.value(c);
      }
    FitColumnTo(c, text);
  }
  emit RowsChanged();
}

void TKelTreeList::DeleteRow(int row) {
  if (row < 0 || row >= RowCount()) return;
  delete takeTopLevelItem(row);
  emit RowsChanged();
}

void TKelTreeList::ClearRows() {
  if (RowCount() == 0) return;
  clear();
  emit RowsChanged();
}

QString TKelTreeList::Cell(int row, int col) const {
  const QTreeWidgetItem* item = topLevelItem(row);
  return item && col >= 0 && col < ColumnCount() ? item->data(col, kValueRole).toString()
                                                 : QString();
}

void TKelTreeList::SetCell(int row, int col, const QString& value) {
  QTreeWidgetItem* item = topLevelItem(row);
  if (!item || col < 0 || col >= ColumnCount()) return;
  item->setData(col, kValueRole, value);
  RefreshCell(item, col);
  if (FColumns[col].Editor != TCellEditor::Check) FitColumnTo(col, value);
}

int TKelTreeList::CellTextWidth(const QString& text) const {
  // The item's text margins on both sides, and a pixel for the current cell's frame.
  const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1;
  return fontMetrics().horizontalAdvance(text) + 2 * margin + 2;
}

void TKelTreeList::FitColumnTo(int col, const QString& text) {
  if (text.isEmpty() || !FColumns[col].Visible) return;
  const int need = std::min(CellTextWidth(text), kMaxFittedWidth);
  if (need > columnWidth(col)) setColumnWidth(col, need);
}

int TKelTreeList::RowHeight() const {
  if (FRowHeight == 0) {
    const QStyle* s = style();
    const int margin = s->pixelMetric(QStyle::PM_FocusFrameVMargin, nullptr, this);
    const int text = fontMetrics().height() + 2 * margin + 2;
    const int box = s->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this) + 2 * margin + 2;
    FRowHeight = std::max(text, box);
  }
  return FRowHeight;
}

void TKelTreeList::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FRowHeight = 0;
  QTreeWidget::changeEvent(event);
}

QStringList TKelTreeList::RowCells(int row) const {
  QStringList out;
  for (int c = 0; c < ColumnCount(); ++c) out << Cell(row, c);
  return out;
}

void TKelTreeList::RefreshCell(QTreeWidgetItem* item, int col) {
  const QString v = item->data(col, kValueRole).toString();
  if (FColumns[col].Editor == TCellEditor::Check) {
    item->setData(col, Qt::CheckStateRole,
                  v == QLatin1String("True") ? Qt::Checked : Qt::Unchecked);
    item->setData(col, Qt::DisplayRole, QString());
  } else {
    item->setData(col, Qt::DisplayRole, v);
  }
}

int TKelTreeList::FocusedRow() const {
  QTreeWidgetItem* item = currentItem();
  return item ? indexOfTopLevelItem(item) : -1;
}

void TKelTreeList::SetFocusedRow(int row) {
  QTreeWidgetItem* item = topLevelItem(row);
  if (!item) return;
  const int col = currentColumn() < 0 ? 0 : currentColumn();
  setCurrentItem(item, col);
}

QList<int> TKelTreeList::SelectedRows() const {
  QList<int> rows;
  for (QTreeWidgetItem* item : selectedItems()) rows << indexOfTopLevelItem(item);
  std::sort(rows.begin(), rows.end());
  return rows;
}

void TKelTreeList::SelectRows(const QList<int>& rows) {
  clearSelection();
  for (int r : rows)
    if (QTreeWidgetItem* item = topLevelItem(r)) item->setSelected(true);
  if (!rows.isEmpty())
    if (QTreeWidgetItem* item = topLevelItem(rows.first()))
      setCurrentItem(item, 0, QItemSelectionModel::NoUpdate);
}

bool TKelTreeList::EditCell(int row, int col, const QString& value, QString* why) {
  auto fail = [why](const QString& reason) {
    if (why) *why = reason;
    return false;
  };
  if (row < 0 || row >= RowCount()) return fail(QStringLiteral("no row ") + QString::number(row));
  if (col < 0 || col >= ColumnCount())
    return fail(QStringLiteral("no column ") + QString::number(col));
  // As a click does: the row takes the focus first (an editor open elsewhere is committed),
  // and what the focused row allows decides whether the cell can be edited.
  QTreeWidgetItem* item = topLevelItem(row);
  setCurrentItem(item, col);
  const TKelTreeColumn& c = FColumns[col];
  if (!c.Visible || !c.Editable)
    return fail(QStringLiteral("column \"") + c.Caption + QStringLiteral("\" cannot be edited"));
  if (c.Editor == TCellEditor::Check) {
    QString v;
    if (value.compare(u"true", Qt::CaseInsensitive) == 0)
      v = QStringLiteral("True");
    else if (value.compare(u"false", Qt::CaseInsensitive) == 0)
      v = QStringLiteral("False");
    else
      return fail(QStringLiteral("a check box takes True or False, not \"") + value + u'"');
    // A click toggles the box; a box already showing the value is left alone.
    if ((Cell(row, col) == QLatin1String("True")) != (v == QLatin1String("True")))
      CommitCell(row, col, v);
    return true;
  }

  // Every other cell is edited through the editor a user gets: opened, given the value,
  // committed and closed as Enter does (without moving on).
  const QModelIndex index = indexFromItem(item, col);
  QWidget* editor = indexWidget(index);
  if (!editor) {
    editItem(item, col);
    editor = indexWidget(index);
  }
  if (!editor) return fail(QStringLiteral("the cell's editor did not open"));
  auto close = [this, editor](bool commit) {
    if (commit) emit itemDelegate()->commitData(editor);
    emit itemDelegate()->closeEditor(editor, QAbstractItemDelegate::NoHint);
  };
  if (auto* cb = qobject_cast<QComboBox*>(editor)) {
    const int i = cb->findText(value, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (i < 0 && !value.isEmpty()) {
      close(false);
      return fail(u'"' + value + QStringLiteral("\" is not in the list of \"") + c.Caption + u'"');
    }
    cb->setCurrentIndex(i);
  } else if (auto* sp = qobject_cast<TKelSpinEdit*>(editor)) {
    sp->SetText(value.trimmed());
    if (!sp->IsAcceptable()) {
      close(false);
      return fail(u'"' + value + QStringLiteral("\" is not a whole number from ") +
                  QString::number(c.Min) + QStringLiteral(" to ") + QString::number(c.Max));
    }
  } else if (auto* le = qobject_cast<QLineEdit*>(editor)) {
    le->setText(value);
  }
  close(true);
  return true;
}

void TKelTreeList::CommitCell(int row, int col, const QString& value) {
  SetCell(row, col, value);
  emit EditValueChanged(row, col);
}

bool TKelTreeList::NextEditableCell(int& row, int& col) const {
  int r = row, c = col;
  for (int steps = 0; steps < (RowCount() + 1) * (ColumnCount() + 1); ++steps) {
    if (++c >= ColumnCount()) {
      c = 0;
      if (++r >= RowCount()) return false;
    }
    if (FColumns[c].Visible && FColumns[c].Editable) {
      row = r;
      col = c;
      return true;
    }
  }
  return false;
}

bool TKelTreeList::PreviousEditableCell(int& row, int& col) const {
  int r = row, c = col;
  for (int steps = 0; steps < (RowCount() + 1) * (ColumnCount() + 1); ++steps) {
    if (--c < 0) {
      c = ColumnCount() - 1;
      if (--r < 0) return false;
    }
    if (FColumns[c].Visible && FColumns[c].Editable) {
      row = r;
      col = c;
      return true;
    }
  }
  return false;
}

void TKelTreeList::MoveToCell(int row, int col) {
  setCurrentItem(topLevelItem(row), col);
  if (FColumns[col].Editor != TCellEditor::Check) editItem(topLevelItem(row), col);
}

void TKelTreeList::MoveToNextCell() {
  int row = FocusedRow(), col = currentColumn();
  if (row < 0) return;
  if (NextEditableCell(row, col)) MoveToCell(row, col);
}

void TKelTreeList::TabToCell(bool forward) {
  if (QWidget* editor = indexWidget(currentIndex())) {
    emit itemDelegate()->commitData(editor);
    emit itemDelegate()->closeEditor(editor, QAbstractItemDelegate::NoHint);
  }
  // Without a current cell the walk starts before the first cell or after the last one.
  int row = FocusedRow(), col = currentColumn();
  if (row < 0 || col < 0) {
    row = forward ? 0 : RowCount() - 1;
    col = forward ? -1 : ColumnCount();
  }
  if (RowCount() > 0 && (forward ? NextEditableCell(row, col) : PreviousEditableCell(row, col))) {
    MoveToCell(row, col);
    return;
  }
  // Past the ends: on to the dialog's next (previous) control.
  QWidget::focusNextPrevChild(forward);
}

bool TKelTreeList::focusNextPrevChild(bool next) {
  // Tab and Shift+Tab in the list or in one of its cell editors come here first.
  if (!tabKeyNavigation() || !isVisible() || !isEnabled()) return QWidget::focusNextPrevChild(next);
  TabToCell(next);
  return true;
}

void TKelTreeList::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (state() != QAbstractItemView::EditingState &&
      (key == Qt::Key_Return || key == Qt::Key_Enter)) {
    MoveToNextCell();
    return;
  }
  if ((key == Qt::Key_Tab || key == Qt::Key_Backtab) &&
      !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
    TabToCell(key == Qt::Key_Tab && !(event->modifiers() & Qt::ShiftModifier));
    return;
  }
  if (key == Qt::Key_Space && FocusedRow() >= 0 && currentColumn() >= 0 &&
      FColumns[currentColumn()].Editor == TCellEditor::Check &&
      FColumns[currentColumn()].Editable) {
    const int r = FocusedRow(), c = currentColumn();
    CommitCell(r, c, Cell(r, c) == QLatin1String("True") ? "False" : "True");
    return;
  }
  QTreeWidget::keyPressEvent(event);
}

void TKelTreeList::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  // The view's own next / previous item ignores read-only and hidden columns: the list walks
  // its editable cells instead.
  const bool next = hint == QAbstractItemDelegate::EditNextItem;
  const bool previous = hint == QAbstractItemDelegate::EditPreviousItem;
  QTreeWidget::closeEditor(editor, next || previous ? QAbstractItemDelegate::NoHint : hint);
  if (next) MoveToNextCell();
  if (previous) TabToCell(false);
}

}  // namespace kel
