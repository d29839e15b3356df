-- Catalog queries of the profile dialog.

-- name: CreateProfileFrn.Exists
-- The profile to alter, one row when it exists. Needs DBA rights (DBA_PROFILES).
SELECT DISTINCT PROFILE AS "PROFILE"
  FROM DBA_PROFILES
 WHERE PROFILE = :P_NAME
