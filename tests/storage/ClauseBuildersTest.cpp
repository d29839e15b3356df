// The statement builders of the storage dialogs, without any dialog: file specifications,
// tablespace create and alter statements, data file changes, and the size conversions.
#include <gtest/gtest.h>

#include "storage/CreateRedoLogGroupFrn.h"
#include "storage/CreateRollbackSegmentFrn.h"
#include "storage/FileSpec.h"
#include "storage/TablespaceDef.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}

namespace {

TFileSpec File(const char* name, const char* size, const char* unit) {
  TFileSpec f;
  f.Name = QString::fromUtf8(name);
  f.Size = QString::fromUtf8(size);
  f.SizeUnit = QString::fromUtf8(unit);
  return f;
}

}  // namespace

TEST(FileClause, WritesPathSizeReuseAndAutoextension) {
  TFileSpec f = File("/u01/a.dbf", "100", "MB");
  EXPECT_EQ(FileClause(f), "'/u01/a.dbf' SIZE 100M");
  f.Reuse = true;
  f.AutoExtend = true;
  EXPECT_EQ(FileClause(f), "'/u01/a.dbf' SIZE 100M REUSE AUTOEXTEND ON");
  f.Next = "10";
  f.NextUnit = "KB";
  f.MaxSize = "2";
  f.MaxUnit = "GB";
  EXPECT_EQ(FileClause(f), "'/u01/a.dbf' SIZE 100M REUSE AUTOEXTEND ON NEXT 10K MAXSIZE 2G");
  f.Unlimited = true;
  EXPECT_EQ(FileClause(f), "'/u01/a.dbf' SIZE 100M REUSE AUTOEXTEND ON NEXT 10K MAXSIZE UNLIMITED");
}

TEST(FileClause, QuotesAreDoubledAndManagedFilesHaveNoPathNorReuse) {
  TFileSpec f = File("C:\\ora data\\it's.dbf", "5", "MB");
  EXPECT_EQ(FileClause(f), "'C:\\ora data\\it''s.dbf' SIZE 5M");
  f.Omf = true;
  f.Reuse = true;
  EXPECT_EQ(FileClause(f), "SIZE 5M");
  EXPECT_EQ(AddFileLine("TEMP", true, f), "ALTER TABLESPACE TEMP ADD TEMPFILE SIZE 5M;");
}

TEST(SizeNumbers, OnlyWholeNumbersThatFitOracleSizeClause) {
  EXPECT_TRUE(IsSizeNumber("1"));
  EXPECT_TRUE(IsSizeNumber(" 2147483647 "));
  EXPECT_FALSE(IsSizeNumber("2147483648"));
  EXPECT_FALSE(IsSizeNumber("99999999999999999999"));
  EXPECT_FALSE(IsSizeNumber("0"));
  EXPECT_FALSE(IsSizeNumber("000"));
  EXPECT_FALSE(IsSizeNumber(""));
  EXPECT_FALSE(IsSizeNumber("1.5"));
  EXPECT_FALSE(IsSizeNumber("-1"));
}

TEST(SizeNumbers, BytesSplitIntoTheLargestExactUnit) {
  QString n, u;
  SplitBytes(524288, n, u);
  EXPECT_EQ(n + u, "512KB");
  SplitBytes(1073741824, n, u);
  EXPECT_EQ(n + u, "1GB");
  SplitBytes(10737418240, n, u);  // beyond 32 bits
  EXPECT_EQ(n + u, "10GB");
  SplitBytes(1536 * 1024, n, u);
  EXPECT_EQ(n + u, "1536KB");
  SplitBytes(1500, n, u);  // not whole kilobytes: rounded up
  EXPECT_EQ(n + u, "2KB");
  EXPECT_EQ(SizeBytes("1", "GB"), SizeBytes("1024", "MB"));
  EXPECT_EQ(SizeBytes("", "MB"), -1);
}

TEST(DataFileAlter, OneStatementPerChangeOnlineFirstOfflineLast) {
  TFileSpec loaded = File("/u01/a.dbf", "50", "MB");
  loaded.AutoExtend = true;
  loaded.Next = "10";
  loaded.NextUnit = "MB";
  loaded.Unlimited = true;
  TFileSpec edited = loaded;
  // The same size in another unit is no change.
  edited.Size = "51200";
  edited.SizeUnit = "KB";
  EXPECT_TRUE(AlterFileLines(false, loaded, true, edited, true).isEmpty());

  edited.Size = "60";
  edited.SizeUnit = "MB";
  edited.AutoExtend = false;
  EXPECT_EQ(AlterFileLines(false, loaded, false, edited, true),
            QStringList({"ALTER DATABASE DATAFILE '/u01/a.dbf' ONLINE;",
                         "ALTER DATABASE DATAFILE '/u01/a.dbf' RESIZE 60M;",
                         "ALTER DATABASE DATAFILE '/u01/a.dbf' AUTOEXTEND OFF;"}));
  edited = loaded;
  edited.Unlimited = false;
  edited.MaxSize = "4";
  edited.MaxUnit = "GB";
  EXPECT_EQ(AlterFileLines(true, loaded, true, edited, false),
            QStringList({"ALTER DATABASE TEMPFILE '/u01/a.dbf' AUTOEXTEND ON NEXT 10M MAXSIZE 4G;",
                         "ALTER DATABASE TEMPFILE '/u01/a.dbf' OFFLINE;"}));
}

TEST(TablespaceCreate, WritesOnlyWhatTheKindTakes) {
  TTablespaceDef def;
  def.Name = "TS";
  def.FileType = "BIGFILE";
  def.BlockSize = "16K";
  def.Logging = "NOLOGGING";
  def.ForceLogging = true;
  def.Status = "OFFLINE";
  def.ExtentManagement = "UNIFORM";
  def.UniformSize = "1M";
  def.SegmentSpace = "AUTO";
  def.Retention = "GUARANTEE";
  def.Files = {File("/u01/a.dbf", "1", "GB"), File("/u01/b.dbf", "2", "MB")};
  EXPECT_EQ(CreateTablespaceLines(def),
            QStringList({"CREATE BIGFILE TABLESPACE TS", "DATAFILE '/u01/a.dbf' SIZE 1G,",
                         "  '/u01/b.dbf' SIZE 2M", "BLOCKSIZE 16K", "NOLOGGING", "FORCE LOGGING",
                         "OFFLINE", "EXTENT MANAGEMENT LOCAL UNIFORM SIZE 1M",
                         "SEGMENT SPACE MANAGEMENT AUTO;"}));
  def.Kind = TTablespaceKind::Temporary;
  def.Files.removeLast();
  EXPECT_EQ(CreateTablespaceLines(def),
            QStringList({"CREATE BIGFILE TEMPORARY TABLESPACE TS", "TEMPFILE '/u01/a.dbf' SIZE 1G",
                         "EXTENT MANAGEMENT LOCAL UNIFORM SIZE 1M;"}));
  // An undo tablespace takes no uniform extents.
  def.Kind = TTablespaceKind::Undo;
  def.FileType.clear();
  EXPECT_EQ(CreateTablespaceLines(def),
            QStringList({"CREATE UNDO TABLESPACE TS", "DATAFILE '/u01/a.dbf' SIZE 1G",
                         "RETENTION GUARANTEE;"}));
  def.Files.clear();
  def.ExtentManagement = "AUTOALLOCATE";
  def.Retention.clear();
  EXPECT_EQ(CreateTablespaceLines(def),
            QStringList({"CREATE UNDO TABLESPACE TS", "EXTENT MANAGEMENT LOCAL AUTOALLOCATE;"}));
}

TEST(TablespaceAlter, NothingChangedWritesNothing) {
  TTablespaceDef loaded;
  loaded.Name = "APP_DATA";
  loaded.Logging = "LOGGING";
  loaded.Status = "ONLINE";
  loaded.Files = {File("/u01/a.dbf", "1", "MB")};
  TTablespaceDef edited = loaded;
  edited.Name = "app_data";  // the same name, typed in lower case
  edited.Status.clear();     // "Default" keeps the state
  edited.Logging.clear();
  EXPECT_TRUE(AlterTablespaceLines(loaded, edited).isEmpty());
}

TEST(TablespaceAlter, ChangesRunInAnOrderOracleAccepts) {
  TTablespaceDef loaded;
  loaded.Name = "ARCH";
  loaded.Logging = "NOLOGGING";
  loaded.Status = "OFFLINE";
  loaded.ReadOnly = true;
  TTablespaceDef edited = loaded;
  edited.Name = "ARCH2";
  edited.Status = "ONLINE";
  edited.ReadOnly = false;
  edited.Logging = "LOGGING";
  edited.ForceLogging = true;
  edited.Files = {File("/u01/b.dbf", "8", "MB")};
  EXPECT_EQ(AlterTablespaceLines(loaded, edited),
            QStringList({"ALTER TABLESPACE ARCH ONLINE;", "ALTER TABLESPACE ARCH READ WRITE;",
                         "ALTER TABLESPACE ARCH ADD DATAFILE '/u01/b.dbf' SIZE 8M;",
                         "ALTER TABLESPACE ARCH LOGGING;", "ALTER TABLESPACE ARCH FORCE LOGGING;",
                         "ALTER TABLESPACE ARCH RENAME TO ARCH2;"}));
  // Taken offline, a read-only change is not written: it needs the tablespace online.
  std::swap(loaded, edited);
  loaded.Name = "ARCH";
  edited.Name = "ARCH";
  edited.Files = loaded.Files;
  EXPECT_EQ(
      AlterTablespaceLines(loaded, edited),
      QStringList({"ALTER TABLESPACE ARCH NOLOGGING;", "ALTER TABLESPACE ARCH NO FORCE LOGGING;",
                   "ALTER TABLESPACE ARCH OFFLINE NORMAL;"}));
}

TEST(TablespaceAlter, TemporaryAndUndoIgnoreWhatTheyCannotChange) {
  TTablespaceDef loaded;
  loaded.Name = "TEMP";
  loaded.Kind = TTablespaceKind::Temporary;
  loaded.Status = "ONLINE";
  TTablespaceDef edited = loaded;
  edited.Status = "OFFLINE";
  edited.Logging = "NOLOGGING";
  edited.ReadOnly = true;
  edited.Retention = "GUARANTEE";
  edited.Files = {File("/u01/t2.dbf", "1", "GB")};
  EXPECT_EQ(AlterTablespaceLines(loaded, edited),
            QStringList({"ALTER TABLESPACE TEMP ADD TEMPFILE '/u01/t2.dbf' SIZE 1G;"}));
  loaded.Kind = edited.Kind = TTablespaceKind::Undo;
  loaded.Retention = "NOGUARANTEE";
  edited.Files.clear();
  EXPECT_EQ(AlterTablespaceLines(loaded, edited),
            QStringList({"ALTER TABLESPACE TEMP RETENTION GUARANTEE;",
                         "ALTER TABLESPACE TEMP OFFLINE NORMAL;"}));
}

TEST(StorageSizes, RedoMemberSizeAndRollbackUnits) {
  QString n, u;
  RedoLogSizeText(524288, n, u);
  EXPECT_EQ(n + u, "512KB");
  RedoLogSizeText(104857600, n, u);
  EXPECT_EQ(n + u, "100MB");
  RedoLogSizeText(1500000, n, u);
  EXPECT_EQ(n + u, "1.4305MB");
  RedoLogSizeText(1048575, n, u);  // just below a megabyte stays in kilobytes
  EXPECT_EQ(n + u, "1023.999KB");
  SplitUnitSize("524288", n, u);
  EXPECT_EQ(n + "|" + u, "512|KB");
  SplitUnitSize("4194304", n, u);
  EXPECT_EQ(n + "|" + u, "4|MB");
  SplitUnitSize("1000", n, u);
  EXPECT_EQ(n + "|" + u, "1000|");
  SplitUnitSize("NULL", n, u);
  EXPECT_EQ(n + "|" + u, "|");
}
