#pragma once

#include "platform/jet/PageSpace.h"
#include "platform/jet/RowId.h"
#include "platform/jet/Transaction.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace jet {

/// One usage map, to be changed: a row of a data page that is a bitmap itself (kind 0) or names bitmap pages (kind 1).
/// Where a bit lies is looked up at every call; nothing is kept.
class MapRow {
 public:
  static constexpr std::size_t kFreshBytes = 69;  ///< as new maps are made: kind, first page, 512 bits
  static constexpr std::size_t kInlineHead = 5;
  static constexpr std::size_t kReferenceHead = 1;
  static constexpr std::size_t kBitmapPageHead = 4;
  static constexpr std::uint32_t kPagesPerBitmapPage = (kPageSize - kBitmapPageHead) * 8;

  MapRow(Transaction& pages, RowId where) : pages_(pages), where_(where) {}

  bool Contains(std::uint32_t page);
  /// Makes the map reach further where it must, for which it takes pages from `space`.
  void Add(PageSpace& space, std::uint32_t page);
  void Remove(std::uint32_t page);
  /// Takes out every member. Bitmap pages go back to `space`: the map is a short one again, as it was made.
  void Clear(PageSpace& space);
  /// All members, from the highest down.
  std::vector<std::uint32_t> Members();
  /// The highest member below `below`.
  std::optional<std::uint32_t> HighestBelow(std::uint32_t below);
  /// The lowest member.
  std::optional<std::uint32_t> Lowest();

  /// Where the row's bytes are: page, place in it, length.
  struct Place {
    std::uint32_t page;
    std::size_t start;
    std::size_t length;
  };
  Place Where();
  bool IsInline();

 private:
  /// A run of bits: `bytes` bytes at `start` of `page`, the first bit for page `first`.
  struct Bits {
    std::uint32_t page;
    std::size_t start;
    std::size_t bytes;
    std::uint32_t first;
    bool Has(std::uint32_t member) const { return member >= first && member - first < 8 * bytes; }
  };
  std::size_t RunCount();
  std::optional<Bits> Run(std::size_t i);
  std::optional<Bits> RunOf(std::uint32_t page);
  void Set(const Bits& bits, std::uint32_t page, bool on);
  void Blank(std::uint8_t kind);
  bool MoveWindow(std::uint32_t page);
  void UseBitmapPages(PageSpace& space);

  Transaction& pages_;
  RowId where_;
};

}  // namespace jet
