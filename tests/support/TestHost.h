// A fixture host for tests: fixture connection + recording host, installed as the module's
// application, with the module's dispatch reachable for previews.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <functional>

#include "host/core/FixtureConnection.h"
#include "host/core/RecordingHost.h"

namespace test {

// `Open` as the module exports it, over the dialogs the test program registered.
void NOD_CALL TestOpen(kel::THost* host, int* result, QWidget* parent, kel::TXLink* link,
                       const char* word);

// The demo database, created once per test program in a temporary folder.
host::TConnection* DemoConnection();

// Parses a JSON object written in a test (single quotes allowed for readability).
QJsonObject Json(const char* text);

class TTestHost {
 public:
  // `scenario` as in a scenario file: "connection", "catalog", "answers", "inputs", "saveAs",
  // "execute".
  explicit TTestHost(const QJsonObject& scenario = {});
  ~TTestHost();

  host::TRecordingHost& Host() { return FHost; }
  const QJsonArray& Events() const { return FHost.Events(); }
  // The events of one kind ("query", "message", "preview", "execute", ...).
  QList<QJsonObject> EventsOf(const QString& kind) const;
  // Opens `word` through the dispatch; `drive` runs once the modal dialog is up (or at once for
  // non-modal ones) with the dialog as argument. Returns Result (-1 when never written).
  int Open(const char* word, kel::TXLink* link = nullptr,
           const std::function<void(QWidget*)>& drive = {});

 private:
  host::TFixtureConnection FConnection;
  host::TRecordingHost FHost;
};

}  // namespace test
