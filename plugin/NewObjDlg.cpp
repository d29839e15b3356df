// The module's only exported entry point.
#include <QString>

#include "plugin/Dispatch.h"

namespace {
// The saved application object and whether the library-notification hook is in place.
kel::THost* gSavedApplication = nullptr;
bool gDetachHookSet = false;

struct TModuleStart {
  TModuleStart() {
    gSavedApplication = nullptr;
    gDetachHookSet = true;
    kel::RegisterDialogs();
  }
} gModuleStart;

// Process detach: put the saved application object back.
__attribute__((destructor)) void DLLProc() {
  if (gDetachHookSet && gSavedApplication) kel::SetApplication(gSavedApplication);
}
}  // namespace

extern "C" __attribute__((visibility("default"))) void NOD_CALL Open(kel::THost* HostApplication,
                                                                     int* Result,
                                                                     QWidget* ParentControl,
                                                                     kel::TXLink* Link,
                                                                     const char* ObjectType) {
  try {
    const QString word = QString::fromUtf8(ObjectType ? ObjectType : "");
    if (gDetachHookSet) {
      gSavedApplication = kel::Application();
      kel::SetApplication(HostApplication);
    }
    kel::Dispatch(word, Result, ParentControl, Link);
  } catch (...) {
    // Nothing may cross the C boundary.
  }
}
