// What the object type dialogs share: the type picker (the host's data types and the two object
// markers), the object types of a schema, and the check that a chosen object type still exists.
#pragma once

#include <QString>
#include <QStringList>

#include "plugin/KelHost.h"

class QComboBox;

namespace kel {

// Clears the combo and fills it with the host's data types followed by the two markers; no item
// is selected.
void FillTypeCombo(QComboBox* combo);
// The object types owned by `schema`, in the order the catalog lists them.
QStringList ObjectTypesOf(TEsDBInfo* db, const QString& schema);
// Refills `objects` with the object types of `schema`; no item is selected.
void LoadObjectCombo(TEsDBInfo* db, QComboBox* objects, const QString& schema);
// Selects `text` in the combo (exact match first, then any letter case); -1 when absent.
void SelectItem(QComboBox* combo, const QString& text);
// A name read from the dictionary as a statement must write it to keep it: plain upper-case
// identifiers as they are, anything else (lower case, blanks, quotes) in double quotes.
QString LoadedName(const QString& name);

}  // namespace kel
