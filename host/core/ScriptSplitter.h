// Splits an Oracle script into the statements a server runs one at a time, the way SQL*Plus
// reads a script: a ";" at the end of a line ends a SQL statement; a PL/SQL unit (an anonymous
// block or a CREATE of a procedure, function, package, trigger or type body) ends only at a line
// holding a lone "/".
#pragma once

#include <QString>
#include <QStringList>

namespace host {

// The statements of `script`, each trimmed, SQL statements without their final ";", PL/SQL units
// with their text up to (not including) the "/" line. CR, LF and CR LF all end a line; the line
// ends inside a statement are kept as they were. Blank statements are dropped.
QStringList SplitScript(const QString& script);

// Whether a statement's text begins a PL/SQL unit (DECLARE, BEGIN, CREATE [OR REPLACE]
// PROCEDURE / FUNCTION / PACKAGE [BODY] / TRIGGER / TYPE BODY / LIBRARY), comments skipped.
bool IsPlSqlUnit(const QString& statement);

}  // namespace host
