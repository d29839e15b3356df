// Text helpers shared by every dialog: trimming as the original platform trims, label captions
// turned into field names, quoting, Boolean text, and the statement buffer.
#pragma once

#include <QString>
#include <QStringList>

namespace kel {

inline constexpr char16_t CR = u'\r';
inline const QString CRLF = QStringLiteral("\r\n");

// Strips every character up to and including the blank (tabs, CR, LF, other controls) from
// both ends.
QString Trim(const QString& s);
QString TrimLeft(const QString& s);
QString TrimRight(const QString& s);

// A label caption as a field name for messages: "&Table Name :" gives "Table Name".
QString TrimName(const QString& caption);

// The name in double quotes.
QString AddDQ(const QString& name);

// "True"/"False" (any case) or a number (0 is false); anything else raises EKelError.
bool StrToBool(const QString& text);
QString BoolToStr(bool value);  // "True" / "False"

// A size with its unit. `unitType` 0 = bytes, 1 = kilobytes, 2 = megabytes, 3 = gigabytes;
// `value` is in bytes and is divided down to the unit with `number` decimals.
QString UnitFormat(double value, int number, int unitType, int flags = 0);

// A message template with its "%s" placeholders filled in order, as the original platform's Format
// does ("%%" is a percent sign; a placeholder without an argument becomes empty).
QString FormatMsg(const QString& templ, const QStringList& args);

// What a name field of a dialog may hold, after the dialog's own trimming: an Oracle identifier.
//   Object: an unquoted name (a letter, then letters, digits, "_", "$", "#") or a double-quoted
//           name holding no '"'; at most 128 bytes (UTF-8, quotes not counted).
//   DbLink: such names joined with "." and an optional "@" qualifier (another such name).
// No name ever holds a control character (line breaks, tab, NUL) or ";".
enum class TNameKind { Object, DbLink };
bool IsValidName(const QString& name, TNameKind kind = TNameKind::Object);

// A control character no edit takes: any but tab, CR and LF (NUL, escape, DEL, C1 controls).
bool IsBannedControl(QChar c);
// `text` without its banned control characters.
QString StripBannedControls(const QString& text);

// A string with every "'" doubled, for SQL literals.
QString QuoteSql(const QString& text);

// The statement buffer: a list of items whose text is every item followed by CR LF. An item may
// contain lone CRs or whole CR LF breaks; they are kept as they are.
class TSqlMemo {
 public:
  void Clear() { FLines.clear(); }
  void Add(const QString& line) { FLines.append(line); }
  int Count() const { return int(FLines.size()); }
  bool IsEmpty() const { return FLines.isEmpty(); }
  const QStringList& Lines() const { return FLines; }
  QString Text() const;
  // Replaces the items by `text` split at CR LF only; a final CR LF adds no empty item.
  void SetText(const QString& text);

 private:
  QStringList FLines;
};

}  // namespace kel
