// SPDX-License-Identifier: MIT
#include "tests/fuzz/PageMutator.h"

#include <algorithm>
#include <cstring>

namespace fuzz {

namespace {

std::uint32_t Load(jet::ByteSpan bytes) {
  std::uint32_t value = 0;
  std::memcpy(&value, bytes.data(), bytes.size());
  return value;
}

void Store(jet::ByteSpan bytes, std::uint32_t value) {
  std::memcpy(bytes.data(), &value, bytes.size());
}

std::size_t U16(jet::ByteSpan page, std::size_t at) {
  return Load(page.subspan(at, 2));
}

}  // namespace

void PageMutator::Mutate(jet::ByteSpan file) {
  file_ = file;
  for (std::size_t changes = 1 + Below(4); changes > 0; --changes) {
    const jet::ByteSpan page = Page(Below(file_.size() / kPage));
    switch (Below(8)) {
      case 0:
        MutateBytes(page);
        break;
      case 1:
        CopyWithin(page);
        break;
      case 2:
        CopyPage();
        break;
      default:
        MutateField(page);
    }
  }
}

void PageMutator::MutateField(jet::ByteSpan page) {
  std::size_t size = 1;
  const std::size_t offset = FieldOf(page, &size);  // sets the size, so it comes first
  const std::size_t at = std::min(offset, kPage - size);
  const jet::ByteSpan field = page.subspan(at, size);
  Store(field, ValueFor(Load(field), size));
}

// Offset and size of a field of a page of that kind.
std::size_t PageMutator::FieldOf(jet::ByteSpan page, std::size_t* size) {
  if (Below(16) == 0) return Below(2);  // the kind
  const std::size_t counts = *size = Below(2) == 0 ? 2 : 4;
  switch (page[0]) {
    case 1: {  // rows: the head, a slot, or near either end of a row
      const std::size_t slots = std::min<std::size_t>(U16(page, 12), 1000);
      const std::size_t slot = 14 + 2 * Below(slots + 1);
      if (Below(4) == 0) return 2 * (1 + Below(6));
      if (Load(page.subspan(4, 4)) <= 1 && slots > 0) return MapFieldOf(page, slots, size);
      *size = 2;
      if (Below(3) == 0) return slot;
      const std::size_t start = U16(page, slot) & 0x1FFF;
      const std::size_t end = slot == 14 ? kPage : U16(page, slot - 2) & 0x1FFF;
      *size = 1 + Below(2);
      return Below(2) == 0 ? start + Below(16) : end - std::min<std::size_t>(end, 1 + Below(24));
    }
    case 2:  // a definition: the head, the map pointers, or anything in the stream
      if (Below(6) == 0) return *size = 4, 55 + 4 * Below(2);
      return Below(3) == 0 ? Below(0x3F) : 0x3F + Below(std::clamp<std::size_t>(Load(page.subspan(8, 4)), 1, kPage));
    case 3:
    case 4:  // an index: the head, the bits of entries, the entries
      if (Below(3) == 0) return 2 + Below(25);
      *size = 1 + Below(2);
      return Below(2) == 0 ? 27 + Below(64) : 480 + Below(Below(2) == 0 ? 64 : 3616);
    default:
      return counts * Below(kPage / counts);
  }
}

// A field of a usage map: kind, first page or first bitmap page, another bitmap page, or bits.
std::size_t PageMutator::MapFieldOf(jet::ByteSpan page, std::size_t slots, std::size_t* size) {
  const std::size_t row = U16(page, 14 + 2 * Below(slots)) & 0x1FFF;
  *size = 4;
  switch (Below(4)) {
    case 0:
      return *size = 1, row;
    case 1:
      return row + 1;
    case 2:
      return row + 1 + 4 * Below(17);
    default:
      return *size = 1, row + 5 + Below(16);
  }
}

std::uint32_t PageMutator::ValueFor(std::uint32_t old, std::size_t size) {
  const auto pages = static_cast<std::uint32_t>(file_.size() / kPage);
  const auto page = static_cast<std::uint32_t>(Below(pages + 1));
  switch (Below(9)) {
    case 0:
      return 0;
    case 1:
      return 0xFFFFFFFFu - static_cast<std::uint32_t>(Below(2));
    case 2:
      return old + 1 + static_cast<std::uint32_t>(Below(4));
    case 3:
      return old - 1 - static_cast<std::uint32_t>(Below(4));
    case 4:
      return old ^ 1u << Below(8 * size);
    case 5:
      return page;
    case 6:
      return page << 8 | static_cast<std::uint32_t>(Below(8));  // a row
    case 7:
      return static_cast<std::uint32_t>(kPage) + 8 - static_cast<std::uint32_t>(Below(24));
    default:
      return static_cast<std::uint32_t>(random_());
  }
}

void PageMutator::MutateBytes(jet::ByteSpan page) {
  const std::size_t start = Below(kPage);
  const std::size_t count = std::min(kPage - start, 1 + Below(8));
  for (std::uint8_t& byte : page.subspan(start, count))
    byte = static_cast<std::uint8_t>(random_());
}

void PageMutator::CopyWithin(jet::ByteSpan page) {
  const std::size_t count = 1 + Below(64);
  std::memmove(&page[Below(kPage - count)], &page[Below(kPage - count)], count);
}

// Copies one page over another: wrong owners, pages with two owners, cyclic chains.
void PageMutator::CopyPage() {
  const jet::ByteSpan from = Page(Below(file_.size() / kPage));
  const jet::ByteSpan to = Page(Below(file_.size() / kPage));
  if (from.data() != to.data()) std::memcpy(to.data(), from.data(), kPage);
}

}  // namespace fuzz
