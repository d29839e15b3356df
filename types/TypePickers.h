// What the object type dialogs share: the type picker (the host's data types and the two object
// markers), the object types of a schema, and the check that a chosen object type still exists.
#pragma once

#include <QString>
#include <QStringList>

#include "plugin/KelHost.h"
#include "plugin/KelTreeList.h"
#include "types/TypeText.h"

class QComboBox;
class QLabel;
class QWidget;

namespace kel {

class TKelBaseFrm;

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

// A column of a list that is only shown, never edited in place.
TKelTreeColumn ReadOnlyColumn(const char* name, const char* caption, int width,
                              bool visible = true);

// The link parameters of a dialog that creates or alters a type: Alter gives the flag, owner
// and name of the existing type; ChangeOwner preselects the owner in `owners`.
void ReadTypeLink(TXLink* link, QComboBox* owners, bool* isAlter, QString* schema, QString* name);

// A type picker of a row: the type combo and, for the two object markers, the schema and object
// type combos with their captions.
struct TTypePicker {
  QComboBox* Type = nullptr;
  QComboBox* Schema = nullptr;
  QLabel* SchemaLbl = nullptr;
  QComboBox* Object = nullptr;
  QLabel* ObjectLbl = nullptr;
};

// Fills the type and schema combos; neither has a selection and the schema combo stays silent.
void FillTypePicker(TKelBaseFrm* form, const TTypePicker& picker);
// Enables the schema and object parts (with their captions) or disables them.
void EnableObjectPart(const TTypePicker& picker, bool on);
// Reloads the object types of the chosen schema; errors go through the form's host.
void LoadPickerObjects(TKelBaseFrm* form, const TTypePicker& picker);
// Shows `ref`: the type, and for an object marker the schema first, so that its object list is
// loaded before the object is chosen.
void ShowTypeRef(TKelBaseFrm* form, const TTypePicker& picker, const TTypeRef& ref);
// The picked type, trimmed; schema and object only for an object marker.
TTypeRef PickedType(const TTypePicker& picker);
// For an object marker `type`, fails on the first of schema and object left empty.
bool CheckObjectPart(TKelBaseFrm* form, const TTypePicker& picker, const QString& type);
// True when `ref`'s object type still exists; otherwise warns, focuses `objectBox`, false.
bool CheckObjectTypeExists(TEsDBInfo* db, const TTypeRef& ref, QWidget* objectBox);

// True when `name` is the name of a row of `list` other than row `edited` (-1 when adding),
// compared as Oracle compares names. Keeping the edited row's own name is no clash.
template <class Row>
bool NameTaken(const QList<Row>& list, int edited, const QString& name) {
  if (edited >= 0 && NameIdentity(list[edited].Name) == NameIdentity(name)) return false;
  for (int i = 0; i < list.size(); ++i)
    if (i != edited && NameIdentity(list[i].Name) == NameIdentity(name)) return true;
  return false;
}
// Warns that `name` is already a `what` of the list, focuses `nameBox`; always false.
bool RefuseDuplicate(const QString& what, const QString& name, QWidget* nameBox);

}  // namespace kel
