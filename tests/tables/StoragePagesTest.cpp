#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>

#include "plugin/KelText.h"
#include "tables/TableStorage.h"
#include "tests/support/TestHost.h"

using namespace kel;

// Readable failures: the text with its control characters spelled out.
static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\t", "\\t").toStdString() << '"';
}

namespace {

const QString CR1 = QString(CR);

class StoragePages : public ::testing::Test {
 protected:
  StoragePages() : Storage(&StorageSheet, &OptionSheet) {
    StorageSheet.show();  // an edit is left only while it is on screen
    OptionSheet.show();
  }

  template <typename T = QLineEdit>
  T* W(const char* name) {
    T* w = StorageSheet.findChild<T*>(name);
    if (!w) w = OptionSheet.findChild<T*>(name);
    EXPECT_NE(w, nullptr) << name;
    return w;
  }
  void Set(const char* edit, const QString& text) { W(edit)->setText(text); }
  void Check(const char* box, bool on = true) { W<QAbstractButton>(box)->setChecked(on); }
  void Type(const char* edit, const QString& chars) {
    for (const QChar c : chars) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
      if (!QApplication::sendEvent(W(edit), &press)) W(edit)->insert(QString(c));
    }
  }
  void Leave(const char* edit) {
    QFocusEvent out(QEvent::FocusOut);
    QApplication::sendEvent(W(edit), &out);
  }
  QStringList MessageKeys() {
    QStringList keys;
    for (const QJsonObject& e : Host.EventsOf("message")) keys << e.value("key").toString();
    return keys;
  }

  test::TTestHost Host;
  QWidget StorageSheet, OptionSheet;
  TTableStorage Storage;
};

// A table as the dictionary reports it: limited extents, a parallel degree, no cache.
TTableAttributes LoadedRow() {
  return {{"PctFree", "10"},        {"PctUsed", "40"},        {"IniTrans", "1"},
          {"MaxTrans", "255"},      {"Initial", "65536"},     {"Next", "106496"},
          {"MinExtents", "1"},      {"MaxExtents", "121"},    {"PctIncrease", "0"},
          {"FreeLists", "1"},       {"FreeList Groups", "1"}, {"Buffer Pool", "DEFAULT"},
          {"Degree", "         4"}, {"Logging", "YES"},       {"Cache", "NOCACHE"},
          {"Monitoring", "NO"}};
}

}  // namespace

TEST_F(StoragePages, CreateFragmentIsEmptyUntilSomethingIsGiven) {
  EXPECT_EQ(Storage.PhysicalFragment(), "");
  EXPECT_EQ(Storage.OptionLines(), QStringList());
  // Zero is "not given" for the transaction slots and the sizes, but a percentage.
  Set("InitTransEd", "0");
  Set("InitialExtentEd", "0");
  EXPECT_EQ(Storage.PhysicalFragment(), "");
  Set("PercentFreeEd", "10");
  EXPECT_EQ(Storage.PhysicalFragment(), "PCTFREE 10" + CR1);
}

TEST_F(StoragePages, CreateStorageClause) {
  Set("PctIncreaseEd", "0");
  EXPECT_EQ(Storage.PhysicalFragment(), CR1 + "STORAGE (" + CR1 + "  PCTINCREASE 0" + CR1 + ")");

  Set("PercentFreeEd", "10");
  Set("PercentUsedEd", "0");
  Set("MaxTransEd", "8");
  Set("InitialExtentEd", "64");
  W<QComboBox>("InitialExtentCmb")->setCurrentIndex(2);
  Set("NextExtentEd", "100");
  W<QComboBox>("NextExtentCmb")->setCurrentIndex(0);
  Set("MinExtentsEd", "2");
  Set("MaxExtentsEd", "50");
  Set("FreeListEd", "4");
  Set("FreeListGroupsEd", "2");
  W<QComboBox>("BufferPoolCmb")->setCurrentIndex(2);
  EXPECT_EQ(Storage.PhysicalFragment(),
            "PCTFREE 10" + CR1 + "PCTUSED 0" + CR1 + "MAXTRANS 8" + CR1 + "STORAGE (" + CR1 +
                "  INITIAL 64M" + CR1 + "  NEXT 100" + CR1 + "  MINEXTENTS 2" + CR1 +
                "  MAXEXTENTS 50" + CR1 + "  PCTINCREASE 0" + CR1 + "  FREELISTS 4" + CR1 +
                "  FREELIST GROUPS 2" + CR1 + "  BUFFER_POOL RECYCLE" + CR1 + ")");

  // "Unlimited" alone writes the clause, and clears and locks the value.
  Set("PercentFreeEd", "");
  Set("PercentUsedEd", "");
  Set("MaxTransEd", "");
  Set("InitialExtentEd", "");
  Set("NextExtentEd", "");
  Set("MinExtentsEd", "");
  Set("PctIncreaseEd", "");
  Set("FreeListEd", "");
  Set("FreeListGroupsEd", "");
  W<QComboBox>("BufferPoolCmb")->setCurrentIndex(1);
  Check("MaxExtentsChk");
  EXPECT_EQ(W("MaxExtentsEd")->text(), "");
  EXPECT_FALSE(W("MaxExtentsEd")->isEnabled());
  EXPECT_EQ(Storage.PhysicalFragment(), CR1 + "STORAGE (" + CR1 + "  MAXEXTENTS UNLIMITED" + CR1 +
                                            "  BUFFER_POOL KEEP" + CR1 + ")");
  Check("MaxExtentsChk", false);
  EXPECT_TRUE(W("MaxExtentsEd")->isEnabled());
}

TEST_F(StoragePages, CreateOptionLinesAndTheirEnablingRules) {
  EXPECT_FALSE(W<QRadioButton>("DefaultRadio")->isEnabled());
  EXPECT_FALSE(W("ValueEd")->isEnabled());
  EXPECT_FALSE(W<QRadioButton>("LoggingRdo")->isEnabled());

  Check("ParallelChk");
  EXPECT_TRUE(W<QRadioButton>("ValueRadio")->isEnabled());
  EXPECT_EQ(Storage.OptionLines(), QStringList({"PARALLEL (DEGREE DEFAULT)"}));
  Check("ValueRadio");
  EXPECT_TRUE(W("ValueEd")->isEnabled());
  Set("ValueEd", "4");
  Check("IgnoreChk");
  EXPECT_TRUE(W<QRadioButton>("NoLoggingRdo")->isEnabled());
  Check("NoLoggingRdo");
  Check("CacheChk");
  Check("MonitoringChk");
  EXPECT_EQ(Storage.OptionLines(),
            QStringList({"PARALLEL (DEGREE 4)", "NOLOGGING", "CACHE", "MONITORING"}));

  // Unticking Parallel goes back to the default degree; a disabled box writes nothing.
  Check("ParallelChk", false);
  EXPECT_TRUE(W<QRadioButton>("DefaultRadio")->isChecked());
  EXPECT_FALSE(W("ValueEd")->isEnabled());
  W<QCheckBox>("CacheChk")->setEnabled(false);
  Check("IgnoreChk", false);
  EXPECT_EQ(Storage.OptionLines(), QStringList({"MONITORING"}));
}

TEST_F(StoragePages, EditsTakeDigitsOnlyAndCheckTheirRangeWhenLeft) {
  Type("PctIncreaseEd", "-1.5x0");
  EXPECT_EQ(W("PctIncreaseEd")->text(), "150");
  Type("FreeListGroupsEd", "+8");
  EXPECT_EQ(W("FreeListGroupsEd")->text(), "8");

  Leave("PctIncreaseEd");
  Set("PctIncreaseEd", "100");
  Leave("PctIncreaseEd");
  Set("MaxTransEd", "256");
  Leave("MaxTransEd");
  Set("InitTransEd", "255");
  Leave("InitTransEd");
  Set("MinExtentsEd", "-3");
  Leave("MinExtentsEd");
  Set("PercentFreeEd", "900");  // no exit check
  Leave("PercentFreeEd");
  EXPECT_EQ(MessageKeys(),
            QStringList({"InsertNumber100Msg", "InsertNumber255Msg", "InsertInteger"}));
  // The value stays as typed.
  EXPECT_EQ(W("MaxTransEd")->text(), "256");

  // Too large for an integer: the conversion error is reported.
  Set("NextExtentEd", "99999999999");
  Leave("NextExtentEd");
  const auto texts = Host.EventsOf("messageText");
  ASSERT_EQ(texts.size(), 1);
  EXPECT_TRUE(texts[0].value("text").toString().contains("99999999999"));
}

TEST_F(StoragePages, LoadFillsTheControlsAndAnUntouchedTableAltersNothing) {
  Storage.Load(LoadedRow());
  EXPECT_EQ(W("NextExtentEd")->text(), "104");
  EXPECT_EQ(W<QComboBox>("NextExtentCmb")->currentText(), "KB");
  EXPECT_EQ(W("InitialExtentEd")->text(), "64");
  EXPECT_EQ(W("MaxExtentsEd")->text(), "121");
  EXPECT_TRUE(W<QRadioButton>("ValueRadio")->isChecked());
  EXPECT_EQ(W("ValueEd")->text(), "4");
  EXPECT_TRUE(W<QRadioButton>("LoggingRdo")->isChecked());
  EXPECT_EQ(Storage.PhysicalChanges(), "");
  EXPECT_EQ(Storage.OptionChanges(), "");
}

TEST_F(StoragePages, AlterPhysicalChanges) {
  Storage.Load(LoadedRow());
  Set("PercentFreeEd", "");  // cleared: back to 0
  Set("PercentUsedEd", "60");
  Set("InitTransEd", "0");
  Set("NextExtentEd", "256");
  Check("MaxExtentsChk");
  Set("PctIncreaseEd", "50");
  W<QComboBox>("BufferPoolCmb")->setCurrentIndex(1);
  Set("InitialExtentEd", "128");  // never altered
  Set("FreeListEd", "3");
  EXPECT_EQ(Storage.PhysicalChanges(), "PCTFREE 0" + CR1 + "PCTUSED 60" + CR1 + "INITRANS 0" + CR1 +
                                           "STORAGE (  NEXT 256K" + CR1 +
                                           "  MAXEXTENTS UNLIMITED " + CR1 + "  PCTINCREASE 50" +
                                           CR1 + "  BUFFER_POOL KEEP" + CR1 + ")");

  // Only the trailing blank of the last item is trimmed away.
  Set("NextExtentEd", "104");
  Set("PctIncreaseEd", "0");
  W<QComboBox>("BufferPoolCmb")->setCurrentIndex(0);
  Set("PercentFreeEd", "10");
  Set("PercentUsedEd", "40");
  Set("InitTransEd", "1");
  EXPECT_EQ(Storage.PhysicalChanges(), "STORAGE (  MAXEXTENTS UNLIMITED" + CR1 + ")");
}

TEST_F(StoragePages, AlterMaxExtentsOfAnUnlimitedTable) {
  TTableAttributes row = LoadedRow();
  row["MaxExtents"] = "2147483645";
  Storage.Load(row);
  EXPECT_TRUE(W<QCheckBox>("MaxExtentsChk")->isChecked());
  EXPECT_EQ(Storage.PhysicalChanges(), "");
  Check("MaxExtentsChk", false);
  EXPECT_EQ(Storage.PhysicalChanges(), "");  // no value given yet
  Set("MaxExtentsEd", "300");
  EXPECT_EQ(Storage.PhysicalChanges(), "STORAGE (  MAXEXTENTS 300" + CR1 + ")");
}

TEST_F(StoragePages, AlterOptionChangesAreOneWay) {
  TTableAttributes row = LoadedRow();
  row["Degree"] = "1";
  row["Cache"] = "CACHE";
  row["Monitoring"] = "YES";
  Storage.Load(row);
  EXPECT_EQ(Storage.OptionChanges(), "CACHE" + CR1 + "MONITORING" + CR1);
  Check("ParallelChk");
  Check("NoLoggingRdo");
  Check("CacheChk", false);
  Check("MonitoringChk", false);
  EXPECT_EQ(Storage.OptionChanges(), "PARALLEL (DEGREE DEFAULT)" + CR1 + "NOLOGGING" + CR1 +
                                         "NOCACHE" + CR1 + "NOMONITORING" + CR1);
}

// A table without cache or monitoring gets neither, ticked or not; unticking Parallel on a
// parallel table writes nothing either.
TEST_F(StoragePages, AlterOptionsOfANoCacheNoLoggingParallelTable) {
  TTableAttributes row = LoadedRow();
  row["Logging"] = "NO";
  Storage.Load(row);
  EXPECT_TRUE(W<QRadioButton>("NoLoggingRdo")->isChecked());
  Check("CacheChk");
  Check("MonitoringChk");
  EXPECT_EQ(Storage.OptionChanges(), "");
  Check("LoggingRdo");
  Set("ValueEd", "8");
  EXPECT_EQ(Storage.OptionChanges(), "PARALLEL (DEGREE 8)" + CR1 + "LOGGING" + CR1);
  Check("DefaultRadio");
  EXPECT_EQ(Storage.OptionChanges(), "PARALLEL (DEGREE DEFAULT)" + CR1 + "LOGGING" + CR1);
  Check("ParallelChk", false);
  EXPECT_EQ(Storage.OptionChanges(), "LOGGING" + CR1);
}

TEST_F(StoragePages, AlterParallelFromTheDefaultDegree) {
  TTableAttributes row = LoadedRow();
  row["Degree"] = "   DEFAULT";
  Storage.Load(row);
  EXPECT_TRUE(W<QRadioButton>("DefaultRadio")->isChecked());
  EXPECT_EQ(Storage.OptionChanges(), "");
  Check("ValueRadio");
  Set("ValueEd", "2");
  EXPECT_EQ(Storage.OptionChanges(), "PARALLEL (DEGREE 2)" + CR1);
}

TEST(StorageSizes, TheLargestCatalogSizeConvertsWithoutOverflow) {
  EXPECT_EQ(TTableStorage::BytesToKilobytes("9223372036854775807"), "9007199254740992");
  EXPECT_EQ(TTableStorage::BytesToKilobytes("1025"), "2");
  EXPECT_EQ(TTableStorage::BytesToKilobytes("65536"), "64");
}

// Each rule that writes text or refuses input, one check apiece: INITRANS in create mode, the
// unit of an altered NEXT, a changed limited MAXEXTENTS, the exit checks of Init Trans and of
// the parallel degree.
TEST_F(StoragePages, EveryWritingAndRefusingRuleIsSeen) {
  Set("InitTransEd", "3");
  EXPECT_EQ(Storage.PhysicalFragment(), "INITRANS 3" + CR1);

  Set("InitTransEd", "256");
  Leave("InitTransEd");
  Set("InitTransEd", "");
  Set("ValueEd", "99999999999");
  Leave("ValueEd");
  EXPECT_EQ(MessageKeys(), QStringList({"InsertNumber255Msg"}));
  ASSERT_EQ(Host.EventsOf("messageText").size(), 1);
  EXPECT_FALSE(Storage.ExitChecksPass());  // the degree is still out of range
  Set("ValueEd", "4");
  EXPECT_TRUE(Storage.ExitChecksPass());

  Storage.Load(LoadedRow());
  Set("NextExtentEd", "2");
  W<QComboBox>("NextExtentCmb")->setCurrentIndex(2);
  Set("MaxExtentsEd", "200");
  EXPECT_EQ(Storage.PhysicalChanges(), "STORAGE (  NEXT 2M" + CR1 + "  MAXEXTENTS 200" + CR1 + ")");
}
