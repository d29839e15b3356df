#include "plugin/KelQuery.h"

namespace kel {

void TKelQuery::Close() {
  FActive = false;
  FData = TQueryResult();
  FRecNo = 0;
}

void TKelQuery::SetSQL(const QString& sql, const QString& key) {
  Close();
  if (sql != FSql) FParams.clear();
  FSql = sql;
  FKey = key;
}

void TKelQuery::LoadSQL(const QString& key) {
  if (!FSession) throw EKelError(QStringLiteral("Query has no session"));
  SetSQL(FSession->GetSQL(key), key);
}

QVariant& TKelQuery::ParamByName(const QString& name) {
  return FParams[name.toUpper()];
}

void TKelQuery::Open() {
  if (!FSession) throw EKelError(QStringLiteral("Query has no session"));
  Close();
  TBindList binds;
  for (const QString& name : DeclaredParams(FSql))
    binds.append({name, FParams.value(name.toUpper())});
  FData = FSession->OpenQuery(FKey, FSql, binds);
  FActive = true;
}

int TKelQuery::ColumnIndex(const QString& column) const {
  for (qsizetype i = 0; i < FData.Columns.size(); ++i)
    if (FData.Columns[i].compare(column, Qt::CaseInsensitive) == 0) return int(i);
  return -1;
}

bool TKelQuery::HasField(const QString& column) const {
  return ColumnIndex(column) >= 0;
}

QString TKelQuery::FieldByName(const QString& column) const {
  if (Eof()) return QString();  // an empty result reads as nulls
  const int i = ColumnIndex(column);
  if (i < 0) {
    throw EKelError(QStringLiteral("%1: field '%2' not found")
                        .arg(FKey.isEmpty() ? QStringLiteral("Query") : FKey, column));
  }
  const QStringList& row = FData.Rows[FRecNo];
  return i < row.size() ? row[i] : QString();
}

QStringList TKelQuery::DeclaredParams(const QString& sql) {
  QStringList out;
  const qsizetype n = sql.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar c = sql[i];
    if (c == u'\'' || c == u'"') {  // literal or quoted identifier
      const QChar q = c;
      for (++i; i < n && sql[i] != q; ++i) {
      }
      continue;
    }
    if (c == u'-' && i + 1 < n && sql[i + 1] == u'-') {  // line comment
      while (i < n && sql[i] != u'\n') ++i;
      continue;
    }
    if (c == u'/' && i + 1 < n && sql[i + 1] == u'*') {  // block comment
      i += 2;
      while (i + 1 < n && !(sql[i] == u'*' && sql[i + 1] == u'/')) ++i;
      ++i;
      continue;
    }
    if (c == u':' && i + 1 < n && (sql[i + 1].isLetter() || sql[i + 1] == u'_')) {
      if (i > 0 && sql[i - 1] == u':') continue;  // "::" is not a parameter
      qsizetype j = i + 1;
      while (j < n && (sql[j].isLetterOrNumber() || sql[j] == u'_' || sql[j] == u'$')) ++j;
      const QString name = sql.mid(i + 1, j - i - 1);
      bool seen = false;
      for (const QString& s : out) seen = seen || s.compare(name, Qt::CaseInsensitive) == 0;
      if (!seen) out.append(name);
      i = j - 1;
    }
  }
  return out;
}

}  // namespace kel
