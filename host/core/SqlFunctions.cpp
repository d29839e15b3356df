#include "host/core/SqlFunctions.h"

#include <sqlite3.h>

#include <QDateTime>
#include <QLocale>
#include <QSqlDriver>
#include <QVariant>
#include <cmath>

namespace host {

QString NumberText(double value) {
  if (!std::isfinite(value)) return QString::number(value);
  QString s = QString::number(value, 'g', QLocale::FloatingPointShortest);
  const qsizetype e = s.indexOf(u'e');
  if (e < 0) return s;
  // Expand the exponent: mantissa digits shifted by the exponent.
  const int exponent = s.mid(e + 1).toInt();
  QString mantissa = s.left(e);
  const bool negative = mantissa.startsWith(u'-');
  if (negative) mantissa.remove(0, 1);
  qsizetype point = mantissa.indexOf(u'.');
  if (point < 0) point = mantissa.size();
  QString digits = QString(mantissa).remove(u'.');
  qsizetype newPoint = point + exponent;
  if (newPoint <= 0) {
    digits = QString(-newPoint, u'0') + digits;
    newPoint = 0;
  } else if (newPoint > digits.size()) {
    digits += QString(newPoint - digits.size(), u'0');
  }
  QString out = digits.left(newPoint);
  if (out.isEmpty()) out = QStringLiteral("0");
  const QString fraction = digits.mid(newPoint);
  if (!fraction.isEmpty()) out += u'.' + fraction;
  return negative ? u'-' + out : out;
}

namespace {

QString Text(sqlite3_value* v) {
  const auto* p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p ? QString::fromUtf8(p, sqlite3_value_bytes(v)) : QString();
}

// NULL, or an empty text, which Oracle does not tell apart from NULL.
bool IsNull(sqlite3_value* v) {
  const int t = sqlite3_value_type(v);
  return t == SQLITE_NULL || (t == SQLITE_TEXT && sqlite3_value_bytes(v) == 0);
}

bool IsNumeric(sqlite3_value* v) {
  const int t = sqlite3_value_type(v);
  return t == SQLITE_INTEGER || t == SQLITE_FLOAT;
}

bool AsNumber(sqlite3_value* v, double* out) {
  if (IsNumeric(v)) {
    *out = sqlite3_value_double(v);
    return true;
  }
  bool ok = false;
  *out = Text(v).trimmed().toDouble(&ok);
  return ok;
}

void ResultText(sqlite3_context* ctx, const QString& s) {
  const QByteArray u = s.toUtf8();
  if (u.isEmpty())
    sqlite3_result_null(ctx);
  else
    sqlite3_result_text(ctx, u.constData(), int(u.size()), SQLITE_TRANSIENT);
}

// Compares like Oracle: numerically when either side is a number, else as text. NULLs are equal
// to each other only (as DECODE treats them).
int Compare(sqlite3_value* a, sqlite3_value* b, bool* comparable) {
  *comparable = true;
  if (IsNumeric(a) || IsNumeric(b)) {
    double x = 0, y = 0;
    if (AsNumber(a, &x) && AsNumber(b, &y)) {
      if (sqlite3_value_type(a) == SQLITE_INTEGER && sqlite3_value_type(b) == SQLITE_INTEGER) {
        const sqlite3_int64 i = sqlite3_value_int64(a), j = sqlite3_value_int64(b);
        return i < j ? -1 : (i > j ? 1 : 0);
      }
      return x < y ? -1 : (x > y ? 1 : 0);
    }
  }
  const QString x = Text(a), y = Text(b);
  return x < y ? -1 : (x > y ? 1 : 0);
}

void Nvl(sqlite3_context* ctx, int, sqlite3_value** argv) {
  sqlite3_result_value(ctx, IsNull(argv[0]) ? argv[1] : argv[0]);
}

void Nvl2(sqlite3_context* ctx, int, sqlite3_value** argv) {
  sqlite3_result_value(ctx, IsNull(argv[0]) ? argv[2] : argv[1]);
}

void Decode(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  if (argc < 3) {
    sqlite3_result_error(ctx, "ORA-00938: not enough arguments for function DECODE", -1);
    return;
  }
  for (int i = 1; i + 1 < argc; i += 2) {
    const bool nullA = IsNull(argv[0]), nullB = IsNull(argv[i]);
    bool comparable = true;
    if ((nullA && nullB) || (!nullA && !nullB && Compare(argv[0], argv[i], &comparable) == 0)) {
      sqlite3_result_value(ctx, argv[i + 1]);
      return;
    }
  }
  if (argc % 2 == 0)
    sqlite3_result_value(ctx, argv[argc - 1]);
  else
    sqlite3_result_null(ctx);
}

// Oracle date format elements over a stored "YYYY-MM-DD HH24:MI:SS" text.
QString FormatDate(const QDateTime& d, const QString& format) {
  static const QStringList kMonths = {"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                      "MAY",       "JUNE",     "JULY",     "AUGUST",
                                      "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};
  static const QStringList kDays = {"MONDAY", "TUESDAY",  "WEDNESDAY", "THURSDAY",
                                    "FRIDAY", "SATURDAY", "SUNDAY"};
  auto cased = [](const QString& word, const QString& element) {
    if (element.at(0).isLower()) return word.toLower();
    if (element.size() > 1 && element.at(1).isLower()) return word.left(1) + word.mid(1).toLower();
    return word;
  };
  auto two = [](int v) { return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0')); };
  QString out;
  qsizetype i = 0;
  while (i < format.size()) {
    const QString rest = format.mid(i);
    const QString up = rest.toUpper();
    auto take = [&](const char* element) {
      const qsizetype n = qstrlen(element);
      if (!up.startsWith(QLatin1String(element))) return false;
      const QString e = rest.left(n);
      const QString el = QString::fromLatin1(element);
      if (el == u"YYYY")
        out += QString::number(d.date().year());
      else if (el == u"YY")
        out += two(d.date().year() % 100);
      else if (el == u"MONTH")
        out += cased(kMonths[d.date().month() - 1], e).leftJustified(9);
      else if (el == u"MON")
        out += cased(kMonths[d.date().month() - 1].left(3), e);
      else if (el == u"MM")
        out += two(d.date().month());
      else if (el == u"DAY")
        out += cased(kDays[d.date().dayOfWeek() - 1], e).leftJustified(9);
      else if (el == u"DY")
        out += cased(kDays[d.date().dayOfWeek() - 1].left(3), e);
      else if (el == u"DD")
        out += two(d.date().day());
      else if (el == u"HH24")
        out += two(d.time().hour());
      else if (el == u"HH12" || el == u"HH")
        out += two((d.time().hour() + 11) % 12 + 1);
      else if (el == u"MI")
        out += two(d.time().minute());
      else if (el == u"SS")
        out += two(d.time().second());
      else if (el == u"AM" || el == u"PM")
        out += d.time().hour() < 12 ? "AM" : "PM";
      i += n;
      return true;
    };
    if (format[i] == u'"') {  // quoted literal text
      const qsizetype close = format.indexOf(u'"', i + 1);
      const qsizetype stop = close < 0 ? format.size() : close;
      out += format.mid(i + 1, stop - i - 1);
      i = stop + 1;
      continue;
    }
    if (take("YYYY") || take("YY") || take("MONTH") || take("MON") || take("MM") || take("DAY") ||
        take("DY") || take("DD") || take("HH24") || take("HH12") || take("HH") || take("MI") ||
        take("SS") || take("AM") || take("PM"))
      continue;
    out += format[i++];
  }
  return out;
}

void ToChar(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  if (IsNull(argv[0])) {
    sqlite3_result_null(ctx);
  } else if (sqlite3_value_type(argv[0]) == SQLITE_INTEGER) {
    ResultText(ctx, QString::number(sqlite3_value_int64(argv[0])));
  } else if (IsNumeric(argv[0])) {
    ResultText(ctx, NumberText(sqlite3_value_double(argv[0])));
  } else {
    const QString text = Text(argv[0]);
    const QDateTime date = QDateTime::fromString(text.left(19), Qt::ISODate);
    if (argc > 1 && !IsNull(argv[1]) && date.isValid())
      ResultText(ctx, FormatDate(date, Text(argv[1])));
    else
      ResultText(ctx, text);
  }
}

void ToNumber(sqlite3_context* ctx, int, sqlite3_value** argv) {
  if (IsNull(argv[0])) return sqlite3_result_null(ctx);
  if (IsNumeric(argv[0])) return sqlite3_result_value(ctx, argv[0]);
  const QString t = Text(argv[0]).trimmed();
  bool ok = false;
  const qlonglong i = t.toLongLong(&ok);
  if (ok) return sqlite3_result_int64(ctx, i);
  const double d = t.toDouble(&ok);
  if (ok) return sqlite3_result_double(ctx, d);
  sqlite3_result_error(ctx, "ORA-01722: invalid number", -1);
}

// INSTR(string, substring [, position [, occurrence]]); a negative position searches backwards
// from that many characters before the end.
void Instr(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  for (int i = 0; i < argc; ++i)
    if (IsNull(argv[i])) return sqlite3_result_null(ctx);
  const QString s = Text(argv[0]), sub = Text(argv[1]);
  const qlonglong position = argc > 2 ? sqlite3_value_int64(argv[2]) : 1;
  const qlonglong occurrence = argc > 3 ? sqlite3_value_int64(argv[3]) : 1;
  if (position == 0 || occurrence < 1) return sqlite3_result_int(ctx, 0);
  qsizetype found = -1;
  if (position > 0) {
    qsizetype from = position - 1;
    for (qlonglong k = 0; k < occurrence; ++k) {
      found = s.indexOf(sub, from);
      if (found < 0) break;
      from = found + 1;
    }
  } else {
    qsizetype from = s.size() + position;
    for (qlonglong k = 0; k < occurrence && from >= 0; ++k) {
      found = s.lastIndexOf(sub, from);
      if (found < 0) break;
      from = found - 1;
    }
  }
  sqlite3_result_int64(ctx, found < 0 ? 0 : found + 1);
}

void Pad(sqlite3_context* ctx, int argc, sqlite3_value** argv, bool left) {
  if (IsNull(argv[0]) || IsNull(argv[1]) || (argc > 2 && IsNull(argv[2])))
    return sqlite3_result_null(ctx);
  const QString s = Text(argv[0]);
  const qlonglong width = sqlite3_value_int64(argv[1]);
  const QString pad = argc > 2 ? Text(argv[2]) : QStringLiteral(" ");
  if (width <= 0 || width > 32767) return sqlite3_result_null(ctx);
  if (s.size() >= width) return ResultText(ctx, s.left(width));
  QString fill;
  while (fill.size() < width - s.size()) fill += pad;
  fill.truncate(width - s.size());
  ResultText(ctx, left ? fill + s : s + fill);
}

void Lpad(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  Pad(ctx, argc, argv, true);
}
void Rpad(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  Pad(ctx, argc, argv, false);
}

void Initcap(sqlite3_context* ctx, int, sqlite3_value** argv) {
  if (IsNull(argv[0])) return sqlite3_result_null(ctx);
  QString s = Text(argv[0]).toLower();
  bool start = true;
  for (QChar& c : s) {
    if (start && c.isLetter()) c = c.toUpper();
    start = !c.isLetterOrNumber();
  }
  ResultText(ctx, s);
}

void Extreme(sqlite3_context* ctx, int argc, sqlite3_value** argv, int sign) {
  if (argc == 0) return sqlite3_result_null(ctx);
  int best = 0;
  for (int i = 0; i < argc; ++i) {
    if (IsNull(argv[i])) return sqlite3_result_null(ctx);
    bool comparable = true;
    if (i > 0 && Compare(argv[i], argv[best], &comparable) * sign > 0) best = i;
  }
  sqlite3_result_value(ctx, argv[best]);
}

void Greatest(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  Extreme(ctx, argc, argv, 1);
}
void Least(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  Extreme(ctx, argc, argv, -1);
}

void Concat(sqlite3_context* ctx, int, sqlite3_value** argv) {
  ResultText(ctx, Text(argv[0]) + Text(argv[1]));
}

void SysContext(sqlite3_context* ctx, int, sqlite3_value** argv) {
  const auto* env = static_cast<const QHash<QString, QString>*>(sqlite3_user_data(ctx));
  if (!env || Text(argv[0]).trimmed().toUpper() != u"USERENV") return sqlite3_result_null(ctx);
  QString name = Text(argv[1]).trimmed().toUpper();
  if (name == u"CURRENT_USER" || name == u"CURRENT_SCHEMA") name = QStringLiteral("SESSION_USER");
  ResultText(ctx, env->value(name));
}

}  // namespace

bool RegisterOracleFunctions(const QSqlDatabase& db, const QHash<QString, QString>* userenv,
                             QString* error) {
  const QVariant handle = db.driver() ? db.driver()->handle() : QVariant();
  if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0) {
    if (error) *error = QStringLiteral("The connection is not a SQLite database.");
    return false;
  }
  sqlite3* h = *static_cast<sqlite3* const*>(handle.constData());
  if (!h) {
    if (error) *error = QStringLiteral("The SQLite database is not open.");
    return false;
  }
  using TFunc = void (*)(sqlite3_context*, int, sqlite3_value**);
  struct TDef {
    const char* Name;
    int Args;  // -1: any number
    TFunc Func;
    bool Deterministic;
  };
  static const TDef kFunctions[] = {
      {"NVL", 2, Nvl, true},
      {"NVL2", 3, Nvl2, true},
      {"DECODE", -1, Decode, true},
      {"TO_CHAR", 1, ToChar, true},
      {"TO_CHAR", 2, ToChar, true},
      {"TO_NUMBER", 1, ToNumber, true},
      {"INSTR", 2, Instr, true},
      {"INSTR", 3, Instr, true},
      {"INSTR", 4, Instr, true},
      {"LPAD", 2, Lpad, true},
      {"LPAD", 3, Lpad, true},
      {"RPAD", 2, Rpad, true},
      {"RPAD", 3, Rpad, true},
      {"INITCAP", 1, Initcap, true},
      {"GREATEST", -1, Greatest, true},
      {"LEAST", -1, Least, true},
      {"CONCAT", 2, Concat, true},
      {"SYS_CONTEXT", 2, SysContext, false},
  };
  for (const TDef& f : kFunctions) {
    const int flags = SQLITE_UTF8 | (f.Deterministic ? SQLITE_DETERMINISTIC : 0);
    void* data = f.Func == SysContext ? const_cast<QHash<QString, QString>*>(userenv) : nullptr;
    const int rc = sqlite3_create_function_v2(h, f.Name, f.Args, flags, data, f.Func, nullptr,
                                              nullptr, nullptr);
    if (rc != SQLITE_OK) {
      if (error)
        *error = QStringLiteral("Could not register the function %1: %2")
                     .arg(QString::fromLatin1(f.Name), QString::fromUtf8(sqlite3_errmsg(h)));
      return false;
    }
  }
  return true;
}

}  // namespace host
