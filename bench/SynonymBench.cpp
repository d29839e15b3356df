// The synonym dialog's object search at size: 20,000 objects found and listed, 500 of them moved
// into the synonym list, and the 500 statements built.
#include <benchmark/benchmark.h>

#include <QAbstractButton>
#include <QApplication>
#include <QItemSelectionModel>
#include <QJsonArray>
#include <QJsonObject>
#include <memory>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/KelForms.h"
#include "plugin/KelTreeList.h"
#include "schema/CreateSynonymFrn.h"

using namespace kel;

namespace {

constexpr int kObjects = 20000;
constexpr int kSelected = 500;

QJsonObject Catalog() {
  static const char* const kTypes[] = {"TABLE", "VIEW", "PACKAGE", "PROCEDURE", "SEQUENCE"};
  QJsonArray objects;
  for (int i = 0; i < kObjects; ++i)
    objects.append(QJsonObject{{"OBJECT_NAME", QStringLiteral("OBJ_%1").arg(i, 5, 10, QChar('0'))},
                               {"OBJECT_TYPE", kTypes[i % 5]}});
  return QJsonObject{{"CreateSynonymFrn.Object03", objects}};
}

struct TBigHost {
  TBigHost()
      : Connection(QJsonObject{{"user", "APP"}, {"users", QJsonArray{"APP", "HR"}}}, Catalog()),
        Host(&Connection, QJsonObject()) {
    SetApplication(&Host);
  }
  ~TBigHost() { SetApplication(nullptr); }
  host::TFixtureConnection Connection;
  host::TRecordingHost Host;
};

// The user's selection of many rows at once (Ctrl and Shift clicks) as one selection change.
void Select(TKelTreeList* list, const QList<int>& rows) {
  QItemSelection selection;
  for (int r : rows) {
    const QModelIndex index = list->model()->index(r, 0);
    selection.select(index, index);
  }
  list->selectionModel()->select(selection,
                                 QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

// Search, select every 40th object, move them, build the statements.
void BM_SearchMoveBuild(benchmark::State& state) {
  TBigHost host;
  auto form = std::make_unique<TCreateSynonymFrm>(nullptr);
  form->SetParentControl(nullptr);
  form->show();
  auto* obj = form->findChild<TKelTreeList*>(QStringLiteral("ObjTList"));
  auto* syn = form->findChild<TKelTreeList*>(QStringLiteral("SynTList"));
  QList<int> rows;
  for (int i = 0; i < kSelected; ++i) rows << i * (kObjects / kSelected);
  for (auto _ : state) {
    form->SearchBtnClick();
    Select(obj, rows);
    form->RightBtnClick();
    form->ViewSqlBtnClick();
    state.PauseTiming();
    if (obj->RowCount() != kObjects - kSelected || syn->RowCount() != kSelected ||
        form->SqlMemo().Count() != kSelected)
      state.SkipWithError("the objects did not move");
    syn->ClearRows();
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_SearchMoveBuild)->Unit(benchmark::kMillisecond);

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
