#include "types/CreateTypeFrn.h"

#include <QHash>
#include <QSignalBlocker>

#include "plugin/KelQuery.h"
#include "types/CreateAttributeFrn.h"
#include "types/CreateMethodFrn.h"
#include "types/TypePickers.h"
#include "ui_CreateTypeFrn.h"

namespace kel {

namespace {
QString Field(const TKelQuery& q, const char* column) {
  return Trim(q.FieldByName(QString::fromLatin1(column)));
}

// Line breaks as the editor writes them: CR LF.
QString WindowsLineBreaks(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(u'\r', u'\n');
  text.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
  return text;
}

QString Message(const char* key, const QStringList& args) {
  const QString templ =
      Application() ? Application()->esGetMSG(QString::fromLatin1(key)) : QString::fromLatin1(key);
  return FormatMsg(templ, args);
}
}  // namespace

TCreateTypeFrm::TCreateTypeFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateTypeFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTypeFrm"));
  SetIniSave(false);
  SetupLists();
  ui->ScriptEditor->PlSqlEditor();

  connect(ui->PropAddBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::PropAddBtnClick);
  connect(ui->PropEditBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::PropEditBtnClick);
  connect(ui->PropDelBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::PropDelBtnClick);
  connect(ui->PropertyTList, &TKelTreeList::RowDoubleClicked, this,
          &TCreateTypeFrm::PropEditBtnClick);
  connect(ui->MethodAddBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::MethodAddBtnClick);
  connect(ui->MethodEditBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::MethodEditBtnClick);
  connect(ui->MethodDelBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::MethodDelBtnClick);
  connect(ui->MethodTList, &TKelTreeList::RowDoubleClicked, this,
          &TCreateTypeFrm::MethodEditBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateTypeFrm::CancelBtnClick);
}

TCreateTypeFrm::~TCreateTypeFrm() {
  delete ui;
}

void TCreateTypeFrm::SetupLists() {
  for (const TKelTreeColumn& c : {ReadOnlyColumn("PropertyTListName", "Attribute Name", 130),
                                  ReadOnlyColumn("PropertyTListType", "Data Type", 110),
                                  ReadOnlyColumn("PropertyTListSchema", "Schema", 80),
                                  ReadOnlyColumn("PropertyTListObject", "Object", 110),
                                  ReadOnlyColumn("PropertyTListLength", "Length", 55),
                                  ReadOnlyColumn("PropertyTListPrecision", "Precision", 60),
                                  ReadOnlyColumn("PropertyTListScale", "Scale", 50)})
    ui->PropertyTList->AddColumn(c);
  for (const TKelTreeColumn& c :
       {ReadOnlyColumn("MethodTListName", "Method Name", 130),
        ReadOnlyColumn("MethodTListType", "Method Type", 160),
        ReadOnlyColumn("MethodTListReturnType", "Return Type", 110),
        ReadOnlyColumn("MethodTListReturnSchema", "Return Schema", 80, false),
        ReadOnlyColumn("MethodTListReturnObject", "Retrun Object", 100, false),
        ReadOnlyColumn("MethodTListWnds", "WNDS", 40, false),
        ReadOnlyColumn("MethodTListWnps", "WNPS", 40, false),
        ReadOnlyColumn("MethodTListRnds", "RNDS", 40, false),
        ReadOnlyColumn("MethodTListRnps", "RNPS", 40, false)})
    ui->MethodTList->AddColumn(c);
  for (const TKelTreeColumn& c :
       {ReadOnlyColumn("ParamTListMethod", "Method Name", 100),
        ReadOnlyColumn("ParamTListName", "Name", 100),
        ReadOnlyColumn("ParamTListType", "Type", 100), ReadOnlyColumn("ParamTListMode", "Mode", 60),
        ReadOnlyColumn("ParamTListSchema", "Schema", 80),
        ReadOnlyColumn("ParamTListObject", "Object", 100)})
    ui->ParamTList->AddColumn(c);
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateTypeFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  FillSchemaCombo(ui->SchemaCmb);
  UpperCaseItems(ui->SchemaCmb);
}

void TCreateTypeFrm::ReadParams(TXLink* link) {
  ReadTypeLink(link, ui->SchemaCmb, &FIsAlter, &FSchema, &FTypeName);
}

void TCreateTypeFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadType();
  if (ui->ObjNameEd->isEnabled()) ui->ObjNameEd->setFocus(Qt::OtherFocusReason);
}

// ---------------------------------------------------------------------------------------------
// Loading an existing type.

void TCreateTypeFrm::LoadType() {
  {
    TKelQuery q(DBInfo());
    q.LoadSQL(QStringLiteral("CreateTypeFrn.Info"));
    q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
    q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
    q.Open();
    const QString qualified = FSchema + u'.' + FTypeName;
    if (q.Eof()) throw EKelError(Message("CreateTypeFrn.Gone", {qualified}));
    // A collection (or any type that is not an object type) has a dialog of its own.
    if (Field(q, "TYPECODE") != u"OBJECT")
      throw EKelError(Message("CreateTypeFrn.NotObject", {qualified, Field(q, "TYPECODE")}));
    // A subtype is written UNDER its supertype; replacing it AS OBJECT would cut it loose.
    if (!Field(q, "SUPERTYPE_NAME").isEmpty())
      throw EKelError(
          Message("CreateTypeFrn.Subtype",
                  {qualified, Field(q, "SUPERTYPE_OWNER") + u'.' + Field(q, "SUPERTYPE_NAME")}));
    FNotFinal = Field(q, "FINAL") == u"NO";
    FNotInstantiable = Field(q, "INSTANTIABLE") == u"NO";
  }
  if (Application())
    setWindowTitle(
        FormatMsg(Application()->esGetMSG(QStringLiteral("CreateTypeFrm.Alter")), {FTypeName}));
  ui->ObjNameEd->setText(LoadedName(FTypeName));
  SelectComboText(ui->SchemaCmb, FSchema);
  LoadAttributes();
  LoadMethods();
  LoadBody();
  ShowAttributes();
  ShowMethods();
  // Owner and name of an existing type stay as they are.
  ui->ObjNameEd->setEnabled(false);
  ui->SchemaCmb->setEnabled(false);
}

void TCreateTypeFrm::LoadAttributes() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTypeFrn.attribute"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
  q.Open();
  FAttributes.clear();
  for (; !q.Eof(); q.Next()) {
    const TTypeRef ref = ClassifyType(Field(q, "ATTR_TYPE_NAME"), Field(q, "ATTR_TYPE_MOD"),
                                      Field(q, "ATTR_TYPE_OWNER"));
    TTypeAttribute a{LoadedName(Field(q, "ATTR_NAME")), ref.Type, ref.Schema, ref.Object};
    if (!IsObjectMarker(ref.Type)) {
      a.Length = Field(q, "LENGTH");
      a.Precision = Field(q, "PRECISION");
      a.Scale = Field(q, "SCALE");
    }
    FAttributes << a;
  }
}

void TCreateTypeFrm::LoadMethods() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTypeFrn.Method"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
  q.Open();
  FMethods.clear();
  QStringList numbers;
  for (; !q.Eof(); q.Next()) {
    TTypeMethod m;
    m.Name = LoadedName(Field(q, "METHOD_NAME"));
    const QString kind = Field(q, "METHOD_TYPE");
    if (kind == u"MAP")
      m.Kind = QStringLiteral("MAP MEMBER FUNCTION");
    else if (kind == u"ORDER")
      m.Kind = QStringLiteral("ORDER MEMBER FUNCTION");
    else
      m.Kind =
          Field(q, "RESULTS") == u"0" ? QStringLiteral("PROCEDURE") : QStringLiteral("FUNCTION");
    if (m.Kind != u"PROCEDURE") {
      const TTypeRef ref = ClassifyType(Field(q, "RESULT_TYPE_NAME"), Field(q, "RESULT_TYPE_MOD"),
                                        Field(q, "RESULT_TYPE_OWNER"));
      m.ReturnType = ref.Type;
      m.ReturnSchema = ref.Schema;
      m.ReturnObject = ref.Object;
    }
    numbers << (q.HasField(QStringLiteral("METHOD_NO")) ? Field(q, "METHOD_NO") : QString());
    FMethods << m;
  }
  // Parameters per method: overloaded methods share a name, their numbers tell them apart.
  for (int i = 0; i < FMethods.size(); ++i) FMethods[i].Params = LoadParams(numbers[i]);
}

QList<TTypeParam> TCreateTypeFrm::LoadParams(const QString& methodNo) {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTypeFrn.Parameter"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
  q.ParamByName(QStringLiteral("P_METHOD_NO")) = methodNo;
  q.Open();
  QList<TTypeParam> params;
  for (; !q.Eof(); q.Next()) {
    const QString name = Field(q, "PARAM_NAME");
    // The object itself, passed implicitly to member methods.
    if (name == u"SELF") continue;
    const TTypeRef ref = ClassifyType(Field(q, "PARAM_TYPE_NAME"), Field(q, "PARAM_TYPE_MOD"),
                                      Field(q, "PARAM_TYPE_OWNER"));
    params << TTypeParam{LoadedName(name), ref.Type, Field(q, "PARAM_MODE"), ref.Schema,
                         ref.Object};
  }
  return params;
}

void TCreateTypeFrm::LoadBody() {
  TKelQuery q(DBInfo());
  q.LoadSQL(QStringLiteral("CreateTypeFrn.Body"));
  q.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  q.ParamByName(QStringLiteral("P_NAME")) = FTypeName;
  q.Open();
  QString body;
  // Each line of stored source ends with its own line break.
  for (; !q.Eof(); q.Next()) body += q.FieldByName(QStringLiteral("TEXT"));
  ui->ScriptEditor->SetText(WindowsLineBreaks(QualifiedBody(body, LoadedName(FSchema))));
}

// ---------------------------------------------------------------------------------------------
// The lists.

void TCreateTypeFrm::ShowAttributes() {
  QList<QStringList> rows;
  for (const TTypeAttribute& a : FAttributes)
    rows << QStringList{a.Name, a.Type, a.Schema, a.Object, a.Length, a.Precision, a.Scale};
  const int focused = ui->PropertyTList->FocusedRow();
  ui->PropertyTList->ClearRows();
  ui->PropertyTList->AddRows(rows);
  if (!rows.isEmpty())
    ui->PropertyTList->SetFocusedRow(std::clamp(focused, 0, int(rows.size()) - 1));
}

void TCreateTypeFrm::ShowMethods() {
  QList<QStringList> rows, params;
  for (const TTypeMethod& m : FMethods) {
    rows << QStringList{m.Name,
                        m.Kind,
                        m.ReturnType,
                        m.ReturnSchema,
                        m.ReturnObject,
                        BoolToStr(m.Wnds),
                        BoolToStr(m.Wnps),
                        BoolToStr(m.Rnds),
                        BoolToStr(m.Rnps)};
    for (const TTypeParam& p : m.Params)
      params << QStringList{m.Name, p.Name, p.Type, p.Mode, p.Schema, p.Object};
  }
  const int focused = ui->MethodTList->FocusedRow();
  ui->MethodTList->ClearRows();
  ui->MethodTList->AddRows(rows);
  if (!rows.isEmpty()) ui->MethodTList->SetFocusedRow(std::clamp(focused, 0, int(rows.size()) - 1));
  ui->ParamTList->ClearRows();
  ui->ParamTList->AddRows(params);
}

void TCreateTypeFrm::EditAttribute(int row) {
  TCreateAttributeFrm form(this);
  form.SetParentControl(this);
  form.SetList(FAttributes, row);
  if (form.ShowModal() != mrOk) return;
  if (row >= 0) {
    FAttributes[row] = form.Attribute();
    ShowAttributes();
  } else {
    FAttributes << form.Attribute();
    ShowAttributes();
    ui->PropertyTList->SetFocusedRow(int(FAttributes.size()) - 1);
  }
}

void TCreateTypeFrm::EditMethod(int row) {
  TCreateMethodFrm form(this);
  form.SetParentControl(this);
  form.SetList(FMethods, row);
  if (form.ShowModal() != mrOk) return;
  if (row >= 0) {
    FMethods[row] = form.Method();
    ShowMethods();
  } else {
    FMethods << form.Method();
    ShowMethods();
    ui->MethodTList->SetFocusedRow(int(FMethods.size()) - 1);
  }
}

void TCreateTypeFrm::PropAddBtnClick() {
  Guarded([this] { EditAttribute(-1); });
}

void TCreateTypeFrm::PropEditBtnClick() {
  const int row = ui->PropertyTList->FocusedRow();
  if (row < 0 || row >= FAttributes.size()) return;
  Guarded([this, row] { EditAttribute(row); });
}

void TCreateTypeFrm::PropDelBtnClick() {
  const int row = ui->PropertyTList->FocusedRow();
  if (row < 0 || row >= FAttributes.size()) return;
  FAttributes.removeAt(row);
  ShowAttributes();
}

void TCreateTypeFrm::MethodAddBtnClick() {
  Guarded([this] { EditMethod(-1); });
}

void TCreateTypeFrm::MethodEditBtnClick() {
  const int row = ui->MethodTList->FocusedRow();
  if (row < 0 || row >= FMethods.size()) return;
  Guarded([this, row] { EditMethod(row); });
}

void TCreateTypeFrm::MethodDelBtnClick() {
  const int row = ui->MethodTList->FocusedRow();
  if (row < 0 || row >= FMethods.size()) return;
  // The method's parameters go with it.
  FMethods.removeAt(row);
  ShowMethods();
}

// ---------------------------------------------------------------------------------------------
// Validation and the statement.

bool TCreateTypeFrm::Validate() {
  const QString name = Trim(ui->ObjNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->ObjNameLbl, ui->ObjNameEd);
  if (!CheckName(ui->ObjNameLbl, ui->ObjNameEd, name)) return false;
  if (ui->SchemaCmb->currentIndex() < 0) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
  // Oracle takes no object type without attributes.
  if (FAttributes.isEmpty()) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateTypeFrn.NoAttribute"), {},
                               TMsgDlgType::Warning, false);
    FocusControl(ui->PropAddBtn);
    return false;
  }
  return CheckReferencedTypes();
}

bool TCreateTypeFrm::CheckReferencedTypes() {
  const QString self =
      NameIdentity(ui->SchemaCmb->currentText()) + u'.' + NameIdentity(ui->ObjNameEd->text());
  QHash<QString, QStringList> known;  // owner -> its object types, read once per owner
  // True when the type still exists; otherwise the message, the row focused, false.
  const auto exists = [&](const QString& schema, const QString& object, const QString& user,
                          TKelTreeList* list, int row) {
    if (NameIdentity(schema) + u'.' + NameIdentity(object) == self) return true;
    if (!known.contains(schema)) known.insert(schema, ObjectTypesOf(DBInfo(), schema));
    if (known.value(schema).contains(object)) return true;
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateTypeFrn.TypeGone2"),
                               {schema.isEmpty() ? object : schema + u'.' + object, user},
                               TMsgDlgType::Warning, false);
    FocusControl(list);
    list->SetFocusedRow(row);
    return false;
  };
  for (int i = 0; i < FAttributes.size(); ++i) {
    const TTypeAttribute& a = FAttributes[i];
    if (IsObjectMarker(a.Type) && !exists(a.Schema, a.Object, a.Name, ui->PropertyTList, i))
      return false;
  }
  for (int i = 0; i < FMethods.size(); ++i) {
    const TTypeMethod& m = FMethods[i];
    if (IsObjectMarker(m.ReturnType) &&
        !exists(m.ReturnSchema, m.ReturnObject, m.Name, ui->MethodTList, i))
      return false;
    for (const TTypeParam& p : m.Params)
      if (IsObjectMarker(p.Type) &&
          !exists(p.Schema, p.Object, m.Name + u'.' + p.Name, ui->MethodTList, i))
        return false;
  }
  return true;
}

QString TCreateTypeFrm::ClosingLine() const {
  // A loaded type keeps the properties that the lists do not show.
  QString line = QStringLiteral(")");
  if (FIsAlter && FNotInstantiable) line += QStringLiteral(" NOT INSTANTIABLE");
  if (FIsAlter && FNotFinal) line += QStringLiteral(" NOT FINAL");
  return line + u';';
}

void TCreateTypeFrm::AddTypeSpec() {
  for (const QString& line :
       TypeSpecLines(ui->SchemaCmb->currentText(), Trim(ui->ObjNameEd->text()), FAttributes,
                     FMethods, ClosingLine()))
    SqlMemo().Add(line);
}

void TCreateTypeFrm::AddTypeBody() {
  const QString body = Trim(ui->ScriptEditor->Text());
  if (body.isEmpty()) return;
  // A loaded body begins with TYPE BODY and its name; a new one is only the part after AS.
  if (FIsAlter)
    SqlMemo().Add(QStringLiteral("CREATE OR REPLACE "));
  else
    SqlMemo().Add(NewBodyHead(ui->SchemaCmb->currentText(), Trim(ui->ObjNameEd->text())));
  SqlMemo().Add(body);
}

void TCreateTypeFrm::BuildSql() {
  SqlMemo().Clear();
  AddTypeSpec();
  AddTypeBody();
  {
    const QSignalBlocker block(ui->SqlMemo);
    ui->SqlMemo->setPlainText(SqlMemo().Text());
  }
  RefreshOwnedPreview();
}

}  // namespace kel
