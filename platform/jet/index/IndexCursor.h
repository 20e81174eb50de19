// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/IndexPage.h"

#include <optional>

namespace jet {

// Iterates over the entries of one index in key order, in both directions. Not valid before the first Seek.
//
// The tree must not change during its lifetime. Damage throws an Error that names the page.
class IndexCursor {
 public:
  // `pages` must outlive the cursor. `table`: definition page of the table; `root`: of the tree.
  IndexCursor(PageSource& pages, std::uint32_t table, std::uint32_t root);

  void SeekFirst();
  void SeekLast();
  // Moves to the first entry not less than `key` (a key, a prefix of one, or a complete entry).
  void Seek(ByteView key);

  bool Valid() const { return leaf_.has_value(); }
  void Next();
  void Previous();

  // Key bytes, without the row pointer. Only while Valid().
  ByteView Key() const { return ByteView(bytes_).first(bytes_.size() - 4); }
  // Key bytes and row pointer.
  ByteView Entry() const { return bytes_; }
  RowId Row() const { return leaf_->Row(entry_); }

 private:
  enum class End { First, Last };
  IndexPage Load(std::uint32_t number);
  template <typename Choose>
  void Descend(Choose choose);
  void MoveToLeaf(std::uint32_t number, End end);
  void Settle(End whenEmpty);
  void CountStep(std::uint32_t number);

  PageSource& pages_;
  std::uint32_t table_;
  std::uint32_t root_;
  std::optional<IndexPage> leaf_;
  std::size_t entry_ = 0;
  Bytes bytes_;
  std::uint32_t steps_ = 0;  // pages visited since the last Seek; more than the file has means a loop
};

}  // namespace jet
