#include "tables/AlterConstraintFrn.h"

#include <QGroupBox>
#include <QRadioButton>

#include "plugin/KelQuery.h"
#include "ui_AlterConstraintFrn.h"

namespace kel {

namespace {
// The radio buttons of a group in their order (NoChange first).
QList<QRadioButton*> Items(const QGroupBox* group) {
  QList<QRadioButton*> items;
  for (int i = 0; i < group->layout()->count(); ++i)
    if (auto* radio = qobject_cast<QRadioButton*>(group->layout()->itemAt(i)->widget()))
      items << radio;
  return items;
}
}  // namespace

TAlterConstraintFrm::TAlterConstraintFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TAlterConstraintFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("AlterConstraintFrm"));
  SetIniSave(false);
  for (QGroupBox* group : {ui->StatusRG, ui->ValidationRG, ui->RelyRG})
    for (QRadioButton* radio : Items(group))
      connect(radio, &QAbstractButton::clicked, this, [this, group] { StatusRGClick(group); });
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TAlterConstraintFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TAlterConstraintFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TAlterConstraintFrm::CancelBtnClick);
}

TAlterConstraintFrm::~TAlterConstraintFrm() {
  delete ui;
}

void TAlterConstraintFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FSchema = link->ParamByString(QStringLiteral("P_Schema"));
  FTableName = link->ParamByString(QStringLiteral("P_TableName"));
  FConstraintName = link->ParamByString(QStringLiteral("P_ConstraintName"));
}

void TAlterConstraintFrm::KelDllDBDlgFrmShow() {
  // The constraint must still exist: nothing is offered for one dropped since it was listed.
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("AlterConstraintFrn.Constraint"));
  q.ParamByName(QStringLiteral("P_OWN")) = Trim(FSchema);
  q.ParamByName(QStringLiteral("P_TABLE")) = Trim(FTableName);
  q.ParamByName(QStringLiteral("P_CONSTRAINT")) = Trim(FConstraintName);
  q.Open();
  if (q.Eof()) {
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("AlterConstraintFrn.NotFound"))
                      : QString();
    throw EKelError(FormatMsg(text, {Trim(FConstraintName), Trim(FSchema), Trim(FTableName)}));
  }
  setWindowTitle(FormatMsg(QStringLiteral("%s [%s] "),
                           {windowTitle(), FSchema + QStringLiteral(".") + FTableName}));
}

int TAlterConstraintFrm::ItemIndex(const QGroupBox* group) {
  const QList<QRadioButton*> items = Items(group);
  for (int i = 0; i < items.size(); ++i)
    if (items[i]->isChecked()) return i;
  return 0;
}

void TAlterConstraintFrm::SetItemIndex(QGroupBox* group, int index) {
  const QList<QRadioButton*> items = Items(group);
  if (index >= 0 && index < items.size()) items[index]->setChecked(true);
}

void TAlterConstraintFrm::StatusRGClick(QGroupBox* group) {
  const bool stateChanged = ItemIndex(ui->StatusRG) != 0 || ItemIndex(ui->ValidationRG) != 0;
  if (ItemIndex(ui->RelyRG) == 0 || !stateChanged) return;
  if (group == ui->RelyRG) {
    SetItemIndex(ui->StatusRG, 0);
    SetItemIndex(ui->ValidationRG, 0);
  } else {
    SetItemIndex(ui->RelyRG, 0);
  }
  if (Application())
    Application()->esMsgDBox(QStringLiteral("AlterConstraintFrn.001"), QStringList(),
                             TMsgDlgType::Warning, false);
}

void TAlterConstraintFrm::BuildSql() {
  TSqlMemo& memo = SqlMemo();
  memo.Clear();
  const int status = ItemIndex(ui->StatusRG);
  const int validation = ItemIndex(ui->ValidationRG);
  const int rely = ItemIndex(ui->RelyRG);
  if (status == 0 && validation == 0 && rely == 0) {
    RefreshOwnedPreview();
    return;
  }
  memo.Add(QStringLiteral("ALTER TABLE ") + Trim(FSchema) + u'.' + Trim(FTableName));
  memo.Add(QStringLiteral("MODIFY CONSTRAINT ") + Trim(FConstraintName));
  if (rely) memo.Add(rely == 1 ? QStringLiteral("RELY") : QStringLiteral("NORELY"));
  if (status) memo.Add(status == 1 ? QStringLiteral("ENABLE") : QStringLiteral("DISABLE"));
  if (validation)
    memo.Add(validation == 1 ? QStringLiteral("VALIDATE") : QStringLiteral("NOVALIDATE"));
  RefreshOwnedPreview();
}

void TAlterConstraintFrm::OkBtnClick() {
  Guarded([this] {
    BuildSql();
    // Nothing chosen: the dialog closes without running anything.
    if (!Trim(SqlMemo().Text()).isEmpty() && !ExecuteSqlMemo()) return;
    if (Tracker()) Tracker()->SetChanged(false);
    SetModalResult(mrOk);
  });
}

}  // namespace kel
