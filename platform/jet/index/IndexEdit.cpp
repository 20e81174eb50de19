// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexEdit.h"

#include "platform/jet/index/IndexPage.h"
#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace jet {

using namespace index_page;

namespace {

// Stores the ends of the entries as the page's bit mask; those of the entries before `first` are there already.
void StoreEnds(PageBytes& page, const std::vector<std::uint16_t>& ends, std::size_t first) {
  std::uint8_t* const mask = &page[kMaskAt];
  const std::size_t firstBit = first == 0 ? 0 : ends[first - 1] - kEntriesAt + 1;
  mask[firstBit / 8] &= static_cast<std::uint8_t>((1U << (firstBit % 8)) - 1);
  std::memset(mask + firstBit / 8 + 1, 0, kMaskBytes - firstBit / 8 - 1);
  for (std::size_t entry = first; entry < ends.size(); ++entry) {
    const std::size_t bit = ends[entry] - kEntriesAt;
    mask[bit / 8] |= static_cast<std::uint8_t>(1U << (bit % 8));
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

std::size_t InsertEntries(PageBytes& page, std::vector<std::uint16_t>& ends, std::span<const std::size_t> positions,
                          std::span<const ByteView> entries) {
  const std::size_t used = ends.empty() ? kEntriesAt : ends.back();
  const bool hasPrefix = LoadU16(&page[kPrefixAt]) > 0;
  std::vector<ByteView> parts;
  std::size_t room = kPageSize - used;
  while (parts.size() < entries.size() && !(hasPrefix && positions[parts.size()] == 0)) {
    const ByteView part = FittingPart(page, entries[parts.size()], room);
    if (part.empty()) break;
    parts.push_back(part);
    room -= part.size();
  }
  if (parts.empty()) return 0;
  // From the last one on, so that every old entry moves once.
  std::vector<std::uint16_t> newEnds(ends.size() + parts.size());
  auto newEnd = newEnds.end();
  std::size_t to = kPageSize - room;
  std::size_t from = used;
  std::size_t old = ends.size();
  for (std::size_t i = parts.size(); i-- > 0;) {
    const std::size_t start = positions[i] == 0 ? kEntriesAt : ends[positions[i] - 1];
    to -= from - start;
    std::memmove(page.data() + to, page.data() + start, from - start);
    for (; old > positions[i]; --old)
      *--newEnd = static_cast<std::uint16_t>(ends[old - 1] + (to - start));
    from = start;
    *--newEnd = static_cast<std::uint16_t>(to);
    to -= parts[i].size();
    std::memcpy(page.data() + to, parts[i].data(), parts[i].size());
  }
  std::copy_n(ends.begin(), old, newEnds.begin());
  ends = std::move(newEnds);
  StoreEnds(page, ends, old);
  return parts.size();
}

void SplitEntries(const PageBytes& page, const std::vector<std::uint16_t>& ends, std::size_t at, PageBytes& lower,
                  PageBytes& upper) {
  const std::size_t shared = LoadU16(&page[kPrefixAt]);
  const std::size_t start = ends[at - 1];
  const std::size_t bytes = ends.back() - start;
  lower = page;
  std::memset(&lower[start], 0, bytes);
  StoreEnds(lower, {ends.begin(), ends.begin() + static_cast<std::ptrdiff_t>(at)}, at);
  // The first entry is complete: it begins with what the others share.
  upper = PageBytes{};
  std::copy_n(page.begin(), kMaskAt, upper.begin());
  std::memcpy(&upper[kEntriesAt], &page[kEntriesAt], shared);
  std::memcpy(&upper[kEntriesAt + shared], &page[start], bytes);
  std::vector<std::uint16_t> upperEnds;
  for (std::size_t entry = at; entry < ends.size(); ++entry)
    upperEnds.push_back(static_cast<std::uint16_t>(ends[entry] - start + kEntriesAt + shared));
  if (upperEnds.size() == 1) Store(&upper[kPrefixAt], std::uint16_t{0});
  StoreEnds(upper, upperEnds, 0);
}

void RemoveEntries(PageBytes& page, std::vector<std::uint16_t>& ends, std::span<const std::size_t> positions) {
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
  StoreEnds(page, ends, positions.front());
}

}  // namespace jet
