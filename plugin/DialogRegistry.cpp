// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
}

}  // namespace kel
