#include "tables/TableStorage.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <limits>

#include "plugin/KelForms.h"
#include "plugin/KelText.h"

namespace kel {

namespace {

// The dictionary's MAX_EXTENTS of a segment created with MAXEXTENTS UNLIMITED.
const QString kUnlimitedExtents = QStringLiteral("2147483645");

// Unit lists of the extent sizes: position 0 bytes, 1 kilobytes, 2 megabytes.
const QStringList kUnits = {QStringLiteral("Bytes"), QStringLiteral("KB"), QStringLiteral("MB")};
constexpr int kKilobytes = 1;

// "Value" of an edit: its trimmed text.
QString Value(const QLineEdit* edit) {
  return Trim(edit->text());
}

// Non-empty with an integer value above 0. A run of digits too long for any integer type is
// still a positive number; the server judges its range.
bool Positive(const QString& value) {
  if (value.isEmpty()) return false;
  bool ok = false;
  const qlonglong n = value.toLongLong(&ok);
  if (ok) return n > 0;
  for (const QChar c : value)
    if (!c.isDigit()) return false;
  for (const QChar c : value)
    if (c != u'0') return true;
  return false;
}

QString UnitSuffix(const QComboBox* units) {
  switch (units->currentIndex()) {
    case 1:
      return QStringLiteral("K");
    case 2:
      return QStringLiteral("M");
    default:
      return QString();
  }
}

QString Loaded(const TTableAttributes& row, const char* column) {
  return Trim(row.value(QString::fromLatin1(column)));
}

}  // namespace

struct TTableStorage::TPrivate {
  // Storage page.
  QLineEdit* InitialExtentEd = nullptr;
  QComboBox* InitialExtentCmb = nullptr;
  QLineEdit* NextExtentEd = nullptr;
  QComboBox* NextExtentCmb = nullptr;
  QLineEdit* PctIncreaseEd = nullptr;
  QLineEdit* MinExtentsEd = nullptr;
  QLineEdit* MaxExtentsEd = nullptr;
  QCheckBox* MaxExtentsChk = nullptr;
  QLineEdit* PercentFreeEd = nullptr;
  QLineEdit* PercentUsedEd = nullptr;
  QLineEdit* InitTransEd = nullptr;
  QLineEdit* MaxTransEd = nullptr;
  QLineEdit* FreeListEd = nullptr;
  QLineEdit* FreeListGroupsEd = nullptr;
  QComboBox* BufferPoolCmb = nullptr;
  // Options page.
  QCheckBox* ParallelChk = nullptr;
  QRadioButton* DefaultRadio = nullptr;
  QRadioButton* ValueRadio = nullptr;
  QLineEdit* ValueEd = nullptr;
  QCheckBox* IgnoreChk = nullptr;
  QRadioButton* LoggingRdo = nullptr;
  QRadioButton* NoLoggingRdo = nullptr;
  QCheckBox* CacheChk = nullptr;
  QCheckBox* MonitoringChk = nullptr;

  TTableAttributes Before;   // the row as loaded (alter mode)
  bool InExitCheck = false;  // an exit message is up: no second check meanwhile

  // The physical-attribute keywords that alter writes with " 0" when cleared.
  QString TransOrPercentChange(const char* keyword, const QLineEdit* edit,
                               const char* column) const;
  QString NextItem() const;
  QString MaxExtentsItem() const;
  QString PctIncreaseItem() const;
  QString BufferPoolItem() const;
  QString ParallelChange() const;
  QString LoggingChange() const;
  QString CacheChange() const;
  QString MonitoringChange() const;
};

// ---------------------------------------------------------------------------------------------
// Building the pages.

namespace {

QVBoxLayout* SheetLayout(QWidget* sheet) {
  if (auto* box = qobject_cast<QVBoxLayout*>(sheet->layout())) return box;
  auto* content = new QWidget(sheet);
  if (sheet->layout())
    sheet->layout()->addWidget(content);
  else
    (new QVBoxLayout(sheet))->addWidget(content);
  return new QVBoxLayout(content);
}

template <typename T>
T* Named(T* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

QLineEdit* NumberEdit(QWidget* parent, const char* name) {
  auto* edit = Named(new QLineEdit(parent), name);
  edit->setMaximumWidth(90);
  return edit;
}

QComboBox* UnitCombo(QWidget* parent, const char* name) {
  auto* combo = Named(new QComboBox(parent), name);
  combo->addItems(kUnits);
  combo->setCurrentIndex(kKilobytes);
  return combo;
}

// One labelled row of a grid: label, control, and an optional trailing widget.
void AddRow(QGridLayout* grid, QWidget* parent, const char* labelName, const char* caption,
            QWidget* control, QWidget* trailing = nullptr) {
  const int row = grid->rowCount();
  auto* label = Named(new QLabel(QString::fromLatin1(caption), parent), labelName);
  label->setBuddy(control);
  grid->addWidget(label, row, 0);
  grid->addWidget(control, row, 1);
  if (trailing) grid->addWidget(trailing, row, 2);
}

QLabel* Percent(QWidget* parent) {
  return new QLabel(QStringLiteral("%"), parent);
}

}  // namespace

TTableStorage::TTableStorage(QWidget* storageSheet, QWidget* optionSheet)
    : QObject(storageSheet), d(new TPrivate) {
  setObjectName(QStringLiteral("TableStorage"));

  // Storage page.
  QVBoxLayout* page = SheetLayout(storageSheet);
  QWidget* host = page->parentWidget();

  auto* storage = Named(new QGroupBox(QStringLiteral(" Storage "), host), "StorageGrp");
  auto* grid = new QGridLayout(storage);
  d->InitialExtentEd = NumberEdit(storage, "InitialExtentEd");
  d->InitialExtentCmb = UnitCombo(storage, "InitialExtentCmb");
  AddRow(grid, storage, "InitialExtentLbl", "Initial Extent :", d->InitialExtentEd,
         d->InitialExtentCmb);
  d->NextExtentEd = NumberEdit(storage, "NextExtentEd");
  d->NextExtentCmb = UnitCombo(storage, "NextExtentCmb");
  AddRow(grid, storage, "NextExtentLbl", "Next Extent :", d->NextExtentEd, d->NextExtentCmb);
  d->PctIncreaseEd = NumberEdit(storage, "PctIncreaseEd");
  AddRow(grid, storage, "PctIncreaseLbl", "Pct Increase :", d->PctIncreaseEd, Percent(storage));
  d->MinExtentsEd = NumberEdit(storage, "MinExtentsEd");
  AddRow(grid, storage, "MinExtentsLbl", "Min Extents :", d->MinExtentsEd);
  d->MaxExtentsEd = NumberEdit(storage, "MaxExtentsEd");
  d->MaxExtentsChk = Named(new QCheckBox(QStringLiteral("Unlimited"), storage), "MaxExtentsChk");
  AddRow(grid, storage, "MaxExtentsLbl", "Max Extents :", d->MaxExtentsEd, d->MaxExtentsChk);
  grid->setColumnStretch(3, 1);
  page->addWidget(storage);

  auto* percent = Named(new QGroupBox(QStringLiteral("Percent"), host), "PercentGrp");
  grid = new QGridLayout(percent);
  d->PercentFreeEd = NumberEdit(percent, "PercentFreeEd");
  AddRow(grid, percent, "PercentFreeLbl", "Percent Free :", d->PercentFreeEd, Percent(percent));
  d->PercentUsedEd = NumberEdit(percent, "PercentUsedEd");
  AddRow(grid, percent, "PercentUsedLbl", "Percent Used :", d->PercentUsedEd, Percent(percent));
  grid->setColumnStretch(3, 1);

  auto* trans = Named(new QGroupBox(QStringLiteral("Transaction"), host), "TransactionGrp");
  grid = new QGridLayout(trans);
  d->InitTransEd = NumberEdit(trans, "InitTransEd");
  AddRow(grid, trans, "InitTransLbl", "Init Trans :", d->InitTransEd);
  d->MaxTransEd = NumberEdit(trans, "MaxTransEd");
  AddRow(grid, trans, "MaxTransLbl", "Max Trans :", d->MaxTransEd);
  grid->setColumnStretch(3, 1);

  auto* blockRow = new QHBoxLayout();
  blockRow->addWidget(percent);
  blockRow->addWidget(trans);
  page->addLayout(blockRow);

  auto* freeLists = Named(new QGroupBox(QStringLiteral(" Free Lists "), host), "FreeListGrp");
  grid = new QGridLayout(freeLists);
  d->FreeListEd = NumberEdit(freeLists, "FreeListEd");
  AddRow(grid, freeLists, "FreeListLbl", "Free Lists :", d->FreeListEd);
  d->FreeListGroupsEd = NumberEdit(freeLists, "FreeListGroupsEd");
  AddRow(grid, freeLists, "FreeListGroupsLbl", "FreeList Groups :", d->FreeListGroupsEd);
  grid->setColumnStretch(3, 1);

  auto* pool = Named(new QGroupBox(QStringLiteral(" Buffer Pool "), host), "BufferPoolGrp");
  grid = new QGridLayout(pool);
  d->BufferPoolCmb = Named(new QComboBox(pool), "BufferPoolCmb");
  d->BufferPoolCmb->addItems(
      {QStringLiteral("Default"), QStringLiteral("Keep"), QStringLiteral("Recycle")});
  AddRow(grid, pool, "BufferPoolLbl", "Buffer Pool :", d->BufferPoolCmb);
  grid->setColumnStretch(3, 1);

  auto* listRow = new QHBoxLayout();
  listRow->addWidget(freeLists);
  listRow->addWidget(pool);
  page->addLayout(listRow);
  page->addStretch(1);

  // Options page.
  page = SheetLayout(optionSheet);
  host = page->parentWidget();

  auto* parallel = Named(new QGroupBox(host), "ParallelGrp");
  grid = new QGridLayout(parallel);
  d->ParallelChk = Named(new QCheckBox(QStringLiteral("Parallel"), parallel), "ParallelChk");
  d->DefaultRadio = Named(new QRadioButton(QStringLiteral("Default"), parallel), "DefaultRadio");
  d->ValueRadio = Named(new QRadioButton(QStringLiteral("Value"), parallel), "ValueRadio");
  d->ValueEd = NumberEdit(parallel, "ValueEd");
  auto* degree = new QButtonGroup(parallel);
  degree->addButton(d->DefaultRadio);
  degree->addButton(d->ValueRadio);
  d->DefaultRadio->setChecked(true);
  grid->addWidget(d->ParallelChk, 0, 0, 1, 3);
  grid->addWidget(d->DefaultRadio, 1, 1);
  grid->addWidget(d->ValueRadio, 2, 1);
  auto* valueLbl = Named(new QLabel(QStringLiteral("Degree :"), parallel), "ValueLbl");
  valueLbl->setBuddy(d->ValueEd);
  grid->addWidget(valueLbl, 2, 2);
  grid->addWidget(d->ValueEd, 2, 3);
  grid->setColumnStretch(4, 1);
  page->addWidget(parallel);

  auto* logging = Named(new QGroupBox(host), "LoggingGrp");
  grid = new QGridLayout(logging);
  d->IgnoreChk =
      Named(new QCheckBox(QStringLiteral("Ignore Default Logging Value"), logging), "IgnoreChk");
  d->LoggingRdo = Named(new QRadioButton(QStringLiteral("LOGGING"), logging), "LoggingRdo");
  d->NoLoggingRdo = Named(new QRadioButton(QStringLiteral("NOLOGGING"), logging), "NoLoggingRdo");
  auto* logGroup = new QButtonGroup(logging);
  logGroup->addButton(d->LoggingRdo);
  logGroup->addButton(d->NoLoggingRdo);
  d->LoggingRdo->setChecked(true);
  grid->addWidget(d->IgnoreChk, 0, 0, 1, 3);
  grid->addWidget(d->LoggingRdo, 1, 1);
  grid->addWidget(d->NoLoggingRdo, 2, 1);
  grid->setColumnStretch(3, 1);
  page->addWidget(logging);

  d->CacheChk = Named(new QCheckBox(QStringLiteral("Cache"), host), "CacheChk");
  d->MonitoringChk = Named(new QCheckBox(QStringLiteral("Monitoring"), host), "MonitoringChk");
  page->addWidget(d->CacheChk);
  page->addWidget(d->MonitoringChk);
  page->addStretch(1);

  // Start state: the parallel and logging choices wait for their check box.
  d->DefaultRadio->setEnabled(false);
  d->ValueRadio->setEnabled(false);
  d->ValueEd->setEnabled(false);
  d->LoggingRdo->setEnabled(false);
  d->NoLoggingRdo->setEnabled(false);

  // Every edit of both pages takes digits only.
  for (QLineEdit* edit : {d->InitialExtentEd, d->NextExtentEd, d->PctIncreaseEd, d->MinExtentsEd,
                          d->MaxExtentsEd, d->PercentFreeEd, d->PercentUsedEd, d->InitTransEd,
                          d->MaxTransEd, d->FreeListEd, d->FreeListGroupsEd, d->ValueEd})
    OnKeyPress(edit, [this](QKeyEvent* e) { return InitialExtentEdKeyPress(e); });
  for (QLineEdit* edit : {d->InitialExtentEd, d->NextExtentEd, d->MinExtentsEd, d->MaxExtentsEd,
                          d->FreeListEd, d->FreeListGroupsEd, d->ValueEd})
    OnExit(edit, [this, edit] { InitialExtentEdExit(edit); });
  OnExit(d->PctIncreaseEd, [this] { PctIncreaseEdExit(d->PctIncreaseEd); });
  for (QLineEdit* edit : {d->InitTransEd, d->MaxTransEd})
    OnExit(edit, [this, edit] { InitTransEdExit(edit); });

  // Bound to `toggled`, so loading a value in alter mode applies the same rules as a click.
  connect(d->MaxExtentsChk, &QAbstractButton::toggled, this, &TTableStorage::MaxExtentsChkClick);
  connect(d->ParallelChk, &QAbstractButton::toggled, this, &TTableStorage::ParallelChkClick);
  connect(d->DefaultRadio, &QAbstractButton::toggled, this, [this](bool on) {
    if (on) DefaultRadioClick();
  });
  connect(d->ValueRadio, &QAbstractButton::toggled, this, [this](bool on) {
    if (on) ValueRadioClick();
  });
  connect(d->IgnoreChk, &QAbstractButton::toggled, this, &TTableStorage::IgnoreChkClick);
}

TTableStorage::~TTableStorage() = default;

// ---------------------------------------------------------------------------------------------
// Input rules.

bool TTableStorage::InitialExtentEdKeyPress(QKeyEvent* event) {
  return IsNonDigitKey(event);
}

namespace {

// Checks the edit's whole-number value against [min, max] as it is left: a value out of range
// shows `key`, a text that is no 32-bit integer shows the conversion error; either way the edit
// gets the focus back and keeps its text.
bool ExitCheck(QLineEdit* edit, bool& busy, int min, int max, const char* key) {
  const QString value = Trim(edit->text());
  if (busy || value.isEmpty()) return true;
  bool ok = false;
  const int n = value.toInt(&ok);
  if (ok && n >= min && n <= max) return true;
  if (!Application()) return false;
  busy = true;
  if (!ok)
    Application()->esMsgBox(u'\'' + value + QStringLiteral("' is not a valid integer value"),
                            TMsgDlgType::Error, false);
  else
    Application()->esMsgDBox(QString::fromLatin1(key), TMsgDlgType::Warning, TMsgDlgButtons::Ok,
                             false);
  busy = false;
  // The focus is still on its way to the next control (or page); send it back, page and all,
  // once that is done.
  QTimer::singleShot(0, edit, [edit] { FocusControl(edit); });
  return false;
}

}  // namespace

void TTableStorage::InitialExtentEdExit(QLineEdit* edit) {
  ExitCheck(edit, d->InExitCheck, 0, std::numeric_limits<int>::max(), "InsertInteger");
}

void TTableStorage::PctIncreaseEdExit(QLineEdit* edit) {
  ExitCheck(edit, d->InExitCheck, 0, 100, "InsertNumber100Msg");
}

void TTableStorage::InitTransEdExit(QLineEdit* edit) {
  ExitCheck(edit, d->InExitCheck, 0, 255, "InsertNumber255Msg");
}

bool TTableStorage::ExitChecksPass() {
  constexpr int kMax = std::numeric_limits<int>::max();
  const struct {
    QLineEdit* Edit;
    int Max;
    const char* Key;
  } checks[] = {
      {d->InitialExtentEd, kMax, "InsertInteger"},   {d->NextExtentEd, kMax, "InsertInteger"},
      {d->PctIncreaseEd, 100, "InsertNumber100Msg"}, {d->MinExtentsEd, kMax, "InsertInteger"},
      {d->MaxExtentsEd, kMax, "InsertInteger"},      {d->InitTransEd, 255, "InsertNumber255Msg"},
      {d->MaxTransEd, 255, "InsertNumber255Msg"},    {d->FreeListEd, kMax, "InsertInteger"},
      {d->FreeListGroupsEd, kMax, "InsertInteger"},  {d->ValueEd, kMax, "InsertInteger"},
  };
  for (const auto& check : checks)
    if (!ExitCheck(check.Edit, d->InExitCheck, 0, check.Max, check.Key)) return false;
  return true;
}

void TTableStorage::MaxExtentsChkClick() {
  const bool unlimited = d->MaxExtentsChk->isChecked();
  if (unlimited) d->MaxExtentsEd->clear();
  d->MaxExtentsEd->setEnabled(!unlimited);
}

void TTableStorage::ParallelChkClick() {
  const bool on = d->ParallelChk->isChecked();
  d->DefaultRadio->setChecked(true);
  d->DefaultRadio->setEnabled(on);
  d->ValueRadio->setEnabled(on);
}

void TTableStorage::DefaultRadioClick() {
  d->ValueEd->setEnabled(false);
}

void TTableStorage::ValueRadioClick() {
  d->ValueEd->setEnabled(true);
}

void TTableStorage::IgnoreChkClick() {
  const bool on = d->IgnoreChk->isChecked();
  d->LoggingRdo->setEnabled(on);
  d->NoLoggingRdo->setEnabled(on);
}

// ---------------------------------------------------------------------------------------------
// Alter mode: the loaded row.

QString TTableStorage::BytesToKilobytes(const QString& bytes) {
  const QString text = Trim(bytes);
  bool ok = false;
  const qlonglong n = text.toLongLong(&ok);
  if (!ok || n < 0) return text;  // nothing or no number: shown as it came
  return QString::number(n / 1024 + (n % 1024 != 0 ? 1 : 0));  // rounded up, no overflow
}

void TTableStorage::Load(const TTableAttributes& loaded) {
  d->Before = loaded;
  const TTableAttributes& row = d->Before;

  d->PercentFreeEd->setText(Loaded(row, "PctFree"));
  d->PercentUsedEd->setText(Loaded(row, "PctUsed"));
  d->InitTransEd->setText(Loaded(row, "IniTrans"));
  d->MaxTransEd->setText(Loaded(row, "MaxTrans"));
  // The dictionary gives extent sizes in bytes; the edits show them in kilobytes.
  d->InitialExtentEd->setText(BytesToKilobytes(Loaded(row, "Initial")));
  d->InitialExtentCmb->setCurrentIndex(kKilobytes);
  d->NextExtentEd->setText(BytesToKilobytes(Loaded(row, "Next")));
  d->NextExtentCmb->setCurrentIndex(kKilobytes);
  d->PctIncreaseEd->setText(Loaded(row, "PctIncrease"));
  d->MinExtentsEd->setText(Loaded(row, "MinExtents"));
  const QString maxExtents = Loaded(row, "MaxExtents");
  if (maxExtents == kUnlimitedExtents) {
    d->MaxExtentsChk->setChecked(true);
  } else {
    d->MaxExtentsChk->setChecked(false);
    d->MaxExtentsEd->setText(maxExtents);
  }
  d->FreeListEd->setText(Loaded(row, "FreeLists"));
  d->FreeListGroupsEd->setText(Loaded(row, "FreeList Groups"));
  const int pool = d->BufferPoolCmb->findText(Loaded(row, "Buffer Pool"), Qt::MatchFixedString);
  d->BufferPoolCmb->setCurrentIndex(pool < 0 ? 0 : pool);

  // Degree "1" is a serial table; "DEFAULT" or a number is a parallel one.
  const QString degree = Loaded(row, "Degree");
  if (!degree.isEmpty() && degree != u"1") {
    d->ParallelChk->setChecked(true);
    if (degree.compare(u"DEFAULT", Qt::CaseInsensitive) == 0) {
      d->DefaultRadio->setChecked(true);
    } else {
      d->ValueRadio->setChecked(true);
      d->ValueEd->setText(degree);
    }
  }
  // A table always has its own logging attribute: show it as an explicit choice.
  const QString logging = Loaded(row, "Logging").toUpper();
  if (!logging.isEmpty()) {
    d->IgnoreChk->setChecked(true);
    (logging == u"YES" ? d->LoggingRdo : d->NoLoggingRdo)->setChecked(true);
  }
  const QString cache = Loaded(row, "Cache").toUpper();
  d->CacheChk->setChecked(cache == u"CACHE" || cache == u"Y");
  d->MonitoringChk->setChecked(Loaded(row, "Monitoring").toUpper() == u"YES");
}

// ---------------------------------------------------------------------------------------------
// Create mode.

QString TTableStorage::PhysicalFragment() const {
  QString text;
  const QString pctFree = Value(d->PercentFreeEd);
  const QString pctUsed = Value(d->PercentUsedEd);
  const QString initTrans = Value(d->InitTransEd);
  const QString maxTrans = Value(d->MaxTransEd);
  if (!pctFree.isEmpty()) text += QStringLiteral("PCTFREE ") + pctFree + CR;
  if (!pctUsed.isEmpty()) text += QStringLiteral("PCTUSED ") + pctUsed + CR;
  if (Positive(initTrans)) text += QStringLiteral("INITRANS ") + initTrans + CR;
  if (Positive(maxTrans)) text += QStringLiteral("MAXTRANS ") + maxTrans + CR;

  const QString initial = Value(d->InitialExtentEd);
  const QString next = Value(d->NextExtentEd);
  const QString pctIncrease = Value(d->PctIncreaseEd);
  const QString minExtents = Value(d->MinExtentsEd);
  const QString maxExtents = Value(d->MaxExtentsEd);
  const bool unlimited = d->MaxExtentsChk->isChecked();
  const QString freeLists = Value(d->FreeListEd);
  const QString freeListGroups = Value(d->FreeListGroupsEd);
  const int pool = d->BufferPoolCmb->currentIndex();

  const bool storage = Positive(initial) || Positive(next) || !pctIncrease.isEmpty() ||
                       Positive(minExtents) || Positive(maxExtents) || unlimited ||
                       Positive(freeLists) || Positive(freeListGroups) || pool > 0;
  if (!storage) return text;

  const QString item = QString(CR) + QStringLiteral("  ");
  text = Trim(text) + CR + QStringLiteral("STORAGE (");
  if (Positive(initial))
    text += item + QStringLiteral("INITIAL ") + initial + UnitSuffix(d->InitialExtentCmb);
  if (Positive(next)) text += item + QStringLiteral("NEXT ") + next + UnitSuffix(d->NextExtentCmb);
  if (Positive(minExtents)) text += item + QStringLiteral("MINEXTENTS ") + minExtents;
  if (unlimited)
    text += item + QStringLiteral("MAXEXTENTS UNLIMITED");
  else if (Positive(maxExtents))
    text += item + QStringLiteral("MAXEXTENTS ") + maxExtents;
  if (!pctIncrease.isEmpty()) text += item + QStringLiteral("PCTINCREASE ") + pctIncrease;
  if (Positive(freeLists)) text += item + QStringLiteral("FREELISTS ") + freeLists;
  if (Positive(freeListGroups)) text += item + QStringLiteral("FREELIST GROUPS ") + freeListGroups;
  if (pool == 1) text += item + QStringLiteral("BUFFER_POOL KEEP");
  if (pool == 2) text += item + QStringLiteral("BUFFER_POOL RECYCLE");
  return text + CR + QStringLiteral(")");
}

QStringList TTableStorage::OptionLines() const {
  QStringList lines;
  if (d->ParallelChk->isChecked())
    lines << (d->DefaultRadio->isChecked()
                  ? QStringLiteral("PARALLEL (DEGREE DEFAULT)")
                  : QStringLiteral("PARALLEL (DEGREE %1)").arg(Value(d->ValueEd)));
  if (d->IgnoreChk->isChecked())
    lines << (d->LoggingRdo->isChecked() ? QStringLiteral("LOGGING") : QStringLiteral("NOLOGGING"));
  if (d->CacheChk->isChecked() && d->CacheChk->isEnabled()) lines << QStringLiteral("CACHE");
  if (d->MonitoringChk->isChecked() && d->MonitoringChk->isEnabled())
    lines << QStringLiteral("MONITORING");
  return lines;
}

// ---------------------------------------------------------------------------------------------
// Alter mode.

QString TTableStorage::TPrivate::TransOrPercentChange(const char* keyword, const QLineEdit* edit,
                                                      const char* column) const {
  const QString value = Value(edit);
  if (value == Loaded(Before, column)) return QString();
  const QString key = QString::fromLatin1(keyword);
  // A cleared edit (or 0) puts the attribute back to 0; the clause has no "unset" form.
  return (Positive(value) ? key + u' ' + value : key + QStringLiteral(" 0")) + CR;
}

QString TTableStorage::TPrivate::NextItem() const {
  const QString value = Value(NextExtentEd);
  // An emptied size cannot be written; a size in another unit than kilobytes is a new size
  // even when its digits are the same.
  if (value.isEmpty()) return QString();
  if (value == BytesToKilobytes(Loaded(Before, "Next")) &&
      NextExtentCmb->currentIndex() == kKilobytes)
    return QString();
  return QStringLiteral("NEXT ") + value + UnitSuffix(NextExtentCmb);
}

QString TTableStorage::TPrivate::MaxExtentsItem() const {
  const QString before = Loaded(Before, "MaxExtents");
  const QString value = Value(MaxExtentsEd);
  const bool unlimited = MaxExtentsChk->isChecked();
  const bool valueChanged = !value.isEmpty() && value != before;
  if (before == kUnlimitedExtents)
    return !unlimited && valueChanged ? QStringLiteral("MAXEXTENTS ") + value : QString();
  if (unlimited) return QStringLiteral("MAXEXTENTS UNLIMITED ");
  return valueChanged ? QStringLiteral("MAXEXTENTS ") + value : QString();
}

QString TTableStorage::TPrivate::PctIncreaseItem() const {
  const QString value = Value(PctIncreaseEd);
  if (value.isEmpty() || value == Loaded(Before, "PctIncrease")) return QString();
  return QStringLiteral("PCTINCREASE ") + value;
}

QString TTableStorage::TPrivate::BufferPoolItem() const {
  static const char* const kPools[] = {"DEFAULT", "KEEP", "RECYCLE"};
  const int pool = qBound(0, BufferPoolCmb->currentIndex(), 2);
  QString before = Loaded(Before, "Buffer Pool").toUpper();
  if (before.isEmpty()) before = QStringLiteral("DEFAULT");
  if (before == QLatin1String(kPools[pool])) return QString();
  return QStringLiteral("BUFFER_POOL ") + QString::fromLatin1(kPools[pool]);
}

QString TTableStorage::PhysicalChanges() const {
  QString text = d->TransOrPercentChange("PCTFREE", d->PercentFreeEd, "PctFree") +
                 d->TransOrPercentChange("PCTUSED", d->PercentUsedEd, "PctUsed") +
                 d->TransOrPercentChange("INITRANS", d->InitTransEd, "IniTrans") +
                 d->TransOrPercentChange("MAXTRANS", d->MaxTransEd, "MaxTrans");
  QString items;
  for (const QString& item :
       {d->NextItem(), d->MaxExtentsItem(), d->PctIncreaseItem(), d->BufferPoolItem()})
    if (!item.isEmpty()) items += QStringLiteral("  ") + item + CR;
  if (!items.isEmpty())
    text += QStringLiteral("STORAGE (  ") + Trim(items) + CR + QStringLiteral(")");
  return text;
}

QString TTableStorage::TPrivate::ParallelChange() const {
  if (!ParallelChk->isChecked()) return QString();
  const QString before = Loaded(Before, "Degree");
  const QString value = Value(ValueEd);
  const QString toValue = QStringLiteral("PARALLEL (DEGREE %1)").arg(value);
  const QString toDefault = QStringLiteral("PARALLEL (DEGREE DEFAULT)");
  const bool byDefault = DefaultRadio->isChecked();
  if (before == u"1") return byDefault ? toDefault : toValue;
  if (before.compare(u"DEFAULT", Qt::CaseInsensitive) == 0) return byDefault ? QString() : toValue;
  if (byDefault) return toDefault;
  return value != before ? toValue : QString();
}

QString TTableStorage::TPrivate::LoggingChange() const {
  const QString before = Loaded(Before, "Logging").toUpper();
  // A table the dictionary reports without a logging attribute changes only on request.
  if (before.isEmpty() && !IgnoreChk->isChecked()) return QString();
  if (before != u"YES") return LoggingRdo->isChecked() ? QStringLiteral("LOGGING") : QString();
  return NoLoggingRdo->isChecked() ? QStringLiteral("NOLOGGING") : QString();
}

// Cache and monitoring change only for a table that has them: one way, by design.
QString TTableStorage::TPrivate::CacheChange() const {
  const QString before = Loaded(Before, "Cache").toUpper();
  if (!CacheChk->isEnabled() || (before != u"CACHE" && before != u"Y")) return QString();
  return CacheChk->isChecked() ? QStringLiteral("CACHE") : QStringLiteral("NOCACHE");
}

QString TTableStorage::TPrivate::MonitoringChange() const {
  if (!MonitoringChk->isEnabled() || Loaded(Before, "Monitoring").toUpper() != u"YES")
    return QString();
  return MonitoringChk->isChecked() ? QStringLiteral("MONITORING") : QStringLiteral("NOMONITORING");
}

QString TTableStorage::OptionChanges() const {
  QString text;
  for (const QString& line :
       {d->ParallelChange(), d->LoggingChange(), d->CacheChange(), d->MonitoringChange()})
    if (!line.isEmpty()) text += line + CR;
  return text;
}

}  // namespace kel
