// The catalog SQL repository (key -> Oracle SQL) and the message repository (key -> text).
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace host {

class TCatalog {
 public:
  // The repository compiled into the host (catalog/*.sql, catalog/messages.json and
  // catalog/messages.*.json).
  static const TCatalog& Builtin();

  // Adds every "-- name: KEY" query of an .sql text; later keys replace earlier ones.
  void AddSqlText(const QString& text);
  void AddMessagesJson(const QByteArray& json);

  bool HasSQL(const QString& key) const { return FSql.contains(key); }
  // The SQL under `key`; kel::EKelError naming the key when there is none.
  QString GetSQL(const QString& key) const;
  QStringList SqlKeys() const;

  bool HasMessage(const QString& key) const { return FMessages.contains(key); }
  // The text under `key`, or the key itself when the repository has none.
  QString Message(const QString& key) const;
  QStringList MessageKeys() const;

 private:
  QHash<QString, QString> FSql;
  QHash<QString, QString> FMessages;
};

// Fills "%s" (and "%d") placeholders in order, as the original platform's Format does.
QString FormatMessage(const QString& text, const QStringList& args);

}  // namespace host
