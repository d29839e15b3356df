-- Table dialog: the comment of a table.
-- name: CreateTableFrn.TableComment
SELECT C.COMMENTS AS "COMMENTS"
  FROM ALL_TAB_COMMENTS C
 WHERE C.OWNER = :P_OWNER
   AND C.TABLE_NAME = :P_TABLE

-- Table dialog: the object types of a schema, for an object table.
-- name: CreateTableFrn.Type
SELECT T.TYPE_NAME AS "type_name"
  FROM ALL_TYPES T
 WHERE T.OWNER = :P_OWNER
   AND T.TYPECODE = 'OBJECT'
 ORDER BY T.TYPE_NAME

-- Table dialog: the attributes of an object type, in declaration order. CHAR_USED is C for an
-- attribute declared with character length semantics (LENGTH in characters), B for bytes.
-- name: CreateTableFrn.TypeAttributeList
SELECT A.ATTR_NAME AS "ATTR_NAME",
       A.ATTR_TYPE_MOD AS "ATTR_TYPE_MOD",
       A."LENGTH" AS "LENGTH",
       A."PRECISION" AS "PRECISION",
       A.SCALE AS "SCALE",
       A.ATTR_TYPE_NAME AS "ATTR_TYPE_NAME",
       A.ATTR_TYPE_OWNER AS "ATTR_TYPE_OWNER",
       A.CHAR_USED AS "CHAR_USED"
  FROM ALL_TYPE_ATTRS A
 WHERE A.OWNER = :P_OWNER
   AND A.TYPE_NAME = :P_TYPENAME
 ORDER BY A.ATTR_NO
