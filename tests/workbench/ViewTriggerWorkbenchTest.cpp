// The workbench on the demo database with the built module: New View / New Trigger in the
// browsed schema, Alter... on a browsed view and trigger, and a trigger on a browsed view.
#include <Qsci/qsciscintilla.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "host/core/SqlConnection.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/ObjectKinds.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tests/workbench/DemoWorkbench.h"

namespace {

// Runs `fn` on the modal dialog once it is up, then closes it; never hangs in its loop.
void OnModal(std::function<void(QDialog*)> fn, int attempts = 200) {
  QTimer::singleShot(10, [fn, attempts] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog) {
      if (attempts > 0) OnModal(fn, attempts - 1);
      return;
    }
    fn(dialog);
    if (dialog->isVisible()) dialog->done(2);
  });
}

class ViewTriggerWorkbench : public ::testing::Test {
 protected:
  void SetUp() override {
    const QString module = wb::DefaultModulePath();
    if (!QFileInfo::exists(module)) GTEST_SKIP() << "module not built: " << module.toStdString();
    FWindow = test::DemoWorkbench(FDir, module);
    ASSERT_TRUE(FWindow);
    FWindow->Host().SetMessageAnswerer([](const wb::TMessageRequest&) { return 6; });
    FWindow->show();
  }

  // The newest child window of the MDI area.
  QWidget* Child() const {
    const QList<QMdiSubWindow*> windows = FWindow->MdiArea()->subWindowList();
    return windows.isEmpty() ? nullptr : windows.last()->widget();
  }

  QTemporaryDir FDir;
  std::unique_ptr<wb::TWorkbenchWindow> FWindow;
};

}  // namespace

TEST_F(ViewTriggerWorkbench, ViewOpensNewInTheBrowsedSchemaAndLoadedForAlter) {
  ASSERT_TRUE(FWindow->Browser()->SelectObject("HR", "Views", "EMP_DETAILS_VIEW"));
  FWindow->NewAction("VIEW")->trigger();
  QWidget* created = Child();
  ASSERT_NE(created, nullptr);
  EXPECT_EQ(created->objectName(), "CreateViewFrm");
  EXPECT_EQ(created->findChild<QComboBox*>("SchemaCmb")->currentText(), "HR");
  created->close();

  ASSERT_TRUE(FWindow->Browser()->SelectObject("APP", "Views", "EMP_V"));
  FWindow->AlterAction()->trigger();
  QWidget* altered = Child();
  ASSERT_NE(altered, nullptr);
  EXPECT_EQ(altered->findChild<QLineEdit*>("ViewNameEd")->text(), "EMP_V");
  EXPECT_FALSE(altered->findChild<QLineEdit*>("ViewNameEd")->isEnabled());
  // The module's own editor class is not this program's: reached through its library's base.
  EXPECT_TRUE(
      altered->findChild<QsciScintilla*>("SQLEditor")->text().startsWith("SELECT EMPNO, ENAME"));
  altered->close();
}

TEST_F(ViewTriggerWorkbench, TriggerOpensNewOnAViewAndLoadedForAlter) {
  ASSERT_TRUE(FWindow->Browser()->SelectObject("APP", "Triggers", "EMP_AUDIT_AIUD"));
  QString schema;
  OnModal([&](QDialog* d) { schema = d->findChild<QComboBox*>("SchemaCmb")->currentText(); });
  FWindow->NewAction("TRIGGER")->trigger();
  EXPECT_EQ(schema, "APP");

  QString table, name;
  OnModal([&](QDialog* d) {
    table = d->findChild<QLineEdit*>("TableEd")->text();
    name = d->findChild<QLineEdit*>("TriggerNameEd")->text();
  });
  FWindow->AlterAction()->trigger();
  EXPECT_EQ(table, "EMP");
  EXPECT_EQ(name, "EMP_AUDIT_AIUD");

  ASSERT_TRUE(FWindow->Browser()->SelectObject("APP", "Views", "EMP_V"));
  bool insteadOf = false;
  QString view;
  OnModal([&](QDialog* d) {
    insteadOf = d->findChild<QRadioButton*>("InsteadRadio")->isChecked();
    view = d->findChild<QLineEdit*>("ViewEd")->text();
  });
  for (const wb::TObjectAction& action : wb::ObjectActions())
    if (QLatin1String(action.Caption) == QLatin1String("New Trigger on View..."))
      FWindow->RunObjectAction(action);
  EXPECT_TRUE(insteadOf);
  EXPECT_EQ(view, "EMP_V");
}
