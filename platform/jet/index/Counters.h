// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/StoredTable.h"

#include <cstdint>
#include <vector>

namespace jet {

// The numbers that a table's definition keeps about its rows. Stale in some real files: kept up, never relied on.
class Counters {
 public:
  Counters(Transaction& pages, const StoredTable& table)
      : pages_(pages), definition_(table.page), definitionPages_(table.pages) {}

  // `change`: rows more or, negative, fewer.
  void CountRows(std::int64_t change);
  void CountNoRows();
  void CountNewKeys(const StoredIndex& index, std::size_t keys = 1);
  std::int32_t LastAutonumber();
  void RaiseAutonumber(std::int64_t number);

 private:
  Transaction& pages_;
  std::uint32_t definition_;
  std::vector<std::uint32_t> definitionPages_;
};

}  // namespace jet
