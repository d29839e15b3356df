#include "types/TypeText.h"

#include <QRegularExpression>

#include "plugin/KelText.h"

namespace kel {

const QStringList& LoadedBuiltinTypes() {
  static const QStringList list = {
      QStringLiteral("BFILE"),   QStringLiteral("BLOB"),     QStringLiteral("CHAR"),
      QStringLiteral("DATE"),    QStringLiteral("FLOAT"),    QStringLiteral("LONG"),
      QStringLiteral("LONGRAW"), QStringLiteral("MLSLABEL"), QStringLiteral("NCHAR"),
      QStringLiteral("NCLOB"),   QStringLiteral("NUMBER"),   QStringLiteral("NVARCHAR2"),
      QStringLiteral("RAW"),     QStringLiteral("ROWID"),    QStringLiteral("UROWID"),
      QStringLiteral("VARCHAR2")};
  return list;
}

bool IsLoadedBuiltinType(const QString& name) {
  return LoadedBuiltinTypes().contains(name);
}

bool IsLengthType(const QString& type) {
  static const QStringList sized = {QStringLiteral("CHAR"),  QStringLiteral("VARCHAR2"),
                                    QStringLiteral("NCHAR"), QStringLiteral("NVARCHAR2"),
                                    QStringLiteral("RAW"),   QStringLiteral("FLOAT")};
  return sized.contains(type);
}

bool IsObjectMarker(const QString& type) {
  return type == kNestedObject || type == kRefMarker;
}

TTypeRef ClassifyType(const QString& name, const QString& mod, const QString& owner) {
  const QString type = Trim(name);
  if (IsLoadedBuiltinType(type)) return {type, {}, {}};
  const QString marker = Trim(mod) == u"REF" ? kRefMarker : kNestedObject;
  return {marker, Trim(owner), type};
}

const QStringList& MethodKinds() {
  static const QStringList kinds = {QStringLiteral("PROCEDURE"), QStringLiteral("FUNCTION"),
                                    QStringLiteral("MAP MEMBER FUNCTION"),
                                    QStringLiteral("ORDER MEMBER FUNCTION")};
  return kinds;
}

QString SizedTypeText(const QString& type, const QString& length, const QString& precision,
                      const QString& scale) {
  if (IsLengthType(type)) {
    if (length.isEmpty()) return type;
    return QStringLiteral("  %1(%2)").arg(type, length);
  }
  if (type == u"NUMBER") {
    if (precision.isEmpty()) return type;
    if (!scale.isEmpty()) return QStringLiteral("%1(%2,%3)").arg(type, precision, scale);
    return QStringLiteral("%1(%2)").arg(type, precision);
  }
  return type;
}

namespace {
// An object type as a statement names it, optionally as a REF.
QString ObjectTypeText(const QString& marker, const QString& schema, const QString& object) {
  const QString qualified = schema + u'.' + object;
  return marker == kRefMarker ? QStringLiteral("REF ") + qualified : qualified;
}
}  // namespace

QString AttributeLine(const TTypeAttribute& a) {
  const QString type = IsObjectMarker(a.Type)
                           ? ObjectTypeText(a.Type, a.Schema, a.Object)
                           : SizedTypeText(a.Type, a.Length, a.Precision, a.Scale);
  return QStringLiteral("  %1 %2,").arg(a.Name, type);
}

QString ParameterList(const QList<TTypeParam>& params) {
  QString list;
  for (const TTypeParam& p : params) {
    const QString type =
        IsObjectMarker(p.Type) ? ObjectTypeText(p.Type, p.Schema, p.Object) : p.Type;
    list += QStringLiteral("%1 %2 %3,").arg(p.Name, p.Mode, type);
  }
  list.chop(1);
  return list;
}

QString ReturnTypeText(const TTypeMethod& m) {
  if (IsObjectMarker(m.ReturnType))
    return ObjectTypeText(m.ReturnType, m.ReturnSchema, m.ReturnObject);
  return m.ReturnType;
}

QString MethodHead(const TTypeMethod& m) {
  // A method of an object type is a member method: PROCEDURE and FUNCTION need the word,
  // MAP and ORDER functions carry it already.
  const QString kind =
      m.Kind == u"PROCEDURE" || m.Kind == u"FUNCTION" ? QStringLiteral("MEMBER ") + m.Kind : m.Kind;
  const QString params = ParameterList(m.Params);
  // A method without parameters is declared without parentheses.
  return QStringLiteral("%1 %2").arg(kind, m.Name) +
         (params.isEmpty() ? QString() : u'(' + params + u')');
}

QString MethodLine(const TTypeMethod& m) {
  if (m.Kind == u"PROCEDURE") return QStringLiteral("  %1,").arg(MethodHead(m));
  return QStringLiteral("  %1 RETURN %2,").arg(MethodHead(m), ReturnTypeText(m));
}

QStringList TypeSpecLines(const QString& schema, const QString& name,
                          const QList<TTypeAttribute>& attributes,
                          const QList<TTypeMethod>& methods, const QString& closing) {
  QStringList lines;
  lines << QStringLiteral("CREATE OR REPLACE TYPE %1.%2 AS OBJECT").arg(schema, name);
  lines << QStringLiteral("(");
  for (const TTypeAttribute& a : attributes) lines << AttributeLine(a);
  for (const TTypeMethod& m : methods) lines << MethodLine(m);
  if (!attributes.isEmpty() || !methods.isEmpty()) lines.last().chop(1);
  lines << closing;
  lines << QString();
  return lines;
}

QString NewBodyHead(const QString& schema, const QString& name) {
  return QStringLiteral("CREATE OR REPLACE TYPE BODY %1.%2 AS ").arg(schema, name);
}

QString QualifiedBody(const QString& body, const QString& schema) {
  // TYPE BODY, then the name: quoted or not, and possibly already with its owner.
  static const QRegularExpression head(
      QStringLiteral(R"(^(\s*TYPE\s+BODY\s+)("[^"]+"|[A-Za-z][A-Za-z0-9_$#]*)(\s*\.)?)"),
      QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch m = head.match(body);
  if (!m.hasMatch() || !m.captured(3).isEmpty() || schema.isEmpty()) return body;
  return body.left(m.capturedEnd(1)) + schema + u'.' + body.mid(m.capturedEnd(1));
}

QString CollectionHeadLine(const QString& schema, const QString& name, bool varray, int limit) {
  if (varray)
    return QStringLiteral("CREATE OR REPLACE TYPE %1.%2 AS VARRAY(%3) ")
        .arg(schema, name, QString::number(limit));
  return QStringLiteral("CREATE OR REPLACE TYPE %1.%2 AS TABLE ").arg(schema, name);
}

QString CollectionElementLine(const TTypeRef& element, int length, int precision, int scale) {
  if (IsObjectMarker(element.Type))
    return QStringLiteral("OF ") + ObjectTypeText(element.Type, element.Schema, element.Object);
  return QStringLiteral("OF ") + SizedTypeText(element.Type, QString::number(length),
                                               QString::number(precision), QString::number(scale));
}

QString NameIdentity(const QString& name) {
  const QString n = Trim(name);
  if (n.size() >= 2 && n.startsWith(u'"') && n.endsWith(u'"')) return n.mid(1, n.size() - 2);
  return n.toUpper();
}

}  // namespace kel
