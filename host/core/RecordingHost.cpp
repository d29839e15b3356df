#include "host/core/RecordingHost.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QWidget>

namespace host {

// Forwards to the connection and records every catalog query with its binds.
class TRecordingHost::TRecordingDBInfo : public kel::TEsDBInfo {
 public:
  TRecordingDBInfo(TRecordingHost* host, TConnection* c) : FHost(host), FC(c) {}
  QString UserName() const override { return FC->UserName(); }
  QStringList UserList() const override { return FC->UserList(); }
  QString ConnectionName() const override { return FC->ConnectionName(); }
  QString ServerVersion() const override { return FC->ServerVersion(); }
  bool PublicLinks() const override { return FC->PublicLinks(); }
  bool OCIMode() const override { return FC->OCIMode(); }
  QStringList Services() override { return FC->Services(); }
  QString GetSQL(const QString& key) const override { return FC->GetSQL(key); }
  kel::TQueryResult OpenQuery(const QString& key, const QString& sql,
                              const kel::TBindList& binds) override {
    QJsonObject b;
    for (const auto& [name, value] : binds)
      b.insert(name, value.isNull() ? QJsonValue() : QJsonValue(value.toString()));
    FHost->AddEvent({{"event", "query"}, {"key", key}, {"binds", b}});
    return FC->OpenQuery(key, sql, binds);
  }

 private:
  TRecordingHost* FHost;
  TConnection* FC;
};

TRecordingHost::TRecordingHost(TConnection* connection, const QJsonObject& script,
                               const TCatalog& repository)
    : FConnection(connection),
      FRepository(repository),
      FDBInfo(new TRecordingDBInfo(this, connection)),
      FAnswers(script.value("answers").toObject()),
      FSettingsDir(QDir::tempPath()) {
  const QJsonObject inputs = script.value("inputs").toObject();
  for (auto it = inputs.begin(); it != inputs.end(); ++it) {
    QStringList answers;
    for (const QJsonValue& v : it->toArray()) answers << v.toString();
    FInputs.insert(it.key(), answers);
  }
  for (const QJsonValue& v : script.value("saveAs").toArray()) FSaveAs << v.toString();
  for (const QJsonValue& v : script.value("execute").toArray()) FExecute << v.toInt();
}

TRecordingHost::~TRecordingHost() {
  delete FDBInfo;
}

QList<QWidget*> TRecordingHost::ChildWindows() const {
  QList<QWidget*> out;
  for (const QPointer<QWidget>& w : FChildren)
    if (w) out << w.data();
  return out;
}

kel::TEsDBInfo* TRecordingHost::CurrentDBInfo() {
  return FDBInfo;
}

void TRecordingHost::ShowMDIChild(QWidget* form) {
  FChildren << form;
  form->show();
}

int TRecordingHost::Answer(const QString& keyOrText) const {
  return FAnswers.value(keyOrText).toInt(kel::mrYes);
}

int TRecordingHost::esMsgDBox(const QString& key, kel::TMsgDlgType type, kel::TMsgDlgButtons,
                              bool) {
  // Only a question is answered; a warning or an error is just shown.
  if (type != kel::TMsgDlgType::Confirmation) return esMsgDBox(key, QStringList(), type, false);
  const int answer = Answer(key);
  AddEvent({{"event", "confirm"}, {"key", key}, {"answer", answer}});
  return answer;
}

int TRecordingHost::esMsgDBox(const QString& key, const QStringList& args, kel::TMsgDlgType type,
                              bool) {
  if (type == kel::TMsgDlgType::Confirmation) {
    // A question with arguments is answered like any other (Yes unless the scenario says).
    const int answer = Answer(key);
    AddEvent({{"event", "confirm"},
              {"key", key},
              {"args", QJsonArray::fromStringList(args)},
              {"answer", answer}});
    return answer;
  }
  AddEvent({{"event", "message"}, {"key", key}, {"args", QJsonArray::fromStringList(args)}});
  return FAnswers.contains(key) ? Answer(key) : kel::mrOk;
}

int TRecordingHost::esMsgBox(const QString& text, kel::TMsgDlgType, bool) {
  const int answer = Answer(text);
  AddEvent({{"event", "messageText"}, {"text", text}, {"answer", answer}});
  return answer;
}

void TRecordingHost::esStatus(const QString& text) {
  AddEvent({{"event", "status"}, {"text", text}});
}

int TRecordingHost::esScriptExecute(QWidget*, kel::TEsDBInfo*, const QString& script) {
  int result = 0;
  if (!FExecute.isEmpty()) {
    result = FExecute.takeFirst();
  } else {
    QString statement, error;
    result = FConnection->ExecuteScript(script, &statement, &error);
  }
  AddEvent({{"event", "execute"}, {"text", script}, {"result", result}});
  return result;
}

void TRecordingHost::esSendToEditor(kel::TEsDBInfo*, const QString& text, const QString&,
                                    const QString&) {
  AddEvent({{"event", "editor"}, {"text", text}});
}

void TRecordingHost::OpenViewSQLFrm(QWidget* form, const QString& text) {
  if (!FOpen) return;
  kel::TXLink link(form);
  link.SetVerb(QStringLiteral("DataOpen"));
  link.AddParams(QStringLiteral("SqlTxt"), text);
  int result = 0;
  FOpen(this, &result, form, &link, "VIEWSQLFRN");
}

void TRecordingHost::PreviewTextSet(const QString& text) {
  AddEvent({{"event", "preview"}, {"text", text}});
}

QString GrantSysPrivilegeText(const QString& grantee, const QString& privilege, bool withAdmin) {
  return QStringLiteral("GRANT %1 TO %2%3;")
      .arg(privilege, grantee, withAdmin ? QStringLiteral(" WITH ADMIN OPTION") : QString());
}

QString RevokeSysPrivilegeText(const QString& grantee, const QString& privilege) {
  return QStringLiteral("REVOKE %1 FROM %2;").arg(privilege, grantee);
}

QString TRecordingHost::esGrantSysPrivilege(const QString& grantee, const QString& privilege,
                                            bool withAdmin, int) {
  return GrantSysPrivilegeText(grantee, privilege, withAdmin);
}

QString TRecordingHost::esRevokeSysPrivilege(const QString& grantee, const QString& privilege,
                                             int) {
  return RevokeSysPrivilegeText(grantee, privilege);
}

void TRecordingHost::esDBLinkTest(kel::TEsDBInfo*, const QString& linkName) {
  AddEvent({{"event", "linkTest"}, {"name", linkName}});
}

int TRecordingHost::OpenDLL(const QString& module, QWidget* parent, kel::TXLink* link,
                            const QString& word) {
  int result = 0;
  const QMap<QString, QString> before = link ? link->Params() : QMap<QString, QString>();
  if (FOpen) FOpen(this, &result, parent, link, word.toUtf8().constData());
  if (link) ReportLinkParams(word, before, *link);
  AddEvent({{"event", "openDLL"}, {"module", module}, {"object", word}, {"result", result}});
  return result;
}

void TRecordingHost::ReportLinkParams(const QString& object, const QMap<QString, QString>& before,
                                      const kel::TXLink& link) {
  QJsonObject added;
  for (auto it = link.Params().begin(); it != link.Params().end(); ++it)
    if (!before.contains(it.key()) || before.value(it.key()) != it.value())
      added.insert(it.key(), it.value());
  if (!added.isEmpty()) AddEvent({{"event", "link"}, {"object", object}, {"params", added}});
}

bool TRecordingHost::SaveFileDialog(QWidget*, QString& fileName) {
  if (FSaveAs.isEmpty()) return false;
  fileName = FSaveAs.takeFirst();
  return true;
}

bool TRecordingHost::InputQuery(const QString& title, const QString&, QString& value) {
  QStringList& answers = FInputs[title];
  if (answers.isEmpty()) {
    AddEvent({{"event", "input"}, {"title", title}, {"answer", QJsonValue()}});
    return false;
  }
  value = answers.takeFirst();
  AddEvent({{"event", "input"}, {"title", title}, {"answer", value}});
  return true;
}

void TRecordingHost::SetClipboardText(const QString& text) {
  AddEvent({{"event", "clipboard"}, {"text", text}});
}

void TRecordingHost::SaveTextFile(const QString& fileName, const QString& text) {
  QFile f(fileName);
  if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
    throw kel::EKelError(QStringLiteral("Cannot write %1: %2").arg(fileName, f.errorString()));
  f.write(text.toUtf8());
  AddEvent({{"event", "save"}, {"file", fileName}, {"text", text}});
}

}  // namespace host
