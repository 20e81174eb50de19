// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/Definition.h"
#include "platform/jet/table/TableCursor.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace jet {

// Which columns to decode, as places in TableDefinition::columns.
using ColumnSet = std::vector<std::size_t>;

// One table of an open database. Made by Database::OpenTable; the database must outlive it, and the table its cursors:
// none can be had from a table that is about to go. Not thread-safe.
class Table {
 public:
  // `context` is put before what is told of damage: which file, which table.
  Table(PageSource& pages, StoredTable def, TableDefinition definition, std::string context);

  const TableDefinition& Definition() const { return definition_; }
  // The definition as stored.
  const StoredTable& Def() const { return def_; }

  // All rows, in the order in which they lie in the file. Only the asked columns are decoded.
  TableCursor Scan(const ColumnSet& columns) const&;
  TableCursor Scan(const ColumnSet& columns) const&& = delete;
  // The row's values, in the order of `columns`; nothing when there is no such row (any more).
  std::optional<std::vector<Value>> Fetch(RowId row, const ColumnSet& columns) const;
  // The same for many rows.
  RowFetcher Fetcher(const ColumnSet& columns) const&;
  RowFetcher Fetcher(const ColumnSet& columns) const&& = delete;

  // Whether keys of that index can be built at all: false for sort orders that are not known. `index` is a place in
  // TableDefinition::indexes.
  bool CanLookup(std::size_t index) const;
  // The rows whose first index fields equal `key` (as many values as fields, or fewer), each of its column's own type;
  // texts are equal as the sort order sees them. An Error (UnknownCharacter, Unsupported) when the key cannot be
  // built: then no stored row has to differ, and a scan is the way. Rows that the index ignores are not found.
  KeyCursor Lookup(std::size_t index, std::span<const Value> key) const&;
  KeyCursor Lookup(std::size_t index, std::span<const Value> key) const&& = delete;
  // All rows that the index holds (not those that it ignores), in its order or the reverse.
  KeyCursor ScanByIndex(std::size_t index, bool backwards) const&;
  KeyCursor ScanByIndex(std::size_t index, bool backwards) const&& = delete;
  // How many rows exist, counted.
  std::size_t CountRows() const;

 private:
  std::vector<const StoredColumn*> Choose(const ColumnSet& columns) const;
  const StoredIndex& Real(std::size_t index) const;
  IndexCursor Cursor(std::size_t index) const;

  PageSource& pages_;
  StoredTable def_;
  TableDefinition definition_;
  std::string context_;
};

}  // namespace jet
