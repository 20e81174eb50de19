// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"
#include "platform/jet/table/PageClaims.h"

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

namespace jet {

// The changed pages of one statement over those of the file. Reading sees the changes; nothing is written to the file
// until a Storage commits them. Not thread-safe.
class Transaction final : public PageSource {
 public:
  // Result of the search for free pages that are in use; shared by all transactions of a file until another program
  // writes to it.
  using UsedButMarkedFree = std::optional<DoubtfulFreePages>;

  explicit Transaction(PageSource& base, UsedButMarkedFree* wronglyFree = nullptr)
      : base_(base), wronglyFree_(wronglyFree != nullptr ? *wronglyFree : own_), pageCount_(base.PageCount()) {}

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
  const DoubtfulFreePages& Doubtful();

  PageSource& base_;
  UsedButMarkedFree own_;
  UsedButMarkedFree& wronglyFree_;
  std::uint32_t pageCount_;
  std::unordered_map<std::uint32_t, std::shared_ptr<PageBytes>> changes_;
};

}  // namespace jet
