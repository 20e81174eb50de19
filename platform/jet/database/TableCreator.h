// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/UsageMapAllocator.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Definition.h"
#include "platform/jet/table/Properties.h"

#include <vector>

namespace jet {

// Creates a table: its definition, maps, indexes and catalogue rows.
class TableCreator {
 public:
  explicit TableCreator(Transaction& pages) : pages_(pages), space_(pages) {}

  // Throws Error (OutOfRange or Duplicate) for an invalid definition, such as too many columns or forbidden characters
  // in a name.
  void Make(const TableDefinition& table);
  // The same, with properties that are not in the definition.
  void Make(const TableDefinition& table, const std::vector<PropertySet>& properties);

 private:
  StoredTable AssignLayout(const TableDefinition& table);

  Transaction& pages_;
  PageSpace space_;
};

// The stored form of a column, without maps. `number`: its position in the table. Advances `variables` and
// `fixedBytes`.
StoredColumn LayOutColumn(const ColumnDefinition& column, std::uint16_t number, std::uint16_t& variables,
                          std::uint16_t& fixedBytes);

// The empty root of a new index of the table with definition page `table`.
void FormatIndexRoot(Transaction& pages, std::uint32_t root, std::uint32_t table);

// The properties of a new table; empty when all have their default values.
std::vector<PropertySet> PropertiesOf(const TableDefinition& table);

}  // namespace jet
