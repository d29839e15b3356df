-- Job object picker. P_OBJTYPE is PACKAGE BODY (a package is offered by its body, so that one
-- whose body is missing or invalid is not) or PROCEDURE.
-- name: CreateJobObjectFrn.001
SELECT O.OBJECT_NAME AS "Object_Name", O.STATUS AS "Status"
  FROM ALL_OBJECTS O
 WHERE O.OWNER = :P_OWN
   AND O.OBJECT_TYPE = :P_OBJTYPE
 ORDER BY O.OBJECT_NAME

-- The procedures of a package (its functions cannot be run as a job).
-- name: CreateJobObjectFrn.002
SELECT DISTINCT P.PROCEDURE_NAME AS "Object_Name"
  FROM ALL_PROCEDURES P
 WHERE P.OWNER = :P_OWN
   AND P.OBJECT_NAME = :P_PKGNAME
   AND P.PROCEDURE_NAME IS NOT NULL
   AND NOT EXISTS (SELECT 1 FROM ALL_ARGUMENTS A
                    WHERE A.OWNER = P.OWNER
                      AND A.PACKAGE_NAME = P.OBJECT_NAME
                      AND A.OBJECT_NAME = P.PROCEDURE_NAME
                      AND A.POSITION = 0
                      AND A.ARGUMENT_NAME IS NULL
                      AND A.DATA_LEVEL = 0)
 ORDER BY 1
