#include "host/core/ScriptSplitter.h"

namespace host {

namespace {

bool IsWordChar(QChar c) {
  return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#';
}

// The first `count` words of a statement, upper-cased, comments and blanks skipped.
QStringList LeadingWords(const QString& text, int count) {
  QStringList words;
  const qsizetype n = text.size();
  qsizetype i = 0;
  while (i < n && words.size() < count) {
    const QChar c = text[i];
    if (c.isSpace()) {
      ++i;
    } else if (c == u'-' && i + 1 < n && text[i + 1] == u'-') {
      while (i < n && text[i] != u'\n' && text[i] != u'\r') ++i;
    } else if (c == u'/' && i + 1 < n && text[i + 1] == u'*') {
      const qsizetype end = text.indexOf(QStringLiteral("*/"), i + 2);
      i = end < 0 ? n : end + 2;
    } else if (IsWordChar(c)) {
      const qsizetype start = i;
      while (i < n && IsWordChar(text[i])) ++i;
      words << text.mid(start, i - start).toUpper();
    } else {
      break;  // punctuation: the statement's head is over
    }
  }
  return words;
}

// Scanner state carried from one line to the next.
struct TScanState {
  bool InLiteral = false;     // inside '...'
  bool InIdentifier = false;  // inside "..."
  bool InComment = false;     // inside /* ... */
  QChar QuoteEnd;             // inside q'X...X' (or N'..'/NQ'..'), the closing delimiter X
  bool Normal() const { return !InLiteral && !InIdentifier && !InComment && QuoteEnd.isNull(); }
};

// The closing delimiter of an alternative-quoting literal q'[...]': the matching bracket for
// an opening one, the character itself otherwise.
QChar ClosingDelimiter(QChar open) {
  switch (open.unicode()) {
    case u'[':
      return u']';
    case u'{':
      return u'}';
    case u'(':
      return u')';
    case u'<':
      return u'>';
    default:
      return open;
  }
}

// Whether the "q" at `i` begins a word of its own (q'..') or follows a lone national "n"
// (nq'..'), rather than ending a name such as "seq'".
bool StartsAlternativeQuote(const QString& line, qsizetype i) {
  if (i == 0 || !IsWordChar(line[i - 1])) return true;
  const bool national = line[i - 1] == u'n' || line[i - 1] == u'N';
  return national && (i == 1 || !IsWordChar(line[i - 2]));
}

// Scans one line; returns the index in `line` of its last character that is neither blank nor
// part of a comment (-1 when there is none).
qsizetype ScanLine(const QString& line, TScanState& s) {
  qsizetype last = -1;
  const qsizetype n = line.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar c = line[i];
    if (s.InComment) {
      if (c == u'*' && i + 1 < n && line[i + 1] == u'/') {
        s.InComment = false;
        ++i;
      }
      continue;
    }
    if (!s.QuoteEnd.isNull()) {
      if (c == s.QuoteEnd && i + 1 < n && line[i + 1] == u'\'') {
        s.QuoteEnd = QChar();
        ++i;
      }
      last = i;
      continue;
    }
    if (s.InLiteral) {
      if (c == u'\'') s.InLiteral = false;  // a doubled '' reopens at once
      last = i;
      continue;
    }
    if (s.InIdentifier) {
      if (c == u'"') s.InIdentifier = false;
      last = i;
      continue;
    }
    if (c == u'-' && i + 1 < n && line[i + 1] == u'-') break;  // rest of the line is a comment
    if (c == u'/' && i + 1 < n && line[i + 1] == u'*') {
      s.InComment = true;
      ++i;
      continue;
    }
    // q'X...X' (also nq'X...X'): a literal that may hold quotes, ended by X and a quote.
    if ((c == u'q' || c == u'Q') && i + 2 < n && line[i + 1] == u'\'' && !line[i + 2].isSpace() &&
        StartsAlternativeQuote(line, i)) {
      s.QuoteEnd = ClosingDelimiter(line[i + 2]);
      i += 2;
      last = i;
      continue;
    }
    if (c == u'\'') s.InLiteral = true;
    if (c == u'"') s.InIdentifier = true;
    if (!c.isSpace()) last = i;
  }
  return last;
}

bool HasContent(const QString& statement) {
  // Anything but blanks and comments.
  TScanState s;
  for (const QString& line : QString(statement).replace(u'\r', u'\n').split(u'\n'))
    if (ScanLine(line, s) >= 0) return true;
  return false;
}

}  // namespace

bool IsPlSqlUnit(const QString& statement) {
  const QStringList w = LeadingWords(statement, 6);
  if (w.isEmpty()) return false;
  if (w[0] == u"DECLARE" || w[0] == u"BEGIN") return true;
  if (w[0] != u"CREATE") return false;
  qsizetype i = 1;
  if (i + 1 < w.size() && w[i] == u"OR" && w[i + 1] == u"REPLACE") i += 2;
  if (i < w.size() && (w[i] == u"EDITIONABLE" || w[i] == u"NONEDITIONABLE")) ++i;
  if (i >= w.size()) return false;
  const QString& kind = w[i];
  if (kind == u"PROCEDURE" || kind == u"FUNCTION" || kind == u"PACKAGE" || kind == u"TRIGGER" ||
      kind == u"LIBRARY")
    return true;
  return kind == u"TYPE" && i + 1 < w.size() && w[i + 1] == u"BODY";
}

QStringList SplitScript(const QString& script) {
  QStringList statements;
  QString current;
  TScanState state;
  auto add = [&](const QString& text) {
    const QString statement = text.trimmed();
    if (HasContent(statement)) statements << statement;
  };

  const qsizetype n = script.size();
  qsizetype pos = 0;
  while (pos < n) {
    qsizetype end = pos;
    while (end < n && script[end] != u'\r' && script[end] != u'\n') ++end;
    qsizetype next = end;
    if (next < n)
      next += (script[next] == u'\r' && next + 1 < n && script[next + 1] == u'\n') ? 2 : 1;
    const QString line = script.mid(pos, end - pos);
    const QString lineEnd = script.mid(end, next - end);
    pos = next;

    if (state.Normal() && line.trimmed() == u"/") {  // runs the unit (or statement) so far
      add(current);
      current.clear();
      continue;
    }
    const qsizetype last = ScanLine(line, state);
    const qsizetype lineStart = current.size();
    current += line;
    if (state.Normal() && last >= 0 && line[last] == u';' && !IsPlSqlUnit(current)) {
      add(current.left(lineStart + last));
      current.clear();
      continue;
    }
    current += lineEnd;
  }
  add(current);
  return statements;
}

}  // namespace host
