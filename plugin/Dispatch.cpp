#include "plugin/Dispatch.h"

#include <QPointer>
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
}  // namespace

std::span<const TDispatchRow> DispatchTable() {
  return kTable;
}

void RegisterOpenRoutine(const char* word, TOpenRoutine routine) {
  for (TDispatchRow& row : kTable)
    if (qstrcmp(row.Word, word) == 0) row.Routine = routine;
}

namespace {
// Upper case for the letters a to z only: no other character turns into a word's letter (a
// dotless i is no I).
QString AsciiUpper(const QString& text) {
  QString out = text;
  for (QChar& c : out)
    if (c >= u'a' && c <= u'z') c = QChar(c.unicode() - u'a' + u'A');
  return out;
}
}  // namespace

bool Dispatch(const QString& word, int* Result, QWidget* ParentControl, TXLink* Link) {
  const QString upper = AsciiUpper(word);
  for (const TDispatchRow& row : kTable) {
    if (upper != QLatin1String(row.Word)) continue;
    if (!row.Routine) return false;
    row.Routine(Result, ParentControl, Link);
    return true;
  }
  return false;
}

namespace {
// Stands for the preview window among the children of an owner that is no widget (a window
// cannot be the child of a plain object) and frees the window with that owner.
class TPreviewAnchor : public QObject {
 public:
  TPreviewAnchor(QObject* owner, TViewSqlFrm* form) : QObject(owner), Form(form) {
    setObjectName(QStringLiteral("ViewSqlFrm"));
  }
  ~TPreviewAnchor() override { delete Form.data(); }
  QPointer<TViewSqlFrm> Form;
};

// A link without an owner shares one preview, which frees itself when closed.
QPointer<TViewSqlFrm> gOwnerlessPreview;

TViewSqlFrm* FindPreview(QObject* owner) {
  if (!owner) return gOwnerlessPreview.data();
  if (auto* ownerWidget = qobject_cast<QWidget*>(owner))
    return ownerWidget->findChild<TViewSqlFrm*>(QStringLiteral("ViewSqlFrm"),
                                                Qt::FindDirectChildrenOnly);
  auto* anchor =
      owner->findChild<TPreviewAnchor*>(QStringLiteral("ViewSqlFrm"), Qt::FindDirectChildrenOnly);
  return anchor ? anchor->Form.data() : nullptr;
}

TViewSqlFrm* NewPreview(QObject* owner) {
  auto* ownerWidget = qobject_cast<QWidget*>(owner);
  auto* form = new TViewSqlFrm(ownerWidget);
  if (!owner) {
    form->setAttribute(Qt::WA_DeleteOnClose, true);
    gOwnerlessPreview = form;
  } else if (!ownerWidget) {
    if (auto* anchor = owner->findChild<TPreviewAnchor*>(QStringLiteral("ViewSqlFrm"),
                                                         Qt::FindDirectChildrenOnly))
      anchor->Form = form;
    else
      new TPreviewAnchor(owner, form);
  }
  return form;
}
}  // namespace

void OpenViewSqlFrm(int* Result, QWidget* ParentControl, TXLink* Link) {
  if (!Link) return;  // the preview always needs a link: its owner owns the window
  try {
    TViewSqlFrm* form = FindPreview(Link->Owner());
    if (!form) form = NewPreview(Link->Owner());
    detail::Store(Result, form->SetParentControl(ParentControl));
    form->ReadParams(Link);
    form->show();
    form->raise();
  } catch (...) {
  }
}

}  // namespace kel
