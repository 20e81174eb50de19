// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/SortOrder.h"
#include "platform/jet/values/Value.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace jet {

// Flags of a column block.
namespace column_flag {
constexpr std::uint8_t kFixed = 0x01;
constexpr std::uint8_t kAutonumber = 0x04;
constexpr std::uint8_t kGuidAutonumber = 0x40;
}  // namespace column_flag

// One column of a table definition.
struct StoredColumn {
  std::u16string name;
  std::uint8_t rawType = 0;  // as stored; a ColumnType where KnownType()
  std::uint16_t number = 0;  // never reused; also the bit in a row's null mask
  std::uint16_t variableIndex = 0;
  std::uint16_t display = 0;  // position in lists for users
  SortOrder sortOrder;
  std::uint8_t precision = 0;  // decimal
  std::uint8_t scale = 0;      // decimal
  std::uint8_t flags = 0;
  std::uint8_t extraFlags = 0;
  std::uint16_t fixedOffset = 0;
  std::uint16_t length = 0;  // in bytes; 2 x characters for text, 0 for memo and OLE
  RowId ownedMap = 0;        // memo and OLE only; 0 = none
  RowId freeMap = 0;

  ColumnType Type() const { return static_cast<ColumnType>(rawType); }
  bool KnownType() const;
  bool IsFixed() const { return (flags & column_flag::kFixed) != 0; }
  bool IsLong() const { return Type() == ColumnType::Memo || Type() == ColumnType::Ole; }
  bool IsText() const { return Type() == ColumnType::Text || Type() == ColumnType::Memo; }
  // The flags have no meaning on columns of other types.
  bool IsAutonumber() const {
    return ((flags & column_flag::kAutonumber) != 0 && Type() == ColumnType::Long) ||
           ((flags & column_flag::kGuidAutonumber) != 0 && Type() == ColumnType::Guid);
  }
  bool MayCompress() const { return (extraFlags & 1) != 0; }
};

// One index tree: its columns, flags and root page.
struct StoredIndex {
  static constexpr std::uint8_t kUnique = 0x01;
  static constexpr std::uint8_t kIgnoreNulls = 0x02;
  static constexpr std::uint8_t kRequired = 0x08;

  struct Field {
    std::uint16_t column = 0;  // column number
    bool ascending = true;
  };
  std::vector<Field> fields;
  RowId map = 0;
  std::uint32_t root = 0;
  std::uint8_t flags = 0;
  std::uint32_t compactedEntries = 0;  // entries when the file was last compacted; not updated
  std::uint32_t distinctKeys = 0;
  std::size_t distinctKeysAt = 0;  // offset of that count in the stream
};

// A name and a role of an index tree; several may share one tree.
struct LogicalIndexDef {
  enum class Role : std::uint8_t { Plain = 0, PrimaryKey = 1, ForeignKey = 2 };

  std::u16string name;
  std::int32_t number = 0;
  std::uint32_t realIndex = 0;
  std::uint8_t side = 0;           // foreign key: 1 = the "one" table, 2 = the "many" table
  std::int32_t partnerIndex = -1;  // number of the logical index in the other table
  std::uint32_t partnerTable = 0;  // definition page of that table
  std::uint8_t cascadeUpdates = 0;
  std::uint8_t cascadeDeletes = 0;
  Role role = Role::Plain;
};

// A parsed table definition, which is a byte stream over one or more pages.
struct StoredTable {
  std::uint32_t page = 0;            // first page: the table's Id
  std::vector<std::uint32_t> pages;  // all pages of the stream
  std::uint32_t length = 0;          // as stored; the parsed length is streamLength
  std::uint32_t streamLength = 0;
  std::size_t realIndexesAt = 0;  // offset of their blocks in the stream
  std::size_t logicalIndexesAt = 0;
  std::size_t longMapsAt = 0;        // offset of the maps of memo and OLE columns
  std::uint32_t rowCount = 0;        // stale in some real tables: never rely on it
  std::uint32_t lastAutonumber = 0;  // can be stale too
  bool system = false;
  std::uint16_t maxColumns = 0;  // ever created, including deleted ones
  std::uint16_t variableColumns = 0;
  RowId ownedMap = 0;
  RowId freeMap = 0;
  std::vector<StoredColumn> columns;  // by number
  std::vector<StoredIndex> realIndexes;
  std::vector<LogicalIndexDef> logicalIndexes;

  // The column with this number; null when it does not exist (any more).
  const StoredColumn* ColumnByNumber(std::uint16_t number) const;
};

// Offsets of the counters in the first page of a definition.
constexpr std::size_t kRowCountAt = 16;
constexpr std::size_t kAutonumberAt = 20;

// A table definition as bytes.
struct DefinitionStream {
  Bytes bytes;                       // of whole pages, without the heads of later ones
  std::vector<std::uint32_t> pages;  // in their order
};

// Reads and checks the definition that begins at `page`.
StoredTable ReadStoredTable(PageSource& pages, std::uint32_t page);
// The same in two steps.
DefinitionStream ReadDefinition(PageSource& pages, std::uint32_t page);
StoredTable ParseDefinition(const DefinitionStream& read);

// Moves the counters of rows, keys and numbers from the stream to `table`, which was parsed from a stream of this size;
// zeros remain. What is left in the stream changes only together with the definition.
void TakeCounters(Bytes& stream, StoredTable& table);

// The bytes that `table` was read from, without the heads of later pages.
Bytes ReadTableDefStream(PageSource& pages, const StoredTable& table);
// Replaces page numbers, counters and partner tables in such a stream by those of `to`, which has the same columns and
// indexes.
void MoveTableDef(Bytes& stream, const StoredTable& to);

}  // namespace jet
