#include "tests/support/TestHost.h"

#include <QApplication>
#include <QDialog>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include "host/core/SqlConnection.h"
#include "plugin/Dispatch.h"

namespace test {

void NOD_CALL TestOpen(kel::THost* host, int* result, QWidget* parent, kel::TXLink* link,
                       const char* word) {
  kel::SetApplication(host);
  kel::Dispatch(QString::fromUtf8(word), result, parent, link);
}

host::TConnection* DemoConnection() {
  // Kept for the whole program: the connection must outlive every dialog that used it.
  static QTemporaryDir* dir = new QTemporaryDir;
  static host::TConnection* connection = [] {
    QString error;
    auto c = host::OpenConnection("demo:" + dir->filePath("demo.db"), &error);
    if (!c) qFatal("cannot create the demo database: %s", qPrintable(error));
    return c.release();
  }();
  return connection;
}

QJsonObject Json(const char* text) {
  QString s = QString::fromUtf8(text);
  s.replace(u'\'', u'"');
  QJsonParseError error;
  const QJsonDocument doc = QJsonDocument::fromJson(s.toUtf8(), &error);
  if (error.error != QJsonParseError::NoError)
    qFatal("bad test JSON: %s", qPrintable(error.errorString()));
  return doc.object();
}

TTestHost::TTestHost(const QJsonObject& scenario)
    : FConnection(scenario.value("connection").toObject(), scenario.value("catalog").toObject()),
      FHost(&FConnection, scenario) {
  FHost.SetModule(&TestOpen, QStringLiteral("NewObjDlg.dll"));
  kel::SetApplication(&FHost);
}

TTestHost::~TTestHost() {
  for (QWidget* w : FHost.ChildWindows()) delete w;
  kel::SetApplication(nullptr);
}

QList<QJsonObject> TTestHost::EventsOf(const QString& kind) const {
  QList<QJsonObject> out;
  for (const QJsonValue& e : FHost.Events())
    if (e.toObject().value("event").toString() == kind) out << e.toObject();
  return out;
}

int TTestHost::Open(const char* word, kel::TXLink* link,
                    const std::function<void(QWidget*)>& drive) {
  int result = -1;
  bool driven = false;
  if (drive) {
    QTimer::singleShot(0, [&] {
      if (QWidget* modal = QApplication::activeModalWidget()) {
        driven = true;
        drive(modal);
        // Never leave a test hanging in a modal loop.
        if (auto* dlg = qobject_cast<QDialog*>(modal); dlg && dlg->isVisible())
          dlg->done(kel::mrCancel);
      }
    });
  }
  TestOpen(&FHost, &result, nullptr, link, word);
  if (drive && !driven) {
    const QList<QWidget*> children = FHost.ChildWindows();
    if (!children.isEmpty()) drive(children.last());
  }
  return result;
}

}  // namespace test
