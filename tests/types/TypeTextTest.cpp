// The statement text of object and collection types, built from rows without a window.
#include <gtest/gtest.h>

#include "types/TypePickers.h"
#include "types/TypeText.h"

using namespace kel;

[[maybe_unused]] static void PrintTo(const QString& s, std::ostream* os) {
  *os << '"' << QString(s).replace("\r", "\\r").replace("\n", "\\n").toStdString() << '"';
}

namespace {
TTypeParam Param(const char* name, const char* type, const char* mode = "IN",
                 const char* schema = "", const char* object = "") {
  return {name, type, mode, schema, object};
}
}  // namespace

TEST(TypeText, SizedTypesKeepTheirTwoLeadingBlanksAndNumberItsPrecision) {
  EXPECT_EQ(SizedTypeText("VARCHAR2", "30", "", ""), "  VARCHAR2(30)");
  EXPECT_EQ(SizedTypeText("RAW", "16", "", ""), "  RAW(16)");
  EXPECT_EQ(SizedTypeText("VARCHAR2", "", "", ""), "VARCHAR2");
  EXPECT_EQ(SizedTypeText("NUMBER", "", "10", "2"), "NUMBER(10,2)");
  EXPECT_EQ(SizedTypeText("NUMBER", "", "10", ""), "NUMBER(10)");
  EXPECT_EQ(SizedTypeText("NUMBER", "", "", "2"), "NUMBER");
  // Sizes of types that take none are ignored.
  EXPECT_EQ(SizedTypeText("DATE", "7", "3", "1"), "DATE");
}

TEST(TypeText, AttributeLinesForBuiltInNestedAndRefTypes) {
  EXPECT_EQ(AttributeLine({"ENAME", "VARCHAR2", "", "", "30", "", ""}), "  ENAME   VARCHAR2(30),");
  EXPECT_EQ(AttributeLine({"SAL", "NUMBER", "", "", "", "10", "2"}), "  SAL NUMBER(10,2),");
  EXPECT_EQ(AttributeLine({"HOME", kNestedObject, "APP", "ADDRESS_T", "", "", ""}),
            "  HOME APP.ADDRESS_T,");
  EXPECT_EQ(AttributeLine({"BOSS", kRefMarker, "APP", "PERSON_T", "", "", ""}),
            "  BOSS REF APP.PERSON_T,");
  // A CLOB loaded as an object type without owner.
  EXPECT_EQ(AttributeLine({"NOTES", kNestedObject, "", "CLOB", "", "", ""}), "  NOTES .CLOB,");
}

TEST(TypeText, MethodsAreMemberMethodsWithParenthesesOnlyForParameters) {
  TTypeMethod map{"SORT_KEY", "MAP MEMBER FUNCTION", "NUMBER"};
  EXPECT_EQ(MethodLine(map), "  MAP MEMBER FUNCTION SORT_KEY RETURN NUMBER,");

  TTypeMethod move{"MOVE", "PROCEDURE"};
  move.Params = {Param("TO_HOME", "[Nested Object]", "IN", "APP", "ADDRESS_T"),
                 Param("BOSS", "[REF]", "IN OUT", "APP", "PERSON_T"), Param("ON_DAY", "DATE")};
  EXPECT_EQ(MethodLine(move),
            "  MEMBER PROCEDURE MOVE(TO_HOME IN APP.ADDRESS_T,BOSS IN OUT REF APP.PERSON_T,"
            "ON_DAY IN DATE),");

  TTypeMethod manager{"MANAGER", "FUNCTION", kRefMarker, "APP", "PERSON_T"};
  manager.Params = {Param("AT", "DATE", "OUT")};
  EXPECT_EQ(MethodLine(manager), "  MEMBER FUNCTION MANAGER(AT OUT DATE) RETURN REF APP.PERSON_T,");
  TTypeMethod home{"HOME_OF", "ORDER MEMBER FUNCTION", kNestedObject, "APP", "ADDRESS_T"};
  EXPECT_EQ(MethodLine(home), "  ORDER MEMBER FUNCTION HOME_OF RETURN APP.ADDRESS_T,");
}

TEST(TypeText, SpecificationStripsOnlyTheLastCommaAndIgnoresPragmas) {
  EXPECT_EQ(TypeSpecLines("APP", "EMPTY_T", {}, {}),
            (QStringList{"CREATE OR REPLACE TYPE APP.EMPTY_T AS OBJECT", "(", ");", ""}));

  TTypeMethod plain{"M", "PROCEDURE"};
  TTypeMethod flagged = plain;
  flagged.Wnds = flagged.Wnps = flagged.Rnds = flagged.Rnps = true;
  const QList<TTypeAttribute> attrs = {{"ENAME", "VARCHAR2", "", "", "30", "", ""}};
  const QStringList lines = TypeSpecLines("APP", "EMP_T", attrs, {plain});
  EXPECT_EQ(lines, (QStringList{"CREATE OR REPLACE TYPE APP.EMP_T AS OBJECT", "(",
                                "  ENAME   VARCHAR2(30),", "  MEMBER PROCEDURE M", ");", ""}));
  EXPECT_EQ(TypeSpecLines("APP", "EMP_T", attrs, {flagged}), lines);
  EXPECT_EQ(TypeSpecLines("APP", "EMP_T", attrs, {})[2], "  ENAME   VARCHAR2(30)");
  EXPECT_EQ(TypeSpecLines("APP", "EMP_T", attrs, {}, ") NOT FINAL;")[3], ") NOT FINAL;");
}

TEST(TypeText, LoadedTypesAreClassifiedByTheKeptBuiltInList) {
  const TTypeRef number = ClassifyType("NUMBER", "", "");
  EXPECT_EQ(number.Type, "NUMBER");
  EXPECT_TRUE(number.Schema.isEmpty());
  // CLOB and LONG RAW are not in the list: they load as object types.
  EXPECT_EQ(ClassifyType("CLOB", "", "").Type, kNestedObject);
  EXPECT_EQ(ClassifyType("LONG RAW", "", "").Type, kNestedObject);
  EXPECT_EQ(ClassifyType("LONGRAW", "", "").Type, "LONGRAW");
  const TTypeRef ref = ClassifyType("PERSON_T", "REF", "APP");
  EXPECT_EQ(ref.Type, kRefMarker);
  EXPECT_EQ(ref.Schema, "APP");
  EXPECT_EQ(ref.Object, "PERSON_T");
  EXPECT_EQ(ClassifyType("ADDRESS_T", "", "APP").Type, kNestedObject);
}

TEST(TypeText, BodyHeadsAndLoadedBodiesNameTheTypesOwner) {
  EXPECT_EQ(NewBodyHead("APP", "EMP_T"), "CREATE OR REPLACE TYPE BODY APP.EMP_T AS ");
  EXPECT_EQ(QualifiedBody("TYPE BODY PERSON_T AS\n  x\nEND;", "APP"),
            "TYPE BODY APP.PERSON_T AS\n  x\nEND;");
  EXPECT_EQ(QualifiedBody("type body \"Odd\" is", "HR"), "type body HR.\"Odd\" is");
  EXPECT_EQ(QualifiedBody("TYPE BODY SALES.T AS", "APP"), "TYPE BODY SALES.T AS");
  EXPECT_EQ(QualifiedBody("TYPE BODY SALES . T AS", "APP"), "TYPE BODY SALES . T AS");
  EXPECT_EQ(QualifiedBody("BEGIN NULL; END;", "APP"), "BEGIN NULL; END;");
}

TEST(TypeText, CollectionLinesKeepTrailingBlankAndAlwaysWriteSpinSizes) {
  EXPECT_EQ(CollectionHeadLine("APP", "V_T", true, 5),
            "CREATE OR REPLACE TYPE APP.V_T AS VARRAY(5) ");
  EXPECT_EQ(CollectionHeadLine("APP", "N_T", false, 5), "CREATE OR REPLACE TYPE APP.N_T AS TABLE ");
  EXPECT_EQ(CollectionElementLine({"VARCHAR2"}, 20, 0, 0), "OF   VARCHAR2(20)");
  EXPECT_EQ(CollectionElementLine({"RAW"}, 0, 0, 0), "OF   RAW(0)");
  EXPECT_EQ(CollectionElementLine({"NUMBER"}, 0, 12, 0), "OF NUMBER(12,0)");
  EXPECT_EQ(CollectionElementLine({"DATE"}, 0, 0, 0), "OF DATE");
  EXPECT_EQ(CollectionElementLine({kRefMarker, "APP", "PERSON_T"}, 0, 0, 0), "OF REF APP.PERSON_T");
  EXPECT_EQ(CollectionElementLine({kNestedObject, "APP", "ADDRESS_T"}, 9, 9, 9),
            "OF APP.ADDRESS_T");
}

TEST(TypeText, NamesCompareAsOracleIdentifiersAndLoadedNamesKeepTheirCase) {
  EXPECT_EQ(NameIdentity(" ename "), NameIdentity("ENAME"));
  EXPECT_NE(NameIdentity("\"ename\""), NameIdentity("ENAME"));
  EXPECT_EQ(NameIdentity("\"ENAME\""), NameIdentity("ename"));
  EXPECT_EQ(LoadedName("ENAME"), "ENAME");
  EXPECT_EQ(LoadedName("SYS_$X#1"), "SYS_$X#1");
  EXPECT_EQ(LoadedName("ename"), "\"ename\"");
  EXPECT_EQ(LoadedName("Two Words"), "\"Two Words\"");
}
