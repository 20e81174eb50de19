// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexEdit.h"

#include "platform/jet/index/IndexPage.h"
#include "platform/jet/values/Codec.h"

#include <cstring>

namespace jet {

using namespace index_page;

namespace {

// Stores the ends of the entries as the page's bit mask.
void StoreEnds(PageBytes& page, const std::vector<std::uint16_t>& ends) {
  std::memset(&page[kMaskAt], 0, kMaskBytes);
  for (const std::uint16_t end : ends) {
    const std::size_t bit = end - kEntriesAt;
    page[kMaskAt + bit / 8] |= static_cast<std::uint8_t>(1U << (bit % 8));
  }
  const std::size_t used = ends.empty() ? 0 : ends.back() - kEntriesAt;
  Store(&page[2], static_cast<std::uint16_t>(kEntryBytes - used));
}

// The entry without the page's shared prefix; empty when it lacks that prefix or there is no room.
ByteView FittingPart(const PageBytes& page, ByteView entry, std::size_t room) {
  const std::size_t shared = LoadU16(&page[kPrefixAt]);
  if (entry.size() < shared + kPointerBytes || std::memcmp(&page[kEntriesAt], entry.data(), shared) != 0) return {};
  const ByteView part = entry.subspan(shared);
  return part.size() <= room ? part : ByteView();
}

}  // namespace

bool AppendEntry(PageBytes& page, ByteView entry) {
  const std::size_t room = LoadU16(&page[2]);
  const ByteView part = FittingPart(page, entry, room);
  if (part.empty()) return false;
  const std::size_t used = kEntryBytes - room;
  std::memcpy(&page[kEntriesAt + used], part.data(), part.size());
  const std::size_t end = used + part.size();
  page[kMaskAt + end / 8] |= static_cast<std::uint8_t>(1U << (end % 8));
  Store(&page[2], static_cast<std::uint16_t>(kEntryBytes - end));
  return true;
}

bool InsertEntry(PageBytes& page, std::vector<std::uint16_t> ends, std::size_t at, ByteView entry) {
  const std::size_t end = ends.empty() ? kEntriesAt : ends.back();
  const bool hasPrefix = LoadU16(&page[kPrefixAt]) > 0;
  const ByteView part = FittingPart(page, entry, kPageSize - end);
  if (part.empty() || (hasPrefix && at == 0)) return false;
  const std::size_t start = at == 0 ? kEntriesAt : ends[at - 1];
  std::memmove(page.data() + start + part.size(), page.data() + start, end - start);  // perhaps to the page's end
  std::memcpy(page.data() + start, part.data(), part.size());
  ends.insert(ends.begin() + static_cast<std::ptrdiff_t>(at), static_cast<std::uint16_t>(start));
  for (std::size_t i = at; i < ends.size(); ++i)
    ends[i] = static_cast<std::uint16_t>(ends[i] + part.size());
  StoreEnds(page, ends);
  return true;
}

void RemoveEntries(PageBytes& page, std::vector<std::uint16_t> ends, std::span<const std::size_t> positions) {
  const auto startOf = [&](std::size_t entry) { return entry == 0 ? kEntriesAt : ends[entry - 1]; };
  const std::size_t used = ends.back();
  std::size_t to = startOf(positions.front());
  std::size_t count = positions.front();
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const std::size_t next = i + 1 < positions.size() ? positions[i + 1] : ends.size();
    const std::size_t from = ends[positions[i]];
    const std::size_t end = startOf(next);
    std::memmove(page.data() + to, page.data() + from, end - from);
    for (std::size_t entry = positions[i] + 1; entry < next; ++entry)
      ends[count++] = static_cast<std::uint16_t>(ends[entry] - (from - to));
    to += end - from;
  }
  ends.resize(count);
  std::memset(page.data() + to, 0, used - to);
  StoreEnds(page, ends);
}

}  // namespace jet
