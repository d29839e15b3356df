// The "Storage" and "Options" pages of the table dialog: physical attributes and table options,
// with their input rules, and the text they add to CREATE TABLE and ALTER TABLE.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <memory>

class QKeyEvent;
class QLineEdit;

namespace kel {

// One row of table attributes as loaded in alter mode, by column name ("PctFree", "Next",
// "MaxExtents", "Buffer Pool", "Degree", "Logging", "Cache", "Monitoring", ...).
using TTableAttributes = QMap<QString, QString>;

class TTableStorage : public QObject {
  Q_OBJECT
 public:
  // Builds the controls inside `storageSheet` (StorageSheet) and `optionSheet` (OptionSheet).
  TTableStorage(QWidget* storageSheet, QWidget* optionSheet);
  ~TTableStorage() override;

  // Alter mode: fills the controls from the loaded row and keeps it as the "before" image.
  void Load(const TTableAttributes& loaded);

  // Create mode: the physical-attributes fragment (may be empty) and the option lines (each its
  // own statement line).
  QString PhysicalFragment() const;
  QStringList OptionLines() const;
  // Alter mode: the physical-attribute changes, and the option changes each followed by CR.
  QString PhysicalChanges() const;
  QString OptionChanges() const;

  // A size in bytes as the whole kilobytes the Next and Initial edits show in alter mode
  // (rounded up, as the server rounds extents up to whole blocks); empty stays empty.
  static QString BytesToKilobytes(const QString& bytes);

 public slots:
  // Input rules of the edits: digits only; range checks when an edit is left.
  bool InitialExtentEdKeyPress(QKeyEvent* event);
  void InitialExtentEdExit(QLineEdit* edit);
  void PctIncreaseEdExit(QLineEdit* edit);
  void InitTransEdExit(QLineEdit* edit);
  // The exit checks of every edit, in page order, as OK and View SQL run them before building:
  // false (message shown, the edit focused) at the first value an exit would refuse.
  bool ExitChecksPass();
  // Enabling rules of the check boxes and radio buttons.
  void MaxExtentsChkClick();
  void ParallelChkClick();
  void DefaultRadioClick();
  void ValueRadioClick();
  void IgnoreChkClick();

 private:
  struct TPrivate;
  std::unique_ptr<TPrivate> d;
};

}  // namespace kel
