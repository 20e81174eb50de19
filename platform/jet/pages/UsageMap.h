// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/MapLayout.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jet {

// A set of page numbers, as kept in one row of a data page: which pages a table, an index or a memo column owns, which
// have room, or (the global map) which are free.
class UsageMap {
 public:
  // Reads the map at `where`. Members past the end of the file are left out. `where` 0 is the empty map.
  static UsageMap Read(PageSource& pages, RowId where);

  bool Contains(std::uint32_t page) const { return page < bits_.size() && bits_[page]; }
  // All members, ascending.
  std::vector<std::uint32_t> Members() const;
  // Page numbers past the end of the file that the map names all the same, ascending: natural in the global map,
  // damage elsewhere.
  const std::vector<std::uint32_t>& PastEnd() const { return pastEnd_; }
  // Pages the map itself lives on besides its row: bitmap pages.
  const std::vector<std::uint32_t>& BitmapPages() const { return bitmapPages_; }
  // The first page that the row itself has a bit for; 0 where the bits are on bitmap pages.
  std::uint32_t FirstPage() const { return firstPage_; }
  // First page past what the map can tell about.
  std::uint32_t End() const { return end_; }
  // Whether the map has a bit for the page. A bitmap page that is not there stands for bits that are all clear.
  bool HasBitFor(std::uint32_t page) const;

 private:
  void AddBits(PageSource& pages, const MapLayout::Run& run);

  std::vector<bool> bits_;  // by page number
  std::vector<std::uint32_t> pastEnd_;
  std::vector<std::uint32_t> bitmapPages_;
  std::vector<MapLayout::Run> runs_;
  std::uint32_t firstPage_ = 0;
  std::uint32_t end_ = 0;
};

}  // namespace jet
