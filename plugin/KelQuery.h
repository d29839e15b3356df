// The query component the dialogs use for catalog reads: set the SQL (usually by key through the
// connection), assign parameters, open, read fields by name row by row.
#pragma once

#include <QMap>
#include <QString>
#include <QVariant>

#include "plugin/KelHost.h"

namespace kel {

class TKelQuery {
 public:
  explicit TKelQuery(TEsDBInfo* session = nullptr) : FSession(session) {}

  void SetSession(TEsDBInfo* session) { FSession = session; }
  TEsDBInfo* Session() const { return FSession; }

  void Close();
  // Sets the SQL text; `key` is the catalog key it came from (empty for literal SQL).
  void SetSQL(const QString& sql, const QString& key = QString());
  // Loads the catalog SQL stored under `key` from the session.
  void LoadSQL(const QString& key);
  const QString& SQL() const { return FSql; }
  const QString& Key() const { return FKey; }

  // Assigns a parameter: `q.ParamByName("P_OWN") = schema;`. Parameters are kept across opens
  // until the SQL text changes.
  QVariant& ParamByName(const QString& name);

  // Runs the query. Only the parameters that the SQL text declares are bound; one declared but
  // never assigned is bound as null.
  void Open();
  bool Active() const { return FActive; }
  bool Eof() const { return !FActive || FRecNo >= FData.Rows.size(); }
  void Next() { ++FRecNo; }
  void First() { FRecNo = 0; }
  int RecNo() const { return int(FRecNo); }
  void SetRecNo(int recNo) { FRecNo = recNo; }
  int RecordCount() const { return int(FData.Rows.size()); }
  const TQueryResult& Data() const { return FData; }

  // The current row's value of `column` (case-insensitive); EKelError when there is no such
  // column, empty text at the end of the data.
  QString FieldByName(const QString& column) const;
  bool HasField(const QString& column) const;

  // The parameter names the SQL text declares (":NAME" outside literals and comments), each
  // once, in order of first appearance.
  static QStringList DeclaredParams(const QString& sql);

 private:
  int ColumnIndex(const QString& column) const;

  TEsDBInfo* FSession;
  QString FSql;
  QString FKey;
  QMap<QString, QVariant> FParams;  // upper-cased names
  TQueryResult FData;
  qsizetype FRecNo = 0;
  bool FActive = false;
};

}  // namespace kel
