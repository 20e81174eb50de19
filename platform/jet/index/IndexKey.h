// SPDX-License-Identifier: MIT
// The bytes by which an index sorts its rows. A key is, for each field of the index in turn, a flag byte and the
// value's bytes; keys compare as unsigned bytes, also where a field sorts downwards.
#pragma once

#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <optional>
#include <span>

namespace jet {

// Whether keys of this column can be built: its type can be indexed and its sort order is known.
bool CanBuildKeys(const StoredColumn& column);

// Adds one field of a key. `value` is null or of the kind that the column stores (a decimal in the column's scale).
// An Error that names the column for a character or sort order whose key is not known, or a column of a type that
// cannot be indexed.
void AppendKeyField(const StoredColumn& column, const Value& value, bool ascending, Bytes& key);

// The key of one row: `values` holds a value for each field of the index, in the index's order.
Bytes BuildKey(const StoredTable& table, const StoredIndex& index, std::span<const Value> values);

}  // namespace jet
