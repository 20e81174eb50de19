#pragma once

#include <vector>

#include "platform/jet/TableDef.h"
#include "platform/jet/Value.h"

namespace jet {

/// One column's part of a row that is being built.
struct Field {
  bool bit = false;  ///< not null; of a Boolean the value itself
  Bytes stored;      ///< empty for null and for Booleans; of a memo or OLE value its head
};

/// The stored form of a value that is not null and no memo, OLE or Boolean. An Error that names the column when the
/// value is of another kind, too long, or too large for the column's type.
Bytes EncodeValue(const ColumnDef& column, const Value& value);

/// A decimal in the column's own scale; an Error when digits would be lost or it does not fit.
Decimal Rescaled(const ColumnDef& column, const Decimal& number);

/// The bytes of a row. `fields` are in the order of `table.columns`. An Error when they are too many for a page.
Bytes BuildRow(const TableDef& table, const std::vector<Field>& fields);

}  // namespace jet
