// SPDX-License-Identifier: MIT
// The part of TableIndexes that fills the indexes of an empty table.
#include "platform/jet/index/Counters.h"
#include "platform/jet/index/IndexWriter.h"
#include "platform/jet/index/TableIndexes.h"
#include "platform/jet/rows/StoredTable.h"

#include <algorithm>
#include <optional>

namespace jet {

namespace {

// The first row, by RowId, whose key an earlier row has. Keys of only nulls (one byte per column) may repeat.
std::optional<RowId> FirstDuplicate(const EntryList& sorted, std::size_t columns) {
  std::optional<RowId> first;
  for (std::size_t i = 0; i < sorted.Count(); ++i) {
    const ByteView entry = sorted.At(i);
    if (!IndexWriter::HasKeyOfTheOneBefore(sorted, i) || IndexWriter::KeyOf(entry).size() == columns) continue;
    first = std::min(first.value_or(IndexWriter::RowOf(entry)), IndexWriter::RowOf(entry));
  }
  return first;
}

}  // namespace

bool TableIndexes::AreEmpty() {
  return std::ranges::all_of(trees_, [](const Tree& tree) { return tree.writer->IsEmpty(); });
}

void TableIndexes::CollectNewEntries(const Values& values, RowId row, Entries& entries) {
  entries.resize(trees_.size());
  for (std::size_t i = 0; i < trees_.size(); ++i) {
    RequireValues(trees_[i], values);
    if (!MakeKey(trees_[i], values, entry_)) continue;
    RequireFits(trees_[i], entry_, values);
    IndexWriter::AppendPlace(entry_, row);
    entries[i].Add(entry_);
  }
}

void TableIndexes::Fill(Entries& entries) {
  for (EntryList& list : entries)
    list.Sort();
  RefuseDuplicates(entries);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const Tree& tree = trees_[i];
    counters_.CountNewKeys(*tree.def, tree.unique ? entries[i].Count() : IndexWriter::CountKeys(entries[i]));
    tree.writer->Fill(entries[i]);
  }
}

void TableIndexes::RefuseDuplicates(const Entries& entries) {
  const Tree* refusing = nullptr;
  std::optional<RowId> first;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!trees_[i].unique) continue;
    const auto row = FirstDuplicate(entries[i], trees_[i].columns.size());
    if (!row || (first && *first <= *row)) continue;
    first = row;
    refusing = &trees_[i];
  }
  if (refusing != nullptr) RefuseDuplicate(*refusing, ReadColumn(*first, refusing->columns.front()));
}

}  // namespace jet
