// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <string>
#include <vector>

namespace jet {

// One stored field of a row that is being built.
struct Field {
  bool bit = false;  // not null; for a Boolean the value itself
  Bytes stored;      // empty for null and Booleans; the head of a memo or OLE value
};

// The column's name for error texts.
std::string FieldName(const StoredColumn& column);

// Appends the stored form of a value; not for nulls, memo, OLE and Boolean. Throws Error that names the column when the
// value has the wrong type, is too long or out of the column's range.
void EncodeValue(const StoredColumn& column, const Value& value, Bytes& out);

// The decimal in the column's scale. Throws Error when it does not fit or digits would be lost.
Decimal Rescaled(const StoredColumn& column, const Decimal& number);

// Builds rows of one table, which must outlive it.
class RowBuilder {
 public:
  static constexpr std::size_t kMaxBytes = RowPage::kMaxRowBytes;

  explicit RowBuilder(const StoredTable& table);

  // The bytes of a row, valid until the next call. `fields` are in the order of `table.columns`. Throws Error (TooLong)
  // when the row does not fit on a page.
  const Bytes& Build(const std::vector<Field>& fields);

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  void AppendVariables(const std::vector<Field>& fields);

  const StoredTable& table_;
  std::size_t fixedSize_ = 0;
  std::vector<std::size_t> byVariableIndex_;  // position of the column; kNone for a deleted one
  // Reused buffers.
  Bytes row_;
  Bytes mask_;
  std::vector<std::uint16_t> starts_;
};

}  // namespace jet
