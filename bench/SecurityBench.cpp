// The grant editor at size: a user holding 2,000 object privileges and 250 system privileges.
// Filling the grant pages, moving every system privilege out and back, and building the GRANT /
// REVOKE text after changes on every page.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QTabWidget>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"
#include "plugin/KelTreeList.h"
#include "security/CreateUserFrn.h"
#include "security/GrantEditor.h"

using namespace kel;

namespace {

constexpr int kObjectPrivileges = 2000;
constexpr int kHeldSystemPrivileges = 250;
constexpr int kSystemPrivileges = 300;

QJsonObject BigGranteeCatalog() {
  QJsonArray objects;
  const char* privileges[] = {"SELECT", "INSERT", "UPDATE", "DELETE"};
  for (int i = 0; i < kObjectPrivileges; ++i)
    objects.append(
        QJsonObject{{"Privilege", privileges[i % 4]},
                    {"Object Owner", QStringLiteral("OWNER_%1").arg(i % 7)},
                    {"Object Name", QStringLiteral("TABLE_%1").arg(i / 4, 4, 10, QChar('0'))}});
  QJsonArray system;
  for (int i = 0; i < kSystemPrivileges; ++i) {
    const QString name = QStringLiteral("PRIVILEGE %1").arg(i, 3, 10, QChar('0'));
    const bool held = i < kHeldSystemPrivileges;
    system.append(QJsonObject{{"Privilege", held ? name : QString()},
                              {"Name", name},
                              {"Property", "0"},
                              {"ADMIN_OPTION", held && i % 3 == 0 ? "YES" : "NO"}});
  }
  return QJsonObject{
      {"CreateUserFrn.Alt.001", QJsonArray{QJsonObject{{"PASSWORD", "PASSWORD"},
                                                       {"EXTERNAL_NAME", ""},
                                                       {"PROFILE", "DEFAULT"},
                                                       {"DEFAULT_TABLESPACE", "USERS"},
                                                       {"TEMPORARY_TABLESPACE", "TEMP"},
                                                       {"ACCOUNT_STATUS", "OPEN"}}}},
      {"SchUserNrn.Object Priv", objects},
      {"CreateRoleFrn.002", system}};
}

struct TBigHost {
  TBigHost()
      : Connection(QJsonObject{{"user", "APP"},
                               {"users", QJsonArray{"APP", "BIG"}},
                               {"tablespaces", QJsonArray{"USERS", "TEMP"}}},
                   BigGranteeCatalog()),
        Host(&Connection, QJsonObject()) {
    SetApplication(&Host);
  }
  ~TBigHost() { SetApplication(nullptr); }
  host::TFixtureConnection Connection;
  host::TRecordingHost Host;
};

TCreateUserFrm* OpenBig() {
  auto* form = new TCreateUserFrm(nullptr);
  form->SetParentControl(nullptr);
  TXLink link;
  link.SetVerb("Alter");
  link.AddParams("IsAlter", "True");
  link.AddParams("P_UserName", "BIG");
  form->ReadParams(&link);
  form->show();
  return form;
}

// Shows the system and object privilege pages, which fills them.
void FillPages(TCreateUserFrm* form) {
  auto* pages = form->findChild<QTabWidget*>("MainPage");
  pages->setCurrentIndex(3);
  pages->setCurrentIndex(4);
}

void BM_PageFill(benchmark::State& state) {
  TBigHost host;
  for (auto _ : state) {
    state.PauseTiming();
    TCreateUserFrm* form = OpenBig();
    state.ResumeTiming();
    FillPages(form);
    state.PauseTiming();
    if (form->GrantEditor()->ObjTreeList()->RowCount() != kObjectPrivileges ||
        form->GrantEditor()->GrantedPrivilegeTreeList()->RowCount() != kHeldSystemPrivileges)
      state.SkipWithError("pages not filled");
    delete form;
    host.Host.ClearEvents();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_PageFill)->Unit(benchmark::kMillisecond);

void BM_MoveAllBothWays(benchmark::State& state) {
  TBigHost host;
  TCreateUserFrm* form = OpenBig();
  FillPages(form);
  TGrantEditor* grants = form->GrantEditor();
  for (auto _ : state) {
    grants->SystemUpAllBtnClick();
    grants->SystemDownAllBtnClick();
  }
  if (grants->GrantedPrivilegeTreeList()->RowCount() != kSystemPrivileges)
    state.SkipWithError("rows lost");
  delete form;
}
BENCHMARK(BM_MoveAllBothWays)->Unit(benchmark::kMillisecond);

void BM_GrantBuild(benchmark::State& state) {
  TBigHost host;
  TCreateUserFrm* form = OpenBig();
  FillPages(form);
  TGrantEditor* grants = form->GrantEditor();
  // Changes on every page: half the system privileges revoked, every tenth object grant
  // revoked, the remaining privileges granted.
  QList<int> half;
  for (int r = 0; r < kHeldSystemPrivileges; r += 2) half << r;
  grants->GrantedPrivilegeTreeList()->SelectRows(half);
  grants->SystemUpBtnClick();
  grants->PrivilegeTreeList()->SelectRows({0, 1, 2});
  grants->SystemDownBtnClick();
  for (int r = 0; r < kObjectPrivileges; r += 10) grants->ObjTreeList()->SetCell(r, 0, "True");
  int lines = 0;
  for (auto _ : state) {
    TSqlMemo memo;
    grants->AddStatements(memo);
    lines = memo.Count();
    benchmark::DoNotOptimize(lines);
  }
  // The three rows moved back down are loaded ones again: they give nothing.
  if (lines != kObjectPrivileges / 10 + kHeldSystemPrivileges / 2 - 3)
    state.SkipWithError(
        QStringLiteral("unexpected line count: %1").arg(lines).toStdString().c_str());
  state.counters["lines"] = lines;
  delete form;
}
BENCHMARK(BM_GrantBuild)->Unit(benchmark::kMillisecond);

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
