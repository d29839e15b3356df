// The object browser: schemas, then the kinds of object in a schema, then the objects; and the
// database-wide kinds (users, roles, tablespaces, ...) at the top level. Folders are filled from
// the catalog when first expanded.
#pragma once

#include <QTreeWidget>
#include <QVariantMap>
#include <functional>

#include "host/workbench/ObjectKinds.h"

namespace kel {
class TEsDBInfo;
}

namespace wb {

class TObjectBrowser : public QTreeWidget {
  Q_OBJECT
 public:
  enum TNodeType { ntSchemas = 1, ntSchema, ntFolder, ntObject, ntMessage, ntGroup };

  explicit TObjectBrowser(kel::TEsDBInfo* db, QWidget* parent = nullptr);

  // Builds the top level anew (folders are filled again when expanded).
  void Reload();
  // Browses another connection, from the top level.
  void SetConnection(kel::TEsDBInfo* db);
  // Reads every filled folder again, keeping what is expanded and selected.
  void Refresh();
  // Reads again only what the selected node shows: its folder (the folder of a selected object),
  // the filled folders of a selected schema, or the schema list.
  void RefreshCurrent();

  // Shows only the objects whose caption holds `text` (any letter case); folders and schemas
  // stay. An empty text shows everything. Folders filled later are filtered as they fill.
  void SetFilter(const QString& text);
  QString Filter() const { return FFilter; }
  // Decides whether the module has a dialog for a kind; kinds without one are shown greyed.
  void SetKindAvailable(std::function<bool(const TObjectKind&)> available);
  // Greys or ungreys the folders again after the predicate's answer changed.
  void UpdateKindStates();
  static bool IsGreyed(const QTreeWidgetItem* item);

  // The selected node and what it stands for. The schema is the one the node is in (empty
  // for the database-wide kinds); the kind is that of the folder or object.
  TNodeType CurrentNodeType() const;
  QString CurrentSchema() const;
  const TObjectKind* CurrentKind() const;
  QVariantMap CurrentRow() const;

  // Selects an object, expanding and filling the folders on the way; false when not found.
  bool SelectObject(const QString& schema, const QString& kindKey, const QString& name);
  // The folder of a kind (`schema` empty for the database-wide kinds), filled; null if none.
  QTreeWidgetItem* Folder(const QString& schema, const QString& kindKey);

 signals:
  void AlterRequested();
  void StatusMessage(const QString& text);

 private:
  QTreeWidgetItem* AddFolder(QTreeWidgetItem* parent, const TObjectKind& kind,
                             const QString& schema);
  void Expand(QTreeWidgetItem* item);
  // Reads the folder's rows from the catalog and brings its children in line with them.
  void Fill(QTreeWidgetItem* folder);
  void FillSchemas(QTreeWidgetItem* schemas);
  // Brings `parent`'s children in line with `rows`: keeps the items still there (and what is
  // below them), removes the others, adds the new ones in order.
  void Merge(QTreeWidgetItem* parent, const QList<QVariantMap>& rows, TNodeType type);
  QList<QVariantMap> Rows(const QString& queryKey, const QString& schema);
  void ShowError(QTreeWidgetItem* folder, const QString& message);
  // The "(none)" line of a folder without objects.
  void ShowEmpty(QTreeWidgetItem* folder);
  void FilterFolder(QTreeWidgetItem* folder, bool narrowing);
  void StyleFolder(QTreeWidgetItem* folder);

  kel::TEsDBInfo* FDB;
  QString FFilter;
  std::function<bool(const TObjectKind&)> FKindAvailable;
};

}  // namespace wb
