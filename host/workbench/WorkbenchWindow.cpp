#include "host/workbench/WorkbenchWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidgetItem>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "host/core/ScriptSplitter.h"
#include "host/workbench/ConnectDialog.h"
#include "host/workbench/KindIcons.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/ScriptLogView.h"
#include "plugin/KelEditor.h"

namespace wb {

namespace {
const int kStatusTimeout = 10000;
// A query shows at most this many rows; the status line says when there were more.
const int kMaxResultRows = 10000;
const char* const kFileProperty = "SqlFileName";

QStringList Lines(const QString& text) {
  QString t = text;
  t.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  return t.split(u'\n');
}

bool WriteText(const QString& fileName, const QString& text, QString* error) {
  QFile file(fileName);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(text.toUtf8()) < 0 ||
      !file.flush()) {
    *error = QStringLiteral("Cannot write \"%1\": %2").arg(fileName, file.errorString());
    return false;
  }
  return true;
}
}  // namespace

QRect ClampToScreen(const QRect& saved, const QRect& screen) {
  if (screen.isEmpty()) return saved;
  const QSize size = saved.size().boundedTo(screen.size());
  const int x = std::clamp(saved.x(), screen.left(), screen.right() - size.width() + 1);
  const int y = std::clamp(saved.y(), screen.top(), screen.bottom() - size.height() + 1);
  return QRect(QPoint(x, y), size);
}

QString StatementAt(const QString& script, int line, int column) {
  const QStringList lines = Lines(script);
  if (line < 0 || line >= lines.size() || lines[line].trimmed().isEmpty()) return QString();
  int first = line, last = line;
  while (first > 0 && !lines[first - 1].trimmed().isEmpty()) --first;
  while (last + 1 < lines.size() && !lines[last + 1].trimmed().isEmpty()) ++last;
  const QString paragraph = lines.mid(first, last - first + 1).join(u'\n');
  qsizetype cursor = 0;
  for (int i = first; i < line; ++i) cursor += lines[i].size() + 1;
  cursor += std::clamp<qsizetype>(column, 0, lines[line].size());
  // The statement the cursor is in, or the last one before it (the cursor after a ";").
  QString found;
  qsizetype from = 0;
  for (const QString& statement : host::SplitScript(paragraph)) {
    const qsizetype at = paragraph.indexOf(statement, from);
    if (at < 0) break;
    if (at > cursor && !found.isEmpty()) break;
    found = statement;
    from = at + statement.size();
  }
  return found;
}

bool IsQuery(const QString& statement) {
  static const QRegularExpression lead(
      QStringLiteral("^(?:\\s+|--[^\\n]*(?:\\n|$)|/\\*.*?\\*/|\\()*(\\w+)"),
      QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpressionMatch m = lead.match(statement);
  if (!m.hasMatch()) return false;
  const QString word = m.captured(1).toUpper();
  return word == QLatin1String("SELECT") || word == QLatin1String("WITH");
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

  // The main area: the dialogs above, the SQL editors below (shown once an editor is open).
  FMainSplitter = new QSplitter(Qt::Vertical, this);
  FMainSplitter->setObjectName(QStringLiteral("MainSplitter"));
  FMainSplitter->setChildrenCollapsible(false);
  FMdi = new QMdiArea(FMainSplitter);
  FMdi->setObjectName(QStringLiteral("MdiArea"));
  FMdi->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  FMdi->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  FMainSplitter->addWidget(FMdi);
  setCentralWidget(FMainSplitter);

  BuildDocks();
  BuildMenus();

  FConnectionLbl = new QLabel(this);
  FConnectionLbl->setObjectName(QStringLiteral("ConnectionLbl"));
  ShowConnectionLabel();
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

void TWorkbenchWindow::ShowConnectionLabel() {
  QString user;
  try {
    user = FConnection->UserName();
  } catch (const std::exception&) {
  }
  setWindowTitle(QStringLiteral("NewObjDlg Workbench - %1").arg(FOptions.ConnectionLabel));
  FConnectionLbl->setText(QStringLiteral("%1@%2%3").arg(
      user, FOptions.ConnectionLabel,
      Journaled() ? QStringLiteral(" (scripts are journaled, not applied)") : QString()));
}

bool TWorkbenchWindow::Journaled() const {
  return FScriptLog && FScriptLog->Journaled();
}

// ---------------------------------------------------------------------------------------------
void TWorkbenchWindow::BuildDocks() {
  auto* browserPane = new QWidget(this);
  FFilterEdt = new QLineEdit(browserPane);
  FFilterEdt->setObjectName(QStringLiteral("ObjectFilterEdt"));
  FFilterEdt->setPlaceholderText(QStringLiteral("Filter objects"));
  FFilterEdt->setClearButtonEnabled(true);
  FBrowser = new TObjectBrowser(FConnection.get(), browserPane);
  FBrowser->SetKindAvailable([this](const TObjectKind& kind) { return KindAvailable(kind); });
  connect(FFilterEdt, &QLineEdit::textChanged, FBrowser, &TObjectBrowser::SetFilter);
  auto* browserLayout = new QVBoxLayout(browserPane);
  browserLayout->setContentsMargins(0, 0, 0, 0);
  browserLayout->setSpacing(2);
  browserLayout->addWidget(FFilterEdt);
  browserLayout->addWidget(FBrowser, 1);
  FBrowserDock = new QDockWidget(QStringLiteral("Objects"), this);
  FBrowserDock->setObjectName(QStringLiteral("ObjectsDock"));
  FBrowserDock->setWidget(browserPane);
  addDockWidget(Qt::LeftDockWidgetArea, FBrowserDock);
  connect(FBrowser, &TObjectBrowser::AlterRequested, this, &TWorkbenchWindow::AlterObject);
  connect(FBrowser, &TObjectBrowser::StatusMessage, this, &TWorkbenchWindow::ShowStatus);
  connect(FBrowser, &TObjectBrowser::currentItemChanged, this, &TWorkbenchWindow::UpdateActions);
  connect(FBrowser, &QWidget::customContextMenuRequested, this, &TWorkbenchWindow::ShowBrowserMenu);

  FEditors = new QTabWidget(FMainSplitter);
  FEditors->setObjectName(QStringLiteral("EditorTabs"));
  FEditors->setTabsClosable(true);
  FEditors->setDocumentMode(true);
  connect(FEditors, &QTabWidget::tabCloseRequested, this, &TWorkbenchWindow::CloseEditorTab);
  FMainSplitter->addWidget(FEditors);
  FMainSplitter->setStretchFactor(0, 3);
  FMainSplitter->setStretchFactor(1, 2);
  FEditors->hide();

  FScriptLog = new TScriptLogView(FConnection.get(), this);
  FLogDock = new QDockWidget(QStringLiteral("Script log"), this);
  FLogDock->setObjectName(QStringLiteral("ScriptLogDock"));
  FLogDock->setWidget(FScriptLog);
  addDockWidget(Qt::BottomDockWidgetArea, FLogDock);

  FResultGrid = new QTableWidget(this);
  FResultGrid->setObjectName(QStringLiteral("ResultGrid"));
  FResultGrid->setEditTriggers(QAbstractItemView::NoEditTriggers);
  FResultGrid->setSelectionBehavior(QAbstractItemView::SelectItems);
  FResultGrid->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  FResultDock = new QDockWidget(QStringLiteral("Results"), this);
  FResultDock->setObjectName(QStringLiteral("ResultDock"));
  FResultDock->setWidget(FResultGrid);
  addDockWidget(Qt::BottomDockWidgetArea, FResultDock);
  tabifyDockWidget(FLogDock, FResultDock);
  FLogDock->raise();
  // The dialogs and editors get most of the height; a saved layout overrides this.
  resizeDocks({FLogDock, FResultDock}, {150, 150}, Qt::Vertical);
  connect(FScriptLog, &TScriptLogView::OpenStatement, this,
          [this](const QString& text) { OpenEditor(text); });
  connect(FScriptLog, &TScriptLogView::ClearRequested, this, &TWorkbenchWindow::ClearScriptLog);
  connect(FScriptLog, &TScriptLogView::ExportRequested, this, &TWorkbenchWindow::ExportScriptLog);
}

// The menu bar's mnemonics are window-wide, like those of the buttons of a dialog in the MDI
// area: they avoid the letters the dialogs' buttons use (&OK, &Cancel, &View SQL), so Alt+O
// presses OK instead of opening a menu.
void TWorkbenchWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  QAction* connectAction =
      file->addAction(QStringLiteral("Co&nnect..."), this, &TWorkbenchWindow::Connect);
  connectAction->setObjectName(QStringLiteral("Connect"));
  file->addSeparator();
  QAction* newEditor =
      file->addAction(QStringLiteral("New SQL &Editor"), this, [this] { OpenEditor(QString()); });
  newEditor->setObjectName(QStringLiteral("NewEditor"));
  newEditor->setShortcut(QKeySequence::New);
  QAction* open =
      file->addAction(QStringLiteral("&Open SQL..."), this, &TWorkbenchWindow::OpenEditorFile);
  open->setObjectName(QStringLiteral("OpenEditorFile"));
  open->setShortcut(QKeySequence::Open);
  QAction* save =
      file->addAction(QStringLiteral("&Save SQL As..."), this, &TWorkbenchWindow::SaveEditor);
  save->setObjectName(QStringLiteral("SaveEditor"));
  save->setShortcut(QKeySequence::Save);
  file->addSeparator();
  QAction* quit = file->addAction(QStringLiteral("E&xit"), this, &QWidget::close);
  quit->setShortcut(QKeySequence::Quit);

  QMenu* create = menuBar()->addMenu(QStringLiteral("&New"));
  create->setObjectName(QStringLiteral("NewMenu"));
  connect(create, &QMenu::aboutToShow, this, &TWorkbenchWindow::UpdateActions);
  for (const TNewEntry& entry : NewEntries()) {
    if (entry.SeparatorBefore) create->addSeparator();
    const QString word = QString::fromUtf8(entry.Word);
    QAction* a = create->addAction(QString::fromUtf8(entry.Caption) + QStringLiteral("..."), this,
                                   [this, word] { NewObject(word); });
    a->setObjectName(QStringLiteral("New.") + word);
    a->setIcon(KindIcon(QString::fromUtf8(entry.KindKey)));
    FNewActions << a;
  }

  QMenu* object = menuBar()->addMenu(QStringLiteral("O&bject"));
  object->setObjectName(QStringLiteral("ObjectMenu"));
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
  QAction* refreshSelected = object->addAction(QStringLiteral("Refresh &Selected"), this,
                                               &TWorkbenchWindow::RefreshSelected);
  refreshSelected->setObjectName(QStringLiteral("RefreshSelected"));
  refreshSelected->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F5));

  QMenu* sql = menuBar()->addMenu(QStringLiteral("&SQL"));
  QAction* runStatement =
      sql->addAction(QStringLiteral("Run &Statement"), this, &TWorkbenchWindow::RunEditorStatement);
  runStatement->setObjectName(QStringLiteral("RunStatement"));
  runStatement->setShortcuts(
      {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)});
  QAction* run =
      sql->addAction(QStringLiteral("&Run Script"), this, &TWorkbenchWindow::RunEditorScript);
  run->setObjectName(QStringLiteral("RunScript"));
  run->setShortcut(Qt::Key_F9);

  QMenu* view = menuBar()->addMenu(QStringLiteral("V&iew"));
  view->setObjectName(QStringLiteral("ViewMenu"));
  view->addAction(FBrowserDock->toggleViewAction());
  QAction* showEditors = view->addAction(QStringLiteral("SQL &Editor"), this, [this] {
    if (FEditors->count() == 0)
      OpenEditor(QString());
    else
      FEditors->setVisible(!FEditors->isVisible());
  });
  showEditors->setObjectName(QStringLiteral("ShowEditors"));
  view->addAction(FLogDock->toggleViewAction());
  view->addAction(FResultDock->toggleViewAction());

  QMenu* window = menuBar()->addMenu(QStringLiteral("&Window"));
  window->addAction(QStringLiteral("&Tile"), this, &TWorkbenchWindow::TileChildren)
      ->setObjectName(QStringLiteral("Tile"));
  window->addAction(QStringLiteral("Casca&de"), this, &TWorkbenchWindow::CascadeChildren)
      ->setObjectName(QStringLiteral("Cascade"));
  QAction* closeChild =
      window->addAction(QStringLiteral("C&lose"), FMdi, &QMdiArea::closeActiveSubWindow);
  closeChild->setObjectName(QStringLiteral("CloseChild"));
  closeChild->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4));
  closeChild->setShortcutContext(Qt::WindowShortcut);
  window->addAction(QStringLiteral("Close &All"), FMdi, &QMdiArea::closeAllSubWindows);
}

bool TWorkbenchWindow::KindAvailable(const TObjectKind& kind) {
  return *kind.AlterWord && FHost->Module().Answers(QString::fromUtf8(kind.AlterWord));
}

void TWorkbenchWindow::ModuleChanged() {
  FBrowser->UpdateKindStates();
  UpdateActions();
}

void TWorkbenchWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  ModuleChanged();
}

void TWorkbenchWindow::UpdateActions() {
  const TObjectKind* kind = FBrowser->CurrentKind();
  const bool object = FBrowser->CurrentNodeType() == TObjectBrowser::ntObject;
  FAlterAction->setEnabled(object && kind && KindAvailable(*kind));
  FTestLinkAction->setEnabled(object && kind && qstrcmp(kind->Key, "DBLinks") == 0);
  const TModule& module = FHost->Module();
  for (QAction* a : FNewActions)
    a->setEnabled(module.Answers(a->objectName().mid(int(qstrlen("New.")))));
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
  if (result == -1) {
    ShowStatus(QStringLiteral("The module has no dialog for \"%1\" yet.").arg(word));
    ModuleChanged();
  }
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
  menu.addAction(QStringLiteral("Refresh"), this, &TWorkbenchWindow::RefreshSelected);
  menu.addAction(QStringLiteral("Refresh All"), this, &TWorkbenchWindow::RefreshBrowser);
  menu.exec(FBrowser->viewport()->mapToGlobal(pos));
}

void TWorkbenchWindow::RefreshBrowser() {
  FBrowser->Refresh();
  FScriptLog->Refresh();
}

void TWorkbenchWindow::RefreshSelected() {
  FBrowser->RefreshCurrent();
  UpdateActions();
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
  sub->move(NextChildPos(sub->size()));
  // Ctrl+F4 belongs to the Window menu: the same key on every frame's system menu made it
  // ambiguous, and an ambiguous shortcut does nothing.
  const QKeySequence closeKey(Qt::CTRL | Qt::Key_F4);
  if (QMenu* system = sub->systemMenu())
    for (QAction* a : system->actions()) {
      QList<QKeySequence> keys = a->shortcuts();
      if (keys.removeAll(closeKey) > 0) a->setShortcuts(keys);
    }
  sub->setAttribute(Qt::WA_DeleteOnClose);
  // A form that closes itself (after a successful OK) takes its frame with it. Queued: the
  // frame may itself be on its way out when the form goes.
  connect(form, &QObject::destroyed, sub, &QWidget::close, Qt::QueuedConnection);
  sub->show();
  FMdi->setActiveSubWindow(sub);
}

namespace {

// The children Tile and Cascade arrange (a minimized one keeps its place), each restored to its
// normal state first.
QList<QMdiSubWindow*> ArrangedChildren(QMdiArea* mdi) {
  QList<QMdiSubWindow*> children;
  for (QMdiSubWindow* w : mdi->subWindowList(QMdiArea::CreationOrder)) {
    if (!w->isVisible() || w->isMinimized()) continue;
    if (w->isMaximized()) w->showNormal();
    children << w;
  }
  return children;
}

QSize MinimumOf(const QMdiSubWindow* w) {
  return w->minimumSizeHint().expandedTo(w->minimumSize());
}

}  // namespace

void TWorkbenchWindow::TileChildren() {
  const QList<QMdiSubWindow*> children = ArrangedChildren(FMdi);
  if (children.isEmpty()) return;
  const int n = int(children.size());
  const int cols = int(std::ceil(std::sqrt(double(n))));
  const int rows = (n + cols - 1) / cols;
  const QSize area = FMdi->viewport()->size();
  const QSize cell(area.width() / cols, area.height() / rows);
  // Each column as wide, and each row as tall, as its largest minimum asks when the even share
  // of the area is not enough; the area scrolls to what then lies past its edge.
  QList<int> widths(cols, cell.width()), heights(rows, cell.height());
  for (int i = 0; i < n; ++i) {
    const QSize minimum = MinimumOf(children[i]);
    widths[i % cols] = std::max(widths[i % cols], minimum.width());
    heights[i / cols] = std::max(heights[i / cols], minimum.height());
  }
  for (int i = 0; i < n; ++i) {
    int x = 0, y = 0;
    for (int c = 0; c < i % cols; ++c) x += widths[c];
    for (int r = 0; r < i / cols; ++r) y += heights[r];
    // The last row's windows share the width the full rows have.
    int width = widths[i % cols];
    if (i / cols == rows - 1 && n % cols != 0 && i == n - 1) {
      int right = 0;
      for (int c = 0; c < cols; ++c) right += widths[c];
      width = std::max(width, right - x);
    }
    children[i]->setGeometry(x, y, width, heights[i / cols]);
  }
}

void TWorkbenchWindow::CascadeChildren() {
  const QList<QMdiSubWindow*> children = ArrangedChildren(FMdi);
  if (children.isEmpty()) return;
  const int step = style()->pixelMetric(QStyle::PM_TitleBarHeight) + 4;
  const QSize area = FMdi->viewport()->size();
  // The steps stop at a third of the area and start again, so that every title bar stays in
  // sight; each window keeps its size as far as the area allows, never below its minimum.
  const int perRound = std::max(1, std::min(area.width(), area.height()) / 3 / step + 1);
  const int used = std::min(int(children.size()), perRound) - 1;
  const QSize room = area - QSize(used * step, used * step);
  for (int i = 0; i < int(children.size()); ++i) {
    QMdiSubWindow* w = children[i];
    const QSize size = w->size().boundedTo(room).expandedTo(MinimumOf(w));
    const int at = (i % perRound) * step;
    w->setGeometry(at, at, size.width(), size.height());
    w->raise();
  }
  FCascade = int(children.size()) % perRound;
  if (QMdiSubWindow* last = children.last()) FMdi->setActiveSubWindow(last);
}

QPoint TWorkbenchWindow::NextChildPos(const QSize& size) {
  bool others = false;
  for (QMdiSubWindow* w : FMdi->subWindowList())
    if (w->isVisible()) others = true;
  if (!others) FCascade = 0;
  const int step = style()->pixelMetric(QStyle::PM_TitleBarHeight) + 4;
  const QSize area = FMdi->viewport()->size();
  QPoint at(FCascade * step, FCascade * step);
  // The area scrolls to a window that reaches past it; the steps stop at a third of the area
  // so that every title bar stays in sight.
  (void)size;
  if (FCascade > 0 && (at.x() > area.width() / 3 || at.y() > area.height() / 3)) {
    FCascade = 0;
    at = QPoint(0, 0);
  }
  ++FCascade;
  return at;
}

kel::TKelEditor* TWorkbenchWindow::OpenEditor(const QString& text) {
  auto* editor = new kel::TKelEditor(FEditors);
  editor->setObjectName(QStringLiteral("SQLEditor%1").arg(++FEditorCount));
  editor->PlSqlEditor();
  editor->SetText(text);
  // Text a dialog sends here is not saved anywhere yet; an empty editor holds nothing to lose.
  editor->setModified(!text.trimmed().isEmpty());
  FEditors->setCurrentIndex(FEditors->addTab(editor, QStringLiteral("SQL %1").arg(FEditorCount)));
  FEditors->show();
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
  FEditors->show();
  FEditors->setCurrentIndex(index);
  return FHost->esMsgDBox(QStringLiteral("Workbench.DiscardEditor"), {FEditors->tabText(index)},
                          kel::TMsgDlgType::Confirmation, false) == kel::mrYes;
}

bool TWorkbenchWindow::CloseEditorTab(int index) {
  QWidget* page = FEditors->widget(index);
  if (!page || !MayDiscardEditor(index)) return false;
  FEditors->removeTab(index);
  page->deleteLater();
  // Without an editor the dialogs get the whole main area again.
  if (FEditors->count() == 0) FEditors->hide();
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

void TWorkbenchWindow::RunEditorStatement() {
  kel::TKelEditor* editor = CurrentEditor();
  if (!editor) {
    ShowStatus(QStringLiteral("There is no statement to run."));
    return;
  }
  int line = 0, column = 0;
  editor->getCursorPosition(&line, &column);
  const QString statement = StatementAt(editor->Text(), line, column);
  if (statement.isEmpty()) {
    ShowStatus(QStringLiteral("There is no statement at the cursor."));
    return;
  }
  if (IsQuery(statement))
    RunQuery(statement);
  else
    FHost->esScriptExecute(this, FConnection.get(), statement);
}

bool TWorkbenchWindow::RunQuery(const QString& statement) {
  kel::TQueryResult result;
  try {
    result = FConnection->OpenQuery(QString(), statement, {});
  } catch (const std::exception& e) {
    FHost->ShowMessage(
        {ExecuteErrorText(statement, QString::fromStdString(e.what())), kel::TMsgDlgType::Error});
    return false;
  }
  const int rows = int(std::min<qsizetype>(result.Rows.size(), kMaxResultRows));
  FResultGrid->setUpdatesEnabled(false);
  FResultGrid->clear();
  FResultGrid->setColumnCount(int(result.Columns.size()));
  FResultGrid->setRowCount(rows);
  FResultGrid->setHorizontalHeaderLabels(result.Columns);
  for (int r = 0; r < rows; ++r) {
    const QStringList& values = result.Rows[r];
    for (int c = 0; c < values.size() && c < result.Columns.size(); ++c)
      FResultGrid->setItem(r, c, new QTableWidgetItem(values[c]));
  }
  // Columns as wide as their captions and the first rows' values, within reason.
  FResultGrid->resizeColumnsToContents();
  for (int c = 0; c < FResultGrid->columnCount(); ++c)
    if (FResultGrid->columnWidth(c) > 400) FResultGrid->setColumnWidth(c, 400);
  FResultGrid->setUpdatesEnabled(true);
  FResultDock->show();
  FResultDock->raise();
  ShowStatus(result.Rows.size() > kMaxResultRows
                 ? QStringLiteral("The first %1 of %2 rows.")
                       .arg(QString::number(rows), QString::number(result.Rows.size()))
                 : QStringLiteral("%1 row(s).").arg(rows));
  return true;
}

void TWorkbenchWindow::OpenEditorFile() {
  QString fileName;
  if (FOpenAnswerer) {
    if (!FOpenAnswerer(fileName)) return;
  } else {
    fileName = QFileDialog::getOpenFileName(this, QStringLiteral("Open SQL"), QString(),
                                            QStringLiteral("SQL files (*.sql);;All files (*)"));
    if (fileName.isEmpty()) return;
  }
  OpenSqlFile(fileName);
}

bool TWorkbenchWindow::OpenSqlFile(const QString& fileName) {
  QFile file(fileName);
  if (!file.open(QIODevice::ReadOnly)) {
    FHost->ShowMessage({QStringLiteral("Cannot open \"%1\": %2").arg(fileName, file.errorString()),
                        kel::TMsgDlgType::Error});
    return false;
  }
  kel::TKelEditor* editor = OpenEditor(QString::fromUtf8(file.readAll()));
  editor->setModified(false);
  editor->setProperty(kFileProperty, fileName);
  const int index = FEditors->indexOf(editor);
  FEditors->setTabText(index, QFileInfo(fileName).fileName());
  FEditors->setTabToolTip(index, fileName);
  return true;
}

QString TWorkbenchWindow::EditorFile(int index) const {
  const QWidget* editor = FEditors->widget(index);
  return editor ? editor->property(kFileProperty).toString() : QString();
}

void TWorkbenchWindow::ClearScriptLog() {
  if (FScriptLog->Count() == 0) return;
  if (FHost->ShowMessage(
          {QStringLiteral("Remove the %1 statements from the script log?").arg(FScriptLog->Count()),
           kel::TMsgDlgType::Confirmation, kel::TMsgDlgButtons::YesNo}) != kel::mrYes)
    return;
  FScriptLog->Clear();
  ShowStatus(QStringLiteral("The script log is empty."));
}

void TWorkbenchWindow::ExportScriptLog() {
  QString fileName = QStringLiteral("script-log.sql");
  if (!FHost->SaveFileDialog(this, fileName)) return;
  if (QFileInfo::exists(fileName) &&
      FHost->esMsgDBox(QStringLiteral("OverWrite"), kel::TMsgDlgType::Confirmation,
                       kel::TMsgDlgButtons::YesNoCancel, false) != kel::mrYes)
    return;
  QString error;
  if (!WriteText(fileName, FScriptLog->ExportText(), &error)) {
    FHost->ShowMessage({error, kel::TMsgDlgType::Error});
    return;
  }
  ShowStatus(QStringLiteral("Exported the script log to %1.").arg(fileName));
}

void TWorkbenchWindow::Connect() {
  TConnectDialog dialog(FHost->SettingsDir(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  std::unique_ptr<host::TConnection> connection = dialog.TakeConnection();
  if (connection) SwitchConnection(std::move(connection), dialog.Label());
}

bool TWorkbenchWindow::SwitchConnection(std::unique_ptr<host::TConnection> connection,
                                        const QString& label) {
  if (!connection) return false;
  // The dialogs work on the old connection: each is asked to close (an edited one asks).
  FMdi->closeAllSubWindows();
  if (!FMdi->subWindowList().isEmpty()) return false;
  std::unique_ptr<host::TConnection> old = std::move(FConnection);
  FConnection = std::move(connection);
  FHost->SetConnection(FConnection.get());
  FBrowser->SetConnection(FConnection.get());
  FScriptLog->SetConnection(FConnection.get());
  FResultGrid->clear();
  FResultGrid->setRowCount(0);
  FResultGrid->setColumnCount(0);
  FOptions.ConnectionLabel = label;
  ShowConnectionLabel();
  ModuleChanged();
  old.reset();
  ShowStatus(QStringLiteral("Connected to %1.").arg(label));
  return true;
}

void TWorkbenchWindow::SaveEditor() {
  kel::TKelEditor* editor = CurrentEditor();
  if (!editor) return;
  QString fileName = editor->property(kFileProperty).toString();
  if (!FHost->SaveFileDialog(this, fileName)) return;
  if (QFileInfo::exists(fileName) &&
      FHost->esMsgDBox(QStringLiteral("OverWrite"), kel::TMsgDlgType::Confirmation,
                       kel::TMsgDlgButtons::YesNoCancel, false) != kel::mrYes)
    return;
  try {
    editor->SaveFile(fileName);
    editor->setModified(false);
    editor->setProperty(kFileProperty, fileName);
    FEditors->setTabText(FEditors->indexOf(editor), QFileInfo(fileName).fileName());
    FEditors->setTabToolTip(FEditors->indexOf(editor), fileName);
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
  const QByteArray saved = ini.value(QStringLiteral("Window/Geometry")).toByteArray();
  if (!saved.isEmpty()) restoreGeometry(saved);
  const QByteArray state = ini.value(QStringLiteral("Window/State")).toByteArray();
  if (!state.isEmpty()) restoreState(state);
  const QByteArray split = ini.value(QStringLiteral("Window/Splitter")).toByteArray();
  if (!split.isEmpty()) FMainSplitter->restoreState(split);
  FEditors->hide();
  // A layout saved on a larger screen, or with another scaling, must still fit this one.
  QScreen* screen = QGuiApplication::screenAt(geometry().center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (screen && !isMaximized() && !isFullScreen())
    setGeometry(ClampToScreen(geometry(), screen->availableGeometry()));
  // The editor tabs of the last session that came from files; a file gone since is skipped.
  // Editor texts themselves are never written to the settings (they may hold passwords).
  for (const QString& file : ini.value(QStringLiteral("Editors/Files")).toStringList())
    if (QFileInfo::exists(file)) OpenSqlFile(file);
}

void TWorkbenchWindow::SaveLayout() {
  QSettings ini(LayoutFile(), QSettings::IniFormat);
  ini.setValue(QStringLiteral("Window/Geometry"), saveGeometry());
  ini.setValue(QStringLiteral("Window/State"), saveState());
  // Split sizes are only meaningful with the editors shown.
  if (FEditors->isVisible())
    ini.setValue(QStringLiteral("Window/Splitter"), FMainSplitter->saveState());
  QStringList files;
  for (int i = 0; i < FEditors->count(); ++i)
    if (!EditorFile(i).isEmpty()) files << EditorFile(i);
  ini.setValue(QStringLiteral("Editors/Files"), files);
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
