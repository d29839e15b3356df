-- The object browser of the workbench. Every browser query returns the name of the object as
-- "NAME" (and a display text as "LABEL" where the name alone says little), plus the
-- columns the dialogs of the object are given.

-- name: Workbench.Schemas
SELECT USERNAME AS "NAME"
  FROM ALL_USERS
 ORDER BY USERNAME

-- name: Workbench.Tables
-- What the table dialog opens: relational and object tables, not the storage tables of
-- nested-table columns, overflow segments, secondary objects or dropped tables.
SELECT TABLE_NAME AS "NAME"
  FROM ALL_ALL_TABLES
 WHERE OWNER = :P_OWNER
   AND NESTED = 'NO'
   AND SECONDARY = 'N'
   AND (IOT_TYPE IS NULL OR IOT_TYPE = 'IOT')
   AND DROPPED = 'NO'
 ORDER BY TABLE_NAME

-- name: Workbench.Views
SELECT VIEW_NAME AS "NAME"
  FROM ALL_VIEWS
 WHERE OWNER = :P_OWNER
 ORDER BY VIEW_NAME

-- name: Workbench.Indexes
SELECT INDEX_NAME AS "NAME", TABLE_NAME AS "TABLE_NAME"
  FROM ALL_INDEXES
 WHERE OWNER = :P_OWNER
 ORDER BY INDEX_NAME

-- name: Workbench.Constraints
SELECT CONSTRAINT_NAME AS "NAME", TABLE_NAME AS "TABLE_NAME",
       TABLE_NAME || '.' || CONSTRAINT_NAME AS "LABEL"
  FROM ALL_CONSTRAINTS
 WHERE OWNER = :P_OWNER
 ORDER BY TABLE_NAME, CONSTRAINT_NAME

-- name: Workbench.Triggers
SELECT TRIGGER_NAME AS "NAME"
  FROM ALL_TRIGGERS
 WHERE OWNER = :P_OWNER
 ORDER BY TRIGGER_NAME

-- name: Workbench.Sequences
SELECT SEQUENCE_NAME AS "NAME"
  FROM ALL_SEQUENCES
 WHERE SEQUENCE_OWNER = :P_OWNER
 ORDER BY SEQUENCE_NAME

-- name: Workbench.Synonyms
SELECT SYNONYM_NAME AS "NAME"
  FROM ALL_SYNONYMS
 WHERE OWNER = :P_OWNER
 ORDER BY SYNONYM_NAME

-- name: Workbench.DBLinks
SELECT DB_LINK AS "NAME"
  FROM ALL_DB_LINKS
 WHERE OWNER = :P_OWNER
 ORDER BY DB_LINK

-- name: Workbench.ObjectTypes
SELECT TYPE_NAME AS "NAME"
  FROM ALL_TYPES
 WHERE OWNER = :P_OWNER
   AND TYPECODE = 'OBJECT'
 ORDER BY TYPE_NAME

-- name: Workbench.CollectionTypes
SELECT TYPE_NAME AS "NAME"
  FROM ALL_TYPES
 WHERE OWNER = :P_OWNER
   AND TYPECODE = 'COLLECTION'
 ORDER BY TYPE_NAME

-- name: Workbench.Users
-- Needs DBA rights (DBA_USERS).
SELECT USERNAME AS "NAME"
  FROM DBA_USERS
 ORDER BY USERNAME

-- name: Workbench.Roles
-- Needs DBA rights (DBA_ROLES).
SELECT ROLE AS "NAME"
  FROM DBA_ROLES
 ORDER BY ROLE

-- name: Workbench.Profiles
-- Needs DBA rights (DBA_PROFILES).
SELECT DISTINCT PROFILE AS "NAME"
  FROM DBA_PROFILES
 ORDER BY PROFILE

-- name: Workbench.Tablespaces
-- Needs DBA rights (DBA_TABLESPACES).
SELECT TABLESPACE_NAME AS "NAME", TABLESPACE_NAME AS "TABLESPACE_NAME"
  FROM DBA_TABLESPACES
 ORDER BY TABLESPACE_NAME

-- name: Workbench.DataFiles
-- Needs DBA rights (DBA_DATA_FILES).
SELECT FILE_NAME AS "NAME", TABLESPACE_NAME AS "TABLESPACE_NAME"
  FROM DBA_DATA_FILES
 ORDER BY TABLESPACE_NAME, FILE_NAME

-- name: Workbench.RedoLogGroups
-- Needs DBA rights (V$LOG, V$LOGFILE).
SELECT L."GROUP#" AS "NAME", L.BYTES AS "BYTES",
       'Group ' || L."GROUP#" AS "LABEL",
       (SELECT MIN(F.MEMBER) FROM V$LOGFILE F WHERE F."GROUP#" = L."GROUP#") AS "MEMBER"
  FROM V$LOG L
 ORDER BY L."GROUP#"

-- name: Workbench.RollbackSegments
-- Needs DBA rights (DBA_ROLLBACK_SEGS).
SELECT SEGMENT_NAME AS "NAME"
  FROM DBA_ROLLBACK_SEGS
 ORDER BY SEGMENT_NAME

-- name: Workbench.Jobs
-- Needs DBA rights (DBA_JOBS).
SELECT JOB AS "NAME", SCHEMA_USER AS "SCHEMA_USER",
       JOB || ' ' || SCHEMA_USER || ': ' || SUBSTR(WHAT, 1, 60) AS "LABEL"
  FROM DBA_JOBS
 ORDER BY JOB

-- name: Workbench.DBLinkInfo
SELECT OWNER AS "OWNER", DB_LINK AS "DB_LINK", USERNAME AS "USERNAME", HOST AS "HOST"
  FROM ALL_DB_LINKS
 WHERE DB_LINK = :P_LINK
