// The workbench's main window: the MDI area for the child-window dialogs, the object browser,
// the SQL editor tabs, the script log and the status line; the "New" and "Object" menus open
// the module's dialogs.
#pragma once

#include <QMainWindow>
#include <memory>

#include "host/workbench/ObjectKinds.h"
#include "host/workbench/WorkbenchHost.h"

class QAction;
class QDockWidget;
class QLabel;
class QMdiArea;
class QTabWidget;

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
  // The "New" menu's action for an object-type word; null for a word not in the menu.
  QAction* NewAction(const QString& word) const;
  QAction* AlterAction() const { return FAlterAction; }

  // Services for the host.
  void AddMdiChild(QWidget* form);
  kel::TKelEditor* OpenEditor(const QString& text);
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
  void SaveEditor();
  void TestDBLink();
  // Closes an SQL editor tab; an editor with unsaved text asks first. False when it stays.
  bool CloseEditorTab(int index);
  // A further request on the selected object (a new index on a table, ...).
  void RunObjectAction(const TObjectAction& action);

 protected:
  void closeEvent(QCloseEvent* event) override;

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

  std::unique_ptr<host::TConnection> FConnection;
  TWorkbenchOptions FOptions;
  std::unique_ptr<TWorkbenchHost> FHost;
  QMdiArea* FMdi = nullptr;
  TObjectBrowser* FBrowser = nullptr;
  TScriptLogView* FScriptLog = nullptr;
  QTabWidget* FEditors = nullptr;
  QDockWidget* FBrowserDock = nullptr;
  QDockWidget* FLogDock = nullptr;
  QDockWidget* FEditorDock = nullptr;
  QLabel* FConnectionLbl = nullptr;
  QAction* FAlterAction = nullptr;
  QAction* FTestLinkAction = nullptr;
  QList<QAction*> FNewActions;
  int FEditorCount = 0;
};

}  // namespace wb
