// A check of a module file before the dynamic loader maps it: a truncated or damaged shared
// object would otherwise fault inside the loader (a mapped page past the end of the file).
#pragma once

#include <QString>

namespace host {

// True when `fileName` is a complete shared object of this platform's format: its headers and
// every loadable segment lie inside the file. Otherwise false with a readable reason.
bool CheckModuleFile(const QString& fileName, QString* error);

}  // namespace host
