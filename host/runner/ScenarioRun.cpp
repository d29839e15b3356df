#include "host/runner/ScenarioRun.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLibrary>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <cstdio>
#include <memory>
#include <mutex>
#include <thread>

#include "host/core/FixtureConnection.h"
#include "host/core/ModuleFile.h"
#include "host/core/RecordingHost.h"
#include "host/runner/StepPlayer.h"
#if defined(NOD_HAVE_SQL_CONNECTION)
#include "host/core/SqlConnection.h"
#endif

namespace runner {

namespace {

constexpr int kNoResult = INT_MIN;  // Result before the module writes it

QString LinkValue(const QJsonValue& v) {
  if (v.isBool()) return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
  if (v.isDouble()) {
    const double d = v.toDouble();
    return d == double(qint64(d)) ? QString::number(qint64(d)) : QString::number(d);
  }
  return v.toString();
}

// Last resort against a scenario stuck where no timer runs (a busy loop in a handler): ends the
// process with status 2 a while after the scenario's time limit. The thread is joined when the
// run ends, so it never outlives the objects it reads.
class THardWatchdog {
 public:
  explicit THardWatchdog(int ms)
      : FThread([this, ms] {
          std::unique_lock lock(FMutex);
          if (FWake.wait_for(lock, std::chrono::milliseconds(ms), [this] { return FDone; })) return;
          std::fputs("newobjdlg-run: the scenario is stuck (no event processed); aborted\n",
                     stderr);
          std::fflush(stderr);
          std::_Exit(2);
        }) {}
  ~THardWatchdog() {
    {
      std::lock_guard lock(FMutex);
      FDone = true;
    }
    FWake.notify_all();
    FThread.join();
  }

 private:
  std::mutex FMutex;
  std::condition_variable FWake;
  bool FDone = false;
  std::thread FThread;  // last: starts once the members it uses exist
};

class TRun : public QObject {
 public:
  TRun(const QJsonObject& scenario, const TRunOptions& options)
      : FScenario(scenario), FOptions(options), FPlayer(FWindows) {}

  TRunOutcome Run();

 private:
  bool Prepare(QString* why);
  bool WriteFiles(QString* why);
  QWidget* Owner(const QString& name);
  kel::TXLink* MakeLink(const QJsonValue& link);
  bool CallOpen(const QString& object, const QJsonValue& link, int* result, QString* why);

  void Tick();
  void Settle();
  void Fail(const QString& why);
  void Finish();
  void CloseAll();

  enum class TState { Playing, Finished };

  const QJsonObject& FScenario;
  const TRunOptions& FOptions;
  QLibrary FLibrary;
  TOpenProc FOpen = nullptr;
  std::unique_ptr<host::TConnection> FConnection;
  std::unique_ptr<host::TRecordingHost> FHost;
  QTemporaryDir FSettings;
  TWindowTracker FWindows;
  TStepPlayer FPlayer;
  QHash<QString, QWidget*> FOwners;
  std::vector<std::unique_ptr<QWidget>> FOwnerWidgets;

  QJsonArray FSteps;
  qsizetype FNext = 0;
  TState FState = TState::Playing;
  QString FReason;
  QStringList FOpenAtEnd;
  bool FOpenReturned = false;
  QList<int> FStepLevels;  // the event-loop level at which each running step started
  QTimer FTicker;          // plays the next step
  QEventLoop FLoop;
  QTimer FCloser;
};

bool TRun::Prepare(QString* why) {
  if (!host::CheckModuleFile(FOptions.Module, why)) return false;
  FLibrary.setFileName(FOptions.Module);
  if (!FLibrary.load()) {
    *why = QStringLiteral("cannot load the module %1: %2")
               .arg(FOptions.Module, FLibrary.errorString());
    return false;
  }
  FOpen = reinterpret_cast<TOpenProc>(FLibrary.resolve("Open"));
  if (!FOpen) {
    *why = QStringLiteral("the module %1 exports no Open").arg(FOptions.Module);
    return false;
  }
  if (FScenario.contains("catalog")) {
    FConnection = std::make_unique<host::TFixtureConnection>(
        FScenario.value("connection").toObject(), FScenario.value("catalog").toObject());
  } else {
#if defined(NOD_HAVE_SQL_CONNECTION)
    QString error;
    FConnection = host::OpenConnection(FOptions.Db, &error);
    if (!FConnection) {
      *why = QStringLiteral("cannot open the database: ") + error;
      return false;
    }
#else
    *why = QStringLiteral(
        "this runner was built without database connections: give the scenario "
        "a \"catalog\"");
    return false;
#endif
  }
  if (!FSettings.isValid()) {
    *why = QStringLiteral("cannot create a temporary settings folder");
    return false;
  }
  FHost = std::make_unique<host::TRecordingHost>(FConnection.get(), FScenario);
  FHost->SetModule(FOpen, QFileInfo(FOptions.Module).fileName());
  FHost->SetSettingsDir(FSettings.path());
  FWindows.SetChildWindows([this] { return FHost->ChildWindows(); });
  FPlayer.OnEvent = [this](const QJsonObject& e) { FHost->AddEvent(e); };
  FPlayer.OnOpen = [this](const QJsonObject& step, QString* why) {
    int result = kNoResult;
    return CallOpen(step.value("open").toString(), step.value("link"), &result, why);
  };
  FSteps = FScenario.value("steps").toArray();
  return WriteFiles(why);
}

// The scenario's "files": text files that exist before the dialog opens.
bool TRun::WriteFiles(QString* why) {
  const QJsonObject files = FScenario.value("files").toObject();
  for (auto it = files.begin(); it != files.end(); ++it) {
    QFile f(it.key());
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
      *why = QStringLiteral("cannot write %1: %2").arg(it.key(), f.errorString());
      return false;
    }
    f.write(it->toString().toUtf8());
  }
  return true;
}

// A hidden widget per owner name: links with the same owner share the owner's windows.
QWidget* TRun::Owner(const QString& name) {
  if (QWidget* w = FOwners.value(name)) return w;
  auto w = std::make_unique<QWidget>();
  w->setObjectName(name);
  FWindows.Ignore(w.get());
  FOwners.insert(name, w.get());
  FOwnerWidgets.push_back(std::move(w));
  return FOwnerWidgets.back().get();
}

kel::TXLink* TRun::MakeLink(const QJsonValue& link) {
  if (!link.isObject()) return nullptr;
  const QJsonObject o = link.toObject();
  const QString owner = o.contains("owner") ? o.value("owner").toString() : QStringLiteral("Main");
  auto* x = new kel::TXLink(Owner(owner));  // freed with its owner
  x->SetVerb(o.value("verb").toString());
  const QJsonObject params = o.value("params").toObject();
  for (auto it = params.begin(); it != params.end(); ++it) x->AddParams(it.key(), LinkValue(*it));
  return x;
}

bool TRun::CallOpen(const QString& object, const QJsonValue& link, int* result, QString* why) {
  if (!link.isUndefined() && !link.isNull() && !link.isObject()) {
    *why = QStringLiteral("\"link\" must be an object");
    return false;
  }
  kel::TXLink* x = MakeLink(link);
  const QMap<QString, QString> before = x ? x->Params() : QMap<QString, QString>();
  FOpen(FHost.get(), result, nullptr, x, object.toUtf8().constData());
  if (x) FHost->ReportLinkParams(object, before, *x);
  return true;
}

// Lets queued work run: zero-delay timers, queued signals, window activation.
void TRun::Settle() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents(QEventLoop::AllEvents);
}

// Event loops running now: a step that opens a modal dialog runs one more until it closes.
int LoopLevel() {
  return QThread::currentThread()->loopLevel();
}

void TRun::Tick() {
  if (FState != TState::Playing) return;
  // A step that lets events run (a focus change) must finish before the next one starts; only
  // a modal dialog's own event loop, opened by the step, plays the next steps meanwhile.
  if (!FStepLevels.isEmpty() && LoopLevel() <= FStepLevels.last()) {
    FTicker.start(1);
    return;
  }
  Settle();
  if (FState != TState::Playing) return;
  if (FNext >= FSteps.size()) return Finish();
  const qsizetype index = FNext++;
  const QJsonValue step = FSteps.at(index);
  FStepLevels.push_back(LoopLevel());
  FTicker.start(0);
  QString why;
  const bool played = step.isObject() && FPlayer.Play(step.toObject(), &why);
  FStepLevels.pop_back();
  if (played) return;
  if (!step.isObject()) why = QStringLiteral("a step must be an object");
  const QString text =
      QString::fromUtf8(QJsonDocument(step.toObject()).toJson(QJsonDocument::Compact));
  Fail(QStringLiteral("step %1 %2: %3").arg(QString::number(index + 1), text, why));
}

void TRun::Fail(const QString& why) {
  if (FState != TState::Playing) return;
  FReason = why;
  Finish();
}

// After the last step (or a failed one): notes the windows still open and closes them.
void TRun::Finish() {
  if (FState == TState::Finished) return;
  FState = TState::Finished;
  FTicker.stop();
  for (QWidget* w : FWindows.OpenWindows()) FOpenAtEnd << w->objectName();
  CloseAll();
  if (!FOpenReturned) {
    // A handler may still open windows while the modal dialogs unwind: keep closing them.
    connect(&FCloser, &QTimer::timeout, this, [this] { CloseAll(); });
    FCloser.start(10);
  }
  if (FLoop.isRunning()) FLoop.exit(0);
}

// Closes every open window without asking: dialogs end with Cancel, child windows are freed.
void TRun::CloseAll() {
  QList<QWidget*> open = FWindows.OpenWindows();
  for (auto it = open.rbegin(); it != open.rend(); ++it) {
    if (auto* dialog = qobject_cast<QDialog*>(*it)) {
      dialog->done(kel::mrCancel);
    } else {
      (*it)->hide();
      (*it)->deleteLater();
    }
  }
}

TRunOutcome TRun::Run() {
  TRunOutcome out;
  const int timeout = FOptions.TimeoutMs;
  THardWatchdog hard(timeout + 10000);
  int result = kNoResult;
  QString why;
  if (!Prepare(&why)) {
    out.ExitStatus = 1;
    out.Reason = why;
    out.Transcript = {{"result", QJsonValue()}, {"open", QJsonArray()}, {"events", QJsonArray()}};
    return out;
  }
  QTimer watchdog;
  watchdog.setSingleShot(true);
  connect(&watchdog, &QTimer::timeout, this, [this, timeout] {
    Fail(QStringLiteral("the scenario did not finish within %1 s").arg(timeout / 1000.0));
  });
  watchdog.start(timeout);

  FTicker.setSingleShot(true);
  connect(&FTicker, &QTimer::timeout, this, [this] { Tick(); });
  FTicker.start(0);
  if (!CallOpen(FScenario.value("object").toString(), FScenario.value("link"), &result, &why))
    Fail(why);
  FOpenReturned = true;
  FCloser.stop();
  // Child windows and previews stay open after Open returns: play on in an event loop.
  if (FState == TState::Playing) FLoop.exec();
  for (int i = 0; i < 50; ++i) {
    Settle();
    if (FWindows.OpenWindows().isEmpty()) break;
    CloseAll();
  }
  watchdog.stop();

  out.ExitStatus = FReason.isEmpty() ? 0 : 2;
  out.Reason = FReason;
  out.Transcript = {{"result", result == kNoResult ? QJsonValue() : QJsonValue(result)},
                    {"open", QJsonArray::fromStringList(FOpenAtEnd)},
                    {"events", FHost->Events()}};
  // Free the module's windows while the module is still loaded.
  FOwnerWidgets.clear();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return out;
}

}  // namespace

QString ScenarioProblem(const QJsonObject& scenario) {
  if (!scenario.value("object").isString()) return QStringLiteral("the scenario has no \"object\"");
  const QJsonValue link = scenario.value("link");
  if (!link.isUndefined() && !link.isNull() && !link.isObject())
    return QStringLiteral("\"link\" must be an object");
  const QJsonValue steps = scenario.value("steps");
  if (!steps.isUndefined() && !steps.isArray()) return QStringLiteral("\"steps\" must be a list");
  for (const char* key : {"connection", "catalog", "answers", "inputs", "files"}) {
    const QJsonValue v = scenario.value(QLatin1String(key));
    if (!v.isUndefined() && !v.isObject())
      return QStringLiteral("\"%1\" must be an object").arg(QLatin1String(key));
  }
  for (const char* key : {"saveAs", "execute"}) {
    const QJsonValue v = scenario.value(QLatin1String(key));
    if (!v.isUndefined() && !v.isArray())
      return QStringLiteral("\"%1\" must be a list").arg(QLatin1String(key));
  }
  return {};
}

TRunOutcome RunScenario(const QJsonObject& scenario, const TRunOptions& options) {
  if (const QString problem = ScenarioProblem(scenario); !problem.isEmpty()) {
    TRunOutcome out;
    out.ExitStatus = 1;
    out.Reason = problem;
    out.Transcript = {{"result", QJsonValue()}, {"open", QJsonArray()}, {"events", QJsonArray()}};
    return out;
  }
  TRun run(scenario, options);
  return run.Run();
}

}  // namespace runner
