// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <span>

namespace jet {

// A data page whose rows are changed. Slots keep their numbers for ever; the bytes of the rows lie packed against the
// page's end, in slot order, and the free bytes are exact.
class RowPage {
 public:
  static constexpr unsigned kMostSlots = 255;
  static constexpr std::size_t kMostRowBytes = 4060;  // of a table's row; a long value's may be 4076
  // A page with less room than this is not offered to new rows any more once one did not fit; real files leave up to
  // 371 bytes unused in this way.
  static constexpr std::size_t kMinUsableBytes = 372;

  // An existing page of `owner`; checked.
  RowPage(Transaction& pages, std::uint32_t number, std::uint32_t owner);
  // Makes a page of zeros an empty data page of `owner`.
  static void Format(PageBytes& page, std::uint32_t owner);
  // Bytes that a new row of the page may have; 0 when there is no slot left.
  static std::size_t RoomForNew(const PageBytes& page);
  // Adds a row that fits; answers its slot.
  static unsigned Add(PageBytes& page, ByteView row, SlotKind kind);

  std::uint32_t Number() const { return number_; }
  std::size_t RoomForNew() const { return RoomForNew(*View().Content()); }
  // Bytes that the row in `slot` may have.
  std::size_t RoomIn(unsigned slot) const;
  std::size_t FreeBytes() const;
  // Whether every slot is deleted.
  bool IsEmpty() const;

  // Adds a row that fits; answers its slot.
  unsigned Add(ByteView row, SlotKind kind = SlotKind::Row) { return Add(pages_.Change(number_), row, kind); }
  // Gives a slot other bytes, which fit, or another kind.
  void Replace(unsigned slot, ByteView row, SlotKind kind);
  // Deletes rows of this page, in the order of their slots and each named once. The slots stay, without bytes.
  void Delete(std::span<const RowId> rows);

 private:
  template <typename Change>
  void Rebuild(Change change);
  DataPage View() const { return DataPage(pages_.Read(number_), number_); }

  Transaction& pages_;
  std::uint32_t number_;
};

}  // namespace jet
