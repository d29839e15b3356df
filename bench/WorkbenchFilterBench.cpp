// The object browser's filter on a schema of 10,000 tables: one keystroke, the tree filtered,
// laid out and painted again.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTreeWidget>

#include "host/core/FixtureConnection.h"
#include "host/workbench/ObjectBrowser.h"

namespace {

const int kObjects = 10000;

// A schema "BIG" with 10,000 tables named like a real application's.
class TBigSchema : public host::TFixtureConnection {
 public:
  TBigSchema() : host::TFixtureConnection(QJsonObject(), QJsonObject()) {}
  kel::TQueryResult OpenQuery(const QString& key, const QString&, const kel::TBindList&) override {
    kel::TQueryResult result;
    result.Columns = {QStringLiteral("NAME")};
    if (key == QLatin1String("Workbench.Schemas")) {
      result.Rows << QStringList{QStringLiteral("BIG")};
    } else if (key == QLatin1String("Workbench.Tables")) {
      static const char* const kAreas[] = {"EMP",   "DEPT",    "ORDER",    "INVOICE",
                                           "STOCK", "PAYROLL", "CUSTOMER", "AUDIT"};
      for (int i = 0; i < kObjects; ++i)
        result.Rows << QStringList{QStringLiteral("%1_%2_T%3")
                                       .arg(QLatin1String(kAreas[i % 8]))
                                       .arg(i / 8, 4, 10, QLatin1Char('0'))
                                       .arg(i % 13)};
    }
    return result;
  }
};

void BM_FilterPerKeystroke(benchmark::State& state) {
  TBigSchema db;
  wb::TObjectBrowser browser(&db);
  browser.resize(360, 900);
  browser.show();
  QTreeWidgetItem* folder = browser.Folder(QStringLiteral("BIG"), QStringLiteral("Tables"));
  if (!folder || folder->childCount() != kObjects) {
    state.SkipWithError("the schema was not listed");
    return;
  }
  folder->setExpanded(true);
  folder->parent()->setExpanded(true);
  QApplication::processEvents();
  // Typing "order_01" and deleting it again, one key at a time.
  const QString word = QStringLiteral("order_01");
  QStringList steps;
  for (qsizetype i = 1; i <= word.size(); ++i) steps << word.left(i);
  for (qsizetype i = word.size() - 1; i >= 0; --i) steps << word.left(i);
  qsizetype step = 0;
  for (auto _ : state) {
    browser.SetFilter(steps[step]);
    step = (step + 1) % steps.size();
    QApplication::processEvents();
  }
}
BENCHMARK(BM_FilterPerKeystroke)->Unit(benchmark::kMillisecond);

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
