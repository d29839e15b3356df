// A connection answered from fixture facts and rows (a scenario's "connection" and "catalog").
#pragma once

#include <QJsonObject>

#include "host/core/Catalog.h"
#include "host/core/Connection.h"

namespace host {

class TFixtureConnection : public TConnection {
 public:
  TFixtureConnection(const QJsonObject& connection, const QJsonObject& catalogRows,
                     const TCatalog& repository = TCatalog::Builtin());

  QString UserName() const override { return FUser; }
  QStringList UserList() const override { return FUsers; }
  QString ConnectionName() const override { return FName; }
  QString ServerVersion() const override { return FServerVersion; }
  bool PublicLinks() const override { return FPublicLinks; }
  bool OCIMode() const override { return FOci; }
  QString GetSQL(const QString& key) const override { return FRepository.GetSQL(key); }
  kel::TQueryResult OpenQuery(const QString& key, const QString& sql,
                              const kel::TBindList& binds) override;

  QStringList Tablespaces() override { return FTablespaces; }
  QStringList Tables(const QString& schema) override { return FTables.value(schema); }
  QStringList DataTypes() override { return FDataTypes; }
  int BlockSize() override { return FBlockSize; }
  QStringList Services() override { return FServices; }
  int ExecuteScript(const QString&, QString*, QString*) override { return 0; }

 private:
  const TCatalog& FRepository;
  QJsonObject FRows;
  QString FUser, FName, FServerVersion;
  QStringList FUsers, FTablespaces, FDataTypes, FServices;
  QHash<QString, QStringList> FTables;
  bool FPublicLinks = true;
  bool FOci = true;
  int FBlockSize = 8192;
};

// The Oracle data types a host offers for column, attribute and parameter pickers.
QStringList DefaultDataTypes();

}  // namespace host
