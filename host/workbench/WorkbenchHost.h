// The desktop host: every service the module asks of its host, answered with real windows,
// message boxes and the workbench's connection.
#pragma once

#include <QLibrary>
#include <QSet>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "host/core/Catalog.h"
#include "host/core/Connection.h"

class QWidget;

namespace wb {

class TWorkbenchWindow;

// A message box as the host is asked to show it.
struct TMessageRequest {
  QString Text;
  kel::TMsgDlgType Type = kel::TMsgDlgType::Information;
  kel::TMsgDlgButtons Buttons = kel::TMsgDlgButtons::Ok;
};

// What the user answers to a message box: one of kel::mrOk, mrCancel, mrYes, mrNo.
using TMessageAnswerer = std::function<int(const TMessageRequest&)>;
// What the user chooses in the save dialog: false when cancelled.
using TSaveFileAnswerer = std::function<bool(QString& fileName)>;
// What the user types in an input box: false when cancelled.
using TInputAnswerer =
    std::function<bool(const QString& title, const QString& prompt, QString& value)>;

// The module, loaded by file name.
class TModule {
 public:
  // Loads `fileName` and resolves `Open`; false with a message in `error` when it cannot.
  bool Load(const QString& fileName, QString* error);
  // Uses an entry point that is already in the process (tests and benchmarks).
  void Use(TOpenProc open, const QString& fileName);
  bool Loaded() const { return FOpen != nullptr; }
  TOpenProc Open() const { return FOpen; }
  QString FileName() const { return FFileName; }

  // Whether the module has a dialog for `word`. A module in this process is asked through its
  // dispatch table; a loaded one exports only `Open`, so a word counts as answered until a
  // request for it came back untouched.
  bool Answers(const QString& word) const;
  void SetRefused(const QString& word) { FRefused.insert(word.toUpper()); }

 private:
  std::unique_ptr<QLibrary> FLibrary;
  TOpenProc FOpen = nullptr;
  QString FFileName;
  bool FInProcess = false;
  QSet<QString> FRefused;
};

// Where the module is looked for when no --module is given: next to the executable, then in
// the build tree above it.
QString DefaultModulePath();

class TWorkbenchHost : public kel::THost {
 public:
  TWorkbenchHost(TWorkbenchWindow* window, host::TConnection* connection,
                 const host::TCatalog& repository = host::TCatalog::Builtin());
  ~TWorkbenchHost() override;

  TModule& Module() { return FModule; }
  host::TConnection* Connection() const { return FConnection; }
  const host::TCatalog& Repository() const { return FRepository; }

  // Test hooks: answer message boxes, save dialogs and input boxes without showing them.
  void SetMessageAnswerer(TMessageAnswerer answerer) { FMessageAnswerer = std::move(answerer); }
  void SetSaveFileAnswerer(TSaveFileAnswerer answerer) { FSaveAnswerer = std::move(answerer); }
  void SetInputAnswerer(TInputAnswerer answerer) { FInputAnswerer = std::move(answerer); }
  void SetSettingsDir(const QString& dir) { FSettingsDir = dir; }
  // The connection the services use from now on (the window switched connection).
  void SetConnection(host::TConnection* connection) { FConnection = connection; }

  // Calls the module's `Open`; returns Result, -1 when the module is not loaded or left it
  // untouched (a word it has no dialog for).
  int OpenObject(const QString& word, QWidget* parent, kel::TXLink* link);
  // Shows a message box (or asks the answerer); returns the modal result of the button.
  int ShowMessage(const TMessageRequest& request);

  // kel::THost
  kel::TEsDBInfo* CurrentDBInfo() override { return FConnection; }
  QWidget* MainForm() override;
  void ShowMDIChild(QWidget* form) override;
  int esMsgDBox(const QString& key, kel::TMsgDlgType type, kel::TMsgDlgButtons buttons,
                bool flag) override;
  int esMsgDBox(const QString& key, const QStringList& args, kel::TMsgDlgType type,
                bool flag) override;
  QString esGetMSG(const QString& key) override { return FRepository.Message(key); }
  int esMsgBox(const QString& text, kel::TMsgDlgType type, bool flag) override;
  void esStatus(const QString& text) override;
  int esScriptExecute(QWidget* form, kel::TEsDBInfo* db, const QString& script) override;
  void esSendToEditor(kel::TEsDBInfo* db, const QString& text, const QString& target,
                      const QString& extra) override;
  void OpenViewSQLFrm(QWidget* form, const QString& text) override;
  QString esGrantSysPrivilege(const QString& grantee, const QString& privilege, bool withAdmin,
                              int kind) override;
  QString esRevokeSysPrivilege(const QString& grantee, const QString& privilege, int kind) override;
  void esDBLinkTest(kel::TEsDBInfo* db, const QString& linkName) override;
  int OpenDLL(const QString& module, QWidget* parent, kel::TXLink* link,
              const QString& word) override;
  void esDataTypeList(QStringList& list) override { list = FConnection->DataTypes(); }
  void esOraTblspaceList(kel::TEsDBInfo* db, QStringList& list) override;
  void esOraTableList(kel::TEsDBInfo* db, const QString& schema, QStringList& list) override;
  int esGetBlockLen(kel::TEsDBInfo* db, const QString& tablespace) override;
  void esResetOraUserList(kel::TEsDBInfo* db) override;
  QString SettingsDir() override;
  bool SaveFileDialog(QWidget* parent, QString& fileName) override;
  bool InputQuery(const QString& title, const QString& prompt, QString& value) override;
  void SetClipboardText(const QString& text) override;
  void SaveTextFile(const QString& fileName, const QString& text) override;

 private:
  TWorkbenchWindow* FWindow;
  host::TConnection* FConnection;
  const host::TCatalog& FRepository;
  TModule FModule;
  // Modules other than this one that OpenDLL was asked for, by file name.
  std::vector<std::unique_ptr<TModule>> FOtherModules;
  TMessageAnswerer FMessageAnswerer;
  TSaveFileAnswerer FSaveAnswerer;
  TInputAnswerer FInputAnswerer;
  QString FSettingsDir;
};

// The text of the error box after a failed script: the statement and the server's message.
QString ExecuteErrorText(const QString& statement, const QString& serverMessage);

}  // namespace wb
