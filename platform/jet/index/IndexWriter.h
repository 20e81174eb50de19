// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/EntryList.h"
#include "platform/jet/index/IndexPage.h"
#include "platform/jet/pages/PageSpace.h"
#include "platform/jet/pages/UsageMapEditor.h"

#include <optional>
#include <span>
#include <vector>

namespace jet {

struct IndexNode;
struct StoredIndex;

// Changes one index tree. Keys are as from BuildKey. Nothing else may change the tree during its lifetime, since it
// caches positions: a key that Contains looked up is inserted without a second search, and keys in ascending order are
// appended without any.
class IndexWriter {
 public:
  // `table`: definition page of the table.
  IndexWriter(Transaction& pages, PageSpace& space, std::uint32_t table, const StoredIndex& index);

  // Whether some row has exactly this key.
  bool Contains(ByteView key);
  void Insert(ByteView key, RowId row);
  // Inserts sorted entries, leaf by leaf.
  void Insert(const EntryList& entries);
  // Removes sorted entries, leaf by leaf. A row that has another key in the index is found by a full scan; throws
  // Damage when the row is missing.
  void Remove(const EntryList& entries);
  // The row's key in the index, found by a full scan: for keys that another program built differently.
  std::optional<Bytes> KeyOfRow(RowId row);
  // Frees every page except the root, which becomes an empty leaf.
  void Clear();

  bool IsEmpty();
  // Fills an empty index with sorted entries, each page as full as possible and written once.
  void Fill(const EntryList& entries);

  // A leaf entry: key and row pointer.
  static Bytes Entry(ByteView key, RowId row);
  // Appends the row pointer, which turns a key into an entry.
  static void AppendPlace(Bytes& key, RowId row);
  static RowId RowOf(ByteView entry);
  static ByteView KeyOf(ByteView entry) { return entry.first(entry.size() - index_page::kPointerBytes); }
  static bool HasKeyOfTheOneBefore(const EntryList& sorted, std::size_t i);
  // The number of distinct keys in sorted entries.
  static std::size_t CountKeys(const EntryList& sorted);
  // The same without those that some row already has.
  std::size_t CountNewKeys(const EntryList& sorted);

 private:
  // One page on the path from the root to a leaf and the child to follow: the position of an entry, or the number of
  // entries for the tail.
  struct Step {
    std::uint32_t page;
    std::size_t child;
  };
  using Path = std::vector<Step>;
  // The position of an existing or new entry: the last step's `child` is the position in the leaf.
  struct Place {
    Path path;
    std::vector<std::uint16_t> ends;  // end offsets of the leaf's entries
    Bytes entry;                      // the entry at the position; empty after the leaf's last
    bool isLastLeaf = false;
    bool afterSingleChild = false;  // a node has a single child whose entry is less than the searched one
  };
  // The result of a failed search: the key and its position.
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
  // `entry`: a complete entry or a key.
  Place Find(ByteView entry);
  bool Append(ByteView entry);
  std::size_t InsertInPlace(std::uint32_t leaf, std::vector<std::uint16_t>& ends,
                            std::span<const std::size_t> positions, std::span<const ByteView> entries);
  std::size_t InsertIntoLeaf(const EntryList& entries, std::size_t first);
  std::size_t RemoveFromLeaf(const EntryList& entries, std::size_t first);
  void RemoveByRow(ByteView entry);
  std::vector<std::size_t> PlacesIn(std::uint32_t leaf, const EntryList& entries, std::size_t first,
                                    std::size_t& count);
  void RemoveFromNode(std::uint32_t leaf, const std::vector<std::size_t>& positions);
  bool RemoveInPlace(std::uint32_t leaf, const std::vector<std::size_t>& positions);
  bool SplitInPlace(Place& place, ByteView entry);
  void SaveOrSplit(Path& path, IndexNode& node);
  void Split(Path& path, IndexNode& node);
  void GrowRoot(Path& path);
  void AddChild(Path path, const Bytes& lastEntry, std::uint32_t child);
  // Updates the ancestors' entries for path.back(), whose last entry is now `last`.
  void UpdateParentKeys(Path path, const Bytes& last);
  void RemovePage(Path path);
  void Unlink(const IndexNode& node);
  void SaveNode(IndexNode& node, std::uint32_t number);
  Bytes LastEntryBelow(std::uint32_t page);
  void TruncateLeafChain(std::uint32_t page);
  // An entry and, in nodes, the child page that it is the last entry of.
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
