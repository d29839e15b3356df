-- name: CreateAttributeFrn.Type
-- Type pickers of the attribute, method, parameter and collection dialogs: the object and
-- collection types of one owner.
SELECT T.TYPE_NAME AS "TYPE_NAME"
  FROM ALL_TYPES T
 WHERE T.OWNER = :P_OWN
   AND T.TYPECODE IN ('OBJECT', 'COLLECTION')
 ORDER BY T.TYPE_NAME
