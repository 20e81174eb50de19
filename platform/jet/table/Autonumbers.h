// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/Counters.h"
#include "platform/jet/index/TableIndexes.h"

#include <cstdint>
#include <vector>

namespace jet {

// Numbers the rows of a table that has autonumber columns. Values are in the order of StoredTable::columns.
class Autonumbers {
 public:
  // All must outlive it.
  Autonumbers(const StoredTable& table, Counters& counters, TableIndexes& indexes);

  // Gives a value to autonumber columns that have none.
  void Fill(std::vector<Value>& values);
  // Takes note of the number that a row has, so that it is not given again.
  void Note(std::size_t column, const Value& value);

 private:
  std::int64_t Next(std::size_t column);

  const StoredTable& table_;
  Counters& counters_;
  TableIndexes& indexes_;
  std::vector<std::size_t> columns_;  // places of the autonumber columns
};

}  // namespace jet
