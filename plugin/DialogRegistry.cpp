// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"
#include "schema/CreateTriggerFrn.h"
#include "schema/CreateViewFrn.h"
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("VIEW", &OpenChild<TCreateViewFrm>);
  RegisterOpenRoutine("TRIGGER", &OpenModal<TCreateTriggerFrm>);
}

}  // namespace kel
