// What a host needs of a database beyond the module's view of a connection: the host lists,
// script execution and the catalog and message repositories.
#pragma once

#include "plugin/KelHost.h"

namespace host {

class TConnection : public kel::TEsDBInfo {
 public:
  virtual QStringList Tablespaces() = 0;
  virtual QStringList Tables(const QString& schema) = 0;
  virtual QStringList DataTypes() = 0;
  // The database block size; 0 when the session cannot read it (see ReadProblems).
  virtual int BlockSize() = 0;
  virtual QStringList Services() = 0;
  virtual void ResetUserList() {}
  // What the host lists could not read from the dictionary (missing privileges), one message
  // each, so that a host can say so instead of showing an empty or invented value.
  virtual QStringList ReadProblems() const { return {}; }
  // Runs a script; 0 on success, else non-zero with the failing statement and the server's
  // message in `error`.
  virtual int ExecuteScript(const QString& script, QString* failedStatement, QString* error) = 0;
};

}  // namespace host
