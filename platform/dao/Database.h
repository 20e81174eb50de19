// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/OpenOptions.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/Row.h"
#include "platform/dao/TableDef.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace dao {

class Storage;

// An open database: a file or a schema on a server. Copies share it; Close, or the destruction of the last copy,
// releases it. Between two calls no lock is held. One thread at a time; every failure is a runtime::Error with a Dutch
// description.
//
// A call takes exactly one statement of the Jet dialect, which is atomic and durable. While another program writes, a
// call waits at most five seconds.
class Database {
 public:
  explicit Database(std::shared_ptr<Storage> storage);

  Recordset OpenRecordset(const QString& sql);  // SELECT only
  int Execute(const QString& sql);              // INSERT, UPDATE, DELETE; returns the number of rows changed

  // The rows of a SELECT as they are, and as they would be after an INSERT, UPDATE or DELETE. Nothing is changed; the
  // errors are those of the change.
  struct Preview {
    Recordset before;
    Recordset after;
  };
  Preview PreviewChange(const QString& change, const QString& select);

  // Calls `visit` for each row of a SELECT without keeping the rows in memory: for tables of any size. The file is
  // locked against changes until Visit returns; `visit` must not change it either.
  void Visit(const QString& select, const RowVisit& visit);

  QStringList TableNames() const;  // sorted, without the system's own tables
  TableDef Table(const QString& name) const;
  void CreateTable(const TableDef& table);
  void Close();

 private:
  friend class StatementTransaction;
  std::shared_ptr<Storage> storage_;
};

// Opens an existing database: a path text (see runtime::HostPath) or a server address (see ServerAddress). Errors name
// the file: missing, a folder, without read permission, not a Jet 4 database, password missing or wrong.
Database OpenDatabase(const QString& pathText, const OpenOptions& options = {});

// Creates a new, empty database. Throws runtime::Error when it exists.
void CreateDatabase(const QString& pathText);
// As above, with what `fill` puts in it. A file appears complete or not at all: until `fill` has returned it exists in
// memory only. A database on a server is created empty and then filled.
void CreateDatabase(const QString& pathText, const std::function<void(Database&)>& fill);

}  // namespace dao
