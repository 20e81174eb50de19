// SPDX-License-Identifier: MIT
#include "platform/dao/SortedRows.h"

#include "platform/jet/values/TextOrder.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <numeric>
#include <span>
#include <string_view>
#include <variant>

namespace dao {
namespace {

// A longer text is not in its key as a whole.
constexpr std::size_t kLongestWithKey = 255;

// A copy in `memory`.
template <class Item>
std::span<const Item> CopyOf(std::span<const Item> items, std::pmr::memory_resource& memory) {
  if (items.empty()) return {};
  auto* copy = static_cast<Item*>(memory.allocate(items.size_bytes(), alignof(Item)));
  std::memcpy(copy, items.data(), items.size_bytes());
  return {copy, items.size()};
}

// The first eight bytes as a number that compares as they do; zeros after the end.
std::uint64_t NumberOf(std::span<const std::uint8_t> bytes) {
  std::array<std::uint8_t, sizeof(std::uint64_t)> first{};
  std::copy_n(bytes.begin(), std::min(first.size(), bytes.size()), first.begin());
  return std::accumulate(first.begin(), first.end(), std::uint64_t{0},
                         [](std::uint64_t number, std::uint8_t byte) { return number << 8 | byte; });
}

}  // namespace

struct SortedRows::StoredRow {
  RowId id = 0;
  std::uint64_t number = 0;  // in the cursor's order
  const ValueView* values = nullptr;
  std::span<const std::uint8_t> key{};  // empty for NULL; ends with its only 0
};

SortedRows::SortedRows(Cursor& rows, const FieldMask& wanted, std::size_t field) {
  std::vector<std::size_t> fields;
  for (std::size_t i = 0; fields.size() < wanted.count(); ++i) {
    if (!wanted[i]) continue;
    columns_[i] = static_cast<std::uint8_t>(fields.size());
    fields.push_back(i);
  }
  sortColumn_ = columns_[field];
  while (rows.Next())
    places_.push_back({0, Stored(rows, fields)});
  if (allHaveKeys_) {
    SortByKeys(places_, 0);
  } else {
    SortByTexts();
  }
}

bool SortedRows::Next() {
  if (next_ == places_.size()) return false;
  ++next_;
  // The rows are spread over memory: a later one is fetched while SQLite processes this one.
  constexpr std::size_t kAhead = 8;
  if (next_ + kAhead < places_.size()) __builtin_prefetch(places_[next_ + kAhead].row);
  return true;
}

RowId SortedRows::Id() const {
  return Present().id;
}

ValueView SortedRows::Field(std::size_t field) const {
  return Present().values[columns_[field]];
}

const SortedRows::StoredRow* SortedRows::Stored(const Cursor& rows, const std::vector<std::size_t>& fields) {
  auto* row = new (memory_.allocate(sizeof(StoredRow), alignof(StoredRow))) StoredRow;
  auto* values = static_cast<ValueView*>(memory_.allocate(fields.size() * sizeof(ValueView), alignof(ValueView)));
  for (std::size_t i = 0; i < fields.size(); ++i)
    new (values + i) ValueView(Copied(rows.Field(fields[i])));
  row->id = rows.Id();
  row->number = places_.size();
  row->values = values;
  const auto* text = std::get_if<std::u16string_view>(&values[sortColumn_]);
  if (text == nullptr) return row;
  key_.clear();
  const bool hasKey = text->size() <= kLongestWithKey && jet::TextOrder::Legacy().TryAppendKey(*text, key_);
  allHaveKeys_ = allHaveKeys_ && hasKey;
  row->key = CopyOf(std::span<const std::uint8_t>(key_), memory_);
  return row;
}

ValueView SortedRows::Copied(const ValueView& value) {
  if (const auto* text = std::get_if<std::u16string_view>(&value)) {
    const auto copy = CopyOf(std::span<const char16_t>(*text), memory_);
    return std::u16string_view(copy.data(), copy.size());
  }
  if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&value)) return CopyOf(*bytes, memory_);
  return value;
}

// Compares eight bytes of the keys at a time, then the next eight of those that are equal so far. So the keys, which
// are spread over memory, are read once for each eight bytes and not for each comparison.
void SortedRows::SortByKeys(std::span<Place> places, std::size_t depth) {
  for (Place& place : places) {
    const auto& key = place.row->key;
    place.bytes = NumberOf(key.subspan(std::min(depth, key.size())));
  }
  std::ranges::sort(places, {}, &Place::bytes);
  for (auto first = places.begin(); first != places.end();) {
    const auto last =
        std::find_if(first, places.end(), [&](const Place& place) { return place.bytes != first->bytes; });
    const std::size_t next = depth + sizeof first->bytes;
    if (first->row->key.size() <= next) {
      std::sort(first, last, [](const Place& one, const Place& other) { return one.row->number < other.row->number; });
    } else if (last - first > 1) {
      SortByKeys({first, last}, next);
    }
    first = last;
  }
}

void SortedRows::SortByTexts() {
  const auto text = [this](const Place& place) {
    return std::get_if<std::u16string_view>(&place.row->values[sortColumn_]);
  };
  std::stable_sort(places_.begin(), places_.end(), [&](const Place& one, const Place& other) {
    const auto* left = text(one);
    const auto* right = text(other);
    if (left == nullptr || right == nullptr) return left == nullptr && right != nullptr;
    return jet::TextOrder::Legacy().Compare(*left, *right) < 0;
  });
}

}  // namespace dao
