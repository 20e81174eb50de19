#include "platform/jet/UsageMap.h"

#include "platform/jet/Codec.h"
#include "platform/jet/Damage.h"
#include "platform/jet/DataPage.h"

#include <algorithm>
#include <string>

namespace jet {

namespace {

// First byte of a map's row, and what follows it.
constexpr std::uint8_t kInline = 0;     // u32 first page, bitmap
constexpr std::uint8_t kReference = 1;  // u32 page numbers of bitmap pages
constexpr std::size_t kBitmapPageHead = 4;
constexpr std::uint64_t kPagesPerBitmapPage = (kPageSize - kBitmapPageHead) * 8;

}  // namespace

UsageMap UsageMap::Read(PageSource& pages, RowId where) {
  UsageMap map;
  if (where == 0) return map;
  const auto row = FindRow(pages, where, false);
  if (!row) throw DamageAt(PageOf(where), "gebruikskaart " + std::to_string(SlotOf(where)) + " ontbreekt");
  const ByteView bytes = row->bytes;
  map.bits_.resize(pages.PageCount());
  const std::uint8_t kind = U8(bytes, 0);
  if (kind == kInline) {
    map.AddBits(Part(bytes, 5, bytes.size() - std::min<std::size_t>(5, bytes.size())), U32(bytes, 1));
  } else if (kind == kReference) {
    for (std::size_t i = 0; 1 + 4 * i + 4 <= bytes.size(); ++i) {
      map.end_ = (i + 1) * kPagesPerBitmapPage;
      const std::uint32_t page = U32(bytes, 1 + 4 * i);
      if (page == 0 || i * kPagesPerBitmapPage >= pages.PageCount()) continue;
      const PageRef bitmap = ReadTyped(pages, page, PageType::UsageBitmap);
      map.bitmapPages_.push_back(page);
      map.AddBits(ByteView(*bitmap).subspan(kBitmapPageHead), i * kPagesPerBitmapPage);
    }
  } else {
    throw DamageAt(PageOf(where), "gebruikskaart van onbekende soort " + std::to_string(kind));
  }
  return map;
}

void UsageMap::AddBits(ByteView bitmap, std::uint64_t firstPage) {
  end_ = firstPage + 8 * bitmap.size();
  for (std::size_t i = 0; i < bitmap.size(); ++i) {
    if (bitmap[i] == 0) continue;
    for (unsigned bit = 0; bit < 8; ++bit) {
      const std::uint64_t page = firstPage + 8 * i + bit;
      if ((bitmap[i] >> bit & 1) == 0) continue;
      if (page < bits_.size()) {
        bits_[page] = true;
      } else {
        pastEnd_.push_back(static_cast<std::uint32_t>(page));
      }
    }
  }
}

std::vector<std::uint32_t> UsageMap::Members() const {
  std::vector<std::uint32_t> members;
  for (std::uint32_t page = 0; page < bits_.size(); ++page) {
    if (bits_[page]) members.push_back(page);
  }
  return members;
}

}  // namespace jet
