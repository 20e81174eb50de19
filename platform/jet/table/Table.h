// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/table/TableCursor.h"
#include "platform/jet/table/TableShape.h"

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace jet {

// The columns to decode, as positions in TableDefinition::columns.
using ColumnSet = std::vector<std::size_t>;

// One table of an open database. Returned by Database::OpenTable. The database must outlive it, and it must outlive its
// cursors (the && overloads prevent cursors of temporaries). Not thread-safe.
class Table {
 public:
  // `context`: prefix for damage messages, with file and table.
  Table(PageSource& pages, std::shared_ptr<const TableShape> shape, std::string context);

  const TableDefinition& Definition() const { return shape_->definition; }
  // The definition as stored.
  const StoredTable& Def() const { return shape_->stored; }
  const std::shared_ptr<const TableShape>& Shape() const { return shape_; }

  // All rows, by RowId. Only `columns` are decoded.
  TableCursor Scan(const ColumnSet& columns) const&;
  TableCursor Scan(const ColumnSet& columns) const&& = delete;
  // The row's values in the order of `columns`; nothing when the row does not exist (any more).
  std::optional<std::vector<Value>> Fetch(RowId row, const ColumnSet& columns) const;
  // The same for many rows.
  RowFetcher Fetcher(const ColumnSet& columns) const&;
  RowFetcher Fetcher(const ColumnSet& columns) const&& = delete;

  // Whether keys of the index can be built: false for unknown sort orders. `index`: position in
  // TableDefinition::indexes.
  bool CanLookup(std::size_t index) const;
  // The rows whose first index fields equal `key` (at most as many values as fields, each of its column's type); texts
  // are compared by the sort order. Throws Error (UnknownCharacter, Unsupported) when the key cannot be built; matching
  // rows may still exist, so scan instead. Rows that the index omits are not found.
  KeyCursor Lookup(std::size_t index, std::span<const Value> key) const&;
  KeyCursor Lookup(std::size_t index, std::span<const Value> key) const&& = delete;
  // All rows of the index (not those that it omits), in its order or the reverse.
  KeyCursor ScanByIndex(std::size_t index, bool backwards) const&;
  KeyCursor ScanByIndex(std::size_t index, bool backwards) const&& = delete;
  // Counts the rows by a scan.
  std::size_t CountRows() const;

 private:
  std::vector<const StoredColumn*> Choose(const ColumnSet& columns) const;
  const StoredIndex& Real(std::size_t index) const;
  IndexCursor Cursor(std::size_t index) const;

  PageSource& pages_;
  std::shared_ptr<const TableShape> shape_;
  std::string context_;
};

}  // namespace jet
