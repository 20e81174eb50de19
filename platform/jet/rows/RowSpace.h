// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/RowPage.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/rows/RowFiller.h"

#include <optional>
#include <span>
#include <vector>

namespace jet {

// The data pages of one table, or of one memo or OLE column: where new rows go, and what becomes of emptied pages.
class RowSpace {
 public:
  // `owner` stands in the pages' heads; the maps tell which pages are owned and which have room.
  RowSpace(Transaction& pages, PageSpace& space, std::uint32_t owner, RowId ownedMap, RowId freeMap)
      : pages_(pages), space_(space), owner_(owner), owned_(pages, ownedMap), free_(pages, freeMap) {}

  bool IsEmpty() { return !owned_.HighestBelow(~0U) && !free_.HighestBelow(~0U); }
  // Fills pages of it with rows, which it must be empty for. Until the filler is done nothing else is asked of it.
  RowFiller Filler() { return {pages_, space_, owner_, owned_, free_}; }

  // Puts a row where there is room; answers where.
  RowId Add(ByteView row, SlotKind kind = SlotKind::Row);
  // Puts a row on a page of its own that takes no others.
  RowId AddAlone(ByteView row);
  // Gives the row other bytes on its page. False when they do not fit there.
  bool ReplaceInPlace(RowId row, ByteView bytes, SlotKind kind);
  // Deletes the rows' slots, page by page, and gives a page back when none is left on it. Damage when one is named
  // twice.
  void Delete(std::vector<RowId> rows);
  // Gives every page back at once; answers how many rows there were, moved ones counted once. Damage, before anything
  // changes, when a page is not of the owner.
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
  std::optional<RowPage> last_;  // where the last row went; in the map of pages with room
};

}  // namespace jet
