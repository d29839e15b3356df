// The add-constraint dialog: adds one primary key, unique key, check or foreign key to an
// existing table with ALTER TABLE ... ADD CONSTRAINT.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

class QAbstractButton;
class QComboBox;

namespace Ui {
class TCreateConstraintFrm;
}

namespace kel {

class TKelTreeList;

class TCreateConstraintFrm : public TKelDllDBDlgFrm {
  Q_OBJECT
 public:
  explicit TCreateConstraintFrm(QWidget* owner);
  ~TCreateConstraintFrm() override;

  void InitLoad() override;
  // "Add": the table to add to; "ChangeOwner": the schema to preselect.
  void ReadParams(TXLink* link) override;

 public slots:
  void OkBtnClick();
  void TypeRadioClick();
  void SchemaCmbChange();
  void TblCmbChange();
  void FSchemaCmb2Change();
  void FTblCmb2Change();
  void RightBtnClick();
  void RightAllBtnClick();
  void LeftBtnClick();
  void LeftAllBtnClick();
  void UpperBtnClick();
  void LowerBtnClick();
  void FKSetBtnClick();
  void FKDeleteBtnClick();
  void UpdateState();

 protected:
  void KelDllDBDlgFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  enum class TKind { Primary, Check, Unique, Foreign };
  TKind Kind() const;
  QList<QStringList> TableColumns(const QString& schema, const QString& table);
  void FillTables(QComboBox* combo, const QString& schema);
  void ShowMissing(const QString& schema, const QString& table);
  QString ExistingPrimaryKey();
  bool SelectFail(QAbstractButton* radio, QWidget* control);

  // One function per part of the statement.
  void AddDropPrimaryKey();
  void AddHead();
  void AddKeyBody();
  void AddCheckBody();
  void AddForeignBody();
  void AddState(bool withIndex);

  Ui::TCreateConstraintFrm* ui;
  TKelQuery TempQry;
  QString FSchema;
  QString FTableName;
  bool FIsAdd = false;
  // The name of the table's primary key found by the last build (empty: none).
  QString FReplacedKey;
};

}  // namespace kel
