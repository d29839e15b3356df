// A spin edit for integers of any size. Oracle numbers reach 28 digits and more, beyond what an
// int or a double holds exactly, so the value is kept as the text the user sees: an optionally
// negative decimal integer. The arrows and the Up / Down keys add or subtract one, digit by digit.
#pragma once

#include <QAbstractSpinBox>
#include <QString>

namespace kel {

class TKelSpinEdit : public QAbstractSpinBox {
  Q_OBJECT
  // Replaces the read-only `text` of the base: the text is the value.
  Q_PROPERTY(QString text READ Text WRITE SetText NOTIFY textChanged USER true)

 public:
  explicit TKelSpinEdit(QWidget* parent = nullptr);

  QString Text() const;
  void SetText(const QString& text);

  void stepBy(int steps) override;
  QValidator::State validate(QString& input, int& pos) const override;
  // An unfinished entry ("" or "-") becomes 0 when the editing ends.
  void fixup(QString& input) const override;

 signals:
  void textChanged(const QString& text);

 protected:
  StepEnabled stepEnabled() const override;
};

// True for an optionally negative run of decimal digits ("0", "-12", "007").
bool IsIntegerText(const QString& text);
// `value` plus `step`, exact for any length, without leading zeros; "" and "-" count as 0.
// Anything that is not an integer is returned unchanged.
QString AddToInteger(const QString& value, qint64 step);

}  // namespace kel
