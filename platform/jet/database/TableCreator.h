// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Definition.h"
#include "platform/jet/table/Properties.h"

#include <vector>

namespace jet {

// Makes a new table in a database: its definition, maps and indexes, and the rows that the catalogue needs for it.
class TableCreator {
 public:
  explicit TableCreator(Transaction& pages) : pages_(pages), space_(pages) {}

  // An Error (OutOfRange or Duplicate) for what no table can have: too many columns, a name with forbidden characters.
  void Make(const TableDefinition& table);
  // The same, with properties that say more than the definition does.
  void Make(const TableDefinition& table, const std::vector<PropertySet>& properties);

 private:
  StoredTable AssignLayout(const TableDefinition& table);

  Transaction& pages_;
  PageSpace space_;
};

// A column as stored, without maps. `number` is its place in the table; `variables` and `fixedBytes` count on.
StoredColumn LayOutColumn(const ColumnDefinition& column, std::uint16_t number, std::uint16_t& variables,
                          std::uint16_t& fixedBytes);

// The empty root of a new index of the table with definition page `table`.
void FormatIndexRoot(Transaction& pages, std::uint32_t root, std::uint32_t table);

// What a new table's properties say; empty when everything is as it is without properties.
std::vector<PropertySet> PropertiesOf(const TableDefinition& table);

}  // namespace jet
