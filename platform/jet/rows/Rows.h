// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

namespace jet {

// A view of one row's bytes: which columns are null, where each value lies. Every offset is checked; the bytes must
// stay alive.
class RowView {
 public:
  // Throws when the row is too short to be one.
  RowView(ByteView row, const StoredTable& table);

  // The row's bit in the null mask: not null, or, for a Boolean, the value itself.
  bool Bit(const StoredColumn& column) const {
    return column.number < columns_ && (row_[maskAt_ + column.number / 8] >> (column.number % 8) & 1) != 0;
  }
  // Bytes of a column that is not null.
  ByteView BytesOf(const StoredColumn& column) const;
  // How many columns the table had when the row was written.
  unsigned ColumnCount() const { return columns_; }

 private:
  ByteView FixedBytes(const StoredColumn& column) const;
  ByteView VariableBytes(unsigned index) const;

  ByteView row_;
  unsigned columns_;
  unsigned variables_ = 0;
  std::size_t maskAt_;
  std::size_t valuesEnd_;  // values lie before this
};

// Decodes one column of a row. Memo and OLE columns read their pages from `pages`; who walks over many rows gives a
// budget for it.
void ReadField(PageSource& pages, const RowView& row, const StoredColumn& column, Value& out,
               LongValueBudget* budget = nullptr);

// Decodes stored bytes of a column that is no memo, OLE or Boolean.
void DecodeValue(const StoredColumn& column, ByteView stored, Value& out);

// Stored size of a type, 0 where it varies.
std::size_t TypeSize(ColumnType type);

}  // namespace jet
