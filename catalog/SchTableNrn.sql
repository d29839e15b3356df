-- Table dialog: one table as the alter mode loads it.
-- A partitioned, temporary or index-organized table has no segment of its own: its storage
-- attributes and tablespace are NULL (read as empty), and the dialog leaves them alone.
-- Relational tables are in ALL_TABLES, object tables in ALL_OBJECT_TABLES; "Table Type" is
-- empty for the former. DEGREE is blank-padded in the dictionary and CACHE is a padded Y / N:
-- both are trimmed, and the cache reads as the keyword ("CACHE" / "NOCACHE").
-- name: SchTableNrn.Script
SELECT NULL AS "Table Type",
       NULL AS "Table Type Owner",
       T.INITIAL_EXTENT AS "Initial",
       T.NEXT_EXTENT AS "Next",
       T.PCT_INCREASE AS "PctIncrease",
       T.MIN_EXTENTS AS "MinExtents",
       T.MAX_EXTENTS AS "MaxExtents",
       T.PCT_FREE AS "PctFree",
       T.PCT_USED AS "PctUsed",
       T.INI_TRANS AS "IniTrans",
       T.MAX_TRANS AS "MaxTrans",
       T.FREELISTS AS "FreeLists",
       T.FREELIST_GROUPS AS "FreeList Groups",
       T.BUFFER_POOL AS "Buffer Pool",
       TRIM(T.DEGREE) AS "Degree",
       T.LOGGING AS "Logging",
       CASE WHEN UPPER(TRIM(T.CACHE)) = 'Y' THEN 'CACHE' ELSE 'NOCACHE' END AS "Cache",
       T.MONITORING AS "Monitoring",
       T.TABLESPACE_NAME AS "Tablespace"
  FROM ALL_TABLES T
 WHERE T.OWNER = :P_OWN
   AND T.TABLE_NAME = :P_TABLE
UNION ALL
SELECT O.TABLE_TYPE AS "Table Type",
       O.TABLE_TYPE_OWNER AS "Table Type Owner",
       O.INITIAL_EXTENT AS "Initial",
       O.NEXT_EXTENT AS "Next",
       O.PCT_INCREASE AS "PctIncrease",
       O.MIN_EXTENTS AS "MinExtents",
       O.MAX_EXTENTS AS "MaxExtents",
       O.PCT_FREE AS "PctFree",
       O.PCT_USED AS "PctUsed",
       O.INI_TRANS AS "IniTrans",
       O.MAX_TRANS AS "MaxTrans",
       O.FREELISTS AS "FreeLists",
       O.FREELIST_GROUPS AS "FreeList Groups",
       O.BUFFER_POOL AS "Buffer Pool",
       TRIM(O.DEGREE) AS "Degree",
       O.LOGGING AS "Logging",
       CASE WHEN UPPER(TRIM(O.CACHE)) = 'Y' THEN 'CACHE' ELSE 'NOCACHE' END AS "Cache",
       O.MONITORING AS "Monitoring",
       O.TABLESPACE_NAME AS "Tablespace"
  FROM ALL_OBJECT_TABLES O
 WHERE O.OWNER = :P_OWN
   AND O.TABLE_NAME = :P_TABLE

-- Table dialog: the columns of a table in column order, with their comments.
-- "Length" is the length as declared: in characters for character-semantics columns (and the
-- national character types), else in bytes; "Char Used" says which (C or B, NULL for other
-- types), so that VARCHAR2(10 CHAR) reloads as such. Types whose length is not declared (DATE,
-- NUMBER, TIMESTAMP(6), ...) have none: DATA_LENGTH is only their storage size. DATA_DEFAULT is a LONG and is read as it is.
-- name: SchTableNrn.Column
SELECT C.COLUMN_NAME AS "Column",
       C.DATA_TYPE AS "Data Type",
       CASE WHEN C.DATA_TYPE NOT IN ('CHAR', 'VARCHAR2', 'NCHAR', 'NVARCHAR2', 'RAW', 'UROWID')
            THEN NULL
            WHEN C.CHAR_USED = 'C' THEN C.CHAR_LENGTH
            ELSE C.DATA_LENGTH END AS "Length",
       C.DATA_PRECISION AS "Precision",
       C.DATA_SCALE AS "Scale",
       C.CHAR_USED AS "Char Used",
       C.NULLABLE AS "Null?",
       C.DATA_DEFAULT AS "Default",
       M.COMMENTS AS "Comments",
       C.COLUMN_ID AS "column_id"
  FROM ALL_TAB_COLUMNS C
  LEFT JOIN ALL_COL_COMMENTS M
    ON M.OWNER = C.OWNER
   AND M.TABLE_NAME = C.TABLE_NAME
   AND M.COLUMN_NAME = C.COLUMN_NAME
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_TABLE
 ORDER BY C.COLUMN_ID
