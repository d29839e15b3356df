// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"
#include "tables/CreateTableFrn.h"
#include "types/CreateCollectFrn.h"
#include "types/CreateTypeFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("OBJECT TYPE", &OpenModal<TCreateTypeFrm>);
  RegisterOpenRoutine("COLLECTION TYPE", &OpenModal<TCreateCollectFrm>);
}

}  // namespace kel
