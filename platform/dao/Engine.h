// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/EngineConnection.h"
#include "platform/dao/ResultRows.h"
#include "platform/dao/Row.h"
#include "platform/dao/Statement.h"
#include "platform/dao/Storage.h"
#include "platform/dao/VirtualTables.h"

#include <memory>
#include <optional>

namespace dao {

// Executes one statement with an in-memory SQLite over only those tables that the statement references. The storages
// must be inside a transaction, which the caller commits after the destruction of this object.
class Engine {
 public:
  // target: receives the rows of an INSERT; the same object as source unless the statement inserts into another file.
  Engine(const Statement& statement, Storage& source, Storage& target);

  std::shared_ptr<const ResultRows> Select();
  void Visit(const RowVisit& visit);  // the rows of a SELECT
  int Change();                       // rows changed

 private:
  void AddTables();
  void AddTarget();
  bool ReadsOnce() const;
  void SeekText();
  std::optional<std::size_t> InsertWholeTable();
  std::size_t PlaceOf(const QString& name) const;
  QString InsertSql();
  QStringList InsertFields(const TableDef& table);
  QStringList NamesOfBody();
  SqliteStatement Prepared(const QString& sql);
  template <class Work>
  void ForEachRow(sqlite3_stmt* select, Work work);
  [[noreturn]] void Fail();
  static int Authorize(void* engine, int action, const char* first, const char* second, const char* database,
                       const char* trigger) noexcept;
  bool MayRead(const char* table, const char* field);

  const Statement& statement_;
  Storage& source_;
  Storage& target_;
  EngineConnection connection_;
  VirtualTables& tables_;
  QStringList known_;   // names of the tables in SQLite
  QString targetName_;  // name in SQLite of the table that changes
  std::size_t targetPlace_ = 0;
  QString refused_;  // what the authorizer refused
};

}  // namespace dao
