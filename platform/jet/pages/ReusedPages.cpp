// SPDX-License-Identifier: MIT
#include "platform/jet/pages/ReusedPages.h"

#include "platform/jet/pages/FreePages.h"
#include "platform/jet/pages/MapLayout.h"
#include "platform/jet/pages/Transaction.h"

#include <algorithm>

namespace jet {

std::vector<std::uint32_t> ReusedPages(Transaction& change) {
  PageSource& before = change.Before();
  std::vector<std::uint32_t> pages = change.Renewed();
  std::erase_if(pages, [&](std::uint32_t page) { return page >= before.PageCount(); });
  if (pages.empty()) return pages;
  const MapLayout freeBefore(before, kFreePagesMap);
  // A free page that an index still lists must stay as it is: it is sound only as long as it is blank.
  std::erase_if(pages, [&](std::uint32_t page) {
    return !freeBefore.Contains(before, page) || !change.IndexMapsWith(page).empty();
  });
  std::sort(pages.begin(), pages.end());
  pages.erase(std::unique(pages.begin(), pages.end()), pages.end());
  return pages;
}

}  // namespace jet
