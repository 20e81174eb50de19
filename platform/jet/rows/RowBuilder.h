// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <string>
#include <vector>

namespace jet {

// One column's part of a row that is being built.
struct Field {
  bool bit = false;  // not null; of a Boolean the value itself
  Bytes stored;      // empty for null and for Booleans; of a memo or OLE value its head
};

// The column as errors name it.
std::string FieldName(const StoredColumn& column);

// Appends the stored form of a value that is not null and no memo, OLE or Boolean. An Error that names the column when
// the value is of another kind, too long, or too large for the column's type.
void EncodeValue(const StoredColumn& column, const Value& value, Bytes& out);

// A decimal in the column's own scale; an Error when digits would be lost or it does not fit.
Decimal Rescaled(const StoredColumn& column, const Decimal& number);

// Puts rows of one table together. The table must outlive it.
class RowBuilder {
 public:
  static constexpr std::size_t kMostBytes = RowPage::kMostRowBytes;

  explicit RowBuilder(const StoredTable& table);

  // The bytes of a row, good until the next call. `fields` are in the order of `table.columns`. An Error when they are
  // too many for a page.
  const Bytes& Build(const std::vector<Field>& fields);

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void AppendVariables(const std::vector<Field>& fields);

  const StoredTable& table_;
  std::size_t fixedSize_ = 0;
  std::vector<std::size_t> byVariableIndex_;  // place of the column; kNone for a deleted one
  // Kept for their memory from row to row.
  Bytes row_;
  Bytes mask_;
  std::vector<std::uint16_t> starts_;
};

}  // namespace jet
