// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowSpace.h"

#include "platform/jet/rows/RowFiller.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>

namespace jet {

namespace {

constexpr int kMaxTries = 8;  // so that the search takes no longer in a larger table

}  // namespace

RowFiller RowSpace::Filler() {
  return {pages_, space_, owner_, owned_, free_};
}

RowPage RowSpace::NewPage(bool takesMore) {
  const std::uint32_t page = space_.Allocate();
  RowPage::Format(pages_.Change(page), owner_);
  owned_.Add(space_, page);
  if (takesMore) free_.Add(space_, page);
  return {pages_, page, owner_};
}

RowPage& RowSpace::PageWithRoom(std::size_t bytes) {
  if (last_ && last_->RoomForNew() >= bytes) return *last_;
  auto number = free_.HighestBelow(~0U);
  for (int tries = 0; number && tries < kMaxTries; ++tries) {
    if (!owned_.Contains(*number)) throw DamageAt(*number, "heeft vrije ruimte, maar geen eigenaar");
    const std::size_t room = last_.emplace(pages_, *number, owner_).RoomForNew();
    if (room >= bytes) return *last_;
    if (room < RowPage::kMinUsableBytes) free_.Remove(*number);
    number = free_.HighestBelow(*number);
  }
  return last_.emplace(NewPage(true));
}

RowId RowSpace::Add(ByteView row, SlotKind kind) {
  RowPage& page = PageWithRoom(row.size());
  return MakeRowId(page.Number(), page.Add(row, kind));
}

RowId RowSpace::AddAlone(ByteView row) {
  RowPage page = NewPage(false);
  return MakeRowId(page.Number(), page.Add(row));
}

bool RowSpace::ReplaceInPlace(RowId row, ByteView bytes, SlotKind kind) {
  RowPage page(pages_, PageOf(row), owner_);
  if (page.RoomIn(SlotOf(row)) < bytes.size()) return false;
  page.Replace(SlotOf(row), bytes, kind);
  return true;
}

void RowSpace::Delete(std::vector<RowId> rows) {
  std::sort(rows.begin(), rows.end());
  const auto twice = std::adjacent_find(rows.begin(), rows.end());
  if (twice != rows.end()) throw DamageAt(PageOf(*twice), "een rij wordt tweemaal genoemd");
  for (auto first = rows.begin(); first != rows.end();) {
    const auto isElsewhere = [&](RowId row) { return PageOf(row) != PageOf(*first); };
    const auto end = std::find_if(first, rows.end(), isElsewhere);
    DeleteOnPage(PageOf(*first), {first, end});
    first = end;
  }
}

void RowSpace::DeleteOnPage(std::uint32_t number, std::span<const RowId> rows) {
  // All pages of long values have the same owner field: only the map shows the column that owns a page.
  if (!owned_.Contains(number)) throw DamageAt(number, "hoort niet bij deze gegevens");
  RowPage page(pages_, number, owner_);
  page.Delete(rows);
  if (!page.IsEmpty()) {
    if (page.RoomForNew() > 0) free_.Add(space_, number);
    return;
  }
  owned_.Remove(number);
  free_.Remove(number);
  if (last_ && last_->Number() == number) last_.reset();
  space_.Free(number);
}

std::size_t RowSpace::CountRows(std::uint32_t number) {
  const PageRef bytes = pages_.Read(number);
  if (IsUnwritten(*bytes)) return 0;
  const DataPage page(bytes, number);
  RequireOwner(page, owner_);
  std::size_t rows = 0;
  for (unsigned slot = 0; slot < page.SlotCount(); ++slot) {
    const SlotKind kind = page.At(slot).kind;
    if (kind == SlotKind::Row || kind == SlotKind::Pointer) ++rows;
  }
  return rows;
}

std::size_t RowSpace::Clear() {
  std::vector<std::uint32_t> pages = owned_.Members();
  std::erase_if(pages, [&](std::uint32_t number) { return number >= pages_.PageCount(); });
  std::size_t rows = 0;
  for (const std::uint32_t number : pages)
    rows += CountRows(number);
  owned_.Clear(space_);
  free_.Clear(space_);
  space_.Release(pages);
  last_.reset();
  return rows;
}

}  // namespace jet
