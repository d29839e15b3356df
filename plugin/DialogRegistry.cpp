// Every dialog of the module, by object-type word.
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
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("CONSTRAINT", &OpenModal<TCreateConstraintFrm>);
  RegisterOpenRoutine("ADDCONSTRAINT", &OpenModal<TCreateConstraintFrm>);
  RegisterOpenRoutine("INDEX", &OpenModal<TCreateIndexFrm>);
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("ALTERCONSTRAINT", &OpenModal<TAlterConstraintFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("TABLESPACE", &OpenModal<TCreateTablespaceFrm>);
  RegisterOpenRoutine("SELECTDATAFILE", &OpenModal<TCreateTablespaceListFrm>);
  RegisterOpenRoutine("DATAFILE", &OpenModal<TCreateDataFileFrm>);
  RegisterOpenRoutine("REDOLOGGROUP", &OpenModal<TCreateRedoLogGroupFrm>);
  RegisterOpenRoutine("ROLLBACKSEGMENT", &OpenModal<TCreateRollbackSegmentFrm>);
}

}  // namespace kel
