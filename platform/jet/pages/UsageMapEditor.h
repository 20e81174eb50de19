// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/MapLayout.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jet {

// One usage map, to be changed. Where a bit lies is looked up at every call; nothing is kept.
class UsageMapEditor {
 public:
  UsageMapEditor(Transaction& pages, RowId where) : pages_(pages), where_(where) {}

  bool Contains(std::uint32_t page);
  // Makes the map reach further where it must, for which it takes pages from `space`. Not for the map of free pages,
  // which those pages come from: see FreePages.
  void Add(PageSpace& space, std::uint32_t page);
  // Adds a page that the map has a bit for; false when it has none.
  bool AddCovered(std::uint32_t page);
  void Remove(std::uint32_t page);
  // Takes out every member. Bitmap pages go back to `space`: the map is a short one again, as it was made.
  void Clear(PageSpace& space);
  // All members, from the highest down.
  std::vector<std::uint32_t> Members();
  // The highest member below `below`.
  std::optional<std::uint32_t> HighestBelow(std::uint32_t below);
  // The lowest member.
  std::optional<std::uint32_t> Lowest();

  MapLayout Layout() { return {pages_, where_}; }

 private:
  void Set(const MapLayout::Run& run, std::uint32_t page, bool on);
  void Blank(std::uint8_t kind);
  bool MoveWindow(std::uint32_t page);
  void UseBitmapPages(PageSpace& space);
  void AddBitmapPage(PageSpace& space, std::size_t entry);

  Transaction& pages_;
  RowId where_;
};

}  // namespace jet
