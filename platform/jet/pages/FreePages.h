// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/RowId.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/values/Bytes.h"

#include <cstdint>
#include <vector>

namespace jet {

// The map of free pages: row 0 of page 1.
constexpr RowId kFreePagesMap = MakeRowId(1, 0);
constexpr std::uint32_t kFreePagesPage = PageOf(kFreePagesMap);
constexpr RowId kSecondMap = MakeRowId(1, 1);  // on the same page; its meaning is unknown, so it is preserved

// Throws Damage when the file cannot grow by this map: it marks a system page as free, or marks so many pages past the
// end of the file as used that the file would grow by all of these. `pageCount`: pages in the file.
void RequireUsable(const UsageMap& freePages, std::uint32_t pageCount);

// The map of free pages, including those past the end of the file. It grows when needed, with a longer row or with
// bitmap pages. Bitmap pages are appended to the file, never taken from the map itself.
class FreePages {
 public:
  explicit FreePages(Transaction& pages) : pages_(pages), map_(pages, kFreePagesMap) {}

  bool Contains(std::uint32_t page) { return map_.Contains(page); }
  // The next page to allocate: the lowest free one, usually the first past the end when no page in the file is free.
  std::uint32_t Next();
  void Add(std::uint32_t page);
  void Remove(std::uint32_t page) { map_.Remove(page); }

 private:
  // The bits of an inline map before it was replaced.
  struct Window {
    std::uint32_t first = 0;
    Bytes bits;
  };

  std::uint32_t FirstUncovered();
  void CoverPage(std::uint32_t page);
  bool GrowRow(const Window& before, std::uint32_t first, std::uint32_t end);
  void UseBitmapPages(const Window& before);
  void AddBitmapPage(std::size_t entry, const Window& before);
  bool WasFree(const Window& before, std::uint32_t page);

  Transaction& pages_;
  UsageMapEditor map_;
};

}  // namespace jet
