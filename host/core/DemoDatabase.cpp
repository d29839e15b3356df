#include "host/core/DemoDatabase.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>
#include <filesystem>

#include "host/core/ScriptSplitter.h"

static void InitDemoResource() {
  Q_INIT_RESOURCE(demo);
}

namespace host {

namespace {

// Raised when the layout of what the host adds to a demo database changes, so that databases
// built before are rebuilt.
constexpr char kBuildFormat[] = "nod-demo-2";

// A uniquely named QSqlDatabase connection that is removed when it goes out of scope.
class TScopedSqlite {
 public:
  explicit TScopedSqlite(const QString& path)
      : FName(QStringLiteral("nod-demo-%1").arg(QUuid::createUuid().toString(QUuid::Id128))) {
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), FName);
    db.setDatabaseName(path);
  }
  ~TScopedSqlite() {
    {
      QSqlDatabase db = QSqlDatabase::database(FName, false);
      db.close();
    }
    QSqlDatabase::removeDatabase(FName);
  }
  QSqlDatabase Db() const { return QSqlDatabase::database(FName, false); }

 private:
  QString FName;
};

bool Exec(QSqlDatabase& db, const QString& sql, QString* error) {
  QSqlQuery q(db);
  if (q.exec(sql)) return true;
  if (error) *error = q.lastError().text();
  return false;
}

}  // namespace

QList<QPair<QString, QString>> DemoScripts() {
  InitDemoResource();
  QList<QPair<QString, QString>> scripts;
  const QDir dir(QStringLiteral(":/demo"));
  for (const QString& name : dir.entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name)) {
    QFile f(dir.filePath(name));
    if (f.open(QIODevice::ReadOnly)) scripts.append({name, QString::fromUtf8(f.readAll())});
  }
  return scripts;
}

QString DemoScriptsHash() {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  hash.addData(QByteArrayView(kBuildFormat));
  for (const auto& [name, text] : DemoScripts()) {
    hash.addData(QByteArrayView("\0", 1));
    hash.addData(name.toUtf8());
    hash.addData(QByteArrayView("\0", 1));
    hash.addData(text.toUtf8());
  }
  return QString::fromLatin1(hash.result().toHex());
}

QString StoredDemoHash(const QString& path) {
  if (!QFileInfo(path).isFile()) return QString();
  TScopedSqlite conn(path);
  QSqlDatabase db = conn.Db();
  db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
  if (!db.open()) return QString();
  QSqlQuery q(db);
  if (!q.exec(QStringLiteral("SELECT SCRIPT_HASH FROM NOD_DEMO_BUILD")) || !q.next())
    return QString();
  return q.value(0).toString();
}

namespace {

// The statements a database keeps in its script journal survive a rebuild of the demo: they
// are copied from the old file into the new one before it takes the old one's place.
bool CarryScriptLog(QSqlDatabase& db, const QString& oldPath, QString* error) {
  if (!QFileInfo(oldPath).isFile()) return true;
  QSqlQuery attach(db);
  attach.prepare(QStringLiteral("ATTACH DATABASE ? AS OLD_DEMO"));
  attach.addBindValue(oldPath);
  if (!attach.exec()) {
    if (error) *error = attach.lastError().text();
    return false;
  }
  bool ok = true;
  QSqlQuery has(db);
  if (has.exec(QStringLiteral("SELECT COUNT(*) FROM OLD_DEMO.sqlite_master WHERE type = 'table' "
                              "AND name = 'NOD_SCRIPT_LOG'")) &&
      has.next() && has.value(0).toInt() > 0) {
    ok =
        Exec(db, ScriptLogTableDdl(), error) &&
        Exec(db,
             QStringLiteral("INSERT INTO NOD_SCRIPT_LOG (ID, RUN_AT, CONNECTION, STATEMENT) "
                            "SELECT ID, RUN_AT, CONNECTION, STATEMENT FROM OLD_DEMO.NOD_SCRIPT_LOG "
                            "ORDER BY ID"),
             error);
  }
  has.finish();
  Exec(db, QStringLiteral("DETACH DATABASE OLD_DEMO"), nullptr);
  return ok;
}

}  // namespace

QString MaskPasswords(const QString& statement) {
  // A password follows IDENTIFIED BY [VALUES] and, for a changed password, REPLACE: a
  // double-quoted text, a single-quoted text (quotes doubled inside) or a word. Its quotes stay,
  // its text becomes a mask.
  static const QRegularExpression kPassword(
      QStringLiteral(
          R"re(\b(?:IDENTIFIED\s+BY\s+(?:VALUES\s+)?|REPLACE\s+)("[^"]*"?|'(?:[^']|'')*'?|[^\s;'"]+))re"),
      QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression kIdentifiedBy(QStringLiteral(R"(\bIDENTIFIED\s+BY\b)"),
                                                QRegularExpression::CaseInsensitiveOption);
  QString out;
  qsizetype last = 0;
  for (const QRegularExpressionMatch& m : kPassword.globalMatch(statement)) {
    // REPLACE names an old password only in a statement that sets one.
    const bool replace = m.captured(0).startsWith(u'R', Qt::CaseInsensitive);
    if (replace && !kIdentifiedBy.match(statement.left(m.capturedStart(0))).hasMatch()) continue;
    const QString secret = m.captured(1);
    const QChar quote = secret.front();
    out += QStringView(statement).mid(last, m.capturedStart(1) - last);
    out += quote == u'"' || quote == u'\'' ? quote + QStringLiteral("********") + quote
                                           : QStringLiteral("********");
    last = m.capturedEnd(1);
  }
  out += QStringView(statement).mid(last);
  return out;
}

QString ScriptLogTableDdl() {
  return QStringLiteral(
      "CREATE TABLE IF NOT EXISTS NOD_SCRIPT_LOG (ID INTEGER PRIMARY KEY AUTOINCREMENT, RUN_AT "
      "TEXT NOT NULL, CONNECTION TEXT, STATEMENT TEXT NOT NULL)");
}

bool CreateDemoDatabase(const QString& path, QString* error) {
  const QList<QPair<QString, QString>> scripts = DemoScripts();
  if (scripts.isEmpty()) {
    if (error) *error = QStringLiteral("The demo database scripts are missing from the host.");
    return false;
  }
  const QFileInfo target(path);
  if (!QDir().mkpath(target.absolutePath())) {
    if (error)
      *error = QStringLiteral("Cannot create the folder \"%1\".").arg(target.absolutePath());
    return false;
  }
  // Build beside the target and move it in place when complete, so that a failed or interrupted
  // build never leaves half a database behind.
  const QString temp = QStringLiteral("%1.%2.building")
                           .arg(target.absoluteFilePath())
                           .arg(QCoreApplication::applicationPid());
  QFile::remove(temp);
  bool ok = true;
  QString message;
  {
    TScopedSqlite conn(temp);
    QSqlDatabase db = conn.Db();
    if (!db.open()) {
      message = QStringLiteral("Cannot create the demo database \"%1\": %2")
                    .arg(temp, db.lastError().text());
      ok = false;
    }
    if (ok) ok = Exec(db, QStringLiteral("BEGIN"), &message);
    for (qsizetype i = 0; ok && i < scripts.size(); ++i) {
      for (const QString& statement : SplitScript(scripts[i].second)) {
        QString why;
        if (!Exec(db, statement, &why)) {
          message = QStringLiteral("Demo script %1 failed: %2\n%3")
                        .arg(scripts[i].first, why, statement.left(400));
          ok = false;
          break;
        }
      }
    }
    if (ok) {
      ok = Exec(db,
                QStringLiteral("CREATE TABLE NOD_DEMO_BUILD (SCRIPT_HASH TEXT NOT NULL, "
                               "BUILT_AT TEXT NOT NULL)"),
                &message);
    }
    if (ok) {
      QSqlQuery q(db);
      q.prepare(QStringLiteral("INSERT INTO NOD_DEMO_BUILD VALUES (?, ?)"));
      q.addBindValue(DemoScriptsHash());
      q.addBindValue(QDateTime::currentDateTime().toString(Qt::ISODate));
      ok = q.exec();
      if (!ok) message = q.lastError().text();
    }
    if (ok) ok = Exec(db, QStringLiteral("COMMIT"), &message);
    QString why;
    if (ok && !CarryScriptLog(db, path, &why)) {
      message =
          QStringLiteral("The script log of \"%1\" could not be carried over: %2").arg(path, why);
      ok = false;
    }
  }
  if (ok) {
    // Replaced in one step, so a program reading the old file never sees no file at all.
    std::error_code failed;
    std::filesystem::rename(temp.toStdString(), path.toStdString(), failed);
    if (failed) {
      message = QStringLiteral("Cannot move the demo database to \"%1\".").arg(path);
      ok = false;
    }
  }
  if (!ok) {
    QFile::remove(temp);
    if (error) *error = message;
  }
  return ok;
}

bool EnsureDemoDatabase(const QString& path, QString* error) {
  // Hosts started side by side (a test run, two workbenches) check and build the demo one at a
  // time: the first builds it, the others find it current.
  QDir().mkpath(QFileInfo(path).absolutePath());
  QLockFile lock(path + QStringLiteral(".lock"));
  lock.setStaleLockTime(10 * 60 * 1000);
  if (!lock.tryLock(10 * 60 * 1000)) {
    if (error)
      *error = QStringLiteral("The demo database \"") + path +
               QStringLiteral("\" is being built by another program that does not finish.");
    return false;
  }
  const QFileInfo file(path);
  if (file.exists()) {
    const QString stored = StoredDemoHash(path);
    if (!stored.isEmpty() && stored == DemoScriptsHash()) return true;
    // Only an empty file or a demo database built from other scripts is rebuilt; any other
    // file at that path is someone's data and stays as it is.
    if (stored.isEmpty() && (!file.isFile() || file.size() > 0)) {
      if (error)
        *error = QStringLiteral(
                     "\"%1\" exists and is not a demo database; it is left as it is. Give the "
                     "demo database another path, or open this file with sqlite:%1.")
                     .arg(path);
      return false;
    }
  }
  return CreateDemoDatabase(path, error);
}

}  // namespace host
