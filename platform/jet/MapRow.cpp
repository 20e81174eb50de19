#include "platform/jet/MapRow.h"

#include "platform/jet/Codec.h"
#include "platform/jet/Damage.h"
#include "platform/jet/DataPage.h"

#include <algorithm>
#include <bit>
#include <string>

namespace jet {

namespace {

constexpr std::uint8_t kInline = 0;
constexpr std::uint8_t kReference = 1;

}  // namespace

MapRow::Place MapRow::Where() {
  const std::uint32_t number = PageOf(where_);
  const DataPage page(pages_.Read(number), number);
  const Slot slot = page.At(SlotOf(where_));
  if (slot.kind != SlotKind::Row || slot.length < kInlineHead) {
    throw DamageAt(number, "gebruikskaart " + std::to_string(SlotOf(where_)) + " ontbreekt");
  }
  return {number, slot.start, slot.length};
}

bool MapRow::IsInline() {
  const Place place = Where();
  const std::uint8_t kind = (*pages_.Read(place.page))[place.start];
  if (kind > kReference) throw DamageAt(place.page, "gebruikskaart van onbekende soort");
  return kind == kInline;
}

std::size_t MapRow::RunCount() {
  return IsInline() ? 1 : (Where().length - kReferenceHead) / 4;
}

std::optional<MapRow::Bits> MapRow::Run(std::size_t i) {
  const Place place = Where();
  const PageRef page = pages_.Read(place.page);
  const std::uint8_t* row = page->data() + place.start;
  if (row[0] == kInline) {
    return Bits{place.page, place.start + kInlineHead, place.length - kInlineHead, LoadU32(row + 1)};
  }
  if (kReferenceHead + 4 * (i + 1) > place.length) return std::nullopt;
  const std::uint32_t bitmap = LoadU32(row + kReferenceHead + 4 * i);
  if (bitmap == 0) return std::nullopt;
  ReadTyped(pages_, bitmap, PageType::UsageBitmap);
  return Bits{bitmap, kBitmapPageHead, kPageSize - kBitmapPageHead,
              static_cast<std::uint32_t>(i) * kPagesPerBitmapPage};
}

std::optional<MapRow::Bits> MapRow::RunOf(std::uint32_t page) {
  const std::size_t i = IsInline() ? 0 : page / kPagesPerBitmapPage;
  if (i >= RunCount()) return std::nullopt;
  const auto bits = Run(i);
  return bits && bits->Has(page) ? bits : std::nullopt;
}

bool MapRow::Contains(std::uint32_t page) {
  const auto bits = RunOf(page);
  if (!bits) return false;
  const std::uint32_t bit = page - bits->first;
  return ((*pages_.Read(bits->page))[bits->start + bit / 8] >> (bit % 8) & 1) != 0;
}

void MapRow::Set(const Bits& bits, std::uint32_t page, bool on) {
  const std::uint32_t bit = page - bits.first;
  std::uint8_t& byte = pages_.Change(bits.page)[bits.start + bit / 8];
  const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
  byte = static_cast<std::uint8_t>(on ? byte | mask : byte & ~mask);
}

void MapRow::Remove(std::uint32_t page) {
  if (const auto bits = RunOf(page)) Set(*bits, page, false);
}

void MapRow::Add(PageSpace& space, std::uint32_t page) {
  if (!RunOf(page)) {
    if (IsInline() && !MoveWindow(page)) UseBitmapPages(space);
    const std::size_t i = page / kPagesPerBitmapPage;
    if (!IsInline() && !Run(i)) {
      if (i >= RunCount()) throw DamageAt(PageOf(where_), "een gebruikskaart heeft geen plaats meer");
      const std::uint32_t bitmap = space.Allocate();
      PageBytes& content = pages_.Change(bitmap);
      content[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
      content[1] = 1;
      const Place place = Where();
      Store(pages_.Change(place.page).data() + place.start + kReferenceHead + 4 * i, bitmap);
    }
  }
  const auto bits = RunOf(page);
  if (!bits) throw DamageAt(PageOf(where_), "een gebruikskaart reikt niet tot pagina " + std::to_string(page));
  Set(*bits, page, true);
}

/// Moves the first page of a bitmap in the row, so that `page` and all members fit. False when they do not.
bool MapRow::MoveWindow(std::uint32_t page) {
  const Bits bits = Run(0).value();
  std::vector<std::uint32_t> members = Members();
  members.push_back(page);
  const auto [low, high] = std::minmax_element(members.begin(), members.end());
  const std::uint32_t first = *low / 8 * 8;
  if (*high - first >= 8 * bits.bytes) return false;
  PageBytes& content = pages_.Change(bits.page);
  std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(bits.start), bits.bytes, std::uint8_t{0});
  Store(content.data() + bits.start - kInlineHead + 1, first);
  for (const std::uint32_t member : members)
    Set({bits.page, bits.start, bits.bytes, first}, member, true);
  return true;
}

void MapRow::UseBitmapPages(PageSpace& space) {
  const std::vector<std::uint32_t> members = Members();
  Blank(kReference);
  for (const std::uint32_t member : members)
    Add(space, member);
}

/// A map without members, of either kind.
void MapRow::Blank(std::uint8_t kind) {
  const Place place = Where();
  PageBytes& content = pages_.Change(place.page);
  std::fill_n(content.begin() + static_cast<std::ptrdiff_t>(place.start), place.length, std::uint8_t{0});
  content[place.start] = kind;
}

void MapRow::Clear(PageSpace& space) {
  std::vector<std::uint32_t> bitmaps;
  for (std::size_t i = IsInline() ? RunCount() : 0; i < RunCount(); ++i) {
    if (const auto bits = Run(i)) bitmaps.push_back(bits->page);
  }
  Blank(kInline);
  space.Release(bitmaps);
}

std::vector<std::uint32_t> MapRow::Members() {
  std::vector<std::uint32_t> members;
  for (std::optional<std::uint32_t> member = HighestBelow(~0U); member; member = HighestBelow(*member))
    members.push_back(*member);
  return members;
}

std::optional<std::uint32_t> MapRow::HighestBelow(std::uint32_t below) {
  for (std::size_t i = RunCount(); i-- > 0;) {
    const auto bits = Run(i);
    if (!bits || bits->first >= below) continue;
    const PageRef page = pages_.Read(bits->page);
    std::uint32_t bit = static_cast<std::uint32_t>(std::min<std::uint64_t>(8 * bits->bytes, below - bits->first));
    while (bit-- > 0) {
      const std::uint8_t byte = (*page)[bits->start + bit / 8];
      if (byte == 0) {
        bit &= ~7U;
      } else if ((byte >> (bit % 8) & 1) != 0) {
        return bits->first + bit;
      }
    }
  }
  return std::nullopt;
}

std::optional<std::uint32_t> MapRow::Lowest() {
  const std::size_t runs = RunCount();
  for (std::size_t i = 0; i < runs; ++i) {
    const auto bits = Run(i);
    if (!bits) continue;
    const PageRef page = pages_.Read(bits->page);
    for (std::size_t byte = 0; byte < bits->bytes; ++byte) {
      const unsigned value = (*page)[bits->start + byte];
      if (value != 0)
        return bits->first + static_cast<std::uint32_t>(8 * byte) + static_cast<unsigned>(std::countr_zero(value));
    }
  }
  return std::nullopt;
}

}  // namespace jet
