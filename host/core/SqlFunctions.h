// The Oracle built-in functions that catalog queries use, registered on a SQLite connection so
// that the same query text runs on Oracle and on the demo database. As on Oracle, an empty text
// counts as NULL.
#pragma once

#include <QHash>
#include <QSqlDatabase>
#include <QString>

namespace host {

// A number as Oracle prints it: integral values as plain digits (no exponent, no ".0"),
// others in their shortest exact form.
QString NumberText(double value);

// Registers NVL, NVL2, DECODE, TO_CHAR, TO_NUMBER, INSTR, LPAD, RPAD, INITCAP, GREATEST, LEAST,
// CONCAT and SYS_CONTEXT on the open SQLite connection `db`. SYS_CONTEXT('USERENV', name)
// answers from `userenv` (upper-case names such as SESSION_USER, DB_NAME), which must outlive
// the connection. False with a message in `error` when the driver is not SQLite.
bool RegisterOracleFunctions(const QSqlDatabase& db, const QHash<QString, QString>* userenv,
                             QString* error);

}  // namespace host
