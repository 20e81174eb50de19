#include "platform/jet/Transaction.h"

#include "platform/jet/Error.h"
#include "platform/jet/PageClaims.h"

namespace jet {
namespace {

constexpr std::uint32_t kMostPages = (std::uint32_t{1} << 31) / kPageSize;

}  // namespace

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
  if (pageCount_ >= kMostPages)
    throw Error(ErrorCode::DiskFull, "Het databasebestand mag niet groter worden dan 2 GB.");
  changes_[pageCount_] = std::make_shared<PageBytes>(PageBytes{});
  return pageCount_++;
}

bool Transaction::IsWronglyFree(std::uint32_t number) {
  if (base_.PageCount() == 0) return false;
  if (!wronglyFree_) wronglyFree_ = FindWronglyFreePages(base_);
  return wronglyFree_->count(number) != 0;
}

}  // namespace jet
