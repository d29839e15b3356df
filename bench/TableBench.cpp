// The table dialog at size: a table of 1,000 columns and 100 constraints loaded in alter mode,
// the full ALTER build after changes all over it, and single edits in the 1,000-row column list.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <memory>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/KelForms.h"
#include "plugin/KelTreeList.h"
#include "tables/CreateTableFrn.h"

using namespace kel;

namespace {

constexpr int kColumns = 1000;
constexpr int kConstraints = 100;  // one primary key, 49 unique keys, 50 checks

QString ColumnName(int i) {
  return QStringLiteral("COL_%1").arg(i, 4, 10, QChar('0'));
}

// The catalog of APP.BIG as the fixture connection answers it.
QJsonObject BigTableCatalog() {
  QJsonArray columns;
  for (int i = 1; i <= kColumns; ++i) {
    const int kind = i % 4;
    const QString type = kind == 0   ? "NUMBER"
                         : kind == 1 ? "VARCHAR2"
                         : kind == 2 ? "DATE"
                                     : "CHAR";
    columns.append(QJsonObject{{"Column", ColumnName(i)},
                               {"Data Type", type},
                               {"Length", kind == 1   ? "100"
                                          : kind == 3 ? "1"
                                                      : "22"},
                               {"Precision", kind == 0 ? "12" : ""},
                               {"Scale", kind == 0 ? "2" : ""},
                               {"Null?", i % 7 == 0 ? "N" : "Y"},
                               {"Default", i % 5 == 0 ? "0" : ""},
                               {"Comments", i % 3 == 0 ? QStringLiteral("Column %1").arg(i) : ""},
                               {"column_id", QString::number(i)}});
  }
  QJsonArray constraints;
  QJsonArray pairs;
  auto add = [&](const QString& name, const QString& type, const QString& condition,
                 const QString& column) {
    constraints.append(QJsonObject{{"Generated", "USER NAME"},
                                   {"Type", type},
                                   {"Search Condition", condition},
                                   {"Ref. Owner", ""},
                                   {"Ref. Const", ""},
                                   {"Delete Rule", ""},
                                   {"Constraint", name},
                                   {"Status", "ENABLED"},
                                   {"Deferrable", "NOT DEFERRABLE"},
                                   {"Deferred", "IMMEDIATE"},
                                   {"Validated", "VALIDATED"},
                                   {"Rely", ""}});
    if (!column.isEmpty())
      pairs.append(QJsonObject{
          {"binds", QJsonObject{{"P_CONSTRAINT", name}}},
          {"rows", QJsonArray{QJsonObject{{"COLUMN_NAME", column}, {"R_COLUMN_NAME", ""}}}}});
  };
  add("PK_BIG", "Primary Key", "", ColumnName(1));
  for (int i = 1; i < kConstraints / 2; ++i)
    add(QStringLiteral("UK_BIG_%1").arg(i), "Unique Key", "", ColumnName(i * 10 + 1));
  for (int i = 0; i < kConstraints / 2; ++i)
    add(QStringLiteral("CK_BIG_%1").arg(i), "Check", ColumnName(i * 4 + 4) + " >= 0", "");

  const QJsonObject script{
      {"Table Type", ""},         {"Initial", "65536"}, {"Next", "1048576"},
      {"PctIncrease", ""},        {"MinExtents", "1"},  {"MaxExtents", "2147483645"},
      {"PctFree", "10"},          {"PctUsed", "40"},    {"IniTrans", "1"},
      {"MaxTrans", "255"},        {"FreeLists", "1"},   {"FreeList Groups", "1"},
      {"Buffer Pool", "DEFAULT"}, {"Degree", "1"},      {"Logging", "YES"},
      {"Cache", "NOCACHE"},       {"Monitoring", "NO"}, {"Tablespace", "USERS"}};
  return QJsonObject{{"SchTableNrn.Script", QJsonArray{script}},
                     {"SchTableNrn.Column", columns},
                     {"CreateTableFrn.TableComment", QJsonArray{QJsonObject{{"COMMENTS", "Big"}}}},
                     {"CreateTableFrn.Constraint_01", constraints},
                     {"CreateTableFrn.Constraint_03", pairs}};
}

// A fixture host serving the big table; installed as the module's application while it lives.
struct TBigHost {
  TBigHost()
      : Connection(QJsonObject{{"user", "APP"},
                               {"users", QJsonArray{"APP", "HR"}},
                               {"tablespaces", QJsonArray{"USERS"}},
                               {"dataTypes", QJsonArray{"CHAR", "DATE", "NUMBER", "VARCHAR2"}}},
                   BigTableCatalog()),
        Host(&Connection, QJsonObject()) {
    SetApplication(&Host);
  }
  ~TBigHost() { SetApplication(nullptr); }
  host::TFixtureConnection Connection;
  host::TRecordingHost Host;
};

TCreateTableFrm* OpenBig() {
  auto* form = new TCreateTableFrm(nullptr);
  form->SetParentControl(nullptr);
  TXLink link;
  link.SetVerb("Alter");
  link.AddParams("IsAlter", "True");
  link.AddParams("P_Schema", "APP");
  link.AddParams("P_TableName", "BIG");
  form->ReadParams(&link);
  form->show();  // loads the table
  return form;
}

void Edit(TKelTreeList* list, int row, int col, const QString& value) {
  list->SetFocusedRow(row);
  list->EditCell(row, col, value);
}

void BM_AlterLoad(benchmark::State& state) {
  TBigHost host;
  for (auto _ : state) {
    TCreateTableFrm* form = OpenBig();
    state.PauseTiming();
    if (form->ColumnTL()->RowCount() != kColumns) state.SkipWithError("columns not loaded");
    delete form;
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_AlterLoad)->Unit(benchmark::kMillisecond);

void BM_AlterBuild(benchmark::State& state) {
  TBigHost host;
  std::unique_ptr<TCreateTableFrm> form(OpenBig());
  TKelTreeList* list = form->ColumnTL();
  // Changes spread over the table: renames, type, default and null changes, comments, drops
  // and new columns.
  for (int r = 0; r < kColumns; r += 10)
    Edit(list, r, TCreateTableFrm::ccName, ColumnName(r + 1) + "_R");
  for (int r = 3; r < kColumns; r += 8) Edit(list, r, TCreateTableFrm::ccPrec, "14");
  for (int r = 5; r < kColumns; r += 9) Edit(list, r, TCreateTableFrm::ccNull, "True");
  for (int r = 7; r < kColumns; r += 11) Edit(list, r, TCreateTableFrm::ccDefault, "1");
  for (int r = 2; r < kColumns; r += 13) Edit(list, r, TCreateTableFrm::ccComment, "changed");
  for (int i = 0; i < 20; ++i) {
    list->SetFocusedRow(100 + i * 40);
    form->DropFieldBtnClick();
  }
  for (int i = 0; i < 20; ++i) {
    form->AddFieldBtnClick();
    const int r = list->RowCount() - 1;
    Edit(list, r, TCreateTableFrm::ccName, QStringLiteral("NEW_%1").arg(i));
    Edit(list, r, TCreateTableFrm::ccType, "DATE");
  }
  qsizetype size = 0;
  for (auto _ : state) {
    const QString text = form->BuildText();
    size = text.size();
    benchmark::DoNotOptimize(size);
  }
  state.counters["chars"] = double(size);
}
BENCHMARK(BM_AlterBuild)->Unit(benchmark::kMillisecond);

// One committed edit of a column name in the 1,000-row list, with the handlers it runs.
void BM_ColumnNameEdit(benchmark::State& state) {
  TBigHost host;
  std::unique_ptr<TCreateTableFrm> form(OpenBig());
  TKelTreeList* list = form->ColumnTL();
  int i = 0;
  for (auto _ : state) {
    const int row = (i * 37) % kColumns;
    Edit(list, row, TCreateTableFrm::ccName, QStringLiteral("N_%1").arg(i++));
  }
}
BENCHMARK(BM_ColumnNameEdit)->Unit(benchmark::kMicrosecond);

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
