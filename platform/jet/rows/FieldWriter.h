// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValueWriter.h"
#include "platform/jet/rows/RowBuilder.h"

#include <memory>
#include <vector>

namespace jet {

// Makes the stored fields of a table's rows of their values, memos and OLE values included, which lie on pages of
// their own. Values and fields are in the order of StoredTable::columns.
class FieldWriter {
 public:
  // The table must outlive it.
  FieldWriter(Transaction& pages, PageSpace& space, const StoredTable& table);

  // Of a memo or OLE value only its place in the row. An Error (TooLong, OutOfRange) comes before anything changes.
  void Encode(std::size_t column, const Value& value, Field& field) const;
  // Puts the long values of the `changed` columns where they fit.
  void PutLongValues(const std::vector<Value>& values, const std::vector<bool>& changed, std::vector<Field>& fields);
  // The row of these fields.
  const Bytes& Row(const std::vector<Field>& fields) { return builder_.Build(fields); }
  // What long values have outside of their rows, by column.
  using Pieces = std::vector<std::vector<RowId>>;
  // Adds what a field has.
  void NotePieces(std::size_t column, ByteView stored, Pieces& pieces);
  // Gives it back.
  void Release(Pieces pieces);
  // Gives back every page of long values.
  void Clear();

 private:
  LongValueWriter& LongValues(std::size_t column);

  Transaction& pages_;
  PageSpace& space_;
  const StoredTable& table_;
  RowBuilder builder_;
  bool anyLong_ = false;
  std::vector<std::unique_ptr<LongValueWriter>> longValues_;  // by column, made when needed
};

}  // namespace jet
