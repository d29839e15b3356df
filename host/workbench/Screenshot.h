// The picture of the workbench for its documentation: the browser on a table, the table's
// dialog with a column added, and the statement in the View SQL window, drawn without a screen.
#pragma once

#include <QString>

namespace wb {

class TWorkbenchWindow;

// Sets the scene in `window` (connected, module loaded) and writes it to `file` as a PNG;
// false with the reason when a step fails.
bool SaveScreenshot(TWorkbenchWindow& window, const QString& file, QString* error);

}  // namespace wb
