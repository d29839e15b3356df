#include "DictionaryGuard.h"

#include <QFile>
#include <QRegularExpression>

#include "host/core/SqlText.h"

namespace test {

using host::TSqlToken;
using TKind = TSqlToken::TKind;

TDictionary ReadDictionary(const QString& path, QString* error) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("Cannot read %1").arg(path);
    return {};
  }
  // Entries: a line at the margin, continued by indented lines.
  QStringList entries;
  for (const QString& line : QString::fromUtf8(f.readAll()).split(u'\n')) {
    if (line.trimmed().isEmpty() || line.trimmed().startsWith(u'#')) continue;
    if (line[0].isSpace() && !entries.isEmpty())
      entries.last() += u' ' + line.trimmed();
    else
      entries << line.trimmed();
  }
  TDictionary dictionary;
  QHash<QString, QString> derived;  // view -> "BASE - COL, COL"
  for (const QString& entry : entries) {
    const qsizetype colon = entry.indexOf(u':');
    const qsizetype equals = entry.indexOf(u'=');
    if (colon > 0 && (equals < 0 || colon < equals)) {
      TDictionaryView view;
      for (const QString& item : entry.mid(colon + 1).split(u',', Qt::SkipEmptyParts)) {
        const QStringList words = item.simplified().split(u' ');
        view.Columns << words.first();
        if (words.size() > 1 && words[1] == u"LONG") view.Longs << words.first();
      }
      dictionary.insert(entry.left(colon).trimmed(), view);
    } else if (equals > 0) {
      derived.insert(entry.left(equals).trimmed(), entry.mid(equals + 1).trimmed());
    } else {
      *error = QStringLiteral("Malformed entry in %1: %2").arg(path, entry);
      return {};
    }
  }
  for (auto it = derived.begin(); it != derived.end(); ++it) {
    const qsizetype minus = it.value().indexOf(u'-');
    const QString base = (minus < 0 ? it.value() : it.value().left(minus)).trimmed();
    if (!dictionary.contains(base)) {
      *error =
          QStringLiteral("%1 is derived from %2, which the list does not hold").arg(it.key(), base);
      return {};
    }
    TDictionaryView view = dictionary.value(base);
    if (minus >= 0)
      for (const QString& drop : it.value().mid(minus + 1).split(u',', Qt::SkipEmptyParts)) {
        view.Columns.removeAll(drop.trimmed());
        view.Longs.remove(drop.trimmed());
      }
    dictionary.insert(it.key(), view);
  }
  return dictionary;
}

const TDictionary& Oracle19cDictionary() {
  static const TDictionary dictionary = [] {
    QString error;
    TDictionary d = ReadDictionary(
        QStringLiteral(NOD_SOURCE_DIR "/tests/host/data/oracle19c-dictionary.txt"), &error);
    if (d.isEmpty()) qFatal("%s", qPrintable(error));
    return d;
  }();
  return dictionary;
}

namespace {

// Words after which a name is no table alias.
bool EndsTableReference(const TSqlToken& t) {
  static const QSet<QString> kWords = {"WHERE", "JOIN",      "LEFT",    "RIGHT", "INNER",  "OUTER",
                                       "FULL",  "CROSS",     "ON",      "ORDER", "GROUP",  "UNION",
                                       "MINUS", "INTERSECT", "CONNECT", "START", "HAVING", "FETCH",
                                       "USING", "NATURAL",   "WITH",    "FOR",   "SELECT"};
  return t.Is(TKind::Word) && kWords.contains(t.Text.toUpper());
}

bool IsName(const TSqlToken& t) {
  return t.Is(TKind::Word) || t.Is(TKind::Identifier);
}

QString NameOf(const TSqlToken& t) {
  return t.Is(TKind::Word) ? t.Text.toUpper() : t.Text;
}

// Tokens after which a double-quoted name is a column alias, not a column.
bool EndsValue(const TSqlToken& t) {
  return IsName(t) || t.Is(TKind::Literal) || t.Is(TKind::Number) || t.IsSymbol(")");
}

}  // namespace

QStringList ObjectsRead(const QString& sql) {
  QList<TSqlToken> tokens;
  for (const TSqlToken& t : host::TokenizeSql(sql))
    if (!t.Is(TKind::Comment)) tokens << t;
  QStringList names;
  int depth = 0;
  QList<int> depthOf;
  for (const TSqlToken& t : tokens) {
    if (t.IsSymbol(")")) --depth;
    depthOf << depth;
    if (t.IsSymbol("(")) ++depth;
  }
  // Whether the comma at `at` separates the items of a FROM list.
  auto inFromList = [&](qsizetype at) {
    for (qsizetype j = at - 1; j >= 0; --j) {
      if (depthOf[j] != depthOf[at]) continue;
      if (tokens[j].IsKeyword("FROM")) return true;
      for (const char* k : {"SELECT", "WHERE", "BY", "ON", "HAVING", "SET", "VALUES"})
        if (tokens[j].IsKeyword(k)) return false;
    }
    return false;
  };
  for (qsizetype i = 1; i < tokens.size(); ++i) {
    if (!IsName(tokens[i])) continue;
    const TSqlToken& prev = tokens[i - 1];
    bool read = prev.IsKeyword("FROM") || prev.IsKeyword("JOIN") ||
                (prev.IsSymbol(",") && inFromList(i - 1));
    if (prev.IsSymbol(".") && i > 1 && tokens[i - 2].IsName("SYS")) read = true;
    if (i + 1 < tokens.size() && tokens[i + 1].IsSymbol(".")) read = false;  // an owner
    const QString name = NameOf(tokens[i]);
    if (read && !names.contains(name)) names << name;
  }
  return names;
}

QStringList LongColumnMisuse(const QString& sql, const TDictionary& dictionary) {
  QList<TSqlToken> tokens;
  for (const TSqlToken& t : host::TokenizeSql(sql))
    if (!t.Is(TKind::Comment)) tokens << t;
  const qsizetype n = tokens.size();
  QList<int> depth(n);
  int d = 0;
  for (qsizetype i = 0; i < n; ++i) {
    if (tokens[i].IsSymbol(")")) --d;
    depth[i] = d;
    if (tokens[i].IsSymbol("(")) ++d;
  }
  // The views the query reads and their aliases.
  QHash<QString, QString> viewOf;  // alias or view name -> view
  for (qsizetype i = 0; i < n; ++i) {
    if (!IsName(tokens[i]) || !dictionary.contains(NameOf(tokens[i]))) continue;
    if (i > 0 && tokens[i - 1].IsSymbol(".") && !(i > 1 && tokens[i - 2].IsName("SYS")))
      continue;  // a column that happens to share a view name
    const QString view = NameOf(tokens[i]);
    viewOf.insert(view, view);
    if (i + 1 < n && IsName(tokens[i + 1]) && !EndsTableReference(tokens[i + 1]) &&
        !tokens[i + 1].IsKeyword("AS"))
      viewOf.insert(NameOf(tokens[i + 1]), view);
  }
  const QSet<QString> views(viewOf.cbegin(), viewOf.cend());
  bool setOperation = false;
  for (qsizetype i = 0; i < n; ++i)
    if (depth[i] == 0 && (tokens[i].IsKeyword("UNION") || tokens[i].IsKeyword("INTERSECT") ||
                          tokens[i].IsKeyword("MINUS")))
      setOperation = true;

  // The clause a token at depth 0 (or in the parentheses it sits in) belongs to.
  auto clauseOf = [&](qsizetype at) -> QString {
    int caseDepth = 0;  // CASE ... END blocks passed on the way back
    for (qsizetype j = at - 1; j >= 0; --j) {
      if (depth[j] < depth[at]) return QStringLiteral("an expression");
      if (depth[j] != depth[at]) continue;
      if (tokens[j].IsKeyword("END")) ++caseDepth;
      if (tokens[j].IsKeyword("CASE") && caseDepth > 0) --caseDepth;
      if (caseDepth > 0) continue;
      for (const char* k :
           {"SELECT", "WHERE", "ON", "HAVING", "BY", "FROM", "WHEN", "THEN", "ELSE"})
        if (tokens[j].IsKeyword(k)) {
          const QString word = QString::fromLatin1(k);
          if (word == u"BY" && j > 0) return tokens[j - 1].Text.toUpper() + QStringLiteral(" BY");
          if (word == u"WHEN" || word == u"THEN" || word == u"ELSE")
            return QStringLiteral("an expression");
          return word;
        }
    }
    return QStringLiteral("SELECT");
  };

  QStringList misuse;
  for (qsizetype i = 0; i < n; ++i) {
    if (!IsName(tokens[i])) continue;
    const QString column = NameOf(tokens[i]);
    if (i + 1 < n && tokens[i + 1].IsSymbol(".")) continue;  // a qualifier
    QString view;
    qsizetype start = i;
    if (i > 1 && tokens[i - 1].IsSymbol(".")) {
      const QString owner = viewOf.value(NameOf(tokens[i - 2]));
      if (owner.isEmpty() || !dictionary.value(owner).Longs.contains(column)) continue;
      view = owner;
      start = i - 2;
    } else {
      if (i > 0 && tokens[i - 1].IsKeyword("AS")) continue;  // an alias
      if (tokens[i].Is(TKind::Identifier) && i > 0 && EndsValue(tokens[i - 1])) continue;
      if (viewOf.contains(column)) continue;
      for (const QString& v : views)
        if (dictionary.value(v).Longs.contains(column)) view = v;
      if (view.isEmpty()) continue;
    }
    const QString name = view + u'.' + column;
    // A plain select-list item: SELECT or "," before it, "," / FROM / an alias after it, at the
    // top level of a query that is no set operation and selects no DISTINCT rows.
    const QString clause = clauseOf(start);
    if (clause != u"SELECT") {
      misuse << QStringLiteral("LONG column %1 used in %2").arg(name, clause);
      continue;
    }
    const bool before =
        start > 0 &&
        (tokens[start - 1].IsKeyword("SELECT") || tokens[start - 1].IsSymbol(",") ||
         tokens[start - 1].IsKeyword("DISTINCT") || tokens[start - 1].IsKeyword("UNIQUE"));
    qsizetype after = i + 1;
    if (after < n && tokens[after].IsKeyword("AS")) ++after;
    if (after < n && IsName(tokens[after]) && !tokens[after].IsKeyword("FROM")) ++after;
    const bool itemEnds =
        after >= n || tokens[after].IsSymbol(",") || tokens[after].IsKeyword("FROM");
    if (!before || !itemEnds) {
      misuse << QStringLiteral("LONG column %1 used in an expression").arg(name);
      continue;
    }
    if (depth[start] != 0) {
      misuse << QStringLiteral("LONG column %1 selected in a subquery").arg(name);
      continue;
    }
    if (setOperation) {
      misuse << QStringLiteral("LONG column %1 selected in a set operation (UNION, ...)").arg(name);
      continue;
    }
    for (qsizetype j = start - 1; j >= 0; --j)
      if (depth[j] == 0 && tokens[j].IsKeyword("SELECT")) {
        if (j + 1 < n && (tokens[j + 1].IsKeyword("DISTINCT") || tokens[j + 1].IsKeyword("UNIQUE")))
          misuse << QStringLiteral("LONG column %1 selected with DISTINCT").arg(name);
        break;
      }
  }
  return misuse;
}

QString QociNamedBinding(const QString& sql, int* count, bool* unclosed) {
  QString result;
  QChar closingQuote;
  int serial = 0;
  const qsizetype n = sql.size();
  for (qsizetype i = 0; i < n; ++i) {
    const QChar ch = sql[i];
    if (!closingQuote.isNull()) {
      if (ch == closingQuote) {
        if (closingQuote == u']' && i + 1 < n && sql[i + 1] == closingQuote) {
          ++i;
          result += ch;
        } else {
          closingQuote = QChar();
        }
      }
      result += ch;
    } else if (ch == u'?') {
      result += QStringLiteral(":%1").arg(serial++);
    } else {
      if (ch == u'\'' || ch == u'"' || ch == u'`')
        closingQuote = ch;
      else if (ch == u'[')
        closingQuote = u']';
      result += ch;
    }
  }
  *count = serial;
  *unclosed = !closingQuote.isNull();
  return result;
}

}  // namespace test
