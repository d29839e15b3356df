-- Data-file list: every data file and temp file of the database, one path per row.
-- DBA_DATA_FILES and DBA_TEMP_FILES need DBA rights (or SELECT_CATALOG_ROLE).
-- name: TablespaceMgrFrn.DataFilesList
SELECT FILE_NAME AS "File Name" FROM DBA_DATA_FILES
UNION
SELECT FILE_NAME AS "File Name" FROM DBA_TEMP_FILES
 ORDER BY 1
