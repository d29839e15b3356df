-- name: RollbackSegmentNrn.Info
-- Rollback segment dialog, alter mode: one rollback segment. Sizes in bytes; the optimal size
-- is kept by the instance (V$ROLLSTAT, online segments only) and reads "NULL" when none is set.
-- DBA_ROLLBACK_SEGS, V$ROLLNAME and V$ROLLSTAT need DBA rights (SELECT_CATALOG_ROLE).
SELECT R.TABLESPACE_NAME AS "Tablespace",
       R.OWNER AS "Owner",
       R.STATUS AS "Status",
       CAST(R.INITIAL_EXTENT AS VARCHAR(40)) AS "Initial Extent",
       CAST(R.NEXT_EXTENT AS VARCHAR(40)) AS "Next Extent",
       CAST(R.MIN_EXTENTS AS VARCHAR(40)) AS "Min Extents",
       CAST(R.MAX_EXTENTS AS VARCHAR(40)) AS "Max Extents",
       COALESCE((SELECT CAST(S.OPTSIZE AS VARCHAR(40))
                   FROM V$ROLLNAME N, V$ROLLSTAT S
                  WHERE N.USN = S.USN AND N.NAME = R.SEGMENT_NAME), 'NULL') AS "Optimal Size"
  FROM DBA_ROLLBACK_SEGS R
 WHERE R.SEGMENT_NAME = :P_NAME
