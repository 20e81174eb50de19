// SPDX-License-Identifier: MIT
#include "platform/dao/SortedRows.h"

#include "platform/jet/values/TextOrder.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <variant>

namespace dao {
namespace {

// A longer text is not in its key as a whole.
constexpr std::size_t kLongestWithKey = 255;

// A copy in `memory`.
template <class Item>
const Item* Copied(const Item* items, std::size_t count, std::pmr::memory_resource& memory) {
  if (count == 0) return items;
  auto* copy = static_cast<Item*>(memory.allocate(count * sizeof(Item), alignof(Item)));
  std::memcpy(copy, items, count * sizeof(Item));
  return copy;
}

std::uint64_t StartOf(std::basic_string_view<std::uint8_t> key) {
  std::uint64_t start = 0;
  for (std::size_t i = 0; i < sizeof start; ++i)
    start = start << 8 | (i < key.size() ? key[i] : 0);
  return start;
}

}  // namespace

SortedRows::SortedRows(Cursor& rows, const FieldMask& wanted, std::size_t field)
    : columns_(kMostFields), width_(wanted.count()), sortColumn_(0) {
  std::vector<std::size_t> fields;
  for (std::size_t i = 0; fields.size() < width_; ++i) {
    if (!wanted[i]) continue;
    columns_[i] = fields.size();
    fields.push_back(i);
  }
  sortColumn_ = columns_[field];
  for (std::uint32_t row = 0; rows.Next(); ++row) {
    ids_.push_back(rows.Id());
    for (const std::size_t i : fields)
      values_.push_back(Kept(rows.Field(i)));
    places_.push_back(PlaceOf(values_[values_.size() - width_ + sortColumn_], row));
  }
  std::sort(places_.begin(), places_.end(),
            [this](const Place& one, const Place& other) { return IsBefore(one, other); });
}

bool SortedRows::Next() {
  if (next_ == places_.size()) return false;
  ++next_;
  return true;
}

ValueView SortedRows::Field(std::size_t field) const {
  return values_[Row() * width_ + columns_[field]];
}

ValueView SortedRows::Kept(const ValueView& value) {
  if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    return std::u16string_view(Copied(text->data(), text->size(), memory_), text->size());
  }
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) {
    return std::span(Copied(bytes->data(), bytes->size(), memory_), bytes->size());
  }
  return value;
}

SortedRows::Place SortedRows::PlaceOf(const ValueView& value, std::uint32_t row) {
  Place place;
  place.row = row;
  const auto* text = std::get_if<std::u16string_view>(&value);
  if (text == nullptr) return place;
  const jet::TextOrder& order = jet::TextOrder::Legacy();
  place.hasKey = text->size() <= kLongestWithKey && !order.FirstUnknown(*text);
  if (!place.hasKey) return place;
  key_.clear();
  order.AppendKey(*text, key_);
  place.key = {Copied(key_.data(), key_.size(), memory_), key_.size()};
  place.start = StartOf(place.key);
  return place;
}

bool SortedRows::IsBefore(const Place& one, const Place& other) const {
  if (one.start != other.start && one.hasKey && other.hasKey) return one.start < other.start;
  int order = 0;
  if (one.hasKey && other.hasKey) {
    const std::size_t shorter = std::min(one.key.size(), other.key.size());
    order = shorter == 0 ? 0 : std::memcmp(one.key.data(), other.key.data(), shorter);
    if (order == 0 && one.key.size() != other.key.size()) return one.key.size() < other.key.size();
  } else if (one.key.empty() && one.hasKey) {
    return true;  // NULL, before a text without a key
  } else if (other.key.empty() && other.hasKey) {
    return false;
  } else {
    order = jet::TextOrder::Legacy().Compare(TextOf(one), TextOf(other));
  }
  return order == 0 ? one.row < other.row : order < 0;
}

std::u16string_view SortedRows::TextOf(const Place& place) const {
  return std::get<std::u16string_view>(values_[place.row * width_ + sortColumn_]);
}

}  // namespace dao
