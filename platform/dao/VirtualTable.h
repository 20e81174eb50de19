#pragma once

#include <sqlite3.h>

#include <QString>
#include <exception>
#include <memory>
#include <vector>

#include "platform/dao/Storage.h"

namespace dao {

// The tables that one statement names, as the SQL engine sees them.
class VirtualTables {
 public:
  // Must outlive the connection's use of them.
  explicit VirtualTables(sqlite3* connection);

  // Makes a table known under a name. Its place counts from 0 in the order of the calls.
  void Add(const QString& name, std::unique_ptr<Table> table);
  Table& At(std::size_t place) { return *entries_[place].table; }

  // An INSERT gives these fields of the table; the others get their default.
  void SetGivenFields(std::size_t place, FieldMask given) { entries_[place].given = given; }

  // Throws what a table threw under the engine, if anything: no exception crosses the engine's C code.
  void RethrowFailure() const;

  // For the callbacks.
  const FieldMask& Given(std::size_t place) const { return entries_[place].given; }
  void KeepFailure(std::exception_ptr failure) { failure_ = std::move(failure); }

 private:
  struct Entry {
    std::unique_ptr<Table> table;
    FieldMask given;
  };
  sqlite3* connection_;
  std::vector<Entry> entries_;
  std::exception_ptr failure_;
};

// The type that a field has in the engine, by which a result column tells what it holds.
const char* DeclaredType(FieldType type);

}  // namespace dao
