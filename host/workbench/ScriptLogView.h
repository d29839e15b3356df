// The script log: on the demo and SQLite databases, scripts are not applied but journaled; this
// view lists that journal and says so.
#pragma once

#include <QWidget>

class QLabel;
class QTreeWidget;

namespace host {
class TSqlConnection;
class TConnection;
}  // namespace host

namespace wb {

class TScriptLogView : public QWidget {
  Q_OBJECT
 public:
  explicit TScriptLogView(host::TConnection* connection, QWidget* parent = nullptr);
  // Whether the connection journals its scripts instead of running them.
  bool Journaled() const { return FJournal != nullptr; }

  // Reads the journal again; returns the number of statements in it (0 when not journaled or
  // unreadable).
  int Refresh();
  int Count() const;
  // The full text of the statement in row `row` (oldest first).
  QString Statement(int row) const;

 signals:
  // The user asked to open a logged statement in an editor.
  void OpenStatement(const QString& text);

 private:
  host::TSqlConnection* FJournal;  // null when scripts really run
  QLabel* FNote;
  QTreeWidget* FList;
};

}  // namespace wb
