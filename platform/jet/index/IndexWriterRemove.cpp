// SPDX-License-Identifier: MIT
// The part of IndexWriter that removes entries.
#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/index/IndexEdit.h"
#include "platform/jet/index/IndexNode.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace jet {

using namespace index_page;

void IndexWriter::Remove(const EntryList& entries) {
  Forget();
  for (std::size_t done = 0; done < entries.Count();) {
    const std::size_t removed = RemoveFromLeaf(entries, done);
    if (removed == 0) RemoveByRow(entries.At(done));
    done += std::max<std::size_t>(removed, 1);
  }
}

// Another program may have stored the row with a key that this library would build differently.
void IndexWriter::RemoveByRow(ByteView entry) {
  const RowId row = RowOf(entry);
  EntryList found;
  if (const auto key = KeyOfRow(row)) found.Add(Entry(*key, row));
  if (found.Count() == 0 || RemoveFromLeaf(found, 0) == 0) throw Damage("de rij ontbreekt in de index");
}

std::optional<Bytes> IndexWriter::KeyOfRow(RowId row) {
  IndexCursor cursor(pages_, table_, root_);
  for (cursor.SeekFirst(); cursor.Valid(); cursor.Next()) {
    if (cursor.Row() == row) return Bytes(cursor.Key().begin(), cursor.Key().end());
  }
  return std::nullopt;
}

// Removes the entries from `first` on that are in one leaf; returns their number, 0 when `first` does not exist.
std::size_t IndexWriter::RemoveFromLeaf(const EntryList& entries, std::size_t first) {
  const Path path = Find(entries.At(first)).path;
  const std::uint32_t leaf = path.back().page;
  std::size_t count = 0;
  const std::vector<std::size_t> positions = PlacesIn(leaf, entries, first, count);
  if (positions.empty()) return 0;
  if (positions.size() == count && path.size() > 1) {
    RemovePage(path);
    return positions.size();
  }
  if (!RemoveInPlace(leaf, positions)) RemoveFromNode(leaf, positions);
  if (positions.back() + 1 == count && positions.size() < count) UpdateParentKeys(path, LastEntryBelow(leaf));
  return positions.size();
}

// Positions in the leaf of the entries from `first` on, up to the first that is not in it. `count`: entries of the
// leaf.
std::vector<std::size_t> IndexWriter::PlacesIn(std::uint32_t leaf, const EntryList& entries, std::size_t first,
                                               std::size_t& count) {
  const IndexPage page(pages_.Read(leaf), leaf, table_);
  count = page.Count();
  std::vector<std::size_t> places;
  Bytes there;
  const auto isAt = [&](std::size_t place, ByteView entry) {
    if (place >= count) return false;
    page.CopyEntry(place, there);
    return std::ranges::equal(there, entry);
  };
  for (std::size_t i = first; i < entries.Count(); ++i) {
    const ByteView entry = entries.At(i);
    std::size_t place = places.empty() ? count : places.back() + 1;  // mostly the next one in the leaf too
    if (!isAt(place, entry)) place = page.LowerBound(entry);
    if (!isAt(place, entry) || (!places.empty() && place == places.back())) break;
    places.push_back(place);
  }
  return places;
}

void IndexWriter::RemoveFromNode(std::uint32_t leaf, const std::vector<std::size_t>& positions) {
  IndexNode node = IndexNode::Load(pages_, leaf, table_);
  std::vector<Bytes> staying;
  auto next = positions.begin();
  for (std::size_t place = 0; place < node.entries.size(); ++place) {
    if (next != positions.end() && *next == place) {
      ++next;
    } else {
      staying.push_back(std::move(node.entries[place]));
    }
  }
  node.entries = std::move(staying);
  node.Save(pages_, leaf);
}

// The usual case. False, with nothing changed, when the first entry goes and the others need its beginning.
bool IndexWriter::RemoveInPlace(std::uint32_t leaf, const std::vector<std::size_t>& positions) {
  std::vector<std::uint16_t> ends;
  {
    const PageRef bytes = pages_.Read(leaf);
    if (positions.front() == 0 && LoadU16(bytes->data() + kPrefixAt) > 0) return false;
    ends = IndexPage(bytes, leaf, table_).Ends();
  }
  PageBytes& page = pages_.Change(leaf);
  RemoveEntries(page, ends, positions);
  IndexPage::KeepEnds(leaf, page, std::move(ends));
  return true;
}

void IndexWriter::Unlink(const IndexNode& node) {
  if (node.previous != 0) Store(&pages_.Change(node.previous)[kNextAt], node.next);
  if (node.next != 0) Store(&pages_.Change(node.next)[kPreviousAt], node.previous);
}

// Removes an emptied page from the tree, and every node that has no other child.
void IndexWriter::RemovePage(Path path) {
  const std::uint32_t number = path.back().page;
  Unlink(IndexNode::Load(pages_, number, table_));
  map_.Remove(number);
  space_.Free(number);
  path.pop_back();
  const Step step = path.back();
  IndexNode parent = IndexNode::Load(pages_, step.page, table_);
  if (parent.entries.empty()) {
    if (path.size() > 1) return RemovePage(path);
    IndexNode empty;
    empty.table = table_;
    return empty.Save(pages_, root_);
  }
  if (step.child < parent.entries.size()) {
    parent.entries.erase(parent.entries.begin() + static_cast<std::ptrdiff_t>(step.child));
    parent.children.erase(parent.children.begin() + static_cast<std::ptrdiff_t>(step.child));
    return SaveNode(parent, step.page);
  }
  const Bytes last = parent.entries.back();
  parent.tail = parent.children.back();
  parent.entries.pop_back();
  parent.children.pop_back();
  SaveNode(parent, step.page);
  UpdateParentKeys(path, last);
}

}  // namespace jet
