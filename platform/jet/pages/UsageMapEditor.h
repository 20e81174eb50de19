// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/MapLayout.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jet {

// Changes one usage map. Stateless: each call looks up where its bit is.
class UsageMapEditor {
 public:
  UsageMapEditor(Transaction& pages, RowId where) : pages_(pages), where_(where) {}

  bool Contains(std::uint32_t page) { return Layout().Contains(pages_, page); }
  // Extends the map where needed, with bitmap pages from `space`. Not for the map of free pages itself: see FreePages.
  void Add(PageSpace& space, std::uint32_t page);
  // Adds a page if the map has a bit for it; otherwise returns false.
  bool AddCovered(std::uint32_t page);
  void Remove(std::uint32_t page);
  // Removes all members and frees the bitmap pages; the map is inline again, as a new one.
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
  void Reset(std::uint8_t kind);
  bool MoveWindow(std::uint32_t page);
  void UseBitmapPages(PageSpace& space);
  void AddBitmapPage(PageSpace& space, std::size_t entry);

  Transaction& pages_;
  RowId where_;
};

}  // namespace jet
