// SPDX-License-Identifier: MIT
#include "platform/jet/rows/StoredTableBuilder.h"

#include "platform/jet/rows/StoredTableFormat.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Names.h"
#include "platform/jet/values/StoredText.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace jet {

using namespace table_definition;

namespace {

constexpr std::uint32_t kRealIndexMark = 1923;
constexpr std::size_t kStreamLengthAt = 8;

class StreamWriter {
 public:
  template <typename Number>
  void Add(Number number) {
    bytes_.resize(bytes_.size() + sizeof number);
    Store(bytes_.data() + bytes_.size() - sizeof number, number);
  }
  void AddU8(unsigned number) { Add(static_cast<std::uint8_t>(number)); }
  void AddU16(std::size_t number) { Add(static_cast<std::uint16_t>(number)); }
  void AddU32(std::size_t number) { Add(static_cast<std::uint32_t>(number)); }
  void AddZeros(std::size_t count) { bytes_.resize(bytes_.size() + count); }
  void AddName(std::u16string_view name) {
    const Bytes text = EncodeText(name, false);
    AddU16(text.size());
    bytes_.insert(bytes_.end(), text.begin(), text.end());
  }
  Bytes Finish() {
    Store(&bytes_[kStreamLengthAt], static_cast<std::uint32_t>(bytes_.size()));
    return std::move(bytes_);
  }

 private:
  Bytes bytes_;
};

void AddHead(StreamWriter& out, const StoredTable& table) {
  out.AddU8(static_cast<unsigned>(PageType::Definition));
  out.AddU8(1);
  out.AddZeros(10);  // free bytes, next page, length
  out.AddU32(kBlockMark);
  out.AddU32(table.rowCount);
  out.AddU32(table.lastAutonumber);
  out.AddU8(1);
  out.AddZeros(15);
  out.AddU8(table.system ? 'S' : 'N');
  out.AddU16(table.maxColumns);
  out.AddU16(table.variableColumns);
  out.AddU16(table.columns.size());
  out.AddU32(table.logicalIndexes.size());
  out.AddU32(table.realIndexes.size());
  out.AddU32(table.ownedMap);
  out.AddU32(table.freeMap);
  for (const StoredIndex& index : table.realIndexes) {
    out.AddU32(0);
    out.AddU32(index.distinctKeys);
    out.AddU32(0);
  }
}

void AddColumn(StreamWriter& out, const StoredColumn& column) {
  out.AddU8(column.rawType);
  out.AddU32(kBlockMark);
  out.AddU16(column.number);
  out.AddU16(column.variableIndex);
  out.AddU16(column.display);
  if (column.Type() == ColumnType::Decimal) {
    out.AddU8(column.precision);
    out.AddU8(column.scale);
    out.AddZeros(2);
  } else {
    out.AddU16(column.sortOrder.language);
    out.AddU8(0);
    out.AddU8(column.sortOrder.version);
  }
  out.AddU8(column.flags);
  out.AddU8(column.extraFlags);
  out.AddU32(0);
  out.AddU16(column.fixedOffset);
  out.AddU16(column.length);
}

void AddRealIndex(StreamWriter& out, const StoredIndex& index) {
  out.AddU32(kRealIndexMark);
  for (std::size_t i = 0; i < kIndexFields; ++i) {
    const bool used = i < index.fields.size();
    out.AddU16(used ? index.fields[i].column : 0xFFFF);
    out.AddU8(used && index.fields[i].ascending ? 1 : 0);
  }
  out.AddU32(index.map);
  out.AddU32(index.root);
  out.AddU32(0);
  out.AddU8(index.flags);
  out.AddZeros(5);
}

void AddLogicalIndex(StreamWriter& out, const LogicalIndexDef& index) {
  out.AddU32(kBlockMark);
  out.Add(index.number);
  out.AddU32(index.realIndex);
  out.AddU8(index.side);
  out.Add(index.partnerIndex);
  out.AddU32(index.partnerTable);
  out.AddU8(index.cascadeUpdates);
  out.AddU8(index.cascadeDeletes);
  out.AddU8(static_cast<unsigned>(index.role));
  out.AddU32(0);
}

}  // namespace

Bytes BuildStoredTable(const StoredTable& table, BlockOrder order) {
  std::vector<const StoredColumn*> columns;
  for (const StoredColumn& column : table.columns)
    columns.push_back(&column);
  if (order == BlockOrder::ByName) {
    std::sort(columns.begin(), columns.end(),
              [](const StoredColumn* a, const StoredColumn* b) { return NameLess(a->name, b->name); });
  }
  StreamWriter out;
  AddHead(out, table);
  for (const StoredColumn* column : columns)
    AddColumn(out, *column);
  for (const StoredColumn* column : columns)
    out.AddName(column->name);
  for (const StoredIndex& index : table.realIndexes)
    AddRealIndex(out, index);
  for (const LogicalIndexDef& index : table.logicalIndexes)
    AddLogicalIndex(out, index);
  for (const LogicalIndexDef& index : table.logicalIndexes)
    out.AddName(index.name);
  for (const StoredColumn* column : columns) {
    if (!column->IsLong()) continue;
    out.AddU16(column->number);
    out.AddU32(column->ownedMap);
    out.AddU32(column->freeMap);
  }
  out.AddU16(0xFFFF);
  return out.Finish();
}

void WriteStoredTable(Transaction& pages, PageSpace& space, std::uint32_t first, const Bytes& stream) {
  std::uint32_t number = first;
  for (std::size_t at = 0; at < stream.size();) {
    const std::size_t head = at == 0 ? 0 : kContinuationHead;
    const std::size_t length = std::min(kPageSize - head, stream.size() - at);
    const bool isLast = at + length == stream.size();
    const std::uint32_t next = isLast ? 0 : space.Allocate();
    PageBytes& page = pages.Change(number);
    page = PageBytes{};
    std::memcpy(&page[head], &stream[at], length);
    page[0] = static_cast<std::uint8_t>(PageType::Definition);
    page[1] = 1;
    const std::size_t used = std::min(kPageSize - kContinuationHead, head + length);
    Store(&page[2], static_cast<std::uint16_t>(kPageSize - kContinuationHead - used));
    Store(&page[4], next);
    at += length;
    number = next;
  }
}

}  // namespace jet
