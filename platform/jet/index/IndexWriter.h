// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/EntryList.h"
#include "platform/jet/index/IndexNode.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/UsageMapEditor.h"
#include "platform/jet/rows/StoredTable.h"

#include <optional>
#include <span>
#include <vector>

namespace jet {

// Changes one index tree. Keys are as BuildKey makes them. While it lives nothing else changes the tree: it remembers
// where it last was, so that a key asked for is not sought again when it is put in, and rows that come in the order of
// the index are appended without a search.
class IndexWriter {
 public:
  // `table`: definition page of the table.
  IndexWriter(Transaction& pages, PageSpace& space, std::uint32_t table, const StoredIndex& index)
      : pages_(pages), space_(space), table_(table), root_(index.root), map_(pages, index.map) {}

  // Whether some row has exactly this key.
  bool Contains(ByteView key);
  void Insert(ByteView key, RowId row);
  // Takes out entries that are sorted, leaf by leaf. A row that is there with another key is sought through the whole
  // index; Damage when it is not there at all.
  void Remove(const EntryList& entries);
  // The key with which the row is there, sought through the whole index: for keys that others built in another way.
  std::optional<Bytes> KeyOfRow(RowId row);
  // Gives back every page but the root, which becomes an empty leaf.
  void Clear();

  bool IsEmpty();
  // Fills an empty index with entries that are sorted: page by page, each as full as can be, and each written once.
  void Fill(const EntryList& entries);

  // What stands in a leaf for a row: its key and its place.
  static Bytes Entry(ByteView key, RowId row);
  // Makes a key such an entry.
  static void AppendPlace(Bytes& key, RowId row);
  static RowId RowOf(ByteView entry);
  static ByteView KeyOf(ByteView entry) { return entry.first(entry.size() - index_page::kPointerBytes); }
  static bool HasKeyOfTheOneBefore(const EntryList& sorted, std::size_t i);
  // How many different keys sorted entries have.
  static std::size_t CountKeys(const EntryList& sorted);

 private:
  // One page on the way from the root to a leaf, and which of its children comes next: the place of an entry, or their
  // count for the tail.
  struct Step {
    std::uint32_t page;
    std::size_t child;
  };
  using Path = std::vector<Step>;
  // Where an entry is or would be: the last step's `child` is its place in the leaf.
  struct Place {
    Path path;
    std::vector<std::uint16_t> ends;  // of the leaf's entries, from the page's start
    Bytes entry;                      // the one that is at the place; none behind the leaf's last
    bool isLastLeaf = false;
    bool afterSingleChild = false;  // a node lists its only child with an entry below what was sought
  };
  // A key that is not there, and where it would be.
  struct Absent {
    Bytes key;
    Place place;
  };
  // The last leaf and the last entry in it.
  struct Tail {
    std::uint32_t page;
    Bytes last;
  };

  void Forget();
  // `entry`: a whole one or a key.
  Place Find(ByteView entry);
  bool Append(ByteView entry);
  std::size_t RemoveFromLeaf(const EntryList& entries, std::size_t first);
  void RemoveByRow(ByteView entry);
  std::vector<std::size_t> PlacesIn(std::uint32_t leaf, const EntryList& entries, std::size_t first,
                                    std::size_t& count);
  void RemoveFromNode(std::uint32_t leaf, const std::vector<std::size_t>& going);
  bool RemoveFromPage(const Step& step);
  void SaveOrSplit(Path& path, IndexNode& node);
  void Split(Path& path, IndexNode& node);
  void GrowRoot(Path& path);
  void AddChild(Path path, const Bytes& lastEntry, std::uint32_t child);
  // The last entry below path.back() is now `last`: tells those above that name it.
  void UpdateParentKeys(Path path, const Bytes& last);
  void RemovePage(Path path);
  void Unlink(const IndexNode& node);
  void SaveNode(IndexNode& node, std::uint32_t number);
  Bytes LastEntryBelow(std::uint32_t page);
  void TruncateLeafChain(std::uint32_t page);
  // Something that a page lists: an entry, and in a node the page below whose last entry it is.
  struct ChildEntry {
    ByteView entry;
    std::uint32_t child = 0;
  };
  using Level = std::vector<ChildEntry>;
  Level FillLevel(const Level& below, std::uint8_t height);
  void Chain(std::span<const ChildEntry> pages);

  Transaction& pages_;
  PageSpace& space_;
  std::uint32_t table_;
  std::uint32_t root_;
  UsageMapEditor map_;
  std::optional<Absent> absent_;
  std::optional<Tail> tail_;
};

}  // namespace jet
