-- The catalog queries of the host itself: connection facts and the lists the host offers the dialogs.
-- Oracle SQL that the demo database runs as well.

-- name: Host.ConnectedUser
SELECT SYS_CONTEXT('USERENV', 'SESSION_USER') AS "User Name" FROM DUAL

-- name: Host.Users
SELECT USERNAME FROM ALL_USERS ORDER BY USERNAME

-- name: Host.ServerVersion
SELECT VERSION FROM PRODUCT_COMPONENT_VERSION
 WHERE UPPER(PRODUCT) LIKE 'ORACLE%'
 ORDER BY VERSION DESC

-- name: Host.PublicLinks
SELECT COUNT(*) AS "Granted" FROM SESSION_PRIVS
 WHERE PRIVILEGE = 'CREATE PUBLIC DATABASE LINK'

-- name: Host.Tablespaces
-- Needs DBA rights (DBA_TABLESPACES); Host.UserTablespaces is the fallback.
SELECT TABLESPACE_NAME FROM DBA_TABLESPACES ORDER BY TABLESPACE_NAME

-- name: Host.UserTablespaces
-- The tablespaces the connected user may use, for a user without DBA rights.
SELECT TABLESPACE_NAME FROM USER_TABLESPACES ORDER BY TABLESPACE_NAME

-- name: Host.Tables
-- Relational and object tables; the storage tables of nested-table columns, the overflow
-- segments of index-organized tables and dropped tables are no tables of their own.
SELECT TABLE_NAME FROM ALL_ALL_TABLES
 WHERE OWNER = :P_OWNER AND NESTED = 'NO' AND SECONDARY = 'N'
   AND (IOT_TYPE IS NULL OR IOT_TYPE = 'IOT')
   AND DROPPED = 'NO'
 ORDER BY TABLE_NAME

-- name: Host.BlockSize
-- Needs DBA rights (V$PARAMETER); Host.UserBlockSize is the fallback.
SELECT VALUE FROM V$PARAMETER WHERE NAME = 'db_block_size'

-- name: Host.UserBlockSize
-- The block size of the default tablespace of the connected user, which is the block size of the database
-- unless that tablespace was created with another one; for a user without DBA rights.
SELECT T.BLOCK_SIZE AS "BLOCK_SIZE"
  FROM USER_TABLESPACES T, USER_USERS U
 WHERE T.TABLESPACE_NAME = U.DEFAULT_TABLESPACE

-- name: Host.DataTypes
-- The data types offered for columns, attributes and parameters.
SELECT 'BFILE' AS TYPE_NAME FROM DUAL UNION ALL
SELECT 'BLOB' FROM DUAL UNION ALL
SELECT 'CHAR' FROM DUAL UNION ALL
SELECT 'CLOB' FROM DUAL UNION ALL
SELECT 'DATE' FROM DUAL UNION ALL
SELECT 'FLOAT' FROM DUAL UNION ALL
SELECT 'LONG' FROM DUAL UNION ALL
SELECT 'LONG RAW' FROM DUAL UNION ALL
SELECT 'NCHAR' FROM DUAL UNION ALL
SELECT 'NCLOB' FROM DUAL UNION ALL
SELECT 'NUMBER' FROM DUAL UNION ALL
SELECT 'NVARCHAR2' FROM DUAL UNION ALL
SELECT 'RAW' FROM DUAL UNION ALL
SELECT 'ROWID' FROM DUAL UNION ALL
SELECT 'TIMESTAMP' FROM DUAL UNION ALL
SELECT 'UROWID' FROM DUAL UNION ALL
SELECT 'VARCHAR2' FROM DUAL UNION ALL
SELECT 'XMLTYPE' FROM DUAL

-- name: Acm.Tablespace
-- Needs DBA rights (DBA_TABLESPACES).
-- Tablespaces with their contents (PERMANENT, TEMPORARY, UNDO), for the user dialog.
SELECT TABLESPACE_NAME AS "Tablespace", CONTENTS AS "Contents"
  FROM DBA_TABLESPACES
 ORDER BY TABLESPACE_NAME

-- name: Host.Facts
-- Facts of the demo session (SQLite only).
SELECT NAME, VALUE FROM NOD_CONNECTION

-- name: Host.Services
-- TNS aliases known to the demo database (SQLite only).
SELECT SERVICE_NAME FROM NOD_SERVICE ORDER BY SERVICE_NAME
