// SPDX-License-Identifier: MIT
#include "platform/jet/pages/RowPage.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <cstring>

namespace jet {

RowPage::RowPage(Transaction& pages, std::uint32_t number, std::uint32_t owner) : pages_(pages), number_(number) {
  const DataPage page = View();
  RequireOwner(page, owner);
  if (page.FreeBytes() != page.MeasuredFreeBytes()) throw DamageAt(number, "de vrije ruimte klopt niet");
}

void RowPage::Format(PageBytes& page, std::uint32_t owner) {
  page[0] = static_cast<std::uint8_t>(PageType::Data);
  page[1] = 1;
  Store(page.data() + kFreeBytesAt, static_cast<std::uint16_t>(kPageSize - kDataPageHead));
  Store(page.data() + kOwnerAt, owner);
}

std::size_t RowPage::FreeBytes() const {
  return View().FreeBytes();
}

std::size_t RowPage::RoomForNew(const PageBytes& page) {
  const std::size_t free = LoadU16(page.data() + kFreeBytesAt);
  return LoadU16(page.data() + kSlotCountAt) >= kMaxWrittenSlots || free < 2 ? 0 : free - 2;
}

// Asked before every new row, so a changed page is not viewed anew for it.
std::size_t RowPage::RoomForNew() const {
  const PageBytes* changed = pages_.Changed(number_);
  return RoomForNew(changed != nullptr ? *changed : *View().Content());
}

std::size_t RowPage::RoomIn(unsigned slot) const {
  const DataPage page = View();
  return page.FreeBytes() + page.At(slot).length;
}

bool RowPage::IsEmpty() const {
  const DataPage page = View();
  for (unsigned slot = 0; slot < page.SlotCount(); ++slot) {
    if (page.At(slot).kind != SlotKind::Deleted) return false;
  }
  return true;
}

unsigned RowPage::Add(PageBytes& page, ByteView row, SlotKind kind) {
  const std::size_t free = LoadU16(page.data() + kFreeBytesAt);
  const std::size_t slots = LoadU16(page.data() + kSlotCountAt);
  const std::size_t start = kDataPageHead + 2 * slots + free - row.size();
  std::memcpy(page.data() + start, row.data(), row.size());
  Store(page.data() + kDataPageHead + 2 * slots, static_cast<std::uint16_t>(start | static_cast<std::uint16_t>(kind)));
  Store(page.data() + kFreeBytesAt, static_cast<std::uint16_t>(free - row.size() - 2));
  Store(page.data() + kSlotCountAt, static_cast<std::uint16_t>(slots + 1));
  return static_cast<unsigned>(slots);
}

void RowPage::Replace(unsigned slot, ByteView row, SlotKind kind) {
  Rebuild(slot, [&](unsigned at, SlotKind& itsKind, ByteView& bytes) {
    if (at != slot) return;
    itsKind = kind;
    bytes = row;
  });
}

void RowPage::Delete(std::span<const RowId> rows) {
  auto next = rows.begin();
  Rebuild(SlotOf(rows.front()), [&](unsigned at, SlotKind& kind, ByteView& bytes) {
    if (next == rows.end() || SlotOf(*next) != at) return;
    ++next;
    kind = SlotKind::Deleted;
    bytes = {};
  });
  if (next != rows.end()) throw DamageAt(number_, "een rij die weg moet, is er niet");
}

// Rebuilds the page from the slot `first` on; `change(slot, kind, bytes)` may alter each.
template <typename Change>
void RowPage::Rebuild(unsigned first, Change change) {
  const PageRef oldBytes = pages_.Read(number_);
  const DataPage old(oldBytes, number_);
  PageBytes& page = pages_.Change(number_);
  std::size_t end = first == 0 ? kPageSize : old.At(first - 1).start;
  for (unsigned i = first; i < old.SlotCount(); ++i) {
    const Slot at = old.At(i);
    SlotKind kind = at.kind;
    ByteView bytes = old.BytesOf(at);
    change(i, kind, bytes);
    end -= bytes.size();
    if (!bytes.empty()) std::memcpy(page.data() + end, bytes.data(), bytes.size());
    Store(page.data() + kDataPageHead + 2 * i, static_cast<std::uint16_t>(end | static_cast<std::uint16_t>(kind)));
  }
  Store(page.data() + kFreeBytesAt, static_cast<std::uint16_t>(end - kDataPageHead - 2 * old.SlotCount()));
}

}  // namespace jet
