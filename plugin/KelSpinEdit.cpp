#include "plugin/KelSpinEdit.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <algorithm>

namespace kel {

namespace {

// Magnitudes are runs of digits without sign and without leading zeros ("0" for zero).
QString StripLeadingZeros(const QString& digits) {
  qsizetype i = 0;
  while (i < digits.size() - 1 && digits.at(i) == u'0') ++i;
  return digits.mid(i);
}

int CompareMagnitudes(const QString& a, const QString& b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

// The digits are produced lowest first and reversed at the end, so long values stay linear.
QString AddMagnitudes(const QString& a, const QString& b) {
  QString sum;
  sum.reserve(std::max(a.size(), b.size()) + 1);
  int carry = 0;
  for (qsizetype i = a.size() - 1, j = b.size() - 1; i >= 0 || j >= 0 || carry; --i, --j) {
    int digit = carry;
    if (i >= 0) digit += a.at(i).digitValue();
    if (j >= 0) digit += b.at(j).digitValue();
    sum.append(QChar(u'0' + digit % 10));
    carry = digit / 10;
  }
  std::reverse(sum.begin(), sum.end());
  return sum;
}

// a - b for a >= b.
QString SubtractMagnitudes(const QString& a, const QString& b) {
  QString difference;
  difference.reserve(a.size());
  int borrow = 0;
  for (qsizetype i = a.size() - 1, j = b.size() - 1; i >= 0; --i, --j) {
    int digit = a.at(i).digitValue() - borrow - (j >= 0 ? b.at(j).digitValue() : 0);
    borrow = digit < 0 ? 1 : 0;
    if (digit < 0) digit += 10;
    difference.append(QChar(u'0' + digit));
  }
  std::reverse(difference.begin(), difference.end());
  return StripLeadingZeros(difference);
}

}  // namespace

bool IsIntegerText(const QString& text) {
  const qsizetype start = text.startsWith(u'-') ? 1 : 0;
  if (text.size() <= start) return false;
  for (qsizetype i = start; i < text.size(); ++i)
    if (text.at(i) < u'0' || text.at(i) > u'9') return false;
  return true;
}

QString AddToInteger(const QString& value, qint64 step) {
  QString text = value.trimmed();
  if (text.isEmpty() || text == u"-") text = QStringLiteral("0");
  if (!IsIntegerText(text)) return value;
  const bool negative = text.startsWith(u'-');
  const QString a = StripLeadingZeros(negative ? text.mid(1) : text);
  const bool stepNegative = step < 0;
  const QString b = QString::number(stepNegative ? 0 - quint64(step) : quint64(step));
  QString magnitude;
  bool resultNegative;
  if (negative == stepNegative) {
    magnitude = AddMagnitudes(a, b);
    resultNegative = negative;
  } else if (CompareMagnitudes(a, b) >= 0) {
    magnitude = SubtractMagnitudes(a, b);
    resultNegative = negative;
  } else {
    magnitude = SubtractMagnitudes(b, a);
    resultNegative = stepNegative;
  }
  if (magnitude == u"0") resultNegative = false;
  return resultNegative ? QStringLiteral("-") + magnitude : magnitude;
}

// ---------------------------------------------------------------------------------------------
TKelSpinEdit::TKelSpinEdit(QWidget* parent) : QAbstractSpinBox(parent) {
  setAccelerated(true);
  lineEdit()->setText(QStringLiteral("0"));
  connect(lineEdit(), &QLineEdit::textChanged, this, &TKelSpinEdit::textChanged);
  // A value longer than the minimum width's eight digits asks the layout for more room.
  connect(lineEdit(), &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text.size() >= 8) updateGeometry();
  });
}

QString TKelSpinEdit::Text() const {
  return lineEdit()->text();
}

void TKelSpinEdit::SetText(const QString& text) {
  lineEdit()->setText(text);
}

void TKelSpinEdit::SetRange(qint64 min, qint64 max) {
  FHasRange = true;
  FMin = min;
  FMax = max;
}

bool TKelSpinEdit::IsAcceptable() const {
  QString text = Text();
  int pos = 0;
  return validate(text, pos) == QValidator::Acceptable;
}

void TKelSpinEdit::stepBy(int steps) {
  if (isReadOnly() || steps == 0) return;
  QString next = AddToInteger(Text(), steps);
  if (FHasRange) {
    bool ok = false;
    const qint64 n = next.toLongLong(&ok);
    if (!ok) return;
    next = QString::number(std::clamp(n, FMin, FMax));
  }
  if (next == Text()) return;
  SetText(next);
  selectAll();
}

QValidator::State TKelSpinEdit::validate(QString& input, int& pos) const {
  (void)pos;
  if (input.isEmpty()) return QValidator::Acceptable;
  if (input == u"-") return FHasRange && FMin >= 0 ? QValidator::Invalid : QValidator::Intermediate;
  if (!IsIntegerText(input)) return QValidator::Invalid;
  if (!FHasRange) return QValidator::Acceptable;
  bool ok = false;
  const qint64 n = input.toLongLong(&ok);
  if (!ok) return QValidator::Invalid;  // beyond any range a cell takes
  if (n >= FMin && n <= FMax) return QValidator::Acceptable;
  // Below the minimum a positive entry may still grow into range ("1" on the way to "12").
  return (n > FMax && n > 0) || (n < FMin && n < 0) ? QValidator::Invalid
                                                    : QValidator::Intermediate;
}

void TKelSpinEdit::fixup(QString& input) const {
  if (input == u"-") input.clear();
}

QAbstractSpinBox::StepEnabled TKelSpinEdit::stepEnabled() const {
  // Asked on every repaint: decided from the text alone, without the arithmetic.
  const QString text = Text().trimmed();
  if (isReadOnly() || !(text.isEmpty() || text == u"-" || IsIntegerText(text))) return StepNone;
  return StepUpEnabled | StepDownEnabled;
}

// The base's hints hold the frame, the arrows and a blank (a spin box without a value range
// knows no text to measure): the text part is added here, the current text or `digits` digits,
// whichever is wider, so a value is shown whole.
static int SpinTextWidth(const QFontMetrics& metrics, const QString& text, int digits) {
  return std::max(metrics.horizontalAdvance(text),
                  metrics.horizontalAdvance(QString(digits, u'9')));
}

QSize TKelSpinEdit::sizeHint() const {
  QSize hint = QAbstractSpinBox::sizeHint();
  hint.rwidth() += SpinTextWidth(QFontMetrics(font()), lineEdit()->text(), 12);
  return hint;
}

QSize TKelSpinEdit::minimumSizeHint() const {
  QSize hint = QAbstractSpinBox::minimumSizeHint();
  hint.rwidth() += SpinTextWidth(QFontMetrics(font()), lineEdit()->text(), 8);
  return hint;
}

}  // namespace kel
