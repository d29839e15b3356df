// The embedded demo database: a SQLite file whose tables are named and shaped like Oracle's
// data dictionary views, built from the creation scripts compiled into the host (":/demo/",
// run in file-name order).
#pragma once

#include <QList>
#include <QPair>
#include <QString>

namespace host {

// The creation scripts, (file name, text), in file-name order.
QList<QPair<QString, QString>> DemoScripts();

// A digest of the creation scripts, stored in every demo database built from them.
QString DemoScriptsHash();

// The digest stored in the demo database at `path`; empty when the file is missing or is not a
// demo database.
QString StoredDemoHash(const QString& path);

// The journal table in which a SQLite database records the statements of executed scripts.
QString ScriptLogTableDdl();
// A statement as the journal keeps it: every password after IDENTIFIED BY (quoted or not, also
// IDENTIFIED BY VALUES, and the old one after REPLACE) replaced by asterisks, its quotes kept.
QString MaskPasswords(const QString& statement);

// Builds a fresh demo database at `path`, replacing any file there; the script journal of the
// file it replaces is carried over. The file appears only once it is complete. False with a
// message in `error`.
bool CreateDemoDatabase(const QString& path, QString* error);

// Makes sure `path` holds a demo database built from the current scripts: builds it when it is
// missing or empty, rebuilds it when it was built from other scripts, and refuses (false, with
// the reason) when another file is there.
bool EnsureDemoDatabase(const QString& path, QString* error);

}  // namespace host
