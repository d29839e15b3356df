// The job dialog: schedules a PL/SQL call as a database job. It writes an anonymous block that
// submits a new job through SYS.DBMS_JOB.SUBMIT or, in change mode, changes an existing one
// through SYS.DBMS_JOB.CHANGE. The call is typed or composed by the job object picker.
#pragma once

#include <QStringList>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateJobFrm;
}

namespace kel {

class TCreateJobFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateJobFrm(QWidget* owner);
  ~TCreateJobFrm() override;

  void InitLoad() override;
  // "ObjectAlter": the schema and number of a job. They do not switch the dialog to change
  // mode: the host's alter request opens a new-job dialog.
  void ReadParams(TXLink* link) override;
  // Change mode: the dialog loads the job of the given number and writes DBMS_JOB.CHANGE.
  // Nothing in the module sets it.
  void SetChangeMode(bool on) { FChangeMode = on; }

  // The call to run composed from the picker's choice: name, then the arguments as placeholders.
  QString ComposeCall(const QString& kind, const QString& schema, const QString& object,
                      const QString& subObject);

  // The interval expressions of the presets, by position.
  static const QStringList IntervalList;

 public slots:
  void IntervalCmbChange(int index);
  void ObjectBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  void LoadJob();

  // Fragments of the block.
  QString NextDateText() const;
  QString ParseText() const;
  QString WhatText() const;
  QString IntervalText() const;
  void AddSubmitBlock();
  void AddChangeBlock();

  Ui::TCreateJobFrm* ui;
  TKelQuery DataQry;
  TKelQuery JobQry;

  bool FChangeMode = false;
  QString FSchema;
  QString FJobName;
};

}  // namespace kel
