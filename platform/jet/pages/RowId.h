// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace jet {

// A row's identity: the page and slot where it was first put, page * 256 + slot. It stays the same when the row moves.
// Stored in files as a row pointer (u8 slot, u24 page, little-endian).
using RowId = std::uint32_t;

constexpr RowId MakeRowId(std::uint32_t page, std::uint32_t slot) {
  return page << 8 | slot;
}
constexpr std::uint32_t PageOf(RowId row) {
  return row >> 8;
}
constexpr std::uint32_t SlotOf(RowId row) {
  return row & 0xFF;
}

}  // namespace jet
