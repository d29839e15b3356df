-- name: CreateDataFileFrn.Tablespace
-- Data file dialog, create mode: the kind of the tablespace the file is added to (a temporary
-- one takes temp files, a bigfile one no second file).
-- DBA_TABLESPACES needs DBA rights (or SELECT_CATALOG_ROLE).
SELECT T.CONTENTS AS "Contents", T.BIGFILE AS "Bigfile"
  FROM DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = :P_TABLESPACE

-- name: CreateDataFileFrn.Info
-- Data file dialog, alter mode: one data file or temp file of a tablespace. Sizes in bytes;
-- the autoextension step is kept in blocks. A file extensible to the largest number of blocks
-- a file can have was made UNLIMITED.
-- DBA_DATA_FILES, DBA_TEMP_FILES and DBA_TABLESPACES need DBA rights (or SELECT_CATALOG_ROLE).
SELECT T.CONTENTS AS "Contents",
       CAST(F.BYTES AS VARCHAR(40)) AS "Bytes",
       F.AUTOEXTENSIBLE AS "Autoextensible",
       CAST(F.INCREMENT_BY * T.BLOCK_SIZE AS VARCHAR(40)) AS "Next Bytes",
       CASE WHEN F.MAXBLOCKS >= CASE WHEN T.BIGFILE = 'YES' THEN 4294967293 ELSE 4194302 END
            THEN 'UNLIMITED' ELSE CAST(F.MAXBYTES AS VARCHAR(40)) END AS "Max Bytes",
       F.ONLINE_STATUS AS "Status"
  FROM DBA_DATA_FILES F, DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = F.TABLESPACE_NAME
   AND F.TABLESPACE_NAME = :P_TABLESPACE
   AND F.FILE_NAME = :P_FILE
UNION ALL
SELECT T.CONTENTS AS "Contents",
       CAST(F.BYTES AS VARCHAR(40)) AS "Bytes",
       F.AUTOEXTENSIBLE AS "Autoextensible",
       CAST(F.INCREMENT_BY * T.BLOCK_SIZE AS VARCHAR(40)) AS "Next Bytes",
       CASE WHEN F.MAXBLOCKS >= CASE WHEN T.BIGFILE = 'YES' THEN 4294967293 ELSE 4194302 END
            THEN 'UNLIMITED' ELSE CAST(F.MAXBYTES AS VARCHAR(40)) END AS "Max Bytes",
       F.STATUS AS "Status"
  FROM DBA_TEMP_FILES F, DBA_TABLESPACES T
 WHERE T.TABLESPACE_NAME = F.TABLESPACE_NAME
   AND F.TABLESPACE_NAME = :P_TABLESPACE
   AND F.FILE_NAME = :P_FILE
