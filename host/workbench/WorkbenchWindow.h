// The workbench's main window: the main area with the child-window dialogs above the SQL editor
// tabs, the object browser, the script log, the query results and the status line; the "New"
// and "Object" menus open the module's dialogs.
#pragma once

#include <QMainWindow>
#include <QRect>
#include <functional>
#include <memory>

#include "host/workbench/ObjectKinds.h"
#include "host/workbench/WorkbenchHost.h"

class QAction;
class QDockWidget;
class QLabel;
class QLineEdit;
class QMdiArea;
class QSplitter;
class QTabWidget;
class QTableWidget;

namespace kel {
class TKelEditor;
}

namespace wb {

class TObjectBrowser;
class TScriptLogView;

struct TWorkbenchOptions {
  // What the title and status line call the connection ("demo", a file, a TNS name).
  QString ConnectionLabel;
  // Folder of the window layout and the dialogs' settings files; empty for the user's
  // configuration folder.
  QString SettingsDir;
};

// Where a window with the remembered rectangle `saved` goes on a screen whose free area is
// `screen`: the size shrunk to fit, then moved so that all of it is on that screen.
QRect ClampToScreen(const QRect& saved, const QRect& screen);

// The statement of `script` the cursor at `line` and `column` (0-based) is in: its lines up to the
// blank lines around it, split like a script; the statement holding the cursor line, without its
// terminator. Empty when the cursor is on a blank line.
QString StatementAt(const QString& script, int line, int column);
// Whether a statement reads rows (SELECT or WITH, comments skipped).
bool IsQuery(const QString& statement);

class TWorkbenchWindow : public QMainWindow {
  Q_OBJECT
 public:
  TWorkbenchWindow(std::unique_ptr<host::TConnection> connection, const TWorkbenchOptions& options,
                   QWidget* parent = nullptr);
  ~TWorkbenchWindow() override;

  TWorkbenchHost& Host() { return *FHost; }
  host::TConnection* Connection() const { return FConnection.get(); }
  // Scripts are journaled, not applied (the demo and SQLite databases).
  bool Journaled() const;

  QMdiArea* MdiArea() const { return FMdi; }
  TObjectBrowser* Browser() const { return FBrowser; }
  TScriptLogView* ScriptLog() const { return FScriptLog; }
  QTabWidget* EditorTabs() const { return FEditors; }
  QLineEdit* FilterEdit() const { return FFilterEdt; }
  QTableWidget* ResultGrid() const { return FResultGrid; }
  // The file an editor tab was opened from or saved to (empty when none).
  QString EditorFile(int index) const;
  // The "New" menu's action for an object-type word; null for a word not in the menu.
  QAction* NewAction(const QString& word) const;
  QAction* AlterAction() const { return FAlterAction; }

  // Services for the host.
  void AddMdiChild(QWidget* form);
  // Window > Tile and Cascade. Neither makes a child smaller than its minimum size: where the
  // area is too small for all of them, it scrolls.
  void TileChildren();
  void CascadeChildren();
  kel::TKelEditor* OpenEditor(const QString& text);
  // Opens `fileName` in a new editor tab; false with a message when it cannot be read.
  bool OpenSqlFile(const QString& fileName);
  // Puts a query's rows into the result grid; false with the server's message when it fails.
  bool RunQuery(const QString& statement);
  // Answers the "Open SQL" file dialog in tests.
  void SetOpenFileAnswerer(std::function<bool(QString&)> answerer) {
    FOpenAnswerer = std::move(answerer);
  }
  // Takes over `connection`: the dialogs are closed first (false, keeping the old connection,
  // when one refuses); the editors stay.
  bool SwitchConnection(std::unique_ptr<host::TConnection> connection, const QString& label);
  void ShowStatus(const QString& text);
  void ScriptExecuted(int result);
  void UsersChanged();

  // Opens `word` with `link` through the module; returns Result (-1 when the module left it
  // untouched: no dialog for that word).
  int OpenObject(const QString& word, kel::TXLink* link);

 public slots:
  void NewObject(const QString& word);
  void AlterObject();
  void RefreshBrowser();
  void RunEditorScript();
  // Runs the statement at the cursor: a query fills the result grid, anything else is executed.
  void RunEditorStatement();
  void OpenEditorFile();
  void SaveEditor();
  void RefreshSelected();
  // Runs the connection dialog and switches to the chosen connection.
  void Connect();
  void ClearScriptLog();
  void ExportScriptLog();
  // The module was loaded or found to lack a dialog: greys what it cannot open.
  void ModuleChanged();
  void TestDBLink();
  // Closes an SQL editor tab; an editor with unsaved text asks first. False when it stays.
  bool CloseEditorTab(int index);
  // A further request on the selected object (a new index on a table, ...).
  void RunObjectAction(const TObjectAction& action);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void BuildMenus();
  void BuildDocks();
  void UpdateActions();
  void ShowBrowserMenu(const QPoint& pos);
  kel::TKelEditor* CurrentEditor() const;
  static bool HasUnsavedText(const kel::TKelEditor* editor);
  bool MayDiscardEditor(int index);
  QString LayoutFile();
  void RestoreLayout();
  void SaveLayout();
  void ShowConnectionLabel();
  // Where the next dialog window goes: below and right of the last one, back to the top left
  // when the steps have gone a third of the way across the area.
  QPoint NextChildPos(const QSize& size);
  bool KindAvailable(const TObjectKind& kind);

  std::unique_ptr<host::TConnection> FConnection;
  TWorkbenchOptions FOptions;
  std::unique_ptr<TWorkbenchHost> FHost;
  QMdiArea* FMdi = nullptr;
  TObjectBrowser* FBrowser = nullptr;
  TScriptLogView* FScriptLog = nullptr;
  QTabWidget* FEditors = nullptr;
  QDockWidget* FBrowserDock = nullptr;
  QDockWidget* FLogDock = nullptr;
  QSplitter* FMainSplitter = nullptr;
  QLabel* FConnectionLbl = nullptr;
  QAction* FAlterAction = nullptr;
  QAction* FTestLinkAction = nullptr;
  QList<QAction*> FNewActions;
  int FEditorCount = 0;
  QLineEdit* FFilterEdt = nullptr;
  QTableWidget* FResultGrid = nullptr;
  QDockWidget* FResultDock = nullptr;
  std::function<bool(QString&)> FOpenAnswerer;
  int FCascade = 0;
};

}  // namespace wb
