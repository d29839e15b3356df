#include "host/core/Catalog.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "host/core/SqlText.h"
#include "plugin/KelHost.h"

static void InitCatalogResource() {
  Q_INIT_RESOURCE(catalog);
}

namespace host {

const TCatalog& TCatalog::Builtin() {
  static const TCatalog catalog = [] {
    InitCatalogResource();
    TCatalog c;
    const QDir dir(QStringLiteral(":/catalog"));
    for (const QString& name : dir.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
      QFile f(dir.filePath(name));
      if (f.open(QIODevice::ReadOnly)) c.AddSqlText(QString::fromUtf8(f.readAll()));
    }
    // messages.json first, then one messages.<Area>.json per group of dialogs.
    QStringList jsons = dir.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name);
    jsons.removeAll(QStringLiteral("messages.json"));
    jsons.prepend(QStringLiteral("messages.json"));
    for (const QString& name : jsons) {
      QFile messages(dir.filePath(name));
      if (messages.open(QIODevice::ReadOnly)) c.AddMessagesJson(messages.readAll());
    }
    return c;
  }();
  return catalog;
}

void TCatalog::AddSqlText(const QString& text) {
  // A key runs to the end of its line and may hold blanks inside ("SchTypeNrn.Object Type"),
  // never at its ends.
  static const QRegularExpression kName(QStringLiteral("^--\\s*name:\\s*(\\S(?:.*\\S)?)\\s*$"));
  QString key;
  QStringList body;
  auto flush = [&] {
    if (!key.isEmpty()) {
      // Comments stay in the files: a driver that rewrites placeholders (Qt's Oracle driver
      // turns "?" into ":0", ":1", ...) reads an apostrophe in a comment as a literal's start.
      QString sql = StripSqlComments(body.join(u'\n')).trimmed();
      while (sql.endsWith(u';')) sql.chop(1);
      FSql.insert(key, sql.trimmed());
    }
    body.clear();
  };
  for (const QString& line : text.split(u'\n')) {
    const auto m = kName.match(line.trimmed());
    if (m.hasMatch()) {
      flush();
      key = m.captured(1);
    } else if (!key.isEmpty()) {
      body << QString(line).remove(u'\r');
    }
  }
  flush();
}

void TCatalog::AddMessagesJson(const QByteArray& json) {
  const QJsonObject o = QJsonDocument::fromJson(json).object();
  for (auto it = o.begin(); it != o.end(); ++it) FMessages.insert(it.key(), it.value().toString());
}

QString TCatalog::GetSQL(const QString& key) const {
  auto it = FSql.find(key);
  if (it == FSql.end())
    throw kel::EKelError(
        QStringLiteral("Catalog SQL \"%1\" is not in the SQL repository.").arg(key));
  return *it;
}

QStringList TCatalog::SqlKeys() const {
  QStringList keys = FSql.keys();
  keys.sort();
  return keys;
}

QString TCatalog::Message(const QString& key) const {
  return FMessages.value(key, key);
}

QStringList TCatalog::MessageKeys() const {
  QStringList keys = FMessages.keys();
  keys.sort();
  return keys;
}

QString FormatMessage(const QString& text, const QStringList& args) {
  QString out;
  qsizetype next = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'%' && i + 1 < text.size()) {
      const QChar c = text[i + 1];
      if (c == u'%') {
        out += u'%';
        ++i;
        continue;
      }
      if (c == u's' || c == u'd') {
        out += next < args.size() ? args[next] : QString();
        ++next;
        ++i;
        continue;
      }
    }
    out += text[i];
  }
  return out;
}

}  // namespace host
