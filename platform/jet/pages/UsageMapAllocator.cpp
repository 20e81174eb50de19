// SPDX-License-Identifier: MIT
#include "platform/jet/pages/UsageMapAllocator.h"

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/pages/UsageMapEditor.h"

namespace jet {

RowId UsageMapAllocator::Add() {
  const Bytes empty(MapLayout::kNewMapBytes);
  if (page_ == 0 || RowPage(pages_, page_, kUsageMapOwner).RoomForNew() < empty.size()) {
    page_ = space_.Allocate();
    RowPage::Format(pages_.Change(page_), kUsageMapOwner);
  }
  return MakeRowId(page_, RowPage(pages_, page_, kUsageMapOwner).Add(empty));
}

}  // namespace jet
