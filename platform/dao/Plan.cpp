// SPDX-License-Identifier: MIT
#include "platform/dao/Plan.h"

#include "platform/dao/SortedRows.h"
#include "platform/dao/Sqlite.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <variant>

namespace dao {
namespace {

// Rough figures; only their order matters for the choice of a join order.
constexpr double kRowsOfTable = 100'000;
constexpr double kRowsOfPartialKey = 25;
constexpr double kCostOfLookup = 5;
constexpr double kLeastInexactAmount = 1e11;  // from here on different amounts may be the same double
constexpr int kLastExactUse = 63;             // this bit of colUsed is for all fields from 63 on

std::vector<std::size_t> FieldsOf(const TableDef& table, const IndexDef& index) {
  std::vector<std::size_t> fields;
  for (const IndexField& field : index.fields)
    fields.push_back(static_cast<std::size_t>(table.FieldIndex(field.name)));
  return fields;
}

bool CanBeKey(FieldType type) {
  return type != FieldType::Memo && type != FieldType::Binary && type != FieldType::Guid && type != FieldType::Numeric;
}

bool IsText(FieldType type) {
  return type == FieldType::Text;
}

// The index of a usable equality on the field in info->aConstraint; -1 when there is none.
int EqualityOn(const TableDef& table, sqlite3_index_info* info, std::size_t field) {
  const FieldType type = table.fields[static_cast<qsizetype>(field)].type;
  if (!CanBeKey(type)) return -1;
  for (int i = 0; i < info->nConstraint; ++i) {
    const auto& constraint = info->aConstraint[i];
    if (constraint.usable == 0 || constraint.op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
    if (constraint.iColumn != static_cast<int>(field)) continue;
    if (IsText(type) && std::strcmp(sqlite3_vtab_collation(info, i), kTextOrderName) != 0) continue;
    return i;
  }
  return -1;
}

struct Equalities {
  std::size_t index = 0;
  std::vector<std::size_t> fields;
  std::vector<int> constraints;
  double rows = kRowsOfTable;
};

Equalities EqualitiesFor(const TableDef& table, sqlite3_index_info* info, std::size_t at) {
  const IndexDef& index = table.indexes[static_cast<qsizetype>(at)];
  Equalities found;
  found.index = at;
  if (!index.usable) return found;
  const auto fields = FieldsOf(table, index);
  for (const std::size_t field : fields) {
    const int constraint = EqualityOn(table, info, field);
    if (constraint < 0) break;
    found.fields.push_back(field);
    found.constraints.push_back(constraint);
  }
  const bool whole = found.fields.size() == fields.size();
  if (index.ignoreNull && !whole)
    found.fields.clear();  // such an index may not contain all rows with these first fields
  if (found.fields.empty()) return found;
  const bool unique = index.unique || index.primary;
  found.rows = whole && unique ? 1 : kRowsOfPartialKey / static_cast<double>(found.fields.size());
  return found;
}

bool UseLookup(const TableDef& table, sqlite3_index_info* info, Plan& plan) {
  Equalities best;
  for (qsizetype i = 0; i < table.indexes.size(); ++i) {
    const Equalities found = EqualitiesFor(table, info, static_cast<std::size_t>(i));
    if (!found.fields.empty() && found.rows < best.rows) best = found;
  }
  if (best.fields.empty()) return false;
  plan.accessPath = Plan::AccessPath::Lookup;
  plan.index = best.index;
  plan.keyFields = best.fields;
  int argument = 0;
  for (const int constraint : best.constraints)
    info->aConstraintUsage[constraint].argvIndex = ++argument;
  info->estimatedRows = static_cast<sqlite3_int64>(best.rows);
  info->estimatedCost = kCostOfLookup * best.rows;
  return true;
}

// Whether reading the index, forwards or backwards, gives the wanted order. Never for texts: an index written by
// another program may contain characters that TextOrder sorts differently.
bool Orders(const TableDef& table, const IndexDef& index, const sqlite3_index_info* info, bool backwards) {
  if (!index.usable || index.ignoreNull || info->nOrderBy > index.fields.size()) return false;
  for (int i = 0; i < info->nOrderBy; ++i) {
    const IndexField& field = index.fields[i];
    const int at = table.FieldIndex(field.name);
    const FieldType type = table.fields[at].type;
    const bool descending = (field.direction == Direction::Descending) != backwards;
    if (!CanBeKey(type) || IsText(type) || info->aOrderBy[i].iColumn != at) return false;
    if ((info->aOrderBy[i].desc != 0) != descending) return false;
  }
  return true;
}

bool UseOrder(const TableDef& table, sqlite3_index_info* info, Plan& plan) {
  if (info->nOrderBy == 0) return false;
  for (qsizetype i = 0; i < table.indexes.size(); ++i) {
    for (const bool backwards : {false, true}) {
      if (!Orders(table, table.indexes[i], info, backwards)) continue;
      plan.accessPath = Plan::AccessPath::Ordered;
      plan.index = static_cast<std::size_t>(i);
      plan.backwards = backwards;
      info->orderByConsumed = 1;
      return true;
    }
  }
  return false;
}

// Not in a join, whose inner table would be sorted for each row of the outer one.
void UseSort(const TableDef& table, sqlite3_index_info* info, Plan& plan) {
  if (info->nOrderBy != 1 || info->aOrderBy[0].desc != 0 || info->aOrderBy[0].iColumn < 0) return;
  if (!IsText(table.fields[info->aOrderBy[0].iColumn].type)) return;
  plan.accessPath = Plan::AccessPath::Sorted;
  plan.sortField = static_cast<std::size_t>(info->aOrderBy[0].iColumn);
  plan.wanted.set(plan.sortField);
  info->orderByConsumed = 1;
}

FieldMask Wanted(const TableDef& table, sqlite3_uint64 used) {
  FieldMask wanted;
  for (int i = 0; i < table.fields.size(); ++i) {
    wanted[static_cast<std::size_t>(i)] = ((used >> std::min(i, kLastExactUse)) & 1U) != 0;
  }
  return wanted;
}

enum class Match { Key, Nothing, Unknown };

Match WholeKey(double number, double least, double most, Value& key) {
  if (number != std::floor(number) || number < least || number > most) return Match::Nothing;
  key = static_cast<std::int64_t>(number);
  return Match::Key;
}

Match NumberKey(FieldType type, double number, Value& key) {
  switch (type) {
    case FieldType::Boolean:
      return WholeKey(number, -1, 0, key);
    case FieldType::Byte:
      return WholeKey(number, 0, 255, key);
    case FieldType::Integer:
      return WholeKey(number, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max(), key);
    case FieldType::Long:
      return WholeKey(number, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max(), key);
    case FieldType::Currency:
      if (!(std::abs(number) < kLeastInexactAmount)) return Match::Unknown;
      break;
    case FieldType::Single:
      if (static_cast<double>(static_cast<float>(number)) != number) return Match::Nothing;
      break;
    default:
      break;
  }
  key = number;
  return Match::Key;
}

// The key for the rows that SQLite would consider equal. Unknown when the kinds differ: then SQLite must compare.
Match KeyFor(FieldType type, const ValueView& value, Value& key) {
  if (std::holds_alternative<std::monostate>(value)) return Match::Nothing;
  if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    if (!IsText(type)) return Match::Unknown;
    key = std::u16string(*text);
    return Match::Key;
  }
  if (IsText(type)) return Match::Unknown;
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return NumberKey(type, static_cast<double>(*whole), key);
  if (const auto* number = std::get_if<double>(&value)) return NumberKey(type, *number, key);
  return Match::Nothing;
}

class NoRows : public Cursor {
 public:
  bool Next() override { return false; }
  RowId Id() const override { return 0; }
  ValueView Field(std::size_t /*field*/) const override { return {}; }
};

std::unique_ptr<Cursor> LookupCursor(const Plan& plan, Table& table, int count, sqlite3_value** values) {
  std::vector<Value> key(static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < key.size(); ++i) {
    const FieldType type = table.Definition().fields[static_cast<qsizetype>(plan.keyFields[i])].type;
    switch (KeyFor(type, ValueOf(values[i]), key[i])) {
      case Match::Key:
        break;
      case Match::Nothing:
        return std::make_unique<NoRows>();
      case Match::Unknown:
        return table.Scan(plan.wanted);
    }
  }
  return table.Lookup(plan.index, key, plan.wanted);
}

}  // namespace

Plan ChoosePlan(const TableDef& table, sqlite3_index_info* info, bool readOnce) {
  Plan plan;
  plan.wanted = Wanted(table, info->colUsed);
  info->estimatedCost = kRowsOfTable;
  info->estimatedRows = static_cast<sqlite3_int64>(kRowsOfTable);
  if (!UseLookup(table, info, plan) && !UseOrder(table, info, plan) && readOnce) UseSort(table, info, plan);
  return plan;
}

std::unique_ptr<Cursor> CursorOf(const Plan& plan, Table& table, int count, sqlite3_value** values) {
  switch (plan.accessPath) {
    case Plan::AccessPath::Lookup:
      return LookupCursor(plan, table, count, values);
    case Plan::AccessPath::Ordered:
      return table.ScanByIndex(plan.index, plan.backwards, plan.wanted);
    case Plan::AccessPath::Sorted:
      return std::make_unique<SortedRows>(*table.Scan(plan.wanted), plan.wanted, plan.sortField);
    case Plan::AccessPath::Scan:
      if (plan.sought) return table.ScanForText(plan.sought->field, plan.sought->text, plan.wanted);
      break;
  }
  return table.Scan(plan.wanted);
}

}  // namespace dao
