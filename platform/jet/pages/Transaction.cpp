// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Transaction.h"

#include "platform/jet/values/Error.h"

namespace jet {

PageRef Transaction::Read(std::uint32_t number) {
  const std::shared_ptr<PageBytes>* changed = Find(number);
  return changed != nullptr ? PageRef(*changed) : base_.Read(number);
}

std::shared_ptr<PageBytes>* Transaction::Find(std::uint32_t number) {
  Found& recent = found_[number % found_.size()];
  if (recent.page != nullptr && recent.number == number) return recent.page;
  const auto changed = changes_.find(number);
  if (changed == changes_.end()) return nullptr;
  recent = {number, &changed->second};
  return recent.page;
}

PageBytes& Transaction::Change(std::uint32_t number) {
  std::shared_ptr<PageBytes>* changed = Find(number);
  if (changed == nullptr) return *(changes_[number] = std::make_shared<PageBytes>(*base_.Read(number)));
  if (changed->use_count() > 1) *changed = std::make_shared<PageBytes>(**changed);
  return **changed;
}

std::uint32_t Transaction::Append() {
  if (pageCount_ >= kMaxPages) throw Error(ErrorCode::DiskFull, "Het databasebestand mag niet groter worden dan 2 GB.");
  changes_[pageCount_] = std::make_shared<PageBytes>(PageBytes{});
  return pageCount_++;
}

PageBytes& Transaction::Renew(std::uint32_t number) {
  renewed_.push_back(number);
  return *(changes_[number] = std::make_shared<PageBytes>());
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
