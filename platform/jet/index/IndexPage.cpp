// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexPage.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <string>
#include <utility>

namespace jet {

using namespace index_page;

namespace {

// The ends of entries follow from the head of the page alone.
struct KeptEnds {
  std::array<std::uint8_t, kEntriesAt> head{};
  std::shared_ptr<const std::vector<std::uint16_t>> ends;
};

KeptEnds& KeptEndsOf(std::uint32_t page) {
  constexpr std::size_t kKept = 64;  // pages, about 50 KB
  thread_local std::array<KeptEnds, kKept> kept;
  return kept[page % kKept];
}

}  // namespace

IndexPage::IndexPage(PageRef page, std::uint32_t number, std::uint32_t table)
    : page_(std::move(page)), number_(number), prefix_(LoadU16(page_->data() + kPrefixAt)) {
  const std::uint8_t type = (*page_)[0];
  const bool node = type == static_cast<std::uint8_t>(PageType::IndexNode);
  if ((!node && !IsLeaf()) || (*page_)[1] != 1) {
    throw DamageAt(number, "soort " + std::to_string(type) + " in plaats van een indexpagina");
  }
  if (Field(kTableAt) != table) throw DamageAt(number, "de indexpagina hoort bij een andere tabel");
  const KeptEnds& kept = KeptEndsOf(number);
  if (kept.ends == nullptr || std::memcmp(kept.head.data(), page_->data(), kEntriesAt) != 0)
    KeepEnds(number, *page_, ReadEnds());
  ends_ = kept.ends;
}

void IndexPage::KeepEnds(std::uint32_t number, const PageBytes& page, std::vector<std::uint16_t> ends) {
  KeptEnds& kept = KeptEndsOf(number);
  kept.ends.reset();
  auto shared = std::make_shared<const std::vector<std::uint16_t>>(std::move(ends));
  std::memcpy(kept.head.data(), page.data(), kEntriesAt);
  kept.ends = std::move(shared);
}

std::uint32_t IndexPage::Field(std::size_t at) const {
  return LoadU32(page_->data() + at);
}

unsigned IndexPage::FreeBytes() const {
  return LoadU16(page_->data() + 2);
}

unsigned IndexPage::ExactFreeBytes() const {
  return static_cast<unsigned>(kPageSize - (ends_->empty() ? kEntriesAt : ends_->back()));
}

std::vector<std::uint16_t> IndexPage::ReadEnds() const {
  const PageBytes& page = *page_;
  std::array<std::uint64_t, (kMaskBytes + 7) / 8> mask{};
  std::memcpy(mask.data(), &page[kMaskAt], kMaskBytes);
  // A stored entry always holds its row pointer: the shared prefix never reaches into it.
  const std::size_t shortest = PointerBytes();
  std::vector<std::uint16_t> ends(8 * kMaskBytes / shortest + 1);
  std::size_t start = kEntriesAt;
  std::size_t count = 0;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    for (std::uint64_t bits = mask[i]; bits != 0; bits &= bits - 1) {
      const std::size_t end = kEntriesAt + 64 * i + static_cast<unsigned>(std::countr_zero(bits));
      if (end - start < shortest || end > kPageSize) throw DamageAt(number_, "een indexregel is te kort");
      ends[count++] = static_cast<std::uint16_t>(end);
      start = end;
    }
  }
  ends.resize(count);
  if (prefix_ != 0 && !ends.empty() && prefix_ + shortest > ends.front() - kEntriesAt) {
    throw DamageAt(number_, "het gedeelde begin is langer dan de eerste indexregel");
  }
  return ends;
}

ByteView IndexPage::Stored(std::size_t entry) const {
  const std::size_t start = entry == 0 ? kEntriesAt : (*ends_)[entry - 1];
  return ByteView(*page_).subspan(start, (*ends_)[entry] - start);
}

void IndexPage::CopyEntry(std::size_t entry, Bytes& out) const {
  const ByteView stored = Stored(entry);
  const std::size_t shared = entry == 0 ? 0 : prefix_;
  const std::size_t own = stored.size() - (IsLeaf() ? 0 : 4);
  out.resize(shared + own);
  std::copy_n(page_->data() + kEntriesAt, shared, out.begin());
  std::copy_n(stored.begin(), own, out.begin() + static_cast<std::ptrdiff_t>(shared));
}

RowId IndexPage::Row(std::size_t entry) const {
  const std::uint8_t* pointer = page_->data() + (*ends_)[entry] - PointerBytes();
  return MakeRowId(LoadU24BigEndian(pointer), pointer[3]);
}

std::uint32_t IndexPage::Child(std::size_t entry) const {
  return entry == Count() ? Tail() : LoadU32BigEndian(page_->data() + (*ends_)[entry] - 4);
}

bool IndexPage::Less(std::size_t entry, ByteView key) const {
  if (key.empty()) return false;
  ByteView stored = Stored(entry);
  stored = stored.first(stored.size() - (IsLeaf() ? 0 : 4));
  if (entry != 0 && prefix_ != 0) {
    const std::size_t shared = std::min(prefix_, key.size());
    const int order = std::memcmp(page_->data() + kEntriesAt, key.data(), shared);
    if (order != 0) return order < 0;
    key = key.subspan(shared);
    if (key.empty()) return false;
  }
  return std::lexicographical_compare(stored.begin(), stored.end(), key.begin(), key.end());
}

std::size_t IndexPage::LowerBound(ByteView key) const {
  std::size_t low = 0;
  std::size_t high = Count();
  while (low < high) {
    const std::size_t middle = (low + high) / 2;
    if (Less(middle, key)) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

}  // namespace jet
