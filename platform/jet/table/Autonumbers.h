// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <cstdint>
#include <vector>

namespace jet {

class Counters;
class TableIndexes;
struct StoredTable;

// Assigns values to autonumber columns. Values are in the order of StoredTable::columns.
class Autonumbers {
 public:
  // All must outlive it.
  Autonumbers(const StoredTable& table, Counters& counters, TableIndexes& indexes);

  // Sets the autonumber columns that are null.
  void Fill(std::vector<Value>& values);
  // Records a number in use, so that it is not assigned again.
  void Note(std::size_t column, const Value& value);

 private:
  std::int64_t Next(std::size_t column);

  const StoredTable& table_;
  Counters& counters_;
  TableIndexes& indexes_;
  std::vector<std::size_t> columns_;  // positions of the autonumber columns
};

}  // namespace jet
