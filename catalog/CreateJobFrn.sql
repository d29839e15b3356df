-- Job dialog: the arguments of the procedure a job is to run, in order, for the call the dialog
-- composes. P_PKGNAME is empty (NULL) for a stand-alone procedure. Of an overloaded procedure the
-- first overload is taken; a function result (no argument name) is not an argument.
-- name: CreateJobFrn.001
SELECT A.ARGUMENT_NAME AS "Argument_Name", A.DATA_TYPE AS "Data_Type"
  FROM ALL_ARGUMENTS A
 WHERE A.OWNER = :P_OWN
   AND A.OBJECT_NAME = :P_OBJNAME
   AND NVL(A.PACKAGE_NAME, ' ') = NVL(:P_PKGNAME, ' ')
   AND A.DATA_LEVEL = 0
   AND A.ARGUMENT_NAME IS NOT NULL
   AND NVL(A.OVERLOAD, '0') = (SELECT NVL(MIN(B.OVERLOAD), '0')
                                 FROM ALL_ARGUMENTS B
                                WHERE B.OWNER = A.OWNER
                                  AND B.OBJECT_NAME = A.OBJECT_NAME
                                  AND NVL(B.PACKAGE_NAME, ' ') = NVL(A.PACKAGE_NAME, ' '))
 ORDER BY A.POSITION
