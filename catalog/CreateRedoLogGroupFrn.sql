-- name: CreateRedoLogGroupFrn.MaxGroup#
-- Redo log group dialog: the group number to propose for a new group, one above the highest.
-- V$LOG needs DBA rights (SELECT_CATALOG_ROLE).
SELECT CAST(COALESCE(MAX(L."GROUP#"), 0) + 1 AS VARCHAR(40)) AS "MaxGroup"
  FROM V$LOG L

-- name: CreateRedoLogGroupFrn.MaxGroupLogFile
-- The member file to propose for a new group: the first member of the highest group, as a
-- pattern for the new file name.
-- V$LOG and V$LOGFILE need DBA rights (SELECT_CATALOG_ROLE).
SELECT MIN(F.MEMBER) AS "Member"
  FROM V$LOGFILE F
 WHERE F."GROUP#" = (SELECT MAX(L."GROUP#") FROM V$LOG L)
