// The storage dialogs driven through the module's dispatch on a fixture host: the data-file
// pick through the host's OpenDLL, the add-data-file sub-dialog's checks, and every catalog
// query on the demo database.
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

#include "plugin/Dispatch.h"
#include "plugin/KelQuery.h"
#include "plugin/KelTreeList.h"
#include "storage/CreateDataFileFrn.h"
#include "storage/CreateRedoLogGroupFrn.h"
#include "storage/CreateRollbackSegmentFrn.h"
#include "storage/CreateTablespaceFrn.h"
#include "storage/CreateTablespaceListFrn.h"
#include "tests/support/TestHost.h"

using namespace kel;

namespace {

const char* const kFixture = R"({
  'connection': {'user': 'SYSTEM', 'users': ['SYSTEM'], 'tablespaces': ['USERS', 'TEMP']},
  'catalog': {'TablespaceMgrFrn.DataFilesList': [{'File Name': '/u01/a.dbf'},
                                                  {'File Name': '/u01/b.dbf'}]}
})";

template <class T>
T* Child(QWidget* form, const char* name) {
  T* w = form->findChild<T*>(QString::fromLatin1(name));
  if (!w) ADD_FAILURE() << "no control " << name;
  return w;
}

void Click(QWidget* form, const char* button) {
  Child<QPushButton>(form, button)->click();
}

// Runs `drive` on the modal dialog that the next action opens.
void OnNextModal(const std::function<void(QWidget*)>& drive) {
  QTimer::singleShot(0, [drive] {
    QWidget* modal = QApplication::activeModalWidget();
    ASSERT_NE(modal, nullptr);
    drive(modal);
    if (auto* dialog = qobject_cast<QDialog*>(modal); dialog && dialog->isVisible())
      dialog->done(mrCancel);
  });
}

class StorageDialogs : public ::testing::Test {
 protected:
  void SetUp() override {
    RegisterOpenRoutine("TABLESPACE", &OpenModal<TCreateTablespaceFrm>);
    RegisterOpenRoutine("SELECTDATAFILE", &OpenModal<TCreateTablespaceListFrm>);
    RegisterOpenRoutine("DATAFILE", &OpenModal<TCreateDataFileFrm>);
  }
};

}  // namespace

TEST_F(StorageDialogs, PickedFileComesBackThroughTheLinkAndACancelKeepsTheTypedName) {
  test::TTestHost host(test::Json(kFixture));
  host.Open("TABLESPACE", nullptr, [&](QWidget* form) {
    Child<QLineEdit>(form, "TablespaceNameEd")->setText("TS1");
    OnNextModal([&](QWidget* add) {
      auto* name = Child<QLineEdit>(add, "DatafileNameEd");
      name->setText("typed.dbf");
      OnNextModal([](QWidget* list) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(list, &escape);
      });
      Click(add, "DataFileListBtn");
      EXPECT_EQ(name->text(), "typed.dbf");
      OnNextModal([](QWidget* list) {
        auto* grid = Child<QTableWidget>(list, "DatafilesListGrd");
        ASSERT_EQ(grid->rowCount(), 2);
        grid->setCurrentCell(1, 0);
        Click(list, "OkBtn");
      });
      Click(add, "DataFileListBtn");
      EXPECT_EQ(name->text(), "/u01/b.dbf");
      Child<QLineEdit>(add, "FileSizeEd")->setText("10");
      Click(add, "OkBtn");
    });
    Click(form, "AddDataFileBtn");
    EXPECT_EQ(Child<TKelTreeList>(form, "DataFileTL")->Cell(0, 0), "/u01/b.dbf");
    Click(form, "ViewSqlBtn");
  });
  const auto dll = host.EventsOf("openDLL");
  ASSERT_EQ(dll.size(), 2);
  EXPECT_EQ(dll[0].value("result").toInt(), mrCancel);
  EXPECT_EQ(dll[1].value("result").toInt(), mrOk);
  ASSERT_EQ(host.EventsOf("link").size(), 1);
  EXPECT_EQ(host.EventsOf("link")[0].value("params").toObject().value("filename").toString(),
            "/u01/b.dbf");
  ASSERT_EQ(host.EventsOf("preview").size(), 1);
  EXPECT_EQ(host.EventsOf("preview")[0].value("text").toString(),
            "CREATE TABLESPACE TS1\r\nDATAFILE '/u01/b.dbf' SIZE 10K;\r\n");
}

TEST_F(StorageDialogs, AddDataFileRefusesBadSizesAndASecondPickKeepingTheInput) {
  test::TTestHost host(test::Json(kFixture));
  host.Open("TABLESPACE", nullptr, [&](QWidget* form) {
    auto addFile = [&](const char* path, const char* size) {
      OnNextModal([=](QWidget* add) {
        Child<QLineEdit>(add, "DatafileNameEd")->setText(path);
        auto* sizeEd = Child<QLineEdit>(add, "FileSizeEd");
        sizeEd->setText("4294967296");  // beyond 32 bits
        Click(add, "OkBtn");
        EXPECT_TRUE(add->isVisible());
        EXPECT_EQ(sizeEd->text(), "4294967296");
        sizeEd->setText(size);
        Click(add, "OkBtn");
        if (add->isVisible()) {
          // Refused: the path is still there for correction.
          EXPECT_EQ(Child<QLineEdit>(add, "DatafileNameEd")->text(), path);
          EXPECT_EQ(add->focusWidget(), Child<QWidget>(add, "DatafileNameEd"));
        }
      });
      Click(form, "AddDataFileBtn");
    };
    addFile("/u01/x.dbf", "1");
    addFile("/u01/x.dbf", "2");
    EXPECT_EQ(Child<TKelTreeList>(form, "DataFileTL")->RowCount(), 1);
  });
  QStringList keys;
  for (const QJsonObject& m : host.EventsOf("message")) keys << m.value("key").toString();
  EXPECT_EQ(keys, QStringList({"Storage.SizeRange", "Storage.SizeRange", "Storage.FileTwice"}));
}

TEST_F(StorageDialogs, BigfileTakesOneFileAndKindsEnableTheirClauses) {
  test::TTestHost host(test::Json(kFixture));
  host.Open("TABLESPACE", nullptr, [&](QWidget* form) {
    Child<QLineEdit>(form, "TablespaceNameEd")->setText("TS1");
    auto* extent = Child<QComboBox>(form, "ExtentMgmtCmb");
    extent->setCurrentText("AUTOALLOCATE");
    Child<QAbstractButton>(form, "TemporaryRdo")->setChecked(true);
    // A temporary tablespace has uniform extents only: the choice falls back to Default.
    EXPECT_EQ(extent->currentText(), "Default");
    EXPECT_EQ(extent->count(), 2);
    EXPECT_FALSE(Child<QWidget>(form, "LoggingCmb")->isEnabled());
    EXPECT_FALSE(Child<QWidget>(form, "RetentionCmb")->isEnabled());
    Child<QAbstractButton>(form, "UndoRdo")->setChecked(true);
    EXPECT_TRUE(Child<QWidget>(form, "RetentionCmb")->isEnabled());
    EXPECT_FALSE(Child<QWidget>(form, "StatusCmb")->isEnabled());
    Child<QComboBox>(form, "FileTypeCmb")->setCurrentText("BIGFILE");
    for (const char* path : {"/u01/u1.dbf", "/u01/u2.dbf"}) {
      OnNextModal([=](QWidget* add) {
        Child<QLineEdit>(add, "DatafileNameEd")->setText(path);
        Child<QLineEdit>(add, "FileSizeEd")->setText("5");
        Click(add, "OkBtn");
      });
      Click(form, "AddDataFileBtn");
    }
    Click(form, "OkBtn");
    EXPECT_TRUE(form->isVisible());
  });
  ASSERT_EQ(host.EventsOf("message").size(), 1);
  EXPECT_EQ(host.EventsOf("message")[0].value("key").toString(), "Storage.BigfileOneFile");
  EXPECT_TRUE(host.EventsOf("execute").isEmpty());
}

// ---------------------------------------------------------------------------------------------
// Catalog queries on the demo database.

namespace {

QList<QMap<QString, QString>> Rows(const char* key, const QList<QPair<QString, QString>>& binds) {
  TKelQuery q(test::DemoConnection());
  q.LoadSQL(key);
  for (const auto& [name, value] : binds) q.ParamByName(name) = value;
  q.Open();
  QList<QMap<QString, QString>> rows;
  for (; !q.Eof(); q.Next()) {
    QMap<QString, QString> row;
    for (const QString& c : q.Data().Columns) row.insert(c, q.FieldByName(c));
    rows << row;
  }
  return rows;
}

}  // namespace

TEST(StorageCatalog, TablespaceAndItsFiles) {
  auto info = Rows("CreateTablespaceFrn.Info", {{"P_NAME", "APP_DATA"}});
  ASSERT_EQ(info.size(), 1);
  EXPECT_EQ(info[0].value("Contents"), "PERMANENT");
  EXPECT_EQ(info[0].value("Allocation Type"), "UNIFORM");
  EXPECT_EQ(info[0].value("Next Extent"), "1048576");
  EXPECT_EQ(info[0].value("Block Size"), "8192");
  EXPECT_TRUE(Rows("CreateTablespaceFrn.Info", {{"P_NAME", "NO_SUCH_TS"}}).isEmpty());

  auto files = Rows("CreateTablespaceFrn.Files", {{"P_NAME", "APP_DATA"}});
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[1].value("File Name"), "/u01/app/oracle/oradata/ORCL/app_data02.dbf");
  EXPECT_EQ(files[1].value("Next Bytes"), "10485760");
  EXPECT_EQ(files[1].value("Max Bytes"), "1073741824");
  files = Rows("CreateTablespaceFrn.Files", {{"P_NAME", "TEMP"}});
  ASSERT_EQ(files.size(), 1);  // temp files as well
  EXPECT_EQ(files[0].value("Max Bytes"), "UNLIMITED");
  files = Rows("CreateTablespaceFrn.Files", {{"P_NAME", "USERS"}});
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(files[0].value("Max Bytes"), "UNLIMITED");
  EXPECT_EQ(files[1].value("Max Bytes"), "0");  // not extensible

  const auto list = Rows("TablespaceMgrFrn.DataFilesList", {});
  EXPECT_GE(list.size(), 14);
  EXPECT_EQ(list.first().value("File Name"), "/u01/app/oracle/oradata/ORCL/app_data01.dbf");
}

TEST(StorageCatalog, DataFileOfEitherKind) {
  auto kind = Rows("CreateDataFileFrn.Tablespace", {{"P_TABLESPACE", "TEMP"}});
  ASSERT_EQ(kind.size(), 1);
  EXPECT_EQ(kind[0].value("Contents"), "TEMPORARY");
  EXPECT_EQ(kind[0].value("Bigfile"), "NO");
  auto file =
      Rows("CreateDataFileFrn.Info",
           {{"P_TABLESPACE", "TEMP"}, {"P_FILE", "/u01/app/oracle/oradata/ORCL/temp01.dbf"}});
  ASSERT_EQ(file.size(), 1);
  EXPECT_EQ(file[0].value("Contents"), "TEMPORARY");
  EXPECT_EQ(file[0].value("Status"), "ONLINE");
  file = Rows("CreateDataFileFrn.Info",
              {{"P_TABLESPACE", "USERS"}, {"P_FILE", "/u01/app/oracle/oradata/ORCL/users02.dbf"}});
  ASSERT_EQ(file.size(), 1);
  EXPECT_EQ(file[0].value("Status"), "OFFLINE");
  EXPECT_EQ(file[0].value("Autoextensible"), "NO");
}

TEST(StorageCatalog, RedoLogProposalsAndRollbackSegment) {
  auto group = Rows("CreateRedoLogGroupFrn.MaxGroup#", {});
  ASSERT_EQ(group.size(), 1);
  EXPECT_EQ(group[0].value("MaxGroup"), "4");
  auto member = Rows("CreateRedoLogGroupFrn.MaxGroupLogFile", {});
  ASSERT_EQ(member.size(), 1);
  EXPECT_EQ(member[0].value("Member"), "/u01/app/oracle/oradata/ORCL/redo03a.log");

  auto segment = Rows("RollbackSegmentNrn.Info", {{"P_NAME", "RBS01"}});
  ASSERT_EQ(segment.size(), 1);
  EXPECT_EQ(segment[0].value("Owner"), "PUBLIC");
  EXPECT_EQ(segment[0].value("Next Extent"), "524288");
  EXPECT_EQ(segment[0].value("Optimal Size"), "4194304");
  segment = Rows("RollbackSegmentNrn.Info", {{"P_NAME", "RBS_SPARE"}});
  ASSERT_EQ(segment.size(), 1);
  EXPECT_EQ(segment[0].value("Optimal Size"), "NULL");  // offline: the instance keeps none
  EXPECT_EQ(segment[0].value("Status"), "OFFLINE");
}
