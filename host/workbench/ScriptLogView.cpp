#include "host/workbench/ScriptLogView.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "host/core/ScriptSplitter.h"
#include "host/core/SqlConnection.h"

namespace wb {

namespace {
const int kStatementRole = Qt::UserRole;

QString FirstLine(const QString& text) {
  const QString t = text.trimmed();
  const qsizetype end = t.indexOf(QRegularExpression(QStringLiteral("[\r\n]")));
  return end < 0 ? t : t.left(end) + QStringLiteral(" ...");
}
}  // namespace

namespace {
host::TSqlConnection* JournalOf(host::TConnection* connection) {
  auto* sql = dynamic_cast<host::TSqlConnection*>(connection);
  return sql && sql->Kind() == host::TSqlConnection::TKind::Sqlite ? sql : nullptr;
}
}  // namespace

TScriptLogView::TScriptLogView(host::TConnection* connection, QWidget* parent)
    : QWidget(parent), FJournal(nullptr) {
  setObjectName(QStringLiteral("ScriptLogView"));
  FNote = new QLabel(this);
  FNote->setObjectName(QStringLiteral("ScriptLogNote"));
  FNote->setWordWrap(true);
  FList = new QTreeWidget(this);
  FList->setObjectName(QStringLiteral("ScriptLogList"));
  FList->setColumnCount(3);
  FList->setHeaderLabels(
      {QStringLiteral("#"), QStringLiteral("Time"), QStringLiteral("Statement")});
  FList->setRootIsDecorated(false);
  FList->setUniformRowHeights(true);
  FList->header()->setStretchLastSection(true);
  connect(FList, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
    emit OpenStatement(item->data(2, kStatementRole).toString());
  });
  FClearBtn = new QPushButton(QStringLiteral("Clear"), this);
  FClearBtn->setObjectName(QStringLiteral("ScriptLogClearBtn"));
  FExportBtn = new QPushButton(QStringLiteral("Export..."), this);
  FExportBtn->setObjectName(QStringLiteral("ScriptLogExportBtn"));
  connect(FClearBtn, &QPushButton::clicked, this, &TScriptLogView::ClearRequested);
  connect(FExportBtn, &QPushButton::clicked, this, &TScriptLogView::ExportRequested);
  auto* top = new QHBoxLayout;
  top->addWidget(FNote, 1);
  top->addWidget(FClearBtn, 0, Qt::AlignTop);
  top->addWidget(FExportBtn, 0, Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addLayout(top);
  layout->addWidget(FList, 1);
  SetConnection(connection);
}

void TScriptLogView::SetConnection(host::TConnection* connection) {
  FJournal = JournalOf(connection);
  const bool journaled = FJournal != nullptr;
  FNote->setText(
      journaled
          ? QStringLiteral("This database records the statements it is given but does not run "
                           "them: the demo does not change its catalog. Every statement of every "
                           "executed script is listed here with the time it was recorded.")
          : QStringLiteral("Scripts run on the connected server and change its catalog; there "
                           "is no script log for this connection."));
  FList->clear();
  FList->setVisible(journaled);
  FClearBtn->setVisible(journaled);
  FExportBtn->setVisible(journaled);
  Refresh();
}

int TScriptLogView::Refresh() {
  if (!FJournal) return 0;
  FList->clear();
  QList<QTreeWidgetItem*> items;
  for (const host::TScriptLogEntry& entry : FJournal->ScriptLog()) {
    auto* item = new QTreeWidgetItem({QString::number(entry.Id),
                                      entry.RunAt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                                      FirstLine(entry.Statement)});
    item->setData(2, kStatementRole, entry.Statement);
    item->setToolTip(2, entry.Statement);
    items << item;
  }
  FList->addTopLevelItems(items);
  if (!items.isEmpty()) FList->scrollToItem(items.last());
  FClearBtn->setEnabled(!items.isEmpty());
  FExportBtn->setEnabled(!items.isEmpty());
  return Count();
}

void TScriptLogView::Clear() {
  if (!FJournal) return;
  FJournal->ClearScriptLog();
  Refresh();
}

QString TScriptLogView::ExportText() const {
  if (!FJournal) return QString();
  QString text;
  for (const host::TScriptLogEntry& entry : FJournal->ScriptLog()) {
    text +=
        QStringLiteral("-- %1\n").arg(entry.RunAt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")));
    const QString statement = entry.Statement.trimmed();
    if (host::IsPlSqlUnit(statement))
      text += statement + QStringLiteral("\n/\n\n");
    else
      text += statement + QStringLiteral(";\n\n");
  }
  return text;
}

int TScriptLogView::Count() const {
  return FList->topLevelItemCount();
}

QString TScriptLogView::Statement(int row) const {
  const QTreeWidgetItem* item = FList->topLevelItem(row);
  return item ? item->data(2, kStatementRole).toString() : QString();
}

}  // namespace wb
