// Every dialog of the module, by object-type word.
#include "plugin/Dispatch.h"
#include "schema/CreateSequenceFrn.h"
#include "security/CreateProfileFrn.h"
#include "security/CreateRoleFrn.h"
#include "security/CreateUserFrn.h"
#include "tables/CreateTableFrn.h"

namespace kel {

void RegisterDialogs() {
  RegisterOpenRoutine("SEQUENCE", &OpenModal<TCreateSequenceFrm>);
  RegisterOpenRoutine("TABLE", &OpenChild<TCreateTableFrm>);
  RegisterOpenRoutine("USER", &OpenModal<TCreateUserFrm>);
  RegisterOpenRoutine("ROLE", &OpenModal<TCreateRoleFrm>);
  RegisterOpenRoutine("PROFILE", &OpenModal<TCreateProfileFrm>);
}

}  // namespace kel
