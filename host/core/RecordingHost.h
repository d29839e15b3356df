// A host that plays a script of answers and records every effect of the module as an event:
// the host of the headless runner and of the UI tests.
#pragma once

#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QPointer>
#include <QStringList>

#include "host/core/Catalog.h"
#include "host/core/Connection.h"

namespace host {

class TRecordingHost : public kel::THost {
 public:
  // `script` holds the scenario's "answers", "inputs", "saveAs" and "execute" sections.
  TRecordingHost(TConnection* connection, const QJsonObject& script,
                 const TCatalog& repository = TCatalog::Builtin());
  ~TRecordingHost() override;

  // The module's entry point, for previews and OpenDLL.
  void SetModule(TOpenProc open, const QString& moduleFile) {
    FOpen = open;
    FModuleFile = moduleFile;
  }
  void SetSettingsDir(const QString& dir) { FSettingsDir = dir; }

  const QJsonArray& Events() const { return FEvents; }
  void AddEvent(const QJsonObject& event) { FEvents.append(event); }
  void ClearEvents() { FEvents = QJsonArray(); }
  // Adds a "link" event with the parameters a dialog opened under `object` added to its link
  // (AddParams), when there are any; `before` is what the link held when it was opened.
  void ReportLinkParams(const QString& object, const QMap<QString, QString>& before,
                        const kel::TXLink& link);
  // Windows handed to ShowMDIChild, oldest first (closed ones are gone).
  QList<QWidget*> ChildWindows() const;

  // kel::THost
  kel::TEsDBInfo* CurrentDBInfo() override;
  QWidget* MainForm() override { return nullptr; }
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
  void PreviewTextSet(const QString& text) override;
  QString esGrantSysPrivilege(const QString& grantee, const QString& privilege, bool withAdmin,
                              int kind) override;
  QString esRevokeSysPrivilege(const QString& grantee, const QString& privilege, int kind) override;
  void esDBLinkTest(kel::TEsDBInfo* db, const QString& linkName) override;
  int OpenDLL(const QString& module, QWidget* parent, kel::TXLink* link,
              const QString& word) override;
  void esDataTypeList(QStringList& list) override { list = FConnection->DataTypes(); }
  void esOraTblspaceList(kel::TEsDBInfo*, QStringList& list) override {
    list = FConnection->Tablespaces();
    ReportReadProblems();
  }
  void esOraTableList(kel::TEsDBInfo*, const QString& schema, QStringList& list) override {
    list = FConnection->Tables(schema);
    ReportReadProblems();
  }
  int esGetBlockLen(kel::TEsDBInfo*, const QString&) override {
    const int size = FConnection->BlockSize();
    ReportReadProblems();
    return size;
  }
  void esResetOraUserList(kel::TEsDBInfo*) override { FConnection->ResetUserList(); }
  QString SettingsDir() override { return FSettingsDir; }
  bool SaveFileDialog(QWidget* parent, QString& fileName) override;
  bool InputQuery(const QString& title, const QString& prompt, QString& value) override;
  void SetClipboardText(const QString& text) override;
  void SaveTextFile(const QString& fileName, const QString& text) override;

 private:
  class TRecordingDBInfo;
  // What the connection could not read for a list since the last report, as status events.
  void ReportReadProblems() {
    const QStringList problems = FConnection->ReadProblems();
    for (qsizetype i = FReportedProblems; i < problems.size(); ++i) esStatus(problems[i]);
    FReportedProblems = problems.size();
  }
  qsizetype FReportedProblems = 0;
  int Answer(const QString& keyOrText) const;

  TConnection* FConnection;
  const TCatalog& FRepository;
  TRecordingDBInfo* FDBInfo;
  QJsonObject FAnswers;
  QHash<QString, QStringList> FInputs;
  QStringList FSaveAs;
  QList<int> FExecute;
  QJsonArray FEvents;
  QList<QPointer<QWidget>> FChildren;
  TOpenProc FOpen = nullptr;
  QString FModuleFile;
  QString FSettingsDir;
};

// GRANT / REVOKE text of a system privilege or role, as hosts generate it.
QString GrantSysPrivilegeText(const QString& grantee, const QString& privilege, bool withAdmin);
QString RevokeSysPrivilegeText(const QString& grantee, const QString& privilege);

}  // namespace host
