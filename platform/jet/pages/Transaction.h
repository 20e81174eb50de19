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

// The changed pages of one statement, laid over the file's own. Reading sees the changes; nothing reaches the file
// until a Storage commits them. Not thread-safe.
class Transaction final : public PageSource {
 public:
  // What is known of a file's free pages, for all its transactions until another program writes to it.
  using UsedButMarkedFree = std::optional<DoubtfulFreePages>;

  explicit Transaction(PageSource& base, UsedButMarkedFree* wronglyFree = nullptr)
      : base_(base), wronglyFree_(wronglyFree != nullptr ? *wronglyFree : own_), pageCount_(base.PageCount()) {}

  std::uint32_t PageCount() override { return pageCount_; }
  PageRef Read(std::uint32_t number) override;

  // The page, to be changed. Ask again after any Read of the same page: whoever reads a page keeps what was read.
  PageBytes& Change(std::uint32_t number);
  // A new page of zeros at the end of the file; answers its number.
  std::uint32_t Append();

  // Whether the file called page `number` free before this statement, although it is in use.
  bool IsWronglyFree(std::uint32_t number);
  // The maps of indexes that still name page `number`, although it was emptied and is free.
  std::vector<RowId> IndexMapsThatKept(std::uint32_t number);

  bool IsEmpty() const { return changes_.empty(); }
  // In the order of their numbers, as they go to the disk.
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
