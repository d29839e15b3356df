// The rows of the object type dialogs (attributes, methods and their parameters, collection
// elements) and the statement text built from them. Kept apart from the forms so the text can be
// built and checked without a window.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace kel {

// Markers that the type pickers offer besides the built-in type names.
inline const QString kNestedObject = QStringLiteral("[Nested Object]");
inline const QString kRefMarker = QStringLiteral("[REF]");

// The built-in type names the dialogs recognise when they load a type from the dictionary. The
// list is kept as the dialogs have always had it: "CHAR" where CLOB would be expected and
// "LONGRAW" without a blank, so CLOB and LONG RAW load as nested objects.
const QStringList& LoadedBuiltinTypes();
// True for a type name of that list.
bool IsLoadedBuiltinType(const QString& name);
// Types written with a length: CHAR, VARCHAR2, NCHAR, NVARCHAR2, RAW, FLOAT.
bool IsLengthType(const QString& type);
// A marker for an object type ("[Nested Object]" or "[REF]").
bool IsObjectMarker(const QString& type);

// A type as a row holds it: a built-in name or one of the markers with the object type's owner
// and name.
struct TTypeRef {
  QString Type = {};
  QString Schema = {};
  QString Object = {};
};

// A type read from the dictionary: a built-in name stays as it is; any other name is an object
// type, "[REF]" when `mod` is REF, "[Nested Object]" otherwise.
TTypeRef ClassifyType(const QString& name, const QString& mod, const QString& owner);

struct TTypeAttribute {
  QString Name = {};
  QString Type = {};
  QString Schema = {};
  QString Object = {};
  QString Length = {};
  QString Precision = {};
  QString Scale = {};
};

struct TTypeParam {
  QString Name = {};
  QString Type = {};
  QString Mode = {};
  QString Schema = {};
  QString Object = {};
};

struct TTypeMethod {
  QString Name = {};
  QString Kind = {};  // PROCEDURE, FUNCTION, MAP MEMBER FUNCTION, ORDER MEMBER FUNCTION
  QString ReturnType = {};
  QString ReturnSchema = {};
  QString ReturnObject = {};
  // Pragma flags: kept with the method, never written into the statement.
  bool Wnds = false;
  bool Wnps = false;
  bool Rnds = false;
  bool Rnps = false;
  QList<TTypeParam> Params = {};
};

// The method kinds in the order the method dialog offers them.
const QStringList& MethodKinds();

// The text of a built-in type with its size. Sized types get two leading blanks before
// "TYPE(length)"; NUMBER gets its precision and scale; an empty size gives the bare name.
QString SizedTypeText(const QString& type, const QString& length, const QString& precision,
                      const QString& scale);

// One attribute line of the CREATE TYPE statement, with its trailing comma.
QString AttributeLine(const TTypeAttribute& attribute);
// The parameters of a method joined for its parentheses (no final comma; empty when none).
QString ParameterList(const QList<TTypeParam>& params);
// The return type of a function.
QString ReturnTypeText(const TTypeMethod& method);
// The declaration of a method without its return type: kind, name and parameters.
QString MethodHead(const TTypeMethod& method);
// One method line of the CREATE TYPE statement, with its trailing comma.
QString MethodLine(const TTypeMethod& method);

// The CREATE TYPE statement, line by line: head, "(", the attributes and methods (the last one
// without its comma), the closing line and an empty line. `closing` is the closing line.
QStringList TypeSpecLines(const QString& schema, const QString& name,
                          const QList<TTypeAttribute>& attributes,
                          const QList<TTypeMethod>& methods,
                          const QString& closing = QStringLiteral(");"));

// The first line of a body written for a new type: "CREATE OR REPLACE TYPE BODY s.n AS ".
QString NewBodyHead(const QString& schema, const QString& name);
// A loaded body ("TYPE BODY name AS ...") with the type's owner put before an unqualified name,
// so that replacing it lands in the type's schema whoever is connected.
QString QualifiedBody(const QString& body, const QString& schema);

// The two lines of a collection type. `limit` is used for a VARRAY only; the sizes come from
// spin boxes and are always written for the sized types and NUMBER.
QString CollectionHeadLine(const QString& schema, const QString& name, bool varray, int limit);
QString CollectionElementLine(const TTypeRef& element, int length, int precision, int scale);

// The Oracle identity of a name for duplicate tests: an unquoted name in upper case, a quoted
// one as written between its quotes.
QString NameIdentity(const QString& name);

}  // namespace kel
