#include "types/TypePickers.h"

#include <QComboBox>
#include <QLabel>
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

TKelTreeColumn ReadOnlyColumn(const char* name, const char* caption, int width, bool visible) {
  TKelTreeColumn c;
  c.Name = QString::fromLatin1(name);
  c.Caption = QString::fromLatin1(caption);
  c.Editable = false;
  c.Visible = visible;
  c.Width = width;
  return c;
}

void ReadTypeLink(TXLink* link, QComboBox* owners, bool* isAlter, QString* schema, QString* name) {
  if (link->Verb() == QLatin1String("Alter")) {
    *isAlter = LinkFlag(link, QStringLiteral("IsAlter"));
    *schema = Trim(link->ParamByString(QStringLiteral("P_Schema")));
    *name = Trim(link->ParamByString(QStringLiteral("P_ObjName")));
    TKelBaseFrm::SelectComboText(owners, *schema);
  } else if (link->Verb() == QLatin1String("ChangeOwner")) {
    TKelBaseFrm::SelectComboText(owners, link->ParamByString(QStringLiteral("ObjFrmOwner")));
  }
}

void FillTypePicker(TKelBaseFrm* form, const TTypePicker& picker) {
  FillTypeCombo(picker.Type);
  const QSignalBlocker block(picker.Schema);
  form->FillSchemaCombo(picker.Schema);
  picker.Schema->setCurrentIndex(-1);
}

void EnableObjectPart(const TTypePicker& picker, bool on) {
  for (QWidget* w : std::initializer_list<QWidget*>{picker.Schema, picker.SchemaLbl, picker.Object,
                                                    picker.ObjectLbl})
    w->setEnabled(on);
}

void LoadPickerObjects(TKelBaseFrm* form, const TTypePicker& picker) {
  form->Guarded([form, picker] {
    LoadObjectCombo(form->DBInfo(), picker.Object, picker.Schema->currentText());
  });
}

void ShowTypeRef(TKelBaseFrm* form, const TTypePicker& picker, const TTypeRef& ref) {
  SelectItem(picker.Type, ref.Type);
  if (!IsObjectMarker(ref.Type)) return;
  SelectItem(picker.Schema, ref.Schema);
  LoadPickerObjects(form, picker);
  SelectItem(picker.Object, ref.Object);
}

TTypeRef PickedType(const TTypePicker& picker) {
  TTypeRef ref{Trim(picker.Type->currentText()), {}, {}};
  if (IsObjectMarker(ref.Type)) {
    ref.Schema = Trim(picker.Schema->currentText());
    ref.Object = Trim(picker.Object->currentText());
  }
  return ref;
}

bool CheckObjectPart(TKelBaseFrm* form, const TTypePicker& picker, const QString& type) {
  if (!IsObjectMarker(type)) return true;
  if (Trim(picker.Schema->currentText()).isEmpty())
    return form->CheckFail(picker.SchemaLbl, picker.Schema);
  if (Trim(picker.Object->currentText()).isEmpty())
    return form->CheckFail(picker.ObjectLbl, picker.Object);
  return true;
}

bool CheckObjectTypeExists(TEsDBInfo* db, const TTypeRef& ref, QWidget* objectBox) {
  // The list was read when the schema was chosen; the type may have been dropped since.
  if (ObjectTypesOf(db, ref.Schema).contains(ref.Object)) return true;
  if (Application())
    Application()->esMsgDBox(QStringLiteral("CreateTypeFrn.TypeGone"),
                             {ref.Schema + u'.' + ref.Object}, TMsgDlgType::Warning, false);
  FocusControl(objectBox);
  return false;
}

bool RefuseDuplicate(const QString& what, const QString& name, QWidget* nameBox) {
  if (Application())
    Application()->esMsgDBox(QStringLiteral("CreateMethodFrn.existMsg"), {what, name},
                             TMsgDlgType::Warning, false);
  FocusControl(nameBox);
  return false;
}

}  // namespace kel
