// Window > Tile and Cascade over the module's child-window dialogs on the demo database: every
// dialog keeps at least its minimum size and its place in the main area, and the table dialog
// gives a tiled window's height to its tabs, not to its header.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QTreeWidgetItem>

#include "host/core/SqlConnection.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/WorkbenchHost.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tests/workbench/DemoWorkbench.h"

namespace {

QString Fault(const QMdiSubWindow* w, const QString& what) {
  return QStringLiteral("%1: %2").arg(w->widget()->objectName(), what);
}

// Each child at least its minimum size, with its top left corner in the area; `whole` also
// asks for the window to lie inside the area's visible part.
QStringList CheckChildren(QMdiArea* mdi, bool whole) {
  QStringList faults;
  const QRect area = mdi->viewport()->rect();
  for (QMdiSubWindow* w : mdi->subWindowList()) {
    const QSize minimum = w->minimumSizeHint().expandedTo(w->minimumSize());
    if (w->width() < minimum.width() || w->height() < minimum.height())
      faults << Fault(w, QStringLiteral("%1x%2, below its minimum %3x%4")
                             .arg(w->width())
                             .arg(w->height())
                             .arg(minimum.width())
                             .arg(minimum.height()));
    const QWidget* form = w->widget();
    const QSize formMinimum = form->minimumSizeHint().expandedTo(form->minimumSize());
    if (form->width() < formMinimum.width() || form->height() < formMinimum.height())
      faults << Fault(w, QStringLiteral("the dialog is squeezed below its minimum"));
    if (w->x() < 0 || w->y() < 0 || (whole && !area.contains(w->geometry())))
      faults << Fault(w, QStringLiteral("lies at %1,%2 %3x%4, outside the %5x%6 area")
                             .arg(w->x())
                             .arg(w->y())
                             .arg(w->width())
                             .arg(w->height())
                             .arg(area.width())
                             .arg(area.height()));
  }
  return faults;
}

TEST(WorkbenchArrange, TileAndCascadeKeepEveryDialogAtLeastItsMinimumSize) {
  const QString module = wb::DefaultModulePath();
  if (!QFileInfo::exists(module)) GTEST_SKIP() << "module not built: " << module.toStdString();
  QTemporaryDir dir;
  const auto owned = test::DemoWorkbench(dir, module);
  ASSERT_TRUE(owned);
  wb::TWorkbenchWindow& window = *owned;
  window.ModuleChanged();
  window.resize(1900, 1600);
  window.show();
  QMdiArea* mdi = window.MdiArea();

  // The table dialog on a demo table, and more child-window dialogs from the New menu.
  const QString user = window.Host().CurrentDBInfo()->UserName();
  QTreeWidgetItem* tables = window.Browser()->Folder(user, "Tables");
  ASSERT_NE(tables, nullptr);
  ASSERT_GT(tables->childCount(), 0);
  window.Browser()->setCurrentItem(tables->child(0));
  window.AlterAction()->trigger();
  for (const char* word : {"VIEW", "TABLE"})
    if (QAction* a = window.NewAction(word)) a->trigger();
  QApplication::processEvents();
  const QList<QMdiSubWindow*> children = mdi->subWindowList();
  ASSERT_GE(children.size(), 3);
  QWidget* alterTable = children.first()->widget();

  auto* tile = window.findChild<QAction*>("Tile");
  auto* cascade = window.findChild<QAction*>("Cascade");
  ASSERT_TRUE(tile && cascade);
  tile->trigger();
  EXPECT_EQ(CheckChildren(mdi, true).join(u'\n').toStdString(), "");
  // The header of the tiled table dialog keeps its own height; the tabs take the rest.
  auto* header = alterTable->findChild<QWidget*>("TopPnl");
  auto* tabs = alterTable->findChild<QWidget*>("MainPage");
  ASSERT_TRUE(header && tabs);
  EXPECT_LE(header->height(), header->sizeHint().height() + 2);
  EXPECT_GT(tabs->height(), header->height());
  // Nor is its width spread between the header's fields: the schema stays beside the name.
  auto* name = alterTable->findChild<QWidget*>("TableNameEd");
  auto* schema = alterTable->findChild<QWidget*>("SchemaLbl");
  ASSERT_TRUE(name && schema);
  EXPECT_LT(schema->x() - name->geometry().right(), 40);
  EXPECT_LT(name->width(), header->width() / 2);
  cascade->trigger();
  EXPECT_EQ(CheckChildren(mdi, true).join(u'\n').toStdString(), "");

  // A main window too small for all of them: the area scrolls, nobody is squeezed.
  window.resize(700, 500);
  QApplication::processEvents();
  tile->trigger();
  EXPECT_EQ(CheckChildren(mdi, false).join(u'\n').toStdString(), "");
  cascade->trigger();
  EXPECT_EQ(CheckChildren(mdi, false).join(u'\n').toStdString(), "");
  mdi->closeAllSubWindows();
}

}  // namespace
