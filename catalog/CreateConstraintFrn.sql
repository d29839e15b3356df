-- Add-constraint dialog: the constraints of a table. The dialog appends a condition on
-- A1.CONSTRAINT_TYPE to find the primary key, so the text ends with its WHERE clause.
-- name: CreateConstraintFrn.PrimaryKey
SELECT A1.CONSTRAINT_NAME AS "Constraint",
       A1.CONSTRAINT_TYPE AS "Type",
       A1.STATUS AS "Status"
  FROM ALL_CONSTRAINTS A1
 WHERE A1.OWNER = :P_OWN
   AND A1.TABLE_NAME = :P_TABLE
