// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/MapLayout.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jet {

// A set of page numbers, stored in one row of a data page: the pages that a table, index or memo column owns, those
// with room, or (the map of free pages) all free pages.
class UsageMap {
 public:
  // Reads the map at `where`. Members past the end of the file are only in PastEnd(). `where` 0 is the empty map.
  static UsageMap Read(PageSource& pages, RowId where);

  bool Contains(std::uint32_t page) const { return page < bits_.size() && bits_[page]; }
  // All members, ascending.
  std::vector<std::uint32_t> Members() const;
  // Members past the end of the file, ascending: normal in the map of free pages, damage elsewhere.
  const std::vector<std::uint32_t>& PastEnd() const { return pastEnd_; }
  // The bitmap pages of the map itself.
  const std::vector<std::uint32_t>& BitmapPages() const { return bitmapPages_; }
  // The first page that an inline map has a bit for; 0 for a map with bitmap pages.
  std::uint32_t FirstPage() const { return firstPage_; }
  // The first page after those that the map covers.
  std::uint32_t End() const { return end_; }
  // Where the bits are, ascending by page.
  const std::vector<MapLayout::Run>& Runs() const { return runs_; }

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
