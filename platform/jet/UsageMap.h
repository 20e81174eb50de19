#pragma once

#include "platform/jet/Pages.h"
#include "platform/jet/RowId.h"

#include <cstdint>
#include <vector>

namespace jet {

/// A set of page numbers, as kept in one row of a data page: which pages a table, an index or a memo column owns, which
/// have room, or (the global map) which are free.
class UsageMap {
 public:
  /// Reads the map at `where`. Members past the end of the file are left out. `where` 0 is the empty map.
  static UsageMap Read(PageSource& pages, RowId where);

  bool Contains(std::uint32_t page) const { return page < bits_.size() && bits_[page]; }
  /// All members, ascending.
  std::vector<std::uint32_t> Members() const;
  /// Page numbers past the end of the file that the map names all the same: natural in the global map, damage
  /// elsewhere.
  const std::vector<std::uint32_t>& PastEnd() const { return pastEnd_; }
  /// Pages the map itself lives on besides its row: bitmap pages.
  const std::vector<std::uint32_t>& BitmapPages() const { return bitmapPages_; }
  /// First page past what the map can tell about.
  std::uint64_t End() const { return end_; }

 private:
  void AddBits(ByteView bitmap, std::uint64_t firstPage);

  std::vector<bool> bits_;  // by page number
  std::vector<std::uint32_t> pastEnd_;
  std::vector<std::uint32_t> bitmapPages_;
  std::uint64_t end_ = 0;
};

}  // namespace jet
