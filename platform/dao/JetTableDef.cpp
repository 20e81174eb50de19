// SPDX-License-Identifier: MIT
#include "platform/dao/JetTableDef.h"

#include "platform/dao/DefaultValue.h"

#include <algorithm>
#include <array>

namespace dao {
namespace {

struct TypePair {
  FieldType field;
  jet::ColumnType column;
};

// A new field gets the first column type of its field type.
constexpr std::array<TypePair, 15> kTypes = {{{FieldType::Boolean, jet::ColumnType::Boolean},
                                              {FieldType::Byte, jet::ColumnType::Byte},
                                              {FieldType::Integer, jet::ColumnType::Integer},
                                              {FieldType::Long, jet::ColumnType::Long},
                                              {FieldType::Currency, jet::ColumnType::Currency},
                                              {FieldType::Single, jet::ColumnType::Single},
                                              {FieldType::Double, jet::ColumnType::Double},
                                              {FieldType::Date, jet::ColumnType::Date},
                                              {FieldType::Text, jet::ColumnType::Text},
                                              {FieldType::Memo, jet::ColumnType::Memo},
                                              {FieldType::Binary, jet::ColumnType::Binary},
                                              {FieldType::Binary, jet::ColumnType::Ole},
                                              {FieldType::Binary, jet::ColumnType::SystemBinary},
                                              {FieldType::Guid, jet::ColumnType::Guid},
                                              {FieldType::Numeric, jet::ColumnType::Decimal}}};

FieldType FieldTypeOf(jet::ColumnType column) {
  const auto* pair =
      std::find_if(kTypes.begin(), kTypes.end(), [&](const TypePair& known) { return known.column == column; });
  return pair == kTypes.end() ? FieldType::Binary : pair->field;
}

jet::ColumnType ColumnTypeOf(FieldType field) {
  return std::find_if(kTypes.begin(), kTypes.end(), [&](const TypePair& known) { return known.field == field; })
      ->column;
}

void SetDefault(const QString& expression, FieldDef& field) {
  const auto constant = ConstantOf(expression);
  if (constant) {
    field.defaultValue = *constant;
  } else {
    field.defaultExpression = expression;
  }
}

FieldDef FieldOf(const jet::ColumnDefinition& column) {
  FieldDef field;
  field.name = QString::fromStdU16String(column.name);
  field.type = FieldTypeOf(column.type);
  if (field.type == FieldType::Text || field.type == FieldType::Binary) field.size = column.size;
  if (column.type == jet::ColumnType::Ole) field.size = 0;
  field.required = column.required;
  field.allowZeroLength = column.allowZeroLength;
  field.autoNumber = column.autonumber;
  SetDefault(QString::fromStdU16String(column.defaultValue), field);
  if (field.type == FieldType::Numeric) {
    field.precision = column.precision;
    field.scale = column.scale;
  }
  return field;
}

IndexDef IndexOf(const jet::Table& table, std::size_t at) {
  const jet::IndexDefinition& stored = table.Definition().indexes[at];
  IndexDef index;
  index.name = QString::fromStdU16String(stored.name);
  for (const auto& field : stored.fields) {
    index.fields.append({QString::fromStdU16String(table.Definition().columns[field.column].name),
                         field.descending ? Direction::Descending : Direction::Ascending});
  }
  index.primary = stored.primary;
  index.unique = stored.unique;
  index.required = stored.required;
  index.ignoreNull = stored.ignoreNulls;
  index.usable = table.CanLookup(at);
  return index;
}

jet::ColumnDefinition ColumnOf(const FieldDef& field) {
  jet::ColumnDefinition column;
  column.name = field.name.toStdU16String();
  column.type = ColumnTypeOf(field.type);
  column.size = static_cast<std::uint16_t>(field.size);
  column.precision = static_cast<std::uint8_t>(field.precision);
  column.scale = static_cast<std::uint8_t>(field.scale);
  column.required = field.required;
  column.allowZeroLength = field.allowZeroLength;
  column.autonumber = field.autoNumber;
  column.defaultValue = ExpressionOf(field.defaultValue).toStdU16String();
  return column;
}

jet::IndexDefinition StoredIndex(const TableDef& table, const IndexDef& index) {
  jet::IndexDefinition stored;
  stored.name = index.name.toStdU16String();
  for (const IndexField& field : index.fields) {
    stored.fields.push_back(
        {static_cast<std::size_t>(table.FieldIndex(field.name)), field.direction == Direction::Descending});
  }
  stored.primary = index.primary;
  stored.unique = index.unique || index.primary;
  stored.required = index.required || index.primary;
  stored.ignoreNulls = index.ignoreNull;
  return stored;
}

}  // namespace

std::shared_ptr<const TableDef> TableDefOf(const jet::Table& table) {
  std::shared_ptr<const void>& kept = table.Shape()->derived;
  if (kept == nullptr) {
    const auto definition = std::make_shared<TableDef>();
    definition->name = QString::fromStdU16String(table.Definition().name);
    for (const jet::ColumnDefinition& column : table.Definition().columns)
      definition->fields += FieldOf(column);
    for (std::size_t i = 0; i < table.Definition().indexes.size(); ++i)
      definition->indexes += IndexOf(table, i);
    kept = definition;
  }
  return std::static_pointer_cast<const TableDef>(kept);
}

jet::TableDefinition StoredDefinition(const TableDef& table) {
  jet::TableDefinition definition;
  definition.name = table.name.toStdU16String();
  for (const FieldDef& field : table.fields)
    definition.columns.push_back(ColumnOf(field));
  for (const IndexDef& index : table.indexes)
    definition.indexes.push_back(StoredIndex(table, index));
  return definition;
}

}  // namespace dao
