// The view dialog: CREATE VIEW for a relational or an object view from a query typed in the SQL
// editor, with column aliases, the WITH options and comments; an existing view is re-opened and
// written again as CREATE OR REPLACE.
#pragma once

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

namespace Ui {
class TCreateViewFrm;
}

namespace kel {

class TKelEditor;
class TKelTreeList;

class TCreateViewFrm : public TKelDllChildFrm {
  Q_OBJECT
 public:
  // Cells of an alias row.
  enum TAliasCell { acCheck = 0, acName = 1, acComment = 2 };

  explicit TCreateViewFrm(QWidget* owner);
  ~TCreateViewFrm() override;

  void InitLoad() override;
  // "Alter": the flag, the owner and the name of the view; "ChangeOwner": the schema to preselect.
  void ReadParams(TXLink* link) override;

  // The first-word test of a query: "SELECT" in any letter case followed by a tab, a line feed,
  // a blank or "*" (a carriage return there does not pass).
  static bool LooksLikeSelect(const QString& text);
  // The view text as the dictionary keeps it, cut before a trailing WITH READ ONLY or WITH CHECK
  // OPTION; `withOption` receives which of the two was found (empty when none).
  static QString SplitViewText(const QString& text, QString* withOption);

  // The query check: the first-word test, then the server prepares the query. With `messages`
  // the outcome is shown.
  bool QueryCheck(bool messages);

  TKelTreeList* AliasTreeList() const;
  TKelEditor* SQLEditor() const;

 public slots:
  void SendEditorBtnClick();
  void SelectAllBtnClick();
  void CopyBtnClick();
  void ConfirmSQLBtnClick();
  void AutoAddBtnClick();
  void AddBtnClick();
  void EditBtnClick();
  void DeleteBtnClick();
  void ClearBtnClick();
  void SelectChkClick();
  void ObjectChkClick();
  void UnderChkClick();
  void WithChkClick();
  void ObjectSchemaCmbChange();
  void SuperOwnerCmbChange();

 protected:
  void KelDllChildFrmShow() override;
  bool Validate() override;
  void BuildSql() override;

 private:
  QString Schema() const;
  QString ViewName() const;
  QString QualifiedName() const;  // schema + "." + view name
  QString CheckValue() const;     // "True" or "False", from Select All
  QString SourcePageName() const;
  void UnderRule();
  void AddAliasRow(const QString& name, const QString& comment = QString());
  // Opens the editor's query so that its result columns can be read; EKelError when the server
  // refuses it.
  void OpenEditorQuery(const QString& query);

  // Loading an existing view.
  void LoadView();
  void LoadCheckConstraint();
  void LoadComments(bool objectView, const QString& oidText);

  // One function per statement part.
  QString HeadLine() const;
  QString AliasList() const;
  void AddObjectViewLines();
  void AddAliasLine();
  void AddQuery();
  void AddWithOption();
  void TerminateStatement();
  void AddViewComment();
  void AddColumnComments();

  Ui::TCreateViewFrm* ui;
  TKelQuery DummQry;
  TKelQuery ObjQry;
  TKelQuery TempQry;
  TKelQuery DataQry;
  TKelQuery ColumnQry;

  bool FIsAlter = false;
  QString FSchema;
  QString FViewName;
};

}  // namespace kel
