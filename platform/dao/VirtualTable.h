#pragma once

#include "platform/dao/Storage.h"

#include <QString>

#include <sqlite3.h>

#include <deque>
#include <exception>
#include <memory>
#include <vector>

namespace dao {

// The tables that one statement names, as the SQL engine sees them: each is there without having been created, as the
// one table of a module of its name.
class VirtualTables {
 public:
  // The connection has no modules of others. What was compiled on it is gone before this is.
  explicit VirtualTables(sqlite3* connection) : connection_(connection) {}
  ~VirtualTables();
  VirtualTables(const VirtualTables&) = delete;
  VirtualTables& operator=(const VirtualTables&) = delete;

  // Makes a table known under a name. Its place counts from 0 in the order of the calls.
  void Add(const QString& name, std::unique_ptr<Table> table);
  Table& At(std::size_t place) { return *entries_[place].table; }

  // An INSERT gives these fields of the table; the others get their default.
  void SetGivenFields(std::size_t place, FieldMask given) { entries_[place].given = given; }

  // The rows that a DELETE named go together, once all are known: the engine does not look at the table in between.
  void DeleteNamed(std::size_t place);

  // Throws what a table threw under the engine, if anything: no exception crosses the engine's C code.
  void RethrowFailure() const;

  // Whether it is this that tells the engine about a table now, and no statement that asks for something.
  bool IsDeclaring() const { return isDeclaring_; }

  // For the callbacks.
  struct Entry {
    VirtualTables* all;
    std::unique_ptr<Table> table;
    FieldMask given;
    std::vector<RowId> named;  // by a DELETE
  };
  int Declare(const TableDef& table);
  void KeepFailure(std::exception_ptr failure) { failure_ = std::move(failure); }

 private:
  sqlite3* connection_;
  std::deque<Entry> entries_;  // which the engine points to
  bool isDeclaring_ = false;
  std::exception_ptr failure_;
};

// The type that a field has in the engine, by which a result column tells what it holds.
const char* DeclaredType(FieldType type);

}  // namespace dao
