// What the tests know of Oracle's data dictionary, read from data/oracle19c-dictionary.txt, and
// the checks that make the demo database and the catalog fail where a real server would.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

namespace test {

struct TDictionaryView {
  QStringList Columns;  // documented columns, in order
  QSet<QString> Longs;  // the LONG ones
};
using TDictionary = QHash<QString, TDictionaryView>;

// Reads the dictionary list; an empty result with a message in `error` when it is malformed.
TDictionary ReadDictionary(const QString& path, QString* error);
// The list kept with the tests.
const TDictionary& Oracle19cDictionary();

// The names a query reads from: after FROM or JOIN, after a comma in a FROM list, or after
// "SYS."; upper-cased, in order, each once.
QStringList ObjectsRead(const QString& sql);

// Every use of a LONG column in `sql` that is not a plain item of the top-level select list
// (Oracle refuses LONG in WHERE, ORDER BY, GROUP BY, expressions, DISTINCT and UNION), one
// message each naming the column and where it is used.
QStringList LongColumnMisuse(const QString& sql, const TDictionary& dictionary);

// The query text as Qt's Oracle driver (QOCI) prepares it: every "?" outside what its scan
// takes for a quoted part ('..', "..", `..`, [..]) becomes ":0", ":1", ...; `count` receives
// the number converted and `unclosed` whether the scan ended inside a quoted part.
QString QociNamedBinding(const QString& sql, int* count, bool* unclosed);

}  // namespace test
