// What the workbench knows of the module's object dialogs: which words open what, how a browsed
// object is handed to its dialog, and the kinds of object the browser lists.
//
// The workbench never links the module's internals: this table is the host's own view of the
// words the module answers to, and every request goes through the module's `Open`.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <span>

namespace kel {
class TXLink;
}

namespace wb {

// A link parameter and where its value comes from:
//   "@schema"  the schema of the browsed object
//   "=text"    the literal text
//   COLUMN     the browsed object's value in that column of its browser query
struct TParamSource {
  const char* Name;
  const char* Source;
};

// An entry of the "New" menu.
struct TNewEntry {
  const char* Word;     // object-type word passed to Open
  const char* Caption;  // menu caption
  // Verb and parameters of a plain "New" request. A schema object passes "ChangeOwner" with
  // "ObjFrmOwner" instead when a schema is selected in the browser.
  const char* Verb;
  std::span<const TParamSource> Params;
  bool SchemaObject;
  bool SeparatorBefore;
  const char* KindKey;  // the browser kind whose icon the entry shows
};

// A kind of object in the browser: a folder below a schema or at the top level.
struct TObjectKind {
  const char* Key;       // "Tables", "Users", ...
  const char* Caption;   // folder caption
  const char* QueryKey;  // catalog key listing the objects; :P_OWNER is the schema when asked
  bool PerSchema;
  // "Alter..." on an object of this kind: word, verb and parameters (empty word: no alter).
  const char* AlterWord;
  const char* AlterVerb;
  std::span<const TParamSource> AlterParams;
};

// A further request offered on objects of one kind (a new index on a browsed table, ...).
struct TObjectAction {
  const char* KindKey;
  const char* Caption;
  const char* Word;
  const char* Verb;
  std::span<const TParamSource> Params;
};

std::span<const TNewEntry> NewEntries();
std::span<const TObjectKind> ObjectKinds();
std::span<const TObjectAction> ObjectActions();
const TObjectKind* FindKind(const QString& key);
// The part of the browser a top-level kind is listed in ("Storage"); empty: the top level.
QString KindGroup(const TObjectKind& kind);

// The value of `source` for an object of `schema` whose browser row is `row`.
QString ParamValue(const char* source, const QString& schema, const QVariantMap& row);
// Fills `link` with `verb` and the parameters, resolved against the browsed object.
void FillLink(kel::TXLink& link, const char* verb, std::span<const TParamSource> params,
              const QString& schema, const QVariantMap& row);

}  // namespace wb
