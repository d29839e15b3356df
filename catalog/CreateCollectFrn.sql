-- name: CreateCollectFrn.Alter001
-- Collection type dialog: the kind, the limit and the element type of one collection type.
SELECT C.COLL_TYPE AS "COLL_TYPE",
       C.ELEM_TYPE_NAME AS "ELEM_TYPE_NAME",
       C.ELEM_TYPE_MOD AS "ELEM_TYPE_MOD",
       C.ELEM_TYPE_OWNER AS "ELEM_TYPE_OWNER",
       CAST(C.LENGTH AS VARCHAR(40)) AS "LENGTH",
       CAST(C.PRECISION AS VARCHAR(40)) AS "PRECISION",
       CAST(C.SCALE AS VARCHAR(40)) AS "SCALE",
       CAST(C.UPPER_BOUND AS VARCHAR(40)) AS "Limit"
  FROM ALL_COLL_TYPES C
 WHERE C.OWNER = :P_OWN
   AND C.TYPE_NAME = :P_NAME
