#include "host/workbench/WorkbenchHost.h"

#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>
#include <vector>

#include "host/core/ModuleFile.h"
#include "host/core/RecordingHost.h"
#include "host/workbench/WorkbenchWindow.h"
#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"

namespace wb {

namespace {

const char* const kModuleName = "NewObjDlg.dll";

QMessageBox::Icon IconOf(kel::TMsgDlgType type) {
  switch (type) {
    case kel::TMsgDlgType::Warning:
      return QMessageBox::Warning;
    case kel::TMsgDlgType::Error:
      return QMessageBox::Critical;
    case kel::TMsgDlgType::Information:
      return QMessageBox::Information;
    case kel::TMsgDlgType::Confirmation:
      return QMessageBox::Question;
    case kel::TMsgDlgType::Custom:
      break;
  }
  return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(kel::TMsgDlgButtons buttons) {
  switch (buttons) {
    case kel::TMsgDlgButtons::Ok:
      return QMessageBox::Ok;
    case kel::TMsgDlgButtons::OkCancel:
      return QMessageBox::Ok | QMessageBox::Cancel;
    case kel::TMsgDlgButtons::YesNo:
      return QMessageBox::Yes | QMessageBox::No;
    case kel::TMsgDlgButtons::YesNoCancel:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
  }
  return QMessageBox::Ok;
}

int ModalResultOf(QMessageBox::StandardButton button) {
  switch (button) {
    case QMessageBox::Ok:
      return kel::mrOk;
    case QMessageBox::Yes:
      return kel::mrYes;
    case QMessageBox::No:
      return kel::mrNo;
    default:
      return kel::mrCancel;
  }
}

QString TitleOf(kel::TMsgDlgType type) {
  switch (type) {
    case kel::TMsgDlgType::Warning:
      return QStringLiteral("Warning");
    case kel::TMsgDlgType::Error:
      return QStringLiteral("Error");
    case kel::TMsgDlgType::Confirmation:
      return QStringLiteral("Confirm");
    default:
      return QStringLiteral("Information");
  }
}

}  // namespace

// ---------------------------------------------------------------------------------------------
bool TModule::Load(const QString& fileName, QString* error) {
  if (!host::CheckModuleFile(fileName, error)) return false;
  auto library = std::make_unique<QLibrary>(fileName);
  if (!library->load()) {
    if (error)
      *error = QStringLiteral("The module \"%1\" could not be loaded: %2")
                   .arg(fileName, library->errorString());
    return false;
  }
  auto open = reinterpret_cast<TOpenProc>(library->resolve("Open"));
  if (!open) {
    if (error)
      *error = QStringLiteral("The module \"%1\" has no entry point \"Open\".").arg(fileName);
    return false;
  }
  FLibrary = std::move(library);
  FOpen = open;
  FFileName = fileName;
  FInProcess = false;
  FRefused.clear();
  return true;
}

void TModule::Use(TOpenProc open, const QString& fileName) {
  FLibrary.reset();
  FOpen = open;
  FFileName = fileName;
  FInProcess = true;
  FRefused.clear();
}

bool TModule::Answers(const QString& word) const {
  if (!FOpen) return false;
  const QString upper = word.toUpper();
  if (FRefused.contains(upper)) return false;
  if (!FInProcess) return true;
  for (const kel::TDispatchRow& row : kel::DispatchTable())
    if (upper == QLatin1String(row.Word)) return row.Routine != nullptr;
  return false;
}

QString DefaultModulePath() {
  const QString dir = QCoreApplication::applicationDirPath();
  const QString file = QStringLiteral("libNewObjDlg.so");
  // Installed beside the executable; in the build tree the module sits at the top of it, two
  // levels above host/workbench (one above tests/ and bench/).
  const QStringList candidates{dir + u'/' + file, dir + QStringLiteral("/../../") + file,
                               dir + QStringLiteral("/../") + file};
  for (const QString& c : candidates)
    if (QFileInfo::exists(c)) return QDir::cleanPath(c);
  return QDir::cleanPath(candidates[1]);
}

QString ExecuteErrorText(const QString& statement, const QString& serverMessage) {
  QString text = QStringLiteral("The script was stopped at a failing statement.");
  if (!statement.trimmed().isEmpty())
    text += QStringLiteral("\n\nStatement:\n") + statement.trimmed();
  text += QStringLiteral("\n\nServer message:\n") +
          (serverMessage.trimmed().isEmpty() ? QStringLiteral("(none)") : serverMessage.trimmed());
  return text;
}

// ---------------------------------------------------------------------------------------------
TWorkbenchHost::TWorkbenchHost(TWorkbenchWindow* window, host::TConnection* connection,
                               const host::TCatalog& repository)
    : FWindow(window), FConnection(connection), FRepository(repository) {}

TWorkbenchHost::~TWorkbenchHost() = default;

QWidget* TWorkbenchHost::MainForm() {
  return FWindow;
}

int TWorkbenchHost::OpenObject(const QString& word, QWidget* parent, kel::TXLink* link) {
  int result = -1;
  if (!FModule.Loaded()) return result;
  const QByteArray w = word.toUtf8();
  FModule.Open()(this, &result, parent, link, w.constData());
  if (result == -1) FModule.SetRefused(word);
  return result;
}

int TWorkbenchHost::ShowMessage(const TMessageRequest& request) {
  if (FMessageAnswerer) return FMessageAnswerer(request);
  QMessageBox box(
      IconOf(request.Type), TitleOf(request.Type), request.Text, ButtonsOf(request.Buttons),
      QApplication::activeModalWidget() ? QApplication::activeModalWidget() : MainForm());
  box.exec();
  return ModalResultOf(box.standardButton(box.clickedButton()));
}

void TWorkbenchHost::ShowMDIChild(QWidget* form) {
  if (FWindow)
    FWindow->AddMdiChild(form);
  else
    form->show();
}

int TWorkbenchHost::esMsgDBox(const QString& key, kel::TMsgDlgType type,
                              kel::TMsgDlgButtons buttons, bool) {
  return ShowMessage({FRepository.Message(key), type, buttons});
}

int TWorkbenchHost::esMsgDBox(const QString& key, const QStringList& args, kel::TMsgDlgType type,
                              bool) {
  // A question gets the buttons to answer it; anything else is acknowledged with OK.
  const kel::TMsgDlgButtons buttons =
      type == kel::TMsgDlgType::Confirmation ? kel::TMsgDlgButtons::YesNo : kel::TMsgDlgButtons::Ok;
  return ShowMessage({host::FormatMessage(FRepository.Message(key), args), type, buttons});
}

int TWorkbenchHost::esMsgBox(const QString& text, kel::TMsgDlgType type, bool) {
  return ShowMessage({text, type, kel::TMsgDlgButtons::Ok});
}

void TWorkbenchHost::esStatus(const QString& text) {
  if (FWindow) FWindow->ShowStatus(text);
}

int TWorkbenchHost::esScriptExecute(QWidget*, kel::TEsDBInfo*, const QString& script) {
  QString statement, error;
  int result = 1;
  try {
    result = FConnection->ExecuteScript(script, &statement, &error);
  } catch (const std::exception& e) {
    error = QString::fromStdString(e.what());
  }
  if (result != 0) ShowMessage({ExecuteErrorText(statement, error), kel::TMsgDlgType::Error});
  if (FWindow) FWindow->ScriptExecuted(result);
  return result;
}

void TWorkbenchHost::esSendToEditor(kel::TEsDBInfo*, const QString& text, const QString&,
                                    const QString&) {
  if (FWindow) FWindow->OpenEditor(text);
}

void TWorkbenchHost::OpenViewSQLFrm(QWidget* form, const QString& text) {
  // The link's owner owns the preview: one preview window per dialog, reused.
  kel::TXLink link(form ? static_cast<QObject*>(form) : FWindow);
  link.SetVerb(QStringLiteral("DataOpen"));
  link.AddParams(QStringLiteral("SqlTxt"), text);
  OpenObject(QStringLiteral("VIEWSQLFRN"), MainForm(), &link);
}

QString TWorkbenchHost::esGrantSysPrivilege(const QString& grantee, const QString& privilege,
                                            bool withAdmin, int) {
  return host::GrantSysPrivilegeText(grantee, privilege, withAdmin);
}

QString TWorkbenchHost::esRevokeSysPrivilege(const QString& grantee, const QString& privilege,
                                             int) {
  return host::RevokeSysPrivilegeText(grantee, privilege);
}

void TWorkbenchHost::esDBLinkTest(kel::TEsDBInfo*, const QString& linkName) {
  const QString name = linkName.trimmed();
  try {
    if (FWindow && FWindow->Journaled()) {
      // The embedded database reaches no remote database: say what it knows of the link.
      kel::TKelQuery q(FConnection);
      q.LoadSQL(QStringLiteral("Workbench.DBLinkInfo"));
      q.ParamByName(QStringLiteral("P_LINK")) = name.toUpper();
      q.Open();
      const QString text = q.Eof()
                               ? QStringLiteral(
                                     "Database link %1 was not tried: the demo database cannot "
                                     "reach remote databases, and it journals scripts instead of "
                                     "running them, so a link created here does not exist in it.")
                                     .arg(name)
                               : QStringLiteral(
                                     "Database link %1 connects as %2 to \"%3\". The demo database "
                                     "cannot reach remote databases, so the link was not tried.")
                                     .arg(name, q.FieldByName(QStringLiteral("USERNAME")),
                                          q.FieldByName(QStringLiteral("HOST")));
      ShowMessage({text, kel::TMsgDlgType::Information});
      return;
    }
    FConnection->OpenQuery(QStringLiteral("Workbench.DBLinkTest"),
                           QStringLiteral("SELECT * FROM DUAL@") + name, {});
    ShowMessage(
        {QStringLiteral("Database link %1 works.").arg(name), kel::TMsgDlgType::Information});
  } catch (const std::exception& e) {
    ShowMessage({QStringLiteral("Database link %1 failed:\n\n%2")
                     .arg(name, QString::fromStdString(e.what())),
                 kel::TMsgDlgType::Error});
  }
}

int TWorkbenchHost::OpenDLL(const QString& module, QWidget* parent, kel::TXLink* link,
                            const QString& word) {
  const QString base = QFileInfo(module).fileName();
  TModule* target = nullptr;
  if (module.isEmpty() || base.compare(QLatin1String(kModuleName), Qt::CaseInsensitive) == 0 ||
      base == QFileInfo(FModule.FileName()).fileName()) {
    target = &FModule;
  } else {
    for (const auto& m : FOtherModules)
      if (m->FileName() == module) target = m.get();
    if (!target) {
      auto m = std::make_unique<TModule>();
      QString error;
      if (!m->Load(module, &error)) {
        ShowMessage({error, kel::TMsgDlgType::Error});
        return 0;
      }
      target = m.get();
      FOtherModules.push_back(std::move(m));
    }
  }
  int result = 0;
  if (target->Loaded()) {
    const QByteArray w = word.toUtf8();
    target->Open()(this, &result, parent, link, w.constData());
  }
  return result;
}

void TWorkbenchHost::esOraTblspaceList(kel::TEsDBInfo*, QStringList& list) {
  list = FConnection->Tablespaces();
}

void TWorkbenchHost::esOraTableList(kel::TEsDBInfo*, const QString& schema, QStringList& list) {
  list = FConnection->Tables(schema);
}

int TWorkbenchHost::esGetBlockLen(kel::TEsDBInfo*, const QString&) {
  return FConnection->BlockSize();
}

void TWorkbenchHost::esResetOraUserList(kel::TEsDBInfo*) {
  FConnection->ResetUserList();
  if (FWindow) FWindow->UsersChanged();
}

QString TWorkbenchHost::SettingsDir() {
  QString dir = FSettingsDir;
  if (dir.isEmpty()) dir = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
  QDir().mkpath(dir);
  return dir;
}

bool TWorkbenchHost::SaveFileDialog(QWidget* parent, QString& fileName) {
  if (FSaveAnswerer) return FSaveAnswerer(fileName);
  QFileDialog dialog(parent ? parent : MainForm(), QStringLiteral("Save SQL"), fileName,
                     QStringLiteral("SQL files (*.sql)"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("sql"));
  // The caller asks before it overwrites a file.
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
  fileName = dialog.selectedFiles().constFirst();
  return true;
}

bool TWorkbenchHost::InputQuery(const QString& title, const QString& prompt, QString& value) {
  if (FInputAnswerer) return FInputAnswerer(title, prompt, value);
  bool ok = false;
  const QString text = QInputDialog::getText(
      QApplication::activeModalWidget() ? QApplication::activeModalWidget() : MainForm(), title,
      prompt, QLineEdit::Normal, value, &ok);
  if (ok) value = text;
  return ok;
}

void TWorkbenchHost::SetClipboardText(const QString& text) {
  QGuiApplication::clipboard()->setText(text);
}

void TWorkbenchHost::SaveTextFile(const QString& fileName, const QString& text) {
  QFile f(fileName);
  if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw kel::EKelError(QStringLiteral("Cannot write %1: %2").arg(fileName, f.errorString()));
  if (f.write(text.toUtf8()) < 0)
    throw kel::EKelError(QStringLiteral("Cannot write %1: %2").arg(fileName, f.errorString()));
}

}  // namespace wb
