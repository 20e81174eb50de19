// SPDX-License-Identifier: MIT
#include "platform/jet/pages/DataPage.h"

#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <string>
#include <utility>

namespace jet {

namespace {

constexpr std::uint16_t kStartMask = 0x1FFF;
constexpr std::uint16_t kKindMask = 0xC000;
constexpr int kMaxMoves = 8;

}  // namespace

DataPage::DataPage(PageRef page, std::uint32_t number) : page_(std::move(page)), number_(number) {
  const PageBytes& bytes = *page_;
  if (bytes[0] != static_cast<std::uint8_t>(PageType::Data) || bytes[1] != 1) {
    throw DamageAt(number, "soort " + std::to_string(bytes[0]) + " in plaats van een gegevenspagina");
  }
  slotCount_ = LoadU16(bytes.data() + kSlotCountAt);
  if (slotCount_ > kMaxReadSlots) throw DamageAt(number, "te veel rijen voor een pagina");
}

std::uint32_t DataPage::Owner() const {
  return LoadU32(page_->data() + kOwnerAt);
}

unsigned DataPage::FreeBytes() const {
  return LoadU16(page_->data() + kFreeBytesAt);
}

std::size_t DataPage::MeasuredFreeBytes() const {
  std::size_t lastStart = kPageSize;
  for (unsigned slot = 0; slot < slotCount_; ++slot)
    lastStart = At(slot).start;
  return lastStart - kDataPageHead - 2 * std::size_t{slotCount_};
}

Slot DataPage::At(unsigned slot) const {
  if (slot >= slotCount_) throw DamageAt(number_, "rij " + std::to_string(slot) + " bestaat niet");
  const std::uint8_t* entry = page_->data() + kDataPageHead + 2 * slot;
  const std::uint16_t raw = LoadU16(entry);
  const std::size_t start = raw & kStartMask;
  const std::size_t end = slot == 0 ? kPageSize : LoadU16(entry - 2) & kStartMask;
  if (start > end || end > kPageSize || start < kDataPageHead + 2 * slotCount_) {
    throw DamageAt(number_, "rij " + std::to_string(slot) + " ligt buiten haar plaats");
  }
  return {static_cast<SlotKind>(raw & kKindMask), static_cast<std::uint16_t>(start),
          static_cast<std::uint16_t>(end - start)};
}

std::string WrongOwnerText(std::uint32_t found, std::uint32_t expected) {
  const auto nameOf = [](std::uint32_t owner) {
    return owner == kLongValueOwner ? "lange waarden" : std::to_string(owner);
  };
  return "hoort bij " + nameOf(found) + " in plaats van bij " + nameOf(expected);
}

void RequireOwner(const DataPage& page, std::uint32_t owner) {
  if (page.Owner() != owner) throw DamageAt(page.Number(), WrongOwnerText(page.Owner(), owner));
}

std::optional<StoredRow> FindRow(PageSource& pages, RowId row, bool firstPlace, std::optional<std::uint32_t> owner) {
  for (int moves = 0; moves < kMaxMoves; ++moves) {
    DataPage page(pages.Read(PageOf(row)), PageOf(row));
    if (owner) RequireOwner(page, *owner);
    if (SlotOf(row) >= page.SlotCount()) return std::nullopt;
    const Slot slot = page.At(SlotOf(row));
    if (slot.kind == SlotKind::Deleted) return std::nullopt;
    if (slot.kind == SlotKind::Target && moves == 0 && firstPlace) return std::nullopt;
    const ByteView bytes = page.BytesOf(slot);
    if (slot.kind != SlotKind::Pointer) return StoredRow{std::move(page).Content(), bytes, row};
    row = U32(bytes, 0);
  }
  throw DamageAt(PageOf(row), "een verplaatste rij verwijst in een kring");
}

}  // namespace jet
