// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Bytes.h"

#include <optional>
#include <string>
#include <utility>

namespace jet {

// Layout of a data page.
constexpr std::size_t kFreeBytesAt = 2;
constexpr std::size_t kOwnerAt = 4;
constexpr std::size_t kSlotCountAt = 12;
constexpr std::size_t kDataPageHead = 14;
// Slots of a page that is read: a RowId has one byte for the slot. RowPage writes at most 255.
constexpr unsigned kMaxReadSlots = 256;
// Owners (bytes 4 to 7) that are not a table: "LVAL" for long values, 0 for rows of usage maps, 1 for page 1 itself.
constexpr std::uint32_t kLongValueOwner = 0x4C41564C;
constexpr std::uint32_t kUsageMapOwner = 0;

// The two flag bits of a slot.
enum class SlotKind : std::uint16_t {
  Row = 0,
  Pointer = 0x4000,  // the first four bytes are the RowId of the row's current place
  Target = 0x8000,   // reached only through a pointer
  Deleted = 0xC000
};

// One slot of a data page and the bytes it owns.
struct Slot {
  SlotKind kind;
  std::uint16_t start;
  std::uint16_t length;
};

// A view of a data page, which it keeps alive. Each slot is checked when it is read.
class DataPage {
 public:
  // Throws Damage when the page is not a data page or has too many slots.
  DataPage(PageRef page, std::uint32_t number);

  std::uint32_t Number() const { return number_; }
  const PageRef& Content() const& { return page_; }
  PageRef Content() && { return std::move(page_); }
  std::uint32_t Owner() const;
  unsigned FreeBytes() const;  // as stored
  // The free bytes between the last slot entry and the last row; a sound page stores this number.
  std::size_t MeasuredFreeBytes() const;
  unsigned SlotCount() const { return slotCount_; }
  Slot At(unsigned slot) const;
  ByteView BytesOf(const Slot& slot) const { return ByteView(*page_).subspan(slot.start, slot.length); }

 private:
  PageRef page_;
  std::uint32_t number_;
  unsigned slotCount_;
};

// "hoort bij FOUND in plaats van bij EXPECTED".
std::string WrongOwnerText(std::uint32_t found, std::uint32_t expected);
// Throws Damage when the page does not belong to `owner`.
void RequireOwner(const DataPage& page, std::uint32_t owner);

// A row's bytes together with the page that holds them.
struct StoredRow {
  PageRef page;
  ByteView bytes;
  RowId place = 0;  // present place: another one for a moved row
};

// Finds the bytes of a row, following the pointers of a moved one. Nothing when the slot does not exist, is deleted, or
// (with `firstPlace`) is only the target of a pointer. With `owner`, all pages must belong to it.
std::optional<StoredRow> FindRow(PageSource& pages, RowId row, bool firstPlace,
                                 std::optional<std::uint32_t> owner = std::nullopt);

}  // namespace jet
