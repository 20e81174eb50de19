// SPDX-License-Identifier: MIT
#include "platform/jet/rows/StoredTable.h"

#include "platform/jet/rows/StoredTableFormat.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/StoredText.h"

#include <algorithm>

namespace jet {

using namespace table_definition;

namespace {

constexpr std::size_t kNextPageAt = 4;
constexpr std::size_t kMaxDefinitionPages = 64;  // 255 columns and 32 indexes with the longest names need about 14
constexpr std::size_t kMaxReadIndexes = 1000;
constexpr std::size_t kHeadBytes = 63;
constexpr std::size_t kIndexCountBytes = 12;
constexpr std::size_t kColumnBytes = 25;
constexpr std::size_t kRealIndexBytes = 52;
constexpr std::size_t kLogicalIndexBytes = 28;
constexpr std::size_t kLengthAt = 8;
constexpr std::size_t kOwnedMapAt = 55;
constexpr std::size_t kFreeMapAt = 59;
// Offsets within their blocks.
constexpr std::size_t kIndexMapAt = 34;
constexpr std::size_t kIndexRootAt = 38;
constexpr std::size_t kPartnerTableAt = 17;
constexpr std::size_t kLongMapBytes = 10;
constexpr std::uint16_t kNoColumn = 0xFFFF;
constexpr std::uint16_t kEndMark = 0xFFFF;

// Parses the stream from front to back.
class StreamReader {
 public:
  StreamReader(ByteView stream, std::size_t at) : stream_(stream), at_(at) {}
  ByteView Take(std::size_t length) {
    const ByteView part = Part(stream_, at_, length);
    at_ += length;
    return part;
  }
  std::u16string TakeName() { return DecodePlainText(Take(LoadU16(Take(2).data()))); }
  std::size_t Position() const { return at_; }

 private:
  ByteView stream_;
  std::size_t at_;
};

Bytes ReadStream(PageSource& pages, std::uint32_t first, std::vector<std::uint32_t>& visited) {
  Bytes stream;
  stream.reserve(kPageSize);
  std::uint32_t number = first;
  do {
    const bool looped = std::find(visited.begin(), visited.end(), number) != visited.end();
    if (looped || visited.size() >= kMaxDefinitionPages) throw DamageAt(number, "de definitie verwijst in een kring");
    const PageRef page = ReadTyped(pages, number, PageType::Definition);
    visited.push_back(number);
    stream.insert(stream.end(), page->begin() + (number == first ? 0 : kContinuationHead), page->end());
    number = LoadU32(page->data() + kNextPageAt);
  } while (number != 0);
  return stream;
}

StoredColumn ParseColumn(ByteView block) {
  StoredColumn column;
  column.rawType = block[0];
  column.number = LoadU16(&block[5]);
  column.variableIndex = LoadU16(&block[7]);
  column.display = LoadU16(&block[9]);
  if (column.Type() == ColumnType::Decimal) {
    column.precision = block[11];
    column.scale = block[12];
  } else {
    column.sortOrder = {LoadU16(&block[11]), block[14]};
  }
  column.flags = block[15];
  column.extraFlags = block[16];
  column.fixedOffset = LoadU16(&block[21]);
  column.length = LoadU16(&block[23]);
  return column;
}

StoredIndex ParseRealIndex(ByteView block) {
  StoredIndex index;
  for (std::size_t i = 0; i < kIndexFields; ++i) {
    const std::uint8_t* field = &block[4 + 3 * i];
    if (LoadU16(field) != kNoColumn) index.fields.push_back({LoadU16(field), field[2] != 0});
  }
  index.map = LoadU32(&block[kIndexMapAt]);
  index.root = LoadU32(&block[kIndexRootAt]);
  index.flags = block[46];
  return index;
}

LogicalIndexDef ParseLogicalIndex(ByteView block) {
  LogicalIndexDef index;
  index.number = Load<std::int32_t>(&block[4]);
  index.realIndex = LoadU32(&block[8]);
  index.side = block[12];
  index.partnerIndex = Load<std::int32_t>(&block[13]);
  index.partnerTable = LoadU32(&block[kPartnerTableAt]);
  index.cascadeUpdates = block[21];
  index.cascadeDeletes = block[22];
  index.role = static_cast<LogicalIndexDef::Role>(block[23]);
  return index;
}

void ReadColumns(StreamReader& reader, std::size_t count, StoredTable& table) {
  for (std::size_t i = 0; i < count; ++i)
    table.columns.push_back(ParseColumn(reader.Take(kColumnBytes)));
  for (StoredColumn& column : table.columns)
    column.name = reader.TakeName();
}

void ReadLogicalIndexes(StreamReader& reader, std::size_t count, StoredTable& table) {
  for (std::size_t i = 0; i < count; ++i) {
    table.logicalIndexes.push_back(ParseLogicalIndex(reader.Take(kLogicalIndexBytes)));
  }
  for (LogicalIndexDef& index : table.logicalIndexes)
    index.name = reader.TakeName();
}

void ReadLongValueMaps(StreamReader& reader, StoredTable& table) {
  for (;;) {
    const std::uint16_t number = LoadU16(reader.Take(2).data());
    if (number == kEndMark) return;
    const ByteView maps = reader.Take(8);
    for (StoredColumn& column : table.columns) {
      if (column.number != number) continue;
      column.ownedMap = LoadU32(&maps[0]);
      column.freeMap = LoadU32(&maps[4]);
    }
  }
}

struct Counts {
  std::size_t columns;
  std::size_t logicalIndexes;
  std::size_t realIndexes;
};

Counts ParseHead(ByteView head, StoredTable& table) {
  table.length = LoadU32(&head[kLengthAt]);
  table.rowCount = LoadU32(&head[kRowCountAt]);
  table.lastAutonumber = LoadU32(&head[kAutonumberAt]);
  table.system = head[40] == 'S';
  table.maxColumns = LoadU16(&head[41]);
  table.variableColumns = LoadU16(&head[43]);
  table.ownedMap = LoadU32(&head[kOwnedMapAt]);
  table.freeMap = LoadU32(&head[kFreeMapAt]);
  const Counts counts{LoadU16(&head[45]), LoadU32(&head[47]), LoadU32(&head[51])};
  if (counts.columns > kMaxColumns || counts.logicalIndexes > kMaxReadIndexes || counts.realIndexes > kMaxReadIndexes) {
    throw Damage("te veel kolommen of indexen");
  }
  return counts;
}

void ParseStream(const Bytes& stream, StoredTable& table) {
  StreamReader reader(stream, 0);
  const Counts counts = ParseHead(reader.Take(kHeadBytes), table);
  const std::size_t indexCountsAt = reader.Position();
  reader.Take(counts.realIndexes * kIndexCountBytes);
  ReadColumns(reader, counts.columns, table);
  table.realIndexesAt = reader.Position();
  for (std::size_t i = 0; i < counts.realIndexes; ++i) {
    StoredIndex index = ParseRealIndex(reader.Take(kRealIndexBytes));
    index.distinctKeysAt = indexCountsAt + i * kIndexCountBytes + 4;
    index.compactedEntries = LoadU32(&stream[index.distinctKeysAt - 4]);
    index.distinctKeys = LoadU32(&stream[index.distinctKeysAt]);
    table.realIndexes.push_back(index);
  }
  table.logicalIndexesAt = reader.Position();
  ReadLogicalIndexes(reader, counts.logicalIndexes, table);
  table.longMapsAt = reader.Position();
  ReadLongValueMaps(reader, table);
  table.streamLength = static_cast<std::uint32_t>(reader.Position());
}

void CheckColumns(const StoredTable& table) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const StoredColumn& column = table.columns[i];
    if (column.number >= table.maxColumns) throw Damage("een kolomnummer is te groot");
    if (i > 0 && table.columns[i - 1].number == column.number) {
      throw Damage("twee kolommen hebben hetzelfde nummer");
    }
    if (!column.IsFixed() && column.Type() != ColumnType::Boolean && column.variableIndex >= table.variableColumns) {
      throw Damage("een kolom ligt buiten de rij");
    }
  }
}

void CheckIndexes(const StoredTable& table) {
  for (const StoredIndex& index : table.realIndexes) {
    for (const StoredIndex::Field& field : index.fields) {
      if (table.ColumnByNumber(field.column) == nullptr) {
        throw Damage("een index noemt een kolom die niet bestaat");
      }
    }
  }
  for (const LogicalIndexDef& index : table.logicalIndexes) {
    if (index.realIndex >= table.realIndexes.size()) throw Damage("een indexnaam heeft geen index");
  }
}

}  // namespace

bool StoredColumn::KnownType() const {
  return (rawType >= 1 && rawType <= 12) || (rawType >= 15 && rawType <= 17);
}

const StoredColumn* StoredTable::ColumnByNumber(std::uint16_t number) const {
  const auto found = std::lower_bound(columns.begin(), columns.end(), number,
                                      [](const StoredColumn& column, std::uint16_t n) { return column.number < n; });
  return found != columns.end() && found->number == number ? &*found : nullptr;
}

namespace {

// To be called from a handler.
[[noreturn]] void RethrowDamage(const Error& error, std::uint32_t page) {
  if (error.Code() != ErrorCode::Damaged) throw;
  throw Damage("tabeldefinitie op pagina " + std::to_string(page) + ": " + error.what());
}

}  // namespace

StoredTable ReadStoredTable(PageSource& pages, std::uint32_t page) {
  return ParseDefinition(ReadDefinition(pages, page));
}

DefinitionStream ReadDefinition(PageSource& pages, std::uint32_t page) try {
  DefinitionStream read;
  read.bytes = ReadStream(pages, page, read.pages);
  return read;
} catch (const Error& error) {
  RethrowDamage(error, page);
}

StoredTable ParseDefinition(const DefinitionStream& read) try {
  StoredTable table;
  table.page = read.pages.front();
  table.pages = read.pages;
  ParseStream(read.bytes, table);
  std::stable_sort(table.columns.begin(), table.columns.end(),
                   [](const StoredColumn& a, const StoredColumn& b) { return a.number < b.number; });
  CheckColumns(table);
  CheckIndexes(table);
  return table;
} catch (const Error& error) {
  RethrowDamage(error, read.pages.front());
}

void TakeCounters(Bytes& stream, StoredTable& table) {
  const auto take = [&](std::size_t at, std::uint32_t& counter) {
    counter = LoadU32(&stream[at]);
    Store(&stream[at], std::uint32_t{0});
  };
  take(kRowCountAt, table.rowCount);
  take(kAutonumberAt, table.lastAutonumber);
  for (StoredIndex& index : table.realIndexes)
    take(index.distinctKeysAt, index.distinctKeys);
}

Bytes ReadTableDefStream(PageSource& pages, const StoredTable& table) {
  std::vector<std::uint32_t> visited;
  Bytes stream = ReadStream(pages, table.page, visited);
  stream.resize(table.streamLength);
  return stream;
}

void MoveTableDef(Bytes& stream, const StoredTable& to) {
  Store(&stream[kLengthAt], static_cast<std::uint32_t>(stream.size()));
  Store(&stream[kRowCountAt], to.rowCount);
  Store(&stream[kOwnedMapAt], to.ownedMap);
  Store(&stream[kFreeMapAt], to.freeMap);
  for (std::size_t i = 0; i < to.realIndexes.size(); ++i) {
    const StoredIndex& index = to.realIndexes[i];
    Store(&stream[index.distinctKeysAt - 4], index.compactedEntries);
    Store(&stream[index.distinctKeysAt], index.distinctKeys);
    std::uint8_t* block = &stream[to.realIndexesAt + i * kRealIndexBytes];
    Store(block + kIndexMapAt, index.map);
    Store(block + kIndexRootAt, index.root);
  }
  for (std::size_t i = 0; i < to.logicalIndexes.size(); ++i)
    Store(&stream[to.logicalIndexesAt + i * kLogicalIndexBytes + kPartnerTableAt], to.logicalIndexes[i].partnerTable);
  for (std::size_t at = to.longMapsAt; LoadU16(&stream[at]) != kEndMark; at += kLongMapBytes) {
    const StoredColumn* column = to.ColumnByNumber(LoadU16(&stream[at]));
    Store(&stream[at + 2], column != nullptr ? column->ownedMap : RowId{0});
    Store(&stream[at + 6], column != nullptr ? column->freeMap : RowId{0});
  }
}

}  // namespace jet
