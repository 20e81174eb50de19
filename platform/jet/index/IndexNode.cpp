// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexNode.h"

#include "platform/jet/values/Codec.h"

#include <algorithm>
#include <cstring>

namespace jet {

using namespace index_page;

namespace {

void StoreBigEndian(std::uint8_t* at, std::uint32_t number) {
  for (unsigned i = 0; i < 4; ++i)
    at[i] = static_cast<std::uint8_t>(number >> (24 - 8 * i));
}

}  // namespace

IndexNode IndexNode::Load(PageSource& pages, std::uint32_t number, std::uint32_t table) {
  const IndexPage page(pages.Read(number), number, table);
  IndexNode node;
  node.leaf = page.IsLeaf();
  node.level = static_cast<std::uint8_t>(page.Level());
  node.table = table;
  node.previous = page.Previous();
  node.next = page.Next();
  node.tail = page.Tail();
  node.entries.resize(page.Count());
  for (std::size_t i = 0; i < page.Count(); ++i) {
    page.CopyEntry(i, node.entries[i]);
    if (!node.leaf) node.children.push_back(page.Child(i));
  }
  if (!node.leaf && node.tail == 0 && !node.entries.empty()) {
    node.tail = node.children.back();
    node.children.pop_back();
    node.entries.pop_back();
  }
  return node;
}

// Length of the common prefix of these entries; never includes row pointers.
std::size_t IndexNode::Shared(std::size_t begin, std::size_t end) const {
  if (end - begin < 2) return 0;
  std::size_t most = entries[begin].size();
  for (std::size_t i = begin; i < end; ++i)
    most = std::min(most, entries[i].size());
  most -= kPointerBytes;
  const auto start = entries[begin].begin();
  const auto differing = std::mismatch(start, start + static_cast<std::ptrdiff_t>(most), entries[end - 1].begin());
  return static_cast<std::size_t>(differing.first - start);
}

std::size_t IndexNode::BytesNeeded(std::size_t begin, std::size_t end, std::size_t shared) const {
  std::size_t bytes = begin < end ? shared : 0;  // the first entry is complete
  for (std::size_t i = begin; i < end; ++i)
    bytes += entries[i].size() - shared + (leaf ? 0 : kChildBytes);
  return bytes;
}

bool IndexNode::Fits(std::size_t begin, std::size_t end) const {
  return BytesNeeded(begin, end, 0) <= kEntryBytes || BytesNeeded(begin, end, Shared(begin, end)) <= kEntryBytes;
}

void IndexNode::Save(Transaction& pages, std::uint32_t number) const {
  const std::size_t count = entries.size();
  const std::size_t shared = BytesNeeded(0, count, 0) <= kEntryBytes ? 0 : Shared(0, count);
  PageBytes& page = pages.Change(number);
  page = PageBytes{};
  page[0] = static_cast<std::uint8_t>(leaf ? PageType::IndexLeaf : PageType::IndexNode);
  page[1] = 1;
  Store(&page[2], static_cast<std::uint16_t>(kEntryBytes - BytesNeeded(0, count, shared)));
  Store(&page[kTableAt], table);
  Store(&page[kPreviousAt], previous);
  Store(&page[kNextAt], next);
  Store(&page[kTailAt], tail);
  Store(&page[kPrefixAt], static_cast<std::uint16_t>(shared));
  page[kLevelAt] = level;
  std::size_t at = kEntriesAt;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const ByteView stored = ByteView(entries[i]).subspan(i == 0 ? 0 : shared);
    std::memcpy(&page[at], stored.data(), stored.size());
    at += stored.size();
    if (!leaf) {
      StoreBigEndian(&page[at], children[i]);
      at += kChildBytes;
    }
    const std::size_t bit = at - kEntriesAt;
    page[kMaskAt + bit / 8] |= static_cast<std::uint8_t>(1U << (bit % 8));
  }
}

}  // namespace jet
