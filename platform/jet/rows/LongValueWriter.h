// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/RowSpace.h"
#include "platform/jet/rows/StoredTable.h"

#include <functional>
#include <vector>

namespace jet {

// Splits a value into the pieces of a chain and passes each to `put`, from the last to the first; `put` returns the
// place of the piece. Returns the place of the first piece.
RowId WriteChain(ByteView value, const std::function<RowId(ByteView piece)>& put);

// Writes and releases the values of one memo or OLE column.
class LongValueWriter {
 public:
  // Longest value stored in the row itself, in bytes.
  static constexpr std::size_t kMaxInline = 64;

  // Throws Error (Unsupported) for a column without maps, which only some helper tables of other programs have.
  LongValueWriter(Transaction& pages, PageSpace& space, const StoredColumn& column);

  // Writes the value and returns the bytes for the row. `mayInline`: the row has room for a short value.
  Bytes Write(ByteView value, bool mayInline);
  // Appends the places of the pieces outside of the row. `stored`: the value's bytes in the row.
  void CollectPieces(ByteView stored, std::vector<RowId>& pieces);
  void Release(std::vector<RowId> pieces) { rows_.Delete(std::move(pieces)); }
  // Frees all pages of the column at once.
  void Clear() { rows_.Clear(); }

 private:
  Transaction& pages_;
  RowSpace rows_;
};

}  // namespace jet
