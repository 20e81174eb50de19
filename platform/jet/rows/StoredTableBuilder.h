// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/rows/StoredTable.h"

namespace jet {

// In which order columns and long-value columns stand in a stream.
enum class BlockOrder { ByNumber, ByName };

// The byte stream that ReadStoredTable takes apart: everything in `table` but its pages and lengths.
Bytes BuildStoredTable(const StoredTable& table, BlockOrder order);

// Writes a stream to the page `first` and as many more from `space` as it needs.
void WriteStoredTable(Transaction& pages, PageSpace& space, std::uint32_t first, const Bytes& stream);

}  // namespace jet
