#include "platform/jet/PageSpace.h"

#include "platform/jet/Codec.h"
#include "platform/jet/Damage.h"
#include "platform/jet/DataPage.h"
#include "platform/jet/MapRow.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

// The global map: bit 1 = free, also for pages that do not exist yet.
constexpr RowId kGlobalMap = MakeRowId(1, 0);
constexpr std::uint32_t kMapPage = 1;
constexpr std::uint32_t kSystemPages = 6;   // header, maps, the definitions of the four engine tables
constexpr std::uint32_t kMostMissing = 64;  // pages past the end of the file that the map may call taken
constexpr std::uint8_t kFreedData = 9;
constexpr std::uint8_t kFreedDefinition = 8;

}  // namespace

std::uint32_t PageSpace::Allocate() {
  const std::uint32_t page = TakeLowest();
  while (page >= pages_.PageCount())
    pages_.Append();
  pages_.Change(page) = PageBytes{};
  return page;
}

std::uint32_t PageSpace::TakeLowest() {
  MapRow map(pages_, kGlobalMap);
  auto page = map.Lowest();
  if (!page) {
    Extend(pages_.PageCount());
    page = map.Lowest();
  }
  const bool isSane = page && *page >= kSystemPages && *page <= pages_.PageCount() + kMostMissing;
  if (!isSane) throw DamageAt(kMapPage, "de kaart van vrije pagina's is niet in orde");
  if (pages_.IsWronglyFree(*page)) throw DamageAt(*page, "is in gebruik, maar staat als vrij te boek");
  map.Remove(*page);
  return *page;
}

void PageSpace::RequireNoSystemPage(std::uint32_t page) {
  if (page < kSystemPages) throw DamageAt(page, "een pagina van het systeem kan niet worden vrijgegeven");
}

void PageSpace::Free(std::uint32_t page) {
  RequireNoSystemPage(page);
  std::uint8_t& type = pages_.Change(page)[0];
  if (type == static_cast<std::uint8_t>(PageType::Definition)) type = kFreedDefinition;
  if (type == static_cast<std::uint8_t>(PageType::Data)) type = kFreedData;
  MapRow(pages_, kGlobalMap).Add(*this, page);
}

void PageSpace::Release(std::span<const std::uint32_t> pages) {
  MapRow map(pages_, kGlobalMap);
  for (const std::uint32_t page : pages) {
    RequireNoSystemPage(page);
    map.Add(*this, page);
  }
}

/// Makes the map tell about `page`, the first one past the end of the file.
void PageSpace::Extend(std::uint32_t page) {
  MapRow map(pages_, kGlobalMap);
  if (map.IsInline()) {
    const MapRow::Place row = map.Where();
    const std::uint32_t first = LoadU32(pages_.Read(row.page)->data() + row.start + 1);
    if (page < first) throw DamageAt(kMapPage, "de kaart van vrije pagina's is niet in orde");
    const std::size_t needed = ((page - first) / 8 + 1 + 3) / 4 * 4 + MapRow::kInlineHead;
    const std::size_t room = DataPage(pages_.Read(kMapPage), kMapPage).FreeBytes();
    if (needed <= row.length) throw DamageAt(kMapPage, "de kaart van vrije pagina's kent geen vrije pagina");
    if (needed - row.length <= room) return GrowRow(needed);
    UseBitmapPages();
  }
  if (!map.Lowest()) AddBitmapPage(page / MapRow::kPagesPerBitmapPage);
}

/// Lengthens row 0 of page 1 as the original engine does; the other rows slide down. New bits mean free.
void PageSpace::GrowRow(std::size_t bytes) {
  PageBytes old = *pages_.Read(kMapPage);
  PageBytes& page = pages_.Change(kMapPage);
  const std::size_t slots = LoadU16(old.data() + 12);
  const std::size_t oldStart = LoadU16(old.data() + kDataPageHead);
  const std::size_t added = bytes - (kPageSize - oldStart);
  const std::size_t lowest = LoadU16(old.data() + kDataPageHead + 2 * (slots - 1));
  std::memcpy(page.data() + lowest - added, old.data() + lowest, kPageSize - lowest);
  std::fill(page.end() - static_cast<std::ptrdiff_t>(added), page.end(), std::uint8_t{0xFF});
  for (std::size_t slot = 0; slot < slots; ++slot) {
    std::uint8_t* entry = page.data() + kDataPageHead + 2 * slot;
    Store(entry, static_cast<std::uint16_t>(LoadU16(entry) - added));
  }
  Store(page.data() + 2, static_cast<std::uint16_t>(LoadU16(page.data() + 2) - added));
}

/// From a bitmap in the row to bitmap pages. Everything that the row tells of is in use by now.
void PageSpace::UseBitmapPages() {
  MapRow map(pages_, kGlobalMap);
  const MapRow::Place row = map.Where();
  PageBytes& page = pages_.Change(row.page);
  std::fill_n(page.begin() + static_cast<std::ptrdiff_t>(row.start), row.length, std::uint8_t{0});
  page[row.start] = 1;
  const std::uint32_t count = pages_.PageCount();
  const std::uint32_t entries = count / MapRow::kPagesPerBitmapPage + 1;
  for (std::uint32_t entry = 0; entry < entries; ++entry)
    AddBitmapPage(entry);
}

/// A bitmap page at the end of the file. The pages from the file's end on are free, itself excepted.
void PageSpace::AddBitmapPage(std::size_t entry) {
  const std::uint32_t number = pages_.Append();
  const auto first = static_cast<std::uint32_t>(entry) * MapRow::kPagesPerBitmapPage;
  PageBytes& page = pages_.Change(number);
  page[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
  page[1] = 1;
  for (std::uint32_t bit = 0; bit < MapRow::kPagesPerBitmapPage; ++bit) {
    if (first + bit > number) page[MapRow::kBitmapPageHead + bit / 8] |= static_cast<std::uint8_t>(1U << (bit % 8));
  }
  MapRow map(pages_, kGlobalMap);
  const MapRow::Place row = map.Where();
  if (MapRow::kReferenceHead + 4 * entry + 4 > row.length) throw DamageAt(kMapPage, "het bestand is te groot");
  Store(pages_.Change(row.page).data() + row.start + MapRow::kReferenceHead + 4 * entry, number);
}

}  // namespace jet
