// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"

#include <vector>

namespace dao {

// The row that an INSERT stores. `valueAt` returns the value given for a field, as a ValueView; fields that are not
// given get their default. Error: a value that does not fit, a default that is not constant.
template <class ValueAt>
std::vector<Value> NewRow(const TableDef& table, const FieldMask& given, ValueAt valueAt);

// The fields that an UPDATE changes, in the order of the table. Error: a value that does not fit.
template <class ValueAt>
std::vector<FieldValue> NewValues(const TableDef& table, const FieldMask& given, ValueAt valueAt);

// As NewRow, for a field without a given value.
Value DefaultOf(const TableDef& table, const FieldDef& field);

}  // namespace dao

#include "platform/dao/Conversion.h"

namespace dao {

template <class ValueAt>
std::vector<Value> NewRow(const TableDef& table, const FieldMask& given, ValueAt valueAt) {
  std::vector<Value> row;
  const auto count = static_cast<std::size_t>(table.fields.size());
  row.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const FieldDef& field = table.fields[static_cast<qsizetype>(i)];
    row.push_back(given[i] ? ConvertToField(table.name, field, valueAt(i)) : DefaultOf(table, field));
  }
  return row;
}

template <class ValueAt>
std::vector<FieldValue> NewValues(const TableDef& table, const FieldMask& given, ValueAt valueAt) {
  std::vector<FieldValue> changes;
  for (std::size_t i = 0; i < static_cast<std::size_t>(table.fields.size()); ++i) {
    if (!given[i]) continue;
    changes.emplace_back(i, ConvertToField(table.name, table.fields[static_cast<qsizetype>(i)], valueAt(i)));
  }
  return changes;
}

}  // namespace dao
