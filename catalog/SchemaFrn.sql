-- Database links. The dialogs append conditions on DB_LINK and OWNER to this text, so it ends
-- in its WHERE clause. Oracle shows no link password in any dictionary view a user can read,
-- so "Password" is always empty.
-- name: SchemaFrn.DBLink
SELECT DB_LINK AS "DB Link", HOST AS "Host", OWNER AS "Owner", USERNAME AS "User Name",
       CAST(NULL AS VARCHAR2(30)) AS "Password"
  FROM ALL_DB_LINKS
 WHERE 1 = 1
