#include "schema/CreateSynonymFrn.h"

#include <QHeaderView>
#include <algorithm>

#include "plugin/KelTreeList.h"
#include "ui_CreateSynonymFrn.h"

namespace kel {

namespace {
const QString kRemote = QStringLiteral("REMOTE");
const QString kPublicMark = QStringLiteral("(PUBLIC)");
}  // namespace

TCreateSynonymFrm::TCreateSynonymFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateSynonymFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateSynonymFrm"));
  SetIniSave(false);
  SetupLists();

  connect(ui->LocalRdo, &QAbstractButton::clicked, this, &TCreateSynonymFrm::TypeRadioClick);
  connect(ui->RemoteRdo, &QAbstractButton::clicked, this, &TCreateSynonymFrm::TypeRadioClick);
  connect(ui->SearchBtn, &QAbstractButton::clicked, this,
          [this] { Guarded([this] { SearchBtnClick(); }); });
  connect(ui->RightBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::RightBtnClick);
  connect(ui->ObjTList, &TKelTreeList::RowDoubleClicked, this, &TCreateSynonymFrm::RightBtnClick);
  connect(ui->LeftBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::LeftBtnClick);
  connect(ui->PrivateAllBtn, &QAbstractButton::clicked, this,
          &TCreateSynonymFrm::PrivateAllBtnClick);
  connect(ui->PublicAllBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::PublicAllBtnClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateSynonymFrm::CancelBtnClick);

  // The state follows every change of what it depends on (the original ran it when idle).
  connect(ui->ObjTList, &QTreeWidget::itemSelectionChanged, this, &TCreateSynonymFrm::UpdateState);
  connect(ui->SynTList, &QTreeWidget::itemSelectionChanged, this, &TCreateSynonymFrm::UpdateState);
  connect(ui->ObjTList, &TKelTreeList::RowsChanged, this, &TCreateSynonymFrm::UpdateState);
  connect(ui->SynTList, &TKelTreeList::RowsChanged, this, &TCreateSynonymFrm::UpdateState);
  for (QLineEdit* edit : {ui->SynonymNameEd, ui->SchemaEd, ui->ObjectEd})
    connect(edit, &QLineEdit::textChanged, this, &TCreateSynonymFrm::UpdateState);
  connect(ui->DBLinkCmb, &QComboBox::currentIndexChanged, this, &TCreateSynonymFrm::UpdateState);
  connect(ui->LocalRdo, &QAbstractButton::toggled, this, &TCreateSynonymFrm::UpdateState);
  UpdateState();
}

TCreateSynonymFrm::~TCreateSynonymFrm() {
  delete ui;
}

void TCreateSynonymFrm::SetupLists() {
  TKelTreeList* obj = ui->ObjTList;
  obj->AddColumn({QStringLiteral("ObjTListObjectName"),
                  QStringLiteral("Object Name"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  160});
  obj->AddColumn({QStringLiteral("ObjTListType"),
                  QStringLiteral("Type"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  90});
  obj->AddColumn({QStringLiteral("ObjTListSchema"),
                  QStringLiteral("Schema"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  90});
  obj->setSelectionMode(QAbstractItemView::ExtendedSelection);
  obj->setEditTriggers(QAbstractItemView::NoEditTriggers);
  // One line of text per row: the view need not measure each row (a search may list tens of
  // thousands of objects).
  obj->setUniformRowHeights(true);

  TKelTreeList* syn = ui->SynTList;
  syn->AddColumn({QStringLiteral("SynTListSynonymName"),
                  QStringLiteral("Synonym Name"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  true,
                  true,
                  140});
  syn->AddColumn({QStringLiteral("SynTListObject"),
                  QStringLiteral("Object"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  120});
  syn->AddColumn({QStringLiteral("SynTListType"),
                  QStringLiteral("Type"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  80});
  syn->AddColumn({QStringLiteral("SynTListPublic"),
                  QStringLiteral("Public"),
                  TCellEditor::Check,
                  {},
                  0,
                  0,
                  true,
                  true,
                  50});
  syn->AddColumn({QStringLiteral("SynTListSchema"),
                  QStringLiteral("Schema"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  80});
  syn->AddColumn({QStringLiteral("SynTListDBLink"),
                  QStringLiteral("DB Link"),
                  TCellEditor::Text,
                  {},
                  0,
                  0,
                  false,
                  true,
                  80});
  syn->setSelectionMode(QAbstractItemView::ExtendedSelection);
  syn->setUniformRowHeights(true);
}

void TCreateSynonymFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  ObjectQry.SetSession(DBInfo());
  DataQry.SetSession(DBInfo());
  FillSchemaCombo(ui->SchemaCmb);
  UpperCaseItems(ui->SchemaCmb);
  LoadDBLinks();
}

void TCreateSynonymFrm::LoadDBLinks() {
  ui->DBLinkCmb->clear();
  if (!DBInfo()) return;
  DataQry.Close();
  DataQry.LoadSQL(QStringLiteral("SchemaFrn.DBLink"));
  DataQry.Open();
  for (; !DataQry.Eof(); DataQry.Next()) {
    const QString link = DataQry.FieldByName(QStringLiteral("DB Link"));
    const bool isPublic = DataQry.FieldByName(QStringLiteral("Owner")) == u"PUBLIC";
    ui->DBLinkCmb->addItem(isPublic ? link + kPublicMark : link);
  }
  DataQry.Close();
  ui->DBLinkCmb->setCurrentIndex(-1);
}

void TCreateSynonymFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("ChangeOwner"))
    SelectComboText(ui->SchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
}

void TCreateSynonymFrm::KelDllDBDlgFrmShow() {
  ui->LeftPage->setCurrentIndex(0);
  ui->SchemaCmb->setFocus(Qt::OtherFocusReason);
  UpdateState();
}

void TCreateSynonymFrm::UpdateState() {
  bool canAdd = false;
  if (ui->LocalRdo->isChecked()) {
    canAdd = ui->ObjTList->selectionModel()->hasSelection();
  } else {
    canAdd = !Trim(ui->SynonymNameEd->text()).isEmpty() && ui->DBLinkCmb->currentIndex() >= 0 &&
             !Trim(ui->SchemaEd->text()).isEmpty() && !Trim(ui->ObjectEd->text()).isEmpty();
  }
  ui->RightBtn->setEnabled(canAdd);
  ui->LeftBtn->setEnabled(ui->SynTList->selectionModel()->hasSelection());
}

void TCreateSynonymFrm::TypeRadioClick() {
  if (ui->LocalRdo->isChecked()) {
    ui->LeftPage->setCurrentIndex(0);
    ui->SchemaCmb->setFocus(Qt::OtherFocusReason);
  } else {
    ui->LeftPage->setCurrentIndex(1);
    ui->SynonymNameEd->setFocus(Qt::OtherFocusReason);
  }
  UpdateState();
}

void TCreateSynonymFrm::SearchBtnClick() {
  const QString pattern = ui->SearchOptionEd->text().toUpper() + u'%';
  const QString schema = ui->SchemaCmb->currentText();
  const QString type = Trim(ui->ObjectTypeCmb->currentText());
  ObjectQry.Close();
  if (type.isEmpty()) {
    ObjectQry.LoadSQL(QStringLiteral("CreateSynonymFrn.Object03"));
  } else if (!ui->IncludeChk->isChecked()) {
    ObjectQry.LoadSQL(QStringLiteral("CreateSynonymFrn.Object01"));
    ObjectQry.ParamByName(QStringLiteral("P_TYPE")) = type;
  } else {
    ObjectQry.LoadSQL(QStringLiteral("CreateSynonymFrn.Object02"));
    ObjectQry.ParamByName(QStringLiteral("P_TYPE")) = type;
    ObjectQry.ParamByName(QStringLiteral("P_CURSCHEMA")) = DBInfo() ? DBInfo()->UserName() : "";
  }
  ObjectQry.ParamByName(QStringLiteral("P_OWNER")) = schema;
  ObjectQry.ParamByName(QStringLiteral("P_NAME")) = pattern;
  ObjectQry.Open();
  QList<QStringList> rows;
  rows.reserve(ObjectQry.RecordCount());
  for (; !ObjectQry.Eof(); ObjectQry.Next())
    rows << QStringList{ObjectQry.FieldByName(QStringLiteral("OBJECT_NAME")),
                        ObjectQry.FieldByName(QStringLiteral("OBJECT_TYPE")), schema};
  ObjectQry.Close();
  ui->ObjTList->ClearRows();
  ui->ObjTList->AddRows(rows);
  UpdateState();
}

QString TCreateSynonymFrm::DefaultPublic() const {
  return BoolToStr(DBInfo() && DBInfo()->PublicLinks());
}

QString TCreateSynonymFrm::RemoteLinkName() const {
  QString link = ui->DBLinkCmb->currentText();
  if (link.endsWith(kPublicMark)) link.chop(kPublicMark.size());
  return link;
}

void TCreateSynonymFrm::RightBtnClick() {
  Guarded([this] {
    if (ui->LocalRdo->isChecked())
      AddLocal();
    else
      AddRemote();
    UpdateState();
  });
}

void TCreateSynonymFrm::AddLocal() {
  // The selected objects move from the search list to the synonym list, in list order.
  const QList<int> selected = ui->ObjTList->SelectedRows();
  if (selected.isEmpty()) return;
  const QString schema = ui->SchemaCmb->currentText();
  const QString isPublic = DefaultPublic();
  QList<QStringList> rows;
  rows.reserve(selected.size());
  for (int r : selected) {
    const QString name = ui->ObjTList->Cell(r, 0);
    rows << QStringList{name, name, ui->ObjTList->Cell(r, 1), isPublic, schema, QString()};
  }
  ui->SynTList->AddRows(rows);
  // Taken from the end so the remaining indexes stay valid; one list update for the lot.
  ui->ObjTList->setUpdatesEnabled(false);
  const QSignalBlocker block(ui->ObjTList);
  for (auto it = selected.crbegin(); it != selected.crend(); ++it)
    delete ui->ObjTList->takeTopLevelItem(*it);
  ui->ObjTList->setUpdatesEnabled(true);
}

void TCreateSynonymFrm::AddRemote() {
  const QString name = Trim(ui->SynonymNameEd->text()).toUpper();
  const QString schema = Trim(ui->SchemaEd->text()).toUpper();
  const QString object = Trim(ui->ObjectEd->text()).toUpper();
  if (!CheckName(ui->SynonymNameLbl, ui->SynonymNameEd, name)) return;
  if (!CheckName(ui->RemoteSchemaLbl, ui->SchemaEd, schema)) return;
  if (!CheckName(ui->ObjectLbl, ui->ObjectEd, object)) return;
  const QStringList row{name, object, kRemote, DefaultPublic(), schema, RemoteLinkName()};
  TKelTreeList* syn = ui->SynTList;
  for (int r = 0; r < syn->RowCount(); ++r) {
    if (syn->RowCells(r) == row) {
      syn->SetFocusedRow(r);
      syn->setFocus(Qt::OtherFocusReason);
      return;
    }
  }
  syn->AddRows({row});
}

void TCreateSynonymFrm::LeftBtnClick() {
  const QList<int> selected = ui->SynTList->SelectedRows();
  for (auto it = selected.crbegin(); it != selected.crend(); ++it) ui->SynTList->DeleteRow(*it);
  for (TKelTreeList* list : {ui->ObjTList, ui->SynTList})
    for (int c = 0; c < list->ColumnCount(); ++c) list->resizeColumnToContents(c);
  UpdateState();
}

void TCreateSynonymFrm::SetAllPublic(bool on) {
  for (int r = 0; r < ui->SynTList->RowCount(); ++r)
    ui->SynTList->SetCell(r, scPublic, BoolToStr(on));
  if (Tracker() && ui->SynTList->RowCount() > 0) Tracker()->Change();
}

bool TCreateSynonymFrm::Validate() {
  TKelTreeList* syn = ui->SynTList;
  const QString caption = syn->Column(scName).Caption;
  if (syn->RowCount() == 0) return CheckFail(caption, syn);
  // The synonym name is the one cell the user may edit.
  for (int r = 0; r < syn->RowCount(); ++r) {
    const QString name = Trim(syn->Cell(r, scName));
    const bool ok = name.isEmpty() ? CheckFail(caption, syn) : CheckName(caption, syn, name);
    if (!ok) {
      syn->SetFocusedRow(r);
      return false;
    }
  }
  return true;
}

void TCreateSynonymFrm::ViewSqlBtnClick() {
  // The preview shows whatever the list holds, without validation.
  Guarded([this] {
    BuildSql();
    if (Application()) Application()->OpenViewSQLFrm(this, SqlMemo().Text());
  });
}

QString TCreateSynonymFrm::SynonymHead(int row) const {
  const bool isPublic = ui->SynTList->Cell(row, scPublic) == u"True";
  return (isPublic ? QStringLiteral("CREATE PUBLIC SYNONYM ") : QStringLiteral("CREATE SYNONYM ")) +
         AddDQ(Trim(ui->SynTList->Cell(row, scName)));
}

QString TCreateSynonymFrm::SynonymTarget(int row) const {
  return QStringLiteral(" FOR ") + AddDQ(ui->SynTList->Cell(row, scSchema)) + u'.' +
         AddDQ(ui->SynTList->Cell(row, scObject));
}

QString TCreateSynonymFrm::SynonymEnd(int row) const {
  if (ui->SynTList->Cell(row, scType) == kRemote)
    return u'@' + ui->SynTList->Cell(row, scDBLink) + u';';
  return QStringLiteral(";");
}

void TCreateSynonymFrm::BuildSql() {
  SqlMemo().Clear();
  for (int r = 0; r < ui->SynTList->RowCount(); ++r)
    SqlMemo().Add(SynonymHead(r) + SynonymTarget(r) + SynonymEnd(r));
  RefreshOwnedPreview();
}

}  // namespace kel
