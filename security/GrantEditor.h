// The grant editor shared by the user and the role dialog: four pages (granted roles, system
// privileges, object privileges, resource consumer groups), each with a list of what is not
// granted and a list of what is granted, and the GRANT / REVOKE text that turns the difference
// between the loaded and the edited state into statements for one grantee.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"

class QComboBox;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace kel {

class TKelTreeList;

// The four pages of a dialog's page control that the grant editor fills: they belong to the
// dialog's form, the editor builds their lists and buttons.
struct TGrantPages {
  QWidget* Roles;
  QWidget* System;
  QWidget* Object;
  QWidget* Resource;
};

// One row of a role, system privilege or resource group list. `Origin` is true for a grant that
// existed when the page was loaded; it travels with the row between the two lists.
struct TGrantRow {
  QString Name;
  QString Property;  // system privileges: the privilege's property code, as text
  bool Admin = false;
  bool Origin = false;
  bool AdminSave = false;  // the admin option as loaded
};

// One row of the object grant list.
struct TObjectGrantRow {
  bool Revoke = false;  // ticked on a loaded grant: revoke it
  QString Grant;        // "SELECT", or "UPDATE (SAL)" for a column privilege
  QString Schema;
  QString Object;
  bool IsNew = false;  // added while the dialog is open: still to be granted
};

// Everything the four pages hold, as the statement builder reads it.
struct TGrantLists {
  QList<TGrantRow> Roles, GrantedRoles;
  QList<TGrantRow> Privileges, GrantedPrivileges;
  QList<TObjectGrantRow> Objects;
  QList<TGrantRow> Groups, GrantedGroups;
};

// The few texts in which the user and the role dialog differ.
struct TGrantTexts {
  QString RoleRevoke;    // arguments: role, grantee
  QString ObjectGrant;   // arguments: grant, schema, object, grantee
  QString ObjectRevoke;  // same arguments
};
const TGrantTexts& UserGrantTexts();
const TGrantTexts& RoleGrantTexts();

// The host's texts for granting and revoking one system privilege.
struct TSysPrivilegeTexts {
  std::function<QString(const QString& grantee, const QString& privilege, bool admin, int kind)>
      Grant;
  std::function<QString(const QString& grantee, const QString& privilege, int kind)> Revoke;
};

// The statements, one line each, in page order: roles, system privileges, object grants,
// resource groups. In create mode only the granted lists count.
QStringList GrantStatements(const TGrantLists& lists, const QString& grantee, bool isAlter,
                            const TGrantTexts& texts, const TSysPrivilegeTexts& sys);

// The server's major version: the number just before the first "." of the version text
// ("Oracle9i Enterprise Edition Release 9.2.0.1.0" gives 9, "19.0.0.0.0" gives 19); -1 when
// the text holds none.
int MajorVersion(const QString& versionText);
// The object privileges offered for an object type, cut to what the server version admits.
QStringList ObjectPrivileges(const QString& objectType, int majorVersion);

// Colouring of changed rows in alter mode. `col` is -1 for "the whole row".
enum class TGrantListKind { Available, Granted, Objects };
bool RowPainted(TGrantListKind kind, bool origin, bool isNewObject);
bool AdminCellPainted(TGrantListKind kind, bool origin, bool admin, bool adminSave);

// Moves the rows `rows` (any order) of `from` to `to`, all columns copied, in list order; the
// source rows are deleted afterwards with their indices corrected for rows already deleted.
void MoveRows(TKelTreeList* from, TKelTreeList* to, QList<int> rows);
// Moves every row, as taking the first row until the source is empty does.
void MoveAllRows(TKelTreeList* from, TKelTreeList* to);

class TGrantEditor : public QObject {
  Q_OBJECT
 public:
  // `form` owns the pages and the queries' connection; `grantee` gives the trimmed name typed
  // in the owning dialog. The pages' contents are built here.
  TGrantEditor(TKelBaseFrm* form, QWidget* formWidget, const TGrantPages& pages,
               const TGrantTexts& texts, std::function<QString()> grantee);

  // Connection-dependent set-up: the schema list of the object browser.
  void InitLoad();
  void SetAlter(bool isAlter) { FIsAlter = isAlter; }
  bool IsAlter() const { return FIsAlter; }

  // Puts the pages' controls, in page order, into the form's tab order right after `before`.
  void SetTabOrder(QWidget* before) const;

  // Filling a page and browsing objects are not edits: the form's change tracker stops
  // watching the list fills and the browser's combos (moves and cell edits still count).
  void Untrack() const;

  // Fills `page` the first time it becomes the active page.
  void MainPageChange(QWidget* page);
  bool Loaded(QWidget* page) const;

  TGrantLists Lists() const;
  // Appends the grant statements to `memo`, one item per statement line.
  void AddStatements(TSqlMemo& memo) const;

  // The lists, for hosts and tests that drive them.
  TKelTreeList* RolesTreeList() const { return FRoles; }
  TKelTreeList* GrantedRolesTreeList() const { return FGrantedRoles; }
  TKelTreeList* PrivilegeTreeList() const { return FPrivs; }
  TKelTreeList* GrantedPrivilegeTreeList() const { return FGrantedPrivs; }
  TKelTreeList* ObjTreeList() const { return FObjects; }
  TKelTreeList* ObjGrantTv() const { return FObjGrant; }
  QTreeWidget* ObjNameTv() const { return FObjName; }
  TKelTreeList* ResourceGroupTreeList() const { return FGroups; }
  TKelTreeList* GrantedResourceGroupTreeList() const { return FGrantedGroups; }

 public slots:
  void RoleDownBtnClick();
  void RoleUpBtnClick();
  void RoleDownAllBtnClick();
  void RoleUpAllBtnClick();
  void SystemDownBtnClick();
  void SystemUpBtnClick();
  void SystemDownAllBtnClick();
  void SystemUpAllBtnClick();
  void ResrcDownBtnClick();
  void ResrcUpBtnClick();
  void ResrcDownAllBtnClick();
  void ResrcUpAllBtnClick();
  void ObjTypeCmbChange();
  void SchemaCmbChange();
  void SearchBtnClick();
  void ObjNameTvExpanding(QTreeWidgetItem* item);
  void ObjNameTvFocusChanged(QTreeWidgetItem* item);
  void ObjDownBtnClick();
  void ObjDownAllBtnClick();
  void ObjUpBtnClick();
  void ObjUpAllBtnClick();

 private:
  void BuildListPage(QWidget* page, TKelTreeList*& upper, TKelTreeList*& lower,
                     const QString& prefix);
  void BuildObjectPage();
  TKelTreeList* NewList(QWidget* parent, const QString& name);
  void AddGrantColumns(TKelTreeList* list, const QStringList& captions, bool withProperty,
                       bool adminEditable);
  void Move(TKelTreeList* from, TKelTreeList* to, bool all);
  void Recolour(TKelTreeList* list) const;

  void FillRoles();
  void FillPrivileges();
  void FillObjects();
  void FillGroups();
  void AddObjectGrants(const QList<int>& rows);

  QList<TGrantRow> ReadRows(const TKelTreeList* list) const;
  static QStringList RowCells(const TGrantRow& row, bool withProperty);

  TKelBaseFrm* FForm;
  TGrantTexts FTexts;
  std::function<QString()> FGrantee;
  bool FIsAlter = false;
  TKelQuery TempQry;

  TGrantPages FPages;
  QList<QWidget*> FLoadedPages;

  TKelTreeList* FRoles = nullptr;
  TKelTreeList* FGrantedRoles = nullptr;
  TKelTreeList* FPrivs = nullptr;
  TKelTreeList* FGrantedPrivs = nullptr;
  TKelTreeList* FGroups = nullptr;
  TKelTreeList* FGrantedGroups = nullptr;
  TKelTreeList* FObjects = nullptr;
  TKelTreeList* FObjGrant = nullptr;
  QTreeWidget* FObjName = nullptr;
  QComboBox* FObjTypeCmb = nullptr;
  QComboBox* FSchemaCmb = nullptr;
};

}  // namespace kel
