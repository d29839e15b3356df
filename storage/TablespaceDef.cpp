#include "storage/TablespaceDef.h"

namespace kel {

bool TakesBlockSize(TTablespaceKind kind) {
  return kind == TTablespaceKind::Permanent;
}
bool TakesLogging(TTablespaceKind kind) {
  return kind == TTablespaceKind::Permanent;
}
bool TakesStatus(TTablespaceKind kind) {
  return kind != TTablespaceKind::Temporary;
}
bool TakesReadOnly(TTablespaceKind kind) {
  return kind == TTablespaceKind::Permanent;
}
bool TakesSegmentSpace(TTablespaceKind kind) {
  return kind == TTablespaceKind::Permanent;
}
bool TakesRetention(TTablespaceKind kind) {
  return kind == TTablespaceKind::Undo;
}

QStringList ExtentChoices(TTablespaceKind kind) {
  switch (kind) {
    case TTablespaceKind::Temporary:
      return {QStringLiteral("Default"), QStringLiteral("UNIFORM")};
    case TTablespaceKind::Undo:
      return {QStringLiteral("Default"), QStringLiteral("AUTOALLOCATE")};
    default:
      return {QStringLiteral("Default"), QStringLiteral("AUTOALLOCATE"), QStringLiteral("UNIFORM")};
  }
}

QString FileKeyword(TTablespaceKind kind) {
  return kind == TTablespaceKind::Temporary ? QStringLiteral("TEMPFILE")
                                            : QStringLiteral("DATAFILE");
}

namespace {

QString CreateHead(const TTablespaceDef& def) {
  QString head = QStringLiteral("CREATE ");
  if (!def.FileType.isEmpty()) head += def.FileType + u' ';
  if (def.Kind == TTablespaceKind::Temporary) head += QStringLiteral("TEMPORARY ");
  if (def.Kind == TTablespaceKind::Undo) head += QStringLiteral("UNDO ");
  return head + QStringLiteral("TABLESPACE ") + def.Name;
}

void AddFileLines(const TTablespaceDef& def, QStringList& lines) {
  for (qsizetype i = 0; i < def.Files.size(); ++i) {
    const QString lead = i == 0 ? FileKeyword(def.Kind) + u' ' : QStringLiteral("  ");
    const QString comma = i + 1 < def.Files.size() ? QStringLiteral(",") : QString();
    lines << lead + FileClause(def.Files[i]) + comma;
  }
}

QString ExtentManagementClause(const TTablespaceDef& def) {
  if (!ExtentChoices(def.Kind).contains(def.ExtentManagement)) return QString();
  QString clause = QStringLiteral("EXTENT MANAGEMENT LOCAL ") + def.ExtentManagement;
  if (def.ExtentManagement == u"UNIFORM" && !def.UniformSize.isEmpty())
    clause += QStringLiteral(" SIZE ") + def.UniformSize;
  return clause;
}

// An unquoted name as the dictionary holds it.
QString DictionaryName(const QString& name) {
  return name.startsWith(u'"') ? name : name.toUpper();
}

// The status a definition asks for: "Default" keeps the loaded one.
QString TargetStatus(const TTablespaceDef& loaded, const TTablespaceDef& edited) {
  return edited.Status.isEmpty() ? loaded.Status : edited.Status;
}

}  // namespace

QStringList CreateTablespaceLines(const TTablespaceDef& def) {
  QStringList lines{CreateHead(def)};
  AddFileLines(def, lines);
  const TTablespaceKind kind = def.Kind;
  if (TakesBlockSize(kind) && !def.BlockSize.isEmpty())
    lines << QStringLiteral("BLOCKSIZE ") + def.BlockSize;
  if (TakesLogging(kind) && !def.Logging.isEmpty()) lines << def.Logging;
  if (TakesLogging(kind) && def.ForceLogging) lines << QStringLiteral("FORCE LOGGING");
  // Undo tablespaces are created online; only a permanent one may start offline.
  if (kind == TTablespaceKind::Permanent && !def.Status.isEmpty()) lines << def.Status;
  if (const QString extent = ExtentManagementClause(def); !extent.isEmpty()) lines << extent;
  if (TakesSegmentSpace(kind) && !def.SegmentSpace.isEmpty())
    lines << QStringLiteral("SEGMENT SPACE MANAGEMENT ") + def.SegmentSpace;
  if (TakesRetention(kind) && !def.Retention.isEmpty())
    lines << QStringLiteral("RETENTION ") + def.Retention;
  lines.last() += u';';
  return lines;
}

QStringList AlterTablespaceLines(const TTablespaceDef& loaded, const TTablespaceDef& edited) {
  QStringList lines;
  const QString alter = QStringLiteral("ALTER TABLESPACE ") + loaded.Name + u' ';
  auto add = [&](const QString& change) { lines << alter + change + u';'; };
  const TTablespaceKind kind = loaded.Kind;
  const QString status = TargetStatus(loaded, edited);
  const bool statusChanges = TakesStatus(kind) && status != loaded.Status;
  const bool online = !TakesStatus(kind) || status != u"OFFLINE";
  // A read-only change needs the tablespace online; taken offline, it keeps its mode.
  const bool readOnlyChanges = TakesReadOnly(kind) && online && edited.ReadOnly != loaded.ReadOnly;

  if (statusChanges && online) add(QStringLiteral("ONLINE"));
  if (readOnlyChanges && !edited.ReadOnly) add(QStringLiteral("READ WRITE"));
  for (qsizetype i = loaded.Files.size(); i < edited.Files.size(); ++i)
    add(QStringLiteral("ADD ") + FileKeyword(kind) + u' ' + FileClause(edited.Files[i]));
  if (TakesLogging(kind) && !edited.Logging.isEmpty() && edited.Logging != loaded.Logging)
    add(edited.Logging);
  if (TakesLogging(kind) && edited.ForceLogging != loaded.ForceLogging)
    add(edited.ForceLogging ? QStringLiteral("FORCE LOGGING") : QStringLiteral("NO FORCE LOGGING"));
  if (TakesRetention(kind) && !edited.Retention.isEmpty() && edited.Retention != loaded.Retention)
    add(QStringLiteral("RETENTION ") + edited.Retention);
  if (readOnlyChanges && edited.ReadOnly) add(QStringLiteral("READ ONLY"));
  if (statusChanges && !online) add(QStringLiteral("OFFLINE NORMAL"));
  if (!edited.Name.isEmpty() && DictionaryName(edited.Name) != DictionaryName(loaded.Name))
    add(QStringLiteral("RENAME TO ") + edited.Name);
  return lines;
}

}  // namespace kel
