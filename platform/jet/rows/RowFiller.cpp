// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowFiller.h"

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/values/Damage.h"

namespace jet {

RowId RowFiller::Add(ByteView row) {
  if (number_ == 0 || RowPage::RoomForNew(page_) < row.size()) NextPage();
  if (RowPage::RoomForNew(page_) < row.size()) throw Damage("een rij is langer dan een pagina");
  return MakeRowId(number_, RowPage::Add(page_, row, SlotKind::Row));
}

void RowFiller::NextPage() {
  Finish();
  const std::uint32_t next = space_.Allocate();
  if (next <= number_) throw DamageAt(next, "een vrije pagina komt tweemaal voor");
  number_ = next;
  owned_.Add(space_, number_);
  page_ = {};
  RowPage::Format(page_, owner_);
}

void RowFiller::Finish() {
  if (number_ == 0) return;
  pages_.Change(number_) = page_;
  if (RowPage::RoomForNew(page_) >= RowPage::kMinUsableBytes) free_.Add(space_, number_);
}

}  // namespace jet
