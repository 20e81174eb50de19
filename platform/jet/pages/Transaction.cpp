// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Transaction.h"

#include "platform/jet/values/Error.h"

namespace jet {

PageRef Transaction::Read(std::uint32_t number) {
  const auto changed = changes_.find(number);
  return changed != changes_.end() ? PageRef(changed->second) : base_.Read(number);
}

PageBytes& Transaction::Change(std::uint32_t number) {
  std::shared_ptr<PageBytes>& page = changes_[number];
  if (page == nullptr) {
    page = std::make_shared<PageBytes>(*base_.Read(number));
  } else if (page.use_count() > 1) {
    page = std::make_shared<PageBytes>(*page);
  }
  return *page;
}

std::uint32_t Transaction::Append() {
  if (pageCount_ >= kMaxPages) throw Error(ErrorCode::DiskFull, "Het databasebestand mag niet groter worden dan 2 GB.");
  changes_[pageCount_] = std::make_shared<PageBytes>(PageBytes{});
  return pageCount_++;
}

bool Transaction::IsWronglyFree(std::uint32_t number) {
  return doubtful_.Get(base_).inUse.contains(number);
}

std::vector<RowId> Transaction::IndexMapsWith(std::uint32_t number) {
  std::vector<RowId> maps;
  const auto [first, last] = doubtful_.Get(base_).stillInIndexMap.equal_range(number);
  for (auto entry = first; entry != last; ++entry)
    maps.push_back(entry->second);
  return maps;
}

}  // namespace jet
