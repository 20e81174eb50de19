// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DoubtfulFreePages.h"
#include "platform/jet/pages/PageSource.h"

#include <array>
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

  // The page as this statement changed it, without a share in it: valid until the next Change of the page. Null when it
  // has not been changed.
  const PageBytes* Changed(std::uint32_t number) {
    const std::shared_ptr<PageBytes>* changed = Find(number);
    return changed == nullptr ? nullptr : changed->get();
  }
  // The page for writing. The reference is invalid after the next Read of the same page: a reader keeps its version, so
  // the next Change copies the page.
  PageBytes& Change(std::uint32_t number);
  // Appends a page of zeros to the file; returns its number.
  std::uint32_t Append();
  // Page `number` as zeros, for writing; its content, which is not read, is no longer needed.
  PageBytes& Renew(std::uint32_t number);
  // The pages that were renewed.
  const std::vector<std::uint32_t>& Renewed() const { return renewed_; }

  // Whether the file marked page `number` as free before this statement although it is in use.
  bool IsWronglyFree(std::uint32_t number);
  // The maps of indexes that still contain page `number`, although it was emptied and is free.
  std::vector<RowId> IndexMapsWith(std::uint32_t number);

  bool IsEmpty() const { return changes_.empty(); }
  // By page number, the order in which they are written.
  std::map<std::uint32_t, PageRef> ChangedPages() const { return {changes_.begin(), changes_.end()}; }
  // The file before this statement.
  PageSource& Before() { return base_; }

 private:
  // Where a page is in `changes_`, which never moves its entries.
  struct Found {
    std::uint32_t number = 0;
    std::shared_ptr<PageBytes>* page = nullptr;
  };

  // Null when the page is not changed.
  std::shared_ptr<PageBytes>* Find(std::uint32_t number);

  PageSource& base_;
  DoubtfulFreePagesOfFile noDoubtful_;
  DoubtfulFreePagesOfFile& doubtful_;
  std::uint32_t pageCount_;
  std::unordered_map<std::uint32_t, std::shared_ptr<PageBytes>> changes_;
  std::array<Found, 16> found_{};  // rows that follow each other use the same few pages
  std::vector<std::uint32_t> renewed_;
};

}  // namespace jet
