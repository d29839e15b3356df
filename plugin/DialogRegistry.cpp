// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"

namespace kel {

void RegisterDialogs() {
}

}  // namespace kel
