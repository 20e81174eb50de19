// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/RowBuilder.h"

#include <memory>
#include <vector>

namespace jet {

class LongValueWriter;
class PageSpace;
class Transaction;

// Encodes the values of a table's rows as stored fields, including memo and OLE values, which are on separate pages.
// Values and fields are in the order of StoredTable::columns.
class FieldWriter {
 public:
  // The table must outlive it.
  FieldWriter(Transaction& pages, PageSpace& space, const StoredTable& table);
  ~FieldWriter();
  FieldWriter(const FieldWriter&) = delete;
  FieldWriter& operator=(const FieldWriter&) = delete;

  // Encodes one value; for memo and OLE values only reserves the head. An Error (TooLong, OutOfRange) changes nothing.
  void Encode(std::size_t column, const Value& value, Field& field) const;
  // Writes the long values of the `changed` columns, in the row or on their own pages.
  void WriteLongValues(const std::vector<Value>& values, const std::vector<bool>& changed, std::vector<Field>& fields);
  // The row of these fields.
  const Bytes& Row(const std::vector<Field>& fields) { return builder_.Build(fields); }
  // The pieces of long values outside of their rows, by column.
  using Pieces = std::vector<std::vector<RowId>>;
  // Adds the pieces of a field.
  void CollectPieces(std::size_t column, ByteView stored, Pieces& pieces);
  // Frees the pieces.
  void Release(Pieces pieces);
  // Frees all pages of long values.
  void Clear();

 private:
  LongValueWriter& LongValues(std::size_t column);

  Transaction& pages_;
  PageSpace& space_;
  const StoredTable& table_;
  RowBuilder builder_;
  bool anyLong_ = false;
  std::vector<std::unique_ptr<LongValueWriter>> longValues_;  // by column, created when needed
};

}  // namespace jet
