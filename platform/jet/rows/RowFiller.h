// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/pages/Transaction.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/values/Bytes.h"

#include <cstdint>

namespace jet {

// Writes many rows to new data pages, one page after the other, each written once.
class RowFiller {
 public:
  RowFiller(Transaction& pages, PageSpace& space, std::uint32_t owner, const UsageMapEditor& owned,
            const UsageMapEditor& free)
      : pages_(pages), space_(space), owner_(owner), owned_(owned), free_(free) {}

  // Appends a row and returns its RowId; RowIds are ascending. The row is readable after Finish.
  RowId Add(ByteView row);
  void Finish();

 private:
  void NextPage();

  Transaction& pages_;
  PageSpace& space_;
  std::uint32_t owner_;
  UsageMapEditor owned_;
  UsageMapEditor free_;
  std::uint32_t number_ = 0;  // the page being filled; 0 before the first row
  PageBytes page_{};
};

}  // namespace jet
