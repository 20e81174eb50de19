// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/RowId.h"

#include <cstdint>
#include <map>
#include <set>

namespace jet {

// Pages marked as free that must not be allocated as they are. Empty for files that this library wrote.
struct DoubtfulFreePages {
  // Pages that a definition, table, index, long value or map uses, and pages past the end of the file that a map
  // contains. When a definition or map cannot be read, all free pages that are not blank.
  std::set<std::uint32_t> inUse;
  // Emptied index pages (all zeros) that are still in the map of an index, with that map. They may be allocated after
  // they are removed from it.
  std::multimap<std::uint32_t, RowId> stillInIndexMap;
};

// Throws Damage when the map of free pages itself is unusable.
DoubtfulFreePages FindDoubtfulFreePages(PageSource& pages);

}  // namespace jet
