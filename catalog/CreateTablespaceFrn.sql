-- Tablespace dialog, alter mode: the tablespace and its files.
-- DBA_TABLESPACES needs DBA rights (or SELECT_CATALOG_ROLE); USER_TABLESPACES lacks the
-- tablespaces the user has no quota on.
-- name: CreateTablespaceFrn.Info
SELECT T.CONTENTS AS "Contents",
       T.BIGFILE AS "Bigfile",
       CAST(T.BLOCK_SIZE AS VARCHAR(40)) AS "Block Size",
       T.LOGGING AS "Logging",
       T.FORCE_LOGGING AS "Force Logging",
       T.STATUS AS "Status",
       T.EXTENT_MANAGEMENT AS "Extent Management",
       T.ALLOCATION_TYPE AS "Allocation Type",
       CAST(T.NEXT_EXTENT AS VARCHAR(40)) AS "Next Extent",
       T.SEGMENT_SPACE_MANAGEMENT AS "Segment Space Management",
       T.RETENTION AS "Retention"
  FROM DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = :P_NAME

-- name: CreateTablespaceFrn.Files
-- The data files (or temp files) of a tablespace. Sizes in bytes; the autoextension step is
-- kept in blocks, so it is multiplied by the block size. A file extensible to the largest
-- number of blocks a file can have was made UNLIMITED.
-- DBA_DATA_FILES, DBA_TEMP_FILES and DBA_TABLESPACES need DBA rights (or SELECT_CATALOG_ROLE).
SELECT F.FILE_NAME AS "File Name",
       CAST(F.BYTES AS VARCHAR(40)) AS "Bytes",
       F.AUTOEXTENSIBLE AS "Autoextensible",
       CAST(F.INCREMENT_BY * T.BLOCK_SIZE AS VARCHAR(40)) AS "Next Bytes",
       CASE WHEN F.MAXBLOCKS >= CASE WHEN T.BIGFILE = 'YES' THEN 4294967293 ELSE 4194302 END
            THEN 'UNLIMITED' ELSE CAST(F.MAXBYTES AS VARCHAR(40)) END AS "Max Bytes"
  FROM DBA_DATA_FILES F, DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = F.TABLESPACE_NAME
   AND F.TABLESPACE_NAME = :P_NAME
UNION ALL
SELECT F.FILE_NAME AS "File Name",
       CAST(F.BYTES AS VARCHAR(40)) AS "Bytes",
       F.AUTOEXTENSIBLE AS "Autoextensible",
       CAST(F.INCREMENT_BY * T.BLOCK_SIZE AS VARCHAR(40)) AS "Next Bytes",
       CASE WHEN F.MAXBLOCKS >= CASE WHEN T.BIGFILE = 'YES' THEN 4294967293 ELSE 4194302 END
            THEN 'UNLIMITED' ELSE CAST(F.MAXBYTES AS VARCHAR(40)) END AS "Max Bytes"
  FROM DBA_TEMP_FILES F, DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = F.TABLESPACE_NAME
   AND F.TABLESPACE_NAME = :P_NAME
 ORDER BY 1
