// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace jet {

// Layout of an index page.
namespace index_page {
constexpr std::size_t kTableAt = 4;
constexpr std::size_t kPreviousAt = 12;
constexpr std::size_t kNextAt = 16;
constexpr std::size_t kTailAt = 20;
constexpr std::size_t kPrefixAt = 24;
constexpr std::size_t kLevelAt = 26;
constexpr std::size_t kMaskAt = 27;
constexpr std::size_t kMaskBytes = 453;
constexpr std::size_t kEntriesAt = 480;
constexpr std::size_t kPointerBytes = 4;  // after the key of an entry: u24 page and u8 row, big-endian
constexpr std::size_t kChildBytes = 4;    // after that in a node: the child page, big-endian
constexpr std::size_t kEntryBytes = kPageSize - kEntriesAt;  // 3616
constexpr std::size_t kDeepest = 32;                         // levels; a deeper tree is damaged
}  // namespace index_page

// A checked view of an index page, leaf or node. Entries are numbered from 0.
class IndexPage {
 public:
  // Throws Damage when the page is not an index page of `table` or its entries are not consistent. The ends of the
  // entries of pages read before are kept for the thread: a look-up reads the same few pages again and again.
  IndexPage(PageRef page, std::uint32_t number, std::uint32_t table);
  // Keeps the ends of the entries of a page that was just changed.
  static void KeepEnds(std::uint32_t number, const PageBytes& page, std::vector<std::uint16_t> ends);

  std::uint32_t Number() const { return number_; }
  bool IsLeaf() const { return (*page_)[0] == static_cast<std::uint8_t>(PageType::IndexLeaf); }
  std::uint32_t Previous() const { return Field(index_page::kPreviousAt); }
  std::uint32_t Next() const { return Field(index_page::kNextAt); }
  std::uint32_t Tail() const { return Field(index_page::kTailAt); }
  unsigned Level() const { return (*page_)[index_page::kLevelAt]; }
  unsigned FreeBytes() const;
  // The correct value of the page's count of free bytes.
  unsigned ExactFreeBytes() const;
  std::size_t Count() const { return ends_->size(); }
  // The end offset of each entry in the page.
  const std::vector<std::uint16_t>& Ends() const { return *ends_; }

  // The complete entry: key and row pointer (u24 page, u8 row, big-endian); of a node without the child page.
  void CopyEntry(std::size_t entry, Bytes& out) const;
  RowId Row(std::size_t entry) const;
  // Nodes only: the child of `entry`, or for Count() the tail (0 = none).
  std::uint32_t Child(std::size_t entry) const;
  // The number of the first entry that is not less than `key`; Count() when there is none.
  std::size_t LowerBound(ByteView key) const;

 private:
  std::uint32_t Field(std::size_t at) const;
  std::vector<std::uint16_t> ReadEnds() const;
  ByteView Stored(std::size_t entry) const;
  std::size_t PointerBytes() const { return IsLeaf() ? 4 : 8; }
  bool Less(std::size_t entry, ByteView key) const;

  PageRef page_;
  std::uint32_t number_;
  std::size_t prefix_;
  std::shared_ptr<const std::vector<std::uint16_t>> ends_;
};

}  // namespace jet
