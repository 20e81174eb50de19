// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/FreeMapImage.h"

#include <algorithm>
#include <stdexcept>

namespace jet::test {

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kHead = 14;
constexpr std::uint32_t kPagesPerBitmapPage = (kPage - 4) * 8;
constexpr std::size_t kShortestRow = 69;

ByteView RowOf(const Bytes& file, std::size_t slot) {
  const std::uint8_t* page = &file[kPage];
  const std::size_t start = LoadU16(page + kHead + 2 * slot);
  const std::size_t end = slot == 0 ? kPage : LoadU16(page + kHead + 2 * (slot - 1));
  return {page + start, end - start};
}

bool Bit(const std::uint8_t* bits, std::uint32_t number) {
  return (bits[number / 8] >> (number % 8) & 1) != 0;
}

void SetBit(std::uint8_t* bits, std::uint32_t number) {
  bits[number / 8] |= static_cast<std::uint8_t>(1U << (number % 8));
}

}  // namespace

FreeMapImage::FreeMapImage(Bytes& file) : file_(file) {
  const ByteView row = RowOf(file_, 0);
  const ByteView second = RowOf(file_, 1);
  second_.assign(second.begin(), second.end());
  for (std::uint32_t page = 0; page < PageCount(); ++page) {
    if (row[0] == 0) {
      const std::uint32_t first = LoadU32(&row[1]);
      const bool covered = page >= first && page - first < 8 * (row.size() - 5);
      if (covered && Bit(&row[5], page - first)) free_.insert(page);
    } else {
      const std::uint32_t bitmap = LoadU32(&row[1 + 4 * (page / kPagesPerBitmapPage)]);
      if (bitmap != 0 && Bit(&file_[bitmap * kPage + 4], page % kPagesPerBitmapPage)) free_.insert(page);
    }
  }
}

std::uint32_t FreeMapImage::PageCount() const {
  return static_cast<std::uint32_t>(file_.size() / kPage);
}

void FreeMapImage::PutWindow(std::uint32_t first) {
  const std::uint32_t pages = PageCount() + 1 - std::min(first, PageCount());
  Bytes row(std::max<std::size_t>(kShortestRow, 5 + (pages + 31) / 32 * 4));
  Store(&row[1], first);
  const auto end = static_cast<std::uint32_t>(first + 8 * (row.size() - 5));
  for (std::uint32_t page = first; page < end; ++page) {
    if (page >= PageCount() || free_.contains(page)) SetBit(&row[5], page - first);
  }
  free_.erase(free_.begin(), free_.lower_bound(first));
  Put(row, second_);
}

void FreeMapImage::PutBitmapPages() {
  Bytes row(kShortestRow);
  row[0] = 1;
  const std::uint32_t entries = (PageCount() + 1) / kPagesPerBitmapPage + 1;
  const std::uint32_t oldCount = PageCount();
  file_.resize(file_.size() + entries * kPage);
  for (std::uint32_t entry = 0; entry < entries; ++entry) {
    std::uint8_t* bitmap = &file_[(oldCount + entry) * kPage];
    bitmap[0] = 5;
    bitmap[1] = 1;
    Store(&row[1 + 4 * entry], oldCount + entry);
    for (std::uint32_t bit = 0; bit < kPagesPerBitmapPage; ++bit) {
      const std::uint32_t page = entry * kPagesPerBitmapPage + bit;
      if (page >= PageCount() || free_.contains(page)) SetBit(bitmap + 4, bit);
    }
  }
  Put(row, second_);
}

void FreeMapImage::LeaveNoRoom() {
  const ByteView row = RowOf(file_, 0);
  Bytes second(kPage - kHead - 4 - row.size() - 3);
  Put(Bytes(row.begin(), row.end()), second);
}

void FreeMapImage::Put(const Bytes& first, const Bytes& second) {
  Bytes shortened = second;
  const std::size_t room = kPage - kHead - 4;
  if (first.size() > room) throw std::logic_error("no room for such a map");
  if (first.size() + shortened.size() > room) shortened.resize(room - first.size());
  std::uint8_t* page = &file_[kPage];
  std::fill_n(page + 2, kPage - 2, std::uint8_t{0});
  const std::size_t firstAt = kPage - first.size();
  const std::size_t secondAt = firstAt - shortened.size();
  std::copy(first.begin(), first.end(), page + firstAt);
  std::copy(shortened.begin(), shortened.end(), page + secondAt);
  Store(page + 2, static_cast<std::uint16_t>(secondAt - kHead - 4));
  Store(page + 4, std::uint32_t{1});
  Store(page + 12, std::uint16_t{2});
  Store(page + kHead, static_cast<std::uint16_t>(firstAt));
  Store(page + kHead + 2, static_cast<std::uint16_t>(secondAt));
  second_ = shortened;
}

}  // namespace jet::test
