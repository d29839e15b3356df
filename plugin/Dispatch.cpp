#include "plugin/Dispatch.h"

#include <array>

#include "plugin/ViewSQLFrn.h"

namespace kel {

namespace {
using enum TFormShape;

std::array<TDispatchRow, 22> kTable{{
    {"CONSTRAINT", "TCreateConstraintFrm", Modal, nullptr},
    {"ADDCONSTRAINT", "TCreateConstraintFrm", Modal, nullptr},
    {"ALTERCONSTRAINT", "TAlterConstraintFrm", Modal, nullptr},
    {"DBLINK", "TCreateDBLinkFrm", Modal, nullptr},
    {"INDEX", "TCreateIndexFrm", Modal, nullptr},
    {"JOB", "TCreateJobFrm", Modal, nullptr},
    {"OBJECT TYPE", "TCreateTypeFrm", Modal, nullptr},
    {"COLLECTION TYPE", "TCreateCollectFrm", Modal, nullptr},
    {"REDOLOGGROUP", "TCreateRedoLogGroupFrm", Modal, nullptr},
    {"ROLE", "TCreateRoleFrm", Modal, nullptr},
    {"ROLLBACKSEGMENT", "TCreateRollbackSegmentFrm", Modal, nullptr},
    {"SEQUENCE", "TCreateSequenceFrm", Modal, nullptr},
    {"SYNONYM", "TCreateSynonymFrm", Modal, nullptr},
    {"TABLE", "TCreateTableFrm", Child, nullptr},
    {"TABLESPACE", "TCreateTablespaceFrm", Modal, nullptr},
    {"USER", "TCreateUserFrm", Modal, nullptr},
    {"VIEW", "TCreateViewFrm", Child, nullptr},
    {"VIEWSQLFRN", "TViewSqlFrm", Preview, &OpenViewSqlFrm},
    {"TRIGGER", "TCreateTriggerFrm", Modal, nullptr},
    {"PROFILE", "TCreateProfileFrm", Modal, nullptr},
    {"DATAFILE", "TCreateDataFileFrm", Modal, nullptr},
    {"SELECTDATAFILE", "TCreateTablespaceListFrm", Modal, nullptr},
}};

const char* const kPreviewProperty = "ViewSqlFrm";
}  // namespace

std::span<const TDispatchRow> DispatchTable() {
  return kTable;
}

void RegisterOpenRoutine(const char* word, TOpenRoutine routine) {
  for (TDispatchRow& row : kTable)
    if (qstrcmp(row.Word, word) == 0) row.Routine = routine;
}

bool Dispatch(const QString& word, int* Result, QWidget* ParentControl, TXLink* Link) {
  const QString upper = word.toUpper();
  for (const TDispatchRow& row : kTable) {
    if (upper != QLatin1String(row.Word)) continue;
    if (!row.Routine) return false;
    row.Routine(Result, ParentControl, Link);
    return true;
  }
  return false;
}

void OpenViewSqlFrm(int* Result, QWidget* ParentControl, TXLink* Link) {
  if (!Link) return;  // the preview always needs a link: its owner owns the window
  QObject* owner = Link->Owner();
  auto* ownerWidget = qobject_cast<QWidget*>(owner);
  TViewSqlFrm* form = nullptr;
  if (ownerWidget)
    form = ownerWidget->findChild<TViewSqlFrm*>(QStringLiteral("ViewSqlFrm"),
                                                Qt::FindDirectChildrenOnly);
  else if (owner)
    form = qobject_cast<TViewSqlFrm*>(owner->property(kPreviewProperty).value<QObject*>());
  try {
    if (!form) {
      form = new TViewSqlFrm(ownerWidget);
      if (!ownerWidget && owner) {
        owner->setProperty(kPreviewProperty, QVariant::fromValue<QObject*>(form));
        QObject::connect(owner, &QObject::destroyed, form, &QObject::deleteLater);
      }
      form->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    detail::Store(Result, form->SetParentControl(ParentControl));
    form->ReadParams(Link);
    form->show();
    form->raise();
  } catch (...) {
  }
}

}  // namespace kel
