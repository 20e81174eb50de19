// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

// A column as users know it, from the table definition and the properties.
struct ColumnDefinition {
  std::u16string name;
  ColumnType type = ColumnType::Long;
  std::uint16_t size = 0;      // text: characters; binary: bytes; others: the type's size
  std::uint8_t precision = 0;  // decimal
  std::uint8_t scale = 0;      // decimal
  bool required = false;
  bool allowZeroLength = true;    // text and memo: an empty text is allowed
  bool autonumber = false;        // Long or GUID
  bool fixed = false;             // stored in the fixed area of the row
  std::u16string defaultValue;    // an expression in text form; empty = none
  std::u16string validationRule;  // an expression; empty = none
  std::uint16_t number = 0;       // number in the file: see StoredColumn
};

// A named index.
struct IndexDefinition {
  struct Field {
    std::size_t column = 0;  // position in TableDefinition::columns
    bool descending = false;
  };
  std::u16string name;
  std::vector<Field> fields;
  bool primary = false;
  bool foreign = false;  // one side of a relationship
  bool unique = false;
  bool required = false;      // no null in any field
  bool ignoreNulls = false;   // rows with only nulls are omitted
  std::size_t realIndex = 0;  // position in StoredTable::realIndexes; several names may share a tree
};

// A table as users know it.
struct TableDefinition {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::u16string name;
  std::vector<ColumnDefinition> columns;  // in the order in which they are shown
  std::vector<IndexDefinition> indexes;   // by name

  // Position of the column or index with that name, ignoring case; kNone when there is none.
  std::size_t FindColumn(std::u16string_view columnName) const;
  std::size_t FindIndex(std::u16string_view indexName) const;
};

struct StoredTable;
struct PropertySet;

// Combines a stored definition and the properties.
TableDefinition Describe(const std::u16string& name, const StoredTable& table,
                         const std::vector<PropertySet>& properties);

}  // namespace jet
