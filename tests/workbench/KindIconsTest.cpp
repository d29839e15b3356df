// The icons of the object kinds: one for every kind, each its own picture, sharp at twice the
// pixel density, shown on the browser's folders and objects and on the New menu's entries.
#include <gtest/gtest.h>

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>

#include "host/workbench/KindIcons.h"
#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tests/support/TestHost.h"

namespace {

QImage Render(const QIcon& icon, int size, qreal ratio) {
  return icon.pixmap(QSize(size, size), ratio).toImage().convertToFormat(QImage::Format_ARGB32);
}

// The share of a picture's pixels that are neither transparent nor blank.
double Coverage(const QImage& image) {
  int inked = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (qAlpha(image.pixel(x, y)) > 64) ++inked;
  return double(inked) / (image.width() * image.height());
}

TEST(KindIcons, EveryKindHasItsOwnPictureAtEveryDensity) {
  QList<QImage> seen;
  QStringList keys;
  for (const wb::TObjectKind& kind : wb::ObjectKinds()) {
    SCOPED_TRACE(kind.Key);
    const QIcon icon = wb::KindIcon(kind.Key);
    ASSERT_FALSE(icon.isNull());
    const QImage normal = Render(icon, 16, 1);
    EXPECT_EQ(normal.size(), QSize(16, 16));
    EXPECT_GT(Coverage(normal), 0.15);  // a glyph, not a dot in a blank square
    // At twice the density the picture is drawn with twice the pixels, not stretched.
    const QImage dense = Render(icon, 16, 2);
    EXPECT_EQ(dense.size(), QSize(32, 32));
    EXPECT_NE(dense, normal.scaled(32, 32));
    for (int i = 0; i < seen.size(); ++i)
      EXPECT_NE(normal, seen[i]) << "the same picture as " << keys[i].toStdString();
    seen << normal;
    keys << kind.Key;
  }
  EXPECT_TRUE(wb::KindIcon("NoSuchKind").isNull());
  EXPECT_FALSE(wb::SchemaIcon().isNull());
}

TEST(KindIcons, BrowserAndNewMenuShowTheKindsIcons) {
  wb::TObjectBrowser browser(test::DemoConnection());
  ASSERT_TRUE(browser.SelectObject(QString(), "Tablespaces", "USERS"));
  const QImage tablespace = Render(wb::KindIcon("Tablespaces"), 16, 1);
  EXPECT_EQ(Render(browser.currentItem()->icon(0), 16, 1), tablespace);
  EXPECT_EQ(Render(browser.currentItem()->parent()->icon(0), 16, 1), tablespace);

  QTemporaryDir dir;
  wb::TWorkbenchWindow window(
      std::make_unique<host::TFixtureConnection>(QJsonObject(), QJsonObject()),
      {QStringLiteral("test"), dir.path()});
  auto* menu = window.menuBar()->findChild<QMenu*>("NewMenu");
  ASSERT_NE(menu, nullptr);
  int entries = 0;
  for (const wb::TNewEntry& entry : wb::NewEntries()) {
    SCOPED_TRACE(entry.Word);
    ASSERT_NE(wb::FindKind(entry.KindKey), nullptr);
    auto* action = menu->findChild<QAction*>(QStringLiteral("New.") + entry.Word);
    if (!action) {
      for (QAction* a : menu->actions())
        if (a->objectName() == QStringLiteral("New.") + entry.Word) action = a;
    }
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(Render(action->icon(), 16, 1), Render(wb::KindIcon(entry.KindKey), 16, 1));
    ++entries;
  }
  EXPECT_EQ(entries, int(wb::NewEntries().size()));
}

}  // namespace
