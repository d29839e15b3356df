#include "plugin/KelText.h"

#include <cmath>

#include "plugin/KelHost.h"

namespace kel {

namespace {
bool IsBlank(QChar c) {
  return c.unicode() <= u' ';
}
}  // namespace

QString Trim(const QString& s) {
  qsizetype b = 0, e = s.size();
  while (b < e && IsBlank(s[b])) ++b;
  while (e > b && IsBlank(s[e - 1])) --e;
  return s.mid(b, e - b);
}

QString TrimLeft(const QString& s) {
  qsizetype b = 0;
  while (b < s.size() && IsBlank(s[b])) ++b;
  return s.mid(b);
}

QString TrimRight(const QString& s) {
  qsizetype e = s.size();
  while (e > 0 && IsBlank(s[e - 1])) --e;
  return s.left(e);
}

QString TrimName(const QString& caption) {
  QString out;
  out.reserve(caption.size());
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == u'&') {
      if (i + 1 < caption.size() && caption[i + 1] == u'&') {
        out += u'&';
        ++i;
      }
      continue;
    }
    out += caption[i];
  }
  out = Trim(out);
  while (out.endsWith(u':')) out = Trim(out.chopped(1));
  return out;
}

QString AddDQ(const QString& name) {
  return u'"' + name + u'"';
}

bool StrToBool(const QString& text) {
  const QString t = Trim(text);
  if (t.compare(u"true", Qt::CaseInsensitive) == 0) return true;
  if (t.compare(u"false", Qt::CaseInsensitive) == 0) return false;
  bool ok = false;
  const double v = t.toDouble(&ok);
  if (ok) return v != 0;
  throw EKelError(QStringLiteral("'%1' is not a valid boolean value").arg(text));
}

QString BoolToStr(bool value) {
  return value ? QStringLiteral("True") : QStringLiteral("False");
}

QString UnitFormat(double value, int number, int unitType, int flags) {
  (void)flags;
  static const char* const kUnits[] = {"", "K", "M", "G"};
  const int unit = unitType < 0 ? 0 : (unitType > 3 ? 3 : unitType);
  const double scaled = value / std::pow(1024.0, unit);
  return QString::number(scaled, 'f', number < 0 ? 0 : number) + QLatin1String(kUnits[unit]);
}

QString FormatMsg(const QString& templ, const QStringList& args) {
  QString out;
  qsizetype next = 0;
  for (qsizetype i = 0; i < templ.size(); ++i) {
    if (templ[i] == u'%' && i + 1 < templ.size() &&
        (templ[i + 1] == u's' || templ[i + 1] == u'%')) {
      if (templ[i + 1] == u'%')
        out += u'%';
      else if (next < args.size())
        out += args[next++];
      else
        ++next;
      ++i;
      continue;
    }
    out += templ[i];
  }
  return out;
}

namespace {
bool IsNamePart(QStringView part) {
  if (part.isEmpty()) return false;
  for (QChar c : part)
    if (c.unicode() < u' ' || c.unicode() == 0x7F || c == u';') return false;
  QStringView body = part;
  if (part.front() == u'"') {
    if (part.size() < 3 || part.back() != u'"') return false;
    body = part.mid(1, part.size() - 2);
    if (body.contains(u'"')) return false;
  } else {
    if (!part.front().isLetter()) return false;
    for (QChar c : part)
      if (!c.isLetterOrNumber() && c != u'_' && c != u'$' && c != u'#') return false;
  }
  return body.toUtf8().size() <= 128;
}

// Splits at `sep` outside double quotes; false when a quote is left open.
bool SplitOutsideQuotes(QStringView text, QChar sep, QList<QStringView>* parts) {
  bool quoted = false;
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'"') quoted = !quoted;
    if (!quoted && text[i] == sep) {
      parts->append(text.mid(start, i - start));
      start = i + 1;
    }
  }
  parts->append(text.mid(start));
  return !quoted;
}
}  // namespace

bool IsValidName(const QString& name, TNameKind kind) {
  if (kind == TNameKind::Object) return IsNamePart(name);
  QList<QStringView> at;
  if (!SplitOutsideQuotes(name, u'@', &at) || at.size() > 2) return false;
  if (at.size() == 2 && !IsNamePart(at[1])) return false;
  QList<QStringView> dotted;
  SplitOutsideQuotes(at[0], u'.', &dotted);
  for (QStringView part : dotted)
    if (!IsNamePart(part)) return false;
  return true;
}

QString QuoteSql(const QString& text) {
  QString out = text;
  out.replace(u'\'', QStringLiteral("''"));
  return out;
}

QString TSqlMemo::Text() const {
  QString out;
  for (const QString& line : FLines) {
    out += line;
    out += CRLF;
  }
  return out;
}

void TSqlMemo::SetText(const QString& text) {
  FLines = text.split(CRLF);
  if (!FLines.isEmpty() && FLines.last().isEmpty()) FLines.removeLast();
}

bool IsBannedControl(QChar c) {
  return c.category() == QChar::Other_Control && c != u'\t' && c != u'\r' && c != u'\n';
}

QString StripBannedControls(const QString& text) {
  QString out;
  out.reserve(text.size());
  for (const QChar c : text)
    if (!IsBannedControl(c)) out += c;
  return out;
}

}  // namespace kel
