// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
}

}  // namespace kel
