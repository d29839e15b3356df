#include "host/workbench/WorkbenchWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QTreeWidgetItem>

#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/ScriptLogView.h"
#include "plugin/KelEditor.h"

namespace wb {

namespace {
const int kStatusTimeout = 10000;
}

TWorkbenchWindow::TWorkbenchWindow(std::unique_ptr<host::TConnection> connection,
                                   const TWorkbenchOptions& options, QWidget* parent)
    : QMainWindow(parent),
      FConnection(std::move(connection)),
      FOptions(options),
      FHost(std::make_unique<TWorkbenchHost>(this, FConnection.get())) {
  setObjectName(QStringLiteral("WorkbenchWnd"));
  FHost->SetSettingsDir(options.SettingsDir);
  setWindowTitle(QStringLiteral("NewObjDlg Workbench - %1").arg(options.ConnectionLabel));
  resize(1280, 900);

  FMdi = new QMdiArea(this);
  FMdi->setObjectName(QStringLiteral("MdiArea"));
  FMdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  FMdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setCentralWidget(FMdi);

  BuildDocks();
  BuildMenus();

  FConnectionLbl = new QLabel(this);
  FConnectionLbl->setObjectName(QStringLiteral("ConnectionLbl"));
  QString user;
  try {
    user = FConnection->UserName();
  } catch (const std::exception&) {
  }
  FConnectionLbl->setText(QStringLiteral("%1@%2%3").arg(
      user, options.ConnectionLabel,
      Journaled() ? QStringLiteral(" (scripts are journaled, not applied)") : QString()));
  statusBar()->addPermanentWidget(FConnectionLbl);

  RestoreLayout();
  UpdateActions();
}

TWorkbenchWindow::~TWorkbenchWindow() {
  // The module's windows use the host while they are destroyed (their settings are saved
  // through it): destroy them while the host and the connection are still there.
  delete FMdi;
  FMdi = nullptr;
  const QList<QWidget*> windows = findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  for (QWidget* w : windows)
    if (w->isWindow() && !qobject_cast<QDockWidget*>(w)) delete w;
}

bool TWorkbenchWindow::Journaled() const {
  return FScriptLog && FScriptLog->Journaled();
}

// ---------------------------------------------------------------------------------------------
void TWorkbenchWindow::BuildDocks() {
  FBrowser = new TObjectBrowser(FConnection.get(), this);
  FBrowserDock = new QDockWidget(QStringLiteral("Objects"), this);
  FBrowserDock->setObjectName(QStringLiteral("ObjectsDock"));
  FBrowserDock->setWidget(FBrowser);
  addDockWidget(Qt::LeftDockWidgetArea, FBrowserDock);
  connect(FBrowser, &TObjectBrowser::AlterRequested, this, &TWorkbenchWindow::AlterObject);
  connect(FBrowser, &TObjectBrowser::StatusMessage, this, &TWorkbenchWindow::ShowStatus);
  connect(FBrowser, &TObjectBrowser::currentItemChanged, this, &TWorkbenchWindow::UpdateActions);
  connect(FBrowser, &QWidget::customContextMenuRequested, this, &TWorkbenchWindow::ShowBrowserMenu);

  FEditors = new QTabWidget(this);
  FEditors->setObjectName(QStringLiteral("EditorTabs"));
  FEditors->setTabsClosable(true);
  FEditors->setDocumentMode(true);
  connect(FEditors, &QTabWidget::tabCloseRequested, this, &TWorkbenchWindow::CloseEditorTab);
  FEditorDock = new QDockWidget(QStringLiteral("SQL Editor"), this);
  FEditorDock->setObjectName(QStringLiteral("EditorDock"));
  FEditorDock->setWidget(FEditors);
  addDockWidget(Qt::BottomDockWidgetArea, FEditorDock);

  FScriptLog = new TScriptLogView(FConnection.get(), this);
  FLogDock = new QDockWidget(QStringLiteral("Script log"), this);
  FLogDock->setObjectName(QStringLiteral("ScriptLogDock"));
  FLogDock->setWidget(FScriptLog);
  addDockWidget(Qt::BottomDockWidgetArea, FLogDock);
  tabifyDockWidget(FEditorDock, FLogDock);
  // The dialogs get most of the height; a saved layout overrides this.
  resizeDocks({FEditorDock, FLogDock}, {170, 170}, Qt::Vertical);
  connect(FScriptLog, &TScriptLogView::OpenStatement, this,
          [this](const QString& text) { OpenEditor(text); });
}

void TWorkbenchWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  QAction* newEditor =
      file->addAction(QStringLiteral("New SQL &Editor"), this, [this] { OpenEditor(QString()); });
  newEditor->setObjectName(QStringLiteral("NewEditor"));
  QAction* save =
      file->addAction(QStringLiteral("&Save SQL As..."), this, &TWorkbenchWindow::SaveEditor);
  save->setObjectName(QStringLiteral("SaveEditor"));
  save->setShortcut(QKeySequence::Save);
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
  quit->setShortcut(QKeySequence::Quit);

  QMenu* create = menuBar()->addMenu(QStringLiteral("&New"));
  create->setObjectName(QStringLiteral("NewMenu"));
  for (const TNewEntry& entry : NewEntries()) {
    if (entry.SeparatorBefore) create->addSeparator();
    const QString word = QString::fromUtf8(entry.Word);
    QAction* a = create->addAction(QString::fromUtf8(entry.Caption) + QStringLiteral("..."), this,
                                   [this, word] { NewObject(word); });
    a->setObjectName(QStringLiteral("New.") + word);
    FNewActions << a;
  }

  QMenu* object = menuBar()->addMenu(QStringLiteral("&Object"));
  FAlterAction =
      object->addAction(QStringLiteral("&Alter..."), this, &TWorkbenchWindow::AlterObject);
  FAlterAction->setObjectName(QStringLiteral("ObjectAlter"));
  FTestLinkAction =
      object->addAction(QStringLiteral("&Test Database Link"), this, &TWorkbenchWindow::TestDBLink);
  FTestLinkAction->setObjectName(QStringLiteral("TestDBLink"));
  object->addSeparator();
  QAction* refresh =
      object->addAction(QStringLiteral("&Refresh"), this, &TWorkbenchWindow::RefreshBrowser);
  refresh->setObjectName(QStringLiteral("Refresh"));
  refresh->setShortcut(QKeySequence::Refresh);

  QMenu* sql = menuBar()->addMenu(QStringLiteral("&SQL"));
  QAction* run =
      sql->addAction(QStringLiteral("&Run Script"), this, &TWorkbenchWindow::RunEditorScript);
  run->setObjectName(QStringLiteral("RunScript"));
  run->setShortcut(Qt::Key_F9);

  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->addAction(FBrowserDock->toggleViewAction());
  view->addAction(FEditorDock->toggleViewAction());
  view->addAction(FLogDock->toggleViewAction());

  QMenu* window = menuBar()->addMenu(QStringLiteral("&Window"));
  window->addAction(QStringLiteral("&Tile"), FMdi, &QMdiArea::tileSubWindows);
  window->addAction(QStringLiteral("&Cascade"), FMdi, &QMdiArea::cascadeSubWindows);
  window->addAction(QStringLiteral("Close &All"), FMdi, &QMdiArea::closeAllSubWindows);
}

void TWorkbenchWindow::UpdateActions() {
  const TObjectKind* kind = FBrowser->CurrentKind();
  const bool object = FBrowser->CurrentNodeType() == TObjectBrowser::ntObject;
  FAlterAction->setEnabled(object && kind && *kind->AlterWord);
  FTestLinkAction->setEnabled(object && kind && qstrcmp(kind->Key, "DBLinks") == 0);
}

QAction* TWorkbenchWindow::NewAction(const QString& word) const {
  for (QAction* a : FNewActions)
    if (a->objectName() == QStringLiteral("New.") + word) return a;
  return nullptr;
}

// ---------------------------------------------------------------------------------------------
int TWorkbenchWindow::OpenObject(const QString& word, kel::TXLink* link) {
  if (!FHost->Module().Loaded()) {
    ShowStatus(QStringLiteral("No object dialogs: the module is not loaded."));
    return -1;
  }
  const int result = FHost->OpenObject(word, this, link);
  if (result == -1)
    ShowStatus(QStringLiteral("The module has no dialog for \"%1\" yet.").arg(word));
  return result;
}

void TWorkbenchWindow::NewObject(const QString& word) {
  const TNewEntry* entry = nullptr;
  for (const TNewEntry& e : NewEntries())
    if (word == QLatin1String(e.Word)) entry = &e;
  if (!entry) return;
  kel::TXLink link(this);
  const QString schema = FBrowser->CurrentSchema();
  if (entry->SchemaObject && !schema.isEmpty()) {
    // The new object goes into the schema the user is browsing.
    link.SetVerb(QStringLiteral("ChangeOwner"));
    link.AddParams(QStringLiteral("ObjFrmOwner"), schema);
  } else {
    FillLink(link, entry->Verb, entry->Params, schema, FBrowser->CurrentRow());
  }
  OpenObject(word, &link);
}

void TWorkbenchWindow::AlterObject() {
  const TObjectKind* kind = FBrowser->CurrentKind();
  const QVariantMap row = FBrowser->CurrentRow();
  if (!kind || row.isEmpty() || !*kind->AlterWord) return;
  kel::TXLink link(this);
  FillLink(link, kind->AlterVerb, kind->AlterParams, FBrowser->CurrentSchema(), row);
  OpenObject(QString::fromUtf8(kind->AlterWord), &link);
}

void TWorkbenchWindow::RunObjectAction(const TObjectAction& action) {
  kel::TXLink link(this);
  FillLink(link, action.Verb, action.Params, FBrowser->CurrentSchema(), FBrowser->CurrentRow());
  OpenObject(QString::fromUtf8(action.Word), &link);
}

void TWorkbenchWindow::ShowBrowserMenu(const QPoint& pos) {
  if (QTreeWidgetItem* item = FBrowser->itemAt(pos)) FBrowser->setCurrentItem(item);
  QMenu menu(this);
  const TObjectKind* kind = FBrowser->CurrentKind();
  if (FBrowser->CurrentNodeType() == TObjectBrowser::ntObject && kind) {
    if (FAlterAction->isEnabled()) menu.addAction(FAlterAction);
    for (const TObjectAction& action : ObjectActions())
      if (qstrcmp(action.KindKey, kind->Key) == 0)
        menu.addAction(QString::fromUtf8(action.Caption), this,
                       [this, &action] { RunObjectAction(action); });
    if (FTestLinkAction->isEnabled()) menu.addAction(FTestLinkAction);
    menu.addSeparator();
  }
  menu.addAction(QStringLiteral("Refresh"), this, &TWorkbenchWindow::RefreshBrowser);
  menu.exec(FBrowser->viewport()->mapToGlobal(pos));
}

void TWorkbenchWindow::RefreshBrowser() {
  FBrowser->Refresh();
  FScriptLog->Refresh();
}

void TWorkbenchWindow::TestDBLink() {
  const TObjectKind* kind = FBrowser->CurrentKind();
  const QVariantMap row = FBrowser->CurrentRow();
  if (!kind || qstrcmp(kind->Key, "DBLinks") != 0 || row.isEmpty()) return;
  FHost->esDBLinkTest(FConnection.get(), row.value(QStringLiteral("NAME")).toString());
}

// ---------------------------------------------------------------------------------------------
void TWorkbenchWindow::AddMdiChild(QWidget* form) {
  const QSize designed = form->size().expandedTo(form->sizeHint());
  QMdiSubWindow* sub = FMdi->addSubWindow(form);
  // The dialog's designed size plus the frame, as far as the area allows.
  const QSize frame = sub->sizeHint() - form->sizeHint();
  sub->resize((designed + frame.expandedTo(QSize(0, 0))).boundedTo(FMdi->viewport()->size()));
  sub->setAttribute(Qt::WA_DeleteOnClose);
  // A form that closes itself (after a successful OK) takes its frame with it. Queued: the
  // frame may itself be on its way out when the form goes.
  connect(form, &QObject::destroyed, sub, &QWidget::close, Qt::QueuedConnection);
  sub->show();
  FMdi->setActiveSubWindow(sub);
}

kel::TKelEditor* TWorkbenchWindow::OpenEditor(const QString& text) {
  auto* editor = new kel::TKelEditor(FEditors);
  editor->setObjectName(QStringLiteral("SQLEditor%1").arg(++FEditorCount));
  editor->PlSqlEditor();
  editor->SetText(text);
  // Text a dialog sends here is not saved anywhere yet; an empty editor holds nothing to lose.
  editor->setModified(!text.trimmed().isEmpty());
  FEditors->setCurrentIndex(FEditors->addTab(editor, QStringLiteral("SQL %1").arg(FEditorCount)));
  FEditorDock->show();
  FEditorDock->raise();
  editor->setFocus();
  return editor;
}

bool TWorkbenchWindow::HasUnsavedText(const kel::TKelEditor* editor) {
  return editor && editor->isModified() && !editor->Text().trimmed().isEmpty();
}

// Text typed into an editor, or sent there by a dialog, exists nowhere else until it is saved:
// the user is asked before it goes.
bool TWorkbenchWindow::MayDiscardEditor(int index) {
  auto* editor = qobject_cast<kel::TKelEditor*>(FEditors->widget(index));
  if (!HasUnsavedText(editor)) return true;
  FEditorDock->show();
  FEditorDock->raise();
  FEditors->setCurrentIndex(index);
  return FHost->esMsgDBox(QStringLiteral("Workbench.DiscardEditor"), {FEditors->tabText(index)},
                          kel::TMsgDlgType::Confirmation, false) == kel::mrYes;
}

bool TWorkbenchWindow::CloseEditorTab(int index) {
  QWidget* page = FEditors->widget(index);
  if (!page || !MayDiscardEditor(index)) return false;
  FEditors->removeTab(index);
  page->deleteLater();
  return true;
}

kel::TKelEditor* TWorkbenchWindow::CurrentEditor() const {
  return qobject_cast<kel::TKelEditor*>(FEditors->currentWidget());
}

void TWorkbenchWindow::RunEditorScript() {
  kel::TKelEditor* editor = CurrentEditor();
  if (!editor || editor->Text().trimmed().isEmpty()) {
    ShowStatus(QStringLiteral("There is no script to run."));
    return;
  }
  FHost->esScriptExecute(this, FConnection.get(), editor->Text());
}

void TWorkbenchWindow::SaveEditor() {
  kel::TKelEditor* editor = CurrentEditor();
  if (!editor) return;
  QString fileName;
  if (!FHost->SaveFileDialog(this, fileName)) return;
  if (QFileInfo::exists(fileName) &&
      FHost->esMsgDBox(QStringLiteral("OverWrite"), kel::TMsgDlgType::Confirmation,
                       kel::TMsgDlgButtons::YesNoCancel, false) != kel::mrYes)
    return;
  try {
    editor->SaveFile(fileName);
    editor->setModified(false);
    ShowStatus(QStringLiteral("Saved %1.").arg(fileName));
  } catch (const std::exception& e) {
    FHost->ShowMessage({QString::fromStdString(e.what()), kel::TMsgDlgType::Error});
  }
}

void TWorkbenchWindow::ShowStatus(const QString& text) {
  statusBar()->showMessage(text, kStatusTimeout);
}

void TWorkbenchWindow::ScriptExecuted(int result) {
  if (result != 0) {
    ShowStatus(QStringLiteral("The script failed."));
    return;
  }
  if (Journaled()) {
    const int count = FScriptLog->Refresh();
    FLogDock->show();
    FLogDock->raise();
    ShowStatus(QStringLiteral("The script was recorded in the script log (%1 statements in all); "
                              "the demo database does not change its catalog.")
                   .arg(count));
  } else {
    FBrowser->Refresh();
    ShowStatus(QStringLiteral("The script was executed."));
  }
}

void TWorkbenchWindow::UsersChanged() {
  if (!Journaled()) FBrowser->Refresh();
}

// ---------------------------------------------------------------------------------------------
QString TWorkbenchWindow::LayoutFile() {
  return FHost->SettingsDir() + QStringLiteral("/Workbench.ini");
}

void TWorkbenchWindow::RestoreLayout() {
  QSettings ini(LayoutFile(), QSettings::IniFormat);
  const QByteArray geometry = ini.value(QStringLiteral("Window/Geometry")).toByteArray();
  if (!geometry.isEmpty()) restoreGeometry(geometry);
  const QByteArray state = ini.value(QStringLiteral("Window/State")).toByteArray();
  if (!state.isEmpty()) restoreState(state);
}

void TWorkbenchWindow::SaveLayout() {
  QSettings ini(LayoutFile(), QSettings::IniFormat);
  ini.setValue(QStringLiteral("Window/Geometry"), saveGeometry());
  ini.setValue(QStringLiteral("Window/State"), saveState());
}

void TWorkbenchWindow::closeEvent(QCloseEvent* event) {
  // Unsaved editor texts and then every open dialog are asked first; one that refuses keeps the
  // window open with everything as it was.
  for (int i = 0; i < FEditors->count(); ++i) {
    if (!MayDiscardEditor(i)) {
      event->ignore();
      return;
    }
  }
  FMdi->closeAllSubWindows();
  if (!FMdi->subWindowList().isEmpty()) {
    event->ignore();
    return;
  }
  SaveLayout();
  event->accept();
}

}  // namespace wb
