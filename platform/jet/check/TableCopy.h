// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/EntryList.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/rows/LongValueCopy.h"
#include "platform/jet/rows/StoredTable.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace jet {

// Where the definitions of tables go in a new file, by where they are in the old one.
using TablePlaces = std::map<std::uint32_t, std::uint32_t>;
// The new number of a table; that of anything else stays.
std::uint32_t PlaceIn(const TablePlaces& places, std::uint32_t table);

// Copies one table to a new file: its definition, rows and long values byte for byte, but for the page numbers in
// them; the indexes are filled again. Rows keep their order.
class TableCopy {
 public:
  // `maps` takes the table's usage maps. The page that `places` has for the table is in use already. All must outlive
  // it.
  TableCopy(PageSource& source, const StoredTable& table, Transaction& target, PageSpace& space,
            UsageMapAllocator& maps, const TablePlaces& places);

  // An Error (Damaged) for what cannot be read of the table.
  void Run();

 private:
  struct Tree {
    EntryList entries;
    bool takesOldKeys = false;  // some key cannot be computed here, so that all come from the old index
  };

  void MakePlaces(UsageMapAllocator& maps);
  void CopyRows();
  void CopyRow(RowId id, ByteView row, RowFiller& filler);
  void NoteKeys(RowId row);
  void TakeOldKeys(std::size_t index);
  void FillIndexes();
  void WriteDefinition();

  PageSource& source_;
  const StoredTable& table_;
  Transaction& target_;
  PageSpace& space_;
  const TablePlaces& places_;
  StoredTable copy_;
  std::vector<std::unique_ptr<LongValueCopy>> longValues_;  // by column; none for the others
  std::vector<Tree> trees_;
  std::vector<std::pair<RowId, RowId>> rows_;  // old and new, both ascending
  Bytes row_;                                  // being copied; kept for its memory
};

// Makes the table numbers in a row of a system table those of the new file.
void MoveReferences(const StoredTable& table, const TablePlaces& places, ByteSpan row);

// Whether `copy`, read from `target`, has the definition and the rows of `table`.
bool IsFaithfulCopy(PageSource& source, const StoredTable& table, PageSource& target, const TablePlaces& places);

}  // namespace jet
