#include "storage/CreateRollbackSegmentFrn.h"

#include <QKeyEvent>

#include "ui_CreateRollbackSegmentFrn.h"

namespace kel {

void SplitUnitSize(const QString& bytes, QString& number, QString& unit) {
  number.clear();
  unit.clear();
  const QString text = Trim(bytes);
  bool ok = false;
  const qint64 value = text.toLongLong(&ok);
  if (!ok) return;
  const int unitType = value >= 1048576 && value % 1048576 == 0 ? 2
                       : value >= 1024 && value % 1024 == 0     ? 1
                                                                : 0;
  const QString formatted = UnitFormat(double(value), 0, unitType);
  if (unitType == 0) {
    number = formatted;
    return;
  }
  number = formatted.chopped(1);
  unit = formatted.right(1) + u'B';
}

TCreateRollbackSegmentFrm::TCreateRollbackSegmentFrm(QWidget* owner)
    : TKelDllDBDlgFrm(owner), ui(new Ui::TCreateRollbackSegmentFrm) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("CreateRollbackSegmentFrm"));
  SetIniSave(false);
  for (QLineEdit* edit : {ui->InitialExtentEd, ui->NextExtentEd, ui->MinExtentsEd, ui->MaxExtentsEd,
                          ui->OptimalSizeEd})
    OnKeyPress(edit, [this](QKeyEvent* e) { return EditKeyPress(e); });
  connect(ui->MaxExtentsChk, &QAbstractButton::toggled, this,
          &TCreateRollbackSegmentFrm::MaxExtentsChkClick);
  connect(ui->ViewSqlBtn, &QAbstractButton::clicked, this,
          &TCreateRollbackSegmentFrm::ViewSqlBtnClick);
  connect(ui->OkBtn, &QAbstractButton::clicked, this, &TCreateRollbackSegmentFrm::OkBtnClick);
  connect(ui->CancelBtn, &QAbstractButton::clicked, this,
          &TCreateRollbackSegmentFrm::CancelBtnClick);
}

TCreateRollbackSegmentFrm::~TCreateRollbackSegmentFrm() {
  delete ui;
}

void TCreateRollbackSegmentFrm::InitLoad() {
  TKelDllDBDlgFrm::InitLoad();
  AlterQry.SetSession(DBInfo());
  QStringList tablespaces;
  if (Application()) Application()->esOraTblspaceList(DBInfo(), tablespaces);
  ui->TableSpaceCmb->clear();
  ui->TableSpaceCmb->addItems(tablespaces);
  UpperCaseItems(ui->TableSpaceCmb);
  ui->TableSpaceCmb->setCurrentIndex(-1);
  // Public segments need the same permission as public links and synonyms.
  ui->PublicChk->setEnabled(DBInfo() && DBInfo()->PublicLinks());
}

void TCreateRollbackSegmentFrm::ReadParams(TXLink* link) {
  if (link->Verb() != QLatin1String("Alter")) return;
  FIsAlter = LinkFlag(link, QStringLiteral("IsAlter"));
  FSegment = link->ParamByString(QStringLiteral("RollbackSegment"));
}

void TCreateRollbackSegmentFrm::KelDllDBDlgFrmShow() {
  if (FIsAlter) LoadSegment();
  ui->RollbackNameEd->setFocus(Qt::OtherFocusReason);
}

void TCreateRollbackSegmentFrm::LoadSegment() {
  AlterQry.Close();
  AlterQry.LoadSQL(QStringLiteral("RollbackSegmentNrn.Info"));
  AlterQry.ParamByName(QStringLiteral("P_NAME")) = FSegment;
  AlterQry.Open();
  if (AlterQry.Eof()) {
    const QString text =
        Application() ? Application()->esGetMSG(QStringLiteral("Storage.ObjectGone")) : QString();
    throw EKelError(FormatMsg(text, {QStringLiteral("rollback segment"), FSegment}));
  }
  auto field = [this](const char* column) {
    return AlterQry.FieldByName(QString::fromLatin1(column));
  };
  if (Application())
    setWindowTitle(Application()->esGetMSG(QStringLiteral("AlterRollbackSegment")));
  ui->RollbackNameEd->setText(FSegment);
  SelectComboText(ui->TableSpaceCmb, Trim(field("Tablespace")));
  ui->PublicChk->setChecked(Trim(field("Owner")).toUpper() == u"PUBLIC");
  FOnline = Trim(field("Status")).toUpper() == u"ONLINE";
  ui->OnlineRdo->setChecked(FOnline);
  ui->OfflineRdo->setChecked(!FOnline);
  QString number, unit;
  SplitUnitSize(field("Initial Extent"), number, unit);
  ui->InitialExtentEd->setText(number);
  if (!unit.isEmpty()) ui->InitialExtentCmb->setCurrentText(unit);
  SplitUnitSize(field("Next Extent"), FNextNum, FNextUnit);
  ui->NextExtentEd->setText(FNextNum);
  if (!FNextUnit.isEmpty()) ui->NextExtentCmb->setCurrentText(FNextUnit);
  ui->MinExtentsEd->setText(Trim(field("Min Extents")));
  FMaxExtents = Trim(field("Max Extents"));
  ui->MaxExtentsEd->setText(FMaxExtents);
  const QString optimal = Trim(field("Optimal Size"));
  if (optimal.toUpper() != u"NULL") SplitUnitSize(optimal, FOptimalNum, FOptimalUnit);
  ui->OptimalSizeEd->setText(FOptimalNum);
  if (!FOptimalUnit.isEmpty()) ui->OptimalSizeCmb->setCurrentText(FOptimalUnit);
  AlterQry.Close();
  // What the alter statements never change.
  for (QWidget* w :
       {static_cast<QWidget*>(ui->RollbackNameEd), static_cast<QWidget*>(ui->TableSpaceCmb),
        static_cast<QWidget*>(ui->PublicChk), static_cast<QWidget*>(ui->InitialExtentEd),
        static_cast<QWidget*>(ui->InitialExtentCmb), static_cast<QWidget*>(ui->MinExtentsEd)})
    w->setEnabled(false);
}

bool TCreateRollbackSegmentFrm::EditKeyPress(QKeyEvent* event) {
  return IsNonDigitKey(event);
}

void TCreateRollbackSegmentFrm::MaxExtentsChkClick() {
  // The edit is usable while "Unlimited" is checked: the reverse of the table dialog's rule,
  // kept as the host's users know it.
  ui->MaxExtentsEd->setEnabled(ui->MaxExtentsChk->isChecked());
}

bool TCreateRollbackSegmentFrm::Validate() {
  const QString name = Trim(ui->RollbackNameEd->text());
  if (name.isEmpty()) return CheckFail(ui->RollbackNameLbl, ui->RollbackNameEd);
  if (!CheckName(ui->RollbackNameLbl, ui->RollbackNameEd, name)) return false;
  if (ui->TableSpaceCmb->currentIndex() < 0) return CheckFail(ui->TableSpaceLbl, ui->TableSpaceCmb);
  // An existing segment keeps a next extent: clearing it cannot be written.
  if (FIsAlter && Trim(ui->NextExtentEd->text()).isEmpty() && !FNextNum.isEmpty())
    return CheckFail(ui->NextExtentLbl, ui->NextExtentEd);
  return true;
}

// ---------------------------------------------------------------------------------------------
// Create statement.

void TCreateRollbackSegmentFrm::AddCreateHead() {
  const QString head = ui->PublicChk->isChecked()
                           ? QStringLiteral("CREATE PUBLIC ROLLBACK SEGMENT %1")
                           : QStringLiteral("CREATE ROLLBACK SEGMENT %1");
  SqlMemo().Add(head.arg(Trim(ui->RollbackNameEd->text())));
}

void TCreateRollbackSegmentFrm::AddTablespace() {
  SqlMemo().Add(QStringLiteral("TABLESPACE %1").arg(Trim(ui->TableSpaceCmb->currentText())));
}

void TCreateRollbackSegmentFrm::AddCreateStorage() {
  const QString initial = Trim(ui->InitialExtentEd->text());
  const QString next = Trim(ui->NextExtentEd->text());
  const QString minimum = Trim(ui->MinExtentsEd->text());
  const QString maximum = Trim(ui->MaxExtentsEd->text());
  const QString optimal = Trim(ui->OptimalSizeEd->text());
  const bool unlimited = ui->MaxExtentsChk->isChecked();
  if (initial.isEmpty() && next.isEmpty() && minimum.isEmpty() && maximum.isEmpty() &&
      optimal.isEmpty() && !unlimited)
    return;
  auto unitOf = [](const QComboBox* combo) {
    return combo->currentIndex() == 1 ? QStringLiteral("M") : QStringLiteral("K");
  };
  SqlMemo().Add(QStringLiteral("STORAGE("));
  if (!initial.isEmpty())
    SqlMemo().Add(QStringLiteral("  INITIAL ") + initial + unitOf(ui->InitialExtentCmb));
  if (!next.isEmpty()) SqlMemo().Add(QStringLiteral("  NEXT ") + next + unitOf(ui->NextExtentCmb));
  if (!optimal.isEmpty())
    SqlMemo().Add(QStringLiteral("  OPTIMAL ") + optimal +
                  ui->OptimalSizeCmb->currentText().left(1));
  if (!minimum.isEmpty()) SqlMemo().Add(QStringLiteral("  MINEXTENTS ") + minimum);
  if (unlimited)
    SqlMemo().Add(QStringLiteral("  MAXEXTENTS UNLIMITED"));
  else if (!maximum.isEmpty())
    SqlMemo().Add(QStringLiteral("  MAXEXTENTS ") + maximum);
  SqlMemo().Add(QStringLiteral(");"));
}

void TCreateRollbackSegmentFrm::AddOnline() {
  if (!ui->OnlineRdo->isChecked()) return;
  // Without a storage block the CREATE statement has no end of its own; the ONLINE statement
  // that follows needs one, or both would run as one statement.
  QStringList lines = SqlMemo().Lines();
  if (!lines.last().endsWith(u';')) {
    lines.last() += u';';
    SqlMemo().Clear();
    for (const QString& line : lines) SqlMemo().Add(line);
  }
  SqlMemo().Add(QString());
  SqlMemo().Add(
      QStringLiteral("ALTER ROLLBACK SEGMENT %1 ONLINE").arg(Trim(ui->RollbackNameEd->text())));
}

// ---------------------------------------------------------------------------------------------
// Alter statements.

bool TCreateRollbackSegmentFrm::StorageUnchanged() const {
  // The optimal unit is compared with the next extent's unit box, as the host always did.
  const QString nextUnit = ui->NextExtentCmb->currentText();
  return Trim(ui->NextExtentEd->text()) == FNextNum && nextUnit == FNextUnit &&
         ui->MaxExtentsEd->text() == FMaxExtents && !ui->MaxExtentsChk->isChecked() &&
         Trim(ui->OptimalSizeEd->text()) == FOptimalNum &&
         (nextUnit == FOptimalUnit || FOptimalUnit.isEmpty());
}

void TCreateRollbackSegmentFrm::AddAlterStorage() {
  if (StorageUnchanged()) return;
  QStringList items;
  const QString nextUnit = ui->NextExtentCmb->currentText();
  const QString next = Trim(ui->NextExtentEd->text());
  if (next != FNextNum || nextUnit != FNextUnit)
    items << QStringLiteral("  NEXT ") + next + nextUnit.left(1);
  if (ui->MaxExtentsEd->text() != FMaxExtents || ui->MaxExtentsChk->isChecked()) {
    if (ui->MaxExtentsChk->isChecked())
      items << QStringLiteral("  MAXEXTENTS UNLIMITED");
    else if (const QString maximum = Trim(ui->MaxExtentsEd->text()); !maximum.isEmpty())
      items << QStringLiteral("  MAXEXTENTS ") + maximum;
  }
  const QString optimal = Trim(ui->OptimalSizeEd->text());
  if (optimal != FOptimalNum || (!FOptimalUnit.isEmpty() && nextUnit != FOptimalUnit)) {
    // A cleared optimal size removes it.
    items << (optimal.isEmpty() ? QStringLiteral("  OPTIMAL NULL")
                                : QStringLiteral("  OPTIMAL ") + optimal +
                                      ui->OptimalSizeCmb->currentText().left(1));
  }
  // A block with nothing in it is not valid; nothing to change then.
  if (items.isEmpty()) return;
  SqlMemo().Add(QStringLiteral("ALTER ROLLBACK SEGMENT %1").arg(FSegment));
  SqlMemo().Add(QStringLiteral("STORAGE ("));
  for (const QString& item : items) SqlMemo().Add(item);
  SqlMemo().Add(QStringLiteral(");"));
}

void TCreateRollbackSegmentFrm::AddAlterStatus() {
  const bool online = ui->OnlineRdo->isChecked();
  if (online == FOnline) return;
  SqlMemo().Add(QStringLiteral("ALTER ROLLBACK SEGMENT %1 %2;")
                    .arg(Trim(ui->RollbackNameEd->text()),
                         online ? QStringLiteral("ONLINE") : QStringLiteral("OFFLINE")));
}

void TCreateRollbackSegmentFrm::BuildSql() {
  SqlMemo().Clear();
  if (FIsAlter) {
    AddAlterStorage();
    AddAlterStatus();
  } else {
    AddCreateHead();
    AddTablespace();
    AddCreateStorage();
    AddOnline();
  }
  RefreshOwnedPreview();
}

}  // namespace kel
