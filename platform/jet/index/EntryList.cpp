// SPDX-License-Identifier: MIT
#include "platform/jet/index/EntryList.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

// In the order of the bytes; where those are missing, zeros.
std::uint64_t BeginningOf(ByteView entry) {
  std::uint64_t beginning = 0;
  for (std::size_t i = 0; i < sizeof beginning; ++i)
    beginning = beginning << 8 | (i < entry.size() ? entry[i] : 0U);
  return beginning;
}

}  // namespace

void EntryList::Add(ByteView entry) {
  places_.push_back(
      {BeginningOf(entry), bytes_.size() & ((std::uint64_t{1} << 48) - 1), static_cast<std::uint16_t>(entry.size())});
  bytes_.insert(bytes_.end(), entry.begin(), entry.end());
}

bool EntryList::Less(ByteView a, ByteView b) {
  const std::size_t shared = std::min(a.size(), b.size());
  const int order = shared == 0 ? 0 : std::memcmp(a.data(), b.data(), shared);
  return order != 0 ? order < 0 : a.size() < b.size();
}

void EntryList::Sort() {
  const auto less = [&](const Place& a, const Place& b) {
    if (a.beginning != b.beginning) return a.beginning < b.beginning;
    return Less(ByteView(bytes_).subspan(a.start, a.length), ByteView(bytes_).subspan(b.start, b.length));
  };
  if (!std::is_sorted(places_.begin(), places_.end(), less)) std::sort(places_.begin(), places_.end(), less);
}

EntryList EntryList::LastBytes(std::size_t count) const {
  EntryList list;
  for (std::size_t i = 0; i < Count(); ++i)
    list.Add(At(i).last(count));
  return list;
}

}  // namespace jet
