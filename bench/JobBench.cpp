// The job object picker at size, on a demo database holding 5,000 procedures with 50,000
// arguments: the picker's lists filled, one procedure chosen and its call built.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QJsonObject>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <memory>

#include "host/core/RecordingHost.h"
#include "host/core/SqlConnection.h"
#include "jobs/CreateJobFrn.h"
#include "jobs/CreateJobObjectFrn.h"
#include "plugin/KelForms.h"

using namespace kel;

namespace {

constexpr int kProcedures = 5000;
constexpr int kArguments = 10;  // per procedure: 50,000 in all

QString ProcName(int i) {
  return QStringLiteral("PROC_%1").arg(i, 4, 10, QChar('0'));
}

// The demo database with the procedures of schema BULK added.
std::unique_ptr<host::TSqlConnection> BulkDatabase(const QString& path) {
  QString error;
  std::unique_ptr<host::TConnection> c = host::OpenConnection("demo:" + path, &error);
  if (!c) qFatal("cannot create the demo database: %s", qPrintable(error));
  std::unique_ptr<host::TSqlConnection> db(static_cast<host::TSqlConnection*>(c.release()));
  QSqlDatabase sql = db->Database();
  sql.transaction();
  QSqlQuery q(sql);
  q.prepare(
      "INSERT INTO ALL_OBJECTS (OWNER, OBJECT_NAME, OBJECT_ID, OBJECT_TYPE, STATUS) "
      "VALUES ('APP', ?, 0, 'PROCEDURE', 'VALID')");
  for (int i = 0; i < kProcedures; ++i) {
    q.addBindValue(ProcName(i));
    q.exec();
  }
  q.prepare(
      "INSERT INTO ALL_ARGUMENTS (OWNER, OBJECT_NAME, ARGUMENT_NAME, POSITION, SEQUENCE, "
      "DATA_TYPE) VALUES ('APP', ?, ?, ?, ?, ?)");
  for (int i = 0; i < kProcedures; ++i)
    for (int a = 1; a <= kArguments; ++a) {
      q.addBindValue(ProcName(i));
      q.addBindValue(QStringLiteral("P_ARG%1").arg(a));
      q.addBindValue(a);
      q.addBindValue(a);
      q.addBindValue(a % 2 ? "NUMBER" : "VARCHAR2");
      q.exec();
    }
  sql.commit();
  return db;
}

void BM_PickerFillAndCall(benchmark::State& state) {
  QTemporaryDir dir;
  std::unique_ptr<host::TSqlConnection> db = BulkDatabase(dir.filePath("bulk.db"));
  host::TRecordingHost recorder(db.get(), QJsonObject());
  SetApplication(&recorder);
  auto job = std::make_unique<TCreateJobFrm>(nullptr);
  job->SetParentControl(nullptr);
  QString call;
  for (auto _ : state) {
    auto picker = std::make_unique<TCreateJobObjectFrm>(job.get());
    picker->SetParentControl(nullptr);  // fills the schema and procedure lists
    auto* objects = picker->findChild<QComboBox*>(QStringLiteral("ObjectNameCmb"));
    objects->setCurrentIndex(objects->findText(ProcName(kProcedures / 2)));
    call = job->ComposeCall(picker->TypeText().toUpper(), picker->SchemaText(),
                            picker->ObjectText(), picker->SubObjectText());
    state.PauseTiming();
    if (objects->count() < kProcedures || !call.contains(QStringLiteral("P_ARG10")))
      state.SkipWithError("the picker did not fill or the call lacks arguments");
    picker.reset();
    recorder.ClearEvents();
    state.ResumeTiming();
  }
  job.reset();
  SetApplication(nullptr);
}
BENCHMARK(BM_PickerFillAndCall)->Unit(benchmark::kMillisecond);

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
