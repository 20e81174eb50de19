// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"

#include <sqlite3.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace dao {

struct TextOfField {
  std::size_t field = 0;
  std::u16string text;
};

// How SQLite reads a table: by index look-up when the statement has equalities on the leading fields of an index, in
// the order of an index when the statement sorts so (MAX of an indexed field then reads one row), by scan otherwise; a
// scan sorted by a text when the statement reads the table once.
// SQLite checks every condition again.
struct Plan {
  enum class AccessPath { Scan, Lookup, Ordered, Sorted };
  AccessPath accessPath = AccessPath::Scan;
  std::size_t index = 0;
  std::vector<std::size_t> keyFields;  // Lookup: the fields whose values SQLite passes, in that order
  bool backwards = false;              // Ordered
  std::size_t sortField = 0;           // Sorted
  std::optional<TextOfField> sought;   // Scan: rows in which the field has another text may be left out
  FieldMask wanted;
};

// Chooses a plan and fills in the outputs of xBestIndex: the values to pass, the cost, whether the rows are sorted.
// `readOnce`: the statement reads this table once, and no other.
Plan ChoosePlan(const TableDef& table, sqlite3_index_info* info, bool readOnce);

// The cursor of a plan, for the `count` key values that SQLite passes.
std::unique_ptr<Cursor> CursorOf(const Plan& plan, Table& table, int count, sqlite3_value** values);

}  // namespace dao
