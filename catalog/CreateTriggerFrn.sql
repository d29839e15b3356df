-- Trigger dialog. TRIGGER_BODY is a LONG column: it is only ever selected, never compared.

-- Picker lists. The dialog appends a filter on the owner and the ordering to the three object
-- lists, so they end without WHERE or ORDER BY.
-- name: CreateTrigger.LoadSchema
SELECT U.USERNAME AS "Schema Name",
       U.CREATED AS "Created"
  FROM ALL_USERS U

-- name: CreateTrigger.LoadTable
SELECT OWNER AS "Schema Name",
       TABLE_NAME AS "Table Name"
  FROM ALL_ALL_TABLES

-- name: CreateTrigger.LoadView
SELECT OWNER AS "Schema Name",
       VIEW_NAME AS "View Name"
  FROM ALL_VIEWS

-- The nested table columns of a view: columns whose type is a nested table type.
-- name: CreateTrigger.LoadColumn
SELECT C.COLUMN_NAME AS "Column Name",
       C.DATA_TYPE AS "Data Type"
  FROM ALL_TAB_COLUMNS C
  JOIN ALL_COLL_TYPES T
    ON T.OWNER = C.DATA_TYPE_OWNER
   AND T.TYPE_NAME = C.DATA_TYPE
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_VIEW
   AND T.COLL_TYPE = 'TABLE'
 ORDER BY C.COLUMN_ID

-- Update columns: the type of an object table (no type for a relational table), then the
-- columns of a relational table or the attributes of the object table type.
-- name: CreateTrigger.ScanObject
SELECT T.TABLE_TYPE_OWNER AS "TABLE_TYPE_OWNER",
       T.TABLE_TYPE AS "TABLE_TYPE"
  FROM ALL_ALL_TABLES T
 WHERE T.OWNER = :P_OWN
   AND T.TABLE_NAME = :P_TABLE

-- name: CreateTrigger.LoadColumn_01
SELECT C.COLUMN_ID AS "ColID",
       C.COLUMN_NAME AS "Column Name",
       C.DATA_TYPE AS "Data Type"
  FROM ALL_TAB_COLUMNS C
 WHERE C.OWNER = :P_OWN
   AND C.TABLE_NAME = :P_TABLE
 ORDER BY C.COLUMN_ID

-- name: CreateTrigger.LoadType
SELECT A.ATTR_NO AS "ColID",
       A.ATTR_NAME AS "Column Name",
       A.ATTR_TYPE_NAME AS "Data Type"
  FROM ALL_TYPE_ATTRS A
 WHERE A.OWNER = :P_OWN
   AND A.TYPE_NAME = :P_TYPE
 ORDER BY A.ATTR_NO

-- An existing trigger.
-- name: CreateTrigger.AlterTrigger_01
SELECT T.BASE_OBJECT_TYPE AS "base_object_type",
       T.TABLE_OWNER AS "table_owner",
       T.TABLE_NAME AS "table_name",
       T.COLUMN_NAME AS "column_name",
       T.TRIGGER_TYPE AS "trigger_type",
       T.TRIGGERING_EVENT AS "triggering_event",
       T.REFERENCING_NAMES AS "REFERENCING_NAMES",
       T.STATUS AS "STATUS",
       T.WHEN_CLAUSE AS "WHEN_CLAUSE",
       T.ACTION_TYPE AS "ACTION_TYPE",
       T.TRIGGER_BODY AS "TRIGGER_BODY"
  FROM ALL_TRIGGERS T
 WHERE T.OWNER = :P_OWN
   AND T.TRIGGER_NAME = :P_TRIGGER

-- The columns of an UPDATE OF list of a trigger.
-- name: CreateTrigger.TriggerColumn
SELECT C.TABLE_OWNER AS "TABLE_OWNER",
       C.TRIGGER_OWNER AS "TRIGGER_OWNER",
       C.TABLE_NAME AS "TABLE_NAME",
       C.COLUMN_NAME AS "COLUMN_NAME"
  FROM ALL_TRIGGER_COLS C
 WHERE C.TRIGGER_OWNER = :P_OWN
   AND C.TRIGGER_NAME = :P_TRIGGER
   AND C.COLUMN_LIST = 'YES'
