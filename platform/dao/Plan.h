// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Storage.h"

#include <sqlite3.h>

#include <memory>
#include <vector>

namespace dao {

// One way to walk over a table, as the SQL engine asks for it: the index look-ups of the file where the statement has
// equalities on the leading fields of an index, its order where the statement asks for it (so that MAX of an indexed
// field reads one row), a scan otherwise. The engine checks every condition again itself.
struct Plan {
  enum class AccessPath { Scan, Lookup, Ordered };
  AccessPath way = AccessPath::Scan;
  std::size_t index = 0;
  std::vector<std::size_t> keyFields;  // Lookup: the fields whose values the engine hands over, in that order
  bool backwards = false;              // Ordered
  FieldMask wanted;
};

// Chooses, and fills in the engine's form: which values it hands over, what the way costs, whether the order is kept.
Plan ChoosePlan(const TableDef& table, sqlite3_index_info* info);

// Begins the walk with the values handed over.
std::unique_ptr<Cursor> Begin(const Plan& plan, Table& table, int count, sqlite3_value** values);

}  // namespace dao
