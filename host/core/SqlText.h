// Reading Oracle SQL text as a server does: literals ('..', q'[..]', N'..'), quoted identifiers
// ("..") and comments (-- and /* */) are recognised, so that what looks like a comment, a bind
// or an object name inside a literal is left alone.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace host {

struct TSqlToken {
  enum class TKind {
    Word,        // a bare identifier or keyword (letters, digits, _, $, #), as written
    Identifier,  // a double-quoted identifier; Text holds the name without its quotes
    Literal,     // a string literal, Text as written (quotes and prefix included)
    Number,
    Bind,     // ":NAME"; Text holds NAME
    Symbol,   // one punctuation character, or "||", "<=", ">=", "<>", "!="
    Comment,  // Text as written
  };
  TKind Kind = TKind::Symbol;
  QString Text;
  qsizetype Start = 0;   // position in the scanned text
  qsizetype Length = 0;  // characters of the scanned text the token covers

  bool Is(TKind kind) const { return Kind == kind; }
  // A word or quoted identifier equal to `name` (words compare case-insensitively).
  bool IsName(const QString& name) const;
  // A word equal to `keyword`, case-insensitively.
  bool IsKeyword(const char* keyword) const;
  bool IsSymbol(const char* symbol) const {
    return Kind == TKind::Symbol && Text == QLatin1String(symbol);
  }
};

// The tokens of `sql`, white space left out, comments included. An unterminated literal,
// identifier or comment runs to the end of the text.
QList<TSqlToken> TokenizeSql(const QString& sql);

// The text without its comments. A comment alone on its line(s) goes with its line; one after
// code on a line goes with the blanks before it; one between two tokens becomes one blank.
// Literals and quoted identifiers are kept byte for byte.
QString StripSqlComments(const QString& sql);

// The dictionary objects a query names whose access Oracle reserves to privileged users:
// DBA_ views, V$ and GV$ views (with or without a SYS. prefix), upper-cased, in order of
// appearance, each once.
QStringList PrivilegedViews(const QString& sql);

// The SQL with every ":NAME" bind outside literals and comments replaced by "?", and the names
// in the order they appear (a name used twice is bound twice).
QString PositionalBinds(const QString& sql, QStringList* names);

}  // namespace host
