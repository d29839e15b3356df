#include "host/core/SqlText.h"

namespace host {

namespace {

using TKind = TSqlToken::TKind;

bool IsWordStart(QChar c) {
  return c.isLetter() || c == u'_';
}
bool IsWordChar(QChar c) {
  return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#';
}

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

// The end (one past) of a '...' literal whose opening quote is at `i`; '' inside is a quote.
qsizetype LiteralEnd(const QString& s, qsizetype i) {
  const qsizetype n = s.size();
  for (qsizetype j = i + 1; j < n; ++j) {
    if (s[j] != u'\'') continue;
    if (j + 1 < n && s[j + 1] == u'\'') {
      ++j;
      continue;
    }
    return j + 1;
  }
  return n;
}

// The end of an alternative-quoting literal q'X...X' whose quote is at `i`.
qsizetype QuotedLiteralEnd(const QString& s, qsizetype i) {
  const qsizetype n = s.size();
  if (i + 1 >= n) return n;
  const QChar close = ClosingDelimiter(s[i + 1]);
  for (qsizetype j = i + 2; j + 1 < n; ++j)
    if (s[j] == close && s[j + 1] == u'\'') return j + 2;
  return n;
}

}  // namespace

bool TSqlToken::IsName(const QString& name) const {
  if (Kind == TKind::Identifier) return Text == name;
  return Kind == TKind::Word && Text.compare(name, Qt::CaseInsensitive) == 0;
}

bool TSqlToken::IsKeyword(const char* keyword) const {
  return Kind == TKind::Word && Text.compare(QLatin1String(keyword), Qt::CaseInsensitive) == 0;
}

QList<TSqlToken> TokenizeSql(const QString& sql) {
  QList<TSqlToken> tokens;
  const qsizetype n = sql.size();
  qsizetype i = 0;
  auto add = [&](TKind kind, qsizetype start, qsizetype end, const QString& text) {
    tokens.append({kind, text, start, end - start});
    i = end;
  };
  while (i < n) {
    const QChar c = sql[i];
    if (c.isSpace()) {
      ++i;
      continue;
    }
    if (c == u'-' && i + 1 < n && sql[i + 1] == u'-') {
      qsizetype j = i;
      while (j < n && sql[j] != u'\n' && sql[j] != u'\r') ++j;
      add(TKind::Comment, i, j, sql.mid(i, j - i));
      continue;
    }
    if (c == u'/' && i + 1 < n && sql[i + 1] == u'*') {
      const qsizetype close = sql.indexOf(QStringLiteral("*/"), i + 2);
      const qsizetype j = close < 0 ? n : close + 2;
      add(TKind::Comment, i, j, sql.mid(i, j - i));
      continue;
    }
    if (c == u'\'') {
      const qsizetype j = LiteralEnd(sql, i);
      add(TKind::Literal, i, j, sql.mid(i, j - i));
      continue;
    }
    if (c == u'"') {
      const qsizetype close = sql.indexOf(u'"', i + 1);
      const qsizetype j = close < 0 ? n : close + 1;
      add(TKind::Identifier, i, j, sql.mid(i + 1, (close < 0 ? n : close) - i - 1));
      continue;
    }
    if (IsWordStart(c)) {
      // Literal prefixes: q'..', N'..', Nq'..' (any case).
      const QChar u = c.toUpper();
      if (u == u'Q' && i + 1 < n && sql[i + 1] == u'\'') {
        const qsizetype j = QuotedLiteralEnd(sql, i + 1);
        add(TKind::Literal, i, j, sql.mid(i, j - i));
        continue;
      }
      if (u == u'N' && i + 2 < n && sql[i + 1].toUpper() == u'Q' && sql[i + 2] == u'\'') {
        const qsizetype j = QuotedLiteralEnd(sql, i + 2);
        add(TKind::Literal, i, j, sql.mid(i, j - i));
        continue;
      }
      if (u == u'N' && i + 1 < n && sql[i + 1] == u'\'') {
        const qsizetype j = LiteralEnd(sql, i + 1);
        add(TKind::Literal, i, j, sql.mid(i, j - i));
        continue;
      }
      qsizetype j = i + 1;
      while (j < n && IsWordChar(sql[j])) ++j;
      add(TKind::Word, i, j, sql.mid(i, j - i));
      continue;
    }
    if (c.isDigit() || (c == u'.' && i + 1 < n && sql[i + 1].isDigit())) {
      qsizetype j = i + 1;
      while (j < n && (sql[j].isDigit() || sql[j] == u'.')) ++j;
      if (j < n && (sql[j] == u'e' || sql[j] == u'E') && j + 1 < n &&
          (sql[j + 1].isDigit() ||
           ((sql[j + 1] == u'+' || sql[j + 1] == u'-') && j + 2 < n && sql[j + 2].isDigit()))) {
        j += 2;
        while (j < n && sql[j].isDigit()) ++j;
      }
      add(TKind::Number, i, j, sql.mid(i, j - i));
      continue;
    }
    if (c == u':' && i + 1 < n && (IsWordStart(sql[i + 1]) || sql[i + 1].isDigit())) {
      qsizetype j = i + 1;
      while (j < n && IsWordChar(sql[j])) ++j;
      add(TKind::Bind, i, j, sql.mid(i + 1, j - i - 1));
      continue;
    }
    if (i + 1 < n) {
      const QString two = sql.mid(i, 2);
      if (two == u"||" || two == u"<=" || two == u">=" || two == u"<>" || two == u"!=") {
        add(TKind::Symbol, i, i + 2, two);
        continue;
      }
    }
    add(TKind::Symbol, i, i + 1, QString(c));
  }
  return tokens;
}

QString StripSqlComments(const QString& sql) {
  const QList<TSqlToken> tokens = TokenizeSql(sql);
  QString out;
  out.reserve(sql.size());
  qsizetype copied = 0;  // sql[0, copied) is dealt with
  auto lineStart = [&](qsizetype pos) {
    qsizetype p = pos;
    while (p > 0 && sql[p - 1] != u'\n' && sql[p - 1] != u'\r') --p;
    return p;
  };
  for (qsizetype t = 0; t < tokens.size(); ++t) {
    const TSqlToken& tok = tokens[t];
    if (!tok.Is(TKind::Comment)) continue;
    const qsizetype start = tok.Start;
    const qsizetype end = tok.Start + tok.Length;
    const qsizetype ls = lineStart(start);
    const bool aloneBefore = QStringView(sql).mid(ls, start - ls).trimmed().isEmpty();
    qsizetype after = end;
    while (after < sql.size() && (sql[after] == u' ' || sql[after] == u'\t')) ++after;
    const bool aloneAfter =
        after >= sql.size() || sql[after] == u'\n' || sql[after] == u'\r' ||
        (t + 1 < tokens.size() && tokens[t + 1].Is(TKind::Comment) && tokens[t + 1].Start == after);
    if (aloneBefore && aloneAfter && ls >= copied) {
      // The whole line goes, with its line end.
      out += QStringView(sql).mid(copied, ls - copied);
      qsizetype next = after;
      if (next < sql.size() && tokens.size() > t + 1 && tokens[t + 1].Start == next) {
        copied = next;  // another comment follows on the same line: it decides
        continue;
      }
      if (next < sql.size() && sql[next] == u'\r') ++next;
      if (next < sql.size() && sql[next] == u'\n') ++next;
      copied = next;
      continue;
    }
    // Blanks before the comment go with it.
    qsizetype cut = start;
    while (cut > copied && (sql[cut - 1] == u' ' || sql[cut - 1] == u'\t')) --cut;
    out += QStringView(sql).mid(copied, cut - copied);
    const bool codeFollows = !aloneAfter;
    if (codeFollows && cut > copied) out += u' ';
    copied = codeFollows ? after : end;
  }
  out += QStringView(sql).mid(copied);
  return out;
}

QStringList PrivilegedViews(const QString& sql) {
  QStringList names;
  for (const TSqlToken& tok : TokenizeSql(sql)) {
    if (!tok.Is(TKind::Word) && !tok.Is(TKind::Identifier)) continue;
    const QString name = tok.Is(TKind::Word) ? tok.Text.toUpper() : tok.Text;
    if ((name.startsWith(QLatin1String("DBA_")) || name.startsWith(QLatin1String("V$")) ||
         name.startsWith(QLatin1String("GV$"))) &&
        !names.contains(name))
      names << name;
  }
  return names;
}

QString PositionalBinds(const QString& sql, QStringList* names) {
  QString out;
  out.reserve(sql.size());
  qsizetype copied = 0;
  for (const TSqlToken& t : TokenizeSql(sql)) {
    // "::x" is no bind (a PL/SQL-style cast some tools write); neither is ":1" here.
    if (!t.Is(TKind::Bind) || !IsWordStart(t.Text.isEmpty() ? QChar() : t.Text[0]) ||
        (t.Start > 0 && sql[t.Start - 1] == u':'))
      continue;
    out += QStringView(sql).mid(copied, t.Start - copied);
    out += u'?';
    *names << t.Text;
    copied = t.Start + t.Length;
  }
  out += QStringView(sql).mid(copied);
  return out;
}

}  // namespace host
