// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/OpenOptions.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/Row.h"
#include "platform/dao/TableDef.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace dao {

class Storage;

// An opened database file. Copies share the opening; the last one to go, or Close, releases the file. Between two
// calls no lock is held on the file. One thread at a time; every failure is a runtime::Error with a Dutch description.
//
// A call takes exactly one statement of the Jet dialect, and a statement is carried out whole and durably or not at
// all. While another program writes, a call waits at most five seconds.
class Database {
 public:
  explicit Database(std::shared_ptr<Storage> storage);

  Recordset OpenRecordset(const QString& sql);  // SELECT only
  int Execute(const QString& sql);              // INSERT, UPDATE, DELETE; gives the number of rows changed

  // Hands the rows of a SELECT to `visit` one by one without holding them: for tables of any size. Until it returns
  // nobody can change the file, the visit neither.
  void Visit(const QString& select, const RowVisit& visit);

  QStringList TableNames() const;  // sorted, without the system's own tables
  TableDef Table(const QString& name) const;
  void CreateTable(const TableDef& table);
  void Close();

 private:
  std::shared_ptr<Storage> storage_;
};

// Opens an existing file. The text is a path as the system writes it (runtime::HostPath finds the file). A missing
// file, a folder, a file without read permission and a file that is no Jet 4 database are errors
// that name the file, and so is a password that is missing or wrong.
Database OpenDatabase(const QString& pathText, const OpenOptions& options = {});

// Makes a new, empty database file; an error when the file exists.
void CreateDatabase(const QString& pathText);

}  // namespace dao
