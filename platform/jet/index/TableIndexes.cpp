// SPDX-License-Identifier: MIT
#include "platform/jet/index/TableIndexes.h"

#include "platform/jet/index/Counters.h"
#include "platform/jet/index/IndexCursor.h"
#include "platform/jet/index/IndexKey.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/rows/RowBuilder.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <variant>

namespace jet {

namespace {

constexpr std::size_t kUsualKeyBytes = 32;

// A number or text for an error message; empty for other types.
std::string Shown(const Value& value) {
  if (const auto* number = std::get_if<std::int64_t>(&value)) return ' ' + std::to_string(*number);
  if (const auto* text = std::get_if<std::u16string>(&value)) return " '" + ToUtf8(*text) + "'";
  return {};
}

// The name of a tree for messages: that of the primary key, if it has one.
struct TreeName {
  std::string name;
  bool primary = false;
};

TreeName NameOf(const StoredTable& table, const StoredIndex& index) {
  TreeName tree;
  for (const LogicalIndexDef& logical : table.logicalIndexes) {
    if (&table.realIndexes[logical.realIndex] != &index) continue;
    const bool primary = logical.role == LogicalIndexDef::Role::PrimaryKey;
    tree.primary |= primary;
    if (tree.name.empty() || primary) tree.name = ToUtf8(logical.name);
  }
  return tree;
}

}  // namespace

void TableIndexes::RequireKnownOrders(const StoredTable& table) {
  for (const StoredIndex& index : table.realIndexes) {
    for (const StoredIndex::Field& field : index.fields) {
      const StoredColumn& column = *table.ColumnByNumber(field.column);
      if (CanBuildKeys(column)) continue;
      throw Error(ErrorCode::Unsupported,
                  "index '" + NameOf(table, index).name + "' kan niet worden bijgehouden: " + FieldName(column) +
                      (column.IsText() ? " heeft een sorteervolgorde die niet bekend is."
                                       : " is van een soort die hier niet in een index kan staan.") +
                      " Er wordt niet in de tabel geschreven.");
    }
  }
}

TableIndexes::TableIndexes(Transaction& pages, PageSpace& space, const StoredTable& table, Counters& counters)
    : pages_(pages), table_(table), counters_(counters), used_(table.columns.size()) {
  for (const StoredIndex& index : table_.realIndexes) {
    trees_.push_back(MakeTree(space, index));
    for (const std::size_t column : trees_.back().columns)
      used_[column] = true;
  }
}

TableIndexes::Tree TableIndexes::MakeTree(PageSpace& space, const StoredIndex& index) {
  Tree tree;
  tree.def = &index;
  const TreeName named = NameOf(table_, index);
  tree.name = named.name;
  tree.unique = named.primary || (index.flags & StoredIndex::kUnique) != 0;
  tree.required = named.primary || (index.flags & StoredIndex::kRequired) != 0;
  for (const StoredIndex::Field& field : index.fields) {
    tree.columns.push_back(static_cast<std::size_t>(table_.ColumnByNumber(field.column) - table_.columns.data()));
  }
  tree.writer = std::make_unique<IndexWriter>(pages_, space, table_.page, index);
  return tree;
}

TableIndexes::~TableIndexes() = default;

// False, without a key, for a row that the index omits.
bool TableIndexes::MakeKey(const Tree& tree, const Values& values, Bytes& key) const {
  const auto isNull = [&](std::size_t column) { return IsNull(values[column]); };
  const bool ignoresNulls = (tree.def->flags & StoredIndex::kIgnoreNulls) != 0;
  if (ignoresNulls && std::all_of(tree.columns.begin(), tree.columns.end(), isNull)) return false;
  key.clear();
  key.reserve(kUsualKeyBytes);
  for (std::size_t i = 0; i < tree.columns.size(); ++i) {
    const std::size_t column = tree.columns[i];
    AppendKeyField(table_.columns[column], values[column], tree.def->fields[i].ascending, key);
  }
  return true;
}

std::optional<Bytes> TableIndexes::KeyOf(const Tree& tree, const Values& values) const {
  Bytes key;
  return MakeKey(tree, values, key) ? std::optional(std::move(key)) : std::nullopt;
}

void TableIndexes::RequireValues(const Tree& tree, const Values& values) const {
  if (!tree.required) return;
  for (const std::size_t column : tree.columns) {
    if (!IsNull(values[column])) continue;
    throw Error(ErrorCode::Required,
                FieldName(table_.columns[column]) + " moet een waarde hebben: het is een sleutel.");
  }
}

// Every entry must also fit in a node, where the child page number follows it.
void TableIndexes::RequireFits(const Tree& tree, ByteView key, const Values& values) const {
  constexpr std::size_t kMaxKeyBytes = index_page::kEntryBytes - index_page::kPointerBytes - index_page::kChildBytes;
  if (key.size() <= kMaxKeyBytes) return;
  std::size_t longest = tree.columns.front();
  std::size_t most = 0;
  for (std::size_t i = 0; i < tree.columns.size(); ++i) {
    Bytes part;
    AppendKeyField(table_.columns[tree.columns[i]], values[tree.columns[i]], tree.def->fields[i].ascending, part);
    if (part.size() <= most) continue;
    most = part.size();
    longest = tree.columns[i];
  }
  throw Error(ErrorCode::TooLong,
              "de waarde van " + FieldName(table_.columns[longest]) + " is te lang voor index '" + tree.name + "'.");
}

void TableIndexes::CheckKey(Tree& tree, const std::optional<Bytes>& key, const Values& values) {
  RequireValues(tree, values);
  if (key) RequireFits(tree, *key, values);
  const auto isNull = [&](std::size_t column) { return IsNull(values[column]); };
  if (!tree.unique || !key || std::all_of(tree.columns.begin(), tree.columns.end(), isNull)) return;
  if (tree.writer->Contains(*key)) RefuseDuplicate(tree, values[tree.columns.front()]);
}

void TableIndexes::RefuseDuplicate(const Tree& tree, const Value& first) const {
  throw Error(ErrorCode::Duplicate, "de waarde" + Shown(first) + " van " +
                                        FieldName(table_.columns[tree.columns.front()]) + " bestaat al (index '" +
                                        tree.name + "').");
}

const TableIndexes::Keys& TableIndexes::KeysOf(const Values& values) {
  keys_.resize(trees_.size());
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    std::optional<Bytes>& key = keys_[i];
    if (!key) key.emplace();
    if (!MakeKey(trees_[i], values, *key)) key.reset();
    CheckKey(trees_[i], key, values);
  }
  return keys_;
}

void TableIndexes::Insert(const Keys& keys, RowId row) {
  for (std::size_t i = 0; i < trees_.size(); ++i)
    InsertInto(trees_[i], keys[i], row);
}

void TableIndexes::InsertLater(const Keys& keys, RowId row) {
  later_.resize(trees_.size());
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    if (trees_[i].unique) {
      InsertInto(trees_[i], keys[i], row);
    } else if (keys[i]) {
      entry_.assign(keys[i]->begin(), keys[i]->end());
      IndexWriter::AppendPlace(entry_, row);
      later_[i].Add(entry_);
    }
  }
}

void TableIndexes::InsertCollected() {
  for (std::size_t i = 0; i < later_.size(); ++i) {
    if (later_[i].Count() == 0) continue;
    later_[i].Sort();
    counters_.CountNewKeys(*trees_[i].def, trees_[i].writer->CountNewKeys(later_[i]));
    trees_[i].writer->Insert(later_[i]);
  }
  later_.clear();
}

void TableIndexes::InsertInto(Tree& tree, const std::optional<Bytes>& key, RowId row) {
  if (!key) return;
  if (tree.unique || !tree.writer->Contains(*key)) counters_.CountNewKeys(*tree.def);
  tree.writer->Insert(*key, row);
}

// Different values can have the same key, such as texts that differ in case only.
bool TableIndexes::IsSameKey(const Tree& tree, const Values& before, const Values& after) const {
  const auto isSame = [&](std::size_t column) { return before[column] == after[column]; };
  if (std::all_of(tree.columns.begin(), tree.columns.end(), isSame)) return true;
  try {
    return KeyOf(tree, before) == KeyOf(tree, after);
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::UnknownCharacter) throw;
    return false;
  }
}

std::vector<TableIndexes::KeyChange> TableIndexes::KeyChangesOf(const Values& before, const Values& after) {
  std::vector<KeyChange> changes;
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    if (IsSameKey(trees_[i], before, after)) continue;
    changes.push_back({i, KeyOf(trees_[i], after)});
    CheckKey(trees_[i], changes.back().key, after);
  }
  return changes;
}

void TableIndexes::Apply(const std::vector<KeyChange>& changes, const Values& before, RowId row) {
  for (const KeyChange& rekeying : changes) {
    Tree& tree = trees_[rekeying.index];
    EntryList old;
    CollectEntry(tree, before, row, old);
    RemoveFrom(tree, old);
    InsertInto(tree, rekeying.key, row);
  }
}

void TableIndexes::CollectEntries(const Values& values, RowId row, Entries& entries) {
  entries.resize(trees_.size());
  for (std::size_t i = 0; i < trees_.size(); ++i)
    CollectEntry(trees_[i], values, row, entries[i]);
}

void TableIndexes::CollectEntry(Tree& tree, const Values& values, RowId row, EntryList& entries) {
  try {
    if (!MakeKey(tree, values, entry_)) return;
  } catch (const Error& error) {
    if (error.Code() != ErrorCode::UnknownCharacter) throw;
    const auto key = tree.writer->KeyOfRow(row);
    if (!key) throw Damage("de rij ontbreekt in de index '" + tree.name + "'");
    entry_ = *key;
  }
  IndexWriter::AppendPlace(entry_, row);
  entries.Add(entry_);
}

void TableIndexes::Remove(Entries& entries) {
  for (std::size_t i = 0; i < entries.size(); ++i)
    RemoveFrom(trees_[i], entries[i]);
}

void TableIndexes::RemoveFrom(Tree& tree, EntryList& entries) {
  entries.Sort();
  InContext("index '" + tree.name + "': ", [&] { tree.writer->Remove(entries); });
}

void TableIndexes::Clear() {
  for (Tree& tree : trees_)
    tree.writer->Clear();
}

std::optional<std::int64_t> TableIndexes::LargestIfTaken(std::size_t column, std::int64_t number) {
  for (Tree& tree : trees_) {
    if (!tree.unique || tree.columns != std::vector<std::size_t>{column}) continue;
    const bool ascending = tree.def->fields[0].ascending;
    Bytes key;
    AppendKeyField(table_.columns[column], number, ascending, key);
    if (!tree.writer->Contains(key)) return std::nullopt;
    IndexCursor cursor(pages_, table_.page, tree.def->root);
    if (ascending) {
      cursor.SeekLast();
    } else {
      cursor.SeekFirst();
    }
    if (!cursor.Valid()) throw Damage("index '" + tree.name + "' heeft geen einde");
    const Value largest = ReadColumn(cursor.Row(), column);
    if (const auto* found = std::get_if<std::int64_t>(&largest)) return *found;
    throw Damage("index '" + tree.name + "' noemt een rij zonder nummer");
  }
  return std::nullopt;
}

Value TableIndexes::ReadColumn(RowId row, std::size_t column) {
  const auto stored = FindRow(pages_, row, true, table_.page);
  if (!stored) throw Damage("een index noemt een rij die er niet is");
  Value value;
  ReadField(pages_, RowView(stored->bytes, table_), table_.columns[column], value);
  return value;
}

}  // namespace jet
