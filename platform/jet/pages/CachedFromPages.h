// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/Pages.h"

#include <map>
#include <optional>

namespace jet {

// Reads through, and remembers which pages were read and what they held.
class ReadSet final : public PageSource {
 public:
  // `pages` must outlive it.
  explicit ReadSet(PageSource& pages) : pages_(pages), pageCount_(pages.PageCount()) {}

  std::uint32_t PageCount() override { return pages_.PageCount(); }
  PageRef Read(std::uint32_t number) override { return read_[number] = pages_.Read(number); }

  // Whether reading again would meet the same. A page that was changed, or read anew from the file, is another one; as
  // long as this one holds it, no other can take its place in memory.
  bool IsUnchanged() {
    if (pages_.PageCount() != pageCount_) return false;
    for (const auto& [number, page] : read_) {
      if (pages_.Read(number) != page) return false;
    }
    return true;
  }

 private:
  PageSource& pages_;
  std::uint32_t pageCount_;
  std::map<std::uint32_t, PageRef> read_;
};

// Something made of what pages hold, kept while these stay as they are.
template <typename T>
class CachedFromPages {
 public:
  // `make` takes a PageSource.
  template <typename Make>
  const T& Get(PageSource& pages, Make make) {
    if (!made_ || !log_->IsUnchanged()) {
      made_.reset();
      made_ = make(log_.emplace(pages));
    }
    return *made_;
  }

 private:
  std::optional<ReadSet> log_;
  std::optional<T> made_;
};

}  // namespace jet
