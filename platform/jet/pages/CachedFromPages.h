// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/PageSource.h"

#include <map>
#include <optional>

namespace jet {

// Reads from `pages` and records which pages were read and what they held.
class ReadSet final : public PageSource {
 public:
  // `pages` must outlive it.
  explicit ReadSet(PageSource& pages) : pages_(pages), pageCount_(pages.PageCount()) {}

  std::uint32_t PageCount() override { return pages_.PageCount(); }
  PageRef Read(std::uint32_t number) override { return read_[number] = pages_.Read(number); }

  // Whether reading again would return the same pages. Compares addresses: a page that was changed or read again is
  // another object, and the recorded ones stay alive, so that no address is reused.
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

// A value computed from pages, cached while those pages are unchanged.
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
