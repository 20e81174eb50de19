// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/Value.h"
#include "platform/jet/table/Definition.h"

#include <optional>
#include <string>

namespace dao {

// A stored value as the SQL engine sees it. Text and bytes are views of the stored value; a GUID's text, and that of a
// number with more digits than a floating-point number, is put into `text`.
ValueView ViewOf(const jet::Value& stored, std::u16string& text);

// A value of the kind that dao::Value tells for its field, as the column stores it; nothing when it is of another kind
// or out of the column's range.
std::optional<jet::Value> StoredOf(const jet::ColumnDefinition& column, Value value);

}  // namespace dao
