// The workbench on the demo database with the built module: the index and constraint dialogs
// open from the browser with their objects loaded.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "host/core/SqlConnection.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/ObjectKinds.h"
#include "host/workbench/WorkbenchHost.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tests/workbench/DemoWorkbench.h"

namespace {

// Runs `look` on the next modal dialog, then closes it with Escape.
void OnModal(const std::function<void(QDialog*)>& look) {
  auto* timer = new QTimer;
  QObject::connect(timer, &QTimer::timeout, [timer, look] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    look(dialog);
    dialog->reject();
  });
  timer->start(10);
}

struct TDemoWorkbench : ::testing::Test {
  void SetUp() override {
    const QString module = wb::DefaultModulePath();
    if (!QFileInfo::exists(module)) GTEST_SKIP() << "module not built";
    Window = test::DemoWorkbench(Dir, module);
    ASSERT_TRUE(Window);
    Window->show();
  }
  QTemporaryDir Dir;
  std::unique_ptr<wb::TWorkbenchWindow> Window;
};

}  // namespace

TEST_F(TDemoWorkbench, BrowsedIndexTableAndConstraintOpenTheirDialogs) {
  const QString user = QStringLiteral("APP");
  ASSERT_TRUE(Window->Browser()->SelectObject(user, "Indexes", "EMP_DEPT_IX"));
  QString caption, table, next;
  OnModal([&](QDialog* d) {
    caption = d->windowTitle();
    table = d->findChild<QComboBox*>("TableIndexTblCmb")->currentText();
    next = d->findChild<QLineEdit*>("NextExtentEd")->text();
  });
  Window->AlterAction()->trigger();
  EXPECT_EQ(caption, "Alter Index - APP.EMP_DEPT_IX");
  EXPECT_EQ(table, "EMP");
  EXPECT_EQ(next, "128");

  ASSERT_TRUE(Window->Browser()->SelectObject(user, "Tables", "DEPT"));
  QString addTable, indexTable;
  for (const wb::TObjectAction& action : wb::ObjectActions()) {
    if (QLatin1String(action.Caption) == QLatin1String("Add Constraint...")) {
      OnModal([&](QDialog* d) { addTable = d->findChild<QComboBox*>("TblCmb")->currentText(); });
      Window->RunObjectAction(action);
    }
    if (QLatin1String(action.Caption) == QLatin1String("New Index on Table...")) {
      OnModal([&](QDialog* d) {
        indexTable = d->findChild<QComboBox*>("TableIndexTblCmb")->currentText();
      });
      Window->RunObjectAction(action);
    }
  }
  EXPECT_EQ(addTable, "DEPT");
  EXPECT_EQ(indexTable, "DEPT");

  // "New > Index" and "New > Constraint" in the browsed schema.
  ASSERT_TRUE(Window->Browser()->SelectObject("SALES", "Tables", "ORDERS"));
  QString indexSchema, tableSchema, constraintSchema;
  OnModal([&](QDialog* d) {
    indexSchema = d->findChild<QComboBox*>("SchemaCmb")->currentText();
    tableSchema = d->findChild<QComboBox*>("TableIndexSchemaCmb")->currentText();
  });
  Window->NewAction("INDEX")->trigger();
  EXPECT_EQ(indexSchema, "SALES");
  EXPECT_EQ(tableSchema, "SALES");
  OnModal([&](QDialog* d) {
    constraintSchema = d->findChild<QComboBox*>("FSchemaCmb2")->currentText();
  });
  Window->NewAction("CONSTRAINT")->trigger();
  EXPECT_EQ(constraintSchema, "SALES");

  ASSERT_TRUE(Window->Browser()->SelectObject(user, "Constraints", "CK_EMP_SAL"));
  OnModal([&](QDialog* d) { caption = d->windowTitle(); });
  Window->AlterAction()->trigger();
  EXPECT_EQ(caption, "Alter Constraint [APP.EMP] ");
}
