// SPDX-License-Identifier: MIT
#include "platform/jet/table/Definition.h"

#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/table/Properties.h"
#include "platform/jet/values/Names.h"

#include <algorithm>

namespace jet {

namespace {

ColumnDefinition DescribeColumn(const StoredColumn& def) {
  ColumnDefinition column;
  column.name = def.name;
  column.type = def.Type();
  column.number = def.number;
  column.precision = def.precision;
  column.scale = def.scale;
  column.autonumber = def.IsAutonumber();
  column.fixed = def.IsFixed();
  const std::size_t typeSize = TypeSize(def.Type());
  column.size = typeSize != 0 ? static_cast<std::uint16_t>(typeSize) : def.length;
  if (def.Type() == ColumnType::Text) column.size = def.length / 2;
  return column;
}

void ApplyProperties(const std::vector<PropertySet>& sets, ColumnDefinition& column) {
  for (const PropertySet& set : sets) {
    if (set.column.empty() || !SameName(set.column, column.name)) continue;
    column.required = set.FlagOf(u"Required", column.required);
    column.allowZeroLength = set.FlagOf(u"AllowZeroLength", column.allowZeroLength);
    column.defaultValue = set.TextOf(u"DefaultValue");
    column.validationRule = set.TextOf(u"ValidationRule");
  }
}

IndexDefinition DescribeIndex(const LogicalIndexDef& def, const StoredIndex& real, const TableDefinition& table) {
  IndexDefinition index;
  index.name = def.name;
  index.realIndex = def.realIndex;
  index.primary = def.role == LogicalIndexDef::Role::PrimaryKey;
  index.foreign = def.role == LogicalIndexDef::Role::ForeignKey;
  index.unique = index.primary || (real.flags & StoredIndex::kUnique) != 0;
  index.required = index.primary || (real.flags & StoredIndex::kRequired) != 0;
  index.ignoreNulls = (real.flags & StoredIndex::kIgnoreNulls) != 0;
  for (const StoredIndex::Field& field : real.fields) {
    const auto column = std::find_if(table.columns.begin(), table.columns.end(),
                                     [&](const ColumnDefinition& c) { return c.number == field.column; });
    index.fields.push_back({static_cast<std::size_t>(column - table.columns.begin()), !field.ascending});
  }
  return index;
}

template <typename Item>
std::size_t FindByName(const std::vector<Item>& items, std::u16string_view name) {
  const auto found =
      std::find_if(items.begin(), items.end(), [&](const Item& item) { return SameName(item.name, name); });
  return found == items.end() ? TableDefinition::kNone : static_cast<std::size_t>(found - items.begin());
}

}  // namespace

std::size_t TableDefinition::FindColumn(std::u16string_view columnName) const {
  return FindByName(columns, columnName);
}

std::size_t TableDefinition::FindIndex(std::u16string_view indexName) const {
  return FindByName(indexes, indexName);
}

TableDefinition Describe(const std::u16string& name, const StoredTable& table,
                         const std::vector<PropertySet>& properties) {
  TableDefinition described;
  described.name = name;
  std::vector<const StoredColumn*> shown;
  for (const StoredColumn& column : table.columns)
    shown.push_back(&column);
  std::stable_sort(shown.begin(), shown.end(),
                   [](const StoredColumn* a, const StoredColumn* b) { return a->display < b->display; });
  for (const StoredColumn* column : shown) {
    described.columns.push_back(DescribeColumn(*column));
    ApplyProperties(properties, described.columns.back());
  }
  for (const LogicalIndexDef& index : table.logicalIndexes) {
    described.indexes.push_back(DescribeIndex(index, table.realIndexes[index.realIndex], described));
  }
  return described;
}

}  // namespace jet
