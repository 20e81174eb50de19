// SPDX-License-Identifier: MIT
#include "platform/jet/storage/OverlaidPages.h"

namespace jet {
namespace {

constexpr std::size_t kMaxKept = 2048;

}  // namespace

std::uint32_t OverlaidPages::PageCount() {
  return static_cast<std::uint32_t>(images_->Length() / kPageSize);
}

PageRef OverlaidPages::Read(std::uint32_t number) {
  if (const auto found = kept_.find(number); found != kept_.end()) return found->second;
  const auto image = images_->Read(number);
  if (image == nullptr) return pages_.Read(number);
  // The journal has the pages as stored; callers expect them decoded, as Pages returns them.
  pages_.ApplyEncoding(number, *image);
  if (kept_.size() >= kMaxKept) kept_.clear();
  return kept_[number] = image;
}

}  // namespace jet
