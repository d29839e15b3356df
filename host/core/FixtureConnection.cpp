#include "host/core/FixtureConnection.h"

#include <QJsonArray>

namespace host {

namespace {
QStringList Strings(const QJsonValue& v) {
  QStringList out;
  for (const QJsonValue& x : v.toArray()) out << x.toVariant().toString();
  return out;
}

QString Text(const QJsonValue& v) {
  if (v.isNull() || v.isUndefined()) return QString();
  if (v.isBool()) return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
  return v.toVariant().toString();
}

// The rows of one key: a list of rows, or a list of {"binds", "rows"} alternatives of which the
// first whose binds all match is used.
QJsonArray RowsFor(const QJsonValue& entry, const kel::TBindList& binds) {
  const QJsonArray list = entry.toArray();
  const bool alternatives = !list.isEmpty() && list.first().toObject().contains("rows") &&
                            list.first().toObject().contains("binds");
  if (!alternatives) return list;
  for (const QJsonValue& alt : list) {
    const QJsonObject want = alt.toObject().value("binds").toObject();
    bool all = true;
    for (auto it = want.begin(); all && it != want.end(); ++it) {
      bool found = false;
      for (const auto& [name, value] : binds)
        if (name.compare(it.key(), Qt::CaseInsensitive) == 0) found = value.toString() == Text(*it);
      all = found;
    }
    if (all) return alt.toObject().value("rows").toArray();
  }
  return {};
}
}  // namespace

QStringList DefaultDataTypes() {
  return {"BFILE", "BLOB",     "CHAR",      "CLOB",   "DATE",     "FLOAT",
          "LONG",  "LONG RAW", "NCHAR",     "NCLOB",  "NUMBER",   "NVARCHAR2",
          "RAW",   "ROWID",    "TIMESTAMP", "UROWID", "VARCHAR2", "XMLTYPE"};
}

TFixtureConnection::TFixtureConnection(const QJsonObject& c, const QJsonObject& catalogRows,
                                       const TCatalog& repository)
    : FRepository(repository), FRows(catalogRows) {
  FUser = c.contains("user") ? Text(c["user"]) : QStringLiteral("APP");
  FUsers = c.contains("users") ? Strings(c["users"]) : QStringList{FUser};
  FName = c.contains("name") ? Text(c["name"]) : QStringLiteral("DEMO");
  FServerVersion =
      c.contains("serverVersion") ? Text(c["serverVersion"]) : QStringLiteral("19.0.0.0.0");
  FPublicLinks = c.value("publicLinks").toBool(true);
  FOci = c.value("oci").toBool(true);
  FTablespaces = c.contains("tablespaces") ? Strings(c["tablespaces"])
                                           : QStringList{"SYSTEM", "USERS", "TEMP"};
  const QJsonObject tables = c.value("tables").toObject();
  for (auto it = tables.begin(); it != tables.end(); ++it) FTables.insert(it.key(), Strings(*it));
  FDataTypes = c.contains("dataTypes") ? Strings(c["dataTypes"]) : DefaultDataTypes();
  FBlockSize = c.value("blockSize").toInt(8192);
  FServices = Strings(c.value("services"));
}

kel::TQueryResult TFixtureConnection::OpenQuery(const QString& key, const QString&,
                                                const kel::TBindList& binds) {
  kel::TQueryResult result;
  const QJsonArray rows = RowsFor(FRows.value(key), binds);
  for (const QJsonValue& r : rows)
    for (const QString& col : r.toObject().keys())
      if (!result.Columns.contains(col)) result.Columns << col;
  for (const QJsonValue& r : rows) {
    const QJsonObject o = r.toObject();
    QStringList values;
    for (const QString& col : result.Columns) values << Text(o.value(col));
    result.Rows << values;
  }
  return result;
}

}  // namespace host
