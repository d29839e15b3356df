#include "schema/CreateSequenceFrn.h"

#include <QComboBox>
#include <QKeyEvent>

#include "ui_CreateSequenceFrn.h"

namespace kel {

namespace {
// Selects `schema` in the owner list, adding it when the connection's list does not hold it
// (a sequence of SYS opened by a user who does not see SYS among the users).
void SelectOrAddSchema(QComboBox* combo, const QString& schema) {
  if (schema.isEmpty()) return;
  if (combo->findText(schema, Qt::MatchFixedString) < 0) combo->addItem(schema.toUpper());
  TKelBaseFrm::SelectComboText(combo, schema);
}
}  // namespace

TCreateSequenceFrm::TCreateSequenceFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateSequenceFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateSequenceFrm"));
  SetIniSave(false);

  OnKeyPress(ui->MaxValueEd, [this](QKeyEvent* e) { return MaxValueEdKeyPress(e); });
  OnKeyPress(ui->CacheEd, [this](QKeyEvent* e) { return MaxValueEdKeyPress(e); });
  // Bound to `toggled`, so alter mode's loading of the box disables the field too.
  connect(ui->NoCacheChk, &QAbstractButton::toggled, this, &TCreateSequenceFrm::NoCacheChkClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this, &TCreateSequenceFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateSequenceFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this, &TCreateSequenceFrm::CancelBtnClick);
}

TCreateSequenceFrm::~TCreateSequenceFrm() {
  delete ui;
}

void TCreateSequenceFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  TempQry.SetSession(DBInfo());
  FillSchemaCombo(ui->SchemaCmb);
  UpperCaseItems(ui->SchemaCmb);
}

void TCreateSequenceFrm::ReadParams(TXLink* link) {
  if (link->Verb() == QLatin1String("Alter")) {
    FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    FSchema = link->ParamByString(QStringLiteral("P_Schema"));
    FSequenceName = link->ParamByString(QStringLiteral("P_SequenceName"));
    SelectOrAddSchema(ui->SchemaCmb, FSchema);
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    SelectComboText(ui->SchemaCmb, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
}

void TCreateSequenceFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter)
    LoadSequence();
  else
    ui->IncrementBySpinEdit->SetText(QStringLiteral("1"));
  if (ui->SequenceNameEd->isEnabled() && ui->SequenceNameEd->focusPolicy() != Qt::NoFocus)
    ui->SequenceNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateSequenceFrm::LoadSequence() {
  TempQry.Close();
  TempQry.LoadSQL(QStringLiteral("SchSequenceNrn.Info"));
  TempQry.ParamByName(QStringLiteral("P_OWN")) = FSchema;
  TempQry.ParamByName(QStringLiteral("P_SEQUENCE")) = FSequenceName;
  TempQry.Open();
  // No row (or one without the values): the sequence went between browsing and opening. The
  // dialog base reports this and closes the dialog before anything is built.
  if (TempQry.Eof() || Trim(TempQry.FieldByName(QStringLiteral("Min Value"))).isEmpty() ||
      Trim(TempQry.FieldByName(QStringLiteral("Increment by"))).isEmpty()) {
    TempQry.Close();
    const QString templ =
        Application() ? Application()->esGetMSG(QStringLiteral("CreateSequenceFrm.Vanished"))
                      : QString();
    throw EKelError(
        FormatMsg(templ.isEmpty() ? QStringLiteral("The sequence %s.%s no longer exists.") : templ,
                  {FSchema, FSequenceName}));
  }
  FLastValue = TempQry.FieldByName(QStringLiteral("Last Value"));
  FMinValue = TempQry.FieldByName(QStringLiteral("Min Value"));
  FMaxValue = TempQry.FieldByName(QStringLiteral("Max Value"));
  FIncrement = TempQry.FieldByName(QStringLiteral("Increment by"));
  FCycle = Trim(TempQry.FieldByName(QStringLiteral("Cycle"))).toUpper() == u"YES";
  // A cache size of 0 (or none at all) is how the dictionary reports NOCACHE.
  const QString cache = Trim(TempQry.FieldByName(QStringLiteral("Cache?")));
  if (cache == u"0" || cache.isEmpty())
    FNoCache = true;
  else
    FCacheSize = TempQry.FieldByName(QStringLiteral("Cache?"));
  FOrder = Trim(TempQry.FieldByName(QStringLiteral("Order"))).toUpper() == u"YES";
  TempQry.Close();

  if (Application())
    setWindowTitle(FormatMsg(Application()->esGetMSG(QStringLiteral("CreateSequenceFrm.Alter")),
                             {FSequenceName}));
  ui->SequenceNameEd->setText(FSequenceName);
  SelectOrAddSchema(ui->SchemaCmb, FSchema);
  ui->StartWithSpinEdit->SetText(FLastValue);
  ui->MinValueSpinEdit->SetText(FMinValue);
  ui->MaxValueEd->setText(Trim(FMaxValue).toUpper() == u"NONE" ? QString() : FMaxValue);
  ui->IncrementBySpinEdit->SetText(FIncrement);
  ui->CycleChk->setChecked(FCycle);
  ui->CacheEd->setText(FCacheSize);
  ui->NoCacheChk->setChecked(FNoCache);
  ui->OrderChk->setChecked(FOrder);

  // Name, owner and start value of an existing sequence cannot be changed; the start field
  // shows the last number handed out, for information.
  ui->SequenceNameEd->setEnabled(false);
  ui->SchemaCmb->setEnabled(false);
  ui->StartWithSpinEdit->setEnabled(false);
}

bool TCreateSequenceFrm::MaxValueEdKeyPress(QKeyEvent* event) {
  return IsNonDigitKey(event);
}

void TCreateSequenceFrm::NoCacheChkClick() {
  ui->CacheEd->setEnabled(!ui->NoCacheChk->isChecked());
}

bool TCreateSequenceFrm::Validate() {
  if (Trim(ui->SequenceNameEd->text()).isEmpty())
    return CheckFail(ui->SequenceNameLbl, ui->SequenceNameEd);
  // The name goes into the statement as it is: it must be one identifier and nothing more.
  if (!FIsAlter &&
      !CheckName(ui->SequenceNameLbl, ui->SequenceNameEd, Trim(ui->SequenceNameEd->text())))
    return false;
  if (ui->SchemaCmb->currentIndex() < 0) return CheckFail(ui->SchemaLbl, ui->SchemaCmb);
  return true;
}

bool TCreateSequenceFrm::Changed(const QString& text, const QString& loaded) const {
  return Trim(text) != Trim(loaded);
}

void TCreateSequenceFrm::AddHead() {
  const QString verb =
      FIsAlter ? QStringLiteral("ALTER SEQUENCE %1.%2") : QStringLiteral("CREATE SEQUENCE %1.%2");
  SqlMemo().Add(verb.arg(ui->SchemaCmb->currentText(), Trim(ui->SequenceNameEd->text())));
}

void TCreateSequenceFrm::AddIncrementBy() {
  const QString increment = ui->IncrementBySpinEdit->Text();
  if (Trim(increment).isEmpty()) return;  // left empty: the server's default
  if (!FIsAlter || Changed(increment, FIncrement))
    SqlMemo().Add(QStringLiteral("INCREMENT BY %1 ").arg(Trim(increment)));
}

void TCreateSequenceFrm::AddStartWith() {
  // An existing sequence cannot be restarted this way.
  if (FIsAlter || Trim(ui->StartWithSpinEdit->Text()).isEmpty()) return;
  SqlMemo().Add(QStringLiteral("START WITH %1 ").arg(Trim(ui->StartWithSpinEdit->Text())));
}

void TCreateSequenceFrm::AddMinValue() {
  const QString minimum = ui->MinValueSpinEdit->Text();
  if (Trim(minimum).isEmpty()) return;  // left empty: the server's default
  if (!FIsAlter || Changed(minimum, FMinValue))
    SqlMemo().Add(QStringLiteral("MINVALUE %1 ").arg(Trim(minimum)));
}

void TCreateSequenceFrm::AddMaxValue() {
  // An empty maximum writes no clause: the sequence keeps (or gets) the server's default.
  const QString maximum = Trim(ui->MaxValueEd->text());
  if (maximum.isEmpty()) return;
  if (!FIsAlter || Changed(maximum, FMaxValue))
    SqlMemo().Add(QStringLiteral("MAXVALUE %1 ").arg(maximum));
}

void TCreateSequenceFrm::AddCycle() {
  if (FIsAlter && ui->CycleChk->isChecked() == FCycle) return;
  SqlMemo().Add(ui->CycleChk->isChecked() ? QStringLiteral("CYCLE ") : QStringLiteral("NOCYCLE "));
}

void TCreateSequenceFrm::AddCache() {
  // In alter mode only a change of the no-cache box writes a cache line: a new cache size with
  // the box untouched is not written.
  if (FIsAlter && ui->NoCacheChk->isChecked() == FNoCache) return;
  if (ui->NoCacheChk->isChecked()) {
    SqlMemo().Add(QStringLiteral("NOCACHE"));
    return;
  }
  const QString size = Trim(ui->CacheEd->text());
  if (!size.isEmpty()) SqlMemo().Add(QStringLiteral("CACHE %1 ").arg(size));
}

void TCreateSequenceFrm::AddOrder() {
  if (FIsAlter && ui->OrderChk->isChecked() == FOrder) return;
  SqlMemo().Add(ui->OrderChk->isChecked() ? QStringLiteral("ORDER") : QStringLiteral("NOORDER"));
}

void TCreateSequenceFrm::BuildSql() {
  SqlMemo().Clear();
  AddHead();
  AddIncrementBy();
  AddStartWith();
  AddMinValue();
  AddMaxValue();
  AddCycle();
  AddCache();
  AddOrder();
  // An open preview follows every rebuild.
  RefreshOwnedPreview();
}

}  // namespace kel
