-- Alter-constraint dialog: the constraint as it stands, read when the dialog opens. No row
-- means the constraint was dropped since it was listed.
-- name: AlterConstraintFrn.Constraint
SELECT C.CONSTRAINT_TYPE AS "CONSTRAINT_TYPE",
       C.STATUS AS "STATUS",
       C.VALIDATED AS "VALIDATED",
       C.RELY AS "RELY"
  FROM ALL_CONSTRAINTS C
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_TABLE
   AND C.CONSTRAINT_NAME = :P_CONSTRAINT
