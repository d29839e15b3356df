-- The demo's own tables: facts of the simulated session, the services an Oracle client would
-- know, the journal of scripts, and Oracle's one-row DUAL.

CREATE TABLE DUAL (DUMMY VARCHAR2(1));
INSERT INTO DUAL VALUES ('X');

-- SYS_CONTEXT('USERENV', NAME) answers from here; CONNECTION_NAME and OCI_MODE are the host's.
CREATE TABLE NOD_CONNECTION (
  NAME  VARCHAR2(30) PRIMARY KEY,
  VALUE VARCHAR2(4000)
);
INSERT INTO NOD_CONNECTION (NAME, VALUE) VALUES
  ('SESSION_USER', 'APP'),
  ('CONNECTION_NAME', 'DEMO'),
  ('OCI_MODE', 'YES'),
  ('DB_NAME', 'ORCL'),
  ('DB_DOMAIN', 'example.com'),
  ('SERVICE_NAME', 'ORCL'),
  ('INSTANCE_NAME', 'orcl'),
  ('SERVER_HOST', 'dbhost01'),
  ('LANGUAGE', 'AMERICAN_AMERICA.AL32UTF8'),
  ('NLS_DATE_FORMAT', 'YYYY-MM-DD HH24:MI:SS');

-- TNS aliases a client on this machine would resolve (the database link dialog offers them).
CREATE TABLE NOD_SERVICE (
  SERVICE_NAME VARCHAR2(128) PRIMARY KEY,
  DESCRIPTION  VARCHAR2(4000)
);
INSERT INTO NOD_SERVICE (SERVICE_NAME, DESCRIPTION) VALUES
  ('ORCL', '(DESCRIPTION=(ADDRESS=(PROTOCOL=TCP)(HOST=dbhost01)(PORT=1521))(CONNECT_DATA=(SERVICE_NAME=orcl.example.com)))'),
  ('SALESDB', '(DESCRIPTION=(ADDRESS=(PROTOCOL=TCP)(HOST=sales01)(PORT=1521))(CONNECT_DATA=(SERVICE_NAME=salesdb.example.com)))'),
  ('HRPROD', '(DESCRIPTION=(ADDRESS=(PROTOCOL=TCP)(HOST=hr01)(PORT=1522))(CONNECT_DATA=(SERVICE_NAME=hrprod.example.com)))'),
  ('REPORTING', '(DESCRIPTION=(ADDRESS=(PROTOCOL=TCP)(HOST=dwh01)(PORT=1521))(CONNECT_DATA=(SID=REP)))');

-- Scripts "run" on the demo: Oracle DDL cannot be applied to SQLite, so each statement is
-- recorded here instead.
CREATE TABLE NOD_SCRIPT_LOG (
  ID         INTEGER PRIMARY KEY AUTOINCREMENT,
  RUN_AT     TEXT NOT NULL,
  CONNECTION TEXT,
  STATEMENT  TEXT NOT NULL
);
