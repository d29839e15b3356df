#include "storage/FileSpec.h"

#include <QStringList>

#include "plugin/KelText.h"

namespace kel {

QString UnitLetter(const QString& unitText) {
  const QString unit = Trim(unitText);
  return unit.isEmpty() ? QString() : unit.left(1).toUpper();
}

QString SizeText(const QString& number, const QString& unitText) {
  const QString n = Trim(number);
  return n.isEmpty() ? QString() : n + UnitLetter(unitText);
}

QString FileLiteral(const QString& path) {
  return u'\'' + QuoteSql(path) + u'\'';
}

QString AutoExtendClause(const TFileSpec& file, bool writeOff) {
  if (!file.AutoExtend) return writeOff ? QStringLiteral("AUTOEXTEND OFF") : QString();
  QString clause = QStringLiteral("AUTOEXTEND ON");
  const QString next = SizeText(file.Next, file.NextUnit);
  if (!next.isEmpty()) clause += QStringLiteral(" NEXT ") + next;
  if (file.Unlimited)
    clause += QStringLiteral(" MAXSIZE UNLIMITED");
  else if (const QString max = SizeText(file.MaxSize, file.MaxUnit); !max.isEmpty())
    clause += QStringLiteral(" MAXSIZE ") + max;
  return clause;
}

QString FileClause(const TFileSpec& file) {
  QStringList parts;
  const bool named = !file.Omf && !Trim(file.Name).isEmpty();
  if (named) parts << FileLiteral(Trim(file.Name));
  if (const QString size = SizeText(file.Size, file.SizeUnit); !size.isEmpty())
    parts << QStringLiteral("SIZE ") + size;
  // REUSE names an existing file: an Oracle-managed file has none.
  if (file.Reuse && named) parts << QStringLiteral("REUSE");
  if (const QString extend = AutoExtendClause(file, false); !extend.isEmpty()) parts << extend;
  return parts.join(u' ');
}

QString MaxSizeText(const TFileSpec& file) {
  if (!file.AutoExtend) return QString();
  return file.Unlimited ? QStringLiteral("UNLIMITED") : SizeText(file.MaxSize, file.MaxUnit);
}

bool IsSizeNumber(const QString& text) {
  const QString t = Trim(text);
  if (t.isEmpty() || t.size() > 10) return false;
  for (const QChar c : t)
    if (c < u'0' || c > u'9') return false;
  const qint64 n = t.toLongLong();
  return n >= 1 && n <= kMaxSizeNumber;
}

void SplitBytes(qint64 bytes, QString& number, QString& unit) {
  static const char* const kUnits[] = {"GB", "MB", "KB"};
  static const qint64 kFactors[] = {1073741824, 1048576, 1024};
  for (int i = 0; i < 3; ++i) {
    if (bytes > 0 && bytes % kFactors[i] == 0) {
      number = QString::number(bytes / kFactors[i]);
      unit = QLatin1String(kUnits[i]);
      return;
    }
  }
  number = QString::number((qMax<qint64>(bytes, 0) + 1023) / 1024);
  unit = QStringLiteral("KB");
}

qint64 SizeBytes(const QString& number, const QString& unitText) {
  const QString n = Trim(number);
  if (n.isEmpty()) return -1;
  const QString unit = UnitLetter(unitText);
  const qint64 factor = unit == u"G"   ? 1073741824
                        : unit == u"M" ? 1048576
                        : unit == u"K" ? 1024
                                       : 1;
  return n.toLongLong() * factor;
}

QString AddFileLine(const QString& tablespace, bool tempFile, const TFileSpec& file) {
  return QStringLiteral("ALTER TABLESPACE %1 ADD %2 %3;")
      .arg(tablespace, tempFile ? QStringLiteral("TEMPFILE") : QStringLiteral("DATAFILE"),
           FileClause(file));
}

namespace {

bool AutoExtendChanged(const TFileSpec& loaded, const TFileSpec& edited) {
  if (loaded.AutoExtend != edited.AutoExtend) return true;
  if (!edited.AutoExtend) return false;
  if (SizeBytes(loaded.Next, loaded.NextUnit) != SizeBytes(edited.Next, edited.NextUnit))
    return true;
  if (loaded.Unlimited != edited.Unlimited) return true;
  return !edited.Unlimited &&
         SizeBytes(loaded.MaxSize, loaded.MaxUnit) != SizeBytes(edited.MaxSize, edited.MaxUnit);
}

}  // namespace

QStringList AlterFileLines(bool tempFile, const TFileSpec& loaded, bool loadedOnline,
                           const TFileSpec& edited, bool online) {
  QStringList lines;
  const QString alter = QStringLiteral("ALTER DATABASE %1 %2 ")
                            .arg(tempFile ? QStringLiteral("TEMPFILE") : QStringLiteral("DATAFILE"),
                                 FileLiteral(loaded.Name));
  auto add = [&](const QString& change) { lines << alter + change + u';'; };
  if (online && !loadedOnline) add(QStringLiteral("ONLINE"));
  if (SizeBytes(edited.Size, edited.SizeUnit) != SizeBytes(loaded.Size, loaded.SizeUnit))
    add(QStringLiteral("RESIZE ") + SizeText(edited.Size, edited.SizeUnit));
  if (AutoExtendChanged(loaded, edited)) add(AutoExtendClause(edited, true));
  if (!online && loadedOnline) add(QStringLiteral("OFFLINE"));
  return lines;
}

}  // namespace kel
