#include "jobs/CreateJobFrn.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <QScopeGuard>

#include "jobs/CreateJobObjectFrn.h"
#include "ui_CreateJobFrn.h"

namespace kel {

const QStringList TCreateJobFrm::IntervalList = {
    QStringLiteral("TRUNC(SYSDATE+1)"),
    QStringLiteral("TRUNC(SYSDATE+7)"),
    QStringLiteral("TRUNC(SYSDATE+30)"),
    QStringLiteral("NEXT_DAY(TRUNC(SYSDATE), 'SUNDAY')"),
    QStringLiteral("TRUNC(SYSDATE+1)+6/24"),
    QStringLiteral("SYSDATE+30/1440"),
    QStringLiteral("TRUNC(LAST_DAY(SYSDATE)) + 1"),
    QStringLiteral("TRUNC(LAST_DAY(SYSDATE)) + 1 + 8/24 + 30/1440"),
};

TCreateJobFrm::TCreateJobFrm(QWidget* owner) : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateJobFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateJobFrm"));
  SetIniSave(false);
  // Both pickers start at the current date and time; their display formats are fixed, so what
  // the user sees does not depend on the machine's locale.
  ui->NextDateEd->setLocale(QLocale::c());
  ui->NextTimeEd->setLocale(QLocale::c());
  const QDateTime now = QDateTime::currentDateTime();
  ui->NextDateEd->setDate(now.date());
  ui->NextTimeEd->setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
  ui->SQLEditor->PlSqlEditor();

  connect(ui->IntervalCmb, &QComboBox::activated, this, &TCreateJobFrm::IntervalCmbChange);
  connect(ui->ObjectBtn, &QAbstractButton::clicked, this, &TCreateJobFrm::ObjectBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateJobFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateJobFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateJobFrm::CancelBtnClick);
}

TCreateJobFrm::~TCreateJobFrm() {
  delete ui;
}

void TCreateJobFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  DataQry.SetSession(DBInfo());
  JobQry.SetSession(DBInfo());
}

void TCreateJobFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("ObjectAlter")) {
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FJobName = link->ParamByString(QStringLiteral("P_JobName"));
  }
}

void TCreateJobFrm::KelDllDBDlgFrmShow() {
  if (FChangeMode) LoadJob();
}

void TCreateJobFrm::LoadJob() {
  JobQry.Close();
  JobQry.LoadSQL(QStringLiteral("SchJobNrn.Info"));
  JobQry.ParamByName(QStringLiteral("P_JOB")) = FJobName;
  JobQry.Open();
  if (JobQry.Eof()) {
    // Removed from the queue since it was browsed: no half-loaded dialog.
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("CreateJobFrm.Gone")) : QString();
    throw EKelError(FormatMsg(text, {FJobName}));
  }
  ui->JobNumberEd->setText(JobQry.FieldByName(QStringLiteral("Job Number")));
  // The catalog gives the date as YYYY-MM-DD HH24:MI:SS.
  const QDateTime next = QDateTime::fromString(JobQry.FieldByName(QStringLiteral("Next Date")),
                                               QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  if (next.isValid()) {
    ui->NextDateEd->setDate(next.date());
    ui->NextTimeEd->setTime(next.time());
  }
  ui->IntervalEd->setText(JobQry.FieldByName(QStringLiteral("Interval")));
  ui->SQLEditor->SetText(JobQry.FieldByName(QStringLiteral("What")));
  JobQry.Close();
  if (Application())
    setWindowTitle(
        FormatMsg(Application()->esGetMSG(QStringLiteral("CreateJobFrm.Alter")), {FJobName}));
}

void TCreateJobFrm::IntervalCmbChange(int index) {
  if (index < 0 || index >= IntervalList.size()) return;
  ui->IntervalEd->setText(IntervalList.at(index));
  ui->IntervalEd->setFocus(Qt::OtherFocusReason);
  ui->IntervalEd->end(false);
}

void TCreateJobFrm::ObjectBtnClick() {
  Guarded([this] {
    QPointer<TCreateJobObjectFrm> picker = new TCreateJobObjectFrm(this);
    const auto free = qScopeGuard([&picker] { delete picker.data(); });
    picker->SetParentControl(FParentControl);
    if (picker->ShowModal() != mrOk || !picker) return;
    const QString call = ComposeCall(picker->TypeText().toUpper(), picker->SchemaText(),
                                     picker->ObjectText(), picker->SubObjectText());
    if (!call.isEmpty()) ui->SQLEditor->SetText(call);
  });
}

QString TCreateJobFrm::ComposeCall(const QString& kind, const QString& schema,
                                   const QString& object, const QString& subObject) {
  QString text = schema + u'.' + object;
  if (!subObject.isEmpty()) text += u'.' + subObject;
  DataQry.Close();
  DataQry.LoadSQL(QStringLiteral("CreateJobFrn.001"));
  DataQry.ParamByName(QStringLiteral("P_OWN")) = schema;
  if (kind == u"PROCEDURE") {
    DataQry.ParamByName(QStringLiteral("P_OBJNAME")) = object;
    DataQry.ParamByName(QStringLiteral("P_PKGNAME")) = QString();
  } else {
    DataQry.ParamByName(QStringLiteral("P_OBJNAME")) = subObject;
    DataQry.ParamByName(QStringLiteral("P_PKGNAME")) = object;
  }
  DataQry.Open();
  // The arguments as named placeholders for the user to replace, their types as comments.
  if (!DataQry.Eof()) {
    text += CRLF + u'(';
    for (bool first = true; !DataQry.Eof(); DataQry.Next(), first = false) {
      if (!first) text += QStringLiteral("   ,");
      text += DataQry.FieldByName(QStringLiteral("Argument_Name")) + QStringLiteral(" /*") +
              DataQry.FieldByName(QStringLiteral("Data_Type")) + QStringLiteral("*/") + CRLF;
    }
    text = Trim(text) + u')' + CRLF;
  }
  DataQry.Close();
  return Trim(text) + u';';
}

bool TCreateJobFrm::Validate() {
  if (Trim(ui->NextDateEd->text()).isEmpty()) return CheckFail(ui->NextDateLbl, ui->NextDateEd);
  if (Trim(ui->SQLEditor->Text()).isEmpty()) return CheckFail(ui->WhatGrp->title(), ui->SQLEditor);
  return true;
}

QString TCreateJobFrm::NextDateText() const {
  // Fixed formats: the same text whatever the machine's locale or time zone.
  return QStringLiteral("to_date('%1 %2','dd/mm/yyyy hh24:mi:ss')")
      .arg(ui->NextDateEd->date().toString(QStringLiteral("dd/MM/yyyy")),
           ui->NextTimeEd->time().toString(QStringLiteral("HH:mm:ss")));
}

QString TCreateJobFrm::ParseText() const {
  return ui->NoparseRdo->isChecked() ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

QString TCreateJobFrm::WhatText() const {
  // Inserted as typed: the call's own quotes are the user's to double.
  return Trim(ui->SQLEditor->Text());
}

QString TCreateJobFrm::IntervalText() const {
  // The interval is an expression in a string literal; its quotes (NEXT_DAY(..., 'SUNDAY'))
  // are doubled so that the block compiles.
  return QuoteSql(Trim(ui->IntervalEd->text()));
}

void TCreateJobFrm::AddSubmitBlock() {
  TSqlMemo& m = SqlMemo();
  m.Add(QStringLiteral("DECLARE                                              "));
  m.Add(QStringLiteral("  X NUMBER;                                          "));
  m.Add(QStringLiteral("BEGIN ") + QString(24, u'\t'));
  m.Add(QStringLiteral("  SYS.DBMS_JOB.SUBMIT ") + QString(16, u'\t'));
  m.Add(QStringLiteral("\t (\t                                                "));
  m.Add(QStringLiteral("\t    Job       => X                                  "));
  m.Add(QStringLiteral("\t   ,What      => '") + WhatText() + QStringLiteral("'\t\t\t"));
  m.Add(QStringLiteral("\t   ,Next_Date => ") + NextDateText());
  if (!IntervalText().isEmpty())
    m.Add(QStringLiteral("\t   ,Interval  => '") + IntervalText() + QStringLiteral("'    "));
  m.Add(QStringLiteral("\t   ,No_Parse  => ") + ParseText());
  m.Add(QStringLiteral("\t ); ") + QString(23, u'\t') + QStringLiteral(" \t"));
  m.Add(QStringLiteral("END; ") + QString(24, u'\t'));
}

void TCreateJobFrm::AddChangeBlock() {
  TSqlMemo& m = SqlMemo();
  m.Add(QStringLiteral("BEGIN") + QString(13, u'\t'));
  m.Add(QStringLiteral("\tSYS.DBMS_JOB.CHANGE") + QString(6, u'\t'));
  m.Add(QStringLiteral("\t(") + QString(15, u'\t'));
  m.Add(QStringLiteral("\t\t Job       => ") + Trim(ui->JobNumberEd->text()));
  m.Add(QStringLiteral("   ,What      => '") + WhatText() + QStringLiteral("'\t\t\t"));
  m.Add(QStringLiteral("\t\t,Next_Date => ") + NextDateText());
  if (!IntervalText().isEmpty())
    m.Add(QStringLiteral("\t   ,Interval  => '") + IntervalText() + QStringLiteral("'  "));
  m.Add(QStringLiteral("\t);") + QString(14, u'\t'));
  m.Add(QStringLiteral("END; ") + QString(13, u'\t'));
}

void TCreateJobFrm::BuildSql() {
  SqlMemo().Clear();
  if (FChangeMode)
    AddChangeBlock();
  else
    AddSubmitBlock();
  RefreshOwnedPreview();
}

}  // namespace kel
