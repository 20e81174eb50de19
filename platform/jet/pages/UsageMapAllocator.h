// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/RowId.h"

namespace jet {

// Creates empty usage maps for one table, on as many pages as needed.
class UsageMapAllocator {
 public:
  UsageMapAllocator(Transaction& pages, PageSpace& space) : pages_(pages), space_(space) {}
  // Starts on `page`, which already holds usage maps.
  UsageMapAllocator(Transaction& pages, PageSpace& space, std::uint32_t page)
      : pages_(pages), space_(space), page_(page) {}

  RowId Add();

 private:
  Transaction& pages_;
  PageSpace& space_;
  std::uint32_t page_ = 0;
};

}  // namespace jet
