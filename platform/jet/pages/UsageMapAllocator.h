// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/RowId.h"

namespace jet {

// Makes new, empty usage maps for one table, on as many pages as it takes.
class UsageMapAllocator {
 public:
  UsageMapAllocator(Transaction& pages, PageSpace& space) : pages_(pages), space_(space) {}
  // The same, on a page that is at hand already.
  UsageMapAllocator(Transaction& pages, PageSpace& space, std::uint32_t page)
      : pages_(pages), space_(space), page_(page) {}

  RowId Add();

 private:
  Transaction& pages_;
  PageSpace& space_;
  std::uint32_t page_ = 0;
};

}  // namespace jet
