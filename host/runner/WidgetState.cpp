#include "host/runner/WidgetState.h"

#include <Qsci/qsciscintilla.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QJsonArray>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QTreeView>
#include <QTreeWidget>
#include <functional>

#include "host/runner/TreeListAccess.h"

namespace runner {

namespace {

void CollectRadios(QLayout* layout, QList<QRadioButton*>& out) {
  for (int i = 0; i < layout->count(); ++i) {
    QLayoutItem* item = layout->itemAt(i);
    if (QLayout* inner = item->layout()) {
      CollectRadios(inner, out);
    } else if (QWidget* w = item->widget()) {
      if (auto* radio = qobject_cast<QRadioButton*>(w))
        out << radio;
      else if (w->layout())
        CollectRadios(w->layout(), out);
    }
  }
}

QJsonArray Strings(const QStringList& list) {
  return QJsonArray::fromStringList(list);
}

// The tree list as the user sees it: the visible columns' captions and, for every row, the
// cells of those columns.
void AddTreeList(QJsonObject& state, const TTreeListAccess& tl) {
  QList<int> cols;
  QJsonArray captions;
  for (int c = 0; c < tl.ColumnCount(); ++c)
    if (tl.ColumnVisible(c)) {
      cols << c;
      captions << tl.Caption(c);
    }
  QJsonArray rows;
  for (int r = 0; r < tl.RowCount(); ++r) {
    QJsonArray cells;
    for (int c : cols) cells << tl.Cell(r, c);
    rows << cells;
  }
  state.insert("columns", captions);
  state.insert("rows", rows);
  state.insert("focusedRow", tl.FocusedRow());
}

// Any other tree: the header captions and the rows the user can see (children of expanded
// nodes included), depth first; `focusedRow` indexes that list.
void AddTreeWidget(QJsonObject& state, const QTreeWidget* tree) {
  QJsonArray captions;
  const QTreeWidgetItem* header = tree->headerItem();
  for (int c = 0; c < tree->columnCount(); ++c)
    if (!tree->isColumnHidden(c)) captions << (header ? header->text(c) : QString());
  QJsonArray rows;
  int focused = -1;
  std::function<void(const QTreeWidgetItem*)> walk = [&](const QTreeWidgetItem* item) {
    if (item->isHidden()) return;
    if (item == tree->currentItem()) focused = int(rows.size());
    QJsonArray cells;
    for (int c = 0; c < tree->columnCount(); ++c)
      if (!tree->isColumnHidden(c)) cells << item->text(c);
    rows << cells;
    if (item->isExpanded())
      for (int i = 0; i < item->childCount(); ++i) walk(item->child(i));
  };
  for (int i = 0; i < tree->topLevelItemCount(); ++i) walk(tree->topLevelItem(i));
  state.insert("columns", captions);
  state.insert("rows", rows);
  state.insert("focusedRow", focused);
}

// A table or list view over any model: the header captions and the display texts.
void AddItemView(QJsonObject& state, const QAbstractItemView* view) {
  const QAbstractItemModel* model = view->model();
  if (!model) return;
  // Hidden columns are left out, as the user does not see them.
  const auto* table = qobject_cast<const QTableView*>(view);
  const auto* tree = qobject_cast<const QTreeView*>(view);
  auto shown = [&](int c) {
    return !(table && table->isColumnHidden(c)) && !(tree && tree->isColumnHidden(c));
  };
  QJsonArray captions;
  for (int c = 0; c < model->columnCount(); ++c)
    if (shown(c)) captions << model->headerData(c, Qt::Horizontal).toString();
  QJsonArray rows;
  for (int r = 0; r < model->rowCount(); ++r) {
    QJsonArray cells;
    for (int c = 0; c < model->columnCount(); ++c)
      if (shown(c)) cells << model->index(r, c).data(Qt::DisplayRole).toString();
    rows << cells;
  }
  state.insert("columns", captions);
  state.insert("rows", rows);
  state.insert("focusedRow", view->currentIndex().isValid() ? view->currentIndex().row() : -1);
}

}  // namespace

QList<QRadioButton*> RadioItems(QWidget* group) {
  QList<QRadioButton*> out;
  if (group->layout())
    CollectRadios(group->layout(), out);
  else
    out = group->findChildren<QRadioButton*>();
  return out;
}

QJsonObject WidgetState(QWidget* w) {
  QJsonObject state{{"event", "widget"}, {"name", w->objectName()}, {"enabled", w->isEnabled()}};
  state.insert("visible", w->isWindow() ? w->isVisible() : w->isVisibleTo(w->window()));

  if (w->isWindow()) {
    state.insert("caption", w->windowTitle());
  } else if (auto* edit = qobject_cast<QLineEdit*>(w)) {
    // A password edit shows what the user sees: a mask, never the text.
    const bool masked = edit->echoMode() != QLineEdit::Normal;
    state.insert("text", masked && !edit->text().isEmpty() ? QStringLiteral("********")
                         : masked                          ? QString()
                                                           : edit->text());
  } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
    QStringList items;
    for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
    state.insert("text", combo->currentText());
    state.insert("items", Strings(items));
    state.insert("index", combo->currentIndex());
  } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(w)) {
    state.insert("text", spin->text());
  } else if (auto* plain = qobject_cast<QPlainTextEdit*>(w)) {
    state.insert("text", plain->toPlainText());
  } else if (auto* rich = qobject_cast<QTextEdit*>(w)) {
    state.insert("text", rich->toPlainText());
  } else if (auto* sci = qobject_cast<QsciScintilla*>(w)) {
    state.insert("text", sci->text());
  } else if (auto* button = qobject_cast<QAbstractButton*>(w)) {
    state.insert("caption", button->text());
    if (button->isCheckable()) state.insert("checked", button->isChecked());
  } else if (auto* label = qobject_cast<QLabel*>(w)) {
    state.insert("caption", label->text());
  } else if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
    state.insert("page", tabs->currentIndex());
  } else if (const TTreeListAccess tl(w); tl.IsValid()) {
    AddTreeList(state, tl);
  } else if (auto* tree = qobject_cast<QTreeWidget*>(w)) {
    AddTreeWidget(state, tree);
  } else if (auto* list = qobject_cast<QListWidget*>(w)) {
    QStringList items;
    for (int i = 0; i < list->count(); ++i) items << list->item(i)->text();
    state.insert("items", Strings(items));
    state.insert("index", list->currentRow());
  } else if (auto* view = qobject_cast<QAbstractItemView*>(w)) {
    AddItemView(state, view);
  } else {
    if (auto* box = qobject_cast<QGroupBox*>(w)) {
      state.insert("caption", box->title());
      if (box->isCheckable()) state.insert("checked", box->isChecked());
    }
    // A radio group reports which of its items is chosen (-1 for none).
    const QList<QRadioButton*> radios = RadioItems(w);
    if (!radios.isEmpty()) {
      int index = -1;
      for (int i = 0; i < radios.size(); ++i)
        if (radios[i]->isChecked()) index = i;
      state.insert("index", index);
    }
  }
  return state;
}

}  // namespace runner
