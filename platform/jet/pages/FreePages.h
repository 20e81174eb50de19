// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/RowId.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/pages/UsageMapEditor.h"

#include <cstdint>
#include <vector>

namespace jet {

// The map of free pages: row 0 of page 1.
constexpr RowId kFreePagesMap = MakeRowId(1, 0);
constexpr RowId kSecondMap = MakeRowId(1, 1);  // of the same page; its meaning is not known, it is kept

// Damage when no page can be taken from the map: it calls a system page free, or the next page that it would give out
// lies far past the file's end. `pageCount`: pages of the file.
void RequireUsable(const UsageMap& freePages, std::uint32_t pageCount);

// The pages that the file calls free, also those past its end. The map makes itself reach further where it must: in a
// longer row, or with bitmap pages. Bitmap pages come from the end of the file, never out of the map itself.
class FreePages {
 public:
  explicit FreePages(Transaction& pages) : pages_(pages), map_(pages, kFreePagesMap) {}

  bool Contains(std::uint32_t page) { return map_.Contains(page); }
  // The page to be given out next: the lowest that is free, mostly the first past the end when the file is full.
  std::uint32_t Next();
  void Add(std::uint32_t page);
  void Remove(std::uint32_t page) { map_.Remove(page); }

 private:
  // What an inline map said before it became another.
  struct Window {
    std::uint32_t first = 0;
    Bytes bits;
  };

  void Reach(std::uint32_t page);
  bool Lengthen(const Window& before, std::uint32_t first, std::uint32_t end);
  void UseBitmapPages(const Window& before);
  void AddBitmapPage(std::size_t entry, const Window& before);
  bool WasFree(const Window& before, std::uint32_t page);

  Transaction& pages_;
  UsageMapEditor map_;
};

}  // namespace jet
