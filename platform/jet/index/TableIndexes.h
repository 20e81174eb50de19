// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/index/EntryList.h"
#include "platform/jet/pages/RowId.h"
#include "platform/jet/values/Value.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace jet {

class Counters;
class IndexWriter;
class PageSpace;
class Transaction;
struct StoredIndex;
struct StoredTable;

// Updates all indexes of one table for changes of its rows. Values are in the order of StoredTable::columns.
//
// The methods that build keys throw an Error (Duplicate, Required, TooLong, UnknownCharacter) before anything changes.
class TableIndexes {
 public:
  using Values = std::vector<Value>;

  // Throws Error (Unsupported) when keys of an index cannot be built. To be called before the table is changed.
  static void RequireKnownOrders(const StoredTable& table);

  // The table must outlive it.
  TableIndexes(Transaction& pages, PageSpace& space, const StoredTable& table, Counters& counters);
  ~TableIndexes();
  TableIndexes(const TableIndexes&) = delete;
  TableIndexes& operator=(const TableIndexes&) = delete;

  // Whether the column at position `column` of StoredTable::columns is in an index.
  bool Uses(std::size_t column) const { return used_[column]; }

  // One for each index; nothing where the index omits the row.
  using Keys = std::vector<std::optional<Bytes>>;
  // The keys of a new row, checked against the rules of the indexes. Valid until the next call.
  const Keys& KeysOf(const Values& values);
  void Insert(const Keys& keys, RowId row);
  // The same for a row among many: its entries may be missing, except where duplicates are refused, until
  // InsertCollected.
  void InsertLater(const Keys& keys, RowId row);
  void InsertCollected();

  // One index's key change for an updated row.
  struct KeyChange {
    std::size_t index;
    std::optional<Bytes> key;  // the new one
  };
  // The indexes whose key changes, with the new keys, checked against the rules of the indexes.
  std::vector<KeyChange> KeyChangesOf(const Values& before, const Values& after);
  void Apply(const std::vector<KeyChange>& changes, const Values& before, RowId row);

  // By index: entries of several rows.
  using Entries = std::vector<EntryList>;
  // Appends the existing entries of a row, which must not have been removed yet.
  void CollectEntries(const Values& values, RowId row, Entries& entries);
  void Remove(Entries& entries);
  // Empties every index.
  void Clear();

  bool AreEmpty();
  // Appends the entries of a new row. Duplicates are only checked by Fill.
  void CollectNewEntries(const Values& values, RowId row, Entries& entries);
  // Fills empty indexes with the noted entries. The rows are already stored, with ascending RowIds. Throws Error
  // (Duplicate) names the first row whose key an earlier one has; the caller must then remove the rows.
  void Fill(Entries& entries);

  // The largest number in the column if a unique index on that column alone already contains `number`; otherwise
  // nothing.
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
  void CollectEntry(Tree& tree, const Values& values, RowId row, EntryList& entries);
  static void RemoveFrom(Tree& tree, EntryList& entries);

  Transaction& pages_;
  const StoredTable& table_;
  Counters& counters_;
  std::vector<Tree> trees_;
  std::vector<bool> used_;  // by column
  Entries later_;           // of InsertLater
  Keys keys_;               // reused buffers
  Bytes entry_;
};

}  // namespace jet
