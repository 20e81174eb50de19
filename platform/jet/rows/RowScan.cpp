// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowScan.h"

#include "platform/jet/pages/UsageMap.h"
#include "platform/jet/rows/StoredTable.h"

namespace jet {

RowScan::RowScan(PageSource& pages, const StoredTable& table)
    : pages_(pages), owner_(table.page), owned_(UsageMap::Read(pages, table.ownedMap).Members()) {}

bool RowScan::Next() {
  for (;;) {
    while (page_ && slot_ < page_->SlotCount()) {
      const Slot slot = page_->At(slot_++);
      if (slot.kind == SlotKind::Row) {
        row_ = page_->BytesOf(slot);
        return true;
      }
      if (slot.kind != SlotKind::Pointer) continue;
      const auto moved = FindRow(pages_, Id(), true, owner_);
      if (!moved) continue;
      movedTo_ = moved->page;
      row_ = moved->bytes;
      return true;
    }
    if (!NextPage()) return false;
  }
}

bool RowScan::NextPage() {
  page_.reset();
  while (nextOwned_ < owned_.size()) {
    const std::uint32_t number = owned_[nextOwned_++];
    const PageRef bytes = pages_.Read(number);
    if (IsUnwritten(*bytes)) continue;
    DataPage page(bytes, number);
    RequireOwner(page, owner_);
    page_ = page;
    slot_ = 0;
    return true;
  }
  return false;
}

}  // namespace jet
