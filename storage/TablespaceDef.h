// A tablespace as the tablespace dialog edits it, and the statements that create it or turn one
// such definition (as loaded) into another (as edited). Only the clauses Oracle takes for the
// tablespace's kind are ever written, whatever the definition holds.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "storage/FileSpec.h"

namespace kel {

enum class TTablespaceKind { Permanent, Temporary, Undo };

struct TTablespaceDef {
  QString Name;
  TTablespaceKind Kind = TTablespaceKind::Permanent;
  QString FileType;  // "", "SMALLFILE", "BIGFILE"
  // Its files. In alter mode the loaded ones come first; the edited definition's further files
  // are the ones to add.
  QList<TFileSpec> Files;
  QString BlockSize;  // "", "8K"
  QString Logging;    // "", "LOGGING", "NOLOGGING"
  bool ForceLogging = false;
  QString Status;  // "", "ONLINE", "OFFLINE"
  bool ReadOnly = false;
  QString ExtentManagement;  // "", "AUTOALLOCATE", "UNIFORM"
  QString UniformSize;       // "", "1M"
  QString SegmentSpace;      // "", "AUTO", "MANUAL"
  QString Retention;         // "", "GUARANTEE", "NOGUARANTEE"
};

// What each kind takes.
bool TakesBlockSize(TTablespaceKind kind);
bool TakesLogging(TTablespaceKind kind);  // LOGGING / NOLOGGING and FORCE LOGGING
bool TakesStatus(TTablespaceKind kind);   // ONLINE / OFFLINE
bool TakesReadOnly(TTablespaceKind kind);
bool TakesSegmentSpace(TTablespaceKind kind);
bool TakesRetention(TTablespaceKind kind);
// The extent management choices of the kind: a temporary tablespace has uniform extents only,
// an undo tablespace system-allocated ones only.
QStringList ExtentChoices(TTablespaceKind kind);
// "DATAFILE" or "TEMPFILE".
QString FileKeyword(TTablespaceKind kind);

// The CREATE statement, one clause per line, ending in ";".
QStringList CreateTablespaceLines(const TTablespaceDef& def);
// One ALTER TABLESPACE statement per change, in an order Oracle can run: back online and
// writable first, the renaming last. Empty when nothing changed.
QStringList AlterTablespaceLines(const TTablespaceDef& loaded, const TTablespaceDef& edited);

}  // namespace kel
