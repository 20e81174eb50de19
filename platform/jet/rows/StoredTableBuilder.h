// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/rows/StoredTable.h"

namespace jet {

// Order of columns and long-value columns in a stream.
enum class BlockOrder { ByNumber, ByName };

// Builds the byte stream that ReadStoredTable parses: everything in `table` except its pages and lengths.
Bytes BuildStoredTable(const StoredTable& table, BlockOrder order);

// Writes a stream to page `first` and as many pages from `space` as it needs.
void WriteStoredTable(Transaction& pages, PageSpace& space, std::uint32_t first, const Bytes& stream);

}  // namespace jet
