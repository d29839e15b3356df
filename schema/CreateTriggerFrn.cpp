#include "schema/CreateTriggerFrn.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolButton>

#include "plugin/KelEditor.h"
#include "plugin/KelTreeList.h"
#include "ui_CreateTriggerFrn.h"

namespace kel {

namespace {

const QString kTrue = QStringLiteral("True");
const QString kFalse = QStringLiteral("False");

QString Msg(const char* key) {
  return Application() ? Application()->esGetMSG(QString::fromLatin1(key)) : QString();
}

QString Field(const TKelQuery& q, const QString& column) {
  return q.HasField(column) ? q.FieldByName(column) : QString();
}

void SelectOrAdd(QComboBox* combo, const QString& text) {
  if (text.isEmpty()) return;
  if (combo->findText(text, Qt::MatchFixedString) < 0) combo->addItem(text);
  TKelBaseFrm::SelectComboText(combo, text);
}

struct TEvent {
  QCheckBox* Box;
  const char* Word;  // as the script writes it, and as the dictionary lists it
};

QDateTime SystemNow() {
  return QDateTime::currentDateTime();
}

}  // namespace

QDateTime (*TCreateTriggerFrm::Now)() = &SystemNow;

TCreateTriggerFrm::TCreateTriggerFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateTriggerFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateTriggerFrm"));
  SetIniSave(false);

  ui->SqlMemo->hide();
  ui->WhenClauseEditor->PlSqlEditor();
  ui->BodyEditor->PlSqlEditor();
  ui->MainPage->setCurrentIndex(0);
  ui->NewasEd->setText(QStringLiteral("New"));
  ui->OldasEd->setText(QStringLiteral("Old"));
  ui->ParaentasEd->setText(QStringLiteral("Parent"));

  TKelTreeList* list = ui->UpdateColumnsTreeList;
  const struct {
    const char* Name;
    const char* Caption;
    TCellEditor Editor;
    bool Editable;
    int Width;
  } columns[] = {
      {"UpdateColumnsTreeListColID", "ColID", TCellEditor::Text, false, 50},
      {"UpdateColumnsTreeListName", "Column Name", TCellEditor::Text, false, 180},
      {"UpdateColumnsTreeListType", "Data Type", TCellEditor::Text, false, 120},
      {"UpdateColumnsTreeListFire", "Fire Trigger on Update?", TCellEditor::Check, true, 140},
  };
  for (const auto& c : columns) {
    TKelTreeColumn column;
    column.Name = QString::fromLatin1(c.Name);
    column.Caption = QString::fromLatin1(c.Caption);
    column.Editor = c.Editor;
    column.Editable = c.Editable;
    column.Width = c.Width;
    list->AddColumn(column);
  }

  for (QRadioButton* on :
       {ui->TableRadio, ui->ViewRadio, ui->NestedRadio, ui->DatabaseRadio, ui->SchemaRadio})
    connect(on, &QRadioButton::toggled, this, [this](bool checked) {
      if (checked) BasicOnClick();
    });
  connect(ui->subDatabaseRadio, &QRadioButton::toggled, this,
          &TCreateTriggerFrm::subDatabaseRadioClick);
  connect(ui->BeforeRadio, &QRadioButton::toggled, this, &TCreateTriggerFrm::FireWhenClick);
  connect(ui->AfterRadio, &QRadioButton::toggled, this, &TCreateTriggerFrm::FireWhenClick);
  connect(ui->UpdateChk, &QCheckBox::toggled, this, &TCreateTriggerFrm::UpdateChkClick);
  connect(ui->UpdateRadio2, &QRadioButton::toggled, this, [this](bool checked) {
    if (checked) UpdateRadio2Click();
  });
  connect(ui->SchemaSearchBtn, &QAbstractButton::clicked, this,
          &TCreateTriggerFrm::SchemaSearchBtnClick);
  connect(ui->TableSearchBtn, &QAbstractButton::clicked, this,
          &TCreateTriggerFrm::TableSearchBtnClick);
  connect(ui->ViewSearchBtn, &QAbstractButton::clicked, this,
          &TCreateTriggerFrm::ViewSearchBtnClick);
  connect(ui->NestedSearchBtn, &QAbstractButton::clicked, this,
          &TCreateTriggerFrm::NestedSearchBtnClick);
  connect(ui->LoadTemplateBtn, &QAbstractButton::clicked, this,
          &TCreateTriggerFrm::LoadTemplateBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateTriggerFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateTriggerFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateTriggerFrm::CancelBtnClick);

  BasicOnClick();
}

TCreateTriggerFrm::~TCreateTriggerFrm() {
  DisconnectControls();
  delete ui;
}

TKelTreeList* TCreateTriggerFrm::UpdateColumnsTreeList() const {
  return ui->UpdateColumnsTreeList;
}

TKelEditor* TCreateTriggerFrm::BodyEditor() const {
  return ui->BodyEditor;
}

TKelEditor* TCreateTriggerFrm::WhenClauseEditor() const {
  return ui->WhenClauseEditor;
}

// ---------------------------------------------------------------------------------------------
// Attachment, parameters and show.

void TCreateTriggerFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  DataQry.SetSession(DBInfo());
  FillSchemaCombo(ui->SchemaCmb);
  UpperCaseItems(ui->SchemaCmb);
}

void TCreateTriggerFrm::ReadParams(TXLink* link) {
  const QString verb = link->Verb();
  if (verb == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FTriggerName = link->ParamByString(QStringLiteral("P_TriggerName"));
    SelectOrAdd(ui->SchemaCmb, FSchema);
    ui->TriggerNameEd->setText(FTriggerName);
  } else if (verb == QLatin1String("AddTable") || verb == QLatin1String("AddView")) {
    const QString schema = link->ParamByString(QStringLiteral("P_Schema"));
    const QString table = link->ParamByString(QStringLiteral("P_Table"));
    // The trigger belongs with the object it is on.
    SelectComboText(ui->SchemaCmb, schema);
    SetOnMode(verb == QLatin1String("AddTable") ? omTable : omView);
    ui->SchemaEd->setText(schema);
    (verb == QLatin1String("AddTable") ? ui->TableEd : ui->ViewEd)->setText(table);
  } else if (verb == QLatin1String("ChangeOwner")) {
    SelectComboText(ui->SchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
}

void TCreateTriggerFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadTrigger();
  ui->MainPage->setCurrentIndex(0);
  if (ui->TriggerNameEd->isEnabled()) ui->TriggerNameEd->setFocus(Qt::OtherFocusReason);
}

// ---------------------------------------------------------------------------------------------
// Target modes and the rules between the controls.

TCreateTriggerFrm::TOnMode TCreateTriggerFrm::OnMode() const {
  if (ui->ViewRadio->isChecked()) return omView;
  if (ui->NestedRadio->isChecked()) return omNested;
  if (ui->DatabaseRadio->isChecked()) return omDatabase;
  if (ui->SchemaRadio->isChecked()) return omSchema;
  return omTable;
}

void TCreateTriggerFrm::SetOnMode(TOnMode mode) {
  QRadioButton* radios[] = {ui->TableRadio, ui->ViewRadio, ui->NestedRadio, ui->DatabaseRadio,
                            ui->SchemaRadio};
  if (radios[mode]->isChecked())
    BasicOnClick();
  else
    radios[mode]->setChecked(true);
}

void TCreateTriggerFrm::SetPageVisible(QWidget* page, bool visible) {
  ui->MainPage->setTabVisible(ui->MainPage->indexOf(page), visible);
}

bool TCreateTriggerFrm::WhenPageVisible() const {
  return ui->MainPage->isTabVisible(ui->MainPage->indexOf(ui->ClauseTab));
}

bool TCreateTriggerFrm::UpdatePageVisible() const {
  return ui->MainPage->isTabVisible(ui->MainPage->indexOf(ui->UpdateTab));
}

void TCreateTriggerFrm::BasicOnClick() {
  const TOnMode mode = OnMode();
  const bool onObject = OnObject();
  const bool onView = mode == omView || mode == omNested;

  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->OnSchemaLbl, ui->SchemaEd, ui->SchemaSearchBtn})
    w->setEnabled(mode != omDatabase);
  for (QWidget* w : std::initializer_list<QWidget*>{ui->TableLbl, ui->TableEd, ui->TableSearchBtn})
    w->setEnabled(mode == omTable);
  for (QWidget* w : std::initializer_list<QWidget*>{ui->ViewLbl, ui->ViewEd, ui->ViewSearchBtn})
    w->setEnabled(onView);
  for (QWidget* w :
       std::initializer_list<QWidget*>{ui->NestedLbl, ui->NestedEd, ui->NestedSearchBtn})
    w->setEnabled(mode == omNested);

  ui->FireWhenGB->show();
  ui->StatusGB->show();
  ui->FireOnGB->setVisible(onObject);
  ui->ForEachGB->setVisible(onObject);
  ui->ReferencingGB->setVisible(onObject);
  ui->FirePnl->setVisible(!onObject);
  subDatabaseRadioClick();

  if (onView) {
    ui->InsteadRadio->setEnabled(true);
    ui->InsteadRadio->setChecked(true);
    ui->BeforeRadio->setEnabled(false);
    ui->AfterRadio->setEnabled(false);
    ui->RowRadio->setChecked(true);
    ui->StatmentRadio->setEnabled(false);
  } else {
    ui->BeforeRadio->setEnabled(true);
    ui->AfterRadio->setEnabled(true);
    ui->BeforeRadio->setChecked(true);
    ui->InsteadRadio->setEnabled(false);
    ui->StatmentRadio->setEnabled(true);
  }
  FireWhenClick();

  ui->NewasEd->setEnabled(onObject);
  ui->NewasLbl->setEnabled(onObject);
  ui->OldasEd->setEnabled(onObject);
  ui->OldasLbl->setEnabled(onObject);
  ui->ParaentasEd->setEnabled(mode == omNested);
  ui->ParaentasLbl->setEnabled(mode == omNested);

  SetPageVisible(ui->ClauseTab, !onView);
  UpdateChkClick();
}

bool TCreateTriggerFrm::OnObject() const {
  const TOnMode mode = OnMode();
  return mode == omTable || mode == omView || mode == omNested;
}

bool TCreateTriggerFrm::DdlGroupShown() const {
  return !OnObject() && ui->subDDLRadio->isChecked();
}

bool TCreateTriggerFrm::DatabaseGroupShown() const {
  return !OnObject() && !ui->subDDLRadio->isChecked();
}

void TCreateTriggerFrm::subDatabaseRadioClick() {
  ui->FireOnGB3->setVisible(DatabaseGroupShown());
  ui->FireOnGB2->setVisible(DdlGroupShown());
}

void TCreateTriggerFrm::FireWhenClick() {
  // Some database events exist only before, others only after the fact.
  const bool before = ui->BeforeRadio->isChecked();
  const bool after = ui->AfterRadio->isChecked();
  if (!before && !after) return;
  for (QCheckBox* box : {ui->LogoffChk, ui->ShutdownChk}) {
    if (after) box->setChecked(false);
    box->setEnabled(before);
  }
  for (QCheckBox* box : {ui->ServerErrorChk, ui->LogonChk, ui->StartupChk}) {
    if (before) box->setChecked(false);
    box->setEnabled(after);
  }
}

void TCreateTriggerFrm::UpdateChkClick() {
  SetPageVisible(ui->UpdateTab, OnMode() == omTable && ui->UpdateChk->isChecked());
}

void TCreateTriggerFrm::UpdateRadio2Click() {
  Guarded([this] { LoadUpdateColumns(); });
}

// The columns of the table in the pickers: an object table's are its type's attributes.
void TCreateTriggerFrm::LoadUpdateColumns() {
  TKelTreeList* list = ui->UpdateColumnsTreeList;
  list->ClearRows();
  const QString owner = Trim(ui->SchemaEd->text());
  const QString table = Trim(ui->TableEd->text());
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateTrigger.ScanObject"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = owner;
  TempQry.ParamByName(QStringLiteral("P_TABLE")) = table;
  TempQry.Open();
  const QString typeOwner = Trim(Field(TempQry, QStringLiteral("TABLE_TYPE_OWNER")));
  const QString typeName = Trim(Field(TempQry, QStringLiteral("TABLE_TYPE")));
  TempQry.Close();
  if (typeName.isEmpty()) {
    TempQry.LoadSQL(QStringLiteral("CreateTrigger.LoadColumn_01"));
    TempQry.ParamByName(QStringLiteral("P_OWN")) = owner;
    TempQry.ParamByName(QStringLiteral("P_TABLE")) = table;
  } else {
    TempQry.LoadSQL(QStringLiteral("CreateTrigger.LoadType"));
    TempQry.ParamByName(QStringLiteral("P_OWN")) = typeOwner;
    TempQry.ParamByName(QStringLiteral("P_TYPE")) = typeName;
  }
  TempQry.Open();
  QList<QStringList> rows;
  rows.reserve(TempQry.RecordCount());
  for (; !TempQry.Eof(); TempQry.Next())
    rows << QStringList{Trim(Field(TempQry, QStringLiteral("ColID"))),
                        Field(TempQry, QStringLiteral("Column Name")),
                        Field(TempQry, QStringLiteral("Data Type")), kFalse};
  TempQry.Close();
  list->AddRows(rows);
}

// ---------------------------------------------------------------------------------------------
// Pickers.

int TCreateTriggerFrm::RunPicker(const QList<TDataSelectColumn>& columns, const QString& title,
                                 const QString& note) {
  // Every pick starts with a fresh picker and leaves none behind, whatever happens.
  struct TRelease {
    ~TRelease() {
      if (!DataSelectFrm) return;
      DataSelectFrm->Bind(nullptr);
      delete DataSelectFrm;
      DataSelectFrm = nullptr;
    }
  } release;
  if (!DataSelectFrm)
    DataSelectFrm = new TDataSelectFrm(Application() ? Application()->MainForm() : nullptr);
  DataSelectFrm->setWindowTitle(title);
  DataSelectFrm->DataGrd()->setToolTip(note);
  DataSelectFrm->Bind(&DataQry);
  for (int i = 0; i < TDataSelectFrm::kColumnCount; ++i) {
    if (i < columns.size())
      DataSelectFrm->SetColumn(i, columns[i].FieldName, columns[i].Caption);
    else
      DataSelectFrm->HideColumn(i);
  }
  return DataSelectFrm->ShowModal();
}

void TCreateTriggerFrm::PickInto(QLineEdit* edit, const QString& key, bool narrow,
                                 const QList<TDataSelectColumn>& columns, const char* titleKey,
                                 const char* noteKey, const QString& field) {
  Guarded([&] {
    DataQry.Close();
    DataQry.LoadSQL(key);
    QString sql = DataQry.SQL();
    if (!sql.endsWith(u'\n')) sql += u'\n';
    if (narrow)
      sql += QStringLiteral("where owner = '%1' ").arg(QuoteSql(Trim(ui->SchemaEd->text())));
    sql += QStringLiteral("order by 1,2 ");
    DataQry.SetSQL(sql, key);
    DataQry.Open();
    if (RunPicker(columns, Msg(titleKey), Msg(noteKey)) == mrOk && !DataQry.Eof())
      edit->setText(DataQry.FieldByName(field));
    DataQry.Close();
  });
}

void TCreateTriggerFrm::SchemaSearchBtnClick() {
  // Every schema is offered: the list is where the owner is chosen, so it is not narrowed.
  PickInto(ui->SchemaEd, QStringLiteral("CreateTrigger.LoadSchema"), false,
           {{QStringLiteral("Schema Name"), Msg("Owner")}}, "CreateTriggerFrn.001",
           "CreateTriggerFrn.005", QStringLiteral("Schema Name"));
}

void TCreateTriggerFrm::TableSearchBtnClick() {
  PickInto(ui->TableEd, QStringLiteral("CreateTrigger.LoadTable"), true,
           {{QStringLiteral("Schema Name"), Msg("Owner")},
            {QStringLiteral("Table Name"), Msg("CreateTriggerFrn.TableName")}},
           "CreateTriggerFrn.002", "CreateTriggerFrn.005", QStringLiteral("Table Name"));
}

void TCreateTriggerFrm::ViewSearchBtnClick() {
  PickInto(ui->ViewEd, QStringLiteral("CreateTrigger.LoadView"), true,
           {{QStringLiteral("Schema Name"), Msg("Owner")},
            {QStringLiteral("View Name"), Msg("CreateTriggerFrn.ViewName")}},
           "CreateTriggerFrn.003", "CreateTriggerFrn.005", QStringLiteral("View Name"));
}

void TCreateTriggerFrm::NestedSearchBtnClick() {
  Guarded([this] {
    DataQry.Close();
    DataQry.LoadSQL(QStringLiteral("CreateTrigger.LoadColumn"));
    DataQry.ParamByName(QStringLiteral("P_OWN")) = Trim(ui->SchemaEd->text());
    DataQry.ParamByName(QStringLiteral("P_VIEW")) = Trim(ui->ViewEd->text());
    DataQry.Open();
    const int result =
        RunPicker({{QStringLiteral("Column Name"), Msg("CreateTriggerFrn.ColumnName")},
                   {QStringLiteral("Data Type"), Msg("CreateTriggerFrn.DataType")}},
                  Msg("CreateTriggerFrn.004"), Msg("CreateTriggerFrn.006"));
    if (result == mrOk && !DataQry.Eof())
      ui->NestedEd->setText(DataQry.FieldByName(QStringLiteral("Column Name")));
    DataQry.Close();
  });
}

// ---------------------------------------------------------------------------------------------
// The body template.

QStringList TCreateTriggerFrm::BodyTemplate(const QString& name, const QDateTime& when) {
  const QString stars(78, u'*');
  return {
      QStringLiteral("DECLARE "),
      QStringLiteral("tmpVar NUMBER; "),
      u'/' + stars + u' ',
      QStringLiteral("   TRIGGER NAME :       %1 ").arg(name),
      QStringLiteral("   CREATE DATE  :       %1 ")
          .arg(QLocale::system().toString(when, QLocale::ShortFormat)),
      QStringLiteral("   NOTE         :        "),
      stars + QStringLiteral("/ "),
      QStringLiteral("BEGIN "),
      QStringLiteral("   tmpVar := 0; "),
      QString(),
      QStringLiteral("   SELECT MySeq.NEXTVAL INTO tmpVar FROM dual; "),
      QStringLiteral("   :NEW.SequenceColumn := tmpVar; "),
      QStringLiteral("   :NEW.CreatedDate := SYSDATE; "),
      QStringLiteral("   :NEW.CreatedUser := USER; "),
      QString(),
      QStringLiteral("   EXCEPTION "),
      QStringLiteral("     WHEN OTHERS THEN "),
      QStringLiteral("       -- Consider logging the error and then re-raise "),
      QStringLiteral("       RAISE; "),
      QStringLiteral("END  %1; ").arg(name),
      QString(),
      QString(),
      QStringLiteral("/ "),
  };
}

void TCreateTriggerFrm::WriteTemplate() {
  ui->BodyEditor->SetText(BodyTemplate(ui->TriggerNameEd->text(), Now()).join(CRLF));
}

void TCreateTriggerFrm::LoadTemplateBtnClick() {
  if (!Application()) return;
  const int answer =
      Application()->esMsgBox(Msg("CreateTriggerFrn.007"), TMsgDlgType::Confirmation, false);
  if (answer == mrYes) WriteTemplate();
}

// ---------------------------------------------------------------------------------------------
// Loading an existing trigger.

void TCreateTriggerFrm::LoadTrigger() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateTrigger.AlterTrigger_01"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  TempQry.ParamByName(QStringLiteral("P_TRIGGER")) = FTriggerName;
  TempQry.Open();
  if (TempQry.Eof())
    throw EKelError(FormatMsg(Msg("CreateTriggerFrn.NotFound"), {FSchema, FTriggerName}));
  const QString baseType = Trim(Field(TempQry, QStringLiteral("base_object_type"))).toUpper();
  const QString tableOwner = Trim(Field(TempQry, QStringLiteral("table_owner")));
  const QString tableName = Trim(Field(TempQry, QStringLiteral("table_name")));
  const QString nested = Trim(Field(TempQry, QStringLiteral("column_name")));
  const QString type = Trim(Field(TempQry, QStringLiteral("trigger_type"))).toUpper();
  const QString events = Field(TempQry, QStringLiteral("triggering_event"));
  const QString referencing = Field(TempQry, QStringLiteral("REFERENCING_NAMES"));
  const QString status = Trim(Field(TempQry, QStringLiteral("STATUS"))).toUpper();
  const QString when = Field(TempQry, QStringLiteral("WHEN_CLAUSE"));
  const QString action = Trim(Field(TempQry, QStringLiteral("ACTION_TYPE"))).toUpper();
  QString body = Field(TempQry, QStringLiteral("TRIGGER_BODY"));
  TempQry.Close();

  if (baseType == u"VIEW")
    SetOnMode(nested.isEmpty() ? omView : omNested);
  else if (baseType == u"DATABASE")
    SetOnMode(omDatabase);
  else if (baseType == u"SCHEMA")
    SetOnMode(omSchema);
  else
    SetOnMode(omTable);
  switch (OnMode()) {
    case omTable:
      ui->SchemaEd->setText(tableOwner);
      ui->TableEd->setText(tableName);
      break;
    case omNested:
      ui->NestedEd->setText(nested);
      [[fallthrough]];
    case omView:
      ui->SchemaEd->setText(tableOwner);
      ui->ViewEd->setText(tableName);
      break;
    case omSchema:
      ui->SchemaEd->setText(tableOwner);
      break;
    case omDatabase:
      break;
  }

  if (type.startsWith(u"INSTEAD OF"))
    ui->InsteadRadio->setChecked(true);
  else if (type.startsWith(u"AFTER"))
    ui->AfterRadio->setChecked(true);
  else
    ui->BeforeRadio->setChecked(true);
  if (ui->StatmentRadio->isEnabled() && !type.contains(u"EACH ROW") &&
      !type.startsWith(u"INSTEAD OF"))
    ui->StatmentRadio->setChecked(true);
  else
    ui->RowRadio->setChecked(true);

  LoadEvents(events);
  LoadReferencing(referencing);
  (status == u"DISABLED" ? ui->DisabledRadio : ui->EnabledRadio)->setChecked(true);
  ui->WhenClauseEditor->SetText(when);
  if (action == u"CALL") {
    ui->ProcedureRadio->setChecked(true);
    // The dictionary keeps a call body with its keyword, which the script writes itself.
    body = Trim(body);
    if (body.startsWith(QLatin1String("CALL"), Qt::CaseInsensitive)) body = Trim(body.mid(4));
  }
  ui->BodyEditor->SetText(body);
  if (OnMode() == omTable && ui->UpdateChk->isChecked()) LoadTriggerColumns();

  ui->SchemaCmb->setEnabled(false);
  ui->TriggerNameEd->setEnabled(false);
}

void TCreateTriggerFrm::LoadEvents(const QString& events) {
  const TEvent all[] = {
      {ui->DeleteChk, "DELETE"},     {ui->InsertChk, "INSERT"},
      {ui->UpdateChk, "UPDATE"},     {ui->AlterChk, "ALTER"},
      {ui->AnalyzeChk, "ANALYZE"},   {ui->AssocChk, "ASSOCIATE STATISTICS"},
      {ui->AuditChk, "AUDIT"},       {ui->CommentChk, "COMMENT"},
      {ui->CreateChk, "CREATE"},     {ui->DisassocChk, "DISASSOCIATE STATISTICS"},
      {ui->DropChk, "DROP"},         {ui->GrantChk, "GRANT"},
      {ui->NoAuditChk, "NOAUDIT"},   {ui->RenameChk, "RENAME"},
      {ui->RevokeChk, "REVOKE"},     {ui->TruncateChk, "TRUNCATE"},
      {ui->DDLChk, "DDL"},           {ui->ServerErrorChk, "SERVERERROR"},
      {ui->ServerErrorChk, "ERROR"}, {ui->LogoffChk, "LOGOFF"},
      {ui->ShutdownChk, "SHUTDOWN"}, {ui->LogonChk, "LOGON"},
      {ui->StartupChk, "STARTUP"},   {ui->SuspendChk, "SUSPEND"},
  };
  const QStringList words =
      events.toUpper().split(QRegularExpression(QStringLiteral("\\s+OR\\s+")), Qt::SkipEmptyParts);
  bool ddl = false;
  for (const QString& word : words)
    for (const TEvent& e : all)
      if (Trim(word) == QLatin1String(e.Word)) {
        e.Box->setChecked(true);
        if (e.Box->parentWidget() == ui->FireOnGB2) ddl = true;
      }
  if (OnMode() == omDatabase || OnMode() == omSchema)
    (ddl ? ui->subDDLRadio : ui->subDatabaseRadio)->setChecked(true);
}

void TCreateTriggerFrm::LoadReferencing(const QString& names) {
  static const QRegularExpression re(QStringLiteral("\\b(NEW|OLD|PARENT)\\s+AS\\s+(\\S+)"),
                                     QRegularExpression::CaseInsensitiveOption);
  for (auto it = re.globalMatch(names); it.hasNext();) {
    const QRegularExpressionMatch m = it.next();
    const QString which = m.captured(1).toUpper();
    QLineEdit* edit = which == u"NEW"   ? ui->NewasEd
                      : which == u"OLD" ? ui->OldasEd
                                        : ui->ParaentasEd;
    edit->setText(m.captured(2));
  }
}

void TCreateTriggerFrm::LoadTriggerColumns() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("CreateTrigger.TriggerColumn"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  TempQry.ParamByName(QStringLiteral("P_TRIGGER")) = FTriggerName;
  TempQry.Open();
  QStringList columns;
  for (; !TempQry.Eof(); TempQry.Next())
    columns << Trim(Field(TempQry, QStringLiteral("COLUMN_NAME"))).toUpper();
  TempQry.Close();
  if (columns.isEmpty()) return;
  ui->UpdateRadio2->setChecked(true);
  TKelTreeList* list = ui->UpdateColumnsTreeList;
  for (int r = 0; r < list->RowCount(); ++r)
    if (columns.contains(Trim(list->Cell(r, ucName)).toUpper())) list->SetCell(r, ucFire, kTrue);
}

// ---------------------------------------------------------------------------------------------
// Validation.

QString TCreateTriggerFrm::Schema() const {
  return Trim(ui->SchemaCmb->currentText());
}

QString TCreateTriggerFrm::TriggerName() const {
  return Trim(ui->TriggerNameEd->text());
}

QString TCreateTriggerFrm::TargetSchema() const {
  return Trim(ui->SchemaEd->text());
}

bool TCreateTriggerFrm::Validate() {
  auto name = [this](QLabel* label, QLineEdit* edit) {
    const QString text = Trim(edit->text());
    if (text.isEmpty()) return CheckFail(label, edit);
    return CheckName(label, edit, text);
  };
  if (!name(ui->TriggerNameLbl, ui->TriggerNameEd)) return false;
  if (ui->SchemaCmb->currentIndex() < 0) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
  const TOnMode mode = OnMode();
  if (mode != omDatabase && !name(ui->OnSchemaLbl, ui->SchemaEd)) return false;
  if (mode == omTable && !name(ui->TableLbl, ui->TableEd)) return false;
  if ((mode == omView || mode == omNested) && !name(ui->ViewLbl, ui->ViewEd)) return false;
  if (mode == omNested && !name(ui->NestedLbl, ui->NestedEd)) return false;

  auto none = [](std::initializer_list<QCheckBox*> boxes) {
    for (QCheckBox* box : boxes)
      if (box->isChecked()) return false;
    return true;
  };
  const bool noEvent =
      (OnObject() && none({ui->DeleteChk, ui->InsertChk, ui->UpdateChk})) ||
      (DdlGroupShown() &&
       none({ui->AlterChk, ui->CommentChk, ui->GrantChk, ui->TruncateChk, ui->AnalyzeChk,
             ui->CreateChk, ui->NoAuditChk, ui->DDLChk, ui->AssocChk, ui->DisassocChk,
             ui->RenameChk, ui->AuditChk, ui->DropChk, ui->RevokeChk})) ||
      (DatabaseGroupShown() && none({ui->ServerErrorChk, ui->LogoffChk, ui->ShutdownChk,
                                     ui->LogonChk, ui->StartupChk, ui->SuspendChk}));
  if (noEvent) {
    if (Application())
      Application()->esMsgDBox(QStringLiteral("Acm.Select Fire"), {}, TMsgDlgType::Warning, false);
    return false;
  }

  if (OnObject()) {
    // The names are written as typed; an enabled Parent name is as necessary as the other two.
    for (auto [label, edit] :
         {std::pair{ui->NewasLbl, ui->NewasEd}, std::pair{ui->OldasLbl, ui->OldasEd},
          std::pair{ui->ParaentasLbl, ui->ParaentasEd}}) {
      if (!edit->isEnabled()) continue;
      if (!name(label, edit)) return false;
    }
  }
  return true;
}

// ---------------------------------------------------------------------------------------------
// The script.

void TCreateTriggerFrm::AddHead() {
  FStatements.Add(QStringLiteral("CREATE OR REPLACE TRIGGER ") + Schema() + u'.' + TriggerName() +
                  u' ');
}

void TCreateTriggerFrm::AddEventLine() {
  QString line = ui->InsteadRadio->isChecked() ? QStringLiteral("INSTEAD OF ")
                 : ui->AfterRadio->isChecked() ? QStringLiteral("AFTER ")
                                               : QStringLiteral("BEFORE ");
  QList<TEvent> group;
  if (OnObject())
    group = {{ui->DeleteChk, "DELETE"}, {ui->InsertChk, "INSERT"}, {ui->UpdateChk, "UPDATE"}};
  else if (DdlGroupShown())
    group = {{ui->AlterChk, "ALTER"},
             {ui->AnalyzeChk, "ANALYZE"},
             {ui->AssocChk, "ASSOCIATE STATISTICS"},
             {ui->AuditChk, "AUDIT"},
             {ui->CommentChk, "COMMENT"},
             {ui->CreateChk, "CREATE"},
             {ui->DisassocChk, "DISASSOCIATE STATISTICS"},
             {ui->DropChk, "DROP"},
             {ui->GrantChk, "GRANT"},
             {ui->NoAuditChk, "NOAUDIT"},
             {ui->RenameChk, "RENAME"},
             {ui->RevokeChk, "REVOKE"},
             {ui->TruncateChk, "TRUNCATE"},
             {ui->DDLChk, "DDL"}};
  else
    group = {{ui->ServerErrorChk, "SERVERERROR"}, {ui->LogoffChk, "LOGOFF"},
             {ui->ShutdownChk, "SHUTDOWN"},       {ui->LogonChk, "LOGON"},
             {ui->StartupChk, "STARTUP"},         {ui->SuspendChk, "SUSPEND"}};
  QStringList chosen;
  for (const TEvent& e : group)
    if (e.Box->isChecked()) chosen << QLatin1String(e.Word) + u' ';
  FStatements.Add(line + chosen.join(QStringLiteral("OR ")));
}

QString TCreateTriggerFrm::UpdateColumnList(const QStringList& columns) {
  QString list;
  for (const QString& column : columns)
    list += (list.isEmpty() ? QStringLiteral("OF ") : QStringLiteral("  ,")) + column + CR;
  return list;
}

void TCreateTriggerFrm::AddUpdateColumns() {
  // Only an UPDATE event of a table takes a column list, and only when the user asked for one.
  if (!UpdatePageVisible() || !ui->UpdateRadio2->isChecked()) return;
  const TKelTreeList* list = ui->UpdateColumnsTreeList;
  QStringList columns;
  for (int r = 0; r < list->RowCount(); ++r)
    if (list->Cell(r, ucFire) == kTrue) columns << list->Cell(r, ucName);
  const QString item = UpdateColumnList(columns);
  if (!Trim(item).isEmpty()) FStatements.Add(item);
}

void TCreateTriggerFrm::AddTarget() {
  const QString schema = TargetSchema();
  switch (OnMode()) {
    case omTable:
      FStatements.Add(QStringLiteral("ON ") + schema + u'.' + Trim(ui->TableEd->text()) + u' ');
      break;
    case omView:
      FStatements.Add(QStringLiteral("ON ") + schema + u'.' + Trim(ui->ViewEd->text()) + u' ');
      break;
    case omNested:
      FStatements.Add(QStringLiteral("ON NESTED TABLE ") + Trim(ui->NestedEd->text()) +
                      QStringLiteral(" OF ") + schema + u'.' + Trim(ui->ViewEd->text()) + u' ');
      break;
    case omDatabase:
      FStatements.Add(QStringLiteral("ON DATABASE "));
      break;
    case omSchema:
      FStatements.Add(QStringLiteral("ON ") + schema + QStringLiteral(".SCHEMA "));
      break;
  }
}

void TCreateTriggerFrm::AddReferencing() {
  if (!ui->NewasEd->isEnabled() && !ui->OldasEd->isEnabled() && !ui->ParaentasEd->isEnabled())
    return;
  QString item = QStringLiteral("REFERENCING");
  if (ui->NewasEd->isEnabled()) item += QStringLiteral(" NEW AS  ") + ui->NewasEd->text();
  if (ui->OldasEd->isEnabled()) item += QStringLiteral(" OLD AS  ") + ui->OldasEd->text();
  if (ui->ParaentasEd->isEnabled())
    item += QStringLiteral(" PARENT AS  ") + ui->ParaentasEd->text();
  FStatements.Add(item);
}

void TCreateTriggerFrm::AddForEachRow() {
  if (OnObject() && ui->RowRadio->isChecked()) FStatements.Add(QStringLiteral("FOR EACH ROW "));
}

void TCreateTriggerFrm::AddWhen() {
  const QString when = ui->WhenClauseEditor->Text();
  if (!WhenPageVisible() || Trim(when).isEmpty()) return;
  FStatements.Add(QStringLiteral("WHEN ( "));
  FStatements.Add(when);
  FStatements.Add(QStringLiteral(") "));
}

void TCreateTriggerFrm::AddBody() {
  const QString body = ui->BodyEditor->Text();
  FStatements.Add(ui->ProcedureRadio->isChecked() ? QStringLiteral("CALL ") + body : body);
}

void TCreateTriggerFrm::AddDisable() {
  if (!ui->DisabledRadio->isChecked()) return;
  FStatements.Add(QStringLiteral("/ "));
  FStatements.Add(QStringLiteral(" "));
  FStatements.Add(QStringLiteral("ALTER TRIGGER ") + Schema() + u'.' + TriggerName() +
                  QStringLiteral(" DISABLE "));
  FStatements.Add(QStringLiteral("/ "));
}

void TCreateTriggerFrm::BuildSql() {
  if (ui->PLSQLRadio->isChecked() && Trim(ui->BodyEditor->Text()).isEmpty()) WriteTemplate();
  FStatements.Clear();
  AddHead();
  AddEventLine();
  AddUpdateColumns();
  AddTarget();
  AddReferencing();
  AddForEachRow();
  AddWhen();
  AddBody();
  AddDisable();

  SqlMemo().Clear();
  const QString text = FStatements.Text();
  if (!Trim(text).isEmpty()) SqlMemo().Add(text);
  const QSignalBlocker block(ui->SqlMemo);
  ui->SqlMemo->setPlainText(SqlMemo().Text());
}

void TCreateTriggerFrm::ViewSqlBtnClick() {
  Guarded([this] {
    if (!Validate()) return;
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, Trim(FStatements.Text()));
  });
}

}  // namespace kel
