// The contract between the module and its host application.
//
// The module owns no connection, no catalog SQL, no message texts and no settings store: all of
// these are reached through the abstract classes below, which every host implements. Everything
// here is header-only and uses only virtual calls across the module boundary, so the module and
// the host may be separate shared objects.
#pragma once

#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <stdexcept>

class QWidget;

namespace kel {

// Modal results, as the host's dialogs and message boxes return them.
enum TModalResult : int {
  mrNone = 0,
  mrOk = 1,
  mrCancel = 2,
  mrAbort = 3,
  mrRetry = 4,
  mrIgnore = 5,
  mrYes = 6,
  mrNo = 7,
};

enum class TMsgDlgType { Warning, Error, Information, Confirmation, Custom };
enum class TMsgDlgButtons { Ok, OkCancel, YesNo, YesNoCancel };

// An error raised by a host service (a catalog key that does not exist, a failing query).
class EKelError : public std::runtime_error {
 public:
  explicit EKelError(const QString& message) : std::runtime_error(message.toStdString()) {}
  QString Message() const { return QString::fromStdString(what()); }
};

// The rows of a catalog query: column names in select order and every value as text.
struct TQueryResult {
  QStringList Columns;
  QList<QStringList> Rows;
};

// A bind parameter as the query component passes it on: name without the colon, value as text.
using TBindList = QList<QPair<QString, QVariant>>;

// The host's description of the current connection.
class TEsDBInfo {
 public:
  virtual ~TEsDBInfo() = default;
  virtual QString UserName() const = 0;  // the connected user (default schema)
  virtual QStringList UserList() const = 0;
  virtual QString ConnectionName() const = 0;
  virtual QString ServerVersion()
      const = 0;                         // e.g. "Oracle9i Enterprise Edition Release 9.2.0.1.0"
  virtual bool PublicLinks() const = 0;  // may the user create public database links
  virtual bool OCIMode() const = 0;
  // The service names (connect strings) the Oracle client knows, for database link targets.
  virtual QStringList Services() { return {}; }
  // Catalog SQL stored under `key`; throws EKelError naming the key when there is none.
  virtual QString GetSQL(const QString& key) const = 0;
  // Runs catalog SQL on the connection's session. `key` names the text for hosts that answer
  // from fixtures or log what ran; `binds` holds exactly the parameters the text declares.
  virtual TQueryResult OpenQuery(const QString& key, const QString& sql,
                                 const TBindList& binds) = 0;
};

// The host's parameter object. Values are text; Boolean flags are "True"/"False".
// Its owner is the component that owns the link (the QObject parent).
class TXLink : public QObject {
 public:
  explicit TXLink(QObject* owner = nullptr) : QObject(owner) {}
  QObject* Owner() const { return parent(); }
  QString Verb() const { return FVerb; }
  void SetVerb(const QString& verb) { FVerb = verb; }
  QString ParamByString(const QString& name) const { return FParams.value(name); }
  int ParamByInteger(const QString& name) const { return FParams.value(name).trimmed().toInt(); }
  void AddParams(const QString& name, const QString& value) { FParams.insert(name, value); }
  const QMap<QString, QString>& Params() const { return FParams; }

 private:
  QString FVerb;
  QMap<QString, QString> FParams;
};

// Host services. One object per host; the module keeps it in its application slot.
class THost {
 public:
  virtual ~THost() = default;

  // Connection and windows.
  virtual TEsDBInfo* CurrentDBInfo() = 0;
  virtual QWidget* MainForm() = 0;               // owner of the module's forms, may be null
  virtual void ShowMDIChild(QWidget* form) = 0;  // places a child-window dialog

  // Messages: texts live in the host's message repository.
  virtual int esMsgDBox(const QString& key, TMsgDlgType type, TMsgDlgButtons buttons,
                        bool flag) = 0;
  virtual int esMsgDBox(const QString& key, const QStringList& args, TMsgDlgType type,
                        bool flag) = 0;
  virtual QString esGetMSG(const QString& key) = 0;
  virtual int esMsgBox(const QString& text, TMsgDlgType type, bool flag) = 0;
  virtual void esStatus(const QString& text) = 0;

  // Execution, editor and preview.
  virtual int esScriptExecute(QWidget* form, TEsDBInfo* db, const QString& script) = 0;
  virtual void esSendToEditor(TEsDBInfo* db, const QString& text, const QString& target,
                              const QString& extra) = 0;
  virtual void OpenViewSQLFrm(QWidget* form, const QString& text) = 0;
  // Told every time a preview window's text is set (by the host's request or by a dialog that
  // refreshes its open preview), so a host can follow what the user is shown.
  virtual void PreviewTextSet(const QString& text) { (void)text; }
  virtual QString esGrantSysPrivilege(const QString& grantee, const QString& privilege,
                                      bool withAdmin, int kind) = 0;
  virtual QString esRevokeSysPrivilege(const QString& grantee, const QString& privilege,
                                       int kind) = 0;
  virtual void esDBLinkTest(TEsDBInfo* db, const QString& linkName) = 0;
  virtual int OpenDLL(const QString& module, QWidget* parent, TXLink* link,
                      const QString& word) = 0;

  // Lists.
  virtual void esDataTypeList(QStringList& list) = 0;
  virtual void esOraTblspaceList(TEsDBInfo* db, QStringList& list) = 0;
  virtual void esOraTableList(TEsDBInfo* db, const QString& schema, QStringList& list) = 0;
  virtual int esGetBlockLen(TEsDBInfo* db, const QString& tablespace) = 0;
  virtual void esResetOraUserList(TEsDBInfo* db) = 0;

  // Platform services.
  virtual QString SettingsDir() = 0;  // folder of the per-form settings files
  // Save dialog: false when cancelled; `fileName` receives the chosen path.
  virtual bool SaveFileDialog(QWidget* parent, QString& fileName) = 0;
  // Input box: false when cancelled; `value` holds the default and receives the answer.
  virtual bool InputQuery(const QString& title, const QString& prompt, QString& value) = 0;
  virtual void SetClipboardText(const QString& text) = 0;
  // Writes a text file (a saved preview); EKelError when it cannot be written.
  virtual void SaveTextFile(const QString& fileName, const QString& text) = 0;
};

}  // namespace kel

// The module's exported entry point.
#if defined(_WIN32) && !defined(_WIN64)
#define NOD_CALL __stdcall
#else
#define NOD_CALL
#endif
using TOpenProc = void(NOD_CALL*)(kel::THost* HostApplication, int* Result, QWidget* ParentControl,
                                  kel::TXLink* Link, const char* ObjectType);
