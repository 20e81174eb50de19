// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Value.h"
#include "platform/jet/table/Definition.h"

#include <optional>
#include <string>

namespace dao {

// A stored value as a ValueView. Text and bytes are views of `stored`; a GUID, and a number with more digits than a
// floating-point number, is a view of its text in `text`.
ValueView ViewOf(const jet::Value& stored, std::u16string& text);

// A value as the column stores it; nothing when its kind is not that of the column (see dao::Value) or it is out of
// range.
std::optional<jet::Value> StoredOf(const jet::ColumnDefinition& column, Value value);

}  // namespace dao
