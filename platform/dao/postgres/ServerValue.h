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

// The value as a literal of SQL. runtime::Error naming the field for a text that the server cannot hold: NUL and half
// of a surrogate pair.
std::string LiteralOf(const Connection& connection, const TableDef& table, const FieldDef& field, const Value& value);

// A value from the server's text of it, under the settings that each transaction makes (ServerSession). Texts are kept
// in `text`, which the view points to; bytes in `bytes`.
ValueView ValueOfText(const FieldDef& field, std::string_view reply, std::u16string& text, Bytes& bytes);

// A text as its unique indexes see it: equal texts of the text order have equal bytes.
std::string OrderKeyLiteral(const Value& value);

}  // namespace dao
