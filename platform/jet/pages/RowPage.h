// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DataPage.h"
#include "platform/jet/pages/Transaction.h"

#include <cstdint>
#include <span>

namespace jet {

// Changes rows of a data page. Slots are never renumbered; row bytes are packed against the end of the page, in slot
// order, and the stored count of free bytes is exact.
class RowPage {
 public:
  static constexpr unsigned kMaxWrittenSlots = 255;  // written; a page that is read may have one more (DataPage.h)
  static constexpr std::size_t kMaxRowBytes = 4060;  // of a table's row; a piece of a long value may have 4076
  // Once a row did not fit, a page with less room than this is no longer offered for new rows; real files leave up to
  // 371 bytes unused this way.
  static constexpr std::size_t kMinUsableBytes = 372;

  // Throws Damage when the page is not a sound data page of `owner`.
  RowPage(Transaction& pages, std::uint32_t number, std::uint32_t owner);
  // Turns a page of zeros into an empty data page of `owner`.
  static void Format(PageBytes& page, std::uint32_t owner);
  // The maximum number of bytes of a new row; 0 when there is no slot left.
  static std::size_t RoomForNew(const PageBytes& page);
  // Adds a row that fits (RoomForNew); returns its slot.
  static unsigned Add(PageBytes& page, ByteView row, SlotKind kind);

  std::uint32_t Number() const { return number_; }
  std::size_t RoomForNew() const;
  // The maximum number of bytes of the row in `slot`.
  std::size_t RoomIn(unsigned slot) const;
  std::size_t FreeBytes() const;
  // Whether every slot is deleted.
  bool IsEmpty() const;

  // Adds a row that fits (RoomForNew); returns its slot.
  unsigned Add(ByteView row, SlotKind kind = SlotKind::Row) { return Add(pages_.Change(number_), row, kind); }
  // Replaces bytes and kind of a slot. The bytes must fit (RoomIn).
  void Replace(unsigned slot, ByteView row, SlotKind kind);
  // Deletes rows of this page, given in slot order without repeats. Their slots remain, without bytes.
  void Delete(std::span<const RowId> rows);

 private:
  template <typename Change>
  void Rebuild(unsigned first, Change change);
  DataPage View() const { return DataPage(pages_.Read(number_), number_); }

  Transaction& pages_;
  std::uint32_t number_;
};

}  // namespace jet
