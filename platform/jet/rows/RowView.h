// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

namespace jet {

// A view of one row's bytes: which columns are null and where each value is. Every offset is checked; the bytes must
// outlive the view.
class RowView {
 public:
  // Throws Damage when the row is too short.
  RowView(ByteView row, const StoredTable& table);

  // The column's bit in the null mask: not null, or the value of a Boolean.
  bool Bit(const StoredColumn& column) const {
    return column.number < columns_ && (row_[maskAt_ + column.number / 8] >> (column.number % 8) & 1) != 0;
  }
  // Bytes of a column that is not null.
  ByteView BytesOf(const StoredColumn& column) const;
  // Whether the fixed columns, which take `size` bytes, are within the row.
  bool HoldsFixed(std::size_t size) const { return 2 + size <= valuesEnd_; }
  // Columns of the table when the row was written.
  unsigned ColumnCount() const { return columns_; }

 private:
  ByteView FixedBytes(const StoredColumn& column) const;
  ByteView VariableBytes(unsigned index) const;

  ByteView row_;
  unsigned columns_;
  unsigned variables_ = 0;
  std::size_t maskAt_;
  std::size_t valuesEnd_;  // end of the values
};

// Decodes one column of a row. Memo and OLE values are read from `pages`; a scan of many rows passes a budget.
void ReadField(PageSource& pages, const RowView& row, const StoredColumn& column, Value& out,
               LongValueBudget* budget = nullptr);

// Decodes the stored bytes of a column; not for memo, OLE and Boolean.
void DecodeValue(const StoredColumn& column, ByteView stored, Value& out);

// Stored size of a type in bytes; 0 for variable sizes.
std::size_t TypeSize(ColumnType type);
// Stored size of a fixed column in bytes.
inline std::size_t FixedSize(const StoredColumn& column) {
  const std::size_t typeSize = TypeSize(column.Type());
  return typeSize != 0 ? typeSize : column.length;
}
// Bytes of a row that its fixed columns take.
std::size_t FixedSize(const StoredTable& table);

}  // namespace jet
