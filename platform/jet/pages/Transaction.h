// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DoubtfulFreePages.h"
#include "platform/jet/pages/PageSource.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace jet {

// The changed pages of one statement over those of the file. Reading sees the changes; nothing is written to the file
// until a Storage commits them. Not thread-safe.
class Transaction final : public PageSource {
 public:
  // `doubtful`: the free pages of the file that need care; it must outlive this. Without it there are none.
  explicit Transaction(PageSource& base, DoubtfulFreePagesOfFile* doubtful = nullptr)
      : base_(base), doubtful_(doubtful != nullptr ? *doubtful : noDoubtful_), pageCount_(base.PageCount()) {}

  std::uint32_t PageCount() override { return pageCount_; }
  PageRef Read(std::uint32_t number) override;

  // The page for writing. The reference is invalid after the next Read of the same page: a reader keeps its version, so
  // the next Change copies the page.
  PageBytes& Change(std::uint32_t number);
  // Appends a page of zeros to the file; returns its number.
  std::uint32_t Append();

  // Whether the file marked page `number` as free before this statement although it is in use.
  bool IsWronglyFree(std::uint32_t number);
  // The maps of indexes that still contain page `number`, although it was emptied and is free.
  std::vector<RowId> IndexMapsWith(std::uint32_t number);

  bool IsEmpty() const { return changes_.empty(); }
  // By page number, the order in which they are written.
  std::map<std::uint32_t, PageRef> ChangedPages() const { return {changes_.begin(), changes_.end()}; }
  // Pages in the file before this statement.
  std::uint32_t OldPageCount() { return base_.PageCount(); }

 private:
  PageSource& base_;
  DoubtfulFreePagesOfFile noDoubtful_;
  DoubtfulFreePagesOfFile& doubtful_;
  std::uint32_t pageCount_;
  std::unordered_map<std::uint32_t, std::shared_ptr<PageBytes>> changes_;
};

}  // namespace jet
