// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/Counters.h"
#include "platform/jet/index/EntryList.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace jet {

// Keeps the indexes of one table in step with its rows. Values are in the order of StoredTable::columns.
//
// An Error (Duplicate, Required, TooLong, UnknownCharacter) comes from the methods that make keys, before anything
// changes.
class TableIndexes {
 public:
  using Values = std::vector<Value>;

  // An Error (Unsupported) when some index has keys that cannot be built: ask before anything is made of the table.
  static void RequireKnownOrders(const StoredTable& table);

  // The table must outlive it.
  TableIndexes(Transaction& pages, PageSpace& space, const StoredTable& table, Counters& counters);

  // Whether some index is made of the column, `column` being its place in StoredTable::columns.
  bool Uses(std::size_t column) const;

  // One for each index; nothing where the index leaves the row out.
  using Keys = std::vector<std::optional<Bytes>>;
  // The keys of a new row, checked to be allowed.
  Keys KeysOf(const Values& values);
  void Insert(const Keys& keys, RowId row);

  // What an index has to do about a changed row.
  struct KeyChange {
    std::size_t index;
    std::optional<Bytes> key;  // the new one
  };
  // For those indexes only whose key becomes another, checked to be allowed.
  std::vector<KeyChange> KeyChangesOf(const Values& before, const Values& after);
  void Apply(const std::vector<KeyChange>& changes, const Values& before, RowId row);

  // What each index has of some rows.
  using Entries = std::vector<EntryList>;
  // Adds what the indexes have of a row, which is still there.
  void NoteEntries(const Values& values, RowId row, Entries& entries);
  void Remove(Entries& entries);
  // Leaves every index empty.
  void Clear();

  bool AreEmpty();
  // Adds what the indexes want to have of a new row. Whether its keys are there already is for Fill to see.
  void NoteNewEntries(const Values& values, RowId row, Entries& entries);
  // Fills indexes that are empty with all that was noted. Their rows are there, the later ones with higher numbers:
  // the Error (Duplicate) tells of the first row whose key one before it has, and the rows have to go.
  void Fill(Entries& entries);

  // The largest number in the column, when a unique index of that column alone has `number` already.
  std::optional<std::int64_t> LargestIfTaken(std::size_t column, std::int64_t number);

 private:
  struct Tree {
    const StoredIndex* def;
    std::string name;
    bool unique = false;
    bool required = false;
    std::vector<std::size_t> columns;  // places in StoredTable::columns
    std::unique_ptr<IndexWriter> writer;
  };

  Tree MakeTree(PageSpace& space, const StoredIndex& index);
  bool MakeKey(const Tree& tree, const Values& values, Bytes& key) const;
  std::optional<Bytes> KeyOf(const Tree& tree, const Values& values) const;
  void RequireValues(const Tree& tree, const Values& values) const;
  void RequireFits(const Tree& tree, ByteView key, const Values& values) const;
  void CheckKey(Tree& tree, const std::optional<Bytes>& key, const Values& values);
  [[noreturn]] void RefuseDuplicate(const Tree& tree, const Value& first) const;
  void RefuseDuplicates(const Entries& entries);
  Value ReadColumn(RowId row, std::size_t column);
  bool IsSameKey(const Tree& tree, const Values& before, const Values& after) const;
  void InsertInto(Tree& tree, const std::optional<Bytes>& key, RowId row);
  void NoteEntry(Tree& tree, const Values& values, RowId row, EntryList& entries);
  static void RemoveFrom(Tree& tree, EntryList& entries);

  Transaction& pages_;
  const StoredTable& table_;
  Counters& counters_;
  std::vector<Tree> trees_;
  Bytes entry_;  // being put together; kept for its memory
};

}  // namespace jet
