#pragma once

#include "platform/jet/pages/Transaction.h"
#include "platform/jet/rows/TableDef.h"

#include <cstdint>
#include <vector>

namespace jet {

/// The numbers that a table's definition keeps about its rows. Stale in some real files: kept up, never relied on.
class Counters {
 public:
  Counters(Transaction& pages, const TableDef& table)
      : pages_(pages), definition_(table.page), definitionPages_(table.pages) {}

  /// `change`: rows more or, negative, fewer.
  void CountRows(std::int64_t change);
  void CountNoRows();
  void CountNewKeys(const RealIndexDef& index, std::size_t keys = 1);
  std::int32_t LastAutonumber();
  void RaiseAutonumber(std::int64_t number);

 private:
  Transaction& pages_;
  std::uint32_t definition_;
  std::vector<std::uint32_t> definitionPages_;
};

}  // namespace jet
