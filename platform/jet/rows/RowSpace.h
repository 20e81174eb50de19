// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/RowPage.h"
#include "platform/jet/pages/UsageMapEditor.h"

#include <optional>
#include <span>
#include <vector>

namespace jet {

class RowFiller;

// The data pages of one table or of one memo or OLE column: places new rows and frees emptied pages.
class RowSpace {
 public:
  // `owner`: the owner field of the pages. `ownedMap`, `freeMap`: the maps of its pages and of those with room.
  RowSpace(Transaction& pages, PageSpace& space, std::uint32_t owner, RowId ownedMap, RowId freeMap)
      : pages_(pages), space_(space), owner_(owner), owned_(pages, ownedMap), free_(pages, freeMap) {}

  bool IsEmpty() { return !owned_.HighestBelow(~0U) && !free_.HighestBelow(~0U); }
  // Fills new pages with rows; only for an empty RowSpace, which must not be used otherwise until Finish.
  RowFiller Filler();

  // Adds a row where there is room and returns its RowId.
  RowId Add(ByteView row, SlotKind kind = SlotKind::Row);
  // Adds a row on a new page that takes no further rows.
  RowId AddAlone(ByteView row);
  // Replaces the row's bytes on its page. False when they do not fit.
  bool ReplaceInPlace(RowId row, ByteView bytes, SlotKind kind);
  // Deletes rows page by page and frees pages that become empty. Throws Damage when a row is listed twice.
  void Delete(std::vector<RowId> rows);
  // Frees all pages at once; returns the number of rows, moved ones counted once. Throws Damage, before anything
  // changes, when a page does not belong to the owner.
  std::size_t Clear();

 private:
  RowPage NewPage(bool takesMore);
  RowPage& PageWithRoom(std::size_t bytes);
  void DeleteOnPage(std::uint32_t page, std::span<const RowId> rows);
  std::size_t CountRows(std::uint32_t page);

  Transaction& pages_;
  PageSpace& space_;
  std::uint32_t owner_;
  UsageMapEditor owned_;
  UsageMapEditor free_;
  std::optional<RowPage> last_;  // page of the last row; in the map of pages with room
};

}  // namespace jet
