#include "security/GrantEditor.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "plugin/KelTreeList.h"

namespace kel {

namespace {

const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

// Node data of the object browser.
constexpr int kObjectRole = Qt::UserRole + 1;  // object name (table for a column node)
constexpr int kSchemaRole = Qt::UserRole + 2;
constexpr int kTypeRole = Qt::UserRole + 3;  // object type, "COLUMN" for a column node
constexpr int kLoadedRole = Qt::UserRole + 4;
constexpr int kColumnRole = Qt::UserRole + 5;

const QColor kChangeStyle(255, 236, 160);

// Where the flags sit in a list: role lists have no property column, group lists no admin.
struct TListShape {
  bool HasProperty = false;
  bool HasAdmin = true;
  int Admin() const { return HasProperty ? 2 : 1; }
  int Origin() const { return HasAdmin ? Admin() + 1 : 1; }
  int AdminSave() const { return Origin() + 1; }
};

// The shape travels with the list as dynamic properties.
void SetShape(TKelTreeList* list, TListShape shape) {
  list->setProperty("grantHasProperty", shape.HasProperty);
  list->setProperty("grantHasAdmin", shape.HasAdmin);
}
TListShape ShapeOf(const TKelTreeList* list) {
  return TListShape{list->property("grantHasProperty").toBool(),
                    list->property("grantHasAdmin").toBool()};
}

bool IsTrue(const QString& s) {
  return s == kTrue;
}

// Object browser searches, by ObjTypeCmb index.
struct TSearch {
  const char* Item;
  const char* Key;
  const char* Type;  // P_TYPE bind, empty for none
  const char* Root;
  const char* NameColumn;
  const char* ObjectType;  // what its nodes are granted as
};
const TSearch kSearches[] = {
    {"TYPES", "CreateRoleFrn.Type", "", "Types", "TYPE_NAME", "TYPE"},
    {"SEQUENCES", "CreateRoleFrn.Sequence", "", "Sequences", "SEQUENCE_NAME", "SEQUENCE"},
    {"SNAPSHOTS", "CreateRoleFrn.Snapshot", "", "Snapshots", "NAME", "MATERIALIZED VIEW"},
    {"SYNONYMS", "CreateRoleFrn.Synonym", "", "Synonyms", "SYNONYM_NAME", "SYNONYM"},
    {"TABLES", "CreateRoleFrn.Table", "", "Tables", "TABLE_NAME", "TABLE"},
    {"VIEWS", "CreateRoleFrn.View", "", "Views", "VIEW_NAME", "VIEW"},
    {"FUNCTIONS", "CreateRoleFrn.Proc", "FUNCTION", "Functions", "OBJECT_NAME", "FUNCTION"},
    {"PACKAGES", "CreateRoleFrn.Proc", "PACKAGE", "Packages", "OBJECT_NAME", "PACKAGE"},
    {"PACKAGE BODYS", "CreateRoleFrn.Proc", "PACKAGE BODY", "Package Bodys", "OBJECT_NAME",
     "PACKAGE"},
    {"PROCEDURES", "CreateRoleFrn.Proc", "PROCEDURE", "Procedures", "OBJECT_NAME", "PROCEDURE"},
};

}  // namespace

// ---------------------------------------------------------------------------------------------
// Statement texts

const TGrantTexts& UserGrantTexts() {
  static const TGrantTexts texts{QStringLiteral("REVOKE %s FROM %s ;"),
                                 QStringLiteral("GRANT %s ON %s.%s TO %s;"),
                                 QStringLiteral("REVOKE %s ON %s.%s FROM %s;")};
  return texts;
}

const TGrantTexts& RoleGrantTexts() {
  static const TGrantTexts texts{QStringLiteral("REVOKE %s FROM %s;"),
                                 QStringLiteral("GRANT %s ON %s.%s TO %s ;"),
                                 QStringLiteral("REVOKE %s ON %s.%s FROM %s ;")};
  return texts;
}

namespace {

QString GrantRole(const TGrantRow& row, const QString& grantee) {
  return FormatMsg(row.Admin ? QStringLiteral("GRANT %s TO %s WITH ADMIN OPTION;")
                             : QStringLiteral("GRANT %s TO %s ;"),
                   {Trim(row.Name), grantee});
}

int PropertyOf(const TGrantRow& row) {
  return Trim(row.Property).toInt();
}

void AddRoleStatements(QStringList& out, const TGrantLists& l, const QString& grantee, bool isAlter,
                       const TGrantTexts& texts) {
  if (isAlter)
    for (const TGrantRow& row : l.Roles)
      if (row.Origin) out << FormatMsg(texts.RoleRevoke, {Trim(row.Name), grantee});
  for (const TGrantRow& row : l.GrantedRoles) {
    if (isAlter && row.Origin) {
      if (row.Admin == row.AdminSave) continue;
      // A changed admin option is a revoke of the role and its grant again.
      out << FormatMsg(QStringLiteral("REVOKE %s FROM %s;"), {Trim(row.Name), grantee});
    }
    out << GrantRole(row, grantee);
  }
}

void AddPrivilegeStatements(QStringList& out, const TGrantLists& l, const QString& grantee,
                            bool isAlter, const TSysPrivilegeTexts& sys) {
  if (isAlter)
    for (const TGrantRow& row : l.Privileges)
      if (row.Origin) out << sys.Revoke(grantee, Trim(row.Name), PropertyOf(row));
  for (const TGrantRow& row : l.GrantedPrivileges) {
    if (isAlter && row.Origin) {
      if (row.Admin == row.AdminSave) continue;
      out << sys.Revoke(grantee, Trim(row.Name), PropertyOf(row));
    }
    out << sys.Grant(grantee, Trim(row.Name), row.Admin, PropertyOf(row));
  }
}

void AddObjectStatements(QStringList& out, const TGrantLists& l, const QString& grantee,
                         bool isAlter, const TGrantTexts& texts) {
  for (const TObjectGrantRow& row : l.Objects) {
    const QStringList args{Trim(row.Grant), Trim(row.Schema), Trim(row.Object), grantee};
    if (row.IsNew || !isAlter)
      out << FormatMsg(texts.ObjectGrant, args);
    else if (row.Revoke)
      out << FormatMsg(texts.ObjectRevoke, args);
  }
}

void AddRevokeGroup(QStringList& out, const QString& group, const QString& grantee) {
  out << QStringLiteral("BEGIN")
      << QStringLiteral("  SYS.DBMS_RESOURCE_MANAGER_PRIVS.REVOKE_SWITCH_CONSUMER_GROUP(")
      << FormatMsg(QStringLiteral("    REVOKEE_NAME => '%s',"), {grantee})
      << FormatMsg(QStringLiteral("    CONSUMER_GROUP => '%s' "), {group}) << QStringLiteral("  );")
      << QStringLiteral("END;") << QStringLiteral("/");
}

void AddGrantGroup(QStringList& out, const QString& group, const QString& grantee) {
  out << QStringLiteral("BEGIN")
      << QStringLiteral("  SYS.DBMS_RESOURCE_MANAGER_PRIVS.GRANT_SWITCH_CONSUMER_GROUP(")
      << FormatMsg(QStringLiteral("    GRANTEE_NAME => '%s',"), {grantee})
      << FormatMsg(QStringLiteral("    CONSUMER_GROUP => '%s',"), {group})
      << QStringLiteral("    GRANT_OPTION => FALSE") << QStringLiteral("  );")
      << QStringLiteral("END;") << QStringLiteral("/");
}

void AddGroupStatements(QStringList& out, const TGrantLists& l, const QString& grantee,
                        bool isAlter) {
  if (isAlter)
    for (const TGrantRow& row : l.Groups)
      if (row.Origin) AddRevokeGroup(out, Trim(row.Name), grantee);
  for (const TGrantRow& row : l.GrantedGroups)
    if (!isAlter || !row.Origin) AddGrantGroup(out, Trim(row.Name), grantee);
}

}  // namespace

QStringList GrantStatements(const TGrantLists& lists, const QString& grantee, bool isAlter,
                            const TGrantTexts& texts, const TSysPrivilegeTexts& sys) {
  QStringList out;
  AddRoleStatements(out, lists, grantee, isAlter, texts);
  AddPrivilegeStatements(out, lists, grantee, isAlter, sys);
  AddObjectStatements(out, lists, grantee, isAlter, texts);
  AddGroupStatements(out, lists, grantee, isAlter);
  return out;
}

// ---------------------------------------------------------------------------------------------
// Object privileges

int MajorVersion(const QString& versionText) {
  const int dot = versionText.indexOf(u'.');
  if (dot <= 0) return -1;
  int start = dot;
  while (start > 0 && versionText[start - 1].isDigit()) --start;
  if (start == dot) return -1;
  return versionText.mid(start, dot - start).toInt();
}

QStringList ObjectPrivileges(const QString& objectType, int majorVersion) {
  QStringList list;
  if (objectType == u"VIEW")
    list = {"DELETE", "INSERT", "UPDATE", "SELECT", "DEBUG", "REFERENCES", "UNDER", "FLASHBACK"};
  else if (objectType == u"TABLE")
    list = {"ALTER",  "UPDATE",        "INSERT",
            "DELETE", "SELECT",        "FLASHBACK",
            "DEBUG",  "QUERY REWRITE", "ON COMMIT REFRESH",
            "INDEX"};
  else if (objectType == u"PACKAGE" || objectType == u"FUNCTION" || objectType == u"PROCEDURE")
    list = {"EXECUTE", "DEBUG"};
  else if (objectType == u"SEQUENCE")
    list = {"ALTER", "SELECT"};
  else if (objectType == u"TYPE")
    list = {"EXECUTE", "DEBUG"};
  else if (objectType == u"MATERIALIZED VIEW")
    list = {"FLASHBACK", "UPDATE", "INSERT", "DELETE", "SELECT"};
  else if (objectType == u"COLUMN")
    list = {"INSERT", "REFERENCES", "UPDATE"};
  // An unknown version offers everything, as the newest servers take it.
  if (majorVersion == 9) {
    list.removeAll(QStringLiteral("DEBUG"));
    list.removeAll(QStringLiteral("FLASHBACK"));
  } else if (majorVersion >= 0 && majorVersion <= 8) {
    for (const char* p :
         {"ON COMMIT REFRESH", "QUERY REWRITE", "DEBUG", "UNDER", "FLASHBACK", "WRITE"})
      list.removeAll(QString::fromLatin1(p));
  }
  return list;
}

// ---------------------------------------------------------------------------------------------
// Colouring

bool RowPainted(TGrantListKind kind, bool origin, bool isNewObject) {
  switch (kind) {
    case TGrantListKind::Available:
      return origin;  // a loaded grant moved out: it will be revoked
    case TGrantListKind::Granted:
      return !origin;  // a new grant
    case TGrantListKind::Objects:
      return isNewObject;
  }
  return false;
}

bool AdminCellPainted(TGrantListKind kind, bool origin, bool admin, bool adminSave) {
  return kind == TGrantListKind::Granted && origin && admin != adminSave;
}

// ---------------------------------------------------------------------------------------------
// Moves

void MoveRows(TKelTreeList* from, TKelTreeList* to, QList<int> rows) {
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  rows.erase(std::remove_if(rows.begin(), rows.end(),
                            [from](int r) { return r < 0 || r >= from->RowCount(); }),
             rows.end());
  if (rows.isEmpty()) return;
  QList<QStringList> copied;
  for (int r : rows) copied << from->RowCells(r);
  to->AddRows(copied);
  // Every deletion shifts the rows below it up by one.
  for (int i = 0; i < rows.size(); ++i) from->DeleteRow(rows[i] - i);
}

void MoveAllRows(TKelTreeList* from, TKelTreeList* to) {
  QList<QStringList> copied;
  copied.reserve(from->RowCount());
  for (int r = 0; r < from->RowCount(); ++r) copied << from->RowCells(r);
  to->AddRows(copied);
  from->ClearRows();
}

// ---------------------------------------------------------------------------------------------
// The editor

TGrantEditor::TGrantEditor(TKelBaseFrm* form, QWidget* formWidget, const TGrantPages& pages,
                           const TGrantTexts& texts, std::function<QString()> grantee)
    : QObject(formWidget), FForm(form), FTexts(texts), FGrantee(std::move(grantee)), FPages(pages) {
  BuildListPage(FPages.Roles, FRoles, FGrantedRoles, QStringLiteral("Role"));
  FRoles->setObjectName(QStringLiteral("RolesTreeList"));
  FGrantedRoles->setObjectName(QStringLiteral("GrantedRolesTreeList"));
  AddGrantColumns(FRoles, {"Role Name", "Admin Option", "Revoke?", "Admin Save"}, false, false);
  AddGrantColumns(FGrantedRoles, {"Granted Role Name", "Admin Option", "Revoke?", "Admin Save"},
                  false, true);

  BuildListPage(FPages.System, FPrivs, FGrantedPrivs, QStringLiteral("System"));
  FPrivs->setObjectName(QStringLiteral("PrivilegeTreeList"));
  FGrantedPrivs->setObjectName(QStringLiteral("GrantedPrivilegeTreeList"));
  AddGrantColumns(FPrivs, {"Privilege Name", "Property", "Admin?", "Revoke", "Admin Save"}, true,
                  false);
  AddGrantColumns(FGrantedPrivs,
                  {"Granted Privilege Name", "Property", "Admin Option", "Revoke", "Admin Save"},
                  true, true);

  BuildObjectPage();

  BuildListPage(FPages.Resource, FGroups, FGrantedGroups, QStringLiteral("Resrc"));
  FGroups->setObjectName(QStringLiteral("ResourceGroupTreeList"));
  FGrantedGroups->setObjectName(QStringLiteral("GrantedResourceGroupTreeList"));
  for (auto [list, caption] : {std::pair{FGroups, "Resource Group Name"},
                               std::pair{FGrantedGroups, "Granted Resource Group Name"}}) {
    list->AddColumn({list->objectName() + QStringLiteral("Name"),
                     QString::fromLatin1(caption),
                     TCellEditor::Text,
                     {},
                     0,
                     0,
                     false,
                     true,
                     260});
    list->AddColumn({list->objectName() + QStringLiteral("Revoke"),
                     QStringLiteral("Revoke"),
                     TCellEditor::Check,
                     {},
                     0,
                     0,
                     false,
                     true,
                     70});
    SetShape(list, TListShape{false, false});
  }

  // Double-click moves the selection to the other list.
  auto dbl = [this](TKelTreeList* list, void (TGrantEditor::*move)()) {
    connect(list, &TKelTreeList::RowDoubleClicked, this, [this, list, move](int) {
      if (!list->SelectedRows().isEmpty()) (this->*move)();
    });
  };
  dbl(FRoles, &TGrantEditor::RoleDownBtnClick);         // RolesTreeListDblClick
  dbl(FGrantedRoles, &TGrantEditor::RoleUpBtnClick);    // GrantedRolesTreeListDblClick
  dbl(FPrivs, &TGrantEditor::SystemDownBtnClick);       // PrivilegeTreeListDblClick
  dbl(FGrantedPrivs, &TGrantEditor::SystemUpBtnClick);  // GrantedPrivilegeTreeListDblClick
  dbl(FGroups, &TGrantEditor::ResrcDownBtnClick);       // ResourceGroupTreeListDblClick
  dbl(FGrantedGroups, &TGrantEditor::ResrcUpBtnClick);  // GrantedResourceGroupTreeListDblClick
  dbl(FObjGrant, &TGrantEditor::ObjDownBtnClick);       // ObjGrantTvDblClick
  dbl(FObjects, &TGrantEditor::ObjUpBtnClick);          // ObjTreeListDblClick

  for (TKelTreeList* list : {FGrantedRoles, FGrantedPrivs, FObjects})
    connect(list, &TKelTreeList::EditValueChanged, this, [this, list] { Recolour(list); });
}

TKelTreeList* TGrantEditor::NewList(QWidget* parent, const QString& name) {
  auto* list = new TKelTreeList(parent);
  list->setObjectName(name);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list->setMinimumHeight(120);
  return list;
}

void TGrantEditor::BuildListPage(QWidget* page, TKelTreeList*& upper, TKelTreeList*& lower,
                                 const QString& prefix) {
  auto* layout = new QVBoxLayout(page);
  upper = NewList(page, QString());
  lower = NewList(page, QString());
  auto* buttons = new QHBoxLayout();
  auto button = [&](const QString& suffix, const QString& caption, void (TGrantEditor::*slot)()) {
    auto* b = new QPushButton(caption, page);
    b->setObjectName(prefix + suffix);
    connect(b, &QPushButton::clicked, this, slot);
    buttons->addWidget(b);
  };
  const bool role = prefix == u"Role";
  const bool sys = prefix == u"System";
  button(QStringLiteral("DownBtn"), QStringLiteral("Grant"),
         role  ? &TGrantEditor::RoleDownBtnClick
         : sys ? &TGrantEditor::SystemDownBtnClick
               : &TGrantEditor::ResrcDownBtnClick);
  button(QStringLiteral("DownAllBtn"), QStringLiteral("Grant All"),
         role  ? &TGrantEditor::RoleDownAllBtnClick
         : sys ? &TGrantEditor::SystemDownAllBtnClick
               : &TGrantEditor::ResrcDownAllBtnClick);
  button(QStringLiteral("UpBtn"), QStringLiteral("Revoke"),
         role  ? &TGrantEditor::RoleUpBtnClick
         : sys ? &TGrantEditor::SystemUpBtnClick
               : &TGrantEditor::ResrcUpBtnClick);
  button(QStringLiteral("UpAllBtn"), QStringLiteral("Revoke All"),
         role  ? &TGrantEditor::RoleUpAllBtnClick
         : sys ? &TGrantEditor::SystemUpAllBtnClick
               : &TGrantEditor::ResrcUpAllBtnClick);
  buttons->addStretch(1);
  layout->addWidget(upper, 1);
  layout->addLayout(buttons);
  layout->addWidget(lower, 1);
}

void TGrantEditor::AddGrantColumns(TKelTreeList* list, const QStringList& captions,
                                   bool withProperty, bool adminEditable) {
  const QString base = list->objectName();
  int i = 0;
  list->AddColumn({base + QStringLiteral("Name"),
                   captions[i++],
                   TCellEditor::Text,
                   {},
                   0,
                   0,
                   false,
                   true,
                   240});
  if (withProperty)
    list->AddColumn({base + QStringLiteral("Property"),
                     captions[i++],
                     TCellEditor::Text,
                     {},
                     0,
                     0,
                     false,
                     true,
                     70});
  list->AddColumn({base + QStringLiteral("Admin"),
                   captions[i++],
                   TCellEditor::Check,
                   {},
                   0,
                   0,
                   adminEditable,
                   true,
                   90});
  list->AddColumn({base + QStringLiteral("Revoke"),
                   captions[i++],
                   TCellEditor::Check,
                   {},
                   0,
                   0,
                   false,
                   true,
                   70});
  list->AddColumn({base + QStringLiteral("AdminSave"),
                   captions[i++],
                   TCellEditor::Check,
                   {},
                   0,
                   0,
                   false,
                   true,
                   80});
  SetShape(list, TListShape{withProperty, true});
}

void TGrantEditor::BuildObjectPage() {
  QWidget* page = FPages.Object;
  auto* layout = new QVBoxLayout(page);

  auto* search = new QHBoxLayout();
  auto* typeLbl = new QLabel(QStringLiteral("Object Type :"), page);
  typeLbl->setObjectName(QStringLiteral("ObjTypeLbl"));
  FObjTypeCmb = new QComboBox(page);
  FObjTypeCmb->setObjectName(QStringLiteral("ObjTypeCmb"));
  for (const TSearch& s : kSearches) FObjTypeCmb->addItem(QString::fromLatin1(s.Item));
  FObjTypeCmb->setCurrentIndex(0);
  auto* schemaLbl = new QLabel(QStringLiteral("Schema :"), page);
  schemaLbl->setObjectName(QStringLiteral("SchemaLbl"));
  FSchemaCmb = new QComboBox(page);
  FSchemaCmb->setObjectName(QStringLiteral("SchemaCmb"));
  auto* searchBtn = new QPushButton(QStringLiteral("Search"), page);
  searchBtn->setObjectName(QStringLiteral("SearchBtn"));
  search->addWidget(typeLbl);
  search->addWidget(FObjTypeCmb, 1);
  search->addWidget(schemaLbl);
  search->addWidget(FSchemaCmb, 1);
  search->addWidget(searchBtn);
  layout->addLayout(search);

  auto* browse = new QHBoxLayout();
  FObjName = new QTreeWidget(page);
  FObjName->setObjectName(QStringLiteral("ObjNameTv"));
  FObjName->setHeaderLabels({QStringLiteral("Object")});
  FObjGrant = NewList(page, QStringLiteral("ObjGrantTv"));
  for (const char* caption : {"Grant", "Object", "Schema", "Column"})
    FObjGrant->AddColumn({QStringLiteral("ObjGrantTv") + QString::fromLatin1(caption),
                          QString::fromLatin1(caption),
                          TCellEditor::Text,
                          {},
                          0,
                          0,
                          false,
                          true,
                          110});
  browse->addWidget(FObjName, 1);
  browse->addWidget(FObjGrant, 1);
  layout->addLayout(browse, 1);

  auto* buttons = new QHBoxLayout();
  for (auto [name, caption, slot] :
       {std::tuple{"ObjDownBtn", "Grant", &TGrantEditor::ObjDownBtnClick},
        std::tuple{"ObjDownAllBtn", "Grant All", &TGrantEditor::ObjDownAllBtnClick},
        std::tuple{"ObjUpBtn", "Remove", &TGrantEditor::ObjUpBtnClick},
        std::tuple{"ObjUpAllBtn", "Remove All", &TGrantEditor::ObjUpAllBtnClick}}) {
    auto* b = new QPushButton(QString::fromLatin1(caption), page);
    b->setObjectName(QString::fromLatin1(name));
    connect(b, &QPushButton::clicked, this, slot);
    buttons->addWidget(b);
  }
  buttons->addStretch(1);
  layout->addLayout(buttons);

  FObjects = NewList(page, QStringLiteral("ObjTreeList"));
  FObjects->AddColumn({QStringLiteral("ObjTreeListRevoke"),
                       QStringLiteral("Revoke?"),
                       TCellEditor::Check,
                       {},
                       0,
                       0,
                       true,
                       true,
                       70});
  FObjects->AddColumn({QStringLiteral("ObjTreeListGrant"),
                       QStringLiteral("Grant"),
                       TCellEditor::Text,
                       {},
                       0,
                       0,
                       false,
                       true,
                       160});
  FObjects->AddColumn({QStringLiteral("ObjTreeListSchema"),
                       QStringLiteral("Schema"),
                       TCellEditor::Text,
                       {},
                       0,
                       0,
                       false,
                       true,
                       110});
  FObjects->AddColumn({QStringLiteral("ObjTreeListObject"),
                       QStringLiteral("Object"),
                       TCellEditor::Text,
                       {},
                       0,
                       0,
                       false,
                       true,
                       160});
  FObjects->AddColumn({QStringLiteral("ObjTreeListGrantNew"),
                       QStringLiteral("Grant?"),
                       TCellEditor::Check,
                       {},
                       0,
                       0,
                       false,
                       true,
                       70});
  layout->addWidget(FObjects, 1);

  connect(FObjTypeCmb, &QComboBox::currentIndexChanged, this, &TGrantEditor::ObjTypeCmbChange);
  connect(FSchemaCmb, &QComboBox::currentIndexChanged, this, &TGrantEditor::SchemaCmbChange);
  connect(searchBtn, &QPushButton::clicked, this, &TGrantEditor::SearchBtnClick);
  connect(FObjName, &QTreeWidget::itemExpanded, this, &TGrantEditor::ObjNameTvExpanding);
  connect(FObjName, &QTreeWidget::currentItemChanged, this,
          [this](QTreeWidgetItem* item) { ObjNameTvFocusChanged(item); });
}

void TGrantEditor::InitLoad() {
  TempQry.SetSession(FForm->DBInfo());
  const QSignalBlocker block(FSchemaCmb);
  FForm->FillSchemaCombo(FSchemaCmb);
  TKelBaseFrm::UpperCaseItems(FSchemaCmb);
}

void TGrantEditor::Untrack() const {
  TChangeEventClass* tracker = FForm->Tracker();
  if (!tracker) return;
  for (TKelTreeList* list :
       {FRoles, FGrantedRoles, FPrivs, FGrantedPrivs, FGroups, FGrantedGroups, FObjects, FObjGrant})
    QObject::disconnect(list, &TKelTreeList::RowsChanged, tracker, nullptr);
  QObject::disconnect(FObjGrant, nullptr, tracker, nullptr);
  QObject::disconnect(FObjTypeCmb, nullptr, tracker, nullptr);
  QObject::disconnect(FSchemaCmb, nullptr, tracker, nullptr);
}

namespace {
// The controls that take the Tab key, in the order their layouts show them.
void AppendTabStops(const QLayout* layout, QList<QWidget*>& out) {
  for (int i = 0; i < layout->count(); ++i) {
    QLayoutItem* item = layout->itemAt(i);
    if (QWidget* w = item->widget(); w && (w->focusPolicy() & Qt::TabFocus))
      out << w;
    else if (item->layout())
      AppendTabStops(item->layout(), out);
  }
}
}  // namespace

void TGrantEditor::SetTabOrder(QWidget* before) const {
  QList<QWidget*> stops;
  for (const QWidget* page : {FPages.Roles, FPages.System, FPages.Object, FPages.Resource})
    AppendTabStops(page->layout(), stops);
  // Each control is taken out of the chain and put right after the previous one, so the
  // controls that followed `before` now follow the last of them.
  for (QWidget* w : stops) {
    QWidget::setTabOrder(before, w);
    before = w;
  }
}

// ---------------------------------------------------------------------------------------------
// Rows

QStringList TGrantEditor::RowCells(const TGrantRow& row, bool withProperty) {
  QStringList cells{row.Name};
  if (withProperty) cells << row.Property;
  cells << BoolToStr(row.Admin) << BoolToStr(row.Origin) << BoolToStr(row.AdminSave);
  return cells;
}

QList<TGrantRow> TGrantEditor::ReadRows(const TKelTreeList* list) const {
  const TListShape shape = ShapeOf(list);
  QList<TGrantRow> rows;
  rows.reserve(list->RowCount());
  for (int r = 0; r < list->RowCount(); ++r) {
    TGrantRow row;
    row.Name = list->Cell(r, 0);
    if (shape.HasProperty) row.Property = list->Cell(r, 1);
    if (shape.HasAdmin) {
      row.Admin = IsTrue(list->Cell(r, shape.Admin()));
      row.AdminSave = IsTrue(list->Cell(r, shape.AdminSave()));
    }
    row.Origin = IsTrue(list->Cell(r, shape.Origin()));
    rows << row;
  }
  return rows;
}

TGrantLists TGrantEditor::Lists() const {
  TGrantLists l;
  l.Roles = ReadRows(FRoles);
  l.GrantedRoles = ReadRows(FGrantedRoles);
  l.Privileges = ReadRows(FPrivs);
  l.GrantedPrivileges = ReadRows(FGrantedPrivs);
  l.Groups = ReadRows(FGroups);
  l.GrantedGroups = ReadRows(FGrantedGroups);
  for (int r = 0; r < FObjects->RowCount(); ++r)
    l.Objects << TObjectGrantRow{IsTrue(FObjects->Cell(r, 0)), FObjects->Cell(r, 1),
                                 FObjects->Cell(r, 2), FObjects->Cell(r, 3),
                                 IsTrue(FObjects->Cell(r, 4))};
  return l;
}

void TGrantEditor::AddStatements(TSqlMemo& memo) const {
  TSysPrivilegeTexts sys;
  sys.Grant = [](const QString& g, const QString& p, bool admin, int kind) {
    return Application() ? Application()->esGrantSysPrivilege(g, p, admin, kind) : QString();
  };
  sys.Revoke = [](const QString& g, const QString& p, int kind) {
    return Application() ? Application()->esRevokeSysPrivilege(g, p, kind) : QString();
  };
  for (const QString& line : GrantStatements(Lists(), FGrantee(), FIsAlter, FTexts, sys))
    memo.Add(line);
}

void TGrantEditor::Recolour(TKelTreeList* list) const {
  if (!FIsAlter) return;
  const TListShape shape = ShapeOf(list);
  const TGrantListKind kind =
      list == FObjects ? TGrantListKind::Objects
      : (list == FGrantedRoles || list == FGrantedPrivs || list == FGrantedGroups)
          ? TGrantListKind::Granted
          : TGrantListKind::Available;
  for (int r = 0; r < list->RowCount(); ++r) {
    QTreeWidgetItem* item = list->topLevelItem(r);
    bool row = false;
    QList<int> cells;
    if (kind == TGrantListKind::Objects) {
      row = RowPainted(kind, false, IsTrue(list->Cell(r, 4)));
      if (!row && IsTrue(list->Cell(r, 0))) cells << 0;
    } else {
      const bool origin = IsTrue(list->Cell(r, shape.Origin()));
      row = RowPainted(kind, origin, false);
      if (shape.HasAdmin && AdminCellPainted(kind, origin, IsTrue(list->Cell(r, shape.Admin())),
                                             IsTrue(list->Cell(r, shape.AdminSave()))))
        cells << shape.Admin();
    }
    for (int c = 0; c < list->ColumnCount(); ++c)
      item->setBackground(c, row || cells.contains(c) ? QBrush(kChangeStyle) : QBrush());
  }
}

void TGrantEditor::Move(TKelTreeList* from, TKelTreeList* to, bool all) {
  if (all)
    MoveAllRows(from, to);
  else
    MoveRows(from, to, from->SelectedRows());
  to->sortItems(0, Qt::AscendingOrder);
  Recolour(from);
  Recolour(to);
  if (FForm->Tracker()) FForm->Tracker()->Change();
}

void TGrantEditor::RoleDownBtnClick() {
  Move(FRoles, FGrantedRoles, false);
}
void TGrantEditor::RoleUpBtnClick() {
  Move(FGrantedRoles, FRoles, false);
}
void TGrantEditor::RoleDownAllBtnClick() {
  Move(FRoles, FGrantedRoles, true);
}
void TGrantEditor::RoleUpAllBtnClick() {
  Move(FGrantedRoles, FRoles, true);
}
void TGrantEditor::SystemDownBtnClick() {
  Move(FPrivs, FGrantedPrivs, false);
}
void TGrantEditor::SystemUpBtnClick() {
  Move(FGrantedPrivs, FPrivs, false);
}
void TGrantEditor::SystemDownAllBtnClick() {
  Move(FPrivs, FGrantedPrivs, true);
}
void TGrantEditor::SystemUpAllBtnClick() {
  Move(FGrantedPrivs, FPrivs, true);
}
void TGrantEditor::ResrcDownBtnClick() {
  Move(FGroups, FGrantedGroups, false);
}
void TGrantEditor::ResrcUpBtnClick() {
  Move(FGrantedGroups, FGroups, false);
}
void TGrantEditor::ResrcDownAllBtnClick() {
  Move(FGroups, FGrantedGroups, true);
}
void TGrantEditor::ResrcUpAllBtnClick() {
  Move(FGrantedGroups, FGroups, true);
}

// ---------------------------------------------------------------------------------------------
// Filling the pages

bool TGrantEditor::Loaded(QWidget* page) const {
  return FLoadedPages.contains(page);
}

void TGrantEditor::MainPageChange(QWidget* page) {
  if (!page || Loaded(page)) return;
  if (page != FPages.Roles && page != FPages.System && page != FPages.Object &&
      page != FPages.Resource)
    return;
  // Marked first: a page whose query fails stays as far as it was filled.
  FLoadedPages << page;
  FForm->Guarded([&] {
    if (page == FPages.Roles) FillRoles();
    if (page == FPages.System) FillPrivileges();
    if (page == FPages.Object) FillObjects();
    if (page == FPages.Resource) FillGroups();
  });
}

void TGrantEditor::FillRoles() {
  const QString grantee = FGrantee();
  QList<QStringList> granted;
  QSet<QString> names;
  if (FIsAlter) {
    TempQry.Close();
    TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.Alter02"));
    TempQry.ParamByName(QStringLiteral("P_NAME")) = grantee;
    TempQry.Open();
    for (; !TempQry.Eof(); TempQry.Next()) {
      TGrantRow row;
      row.Name = TempQry.FieldByName(QStringLiteral("GRANTED_ROLE"));
      row.Admin = row.AdminSave = TempQry.FieldByName(QStringLiteral("ADMIN_OPTION")) != u"NO";
      row.Origin = true;
      granted << RowCells(row, false);
      names.insert(row.Name);
    }
    TempQry.Close();
  }
  FGrantedRoles->AddRows(granted);
  QList<QStringList> available;
  TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.001"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next()) {
    TGrantRow row;
    row.Name = TempQry.FieldByName(QStringLiteral("ROLE"));
    // A role cannot be granted to itself.
    if (!names.contains(row.Name) && row.Name != grantee) available << RowCells(row, false);
  }
  TempQry.Close();
  FRoles->AddRows(available);
  FRoles->sortItems(0, Qt::AscendingOrder);
  FGrantedRoles->sortItems(0, Qt::AscendingOrder);
  Recolour(FRoles);
  Recolour(FGrantedRoles);
}

void TGrantEditor::FillPrivileges() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.002"));
  if (FIsAlter) TempQry.ParamByName(QStringLiteral("P_USER")) = FGrantee();
  TempQry.Open();
  QList<QStringList> granted, available;
  granted.reserve(TempQry.RecordCount());
  available.reserve(TempQry.RecordCount());
  for (; !TempQry.Eof(); TempQry.Next()) {
    TGrantRow row;
    row.Name = TempQry.FieldByName(QStringLiteral("Name"));
    row.Property = TempQry.FieldByName(QStringLiteral("Property"));
    if (!Trim(TempQry.FieldByName(QStringLiteral("Privilege"))).isEmpty()) {
      row.Admin = row.AdminSave = TempQry.FieldByName(QStringLiteral("ADMIN_OPTION")) != u"NO";
      row.Origin = true;
      granted << RowCells(row, true);
    } else {
      available << RowCells(row, true);
    }
  }
  TempQry.Close();
  FGrantedPrivs->AddRows(granted);
  FPrivs->AddRows(available);
  FPrivs->sortItems(0, Qt::AscendingOrder);
  FGrantedPrivs->sortItems(0, Qt::AscendingOrder);
  Recolour(FPrivs);
  Recolour(FGrantedPrivs);
}

void TGrantEditor::FillObjects() {
  if (!FIsAlter) return;
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("SchUserNrn.Object Priv"));
  TempQry.ParamByName(QStringLiteral("P_USER")) = FGrantee();
  TempQry.Open();
  QList<QStringList> rows;
  for (; !TempQry.Eof(); TempQry.Next())
    rows << QStringList{kFalse, TempQry.FieldByName(QStringLiteral("Privilege")),
                        TempQry.FieldByName(QStringLiteral("Object Owner")),
                        TempQry.FieldByName(QStringLiteral("Object Name")), kFalse};
  TempQry.Close();
  FObjects->AddRows(rows);
  Recolour(FObjects);
}

void TGrantEditor::FillGroups() {
  QSet<QString> names;
  QList<QStringList> granted;
  if (FIsAlter) {
    TempQry.Close();
    TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.Alter03"));
    TempQry.ParamByName(QStringLiteral("P_NAME")) = FGrantee();
    TempQry.Open();
    for (; !TempQry.Eof(); TempQry.Next()) {
      const QString group = TempQry.FieldByName(QStringLiteral("GRANTED_GROUP"));
      granted << QStringList{group, kTrue};
      names.insert(group);
    }
    TempQry.Close();
  }
  FGrantedGroups->AddRows(granted);
  QList<QStringList> available;
  TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.004"));
  TempQry.Open();
  for (; !TempQry.Eof(); TempQry.Next()) {
    const QString group = TempQry.FieldByName(QStringLiteral("Consumer_Group"));
    // The group of every session outside the active plan cannot be granted.
    if (group == u"OTHER_GROUPS" || names.contains(group)) continue;
    available << QStringList{group, kFalse};
  }
  TempQry.Close();
  FGroups->AddRows(available);
  FGroups->sortItems(0, Qt::AscendingOrder);
  FGrantedGroups->sortItems(0, Qt::AscendingOrder);
  Recolour(FGroups);
  Recolour(FGrantedGroups);
}

// ---------------------------------------------------------------------------------------------
// Object browser

void TGrantEditor::ObjTypeCmbChange() {
  FObjName->clear();
  FObjGrant->ClearRows();
}

void TGrantEditor::SchemaCmbChange() {
  FObjName->clear();
  FObjGrant->ClearRows();
}

void TGrantEditor::SearchBtnClick() {
  const int index = FObjTypeCmb->currentIndex();
  if (index < 0 || index >= int(std::size(kSearches))) return;
  const TSearch& s = kSearches[index];
  const QString schema = FSchemaCmb->currentText();
  FObjName->clear();
  FObjGrant->ClearRows();
  FForm->Guarded([&] {
    TempQry.Close();
    TempQry.LoadSQL(QString::fromLatin1(s.Key));
    TempQry.ParamByName(QStringLiteral("P_OWNER")) = schema;
    if (*s.Type) TempQry.ParamByName(QStringLiteral("P_TYPE")) = QString::fromLatin1(s.Type);
    TempQry.Open();
    auto* root = new QTreeWidgetItem(FObjName, {QString::fromLatin1(s.Root)});
    const QString type = QString::fromLatin1(s.ObjectType);
    const bool hasColumns = type == u"TABLE" || type == u"VIEW";
    for (; !TempQry.Eof(); TempQry.Next()) {
      const QString name = TempQry.FieldByName(QString::fromLatin1(s.NameColumn));
      auto* node = new QTreeWidgetItem(root, {name});
      node->setData(0, kObjectRole, name);
      node->setData(0, kSchemaRole, schema);
      node->setData(0, kTypeRole, type);
      if (hasColumns) node->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    }
    TempQry.Close();
    root->setExpanded(true);
  });
}

void TGrantEditor::ObjNameTvExpanding(QTreeWidgetItem* item) {
  if (!item || item->data(0, kLoadedRole).toBool()) return;
  const QString type = item->data(0, kTypeRole).toString();
  if (type != u"TABLE" && type != u"VIEW") return;
  item->setData(0, kLoadedRole, true);
  FForm->Guarded([&] {
    TempQry.Close();
    TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.Column"));
    TempQry.ParamByName(QStringLiteral("P_TABLE")) = item->data(0, kObjectRole).toString();
    TempQry.ParamByName(QStringLiteral("P_OWNER")) = item->data(0, kSchemaRole).toString();
    TempQry.Open();
    for (; !TempQry.Eof(); TempQry.Next()) {
      const QString column = TempQry.FieldByName(QStringLiteral("COLUMN_NAME"));
      auto* node = new QTreeWidgetItem(item, {column});
      node->setData(0, kObjectRole, item->data(0, kObjectRole));
      node->setData(0, kSchemaRole, item->data(0, kSchemaRole));
      node->setData(0, kTypeRole, QStringLiteral("COLUMN"));
      node->setData(0, kColumnRole, column);
    }
    TempQry.Close();
    if (item->childCount() == 0)
      item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
  });
}

void TGrantEditor::ObjNameTvFocusChanged(QTreeWidgetItem* item) {
  FObjGrant->ClearRows();
  if (!item || item->data(0, kObjectRole).toString().isEmpty()) return;
  const QString object = item->data(0, kObjectRole).toString();
  const QString schema = item->data(0, kSchemaRole).toString();
  QString type = item->data(0, kTypeRole).toString();
  FForm->Guarded([&] {
    if (type == u"SYNONYM") {
      TempQry.Close();
      TempQry.LoadSQL(QStringLiteral("CreateRoleFrn.SynonymType"));
      TempQry.ParamByName(QStringLiteral("P_OBJNAME")) = object;
      TempQry.ParamByName(QStringLiteral("P_OWNER")) = schema;
      TempQry.Open();
      type = TempQry.FieldByName(QStringLiteral("OBJECT_TYPE"));
      TempQry.Close();
    }
    const int major = FForm->DBInfo() ? MajorVersion(FForm->DBInfo()->ServerVersion()) : -1;
    const QString column = item->data(0, kColumnRole).toString();
    QList<QStringList> rows;
    for (const QString& privilege : ObjectPrivileges(type, major))
      rows << QStringList{privilege, object, schema, column};
    FObjGrant->AddRows(rows);
  });
}

void TGrantEditor::AddObjectGrants(const QList<int>& rows) {
  QList<QStringList> added;
  for (int r : rows) {
    const QString privilege = FObjGrant->Cell(r, 0);
    const QString column = FObjGrant->Cell(r, 3);
    const QString grant =
        column.isEmpty() ? privilege : FormatMsg(QStringLiteral("%s (%s)"), {privilege, column});
    // The same privilege added twice gives two rows and two GRANT statements: the rows are
    // kept as the user added them.
    added << QStringList{kFalse, grant, FObjGrant->Cell(r, 2), FObjGrant->Cell(r, 1), kTrue};
  }
  if (added.isEmpty()) return;
  FObjects->AddRows(added);
  Recolour(FObjects);
  if (FForm->Tracker()) FForm->Tracker()->Change();
}

void TGrantEditor::ObjDownBtnClick() {
  AddObjectGrants(FObjGrant->SelectedRows());
}

void TGrantEditor::ObjDownAllBtnClick() {
  QList<int> rows;
  for (int r = 0; r < FObjGrant->RowCount(); ++r) rows << r;
  AddObjectGrants(rows);
}

void TGrantEditor::ObjUpBtnClick() {
  // Removing a row issues nothing: a loaded grant is revoked only through its "Revoke?" box.
  QList<int> rows = FObjects->SelectedRows();
  for (int i = 0; i < rows.size(); ++i) FObjects->DeleteRow(rows[i] - i);
  if (!rows.isEmpty() && FForm->Tracker()) FForm->Tracker()->Change();
}

void TGrantEditor::ObjUpAllBtnClick() {
  FObjects->ClearRows();
  if (FForm->Tracker()) FForm->Tracker()->Change();
}

}  // namespace kel
