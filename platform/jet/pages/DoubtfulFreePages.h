// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/RowId.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace jet {

class PageSource;

// Pages marked as free that must not be allocated as they are. Empty for files that this library wrote.
struct DoubtfulFreePages {
  // Pages that a definition, table, index, long value or map uses, and pages past the end of the file that a map
  // contains. When a definition or map cannot be read, all free pages that are not blank.
  std::set<std::uint32_t> inUse;
  // Emptied index pages (all zeros) that are still in the map of an index, with that map. They may be allocated after
  // they are removed from it.
  std::multimap<std::uint32_t, RowId> stillInIndexMap;
};

// The pages of one file, found when the first page is allocated and kept for all its transactions until another program
// writes to the file.
struct DoubtfulFreePagesOfFile {
  // Finds the pages in the file; null: none are doubtful.
  DoubtfulFreePages (*find)(PageSource& pages) = nullptr;
  std::optional<DoubtfulFreePages> found;

  const DoubtfulFreePages& Get(PageSource& pages) {
    if (!found) found = find == nullptr ? DoubtfulFreePages() : find(pages);
    return *found;
  }
};

}  // namespace jet
