// Every dialog of the module, by object-type word.
#include "jobs/CreateJobFrn.h"
#include "plugin/Dispatch.h"
#include "schema/CreateIndexFrn.h"
#include "schema/CreateSequenceFrn.h"
#include "storage/CreateDataFileFrn.h"
#include "storage/CreateRedoLogGroupFrn.h"
#include "storage/CreateRollbackSegmentFrn.h"
#include "storage/CreateTablespaceFrn.h"
#include "storage/CreateTablespaceListFrn.h"
#include "tables/AlterConstraintFrn.h"
#include "tables/CreateConstraintFrn.h"
#include "schema/CreateTriggerFrn.h"
#include "schema/CreateViewFrn.h"
#include "security/CreateProfileFrn.h"
#include "security/CreateRoleFrn.h"
#include "security/CreateUserFrn.h"
#include "schema/CreateDBLinkFrn.h"
#include "schema/CreateSequenceFrn.h"
#include "schema/CreateSynonymFrn.h"
#include "tables/CreateTableFrn.h"
#include "types/CreateCollectFrn.h"
#include "types/CreateTypeFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("CONSTRAINT", &OpenModal<TCreateConstraintFrm>);
  RegisterOpenRoutine("ADDCONSTRAINT", &OpenModal<TCreateConstraintFrm>);
  RegisterOpenRoutine("INDEX", &OpenModal<TCreateIndexFrm>);
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("ALTERCONSTRAINT", &OpenModal<TAlterConstraintFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("OBJECT TYPE", &OpenModal<TCreateTypeFrm>);
  RegisterOpenRoutine("COLLECTION TYPE", &OpenModal<TCreateCollectFrm>);
  RegisterOpenRoutine("VIEW", &OpenChild<TCreateViewFrm>);
  RegisterOpenRoutine("TRIGGER", &OpenModal<TCreateTriggerFrm>);
  RegisterOpenRoutine("USER", &OpenModal<TCreateUserFrm>);
  RegisterOpenRoutine("ROLE", &OpenModal<TCreateRoleFrm>);
  RegisterOpenRoutine("PROFILE", &OpenModal<TCreateProfileFrm>);
  RegisterOpenRoutine("SYNONYM", &OpenModal<TCreateSynonymFrm>);
  RegisterOpenRoutine("DBLINK", &OpenModal<TCreateDBLinkFrm>);
  RegisterOpenRoutine("JOB", &OpenModal<TCreateJobFrm>);
  RegisterOpenRoutine("TABLESPACE", &OpenModal<TCreateTablespaceFrm>);
  RegisterOpenRoutine("SELECTDATAFILE", &OpenModal<TCreateTablespaceListFrm>);
  RegisterOpenRoutine("DATAFILE", &OpenModal<TCreateDataFileFrm>);
  RegisterOpenRoutine("REDOLOGGROUP", &OpenModal<TCreateRedoLogGroupFrm>);
  RegisterOpenRoutine("ROLLBACKSEGMENT", &OpenModal<TCreateRollbackSegmentFrm>);
}

}  // namespace kel
