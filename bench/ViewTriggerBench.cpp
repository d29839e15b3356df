// The trigger dialog at size: the data select picker opened over 10,000 schemas with one row
// picked and returned, and the dialog opened on a 1,000-column table with its UPDATE OF list
// filled.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTimer>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/DataSelectFrn.h"
#include "plugin/KelForms.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateTriggerFrn.h"

using namespace kel;

namespace {

constexpr int kPickerRows = 10000;
constexpr int kColumns = 1000;

QJsonObject Catalog() {
  QJsonArray schemas;
  for (int i = 0; i < kPickerRows; ++i)
    schemas.append(
        QJsonObject{{"Schema Name", QStringLiteral("SCHEMA_%1").arg(i, 5, 10, QChar('0'))},
                    {"Created", "2024-01-01"}});
  QJsonArray columns;
  for (int i = 1; i <= kColumns; ++i)
    columns.append(QJsonObject{{"ColID", QString::number(i)},
                               {"Column Name", QStringLiteral("COL_%1").arg(i)},
                               {"Data Type", "NUMBER"}});
  return QJsonObject{{"CreateTrigger.LoadSchema", schemas},
                     {"CreateTrigger.LoadColumn_01", columns}};
}

// A fixture host serving the big lists; installed as the module's application while it lives.
struct TBigHost {
  TBigHost()
      : Connection(QJsonObject{{"user", "APP"}, {"users", QJsonArray{"APP"}}}, Catalog()),
        Host(&Connection, QJsonObject()) {
    SetApplication(&Host);
  }
  ~TBigHost() { SetApplication(nullptr); }
  host::TFixtureConnection Connection;
  host::TRecordingHost Host;
};

TCreateTriggerFrm* OpenOnTable() {
  auto* form = new TCreateTriggerFrm(nullptr);
  form->SetParentControl(nullptr);
  TXLink link;
  link.SetVerb("AddTable");
  link.AddParams("P_Schema", "APP");
  link.AddParams("P_Table", "BIG");
  form->ReadParams(&link);
  form->show();
  return form;
}

void BM_PickerOpenAndPick(benchmark::State& state) {
  TBigHost host;
  std::unique_ptr<TCreateTriggerFrm> form(OpenOnTable());
  auto* schema = form->findChild<QLineEdit*>("SchemaEd");
  for (auto _ : state) {
    // The user's part: the row is chosen and OK pressed as soon as the picker is up.
    QTimer::singleShot(0, [] {
      if (!DataSelectFrm) return;
      DataSelectFrm->SetFocusedRow(kPickerRows / 2);
      DataSelectFrm->findChild<QPushButton*>("OkBtn")->click();
    });
    form->SchemaSearchBtnClick();
    if (schema->text() != QStringLiteral("SCHEMA_05000")) state.SkipWithError("no pick returned");
    state.PauseTiming();
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_PickerOpenAndPick)->Unit(benchmark::kMillisecond);

void BM_TriggerOnThousandColumns(benchmark::State& state) {
  TBigHost host;
  for (auto _ : state) {
    TCreateTriggerFrm* form = OpenOnTable();
    form->findChild<QCheckBox*>("UpdateChk")->setChecked(true);
    form->findChild<QRadioButton*>("UpdateRadio2")->setChecked(true);
    state.PauseTiming();
    if (form->UpdateColumnsTreeList()->RowCount() != kColumns)
      state.SkipWithError("columns not loaded");
    delete form;
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_TriggerOnThousandColumns)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
