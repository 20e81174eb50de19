// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/EntryList.h"
#include "platform/jet/rows/StoredTable.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace jet {

class LongValueCopy;
class PageSpace;
class RowFiller;
class Transaction;
class UsageMapAllocator;

// Definition pages of tables in the new file, by page in the old file.
using TablePlaces = std::map<std::uint32_t, std::uint32_t>;
// The new number of a table; other numbers are returned as they are.
std::uint32_t PlaceIn(const TablePlaces& places, std::uint32_t table);

// Copies one table to a new file: definition, rows and long values byte for byte except for page numbers; indexes are
// built again. Rows keep their order.
class TableCopy {
 public:
  // `maps`: allocates the table's usage maps. The table's page in `places` must be allocated already. All must outlive
  // it.
  TableCopy(PageSource& source, const StoredTable& table, Transaction& target, PageSpace& space,
            UsageMapAllocator& maps, const TablePlaces& places);
  ~TableCopy();
  TableCopy(const TableCopy&) = delete;
  TableCopy& operator=(const TableCopy&) = delete;

  // Throws Error (Damaged) when part of the table is unreadable.
  void Run();

 private:
  struct Tree {
    EntryList entries;
    bool takesOldKeys = false;  // a key cannot be computed here, so all are copied from the old index
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
  std::vector<std::unique_ptr<LongValueCopy>> longValues_;  // by column; null for other types
  std::vector<Tree> trees_;
  std::vector<std::pair<RowId, RowId>> rows_;  // old and new, both ascending
  Bytes row_;                                  // reused buffer
};

// Replaces the table numbers in a row of a system table by those of the new file.
void MoveReferences(const StoredTable& table, const TablePlaces& places, ByteSpan row);

// Whether `copy`, read from `target`, has the definition and the rows of `table`.
bool IsFaithfulCopy(PageSource& source, const StoredTable& table, PageSource& target, const TablePlaces& places);

}  // namespace jet
