// The script log: on the demo and SQLite databases, scripts are not applied but journaled; this
// view lists that journal and says so.
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
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
  // Lists the journal of another connection.
  void SetConnection(host::TConnection* connection);
  // Whether the connection journals its scripts instead of running them.
  bool Journaled() const { return FJournal != nullptr; }

  // Reads the journal again; returns the number of statements in it (0 when not journaled or
  // unreadable).
  int Refresh();
  int Count() const;
  // The full text of the statement in row `row` (oldest first).
  QString Statement(int row) const;
  // Empties the journal.
  void Clear();
  // The journal as a script that runs again: each statement with the time it was recorded
  // and its terminator (";" or a "/" line after a PL/SQL unit).
  QString ExportText() const;

 signals:
  // The user asked to open a logged statement in an editor.
  void OpenStatement(const QString& text);
  // The Clear and Export buttons: the window asks and chooses the file.
  void ClearRequested();
  void ExportRequested();

 private:
  host::TSqlConnection* FJournal;  // null when scripts really run
  QLabel* FNote;
  QTreeWidget* FList;
  QPushButton* FClearBtn;
  QPushButton* FExportBtn;
};

}  // namespace wb
