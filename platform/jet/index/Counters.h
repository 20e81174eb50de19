// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/StoredTable.h"

#include <cstdint>
#include <vector>

namespace jet {

// The counters in a table's definition. Wrong in some real files: updated, but never relied on.
class Counters {
 public:
  Counters(Transaction& pages, const StoredTable& table)
      : pages_(pages), definition_(table.page), definitionPages_(table.pages) {}

  // `change`: number of added rows; negative for removed ones.
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
