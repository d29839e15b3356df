// One run of a scenario: loads the module, serves it as a host, plays the steps and collects
// the transcript.
#pragma once

#include <QJsonObject>
#include <QString>

namespace runner {

struct TRunOptions {
  QString Module;         // the module's file
  QString Db;             // --db URL for scenarios without a catalog
  int TimeoutMs = 30000;  // a scenario still running after this is aborted
};

struct TRunOutcome {
  // 0 every step played, 2 a step could not be played, 1 the run could not start (module,
  // database or scenario file unusable).
  int ExitStatus = 0;
  QString Reason;          // why, when ExitStatus is not 0
  QJsonObject Transcript;  // "result", "open", "events"
};

// Needs a QApplication. Files named relatively in the scenario ("saveAs", "files") are relative
// to the current directory.
TRunOutcome RunScenario(const QJsonObject& scenario, const TRunOptions& options);

// Checks the scenario's shape; empty when it can be played, else the reason.
QString ScenarioProblem(const QJsonObject& scenario);

}  // namespace runner
