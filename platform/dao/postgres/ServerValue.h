// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/TableDef.h"
#include "platform/dao/Value.h"
#include "platform/dao/postgres/Connection.h"

#include <string>
#include <string_view>

namespace dao {

// The column type that holds a field: Boolean as smallint -1 or 0, Date as timestamp to the microsecond, Text as
// varchar in the order of its bytes (texts are compared above the storage).
std::string ColumnTypeOf(const FieldDef& field);

// The value as an SQL literal. Throws runtime::Error with the name of the field for a text that the server cannot
// store: with NUL or half of a surrogate pair.
std::string LiteralOf(const Connection& connection, const TableDef& table, const FieldDef& field, const Value& value);

// Parses a value in the server's text format, under the settings of ServerSession. The view of a text or of bytes
// points to `text` or `bytes`.
ValueView ValueOfText(const FieldDef& field, std::string_view reply, std::u16string& text, Bytes& bytes);

// The literal of a text's key for unique indexes: texts that are equal in the text order have equal keys.
std::string OrderKeyLiteral(const Value& value);

}  // namespace dao
