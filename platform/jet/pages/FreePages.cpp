// SPDX-License-Identifier: MIT
#include "platform/jet/pages/FreePages.h"

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <optional>
#include <string>

namespace jet {

namespace {

constexpr std::uint32_t kMapPageOwner = 1;
constexpr std::uint32_t kMaxSkipped = 64;  // consecutive pages past the end of the file that the map may mark as used

// `next`: the page that is allocated when the file has `pageCount` pages and none of them is free.
void RequireUsable(std::uint32_t next, std::uint32_t pageCount) {
  if (next < kSystemPages)
    throw DamageAt(kFreePagesPage, "de kaart van vrije pagina's noemt pagina " + std::to_string(next));
  if (next <= pageCount + kMaxSkipped) return;
  throw DamageAt(kFreePagesPage, "de kaart van vrije pagina's slaat de pagina's " + std::to_string(pageCount) +
                                     " tot " + std::to_string(next) + " over, voorbij het einde van het bestand");
}

void SetBit(std::uint8_t* bits, std::uint32_t number) {
  bits[number / 8] |= static_cast<std::uint8_t>(1U << (number % 8));
}

}  // namespace

void RequireUsable(const UsageMap& freePages, std::uint32_t pageCount) {
  const std::vector<std::uint32_t> members = freePages.Members();
  if (!members.empty()) RequireUsable(members.front(), pageCount);
  std::uint32_t end = pageCount;  // of the file, once the pages before are allocated
  for (const std::uint32_t page : freePages.PastEnd()) {
    RequireUsable(page, end);
    end = page + 1;
  }
  for (const MapLayout::Run& run : freePages.Runs()) {
    if (run.End() <= end) continue;
    end = std::max(end, run.first);  // pages without a bit count as free
    RequireUsable(run.End(), end);
    end = run.End();
  }
}

std::uint32_t FreePages::Next() {
  auto page = map_.Lowest();
  while (!page) {
    const std::uint32_t uncovered = FirstUncovered();
    RequireUsable(uncovered, pages_.PageCount());
    CoverPage(uncovered);
    page = map_.Lowest();
  }
  RequireUsable(*page, pages_.PageCount());
  return *page;
}

// The first page past the end of the file that the map has no bit for.
std::uint32_t FreePages::FirstUncovered() {
  const MapLayout layout = map_.Layout();
  std::uint32_t page = pages_.PageCount();
  while (const auto run = layout.RunOf(pages_, page))
    page = run->End();
  return page;
}

void FreePages::Add(std::uint32_t page) {
  if (map_.AddCovered(page)) return;
  CoverPage(page);
  if (!map_.AddCovered(page)) throw DamageAt(kFreePagesPage, "de kaart van vrije pagina's reikt niet tot elke pagina");
}

// Extends the map to cover `page`. The bits of pages that it covered already do not change.
void FreePages::CoverPage(std::uint32_t page) {
  const MapLayout layout = map_.Layout();
  if (!layout.IsInline()) return AddBitmapPage(page / MapLayout::kPagesPerBitmapPage, {});
  const MapLayout::Run run = layout.RunAt(pages_, 0).value();
  Window before = {run.first, {}};
  {
    const PageRef holder = pages_.Read(run.holder);
    const auto start = holder->begin() + static_cast<std::ptrdiff_t>(run.start);
    before.bits.assign(start, start + static_cast<std::ptrdiff_t>(run.bytes));
  }
  const std::uint32_t first = page < run.first ? 0 : run.first;
  if (!GrowRow(before, first, std::max(run.End(), page + 1))) UseBitmapPages(before);
}

// Whether the old inline map marked a page as free. A page that it did not cover is free when it does not exist yet.
bool FreePages::WasFree(const Window& before, std::uint32_t page) {
  if (page < before.first || page - before.first >= 8 * before.bits.size()) return page >= pages_.PageCount();
  const std::uint32_t bit = page - before.first;
  return (before.bits[bit / 8] >> (bit % 8) & 1) != 0;
}

// Replaces the row by a bitmap of the pages [first, end), padded as the original engine does. False when the page has
// no room for it.
bool FreePages::GrowRow(const Window& before, std::uint32_t first, std::uint32_t end) {
  const std::size_t bytes = ((end - first + 7) / 8 + 3) / 4 * 4;
  RowPage page(pages_, kFreePagesPage, kMapPageOwner);
  if (page.RoomIn(SlotOf(kFreePagesMap)) < MapLayout::kInlineHead + bytes) return false;
  Bytes row(MapLayout::kInlineHead + bytes);
  Store(&row[1], first);
  for (std::uint32_t bit = 0; bit < 8 * bytes; ++bit) {
    if (WasFree(before, first + bit)) SetBit(&row[MapLayout::kInlineHead], bit);
  }
  page.Replace(SlotOf(kFreePagesMap), row, SlotKind::Row);
  return true;
}

// Replaces the inline bitmap by bitmap pages for the whole file.
void FreePages::UseBitmapPages(const Window& before) {
  Bytes row(MapLayout::kNewMapBytes);
  row[0] = MapLayout::kReference;
  RowPage page(pages_, kFreePagesPage, kMapPageOwner);
  if (page.RoomIn(SlotOf(kFreePagesMap)) < row.size()) {
    throw DamageAt(kFreePagesPage, "de kaart van vrije pagina's heeft geen plaats meer");
  }
  page.Replace(SlotOf(kFreePagesMap), row, SlotKind::Row);
  const std::size_t pagesEach = MapLayout::kPagesPerBitmapPage;
  for (std::size_t entry = 0; entry * pagesEach < pages_.PageCount(); ++entry)
    AddBitmapPage(entry, before);
  // A bitmap page may have been appended before the one that has its bit.
  const MapLayout layout = map_.Layout();
  for (std::size_t entry = 0; entry < layout.RunCount(); ++entry) {
    if (const auto run = layout.RunAt(pages_, entry)) map_.Remove(run->holder);
  }
}

// Appends a bitmap page, which is itself marked as used.
void FreePages::AddBitmapPage(std::size_t entry, const Window& before) {
  const auto place = map_.Layout().OffsetOfEntry(entry);
  if (!place) throw DamageAt(kFreePagesPage, "de kaart van vrije pagina's heeft geen plaats meer");
  if (pages_.IsWronglyFree(pages_.PageCount()))
    throw DamageAt(pages_.PageCount(), "bestaat nog niet, maar is al in gebruik");
  const std::uint32_t number = pages_.Append();
  PageBytes& page = pages_.Change(number);
  page[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
  page[1] = 1;
  const auto first = static_cast<std::uint32_t>(entry) * MapLayout::kPagesPerBitmapPage;
  for (std::uint32_t bit = 0; bit < MapLayout::kPagesPerBitmapPage; ++bit) {
    if (WasFree(before, first + bit)) SetBit(&page[MapLayout::kBitmapPageHead], bit);
  }
  Store(pages_.Change(kFreePagesPage).data() + *place, number);
  map_.Remove(number);
}

}  // namespace jet
