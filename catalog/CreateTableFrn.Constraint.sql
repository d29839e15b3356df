-- Table dialog, Constraints page: the constraints of an existing table and their columns.
-- The constraint types C, U, P and R of the dictionary belong to the table; V (view check option)
-- and O (read only view) never belong to a table. A NOT NULL column constraint is a type C
-- whose condition reads "COLUMN" IS NOT NULL; the dialog leaves those out itself.
-- name: CreateTableFrn.Constraint_01
SELECT C."GENERATED" AS "Generated",
       CASE C.CONSTRAINT_TYPE WHEN 'C' THEN 'Check'
                              WHEN 'U' THEN 'Unique Key'
                              WHEN 'P' THEN 'Primary Key'
                              WHEN 'R' THEN 'Referential Integrity' END AS "Type",
       C.SEARCH_CONDITION AS "Search Condition",
       C.R_OWNER AS "Ref. Owner",
       C.R_CONSTRAINT_NAME AS "Ref. Const",
       C.DELETE_RULE AS "Delete Rule",
       C.CONSTRAINT_NAME AS "Constraint",
       C.STATUS AS "Status",
       C."DEFERRABLE" AS "Deferrable",
       C.DEFERRED AS "Deferred",
       C.VALIDATED AS "Validated",
       C.RELY AS "Rely"
  FROM ALL_CONSTRAINTS C
 WHERE C.OWNER = :P_OWNER
   AND C.TABLE_NAME = :P_TABLE
   AND C.CONSTRAINT_TYPE IN ('P', 'U', 'R', 'C')
 ORDER BY CASE C.CONSTRAINT_TYPE WHEN 'P' THEN 1 WHEN 'U' THEN 2 WHEN 'R' THEN 3 ELSE 4 END,
          C.CONSTRAINT_NAME

-- name: CreateTableFrn.Constraint_02
-- The table of a referenced (primary or unique) constraint. Constraint names are unique per
-- owner only: OWNER comes along so that the dialog can pick the row of the referenced owner.
SELECT C.TABLE_NAME AS "TABLE_NAME",
       C.OWNER AS "OWNER"
  FROM ALL_CONSTRAINTS C
 WHERE C.CONSTRAINT_NAME = :P_NAME
 ORDER BY C.OWNER

-- name: CreateTableFrn.Constraint_03
-- The columns of a constraint in key order; for a foreign key each with the column of the
-- referenced key at the same position. OWNER as above.
SELECT CC.COLUMN_NAME AS "COLUMN_NAME",
       RC.COLUMN_NAME AS "R_COLUMN_NAME",
       CC.OWNER AS "OWNER"
  FROM ALL_CONS_COLUMNS CC
  JOIN ALL_CONSTRAINTS C
    ON C.OWNER = CC.OWNER
   AND C.CONSTRAINT_NAME = CC.CONSTRAINT_NAME
  LEFT JOIN ALL_CONS_COLUMNS RC
    ON RC.OWNER = C.R_OWNER
   AND RC.CONSTRAINT_NAME = C.R_CONSTRAINT_NAME
   AND RC.POSITION = CC.POSITION
 WHERE CC.CONSTRAINT_NAME = :P_CONSTRAINT
 ORDER BY CC.OWNER, CC.POSITION, CC.COLUMN_NAME

-- name: CreateTableFrn.Constraint_04
-- The columns of a referenced table, for the "Referenced Column" pick list.
SELECT T.COLUMN_NAME AS "COLUMN_NAME"
  FROM ALL_TAB_COLUMNS T
 WHERE T.OWNER = :P_OWNER
   AND T.TABLE_NAME = :P_TABLE
 ORDER BY T.COLUMN_ID

-- name: CreateTableFrn.Constraint_05
-- The foreign keys of any table that reference a primary or unique key of the table: before
-- the key is dropped and added again they are named to the user and, if agreed, created anew.
SELECT C.OWNER AS "OWNER",
       C.TABLE_NAME AS "TABLE_NAME",
       C.CONSTRAINT_NAME AS "CONSTRAINT_NAME",
       C.DELETE_RULE AS "DELETE_RULE",
       C."DEFERRABLE" AS "DEFERRABLE",
       C.DEFERRED AS "DEFERRED",
       C.STATUS AS "STATUS",
       C.VALIDATED AS "VALIDATED"
  FROM ALL_CONSTRAINTS C
 WHERE C.CONSTRAINT_TYPE = 'R'
   AND C.R_OWNER = :P_OWNER
   AND C.R_CONSTRAINT_NAME = :P_CONSTRAINT
 ORDER BY C.OWNER, C.TABLE_NAME, C.CONSTRAINT_NAME
