// Every dialog of the module, by object-type word.
#include "jobs/CreateJobFrn.h"
#include "plugin/Dispatch.h"
#include "schema/CreateDBLinkFrn.h"
#include "schema/CreateSequenceFrn.h"
#include "schema/CreateSynonymFrn.h"
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("SYNONYM", &OpenModal<TCreateSynonymFrm>);
  RegisterOpenRoutine("DBLINK", &OpenModal<TCreateDBLinkFrm>);
  RegisterOpenRoutine("JOB", &OpenModal<TCreateJobFrm>);
}

}  // namespace kel
