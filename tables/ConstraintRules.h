// Rules a constraint follows wherever it is written: the table dialog's constraint page and the
// add-constraint dialog both describe keys, checks and foreign keys with the same words.
#pragma once

#include <QString>
#include <QStringList>

namespace kel {

// A column's type as a list shows it: the data type, then the length in brackets when the
// dictionary gives one ("VARCHAR2(30)").
QString ColumnTypeText(const QString& dataType, const QString& length);
// The type without its length or precision: "VARCHAR2(30)" gives "VARCHAR2". A foreign key
// column and the column it references must have the same base type.
QString BaseTypeName(const QString& typeText);
bool SameBaseType(const QString& typeText, const QString& referencedTypeText);
// The dictionary's NULLABLE flag as a list shows it: "N" is "NOT NULL", anything else empty.
QString NullText(const QString& nullable);

// The state words of a constraint, in the order Oracle reads them.
struct TConstraintState {
  bool Deferrable = false;
  bool Deferred = false;
  bool Rely = false;
  bool Disable = false;
  bool Novalidate = false;
};
// "DEFERRABLE", "INITIALLY DEFERRED", "RELY", "DISABLE", then "NOVALIDATE" for the flags set.
// With `validateAfterDisable`, a disabled constraint that is not NOVALIDATE also gets
// "VALIDATE" (the server would otherwise take DISABLE as DISABLE NOVALIDATE).
QStringList ConstraintStateWords(const TConstraintState& state, bool validateAfterDisable);

// The delete rule of a foreign key as written after REFERENCES: "CASCADE" and "SET NULL" give
// "ON DELETE CASCADE" / "ON DELETE SET NULL"; the text itself when it already is the clause;
// empty for none ("NO ACTION" is the default and is not written).
QString DeleteRuleClause(const QString& rule);

// The index of a primary or unique key: its physical attributes as typed (empty = not given).
struct TKeyIndexAttributes {
  QString PctFree;
  QString Initial, InitialUnit;  // unit as the combo shows it: "Bytes", "KB" or "MB"
  QString Next, NextUnit;
  QString MinExtents;
  QString MaxExtents;
  bool MaxExtentsUnlimited = false;
  QString PctIncrease;
  QString Tablespace;
};
// "Bytes" gives no suffix, "KB" gives "K", "MB" gives "M".
QString ExtentUnitSuffix(const QString& unit);
// The USING INDEX lines of ALTER TABLE ... ADD CONSTRAINT, each its own statement line; none
// when no attribute is given.
QStringList UsingIndexLines(const TKeyIndexAttributes& a);

}  // namespace kel
