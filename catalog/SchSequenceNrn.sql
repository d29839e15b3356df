-- Sequence dialog: one sequence of an owner, for the alter mode of the dialog.
-- The dictionary reports an ascending sequence without a maximum as MAX_VALUE = 1e27-1 (1e28-1
-- from release 12 on): both read as "NONE". A cache size of 0 means NOCACHE.
-- name: SchSequenceNrn.Info
SELECT CAST(S.LAST_NUMBER AS VARCHAR(40)) AS "Last Value",
       CAST(S.MIN_VALUE AS VARCHAR(40)) AS "Min Value",
       CASE WHEN S.MAX_VALUE >= 999999999999999999999999999 THEN 'NONE'
            ELSE CAST(S.MAX_VALUE AS VARCHAR(40)) END AS "Max Value",
       CAST(S.INCREMENT_BY AS VARCHAR(40)) AS "Increment by",
       CASE WHEN UPPER(TRIM(S.CYCLE_FLAG)) = 'Y' THEN 'YES' ELSE 'NO' END AS "Cycle",
       CAST(COALESCE(S.CACHE_SIZE, 0) AS VARCHAR(40)) AS "Cache?",
       CASE WHEN UPPER(TRIM(S.ORDER_FLAG)) = 'Y' THEN 'YES' ELSE 'NO' END AS "Order"
  FROM ALL_SEQUENCES S
 WHERE S.SEQUENCE_OWNER = :P_OWN
   AND S.SEQUENCE_NAME = :P_SEQUENCE
