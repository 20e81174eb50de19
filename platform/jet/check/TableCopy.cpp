// SPDX-License-Identifier: MIT
#include "platform/jet/check/TableCopy.h"

#include "platform/jet/database/TableCreator.h"
#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/index/IndexKey.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/rows/LongValueCopy.h"
#include "platform/jet/rows/RowFiller.h"
#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTableBuilder.h"
#include "platform/jet/table/Catalog.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Value.h"

#include <algorithm>
#include <optional>

namespace jet {

namespace {

// The key of a row in an index; nothing when the index omits the row.
std::optional<Bytes> KeyOf(PageSource& pages, const StoredTable& table, const StoredIndex& index, const RowView& row) {
  std::vector<Value> values(index.fields.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    ReadField(pages, row, *table.ColumnByNumber(index.fields[i].column), values[i]);
  const bool ignoresNulls = (index.flags & StoredIndex::kIgnoreNulls) != 0;
  if (ignoresNulls && std::ranges::all_of(values, IsNull)) return std::nullopt;
  return BuildKey(table, index, values);
}

}  // namespace

std::uint32_t PlaceIn(const TablePlaces& places, std::uint32_t table) {
  const auto found = places.find(table);
  return found != places.end() ? found->second : table;
}

TableCopy::TableCopy(PageSource& source, const StoredTable& table, Transaction& target, PageSpace& space,
                     UsageMapAllocator& maps, const TablePlaces& places)
    : source_(source),
      table_(table),
      target_(target),
      space_(space),
      places_(places),
      copy_(table),
      trees_(table.realIndexes.size()) {
  MakePlaces(maps);
}

void TableCopy::MakePlaces(UsageMapAllocator& maps) {
  copy_.page = places_.at(table_.page);
  copy_.ownedMap = maps.Add();
  copy_.freeMap = maps.Add();
  for (StoredColumn& column : copy_.columns) {
    longValues_.emplace_back();
    if (!column.IsLong()) continue;
    if (column.ownedMap != 0) column.ownedMap = maps.Add();
    if (column.freeMap != 0) column.freeMap = maps.Add();
    longValues_.back() = std::make_unique<LongValueCopy>(source_, target_, space_, column);
  }
  for (StoredIndex& index : copy_.realIndexes) {
    index.map = maps.Add();
    index.root = space_.Allocate();
    FormatIndexRoot(target_, index.root, copy_.page);
    UsageMapEditor(target_, index.map).Add(space_, index.root);
  }
  for (LogicalIndexDef& index : copy_.logicalIndexes)
    index.partnerTable = PlaceIn(places_, index.partnerTable);
}

TableCopy::~TableCopy() = default;

void TableCopy::Run() {
  CopyRows();
  FillIndexes();
  WriteDefinition();
}

void TableCopy::CopyRows() {
  RowSpace space(target_, space_, copy_.page, copy_.ownedMap, copy_.freeMap);
  RowFiller filler = space.Filler();
  RowScan scan(source_, table_);
  while (scan.Next())
    CopyRow(scan.Id(), scan.Row(), filler);
  filler.Finish();
  copy_.rowCount = static_cast<std::uint32_t>(rows_.size());
}

void TableCopy::CopyRow(RowId id, ByteView row, RowFiller& filler) {
  row_.assign(row.begin(), row.end());
  const RowView view(row_, table_);
  for (std::size_t i = 0; i < table_.columns.size(); ++i) {
    const StoredColumn& column = table_.columns[i];
    if (longValues_[i] == nullptr || !view.Bit(column)) continue;
    const ByteView stored = view.BytesOf(column);
    longValues_[i]->Copy(ByteSpan(row_).subspan(static_cast<std::size_t>(stored.data() - row_.data()), stored.size()));
  }
  MoveReferences(table_, places_, row_);
  rows_.emplace_back(id, filler.Add(row_));
  NoteKeys(rows_.back().second);
}

void TableCopy::NoteKeys(RowId row) {
  const RowView view(row_, table_);
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    if (trees_[i].takesOldKeys) continue;
    try {
      std::optional<Bytes> entry = KeyOf(target_, table_, table_.realIndexes[i], view);
      if (!entry) continue;
      IndexWriter::AppendPlace(*entry, row);
      trees_[i].entries.Add(*entry);
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::UnknownCharacter && error.Code() != ErrorCode::Unsupported) throw;
      trees_[i].takesOldKeys = true;
    }
  }
}

// A program that knows keys that are unknown here may also weigh other characters differently, so all keys of the index
// are copied.
void TableCopy::TakeOldKeys(std::size_t index) {
  EntryList entries;
  IndexCursor cursor(source_, table_.page, table_.realIndexes[index].root);
  for (cursor.SeekFirst(); cursor.Valid(); cursor.Next()) {
    const auto row = std::ranges::lower_bound(rows_, cursor.Row(), {}, &std::pair<RowId, RowId>::first);
    if (row == rows_.end() || row->first != cursor.Row()) throw Damage("een index noemt een rij die er niet is");
    Bytes entry(cursor.Key().begin(), cursor.Key().end());
    IndexWriter::AppendPlace(entry, row->second);
    entries.Add(entry);
  }
  trees_[index].entries = std::move(entries);
}

void TableCopy::FillIndexes() {
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    if (trees_[i].takesOldKeys) TakeOldKeys(i);
    EntryList& entries = trees_[i].entries;
    entries.Sort();
    StoredIndex& index = copy_.realIndexes[i];
    index.compactedEntries = static_cast<std::uint32_t>(entries.Count());
    index.distinctKeys = static_cast<std::uint32_t>(IndexWriter::CountKeys(entries));
    IndexWriter(target_, space_, copy_.page, index).Fill(entries);
  }
}

void TableCopy::WriteDefinition() {
  Bytes stream = ReadTableDefStream(source_, table_);
  MoveTableDef(stream, copy_);
  WriteStoredTable(target_, space_, copy_.page, stream);
}

void MoveReferences(const StoredTable& table, const TablePlaces& places, ByteSpan row) {
  constexpr std::uint16_t kObject = 0;  // column number of the object, the same in both tables
  if (table.page != kObjectsTable && table.page != kAccessTable) return;
  const StoredColumn* column = table.ColumnByNumber(kObject);
  const RowView view(row, table);
  if (column == nullptr || column->Type() != ColumnType::Long || !view.Bit(*column)) return;
  const ByteView stored = view.BytesOf(*column);
  Store(row.data() + (stored.data() - row.data()), PlaceIn(places, LoadU32(stored.data())));
}

}  // namespace jet
