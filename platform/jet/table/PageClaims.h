// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/pages/RowId.h"

#include <cstdint>
#include <map>
#include <set>

namespace jet {

// Pages that the file calls free and that are not to be taken just so. Empty for a file as this library writes it.
struct DoubtfulFreePages {
  // In use all the same: by a definition, a table, an index, a long value or a map; whoever took one of them would
  // overwrite what it holds. With them the pages past the end of the file that some map names already. Where a
  // definition or a map cannot be read, nothing says what is in use: then all free pages that hold anything.
  std::set<std::uint32_t> inUse;
  // Emptied index pages (all zeros) that are still in the map of an index, and that map. They may be taken once they
  // are taken out of it.
  std::multimap<std::uint32_t, RowId> stillInIndexMap;
};

// Damage when the map of free pages itself cannot be used.
DoubtfulFreePages FindDoubtfulFreePages(PageSource& pages);

}  // namespace jet
