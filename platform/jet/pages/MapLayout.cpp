// SPDX-License-Identifier: MIT
#include "platform/jet/pages/MapLayout.h"

#include "platform/jet/pages/DataPage.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <string>

namespace jet {

MapLayout::MapLayout(PageSource& pages, RowId where) : page_(PageOf(where)) {
  const auto name = [&] { return "gebruikskaart " + std::to_string(SlotOf(where)); };
  const DataPage page(pages.Read(page_), page_);
  const bool isThere = SlotOf(where) < page.SlotCount();
  const Slot slot = isThere ? page.At(SlotOf(where)) : Slot{SlotKind::Deleted, 0, 0};
  if (slot.kind != SlotKind::Row || slot.length < kInlineHead) throw DamageAt(page_, name() + " ontbreekt");
  start_ = slot.start;
  length_ = slot.length;
  const std::uint8_t* row = page.BytesOf(slot).data();
  if (row[0] > kReference) throw DamageAt(page_, name() + " is van onbekende soort " + std::to_string(row[0]));
  isInline_ = row[0] == kInline;
  if (isInline_) {
    first_ = LoadU32(row + 1);
  } else {
    ReadEntries(row);
  }
  if (first_ >= kMaxPages) {
    throw DamageAt(page_, name() + " begint bij pagina " + std::to_string(first_) + ", voorbij het grootste bestand");
  }
}

void MapLayout::ReadEntries(const std::uint8_t* row) {
  entryCount_ = std::min((length_ - kReferenceHead) / 4, kMaxEntries);
  for (std::size_t i = 0; i < entryCount_; ++i) {
    const std::uint32_t bitmap = LoadU32(row + kReferenceHead + 4 * i);
    const auto end = entries_.begin() + static_cast<std::ptrdiff_t>(i);
    if (bitmap != 0 && std::find(entries_.begin(), end, bitmap) != end) {
      throw DamageAt(page_, "een gebruikskaart noemt pagina " + std::to_string(bitmap) + " tweemaal");
    }
    entries_[i] = bitmap;
  }
}

std::optional<MapLayout::Run> MapLayout::RunAt(PageSource& pages, std::size_t i) const {
  if (isInline_) return Run{page_, start_ + kInlineHead, length_ - kInlineHead, first_};
  if (i >= entryCount_ || entries_[i] == 0) return std::nullopt;
  ReadTyped(pages, entries_[i], PageType::UsageBitmap);
  return Run{entries_[i], kBitmapPageHead, kPageSize - kBitmapPageHead,
             static_cast<std::uint32_t>(i) * kPagesPerBitmapPage};
}

std::optional<MapLayout::Run> MapLayout::RunOf(PageSource& pages, std::uint32_t page) const {
  const auto run = RunAt(pages, isInline_ ? 0 : page / kPagesPerBitmapPage);
  return run && run->Covers(page) ? run : std::nullopt;
}

bool MapLayout::Contains(PageSource& pages, std::uint32_t page) const {
  const auto run = RunOf(pages, page);
  if (!run) return false;
  const std::uint32_t bit = page - run->first;
  return ((*pages.Read(run->holder))[run->start + bit / 8] >> (bit % 8) & 1) != 0;
}

std::optional<std::size_t> MapLayout::OffsetOfEntry(std::size_t i) const {
  if (isInline_ || i >= entryCount_) return std::nullopt;
  return start_ + kReferenceHead + 4 * i;
}

}  // namespace jet
