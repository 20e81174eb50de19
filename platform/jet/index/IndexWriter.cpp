// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexWriter.h"

#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/index/IndexEdit.h"
#include "platform/jet/index/IndexNode.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace jet {

using namespace index_page;

namespace {

// The number of entries for the lower page: the nearest to `wanted` for which both parts fit.
std::size_t SplitPoint(const IndexNode& node, std::size_t wanted) {
  const std::size_t count = node.entries.size();
  for (std::size_t distance = 0; distance < count; ++distance) {
    for (const std::size_t point : {wanted - distance, wanted + distance}) {
      if (point >= 1 && point < count && node.Fits(0, point) && node.Fits(point, count)) return point;
    }
  }
  throw Damage("een indexregel is te lang");
}

bool IsLess(ByteView left, ByteView right) {
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end());
}

}  // namespace

IndexWriter::IndexWriter(Transaction& pages, PageSpace& space, std::uint32_t table, const StoredIndex& index)
    : pages_(pages), space_(space), table_(table), root_(index.root), map_(pages, index.map) {}

Bytes IndexWriter::Entry(ByteView key, RowId row) {
  Bytes entry;
  entry.reserve(key.size() + kPointerBytes);
  entry.assign(key.begin(), key.end());
  AppendPlace(entry, row);
  return entry;
}

void IndexWriter::AppendPlace(Bytes& key, RowId row) {
  const std::uint32_t page = PageOf(row);
  key.insert(key.end(), {static_cast<std::uint8_t>(page >> 16), static_cast<std::uint8_t>(page >> 8),
                         static_cast<std::uint8_t>(page), static_cast<std::uint8_t>(SlotOf(row))});
}

RowId IndexWriter::RowOf(ByteView entry) {
  const std::uint8_t* place = entry.data() + entry.size() - kPointerBytes;
  return MakeRowId(LoadU24BigEndian(place), place[3]);
}

void IndexWriter::Forget() {
  absent_.reset();
  tail_.reset();
}

bool IndexWriter::Contains(ByteView key) {
  if (tail_ && IsLess(tail_->last, key)) return false;
  absent_.reset();
  Place place = Find(key);
  if (place.entry.empty() && !place.isLastLeaf) {
    IndexCursor cursor(pages_, table_, root_);
    cursor.Seek(key);
    place.entry.assign(cursor.Entry().begin(), cursor.Entry().end());
  }
  const std::size_t length = key.size() + kPointerBytes;
  if (place.entry.size() == length && std::equal(key.begin(), key.end(), place.entry.begin())) return true;
  absent_ = {Bytes(key.begin(), key.end()), std::move(place)};
  return false;
}

IndexWriter::Place IndexWriter::Find(ByteView entry) {
  Place found;
  for (std::uint32_t number = root_;;) {
    if (found.path.size() >= kDeepest) throw DamageAt(root_, "de index is te diep");
    const IndexPage page(pages_.Read(number), number, table_);
    std::size_t place = page.LowerBound(entry);
    if (!page.IsLeaf() && place == page.Count() && page.Tail() == 0 && place > 0) {
      found.afterSingleChild = true;
      --place;
    }
    found.path.push_back({number, place});
    if (page.IsLeaf()) {
      found.ends = page.Ends();
      found.isLastLeaf = page.Next() == 0;
      if (place < page.Count()) page.CopyEntry(place, found.entry);
      return found;
    }
    number = page.Child(place);
  }
}

void IndexWriter::Insert(ByteView key, RowId row) {
  const Bytes entry = Entry(key, row);
  if (Append(entry)) return;
  const bool isKnownPlace = absent_ && std::ranges::equal(absent_->key, key);
  Place place = isKnownPlace ? std::move(absent_->place) : Find(entry);
  Forget();
  const Step leaf = place.path.back();
  if (place.entry == entry) throw DamageAt(leaf.page, "de rij staat al in de index");
  const ByteView newEntry = entry;
  const bool isLast = place.isLastLeaf && leaf.child == place.ends.size();
  if (InsertInPlace(leaf.page, place.ends, {&leaf.child, 1}, {&newEntry, 1}) == 1) {
    if (isLast && !place.afterSingleChild) tail_ = {leaf.page, entry};
  } else if (SplitInPlace(place, entry)) {
    return Insert(key, row);
  } else {
    IndexNode node = IndexNode::Load(pages_, leaf.page, table_);
    node.entries.insert(node.entries.begin() + static_cast<std::ptrdiff_t>(leaf.child), entry);
    SaveOrSplit(place.path, node);
  }
  if (place.afterSingleChild) UpdateParentKeys(Find(entry).path, entry);
}

void IndexWriter::Insert(const EntryList& entries) {
  for (std::size_t done = 0; done < entries.Count();) {
    const std::size_t inserted = InsertIntoLeaf(entries, done);
    if (inserted == 0) Insert(KeyOf(entries.At(done)), RowOf(entries.At(done)));
    done += std::max<std::size_t>(inserted, 1);
  }
}

// Inserts the entries from `first` on that belong to one leaf and fit in it; returns their number, 0 in every unusual
// case.
std::size_t IndexWriter::InsertIntoLeaf(const EntryList& entries, std::size_t first) {
  Forget();
  Place place = Find(entries.At(first));
  if (place.afterSingleChild) return 0;
  const std::uint32_t number = place.path.back().page;
  std::vector<std::size_t> positions;
  std::vector<ByteView> here;
  {
    const PageRef bytes = pages_.Read(number);
    const IndexPage leaf(bytes, number, table_);
    const std::size_t shared = LoadU16(bytes->data() + kPrefixAt);
    Bytes there;
    std::size_t room = leaf.ExactFreeBytes();
    for (std::size_t i = first; i < entries.Count(); ++i) {
      const ByteView entry = entries.At(i);
      const std::size_t position = leaf.LowerBound(entry);
      const bool isAfterLast = position == leaf.Count();
      if (entry.size() > room + shared || (isAfterLast && !place.isLastLeaf)) break;
      if (!isAfterLast) leaf.CopyEntry(position, there);
      if (!isAfterLast && std::ranges::equal(there, entry)) break;
      positions.push_back(position);
      here.push_back(entry);
      room -= entry.size() - std::min(shared, entry.size());
    }
  }
  return here.empty() ? 0 : InsertInPlace(number, place.ends, positions, here);
}

std::size_t IndexWriter::InsertInPlace(std::uint32_t leaf, std::vector<std::uint16_t>& ends,
                                       std::span<const std::size_t> positions, std::span<const ByteView> entries) {
  PageBytes& page = pages_.Change(leaf);
  const std::size_t inserted = InsertEntries(page, ends, positions, entries);
  IndexPage::KeepEnds(leaf, page, std::move(ends));
  return inserted;
}

// Fast path for entries in ascending order: appends to the last leaf without a search.
bool IndexWriter::Append(ByteView entry) {
  if (!tail_ || !IsLess(tail_->last, entry)) return false;
  if (!AppendEntry(pages_.Change(tail_->page), entry)) return false;
  absent_.reset();
  tail_->last.assign(entry.begin(), entry.end());
  return true;
}

// The usual split: of a leaf that is full although its entries share their beginning. False, with nothing changed, when
// there may be room for `entry` with another shared beginning, and for the root.
bool IndexWriter::SplitInPlace(Place& place, ByteView entry) {
  const Step leaf = place.path.back();
  const PageRef whole = pages_.Read(leaf.page);
  const IndexPage page(whole, leaf.page, table_);
  const std::size_t shared = LoadU16(whole->data() + kPrefixAt);
  const bool isFull = shared > 0 && page.Count() > 1 && entry.size() > shared + page.ExactFreeBytes();
  if (!isFull || place.path.size() == 1 || place.afterSingleChild) return false;
  const bool isAppended = place.isLastLeaf && leaf.child == page.Count();
  const std::size_t half = isAppended ? page.Count() - 1 : page.Count() / 2;
  Bytes promoted;
  page.CopyEntry(half - 1, promoted);
  const std::uint32_t lowerNumber = space_.Allocate();
  map_.Add(space_, lowerNumber);
  PageBytes& lower = pages_.Change(lowerNumber);
  PageBytes& upper = pages_.Change(leaf.page);
  SplitEntries(*whole, page.Ends(), half, lower, upper);
  Store(&lower[kNextAt], leaf.page);
  Store(&upper[kPreviousAt], lowerNumber);
  if (page.Previous() != 0) Store(&pages_.Change(page.Previous())[kNextAt], lowerNumber);
  place.path.pop_back();
  AddChild(place.path, promoted, lowerNumber);
  return true;
}

void IndexWriter::SaveOrSplit(Path& path, IndexNode& node) {
  if (node.Fits()) {
    SaveNode(node, path.back().page);
  } else {
    Split(path, node);
  }
}

// A node whose only child is its tail is saved with that child as an entry.
void IndexWriter::SaveNode(IndexNode& node, std::uint32_t number) {
  if (node.leaf || !node.entries.empty() || node.tail == 0) return node.Save(pages_, number);
  IndexNode single = node;
  single.entries = {LastEntryBelow(node.tail)};
  single.children = {node.tail};
  single.tail = 0;
  single.Save(pages_, number);
}

Bytes IndexWriter::LastEntryBelow(std::uint32_t number) {
  for (std::size_t depth = 0; depth < kDeepest; ++depth) {
    const IndexPage page(pages_.Read(number), number, table_);
    if (page.IsLeaf()) {
      Bytes last;
      if (page.Count() == 0) throw DamageAt(number, "een indexpagina is leeg");
      page.CopyEntry(page.Count() - 1, last);
      return last;
    }
    number = page.Child(page.Tail() != 0 || page.Count() == 0 ? page.Count() : page.Count() - 1);
  }
  throw DamageAt(number, "de index is te diep");
}

// Moves the root's content to a new page, since the root's page number is in the table's definition.
void IndexWriter::GrowRoot(Path& path) {
  const std::uint32_t number = space_.Allocate();
  map_.Add(space_, number);
  IndexNode root;
  root.leaf = false;
  root.table = table_;
  root.level = static_cast<std::uint8_t>((*pages_.Read(root_))[kLevelAt] + 1);
  root.tail = number;
  pages_.Change(number) = *pages_.Read(root_);
  root.Save(pages_, root_);
  path.insert(path.begin(), {root_, 0});
  path[1].page = number;
}

// The lower half moves to a new page before this one, so that references to this page remain valid for the upper half.
void IndexWriter::Split(Path& path, IndexNode& node) {
  if (path.size() == 1) GrowRoot(path);
  const std::uint32_t number = path.back().page;
  const std::uint32_t lowerNumber = space_.Allocate();
  map_.Add(space_, lowerNumber);
  const std::size_t count = node.entries.size();
  const bool appended = node.leaf && node.next == 0 && path.back().child + 1 == count;
  const auto half = static_cast<std::ptrdiff_t>(SplitPoint(node, appended ? count - 1 : count / 2));

  std::vector<Bytes> entries = std::move(node.entries);
  IndexNode lower = node;
  const auto middle = entries.begin() + half;
  lower.entries.assign(std::make_move_iterator(entries.begin()), std::make_move_iterator(middle));
  node.entries.assign(std::make_move_iterator(middle), std::make_move_iterator(entries.end()));
  const Bytes promoted = lower.entries.back();
  if (!node.leaf) {
    lower.children.assign(node.children.begin(), node.children.begin() + half);
    node.children.erase(node.children.begin(), node.children.begin() + half);
    lower.tail = lower.children.back();
    lower.children.pop_back();
    lower.entries.pop_back();
    if (node.level >= 2) TruncateLeafChain(lower.tail);
  }
  lower.next = number;
  node.previous = lowerNumber;
  if (lower.previous != 0) Store(&pages_.Change(lower.previous)[kNextAt], lowerNumber);
  SaveNode(lower, lowerNumber);
  SaveNode(node, number);
  path.pop_back();
  AddChild(path, promoted, lowerNumber);
}

// Nodes are only chained to siblings with the same parent.
void IndexWriter::TruncateLeafChain(std::uint32_t page) {
  const std::uint32_t right = LoadU32(pages_.Read(page)->data() + kNextAt);
  Store(&pages_.Change(page)[kNextAt], std::uint32_t{0});
  if (right != 0) Store(&pages_.Change(right)[kPreviousAt], std::uint32_t{0});
}

// Adds a child before the one that path.back() leads to.
void IndexWriter::AddChild(Path path, const Bytes& lastEntry, std::uint32_t child) {
  const Step& step = path.back();
  IndexNode node = IndexNode::Load(pages_, step.page, table_);
  const auto place = static_cast<std::ptrdiff_t>(std::min(step.child, node.entries.size()));
  node.entries.insert(node.entries.begin() + place, lastEntry);
  node.children.insert(node.children.begin() + place, child);
  SaveOrSplit(path, node);
}

void IndexWriter::UpdateParentKeys(Path path, const Bytes& last) {
  for (path.pop_back(); !path.empty(); path.pop_back()) {
    const Step step = path.back();
    std::size_t count = 0;
    bool isTailInFact = false;
    {
      const IndexPage page(pages_.Read(step.page), step.page, table_);
      count = page.Count();
      isTailInFact = page.Tail() == 0 && step.child + 1 == count;
    }
    if (step.child == count) continue;
    IndexNode node = IndexNode::Load(pages_, step.page, table_);
    if (isTailInFact) {
      SaveNode(node, step.page);
      continue;
    }
    node.entries[step.child] = last;
    return SaveOrSplit(path, node);
  }
}

void IndexWriter::Clear() {
  Forget();
  std::vector<std::uint32_t> pages = map_.Members();
  std::erase(pages, root_);
  // Skip emptied pages that another program freed but left in the map.
  std::erase_if(pages, [&](std::uint32_t page) { return IsUnwritten(*pages_.Read(page)) && space_.IsFree(page); });
  const auto requireOwn = [&](std::uint32_t page) { IndexPage(pages_.Read(page), page, table_); };
  requireOwn(root_);
  std::ranges::for_each(pages, requireOwn);
  map_.Clear(space_);
  space_.Release(pages);
  map_.Add(space_, root_);
  IndexNode empty;
  empty.table = table_;
  empty.Save(pages_, root_);
}

}  // namespace jet
