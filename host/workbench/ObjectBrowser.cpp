#include "host/workbench/ObjectBrowser.h"

#include <QApplication>
#include <QHeaderView>
#include <QMap>
#include <QSet>
#include <QStyle>

#include "host/workbench/KindIcons.h"
#include "plugin/KelQuery.h"

namespace wb {

namespace {

enum TRole {
  TypeRole = Qt::UserRole,
  KindRole,
  SchemaRole,
  RowRole,
  LoadedRole,
  GreyedRole,
};

const char* const kSchemasQuery = "Workbench.Schemas";

QString NameOf(const QTreeWidgetItem* item) {
  return item->data(0, RowRole).toMap().value(QStringLiteral("NAME")).toString();
}

QString LabelOf(const QVariantMap& row) {
  const QString label = row.value(QStringLiteral("LABEL")).toString();
  return label.isEmpty() ? row.value(QStringLiteral("NAME")).toString() : label;
}

}  // namespace

TObjectBrowser::TObjectBrowser(kel::TEsDBInfo* db, QWidget* parent) : QTreeWidget(parent), FDB(db) {
  setObjectName(QStringLiteral("ObjectTree"));
  setHeaderHidden(true);
  setColumnCount(1);
  setContextMenuPolicy(Qt::CustomContextMenu);
  setUniformRowHeights(true);
  connect(this, &QTreeWidget::itemExpanded, this, &TObjectBrowser::Expand);
  connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    if (item->data(0, TypeRole).toInt() == ntObject) emit AlterRequested();
  });
  Reload();
}

void TObjectBrowser::SetConnection(kel::TEsDBInfo* db) {
  FDB = db;
  Reload();
}

void TObjectBrowser::Reload() {
  clear();
  auto* schemas = new QTreeWidgetItem(this, {QStringLiteral("Schemas")});
  schemas->setData(0, TypeRole, ntSchemas);
  schemas->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
  schemas->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
  // Kinds of a group (the storage structures) sit in a node of their own.
  QMap<QString, QTreeWidgetItem*> groups;
  for (const TObjectKind& kind : ObjectKinds()) {
    if (kind.PerSchema) continue;
    const QString group = KindGroup(kind);
    QTreeWidgetItem* parent = invisibleRootItem();
    if (!group.isEmpty()) {
      QTreeWidgetItem*& node = groups[group];
      if (!node) {
        node = new QTreeWidgetItem(this, {group});
        node->setData(0, TypeRole, ntGroup);
        node->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
      }
      parent = node;
    }
    AddFolder(parent, kind, QString());
  }
}

QTreeWidgetItem* TObjectBrowser::AddFolder(QTreeWidgetItem* parent, const TObjectKind& kind,
                                           const QString& schema) {
  auto* folder = new QTreeWidgetItem(parent, {QString::fromUtf8(kind.Caption)});
  folder->setData(0, TypeRole, ntFolder);
  folder->setData(0, KindRole, QString::fromUtf8(kind.Key));
  folder->setData(0, SchemaRole, schema);
  folder->setIcon(0, KindIcon(folder->data(0, KindRole).toString()));
  folder->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
  StyleFolder(folder);
  return folder;
}

void TObjectBrowser::Expand(QTreeWidgetItem* item) {
  if (item->data(0, LoadedRole).toBool()) return;
  const int type = item->data(0, TypeRole).toInt();
  if (type == ntSchemas)
    FillSchemas(item);
  else if (type == ntFolder)
    Fill(item);
}

QList<QVariantMap> TObjectBrowser::Rows(const QString& queryKey, const QString& schema) {
  kel::TKelQuery q(FDB);
  q.LoadSQL(queryKey);
  if (kel::TKelQuery::DeclaredParams(q.SQL()).contains(QStringLiteral("P_OWNER")))
    q.ParamByName(QStringLiteral("P_OWNER")) = schema;
  q.Open();
  QList<QVariantMap> rows;
  const kel::TQueryResult& data = q.Data();
  for (const QStringList& values : data.Rows) {
    QVariantMap row;
    for (qsizetype i = 0; i < data.Columns.size() && i < values.size(); ++i)
      row.insert(data.Columns[i].toUpper(), values[i]);
    rows << row;
  }
  return rows;
}

void TObjectBrowser::ShowError(QTreeWidgetItem* folder, const QString& message) {
  qDeleteAll(folder->takeChildren());
  auto* item = new QTreeWidgetItem(folder, {QStringLiteral("(could not be read)")});
  item->setData(0, TypeRole, ntMessage);
  item->setToolTip(0, message);
  item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
  emit StatusMessage(QStringLiteral("%1: %2").arg(folder->text(0), message));
}

void TObjectBrowser::ShowEmpty(QTreeWidgetItem* folder) {
  auto* item = new QTreeWidgetItem(folder, {QStringLiteral("(none)")});
  item->setData(0, TypeRole, ntMessage);
  item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
}

void TObjectBrowser::FillSchemas(QTreeWidgetItem* schemas) {
  try {
    Merge(schemas, Rows(QString::fromUtf8(kSchemasQuery), QString()), ntSchema);
    schemas->setData(0, LoadedRole, true);
  } catch (const std::exception& e) {
    ShowError(schemas, QString::fromStdString(e.what()));
  }
}

void TObjectBrowser::Fill(QTreeWidgetItem* folder) {
  const TObjectKind* kind = FindKind(folder->data(0, KindRole).toString());
  if (!kind) return;
  try {
    const QList<QVariantMap> rows =
        Rows(QString::fromUtf8(kind->QueryKey), folder->data(0, SchemaRole).toString());
    Merge(folder, rows, ntObject);
    if (rows.isEmpty()) ShowEmpty(folder);
    folder->setData(0, LoadedRole, true);
    FilterFolder(folder, false);
  } catch (const std::exception& e) {
    ShowError(folder, QString::fromStdString(e.what()));
  }
}

void TObjectBrowser::Merge(QTreeWidgetItem* parent, const QList<QVariantMap>& rows,
                           TNodeType type) {
  QStringList wanted;
  for (const QVariantMap& row : rows) wanted << row.value(QStringLiteral("NAME")).toString();
  const QSet<QString> wantedSet(wanted.begin(), wanted.end());

  // Drop what is gone (and any old error line).
  for (int i = parent->childCount() - 1; i >= 0; --i) {
    QTreeWidgetItem* child = parent->child(i);
    if (child->data(0, TypeRole).toInt() != type || !wantedSet.contains(NameOf(child)))
      delete parent->takeChild(i);
  }
  // What stays must be in the new order; otherwise start over.
  QStringList kept;
  for (int i = 0; i < parent->childCount(); ++i) kept << NameOf(parent->child(i));
  QStringList wantedKept;
  const QSet<QString> keptSet(kept.begin(), kept.end());
  for (const QString& name : wanted)
    if (keptSet.contains(name)) wantedKept << name;
  if (kept != wantedKept || kept.size() != keptSet.size()) qDeleteAll(parent->takeChildren());

  const QString schema = parent->data(0, SchemaRole).toString();
  const QString kindKey = parent->data(0, KindRole).toString();
  for (int i = 0; i < rows.size(); ++i) {
    const QVariantMap& row = rows[i];
    QTreeWidgetItem* item = i < parent->childCount() ? parent->child(i) : nullptr;
    if (!item || NameOf(item) != wanted[i]) {
      item = new QTreeWidgetItem;
      parent->insertChild(i, item);
      item->setData(0, TypeRole, type);
      if (type == ntSchema) {
        item->setData(0, SchemaRole, wanted[i]);
        item->setIcon(0, SchemaIcon());
        for (const TObjectKind& kind : ObjectKinds())
          if (kind.PerSchema) AddFolder(item, kind, wanted[i]);
      } else {
        item->setData(0, SchemaRole, schema);
        item->setData(0, KindRole, kindKey);
        item->setIcon(0, KindIcon(kindKey));
        if (parent->data(0, GreyedRole).toBool())
          item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
      }
    }
    item->setData(0, RowRole, row);
    item->setText(0, LabelOf(row));
  }
}

void TObjectBrowser::Refresh() {
  QList<QTreeWidgetItem*> pending{invisibleRootItem()};
  while (!pending.isEmpty()) {
    QTreeWidgetItem* item = pending.takeFirst();
    if (item->data(0, LoadedRole).toBool()) {
      if (item->data(0, TypeRole).toInt() == ntSchemas)
        FillSchemas(item);
      else
        Fill(item);
    }
    for (int i = 0; i < item->childCount(); ++i) pending << item->child(i);
  }
}

void TObjectBrowser::RefreshCurrent() {
  QTreeWidgetItem* item = currentItem();
  if (!item) return;
  const int type = item->data(0, TypeRole).toInt();
  if (type == ntObject || type == ntMessage) item = item->parent();
  if (!item) return;
  switch (item->data(0, TypeRole).toInt()) {
    case ntSchemas:
      FillSchemas(item);
      break;
    case ntFolder:
      Fill(item);
      break;
    case ntSchema:
      for (int i = 0; i < item->childCount(); ++i)
        if (item->child(i)->data(0, LoadedRole).toBool()) Fill(item->child(i));
      break;
    default:
      break;
  }
}

// The filter only touches object lines. While the text grows, a hidden line stays hidden, so
// only the shown ones are tested again.
void TObjectBrowser::SetFilter(const QString& text) {
  const QString filter = text.trimmed();
  if (filter == FFilter) return;
  const bool narrowing = !FFilter.isEmpty() && filter.contains(FFilter, Qt::CaseInsensitive);
  FFilter = filter;
  setUpdatesEnabled(false);
  QList<QTreeWidgetItem*> pending{invisibleRootItem()};
  while (!pending.isEmpty()) {
    QTreeWidgetItem* item = pending.takeLast();
    if (item->data(0, TypeRole).toInt() == ntFolder) {
      FilterFolder(item, narrowing);
      continue;
    }
    for (int i = 0; i < item->childCount(); ++i) pending << item->child(i);
  }
  setUpdatesEnabled(true);
}

void TObjectBrowser::FilterFolder(QTreeWidgetItem* folder, bool narrowing) {
  for (int i = 0; i < folder->childCount(); ++i) {
    QTreeWidgetItem* child = folder->child(i);
    if (child->data(0, TypeRole).toInt() != ntObject) continue;
    if (narrowing && child->isHidden()) continue;
    const bool hide = !FFilter.isEmpty() && !child->text(0).contains(FFilter, Qt::CaseInsensitive);
    if (child->isHidden() != hide) child->setHidden(hide);
  }
}

void TObjectBrowser::SetKindAvailable(std::function<bool(const TObjectKind&)> available) {
  FKindAvailable = std::move(available);
  UpdateKindStates();
}

void TObjectBrowser::StyleFolder(QTreeWidgetItem* folder) {
  const TObjectKind* kind = FindKind(folder->data(0, KindRole).toString());
  const bool greyed = kind && FKindAvailable && !FKindAvailable(*kind);
  if (folder->data(0, GreyedRole).toBool() == greyed && folder->data(0, GreyedRole).isValid())
    return;
  folder->setData(0, GreyedRole, greyed);
  const QBrush brush =
      palette().brush(greyed ? QPalette::Disabled : QPalette::Active, QPalette::Text);
  folder->setForeground(0, brush);
  folder->setToolTip(0, greyed ? QStringLiteral("The object dialogs have no dialog for %1 yet: "
                                                "they are listed, not opened.")
                                     .arg(folder->text(0))
                               : QString());
  for (int i = 0; i < folder->childCount(); ++i)
    if (folder->child(i)->data(0, TypeRole).toInt() == ntObject)
      folder->child(i)->setForeground(0, brush);
}

void TObjectBrowser::UpdateKindStates() {
  QList<QTreeWidgetItem*> pending{invisibleRootItem()};
  while (!pending.isEmpty()) {
    QTreeWidgetItem* item = pending.takeLast();
    if (item->data(0, TypeRole).toInt() == ntFolder) {
      StyleFolder(item);
      continue;
    }
    for (int i = 0; i < item->childCount(); ++i) pending << item->child(i);
  }
}

bool TObjectBrowser::IsGreyed(const QTreeWidgetItem* item) {
  for (; item; item = item->parent())
    if (item->data(0, TypeRole).toInt() == ntFolder) return item->data(0, GreyedRole).toBool();
  return false;
}

TObjectBrowser::TNodeType TObjectBrowser::CurrentNodeType() const {
  const QTreeWidgetItem* item = currentItem();
  return item ? TNodeType(item->data(0, TypeRole).toInt()) : ntMessage;
}

QString TObjectBrowser::CurrentSchema() const {
  const QTreeWidgetItem* item = currentItem();
  return item ? item->data(0, SchemaRole).toString() : QString();
}

const TObjectKind* TObjectBrowser::CurrentKind() const {
  const QTreeWidgetItem* item = currentItem();
  return item ? FindKind(item->data(0, KindRole).toString()) : nullptr;
}

QVariantMap TObjectBrowser::CurrentRow() const {
  const QTreeWidgetItem* item = currentItem();
  return item && item->data(0, TypeRole).toInt() == ntObject ? item->data(0, RowRole).toMap()
                                                             : QVariantMap();
}

QTreeWidgetItem* TObjectBrowser::Folder(const QString& schema, const QString& kindKey) {
  QTreeWidgetItem* parent = invisibleRootItem();
  if (!schema.isEmpty()) {
    QTreeWidgetItem* schemas = topLevelItem(0);
    if (!schemas) return nullptr;
    Expand(schemas);
    parent = nullptr;
    for (int i = 0; i < schemas->childCount() && !parent; ++i)
      if (schemas->child(i)->data(0, TypeRole).toInt() == ntSchema &&
          NameOf(schemas->child(i)) == schema)
        parent = schemas->child(i);
    if (!parent) return nullptr;
  }
  QList<QTreeWidgetItem*> parents{parent};
  for (int i = 0; schema.isEmpty() && i < topLevelItemCount(); ++i)
    if (topLevelItem(i)->data(0, TypeRole).toInt() == ntGroup) parents << topLevelItem(i);
  for (QTreeWidgetItem* p : parents) {
    for (int i = 0; i < p->childCount(); ++i) {
      QTreeWidgetItem* child = p->child(i);
      if (child->data(0, TypeRole).toInt() == ntFolder &&
          child->data(0, KindRole).toString() == kindKey) {
        Expand(child);
        return child;
      }
    }
  }
  return nullptr;
}

bool TObjectBrowser::SelectObject(const QString& schema, const QString& kindKey,
                                  const QString& name) {
  QTreeWidgetItem* folder = Folder(schema, kindKey);
  if (!folder) return false;
  for (int i = 0; i < folder->childCount(); ++i) {
    QTreeWidgetItem* child = folder->child(i);
    if (child->data(0, TypeRole).toInt() == ntObject && NameOf(child) == name) {
      for (QTreeWidgetItem* p = folder; p; p = p->parent()) p->setExpanded(true);
      setCurrentItem(child);
      scrollToItem(child);
      return true;
    }
  }
  return false;
}

}  // namespace wb
