#pragma once

#include "platform/jet/LongValue.h"
#include "platform/jet/RowSpace.h"
#include "platform/jet/TableDef.h"

#include <vector>

namespace jet {

/// Writes and releases the values of one memo or OLE column.
class LongValueWriter {
 public:
  /// Longest value that lies in the row itself.
  static constexpr std::size_t kMostInline = 64;

  /// An Error for a column without maps: only helper tables of others have such.
  LongValueWriter(Transaction& pages, PageSpace& space, const ColumnDef& column);

  /// Puts the value where it fits; answers what belongs in the row. `mayInline`: the row has room for a short one.
  Bytes Write(ByteView value, bool mayInline);
  /// Adds where the pieces are that lie outside of the row. `stored`: what is in the row.
  void NotePieces(ByteView stored, std::vector<RowId>& pieces);
  void Release(std::vector<RowId> pieces) { rows_.Delete(std::move(pieces)); }
  /// Gives back every page of the column at once.
  void Clear() { rows_.Clear(); }

 private:
  RowId WriteChain(ByteView value);

  Transaction& pages_;
  RowSpace rows_;
};

}  // namespace jet
