// SPDX-License-Identifier: MIT
#include "platform/jet/table/Autonumbers.h"

#include "platform/jet/index/Counters.h"
#include "platform/jet/index/TableIndexes.h"
#include "platform/jet/rows/StoredTable.h"

#include <random>
#include <variant>

namespace jet {

namespace {

Guid RandomGuid() {
  std::random_device random;
  Guid guid;
  for (std::uint8_t& byte : guid.bytes)
    byte = static_cast<std::uint8_t>(random());
  guid.bytes[7] = static_cast<std::uint8_t>((guid.bytes[7] & 0x0F) | 0x40);
  guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3F) | 0x80);
  return guid;
}

}  // namespace

Autonumbers::Autonumbers(const StoredTable& table, Counters& counters, TableIndexes& indexes)
    : table_(table), counters_(counters), indexes_(indexes) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    if (table.columns[i].IsAutonumber()) columns_.push_back(i);
  }
}

void Autonumbers::Fill(std::vector<Value>& values) {
  for (const std::size_t column : columns_) {
    if (!IsNull(values[column])) continue;
    if (table_.columns[column].Type() == ColumnType::Guid) {
      values[column] = RandomGuid();
    } else {
      values[column] = Next(column);
    }
  }
}

// The stored last number is too low in some real files: then the largest existing number is used.
std::int64_t Autonumbers::Next(std::size_t column) {
  const std::int64_t next = std::int64_t{counters_.LastAutonumber()} + 1;
  const auto largest = indexes_.LargestIfTaken(column, next);
  return largest ? *largest + 1 : next;
}

void Autonumbers::Note(std::size_t column, const Value& value) {
  if (!table_.columns[column].IsAutonumber()) return;
  if (const auto* number = std::get_if<std::int64_t>(&value)) counters_.RaiseAutonumber(*number);
}

}  // namespace jet
