#include "host/runner/Transcript.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>
#include <cmath>
#include <limits>

namespace runner {

namespace {

// Keys that read best first, in this order; the others follow sorted by name.
const QStringList kDocumentKeys{"result", "open", "events"};
const QStringList kEventKeys{"event", "name", "key", "file", "title", "text"};

QStringList OrderedKeys(const QJsonObject& object, const QStringList& leading = kEventKeys) {
  QStringList keys = object.keys();  // already sorted by name
  QStringList ordered;
  for (const QString& k : leading)
    if (keys.removeOne(k)) ordered << k;
  return ordered + keys;
}

// Escapes the JSON specials and converts the whole text to UTF-8 at once (surrogate pairs
// stay one character).
void WriteString(QByteArray& out, const QString& s) {
  QString escaped;
  escaped.reserve(s.size() + 2);
  escaped += u'"';
  for (qsizetype i = 0; i < s.size(); ++i) {
    const QChar c = s.at(i);
    const char16_t u = c.unicode();
    // A surrogate pair is one character and goes out as UTF-8; a lone surrogate has no UTF-8
    // form and is written as its escape, so the string reads back exactly as it was.
    if (c.isHighSurrogate() && i + 1 < s.size() && s.at(i + 1).isLowSurrogate()) {
      escaped += c;
      escaped += s.at(++i);
      continue;
    }
    if (c.isSurrogate()) {
      escaped += QStringLiteral("\\u") + QString::number(u, 16).rightJustified(4, u'0');
      continue;
    }
    switch (u) {
      case u'"':
        escaped += u"\\\"";
        break;
      case u'\\':
        escaped += u"\\\\";
        break;
      case u'\r':
        escaped += u"\\r";
        break;
      case u'\n':
        escaped += u"\\n";
        break;
      case u'\t':
        escaped += u"\\t";
        break;
      default:
        if (u < 0x20 || u == 0x7f)
          escaped += QStringLiteral("\\u%1").arg(int(u), 4, 16, QLatin1Char('0'));
        else
          escaped += c;
    }
  }
  escaped += u'"';
  out += escaped.toUtf8();
}

void WriteCompact(QByteArray& out, const QJsonValue& v) {
  switch (v.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
      out += "null";
      break;
    case QJsonValue::Bool:
      out += v.toBool() ? "true" : "false";
      break;
    case QJsonValue::Double: {
      // Integral values print without a fraction; QJsonDocument writes the others exactly.
      const double d = v.toDouble();
      if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 9.0e15)
        out += QByteArray::number(qint64(d));
      else
        out += QJsonDocument(QJsonArray{v}).toJson(QJsonDocument::Compact).mid(1).chopped(1);
      break;
    }
    case QJsonValue::String:
      WriteString(out, v.toString());
      break;
    case QJsonValue::Array: {
      out += '[';
      bool first = true;
      for (const QJsonValue& e : v.toArray()) {
        if (!first) out += ", ";
        first = false;
        WriteCompact(out, e);
      }
      out += ']';
      break;
    }
    case QJsonValue::Object: {
      const QJsonObject o = v.toObject();
      out += '{';
      bool first = true;
      for (const QString& k : OrderedKeys(o)) {
        if (!first) out += ", ";
        first = false;
        WriteString(out, k);
        out += ": ";
        WriteCompact(out, o.value(k));
      }
      out += '}';
      break;
    }
  }
}

}  // namespace

QByteArray CanonicalJson(const QJsonObject& document) {
  QByteArray out = "{";
  bool first = true;
  for (const QString& k : OrderedKeys(document, kDocumentKeys)) {
    out += first ? "\n  " : ",\n  ";
    first = false;
    WriteString(out, k);
    out += ": ";
    const QJsonValue v = document.value(k);
    if (v.isArray() && !v.toArray().isEmpty()) {
      out += '[';
      bool firstItem = true;
      for (const QJsonValue& e : v.toArray()) {
        out += firstItem ? "\n    " : ",\n    ";
        firstItem = false;
        WriteCompact(out, e);
      }
      out += "\n  ]";
    } else {
      WriteCompact(out, v);
    }
  }
  out += first ? "}\n" : "\n}\n";
  return out;
}

bool ReadCapped(const QString& file, QByteArray* text, QString* why) {
  QFile f(file);
  if (!f.open(QIODevice::ReadOnly)) {
    if (why) *why = QStringLiteral("cannot read %1: %2").arg(file, f.errorString());
    return false;
  }
  // Read with a cap: a device or a runaway file never fills the memory.
  *text = f.read(kMaxScenarioBytes + 1);
  if (text->size() > kMaxScenarioBytes) {
    text->clear();
    if (why)
      *why = file + QStringLiteral(": the file is larger than 16 MiB; a scenario is refused");
    return false;
  }
  return true;
}

int TimeoutMs(const QString& seconds, QString* why) {
  bool ok = false;
  const double s = seconds.toDouble(&ok);
  // The hard watchdog waits ten seconds longer than the timeout: both must fit an int.
  constexpr double kMaxSeconds = (std::numeric_limits<int>::max() - 10000) / 1000;
  if (!ok || !std::isfinite(s) || s * 1000 < 1 || s > kMaxSeconds) {
    if (why)
      *why = QStringLiteral("--timeout takes a number of seconds from 0.001 to ") +
             QString::number(qint64(kMaxSeconds)) + QStringLiteral(", not \"") + seconds + u'"';
    return -1;
  }
  return int(s * 1000);
}

QJsonObject ParseObject(const QByteArray& text, QString* error) {
  QJsonParseError parseError;
  const QJsonDocument doc = QJsonDocument::fromJson(text, &parseError);
  if (parseError.error != QJsonParseError::NoError) {
    if (error)
      *error = QStringLiteral("%1 at offset %2")
                   .arg(parseError.errorString(), QString::number(parseError.offset));
    return {};
  }
  if (!doc.isObject()) {
    if (error) *error = QStringLiteral("the document is not a JSON object");
    return {};
  }
  return doc.object();
}

}  // namespace runner
