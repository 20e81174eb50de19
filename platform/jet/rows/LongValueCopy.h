// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/rows/LongValueWriter.h"
#include "platform/jet/rows/RowSpace.h"
#include "platform/jet/rows/StoredTable.h"

#include <optional>

namespace jet {

// Copies the values of one memo or OLE column to another file, byte for byte and in the same form: in one row, or as a
// chain with its stamp. A column that lacks one of its maps, as some helper tables have, lacks it in the copy too.
class LongValueCopy {
 public:
  // `column`: as it is in the other file. All must outlive it.
  LongValueCopy(PageSource& source, Transaction& target, PageSpace& space, const StoredColumn& column);

  // `stored` is what a row has of a value. Afterwards it refers to the copy.
  void Carry(ByteSpan stored);

 private:
  RowId Put(ByteView row, bool alone);

  PageSource& source_;
  Transaction& target_;
  PageSpace& space_;
  RowId owned_;
  std::optional<RowSpace> rows_;  // where both maps are there
  std::uint32_t page_ = 0;        // the one being filled where not
  Bytes value_;                   // kept for its memory
};

}  // namespace jet
