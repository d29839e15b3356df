// newobjdlg-run [--db URL] [--module PATH] [--timeout SECONDS] SCENARIO.json
// newobjdlg-run --normalize FILE.json
//
// Plays a scenario against the module and prints the transcript on standard output. Exit
// status 0 when every step played, 2 when one could not (the reason on standard error, the
// transcript so far still printed), 1 when the run could not start (wrong command line, module
// or database unusable, scenario file unreadable).
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>

#include "host/runner/ScenarioRun.h"
#include "host/runner/Transcript.h"

namespace {

const char kUsage[] =
    "usage: newobjdlg-run [--db URL] [--module PATH] [--timeout SECONDS] SCENARIO.json\n"
    "       newobjdlg-run --normalize FILE.json\n";

void Print(FILE* to, const QByteArray& text) {
  std::fwrite(text.constData(), 1, size_t(text.size()), to);
  std::fflush(to);
}

void Complain(const QString& text) {
  Print(stderr, ("newobjdlg-run: " + text + "\n").toUtf8());
}

// The module built beside the runner: <build>/host/runner/newobjdlg-run -> <build>/libNewObjDlg.so.
QString DefaultModule() {
  const QDir dir(QCoreApplication::applicationDirPath());
  for (const QString& candidate :
       {dir.filePath("../../libNewObjDlg.so"), dir.filePath("libNewObjDlg.so")})
    if (QFileInfo::exists(candidate)) return QDir::cleanPath(candidate);
  return QDir::cleanPath(dir.filePath("../../libNewObjDlg.so"));
}

bool ReadJson(const QString& file, QJsonObject* out) {
  QByteArray text;
  QString error;
  if (!runner::ReadCapped(file, &text, &error)) {
    Complain(error);
    return false;
  }
  *out = runner::ParseObject(text, &error);
  if (!error.isEmpty()) {
    Complain(QStringLiteral("%1: %2").arg(file, error));
    return false;
  }
  return true;
}

// Qt's own chatter (platform plug-in notes) stays out of the reasons on standard error unless
// NOD_RUN_VERBOSE is set; critical and fatal messages always show.
void QuietMessages(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if ((type == QtDebugMsg || type == QtInfoMsg || type == QtWarningMsg) &&
      qEnvironmentVariableIsEmpty("NOD_RUN_VERBOSE"))
    return;
  Print(stderr, (text + "\n").toUtf8());
}

}  // namespace

int main(int argc, char** argv) {
  // A headless host: no display unless one is asked for.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(QuietMessages);
  QApplication app(argc, argv);

  runner::TRunOptions options;
  QString scenarioFile, normalizeFile;
  const QStringList args = app.arguments().mid(1);
  for (qsizetype i = 0; i < args.size(); ++i) {
    const QString& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if ((a == "--db" || a == "--module" || a == "--timeout" || a == "--normalize") && !hasValue) {
      Complain(a + " needs a value");
      Print(stderr, kUsage);
      return 1;
    }
    if (a == "--db") {
      options.Db = args[++i];
    } else if (a == "--module") {
      options.Module = args[++i];
    } else if (a == "--timeout") {
      QString why;
      const int ms = runner::TimeoutMs(args[++i], &why);
      if (ms < 0) {
        Complain(why);
        return 1;
      }
      options.TimeoutMs = ms;
    } else if (a == "--normalize") {
      normalizeFile = args[++i];
    } else if (a == "--help" || a == "-h") {
      Print(stdout, kUsage);
      return 0;
    } else if (a.startsWith("--") || !scenarioFile.isEmpty()) {
      Complain("unexpected argument " + a);
      Print(stderr, kUsage);
      return 1;
    } else {
      scenarioFile = a;
    }
  }

  if (!normalizeFile.isEmpty()) {
    QJsonObject doc;
    if (!ReadJson(normalizeFile, &doc)) return 1;
    Print(stdout, runner::CanonicalJson(doc));
    return 0;
  }
  if (scenarioFile.isEmpty()) {
    Print(stderr, kUsage);
    return 1;
  }
  if (options.Module.isEmpty()) options.Module = DefaultModule();

  QJsonObject scenario;
  if (!ReadJson(scenarioFile, &scenario)) return 1;
  const runner::TRunOutcome outcome = runner::RunScenario(scenario, options);
  Print(stdout, runner::CanonicalJson(outcome.Transcript));
  if (outcome.ExitStatus != 0) Complain(outcome.Reason);
  return outcome.ExitStatus;
}
