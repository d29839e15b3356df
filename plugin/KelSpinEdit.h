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

  // Limits the value to [min, max] (a grid cell's spin editor); unbounded by default.
  void SetRange(qint64 min, qint64 max);
  bool HasRange() const { return FHasRange; }
  // True when the text is empty (not given) or a whole number within the range.
  bool IsAcceptable() const;

  // Wide enough to show a 12-digit value whole (longer ones scroll).
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  void stepBy(int steps) override;
  QValidator::State validate(QString& input, int& pos) const override;
  // Empty means "not given" and stays empty; a lone "-" is cleared when the editing ends, so
  // passing through an empty field never turns it into a value.
  void fixup(QString& input) const override;

 signals:
  void textChanged(const QString& text);

 protected:
  StepEnabled stepEnabled() const override;

 private:
  bool FHasRange = false;
  qint64 FMin = 0;
  qint64 FMax = 0;
};

// True for an optionally negative run of decimal digits ("0", "-12", "007").
bool IsIntegerText(const QString& text);
// `value` plus `step`, exact for any length, without leading zeros; "" and "-" count as 0.
// Anything that is not an integer is returned unchanged.
QString AddToInteger(const QString& value, qint64 step);

}  // namespace kel
