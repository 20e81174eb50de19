// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace jet {

// Where the bits of one usage map are in the file. The reader (UsageMap) and the editor (UsageMapEditor) both use this
// class, so that they agree on every map, also a damaged one.
//
// A map is a row of a data page. Inline: the byte 0, a u32 first page, a bitmap. By reference: the byte 1, then u32
// numbers of bitmap pages (0 = none), entry i for the pages from 32736 * i on. Bit k of a byte, the lowest first, is
// one page. A map that begins past 2 GB is damaged. No page number in this class exceeds 2^32, whatever the file holds.
class MapLayout {
 public:
  static constexpr std::uint8_t kInline = 0;
  static constexpr std::uint8_t kReference = 1;
  static constexpr std::size_t kInlineHead = 5;
  static constexpr std::size_t kReferenceHead = 1;
  static constexpr std::size_t kBitmapPageHead = 4;
  static constexpr std::uint32_t kPagesPerBitmapPage = (kPageSize - kBitmapPageHead) * 8;
  // Entries of a map by reference that cover the largest file (2 GB); further entries are ignored.
  static constexpr std::size_t kMaxEntries = (kMaxPages + kPagesPerBitmapPage - 1) / kPagesPerBitmapPage;
  static constexpr std::size_t kNewMapBytes = 69;  // row of a new map: 512 bits, or 17 entries

  // `bytes` bytes of bits from offset `start` of page `holder`; the first bit is for page `first`.
  struct Run {
    std::uint32_t holder;
    std::size_t start;
    std::size_t bytes;
    std::uint32_t first;

    std::uint32_t End() const { return first + static_cast<std::uint32_t>(8 * bytes); }
    bool Covers(std::uint32_t page) const { return page >= first && page < End(); }
  };

  // Throws Damage when the row is not a map: missing, moved, of an unknown kind, or with a bitmap page listed twice.
  MapLayout(PageSource& pages, RowId where);

  bool IsInline() const { return isInline_; }
  // The first page that an inline map has a bit for; 0 for a map by reference.
  std::uint32_t FirstPage() const { return isInline_ ? first_ : 0; }
  std::size_t RunCount() const { return isInline_ ? 1 : entryCount_; }
  // Nothing for an entry without a bitmap page. Throws Damage when the page is not a bitmap page.
  std::optional<Run> RunAt(PageSource& pages, std::size_t i) const;
  // The run with a bit for `page`; nothing when there is none.
  std::optional<Run> RunOf(PageSource& pages, std::uint32_t page) const;
  bool Contains(PageSource& pages, std::uint32_t page) const;
  // Offset of entry `i` of a map by reference in the row's page; nothing when the row is too short.
  std::optional<std::size_t> OffsetOfEntry(std::size_t i) const;

  // The row's page, offset and length.
  std::uint32_t Page() const { return page_; }
  std::size_t Start() const { return start_; }
  std::size_t Length() const { return length_; }

 private:
  void ReadEntries(const std::uint8_t* row);

  std::uint32_t page_;
  std::size_t start_ = 0;
  std::size_t length_ = 0;
  bool isInline_ = true;
  std::uint32_t first_ = 0;
  std::size_t entryCount_ = 0;
  std::array<std::uint32_t, kMaxEntries> entries_{};
};

}  // namespace jet
