#include "platform/jet/pages/MapPage.h"

#include "platform/jet/pages/MapRow.h"
#include "platform/jet/pages/RowPage.h"

namespace jet {

RowId MapPage::Add() {
  const Bytes empty(MapLayout::kFreshBytes);
  if (page_ == 0 || RowPage(pages_, page_, kUsageMapOwner).RoomForNew() < empty.size()) {
    page_ = space_.Allocate();
    RowPage::Format(pages_.Change(page_), kUsageMapOwner);
  }
  return MakeRowId(page_, RowPage(pages_, page_, kUsageMapOwner).Add(empty));
}

}  // namespace jet
