// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"
#include "storage/CreateDataFileFrn.h"
#include "storage/CreateRedoLogGroupFrn.h"
#include "storage/CreateRollbackSegmentFrn.h"
#include "storage/CreateTablespaceFrn.h"
#include "storage/CreateTablespaceListFrn.h"
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("TABLESPACE", &OpenModal<TCreateTablespaceFrm>);
  RegisterOpenRoutine("SELECTDATAFILE", &OpenModal<TCreateTablespaceListFrm>);
  RegisterOpenRoutine("DATAFILE", &OpenModal<TCreateDataFileFrm>);
  RegisterOpenRoutine("REDOLOGGROUP", &OpenModal<TCreateRedoLogGroupFrm>);
  RegisterOpenRoutine("ROLLBACKSEGMENT", &OpenModal<TCreateRollbackSegmentFrm>);
}

}  // namespace kel
