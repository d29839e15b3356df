// The workbench's responsiveness: start to a ready window on the demo database, and a request
// through the module's `Open` to a shown dialog.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeWidget>
#include <memory>

#include "host/core/SqlConnection.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/WorkbenchWindow.h"
#include "plugin/Dispatch.h"

// The module's entry point, linked into this program.
extern "C" void NOD_CALL Open(kel::THost* HostApplication, int* Result, QWidget* ParentControl,
                              kel::TXLink* Link, const char* ObjectType);

namespace {

QTemporaryDir* gDir = nullptr;

QString DemoUrl() {
  return QStringLiteral("demo:") + gDir->filePath(QStringLiteral("demo.db"));
}

std::unique_ptr<wb::TWorkbenchWindow> StartWorkbench() {
  QString error;
  auto connection = host::OpenConnection(DemoUrl(), &error);
  if (!connection) return nullptr;
  auto window = std::make_unique<wb::TWorkbenchWindow>(
      std::move(connection), wb::TWorkbenchOptions{QStringLiteral("demo"), gDir->path()});
  window->Host().Module().Use(&Open, QStringLiteral("NewObjDlg.dll"));
  window->show();
  // Ready: the schemas are listed and every pending paint and layout has run.
  window->Browser()->topLevelItem(0)->setExpanded(true);
  QApplication::processEvents();
  return window;
}

void BM_StartToReadyWindow(benchmark::State& state) {
  for (auto _ : state) {
    auto window = StartWorkbench();
    if (!window) {
      state.SkipWithError("the demo database could not be opened");
      break;
    }
    benchmark::DoNotOptimize(window->Browser()->topLevelItem(0)->childCount());
    state.PauseTiming();
    window.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_StartToReadyWindow)->Unit(benchmark::kMillisecond);

// The sequence dialog when the module has it, else the statement preview.
bool SequenceRegistered() {
  for (const kel::TDispatchRow& row : kel::DispatchTable())
    if (qstrcmp(row.Word, "SEQUENCE") == 0) return row.Routine != nullptr;
  return false;
}

void BM_OpenToShownDialog(benchmark::State& state) {
  auto window = StartWorkbench();
  if (!window) {
    state.SkipWithError("the demo database could not be opened");
    return;
  }
  const bool modal = SequenceRegistered();
  state.SetLabel(modal ? "SEQUENCE" : "VIEWSQLFRN");
  for (auto _ : state) {
    QElapsedTimer clock;
    qint64 shownAt = -1;
    if (modal) {
      // Open returns when the dialog closes: time up to the moment it is up and idle.
      QTimer::singleShot(0, [&] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
          shownAt = clock.nsecsElapsed();
          dialog->done(kel::mrCancel);
        }
      });
      kel::TXLink link(window.get());
      clock.start();
      window->OpenObject(QStringLiteral("SEQUENCE"), &link);
    } else {
      // A new owner each time, so that a new preview window is created and shown.
      auto owner = std::make_unique<QWidget>(window.get());
      clock.start();
      window->Host().OpenViewSQLFrm(owner.get(), QStringLiteral("CREATE SEQUENCE APP.S1;\r\n"));
      shownAt = clock.nsecsElapsed();
    }
    if (shownAt < 0) {
      state.SkipWithError("no dialog was shown");
      break;
    }
    state.SetIterationTime(double(shownAt) / 1e9);
  }
}
BENCHMARK(BM_OpenToShownDialog)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QTemporaryDir dir;
  gDir = &dir;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
