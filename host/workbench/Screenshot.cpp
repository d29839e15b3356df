#include "host/workbench/Screenshot.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QImage>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScrollBar>
#include <QTreeWidgetItem>

#include "host/workbench/ObjectBrowser.h"
#include "host/workbench/WorkbenchHost.h"
#include "host/workbench/WorkbenchWindow.h"

namespace wb {

namespace {

bool Fail(QString* error, const QString& text) {
  if (error) *error = text;
  return false;
}

void Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

}  // namespace

bool SaveScreenshot(TWorkbenchWindow& window, const QString& file, QString* error) {
  window.resize(1480, 900);
  window.show();
  Settle();

  // The browser on a table of the connected user, its dialog opened through Alter...
  const QString user = window.Host().CurrentDBInfo()->UserName();
  QTreeWidgetItem* tables = window.Browser()->Folder(user, QStringLiteral("Tables"));
  if (!tables || tables->childCount() == 0)
    return Fail(error, QStringLiteral("the schema %1 has no table to show").arg(user));
  QTreeWidgetItem* table = tables->child(0);
  for (int i = 0; i < tables->childCount(); ++i)
    if (tables->child(i)->text(0) == QLatin1String("EMP")) table = tables->child(i);
  window.Browser()->setCurrentItem(table);
  window.AlterAction()->trigger();
  Settle();
  QMdiSubWindow* sub = window.MdiArea()->activeSubWindow();
  if (!sub) return Fail(error, QStringLiteral("the table dialog did not open"));
  sub->setGeometry(QRect(QPoint(0, 0), sub->minimumSizeHint().expandedTo(QSize(780, 560))));

  // ... a column added as the user adds one ...
  QWidget* form = sub->widget();
  auto* add = form->findChild<QAbstractButton*>(QStringLiteral("AddFieldBtn"));
  // The list lives in the module (its own copy of the class): it is driven by name.
  auto* columns = form->findChild<QWidget*>(QStringLiteral("ColumnTL"));
  auto* viewSql = form->findChild<QAbstractButton*>(QStringLiteral("ViewSqlBtn"));
  if (!add || !columns || !viewSql)
    return Fail(error, QStringLiteral("the table dialog lacks its column list or buttons"));
  add->click();
  int row = 0;
  QMetaObject::invokeMethod(columns, "RowCount", Q_RETURN_ARG(int, row));
  --row;
  const std::pair<const char*, const char*> cells[] = {{"ColumnTreeColumnName", "BONUS"},
                                                       {"ColumnTreeColumnType", "NUMBER"},
                                                       {"ColumnTreeColumnPrec", "8"},
                                                       {"ColumnTreeColumnScale", "2"}};
  for (const auto& [column, value] : cells) {
    int col = -1;
    bool done = false;
    QString why;
    QMetaObject::invokeMethod(columns, "ColumnByName", Q_RETURN_ARG(int, col),
                              Q_ARG(QString, QString::fromLatin1(column)));
    QMetaObject::invokeMethod(columns, "EditCell", Q_RETURN_ARG(bool, done), Q_ARG(int, row),
                              Q_ARG(int, col), Q_ARG(QString, QString::fromLatin1(value)),
                              Q_ARG(QString*, &why));
    if (!done) return Fail(error, QStringLiteral("the new column's %1: %2").arg(column, why));
  }
  QMetaObject::invokeMethod(columns, "SetFocusedRow", Q_ARG(int, row));
  if (auto* scroll = qobject_cast<QAbstractScrollArea*>(columns))
    scroll->horizontalScrollBar()->setValue(0);

  // ... and the statement it makes in the View SQL window, beside the dialog.
  viewSql->click();
  Settle();
  QDialog* preview = nullptr;
  for (QDialog* d : window.findChildren<QDialog*>(QStringLiteral("ViewSqlFrm")))
    if (d->isVisible()) preview = d;
  if (!preview) return Fail(error, QStringLiteral("the View SQL window did not open"));
  const QRect area(window.MdiArea()->mapTo(&window, QPoint(0, 0)), window.MdiArea()->size());
  preview->resize(area.width() - sub->width() + 120, 300);
  preview->move(window.mapToGlobal(area.bottomRight() - QPoint(preview->width() + 8, 308)));
  Settle();

  // Windows of their own are not in the main window's picture: the preview is drawn over it
  // where it stands, with a frame.
  QImage image = window.grab().toImage();
  {
    QPainter painter(&image);
    const QPoint at = window.mapFromGlobal(preview->mapToGlobal(QPoint(0, 0)));
    painter.drawPixmap(at, preview->grab());
    painter.setPen(QPen(QColor(80, 80, 80), 1));
    painter.drawRect(QRect(at, preview->size()).adjusted(-1, -1, 0, 0));
  }
  if (!image.save(file, "PNG")) return Fail(error, QStringLiteral("cannot write %1").arg(file));
  return true;
}

}  // namespace wb
