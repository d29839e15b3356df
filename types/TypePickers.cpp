#include "types/TypePickers.h"

#include <QComboBox>
#include <QRegularExpression>
#include <QSignalBlocker>

#include "plugin/KelForms.h"
#include "plugin/KelQuery.h"
#include "types/TypeText.h"

namespace kel {

void FillTypeCombo(QComboBox* combo) {
  QStringList types;
  if (Application()) Application()->esDataTypeList(types);
  const QSignalBlocker block(combo);
  combo->clear();
  combo->addItems(types);
  combo->addItem(kNestedObject);
  combo->addItem(kRefMarker);
  combo->setCurrentIndex(-1);
}

QStringList ObjectTypesOf(TEsDBInfo* db, const QString& schema) {
  QStringList names;
  if (!db || schema.isEmpty()) return names;
  TKelQuery q(db);
  q.LoadSQL(QStringLiteral("CreateAttributeFrn.Type"));
  q.ParamByName(QStringLiteral("P_OWN")) = schema;
  q.Open();
  for (; !q.Eof(); q.Next()) names << Trim(q.FieldByName(QStringLiteral("TYPE_NAME")));
  return names;
}

void LoadObjectCombo(TEsDBInfo* db, QComboBox* objects, const QString& schema) {
  const QStringList names = ObjectTypesOf(db, schema);
  objects->clear();
  objects->addItems(names);
  objects->setCurrentIndex(-1);
}

void SelectItem(QComboBox* combo, const QString& text) {
  int index = combo->findText(text, Qt::MatchExactly);
  if (index < 0) index = combo->findText(text, Qt::MatchFixedString);
  combo->setCurrentIndex(index);
}

QString LoadedName(const QString& name) {
  static const QRegularExpression plain(QStringLiteral("^[A-Z][A-Z0-9_$#]*$"));
  if (name.isEmpty() || plain.match(name).hasMatch()) return name;
  return AddDQ(name);
}

}  // namespace kel
