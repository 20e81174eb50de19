// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/RowSpace.h"
#include "platform/jet/rows/StoredTable.h"

#include <functional>
#include <vector>

namespace jet {

// Cuts a value into the pieces of a chain and gives each to `put`, from the last to the first; `put` returns where it
// put the piece. Returns where the first one is.
RowId WriteChain(ByteView value, const std::function<RowId(ByteView piece)>& put);

// Writes and releases the values of one memo or OLE column.
class LongValueWriter {
 public:
  // Longest value that lies in the row itself.
  static constexpr std::size_t kMostInline = 64;

  // An Error for a column without maps: only helper tables of others have such.
  LongValueWriter(Transaction& pages, PageSpace& space, const StoredColumn& column);

  // Puts the value where it fits; answers what belongs in the row. `mayInline`: the row has room for a short one.
  Bytes Write(ByteView value, bool mayInline);
  // Adds where the pieces are that lie outside of the row. `stored`: what is in the row.
  void NotePieces(ByteView stored, std::vector<RowId>& pieces);
  void Release(std::vector<RowId> pieces) { rows_.Delete(std::move(pieces)); }
  // Gives back every page of the column at once.
  void Clear() { rows_.Clear(); }

 private:
  Transaction& pages_;
  RowSpace rows_;
};

}  // namespace jet
