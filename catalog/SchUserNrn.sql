-- Catalog queries about a user or role as a grantee.

-- name: SchUserNrn.Object Priv
-- The object privileges granted to a user or role on whole objects (column privileges are
-- listed in DBA_COL_PRIVS and cannot be revoked column by column). Needs DBA rights
-- (DBA_TAB_PRIVS).
SELECT PRIVILEGE AS "Privilege", OWNER AS "Object Owner", TABLE_NAME AS "Object Name"
  FROM DBA_TAB_PRIVS
 WHERE GRANTEE = :P_USER
 ORDER BY OWNER, TABLE_NAME, PRIVILEGE
