#include "host/workbench/ObjectKinds.h"

#include "plugin/KelHost.h"

namespace wb {

namespace {

// Parameter sets. Names and verbs are the module's; the irregular ones (job, redo log group,
// data file, trigger on a view) are as the module reads them.
constexpr std::span<const TParamSource> kNoParams{};

constexpr TParamSource kRedoNewGroup[] = {{"IsAddGroup", "=True"}};
constexpr TParamSource kDataFileNew[] = {{"TableSpaceName", "TABLESPACE_NAME"},
                                         {"DataFileName", "="}};

constexpr TParamSource kAlterTable[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_TableName", "NAME"}};
constexpr TParamSource kAlterView[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_ViewName", "NAME"}};
constexpr TParamSource kAlterObj[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_ObjName", "NAME"}};
constexpr TParamSource kAlterConstraint[] = {
    {"P_Schema", "@schema"}, {"P_TableName", "TABLE_NAME"}, {"P_ConstraintName", "NAME"}};
constexpr TParamSource kAlterTrigger[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_TriggerName", "NAME"}};
constexpr TParamSource kAlterSequence[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_SequenceName", "NAME"}};
constexpr TParamSource kAlterDBLink[] = {
    {"IsAlter", "=True"}, {"P_Schema", "@schema"}, {"P_DBLinkName", "NAME"}};
constexpr TParamSource kAlterUser[] = {
    {"IsAlter", "=True"}, {"P_UserName", "NAME"}, {"ActiveTab", "=0"}};
constexpr TParamSource kAlterRole[] = {
    {"IsAlter", "=True"}, {"P_ObjName", "NAME"}, {"ActiveTab", "=0"}};
constexpr TParamSource kAlterProfile[] = {{"IsAlter", "=True"}, {"P_ObjName", "NAME"}};
constexpr TParamSource kAlterTablespace[] = {{"IsAlter", "=True"}, {"TableSpace", "NAME"}};
constexpr TParamSource kAlterDataFile[] = {{"TableSpaceName", "TABLESPACE_NAME"},
                                           {"DataFileName", "NAME"}};
constexpr TParamSource kAddRedoMember[] = {{"IsAddGroup", "=False"},
                                           {"P_GroupNum", "NAME"},
                                           {"P_FileName", "MEMBER"},
                                           {"P_FileSize", "BYTES"}};
constexpr TParamSource kAlterRollback[] = {{"IsAlter", "=True"}, {"RollbackSegment", "NAME"}};
constexpr TParamSource kAlterJob[] = {{"P_Schema", "SCHEMA_USER"}, {"P_JobName", "NAME"}};

constexpr TParamSource kIndexOnTable[] = {{"P_Schema", "@schema"}, {"P_TblName", "NAME"}};
constexpr TParamSource kConstraintOnTable[] = {
    {"IsAdd", "=True"}, {"P_Schema", "@schema"}, {"P_TableName", "NAME"}};
constexpr TParamSource kTriggerOnObject[] = {{"P_Schema", "@schema"}, {"P_Table", "NAME"}};
constexpr TParamSource kDataFileOnTablespace[] = {{"TableSpaceName", "NAME"},
                                                  {"DataFileName", "="}};

const TNewEntry kNewEntries[] = {
    {"TABLE", "Table", "", kNoParams, true, false, "Tables"},
    {"VIEW", "View", "", kNoParams, true, false, "Views"},
    {"INDEX", "Index", "", kNoParams, true, false, "Indexes"},
    {"CONSTRAINT", "Constraint", "", kNoParams, true, false, "Constraints"},
    {"TRIGGER", "Trigger", "", kNoParams, true, false, "Triggers"},
    {"SEQUENCE", "Sequence", "", kNoParams, true, false, "Sequences"},
    {"SYNONYM", "Synonym", "", kNoParams, true, false, "Synonyms"},
    {"DBLINK", "Database Link", "", kNoParams, true, false, "DBLinks"},
    {"OBJECT TYPE", "Object Type", "", kNoParams, true, false, "ObjectTypes"},
    {"COLLECTION TYPE", "Collection Type", "", kNoParams, true, false, "CollectionTypes"},
    {"USER", "User", "", kNoParams, false, true, "Users"},
    {"ROLE", "Role", "", kNoParams, false, false, "Roles"},
    {"PROFILE", "Profile", "", kNoParams, false, false, "Profiles"},
    {"TABLESPACE", "Tablespace", "", kNoParams, false, true, "Tablespaces"},
    {"DATAFILE", "Data File", "Create", kDataFileNew, false, false, "DataFiles"},
    {"REDOLOGGROUP", "Redo Log Group", "Alter", kRedoNewGroup, false, false, "RedoLogGroups"},
    {"ROLLBACKSEGMENT", "Rollback Segment", "", kNoParams, false, false, "RollbackSegments"},
    {"JOB", "Job", "", kNoParams, false, true, "Jobs"},
};

const TObjectKind kKinds[] = {
    {"Tables", "Tables", "Workbench.Tables", true, "TABLE", "Alter", kAlterTable},
    {"Views", "Views", "Workbench.Views", true, "VIEW", "Alter", kAlterView},
    {"Indexes", "Indexes", "Workbench.Indexes", true, "INDEX", "Alter", kAlterObj},
    {"Constraints", "Constraints", "Workbench.Constraints", true, "ALTERCONSTRAINT", "Alter",
     kAlterConstraint},
    {"Triggers", "Triggers", "Workbench.Triggers", true, "TRIGGER", "Alter", kAlterTrigger},
    {"Sequences", "Sequences", "Workbench.Sequences", true, "SEQUENCE", "Alter", kAlterSequence},
    {"Synonyms", "Synonyms", "Workbench.Synonyms", true, "", "", kNoParams},
    {"DBLinks", "DB Links", "Workbench.DBLinks", true, "DBLINK", "Alter", kAlterDBLink},
    {"ObjectTypes", "Object Types", "Workbench.ObjectTypes", true, "OBJECT TYPE", "Alter",
     kAlterObj},
    {"CollectionTypes", "Collection Types", "Workbench.CollectionTypes", true, "COLLECTION TYPE",
     "Alter", kAlterObj},
    {"Users", "Users", "Workbench.Users", false, "USER", "Alter", kAlterUser},
    {"Roles", "Roles", "Workbench.Roles", false, "ROLE", "Alter", kAlterRole},
    {"Profiles", "Profiles", "Workbench.Profiles", false, "PROFILE", "Alter", kAlterProfile},
    {"Tablespaces", "Tablespaces", "Workbench.Tablespaces", false, "TABLESPACE", "Alter",
     kAlterTablespace},
    {"DataFiles", "Data Files", "Workbench.DataFiles", false, "DATAFILE", "Alter", kAlterDataFile},
    {"RedoLogGroups", "Redo Log Groups", "Workbench.RedoLogGroups", false, "REDOLOGGROUP", "Alter",
     kAddRedoMember},
    {"RollbackSegments", "Rollback Segments", "Workbench.RollbackSegments", false,
     "ROLLBACKSEGMENT", "Alter", kAlterRollback},
    {"Jobs", "Jobs", "Workbench.Jobs", false, "JOB", "ObjectAlter", kAlterJob},
};

const TObjectAction kActions[] = {
    {"Tables", "New Index on Table...", "INDEX", "TableCreate", kIndexOnTable},
    {"Tables", "Add Constraint...", "ADDCONSTRAINT", "Add", kConstraintOnTable},
    {"Tables", "New Trigger on Table...", "TRIGGER", "AddTable", kTriggerOnObject},
    {"Views", "New Trigger on View...", "TRIGGER", "AddView", kTriggerOnObject},
    {"Tablespaces", "Add Data File...", "DATAFILE", "Create", kDataFileOnTablespace},
};

}  // namespace

std::span<const TNewEntry> NewEntries() {
  return kNewEntries;
}
std::span<const TObjectKind> ObjectKinds() {
  return kKinds;
}
std::span<const TObjectAction> ObjectActions() {
  return kActions;
}

const TObjectKind* FindKind(const QString& key) {
  for (const TObjectKind& kind : kKinds)
    if (key == QLatin1String(kind.Key)) return &kind;
  return nullptr;
}

QString KindGroup(const TObjectKind& kind) {
  static const char* const kStorage[] = {"Tablespaces", "DataFiles", "RedoLogGroups",
                                         "RollbackSegments"};
  for (const char* key : kStorage)
    if (qstrcmp(kind.Key, key) == 0) return QStringLiteral("Storage");
  return QString();
}

QString ParamValue(const char* source, const QString& schema, const QVariantMap& row) {
  const QString s = QString::fromUtf8(source);
  if (s == QLatin1String("@schema")) return schema;
  if (s.startsWith(u'=')) return s.mid(1);
  return row.value(s).toString();
}

void FillLink(kel::TXLink& link, const char* verb, std::span<const TParamSource> params,
              const QString& schema, const QVariantMap& row) {
  link.SetVerb(QString::fromUtf8(verb));
  for (const TParamSource& p : params)
    link.AddParams(QString::fromUtf8(p.Name), ParamValue(p.Source, schema, row));
}

}  // namespace wb
