// The index dialog on a table of 1,000 columns: the dialog opened with the table preset (its
// columns listed), 50 columns moved to the index and the CREATE INDEX text built.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QToolButton>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/KelForms.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateIndexFrn.h"

using namespace kel;

namespace {

constexpr int kColumns = 1000;
constexpr int kIndexColumns = 50;

QJsonObject WideTableCatalog() {
  QJsonArray columns;
  for (int i = 1; i <= kColumns; ++i)
    columns.append(QJsonObject{{"Column", QStringLiteral("COL_%1").arg(kColumns + 1 - i)},
                               {"Data Type", i % 2 ? "NUMBER" : "VARCHAR2"},
                               {"Length", i % 2 ? "22" : "100"}});
  return QJsonObject{{"SchTableNrn.Column", columns}};
}

struct TWideHost {
  TWideHost()
      : Connection(QJsonObject{{"user", "APP"},
                               {"users", QJsonArray{"APP"}},
                               {"tables", QJsonObject{{"APP", QJsonArray{"WIDE"}}}}},
                   WideTableCatalog()),
        Host(&Connection, QJsonObject()) {
    SetApplication(&Host);
  }
  ~TWideHost() { SetApplication(nullptr); }
  host::TFixtureConnection Connection;
  host::TRecordingHost Host;
};

void BM_OpenMoveBuild(benchmark::State& state) {
  TWideHost host;
  qsizetype size = 0;
  for (auto _ : state) {
    auto* form = new TCreateIndexFrm(nullptr);
    form->SetParentControl(nullptr);
    TXLink link;
    link.SetVerb("TableCreate");
    link.AddParams("P_Schema", "APP");
    link.AddParams("P_TblName", "WIDE");
    form->ReadParams(&link);
    form->show();
    auto* tv1 = form->findChild<TKelTreeList*>("TableTV1");
    auto* right = form->findChild<QToolButton*>("TableRightBtn");
    for (int i = 0; i < kIndexColumns; ++i) {
      tv1->SetFocusedRow(i * 7);
      right->click();
    }
    form->findChild<QLineEdit*>("IndexNameEd")->setText("WIDE_IX");
    form->ViewSqlBtnClick();
    size = form->MainList().Text().size();
    benchmark::DoNotOptimize(size);
    state.PauseTiming();
    if (tv1->RowCount() != kColumns - kIndexColumns) state.SkipWithError("columns not moved");
    form->Tracker() ? form->Tracker()->SetChanged(false) : void();
    delete form;
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
  state.counters["chars"] = double(size);
}
BENCHMARK(BM_OpenMoveBuild)->Unit(benchmark::kMillisecond);

// The same dialog opened on no table: what the form itself costs.
void BM_OpenEmpty(benchmark::State& state) {
  TWideHost host;
  for (auto _ : state) {
    auto* form = new TCreateIndexFrm(nullptr);
    form->SetParentControl(nullptr);
    form->show();
    state.PauseTiming();
    delete form;
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenEmpty)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
