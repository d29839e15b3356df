#include "schema/CreateViewFrn.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QToolButton>

#include "plugin/KelEditor.h"
#include "plugin/KelTreeList.h"
#include "ui_CreateViewFrn.h"

namespace kel {

namespace {

const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");
const QString kReadOnly = QStringLiteral("WITH READ ONLY");
const QString kCheckOption = QStringLiteral("WITH CHECK OPTION");

QString Msg(const char* key) {
  return Application() ? Application()->esGetMSG(QString::fromLatin1(key)) : QString();
}

// A column of a catalog row, empty when the query does not return it.
QString Field(const TKelQuery& q, const QString& column) {
  return q.HasField(column) ? q.FieldByName(column) : QString();
}

// Selects `text` in a drop-down list, adding it first when the list does not hold it (an owner
// the connection's user list does not show).
void SelectOrAdd(QComboBox* combo, const QString& text) {
  if (text.isEmpty()) return;
  if (combo->findText(text, Qt::MatchFixedString) < 0) combo->addItem(text);
  TKelBaseFrm::SelectComboText(combo, text);
}

void FillCombo(QComboBox* combo, TKelQuery& q, const QString& column) {
  const QSignalBlocker block(combo);
  combo->clear();
  for (; !q.Eof(); q.Next()) combo->addItem(Field(q, column));
  combo->setCurrentIndex(-1);
}

}  // namespace

TCreateViewFrm::TCreateViewFrm(QWidget* owner)
    : TKelDllChildFrm(owner), ui(new Ui::TCreateViewFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateViewFrm"));

  ui->SQLEditor->PlSqlEditor();
  ui->SQLEditor->setTabWidth(4);
  ui->MnPage->setCurrentIndex(0);
  ui->ObjGrp->hide();
  ui->ReadOnlyRdo->setEnabled(false);
  ui->CheckOptRdo->setEnabled(false);
  ui->ConstraintLbl->setEnabled(false);
  ui->ConstraintEd->setEnabled(false);

  TKelTreeColumn check;
  check.Name = QStringLiteral("AliasTreeListCheck");
  check.Editor = TCellEditor::Check;
  check.Width = 40;
  TKelTreeColumn name;
  name.Name = QStringLiteral("AliasTreeListName");
  name.Caption = QStringLiteral("Alias Name");
  name.Width = 180;
  TKelTreeColumn comment;
  comment.Name = QStringLiteral("AliasTreeListComments");
  comment.Caption = QStringLiteral("Comments");
  comment.Width = 260;
  for (const TKelTreeColumn& c : {check, name, comment}) ui->AliasTreeList->AddColumn(c);

  connect(ui->SendEditorBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::SendEditorBtnClick);
  connect(ui->SelectAllBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::SelectAllBtnClick);
  connect(ui->CopyBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::CopyBtnClick);
  connect(ui->ConfirmSQLBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::ConfirmSQLBtnClick);
  connect(ui->AutoAddBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::AutoAddBtnClick);
  connect(ui->AddBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::AddBtnClick);
  connect(ui->EditBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::EditBtnClick);
  connect(ui->DeleteBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::DeleteBtnClick);
  connect(ui->ClearBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::ClearBtnClick);
  connect(ui->SelectChk, &QAbstractButton::clicked, this, &TCreateViewFrm::SelectChkClick);
  // Bound to `toggled`, so that alter mode's loading applies the same rules as a click.
  connect(ui->ObjectChk, &QAbstractButton::toggled, this, &TCreateViewFrm::ObjectChkClick);
  connect(ui->UnderChk, &QAbstractButton::toggled, this, &TCreateViewFrm::UnderChkClick);
  connect(ui->WithChk, &QAbstractButton::toggled, this, &TCreateViewFrm::WithChkClick);
  connect(ui->CheckOptRdo, &QAbstractButton::toggled, this, &TCreateViewFrm::WithChkClick);
  connect(ui->ObjectSchemaCmb, &QComboBox::currentIndexChanged, this,
          &TCreateViewFrm::ObjectSchemaCmbChange);
  connect(ui->SuperOwnerCmb, &QComboBox::currentIndexChanged, this,
          &TCreateViewFrm::SuperOwnerCmbChange);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateViewFrm::CancelBtnClick);
}

TCreateViewFrm::~TCreateViewFrm() {
  DisconnectControls();
  delete ui;
}

TKelTreeList* TCreateViewFrm::AliasTreeList() const {
  return ui->AliasTreeList;
}

TKelEditor* TCreateViewFrm::SQLEditor() const {
  return ui->SQLEditor;
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateViewFrm::InitLoad() {
  TKelDllChildFrm::InitLoad();
  for (TKelQuery* q : {&DummQry, &ObjQry, &TempQry, &DataQry, &ColumnQry}) q->SetSession(DBInfo());
  FillSchemaCombo(ui->SchemaCmb);
  const QStringList users = DBInfo() ? DBInfo()->UserList() : QStringList();
  for (QComboBox* combo : {ui->ObjectSchemaCmb, ui->SuperOwnerCmb}) {
    const QSignalBlocker block(combo);
    combo->clear();
    combo->addItems(users);
    combo->setCurrentIndex(-1);
  }
}

void TCreateViewFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FViewName = link->ParamByString(QStringLiteral("P_ViewName"));
    SelectOrAdd(ui->SchemaCmb, FSchema);
    ui->ViewNameEd->setText(FViewName);
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    SelectComboText(ui->SchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
}

void TCreateViewFrm::KelDllChildFrmShow() {
  ui->AliasGrp->setTitle(Msg("CreateViewFrm.ColumnAlias"));
  UnderRule();
  if (FIsAlter) LoadView();
  ui->MnPage->setCurrentIndex(0);
  if (ui->ViewNameEd->isEnabled()) ui->ViewNameEd->setFocus(Qt::OtherFocusReason);
}

// ---------------------------------------------------------------------------------------------
// Loading an existing view.

QString TCreateViewFrm::SplitViewText(const QString& text, QString* withOption) {
  // The clause ends the text: its last occurrence is the clause, an earlier one sits in the
  // query (a literal, a comment).
  const qsizetype readOnly = text.lastIndexOf(kReadOnly, -1, Qt::CaseInsensitive);
  const qsizetype checkOption = text.lastIndexOf(kCheckOption, -1, Qt::CaseInsensitive);
  const qsizetype cut = std::max(readOnly, checkOption);
  if (withOption) *withOption = cut < 0 ? QString() : cut == readOnly ? kReadOnly : kCheckOption;
  return cut < 0 ? text : text.left(cut);
}

void TCreateViewFrm::LoadView() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateViewFrn.Alter01"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  TempQry.ParamByName(QStringLiteral("P_NAME")) = FViewName;
  TempQry.Open();
  if (TempQry.Eof())
    throw EKelError(FormatMsg(Msg("CreateViewFrn.NotFound"), {FSchema, FViewName}));
  const QString text = Field(TempQry, QStringLiteral("TEXT"));
  const QString viewType = Trim(Field(TempQry, QStringLiteral("VIEW_TYPE")));
  const QString viewTypeOwner = Trim(Field(TempQry, QStringLiteral("VIEW_TYPE_OWNER")));
  const QString superView = Trim(Field(TempQry, QStringLiteral("SUPERVIEW_NAME")));
  const QString oidText = Field(TempQry, QStringLiteral("OID_TEXT"));
  TempQry.Close();

  setWindowTitle(FormatMsg(
      QStringLiteral("%s [%s] - %s "),
      {Msg("AlterViewCaption"), FViewName, DBInfo() ? DBInfo()->ConnectionName() : QString()}));
  QString withOption;
  ui->SQLEditor->SetText(SplitViewText(text, &withOption));
  if (!withOption.isEmpty()) {
    ui->WithChk->setChecked(true);
    if (withOption == kReadOnly) {
      ui->ReadOnlyRdo->setChecked(true);
    } else {
      ui->CheckOptRdo->setChecked(true);
      LoadCheckConstraint();
    }
  }
  const bool objectView = !viewType.isEmpty();
  if (objectView) {
    ui->ObjectChk->setChecked(true);
    SelectOrAdd(ui->ObjectSchemaCmb, viewTypeOwner);
    SelectOrAdd(ui->ObjectTypeCmb, viewType);
    if (!superView.isEmpty()) {
      ui->UnderChk->setChecked(true);
      // A super view lives in the schema of its sub-view.
      SelectOrAdd(ui->SuperOwnerCmb, FSchema);
      SelectOrAdd(ui->SuperViewCmb, superView);
    }
  }
  ui->ReplaceChk->setChecked(true);
  ui->ReplaceChk->setEnabled(false);
  ui->ViewNameEd->setEnabled(false);
  ui->SchemaCmb->setEnabled(false);
  LoadComments(objectView, oidText);
}

void TCreateViewFrm::LoadCheckConstraint() {
  DummQry.Close();
  DummQry.LoadSQL(QStringLiteral("SchViewNrn.Script_01"));
  DummQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  DummQry.ParamByName(QStringLiteral("P_VIEW")) = FViewName;
  DummQry.Open();
  if (!DummQry.Eof())
    ui->ConstraintEd->setText(Trim(Field(DummQry, QStringLiteral("CONSTRAINT_NAME"))));
  DummQry.Close();
}

// The view comment, and the alias rows: a relational view's columns with their comments; an
// object view's object identifier attributes (none for a default identifier or a sub-view).
void TCreateViewFrm::LoadComments(bool objectView, const QString& oidText) {
  DataQry.Close();
  DataQry.LoadSQL(QStringLiteral("SchTableNrn.Script_17"));
  DataQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  DataQry.ParamByName(QStringLiteral("P_TABLE")) = FViewName;
  DataQry.Open();
  ui->CommentEd->setPlainText(DataQry.Eof() ? QString()
                                            : Field(DataQry, QStringLiteral("Comments")));
  DataQry.Close();

  ColumnQry.Close();
  ColumnQry.LoadSQL(QStringLiteral("SchTableNrn.Column"));
  ColumnQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  ColumnQry.ParamByName(QStringLiteral("P_TABLE")) = FViewName;
  ColumnQry.Open();
  QList<QStringList> rows;
  QHash<QString, QString> comments;
  for (; !ColumnQry.Eof(); ColumnQry.Next()) {
    const QString column = Field(ColumnQry, QStringLiteral("Column"));
    const QString comment = Field(ColumnQry, QStringLiteral("Comments"));
    comments.insert(column.toUpper(), comment);
    rows << QStringList{kTrue, column, comment};
  }
  ColumnQry.Close();
  if (objectView) {
    rows.clear();
    if (!ui->UnderChk->isChecked()) {
      const QString oid = Trim(oidText);
      if (!oid.isEmpty() && oid.compare(QStringLiteral("DEFAULT"), Qt::CaseInsensitive) != 0)
        for (const QString& part : oid.split(u',')) {
          const QString attribute = Trim(part);
          if (!attribute.isEmpty())
            rows << QStringList{kTrue, attribute, comments.value(attribute.toUpper())};
        }
    }
  }
  ui->AliasTreeList->ClearRows();
  ui->AliasTreeList->AddRows(rows);
}

// ---------------------------------------------------------------------------------------------
// Names and helpers.

QString TCreateViewFrm::Schema() const {
  return Trim(ui->SchemaCmb->currentText());
}

QString TCreateViewFrm::ViewName() const {
  return Trim(ui->ViewNameEd->text());
}

QString TCreateViewFrm::QualifiedName() const {
  return Schema() + u'.' + ViewName();
}

QString TCreateViewFrm::CheckValue() const {
  return ui->SelectChk->isChecked() ? kTrue : kFalse;
}

QString TCreateViewFrm::SourcePageName() const {
  return ui->MnPage->tabText(ui->MnPage->indexOf(ui->SourceTab));
}

void TCreateViewFrm::AddAliasRow(const QString& name, const QString& comment) {
  ui->AliasTreeList->AddRows({{CheckValue(), name, comment}});
}

// ---------------------------------------------------------------------------------------------
// The source tool bar and the query check.

void TCreateViewFrm::SendEditorBtnClick() {
  if (Application())
    Application()->esSendToEditor(DBInfo(), ui->SQLEditor->Text(), "SQLEditor", {});
}

void TCreateViewFrm::SelectAllBtnClick() {
  ui->SQLEditor->SelectAllClick();
}

void TCreateViewFrm::CopyBtnClick() {
  if (!Application()) return;
  Application()->SetClipboardText(ui->SQLEditor->Text());
  Application()->esStatus(Msg("ClipboardCopy"));
}

void TCreateViewFrm::ConfirmSQLBtnClick() {
  Guarded([this] {
    if (Trim(ui->SQLEditor->Text()).isEmpty()) {
      CheckFail(SourcePageName(), ui->SQLEditor);
      return;
    }
    QueryCheck(true);
  });
}

bool TCreateViewFrm::LooksLikeSelect(const QString& text) {
  if (!text.startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive) || text.size() < 7)
    return false;
  const QChar seventh = text.at(6);
  return seventh == u'\t' || seventh == u'\n' || seventh == u' ' || seventh == u'*';
}

void TCreateViewFrm::OpenEditorQuery(const QString& query) {
  // Wrapped so that the server parses the whole query and describes its columns without
  // fetching a row; the line break keeps a trailing line comment out of the closing bracket.
  TempQry.Close();
  TempQry.SetSQL(QStringLiteral("SELECT * FROM (\n%1\n) WHERE 1 = 0").arg(query));
  TempQry.Open();
}

bool TCreateViewFrm::QueryCheck(bool messages) {
  THost* host = Application();
  const QString query = Trim(ui->SQLEditor->Text());
  if (!LooksLikeSelect(query)) {
    if (messages && host)
      host->esMsgDBox(QStringLiteral("CreateViewFrn.002"), {}, TMsgDlgType::Information, false);
    return false;
  }
  try {
    OpenEditorQuery(query);
  } catch (const EKelError& e) {
    // The server's own reason is what the user needs to correct the query.
    if (messages && host) host->esMsgBox(e.Message(), TMsgDlgType::Error, false);
    return false;
  }
  if (messages && host)
    host->esMsgDBox(QStringLiteral("CreateViewFrn.001"), {}, TMsgDlgType::Information, false);
  return true;
}

// ---------------------------------------------------------------------------------------------
// The alias list.

void TCreateViewFrm::AutoAddBtnClick() {
  Guarded([this] {
    ui->AliasTreeList->ClearRows();
    if (ui->ObjectChk->isChecked()) {
      ObjQry.Close();
      ObjQry.LoadSQL(QStringLiteral("SchTypeNrn.Attribute"));
      ObjQry.ParamByName(QStringLiteral("P_OWN")) = Trim(ui->ObjectSchemaCmb->currentText());
      ObjQry.ParamByName(QStringLiteral("P_OBJECT")) = Trim(ui->ObjectTypeCmb->currentText());
      ObjQry.Open();
      QList<QStringList> rows;
      for (; !ObjQry.Eof(); ObjQry.Next())
        rows << QStringList{CheckValue(), Field(ObjQry, QStringLiteral("Name")), QString()};
      ObjQry.Close();
      ui->AliasTreeList->AddRows(rows);
      return;
    }
    if (Trim(ui->SQLEditor->Text()).isEmpty()) {
      CheckFail(SourcePageName(), ui->SQLEditor);
      return;
    }
    if (!QueryCheck(false)) {
      CheckFail(SourcePageName(), ui->SQLEditor, QStringLiteral("Acm.Valid The"));
      return;
    }
    QList<QStringList> rows;
    for (const QString& column : TempQry.Data().Columns)
      rows << QStringList{CheckValue(), column, QString()};
    TempQry.Close();
    ui->AliasTreeList->AddRows(rows);
  });
}

void TCreateViewFrm::AddBtnClick() {
  if (!Application()) return;
  QString name;
  if (!Application()->InputQuery(QStringLiteral("Add Alias"),
                                 QStringLiteral("Enter New Alias Name"), name))
    return;
  name = Trim(name);
  if (name.isEmpty()) return;
  const QString caption = ui->AliasTreeList->headerItem()->text(acName);
  if (!CheckName(caption, ui->AliasTreeList, name)) return;
  AddAliasRow(name);
  ui->AliasTreeList->SetFocusedRow(ui->AliasTreeList->RowCount() - 1);
}

void TCreateViewFrm::EditBtnClick() {
  const int row = ui->AliasTreeList->FocusedRow();
  if (row < 0 || !Application()) return;
  QString name = ui->AliasTreeList->Cell(row, acName);
  if (!Application()->InputQuery(QStringLiteral("Rename Alias"),
                                 QStringLiteral("Enter New Alias Name"), name))
    return;
  name = Trim(name);
  if (name.isEmpty()) return;
  const QString caption = ui->AliasTreeList->headerItem()->text(acName);
  if (!CheckName(caption, ui->AliasTreeList, name)) return;
  ui->AliasTreeList->SetCell(row, acName, name);
}

void TCreateViewFrm::DeleteBtnClick() {
  const int row = ui->AliasTreeList->FocusedRow();
  if (row >= 0) ui->AliasTreeList->DeleteRow(row);
}

void TCreateViewFrm::ClearBtnClick() {
  ui->AliasTreeList->ClearRows();
}

void TCreateViewFrm::SelectChkClick() {
  const QString value = CheckValue();
  for (int r = 0; r < ui->AliasTreeList->RowCount(); ++r)
    ui->AliasTreeList->SetCell(r, acCheck, value);
}

// ---------------------------------------------------------------------------------------------
// Object views and options.

void TCreateViewFrm::ObjectChkClick() {
  ui->AliasTreeList->ClearRows();
  const bool object = ui->ObjectChk->isChecked();
  ui->AliasGrp->setTitle(Msg(object ? "CreateViewFrm.ObjID" : "CreateViewFrm.ColumnAlias"));
  ui->AliasTreeList->SetColumnEditable(acName, !object);
  ui->ObjGrp->setVisible(object);
  UnderRule();
}

void TCreateViewFrm::UnderChkClick() {
  if (ui->UnderChk->isChecked()) ui->AliasTreeList->ClearRows();
  UnderRule();
}

void TCreateViewFrm::UnderRule() {
  const bool under = ui->UnderChk->isChecked();
  for (QWidget* w : std::initializer_list<QWidget*>{ui->SuperOwnerLbl, ui->SuperOwnerCmb,
                                                    ui->SuperViewLbl, ui->SuperViewCmb})
    w->setEnabled(under);
  const bool aliases = !(ui->ObjectChk->isChecked() && under);
  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->AliasGrp, ui->SelectChk, ui->AutoAddBtn, ui->AddBtn,
                                       ui->EditBtn, ui->DeleteBtn, ui->ClearBtn, ui->AliasTreeList})
    w->setEnabled(aliases);
}

void TCreateViewFrm::WithChkClick() {
  const bool with = ui->WithChk->isChecked();
  ui->ReadOnlyRdo->setEnabled(with);
  ui->CheckOptRdo->setEnabled(with);
  const bool constraint = with && ui->CheckOptRdo->isChecked();
  ui->ConstraintLbl->setEnabled(constraint);
  ui->ConstraintEd->setEnabled(constraint);
}

void TCreateViewFrm::ObjectSchemaCmbChange() {
  Guarded([this] {
    ObjQry.Close();
    ObjQry.LoadSQL(QStringLiteral("SchTypeNrn.Object Type"));
    ObjQry.ParamByName(QStringLiteral("P_OWN")) = Trim(ui->ObjectSchemaCmb->currentText());
    ObjQry.ParamByName(QStringLiteral("P_TYPE")) = QStringLiteral("OBJECT");
    ObjQry.Open();
    FillCombo(ui->ObjectTypeCmb, ObjQry, QStringLiteral("Name"));
    ObjQry.Close();
  });
}

void TCreateViewFrm::SuperOwnerCmbChange() {
  Guarded([this] {
    ObjQry.Close();
    ObjQry.LoadSQL(QStringLiteral("CreateViewFrn.SuperView"));
    ObjQry.ParamByName(QStringLiteral("P_OWN")) = Trim(ui->SuperOwnerCmb->currentText());
    ObjQry.Open();
    FillCombo(ui->SuperViewCmb, ObjQry, QStringLiteral("Name"));
    ObjQry.Close();
  });
}

// ---------------------------------------------------------------------------------------------
// Validation.

bool TCreateViewFrm::Validate() {
  if (ViewName().isEmpty()) return CheckFail(ui->ViewNameLbl, ui->ViewNameEd);
  if (!CheckName(ui->ViewNameLbl, ui->ViewNameEd, ViewName())) return false;
  if (ui->SchemaCmb->currentIndex() < 0) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
  if (Trim(ui->SQLEditor->Text()).isEmpty()) return CheckFail(SourcePageName(), ui->SQLEditor);
  if (!QueryCheck(false))
    return CheckFail(SourcePageName(), ui->SQLEditor, QStringLiteral("Acm.Valid The"));
  // An object view names its type, a sub-view its super view: without them the statement has
  // a dangling "OF S." or "UNDER S.".
  if (ui->ObjectChk->isChecked()) {
    if (ui->ObjectSchemaCmb->currentIndex() < 0)
      return CheckFail(ui->ObjectSchemaLbl, ui->ObjectSchemaCmb);
    if (Trim(ui->ObjectTypeCmb->currentText()).isEmpty())
      return CheckFail(ui->ObjectTypeLbl, ui->ObjectTypeCmb);
    if (ui->UnderChk->isChecked()) {
      if (ui->SuperOwnerCmb->currentIndex() < 0)
        return CheckFail(ui->SuperOwnerLbl, ui->SuperOwnerCmb);
      if (Trim(ui->SuperViewCmb->currentText()).isEmpty())
        return CheckFail(ui->SuperViewLbl, ui->SuperViewCmb);
    }
  }
  // An alias list whose rows are all unchecked would be written as "()", which the server
  // refuses.
  bool anyChecked = false;
  for (int r = 0; r < ui->AliasTreeList->RowCount(); ++r)
    anyChecked = anyChecked || ui->AliasTreeList->Cell(r, acCheck) == kTrue;
  if (ui->AliasTreeList->isEnabled() && ui->AliasTreeList->RowCount() > 0 && !anyChecked) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("CreateViewFrn.NoAlias"), {}, TMsgDlgType::Warning,
                               false);
    FocusControl(ui->AliasTreeList);
    return false;
  }
  const QString aliasCaption = ui->AliasTreeList->headerItem()->text(acName);
  for (int r = 0; r < ui->AliasTreeList->RowCount(); ++r) {
    if (ui->AliasTreeList->Cell(r, acCheck) != kTrue) continue;
    const QString alias = Trim(ui->AliasTreeList->Cell(r, acName));
    if (!CheckName(aliasCaption, ui->AliasTreeList, alias)) {
      ui->AliasTreeList->SetFocusedRow(r);
      return false;
    }
  }
  if (ui->ConstraintEd->isEnabled()) {
    const QString constraint = Trim(ui->ConstraintEd->text());
    if (!constraint.isEmpty() && !CheckName(ui->ConstraintLbl, ui->ConstraintEd, constraint))
      return false;
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// The statement.

QString TCreateViewFrm::HeadLine() const {
  QString head =
      ui->ReplaceChk->isChecked() ? QStringLiteral("CREATE OR REPLACE") : QStringLiteral("CREATE");
  if (ui->UseForceChk->isChecked()) head += QStringLiteral(" FORCE");
  return head + QStringLiteral(" VIEW ") + QualifiedName();
}

QString TCreateViewFrm::AliasList() const {
  QStringList names;
  for (int r = 0; r < ui->AliasTreeList->RowCount(); ++r)
    if (ui->AliasTreeList->Cell(r, acCheck) == kTrue)
      names << Trim(ui->AliasTreeList->Cell(r, acName));
  return names.join(QStringLiteral(", "));
}

void TCreateViewFrm::AddObjectViewLines() {
  SqlMemo().Add(QStringLiteral("OF ") + Trim(ui->ObjectSchemaCmb->currentText()) + u'.' +
                Trim(ui->ObjectTypeCmb->currentText()));
  if (ui->UnderChk->isChecked())
    SqlMemo().Add(QStringLiteral("UNDER ") + Trim(ui->SuperOwnerCmb->currentText()) + u'.' +
                  Trim(ui->SuperViewCmb->currentText()));
  else if (ui->AliasTreeList->RowCount() > 0)
    SqlMemo().Add(QStringLiteral("WITH OBJECT IDENTIFIER (") + AliasList() + u')');
  else
    SqlMemo().Add(QStringLiteral("WITH OBJECT IDENTIFIER DEFAULT "));
}

void TCreateViewFrm::AddAliasLine() {
  if (ui->AliasTreeList->RowCount() > 0) SqlMemo().Add(u'(' + AliasList() + QStringLiteral(") "));
}

void TCreateViewFrm::AddQuery() {
  SqlMemo().Add(QStringLiteral("AS"));
  SqlMemo().Add(Trim(ui->SQLEditor->Text()));
}

void TCreateViewFrm::AddWithOption() {
  if (!ui->WithChk->isChecked()) return;
  if (ui->ReadOnlyRdo->isChecked()) {
    SqlMemo().Add(kReadOnly);
  } else if (ui->CheckOptRdo->isChecked()) {
    SqlMemo().Add(kCheckOption);
    const QString constraint = Trim(ui->ConstraintEd->text());
    if (!constraint.isEmpty()) SqlMemo().Add(QStringLiteral("  CONSTRAINT ") + constraint);
  }
}

void TCreateViewFrm::TerminateStatement() {
  SqlMemo().SetText(Trim(SqlMemo().Text()) + u';');
  SqlMemo().Add(QString());
}

void TCreateViewFrm::AddViewComment() {
  const QString comment = ui->CommentEd->toPlainText();
  if (comment.isEmpty()) return;
  SqlMemo().Add(QStringLiteral("COMMENT ON TABLE ") + QualifiedName() + QStringLiteral(" IS '") +
                Trim(QuoteSql(comment)) + QStringLiteral("';"));
}

void TCreateViewFrm::AddColumnComments() {
  const TKelTreeList* list = ui->AliasTreeList;
  for (int r = 0; r < list->RowCount(); ++r) {
    const QString comment = list->Cell(r, acComment);
    if (Trim(comment).isEmpty() || list->Cell(r, acCheck) != kTrue) continue;
    SqlMemo().Add(QStringLiteral("COMMENT ON COLUMN ") + QualifiedName() + u'.' +
                  Trim(list->Cell(r, acName)) + QStringLiteral(" IS '") + Trim(QuoteSql(comment)) +
                  QStringLiteral("';"));
  }
}

void TCreateViewFrm::BuildSql() {
  SqlMemo().Clear();
  SqlMemo().Add(HeadLine());
  if (ui->ObjectChk->isChecked())
    AddObjectViewLines();
  else
    AddAliasLine();
  AddQuery();
  AddWithOption();
  TerminateStatement();
  AddViewComment();
  AddColumnComments();
  {
    // The script page shows what was built; it is not an edit of the user's.
    const QSignalBlocker block(ui->SqlMemo);
    ui->SqlMemo->setPlainText(SqlMemo().Text());
  }
  RefreshOwnedPreview();
}

}  // namespace kel
