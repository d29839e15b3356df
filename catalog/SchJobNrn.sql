-- Job dialog, change mode: one job of the connected user's job queue. The next date is given as
-- YYYY-MM-DD HH24:MI:SS.
-- name: SchJobNrn.Info
SELECT TO_CHAR(J.JOB) AS "Job Number",
       TO_CHAR(J.NEXT_DATE, 'YYYY-MM-DD HH24:MI:SS') AS "Next Date",
       J.INTERVAL AS "Interval", J.WHAT AS "What"
  FROM ALL_JOBS J
 WHERE J.JOB = :P_JOB
