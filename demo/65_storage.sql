-- Storage samples beyond the instance's own: a second, small data file of USERS that is
-- offline (taken offline for a restore and not brought back yet).

INSERT INTO DBA_DATA_FILES (FILE_NAME, FILE_ID, TABLESPACE_NAME, BYTES, BLOCKS, RELATIVE_FNO,
    AUTOEXTENSIBLE, MAXBYTES, MAXBLOCKS, INCREMENT_BY, USER_BYTES, USER_BLOCKS, ONLINE_STATUS) VALUES
  ('/u01/app/oracle/oradata/ORCL/users02.dbf', 16, 'USERS', 1048576, 128, 16, 'NO', 0, 0, 0,
   983040, 120, 'OFFLINE');
