-- Index dialog: the clusters of a schema.
-- name: CreateIndexFrn.Cluster
SELECT C.CLUSTER_NAME AS "CLUSTER_NAME"
  FROM ALL_CLUSTERS C
 WHERE C.OWNER = :P_OWN
 ORDER BY C.CLUSTER_NAME

-- Index dialog: the key columns of a cluster. ALL_TAB_COLUMNS lists the columns of clusters
-- as well as of tables and views.
-- name: CreateIndexFrn.ClusterColumn
SELECT C.COLUMN_NAME AS "column_name",
       C.DATA_TYPE AS "data_type"
  FROM ALL_TAB_COLUMNS C
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_CLUSTER
 ORDER BY C.COLUMN_ID

-- Index dialog: one existing index as the alter mode loads it. DEGREE is blank-padded in the
-- dictionary and is trimmed.
-- name: CreateIndexFrn.Alter.001
SELECT I.TABLESPACE_NAME AS "TABLESPACE_NAME",
       I.TABLE_TYPE AS "TABLE_TYPE",
       I.TABLE_OWNER AS "TABLE_OWNER",
       I.TABLE_NAME AS "TABLE_NAME",
       I.UNIQUENESS AS "UNIQUENESS",
       I.INDEX_TYPE AS "INDEX_TYPE",
       TRIM(I.DEGREE) AS "DEGREE",
       I.LOGGING AS "LOGGING",
       I.INITIAL_EXTENT AS "INITIAL_EXTENT",
       I.NEXT_EXTENT AS "NEXT_EXTENT",
       I.PCT_INCREASE AS "PCT_INCREASE",
       I.MIN_EXTENTS AS "MIN_EXTENTS",
       I.MAX_EXTENTS AS "MAX_EXTENTS",
       I.BUFFER_POOL AS "BUFFER_POOL",
       I.PCT_FREE AS "PCT_FREE",
       I.INI_TRANS AS "INI_TRANS",
       I.MAX_TRANS AS "MAX_TRANS",
       I.FREELISTS AS "FREELISTS",
       I.FREELIST_GROUPS AS "FREELIST_GROUPS"
  FROM ALL_INDEXES I
 WHERE I.OWNER = :P_OWN
   AND I.INDEX_NAME = :P_INDEX

-- Index dialog: the columns of an existing index in key order, with their data types. The
-- hidden column behind an expression of a function-based index is not in ALL_TAB_COLUMNS and
-- comes without a type.
-- name: CreateIndexFrn.Alter.003
SELECT I.DESCEND AS "DESCEND",
       I.COLUMN_NAME AS "COLUMN_NAME",
       C.DATA_TYPE AS "DATA_TYPE"
  FROM ALL_IND_COLUMNS I
  LEFT JOIN ALL_TAB_COLUMNS C
    ON C.OWNER = I.TABLE_OWNER
   AND C.TABLE_NAME = I.TABLE_NAME
   AND C.COLUMN_NAME = I.COLUMN_NAME
 WHERE I.INDEX_OWNER = :P_IDX_OWNER
   AND I.INDEX_NAME = :P_IDX
   AND I.TABLE_OWNER = :P_TBL_OWNER
   AND I.TABLE_NAME = :P_TBL
 ORDER BY I.COLUMN_POSITION
