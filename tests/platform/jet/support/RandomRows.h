// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Definition.h"
#include "platform/jet/values/Value.h"

#include <random>
#include <vector>

namespace jet::test {

// Random values of every type: nulls, empty and longest texts, extremes, memos of every stored form.
class RandomRows {
 public:
  explicit RandomRows(unsigned seed) : random_(seed) {}

  std::vector<Value> Row(const TableDefinition& table);
  Value For(const ColumnDefinition& column);
  std::size_t Below(std::size_t limit) { return random_() % limit; }

 private:
  std::u16string Text(std::size_t most);
  Bytes Binary(std::size_t most);
  std::size_t LongLength();
  std::int64_t Whole(std::int64_t low, std::int64_t high);

  std::mt19937 random_;
};

}  // namespace jet::test
