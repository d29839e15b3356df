// The trigger dialog: one CREATE OR REPLACE TRIGGER script for a table, a view, a nested table
// of a view, the database or a schema, with DML, DDL or database events, and a PL/SQL body or a
// procedure call. An existing trigger is loaded into the same controls and written again.
#pragma once

#include <QDateTime>

#include "plugin/DataSelectFrn.h"
#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateTriggerFrm;
}

class QAbstractButton;
class QLineEdit;

namespace kel {

class TKelEditor;
class TKelTreeList;

class TCreateTriggerFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  // What the trigger is defined on, in the order of the "On" radios.
  enum TOnMode { omTable, omView, omNested, omDatabase, omSchema };
  // Cells of an update-column row.
  enum TUpdateCell { ucColID = 0, ucName = 1, ucType = 2, ucFire = 3 };

  explicit TCreateTriggerFrm(QWidget* owner);
  ~TCreateTriggerFrm() override;

  void InitLoad() override;
  // "Alter": the flag, owner and name of the trigger; "AddTable" / "AddView": the table or view
  // the new trigger is on; "ChangeOwner": the schema to preselect.
  void ReadParams(TXLink* link) override;

  // The source of the template's creation date (the clock, unless a test fixes it).
  static QDateTime (*Now)();
  // The body template for the trigger `name`, created at `when`, one string per line.
  static QStringList BodyTemplate(const QString& name, const QDateTime& when);
  // The UPDATE OF item: "OF A", then "  ,B", ..., every name followed by a lone CR.
  static QString UpdateColumnList(const QStringList& columns);

  TOnMode OnMode() const;
  // The script as the statement list holds it (built by View SQL and OK).
  const TSqlMemo& Statements() const { return FStatements; }
  TKelTreeList* UpdateColumnsTreeList() const;
  TKelEditor* BodyEditor() const;
  TKelEditor* WhenClauseEditor() const;

 public slots:
  void ViewSqlBtnClick();
  void BasicOnClick();
  void subDatabaseRadioClick();
  void FireWhenClick();
  void UpdateChkClick();
  void UpdateRadio2Click();
  void SchemaSearchBtnClick();
  void TableSearchBtnClick();
  void ViewSearchBtnClick();
  void NestedSearchBtnClick();
  void LoadTemplateBtnClick();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  QString Schema() const;
  QString TriggerName() const;
  QString TargetSchema() const;
  // Which groups the target mode and the event type show.
  bool OnObject() const;  // table, view or nested table: DML events, For Each, Referencing
  bool DdlGroupShown() const;
  bool DatabaseGroupShown() const;
  bool UpdatePageVisible() const;
  bool WhenPageVisible() const;
  void SetPageVisible(QWidget* page, bool visible);
  void SetOnMode(TOnMode mode);
  // The picker over `key`, narrowed to the owner in the schema edit when `narrow`; the chosen
  // row's `field` goes into `edit`.
  void PickInto(QLineEdit* edit, const QString& key, bool narrow,
                const QList<TDataSelectColumn>& columns, const char* titleKey, const char* noteKey,
                const QString& field);
  int RunPicker(const QList<TDataSelectColumn>& columns, const QString& title, const QString& note);
  void LoadUpdateColumns();
  void WriteTemplate();

  // Loading an existing trigger.
  void LoadTrigger();
  void LoadEvents(const QString& events);
  void LoadReferencing(const QString& names);
  void LoadTriggerColumns();

  // One function per script item.
  void AddHead();
  void AddEventLine();
  void AddUpdateColumns();
  void AddTarget();
  void AddReferencing();
  void AddForEachRow();
  void AddWhen();
  void AddBody();
  void AddDisable();

  Ui::TCreateTriggerFrm* ui;
  TKelQuery TempQry;
  TKelQuery DataQry;
  TSqlMemo FStatements;

  bool FIsAlter = false;
  QString FSchema;
  QString FTriggerName;
};

}  // namespace kel
