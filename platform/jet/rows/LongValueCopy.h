// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/RowSpace.h"
#include "platform/jet/rows/StoredTable.h"

#include <optional>

namespace jet {

// Copies the values of one memo or OLE column to another file, byte for byte and in the same form: in one row, or as a
// chain with its stamp. A map that the column lacks (as in some helper tables) is missing in the copy too.
class LongValueCopy {
 public:
  // `column`: the column in the target file. All must outlive it.
  LongValueCopy(PageSource& source, Transaction& target, PageSpace& space, const StoredColumn& column);

  // Copies the value with head `stored` and makes the head refer to the copy.
  void Copy(ByteSpan stored);

 private:
  RowId Put(ByteView row, bool alone);

  PageSource& source_;
  Transaction& target_;
  PageSpace& space_;
  RowId owned_;
  std::optional<RowSpace> rows_;  // when the column has both maps
  std::uint32_t page_ = 0;        // the page being filled, otherwise
  Bytes value_;                   // reused buffer
};

}  // namespace jet
