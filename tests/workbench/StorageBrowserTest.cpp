// The browser's Storage part on the demo database: the storage folders sit in one node, data
// and temp files are listed with their tablespace, and the folders are found as before.
#include <gtest/gtest.h>

#include "host/workbench/ObjectBrowser.h"
#include "tests/support/TestHost.h"

TEST(StorageBrowser, StorageFoldersSitInOneNodeWithTheFilesOfEachTablespace) {
  wb::TObjectBrowser browser(test::DemoConnection());
  QTreeWidgetItem* storage = nullptr;
  for (int i = 0; i < browser.topLevelItemCount(); ++i)
    if (browser.topLevelItem(i)->text(0) == "Storage") storage = browser.topLevelItem(i);
  ASSERT_NE(storage, nullptr);
  QStringList folders;
  for (int i = 0; i < storage->childCount(); ++i) folders << storage->child(i)->text(0);
  EXPECT_EQ(folders,
            QStringList({"Tablespaces", "Data Files", "Redo Log Groups", "Rollback Segments"}));

  QTreeWidgetItem* files = browser.Folder(QString(), "DataFiles");
  ASSERT_NE(files, nullptr);
  EXPECT_EQ(files->parent(), storage);
  QStringList labels;
  for (int i = 0; i < files->childCount(); ++i) labels << files->child(i)->text(0);
  EXPECT_TRUE(labels.contains("TEMP: /u01/app/oracle/oradata/ORCL/temp01.dbf"));
  EXPECT_TRUE(labels.contains("APP_DATA: /u01/app/oracle/oradata/ORCL/app_data02.dbf"));

  ASSERT_TRUE(
      browser.SelectObject(QString(), "DataFiles", "/u01/app/oracle/oradata/ORCL/temp01.dbf"));
  EXPECT_EQ(browser.CurrentRow().value("TABLESPACE_NAME").toString(), "TEMP");
  EXPECT_EQ(browser.CurrentKind()->AlterWord, std::string("DATAFILE"));
}
