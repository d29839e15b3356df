#include "tables/ConstraintRules.h"

#include "plugin/KelText.h"

namespace kel {

QString ColumnTypeText(const QString& dataType, const QString& length) {
  const QString size = Trim(length);
  return size.isEmpty() ? dataType : dataType + u'(' + size + u')';
}

QString BaseTypeName(const QString& typeText) {
  const qsizetype bracket = typeText.indexOf(u'(');
  return Trim(bracket < 0 ? typeText : typeText.left(bracket));
}

bool SameBaseType(const QString& typeText, const QString& referencedTypeText) {
  return BaseTypeName(typeText) == BaseTypeName(referencedTypeText);
}

QString NullText(const QString& nullable) {
  return Trim(nullable) == u"N" ? QStringLiteral("NOT NULL") : QString();
}

QStringList ConstraintStateWords(const TConstraintState& state, bool validateAfterDisable) {
  QStringList words;
  if (state.Deferrable) words << QStringLiteral("DEFERRABLE");
  if (state.Deferred) words << QStringLiteral("INITIALLY DEFERRED");
  if (state.Rely) words << QStringLiteral("RELY");
  if (state.Disable) {
    words << QStringLiteral("DISABLE");
    if (validateAfterDisable && !state.Novalidate) words << QStringLiteral("VALIDATE");
  }
  if (state.Novalidate) words << QStringLiteral("NOVALIDATE");
  return words;
}

QString DeleteRuleClause(const QString& rule) {
  const QString text = Trim(rule).toUpper();
  if (text.isEmpty() || text == u"NO ACTION") return {};
  if (text.startsWith(u"ON DELETE ")) return text;
  return QStringLiteral("ON DELETE ") + text;
}

QString ExtentUnitSuffix(const QString& unit) {
  if (unit == u"KB") return QStringLiteral("K");
  if (unit == u"MB") return QStringLiteral("M");
  return {};
}

QStringList UsingIndexLines(const TKeyIndexAttributes& a) {
  const QString initial = Trim(a.Initial), next = Trim(a.Next), minimum = Trim(a.MinExtents),
                maximum = Trim(a.MaxExtents), increase = Trim(a.PctIncrease),
                pctfree = Trim(a.PctFree), tablespace = Trim(a.Tablespace);
  const bool storage = !initial.isEmpty() || !next.isEmpty() || !minimum.isEmpty() ||
                       !maximum.isEmpty() || a.MaxExtentsUnlimited || !increase.isEmpty();
  if (!storage && pctfree.isEmpty() && tablespace.isEmpty()) return {};
  QStringList lines;
  lines << (pctfree.isEmpty() ? QStringLiteral("  USING INDEX ")
                              : QStringLiteral("  USING INDEX PCTFREE ") + pctfree);
  if (storage) {
    lines << QStringLiteral("  STORAGE ( ");
    if (!initial.isEmpty())
      lines << QStringLiteral("    INITIAL ") + initial + ExtentUnitSuffix(a.InitialUnit);
    if (!next.isEmpty()) lines << QStringLiteral("    NEXT ") + next + ExtentUnitSuffix(a.NextUnit);
    if (!minimum.isEmpty()) lines << QStringLiteral("    MINEXTENTS ") + minimum;
    if (a.MaxExtentsUnlimited)
      lines << QStringLiteral("    MAXEXTENTS UNLIMITED ");
    else if (!maximum.isEmpty())
      lines << QStringLiteral("    MAXEXTENTS ") + maximum;
    if (!increase.isEmpty()) lines << QStringLiteral("    PCTINCREASE ") + increase;
    lines << QStringLiteral("  )");
  }
  if (!tablespace.isEmpty()) lines << QStringLiteral("  TABLESPACE ") + tablespace;
  return lines;
}

}  // namespace kel
