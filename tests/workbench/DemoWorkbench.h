// The workbench of the workbench tests: a fresh demo database in a temporary folder, with the
// built module loaded.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <memory>

#include "host/core/SqlConnection.h"
#include "host/workbench/WorkbenchHost.h"
#include "host/workbench/WorkbenchWindow.h"

namespace test {

// Null, with a test failure, when the demo database cannot be opened or `module` not loaded.
inline std::unique_ptr<wb::TWorkbenchWindow> DemoWorkbench(const QTemporaryDir& dir,
                                                           const QString& module) {
  QString error;
  auto connection = host::OpenConnection("demo:" + dir.filePath("demo.db"), &error);
  if (!connection) {
    ADD_FAILURE() << error.toStdString();
    return nullptr;
  }
  auto window = std::make_unique<wb::TWorkbenchWindow>(std::move(connection),
                                                       wb::TWorkbenchOptions{"demo", dir.path()});
  if (!window->Host().Module().Load(module, &error)) {
    ADD_FAILURE() << error.toStdString();
    return nullptr;
  }
  return window;
}

}  // namespace test
