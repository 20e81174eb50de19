// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Pages.h"

#include "platform/files/File.h"
#include "platform/jet/pages/Rc4.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>

namespace jet {

void ApplyPageEncoding(std::uint32_t key, std::uint32_t number, PageBytes& page) {
  if (number == 0 || key == 0) return;
  std::array<std::uint8_t, 4> keyOfPage;
  Store(keyOfPage.data(), key ^ number);
  ApplyRc4(keyOfPage, page);
}

Pages::Pages(files::File& file, std::size_t cachedPages)
    : file_(file), capacity_(std::max<std::size_t>(cachedPages, 1)) {
  Refresh();
}

void Pages::Clear() noexcept {
  recent_.clear();
  index_.clear();
}

void Pages::Refresh() {
  Clear();
  PageBytes page0{};
  const std::size_t length = file_.ReadAt(0, page0);
  header_ = ParseHeader(ByteView(page0).first(length), file_.Name());
  pageCount_ = static_cast<std::uint32_t>(std::min<std::uint64_t>(file_.Size() / kPageSize, kMaxPages));
}

PageRef Pages::Read(std::uint32_t number) {
  if (!recent_.empty() && recent_.front().number == number) return recent_.front().page;
  if (const auto found = index_.find(number); found != index_.end()) {
    recent_.splice(recent_.begin(), recent_, found->second);
    return recent_.front().page;
  }
  PageRef page = Load(number);
  Keep(number, page);
  return page;
}

void Pages::Keep(std::uint32_t number, PageRef page) {
  if (recent_.size() >= capacity_) {
    index_.erase(recent_.back().number);
    recent_.pop_back();
  }
  recent_.push_front({number, std::move(page)});
  index_[number] = recent_.begin();
}

PageRef Pages::Load(std::uint32_t number) {
  if (number >= pageCount_) throw DamageAt(number, "ligt voorbij het einde van het bestand");
  auto page = std::make_shared_for_overwrite<PageBytes>();
  if (file_.ReadAt(std::uint64_t{number} * kPageSize, *page) != kPageSize) {
    throw DamageAt(number, "het bestand is afgekapt");
  }
  ApplyEncoding(number, *page);
  return page;
}

void Pages::Accept(std::uint32_t number, PageRef page) {
  pageCount_ = std::max(pageCount_, number + 1);
  if (const auto found = index_.find(number); found != index_.end()) {
    found->second->page = std::move(page);
  } else {
    Keep(number, std::move(page));
  }
}

void Pages::ApplyEncoding(std::uint32_t number, PageBytes& page) const {
  ApplyPageEncoding(header_.encodingKey, number, page);
}

}  // namespace jet
