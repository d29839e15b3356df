// One data file or temp file as the storage dialogs collect it, and the text of its file
// clause: the quoted path, SIZE, REUSE and the AUTOEXTEND clause. Sizes are kept as the
// user typed them (a whole number and a unit "KB", "MB" or "GB") and written as Oracle's size
// clause, the number followed by the unit letter.
#pragma once

#include <QString>
#include <QtGlobal>

namespace kel {

// The largest number a size field takes: Oracle's size clause is a 32-bit integer.
inline constexpr qint64 kMaxSizeNumber = 2147483647;

struct TFileSpec {
  QString Name;  // the path; empty for an Oracle-managed file
  bool Omf = false;
  QString Size;  // whole number, in SizeUnit
  QString SizeUnit = QStringLiteral("KB");
  bool Reuse = false;
  bool AutoExtend = false;
  QString Next;
  QString NextUnit = QStringLiteral("KB");
  bool Unlimited = false;
  QString MaxSize;
  QString MaxUnit = QStringLiteral("KB");
  bool operator==(const TFileSpec&) const = default;
};

// "K", "M" or "G" for "KB", "MB" or "GB" (the first letter of any other text).
QString UnitLetter(const QString& unitText);
// A size as the size clause writes it: "100M". Empty when the number is empty.
QString SizeText(const QString& number, const QString& unitText);
// The path as a string literal, each quote doubled.
QString FileLiteral(const QString& path);

// "AUTOEXTEND OFF", or "AUTOEXTEND ON" with NEXT and MAXSIZE (a number or UNLIMITED) when given.
QString AutoExtendClause(const TFileSpec& file, bool writeOff);
// "'path' SIZE 100M REUSE AUTOEXTEND ON NEXT 1M MAXSIZE UNLIMITED"; an Oracle-managed file has
// no path and no REUSE, and a file without autoextension writes no AUTOEXTEND clause.
QString FileClause(const TFileSpec& file);
// The size column of a file list: "100M", "AUTOEXTEND ON NEXT 1M ..." split in cells.
QString MaxSizeText(const TFileSpec& file);

// True when `text` (trimmed) is a whole number from 1 to kMaxSizeNumber.
bool IsSizeNumber(const QString& text);
// A byte count as a number and the largest of "KB", "MB", "GB" that holds it exactly (sizes
// below a kilobyte, or not whole kilobytes, round up to whole kilobytes).
void SplitBytes(qint64 bytes, QString& number, QString& unit);

// A size in bytes (-1 when the number is empty).
qint64 SizeBytes(const QString& number, const QString& unitText);

// "ALTER TABLESPACE ts ADD DATAFILE|TEMPFILE <file clause>;"
QString AddFileLine(const QString& tablespace, bool tempFile, const TFileSpec& file);
// One ALTER DATABASE DATAFILE|TEMPFILE 'path' statement per change of an existing file: back
// online first, then RESIZE and AUTOEXTEND, taken offline last. Empty when nothing changed.
QStringList AlterFileLines(bool tempFile, const TFileSpec& loaded, bool loadedOnline,
                           const TFileSpec& edited, bool online);

}  // namespace kel
