-- View dialog. TEXT is a LONG column: it is only ever selected, never compared or sliced.

-- The query and the object view settings of an existing view; OID_TEXT names the attributes of
-- an object view identifier.
-- name: CreateViewFrn.Alter01
SELECT V.TEXT AS "TEXT",
       V.VIEW_TYPE AS "VIEW_TYPE",
       V.VIEW_TYPE_OWNER AS "VIEW_TYPE_OWNER",
       V.SUPERVIEW_NAME AS "SUPERVIEW_NAME",
       V.OID_TEXT AS "OID_TEXT"
  FROM ALL_VIEWS V
 WHERE V.OWNER = :P_OWN
   AND V.VIEW_NAME = :P_NAME

-- The check option constraint of a view, when it was named by the user: a system name is left
-- for the server to give again.
-- name: SchViewNrn.Script_01
SELECT C.CONSTRAINT_NAME AS "CONSTRAINT_NAME"
  FROM ALL_CONSTRAINTS C
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_VIEW
   AND C.CONSTRAINT_TYPE = 'V'
   AND C.GENERATED = 'USER NAME'

-- The comment of a table or view.
-- name: SchTableNrn.Script_17
SELECT C.COMMENTS AS "Comments"
  FROM ALL_TAB_COMMENTS C
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_TABLE

-- The types of a schema with the given type code (OBJECT, COLLECTION).
-- name: SchTypeNrn.Object Type
SELECT T.TYPE_NAME AS "Name"
  FROM ALL_TYPES T
 WHERE T.OWNER = :P_OWN
   AND T.TYPECODE = :P_TYPE
 ORDER BY T.TYPE_NAME

-- The attributes of an object type, in declaration order.
-- name: SchTypeNrn.Attribute
SELECT A.ATTR_NAME AS "Name"
  FROM ALL_TYPE_ATTRS A
 WHERE A.OWNER = :P_OWN
   AND A.TYPE_NAME = :P_OBJECT
 ORDER BY A.ATTR_NO

-- The object views of a schema: the views another object view can be created under.
-- name: CreateViewFrn.SuperView
SELECT V.VIEW_NAME AS "Name"
  FROM ALL_VIEWS V
 WHERE V.OWNER = :P_OWN
   AND V.VIEW_TYPE IS NOT NULL
 ORDER BY V.VIEW_NAME
