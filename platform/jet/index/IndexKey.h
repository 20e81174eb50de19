// SPDX-License-Identifier: MIT
// Index keys. A key has, for each field of the index, a flag byte and the encoded value; keys compare as unsigned
// bytes, also for descending fields.
#pragma once

#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <optional>
#include <span>

namespace jet {

// Whether keys of this column can be built: an indexable type and a known sort order.
bool CanBuildKeys(const StoredColumn& column);

// Appends one field of a key. `value` is null or of the column's type (a decimal in the column's scale). Throws an
// Error that names the column for a character or sort order without known keys, or a type that cannot be indexed.
void AppendKeyField(const StoredColumn& column, const Value& value, bool ascending, Bytes& key);

// The key of one row. `values`: one for each field of the index, in the index's order.
Bytes BuildKey(const StoredTable& table, const StoredIndex& index, std::span<const Value> values);

}  // namespace jet
