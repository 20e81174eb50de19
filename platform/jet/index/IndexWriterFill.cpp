// SPDX-License-Identifier: MIT
// The part of IndexWriter that fills an empty index.
#include "platform/jet/index/IndexNode.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <span>
#include <vector>

namespace jet {

using namespace index_page;

namespace {

// Computes how many consecutive entries fit on one page.
class PageMeasure {
 public:
  explicit PageMeasure(bool leaf) : childBytes_(leaf ? 0 : kChildBytes) {}

  // Adds an entry. Returns false without a change when it does not fit. Throws Error when it would not fit on an empty
  // page.
  bool Take(ByteView entry) {
    const std::size_t shared = count_ == 0 ? 0 : std::min(shared_, SharedWithFirst(entry));
    const std::size_t bytes = bytes_ + entry.size() + childBytes_;
    // All entries but the first are stored without the shared prefix.
    if (bytes - count_ * shared > kEntryBytes) {
      if (count_ == 0) throw Damage("een indexregel is te lang");
      return false;
    }
    if (count_ == 0) first_ = entry;
    shared_ = count_ == 0 ? entry.size() : shared;
    bytes_ = bytes;
    ++count_;
    return true;
  }

 private:
  // Row pointers are never part of the prefix.
  std::size_t SharedWithFirst(ByteView entry) const {
    const std::size_t most = std::min(first_.size(), entry.size()) - kPointerBytes;
    const auto start = first_.begin();
    return static_cast<std::size_t>(
        std::mismatch(start, start + static_cast<std::ptrdiff_t>(most), entry.begin()).first - start);
  }

  std::size_t childBytes_;
  ByteView first_;
  std::size_t count_ = 0;
  std::size_t bytes_ = 0;  // without prefix compression
  std::size_t shared_ = 0;
};

// The end of each page's range in a level. A node has no entry for its last child, which is its tail.
template <typename Level>
std::vector<std::size_t> PageEnds(const Level& below, bool leaf) {
  std::vector<std::size_t> ends;
  PageMeasure measure(leaf);
  for (std::size_t i = 0; i + (leaf ? 0 : 1) < below.size(); ++i) {
    if (measure.Take(below[i].entry)) continue;
    ends.push_back(leaf ? i : i + 1);
    measure = PageMeasure(leaf);
    if (leaf) measure.Take(below[i].entry);
  }
  // A last node with a single child gets a second one from its neighbour if possible.
  const std::size_t before = ends.size() < 2 ? 0 : ends[ends.size() - 2];
  const bool isLonely = !leaf && !ends.empty() && ends.back() + 1 == below.size();
  if (isLonely && ends.back() - before > 2) --ends.back();
  ends.push_back(below.size());
  return ends;
}

}  // namespace

bool IndexWriter::HasKeyOfTheOneBefore(const EntryList& sorted, std::size_t i) {
  return i > 0 && std::ranges::equal(KeyOf(sorted.At(i - 1)), KeyOf(sorted.At(i)));
}

std::size_t IndexWriter::CountKeys(const EntryList& sorted) {
  std::size_t keys = 0;
  for (std::size_t i = 0; i < sorted.Count(); ++i)
    keys += HasKeyOfTheOneBefore(sorted, i) ? 0U : 1U;
  return keys;
}

std::size_t IndexWriter::CountNewKeys(const EntryList& sorted) {
  std::size_t keys = 0;
  for (std::size_t i = 0; i < sorted.Count(); ++i)
    keys += HasKeyOfTheOneBefore(sorted, i) || Contains(KeyOf(sorted.At(i))) ? 0U : 1U;
  return keys;
}

bool IndexWriter::IsEmpty() {
  const IndexPage root(pages_.Read(root_), root_, table_);
  return root.IsLeaf() && root.Count() == 0;
}

void IndexWriter::Fill(const EntryList& entries) {
  Forget();
  if (entries.Count() == 0) return;
  Level level(entries.Count());
  for (std::size_t i = 0; i < level.size(); ++i)
    level[i].entry = entries.At(i);
  for (std::uint8_t height = 0; height == 0 || level.size() > 1; ++height)
    level = FillLevel(level, height);
}

// Writes the pages of one level over `below`; returns the entries for the next level. A level of a single page is
// written to the root page, whose number is fixed.
IndexWriter::Level IndexWriter::FillLevel(const Level& below, std::uint8_t height) {
  IndexNode node;
  node.leaf = height == 0;
  node.level = height;
  node.table = table_;
  const std::vector<std::size_t> ends = PageEnds(below, node.leaf);
  Level level;
  std::size_t begin = 0;
  for (const std::size_t end : ends) {
    const std::span<const ChildEntry> here = std::span(below).subspan(begin, end - begin);
    const std::uint32_t number = ends.size() == 1 ? root_ : space_.Allocate();
    if (number != root_) map_.Add(space_, number);
    const std::size_t count = here.size() - (node.leaf ? 0 : 1);
    node.entries.resize(count);
    node.children.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
      node.entries[i].assign(here[i].entry.begin(), here[i].entry.end());
      node.children[i] = here[i].child;
    }
    if (!node.leaf) node.tail = here.back().child;
    SaveNode(node, number);
    // Leaves are chained through the whole index, nodes among the children of one parent.
    if (height > 1) Chain(here);
    level.push_back({here.back().entry, number});
    begin = end;
  }
  if (node.leaf) Chain(level);
  return level;
}

void IndexWriter::Chain(std::span<const ChildEntry> pages) {
  for (std::size_t i = 0; i < pages.size(); ++i) {
    PageBytes& page = pages_.Change(pages[i].child);
    if (i > 0) Store(&page[kPreviousAt], pages[i - 1].child);
    if (i + 1 < pages.size()) Store(&page[kNextAt], pages[i + 1].child);
  }
}

}  // namespace jet
