// SPDX-License-Identifier: MIT
#include "platform/jet/check/CheckState.h"
#include "platform/jet/index/EntryList.h"
#include "platform/jet/index/IndexKey.h"
#include "platform/jet/index/IndexPage.h"
#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <cstring>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace jet {

using index_page::kDeepest;
using index_page::kPointerBytes;

namespace {

std::string EntryRow(ByteView entry) {
  const std::uint8_t* pointer = entry.data() + entry.size() - kPointerBytes;
  return "pagina " + std::to_string(LoadU24BigEndian(pointer)) + ", rij " + std::to_string(pointer[3]);
}

// The row pointer at the end of the row's index entries.
Bytes Pointer(RowId row) {
  return {static_cast<std::uint8_t>(row >> 24), static_cast<std::uint8_t>(row >> 16),
          static_cast<std::uint8_t>(row >> 8), static_cast<std::uint8_t>(row)};
}

std::string NameOf(const StoredTable& table, std::size_t realIndex) {
  for (const LogicalIndexDef& index : table.logicalIndexes) {
    if (index.realIndex == realIndex) return "index '" + ToUtf8(index.name) + "'";
  }
  return "index " + std::to_string(realIndex);
}

// Checks one tree: its pages and their order, then its entries against the rows.
class TreeChecker {
 public:
  TreeChecker(CheckState& state, const StoredTable& table, std::size_t number)
      : state_(state), table_(table), index_(table.realIndexes[number]), name_(NameOf(table, number)) {}

  void Run() {
    map_ = state_.ReadMap(index_.map, name_);
    Walk(index_.root, 0);
    FinishChain();
    for (const std::uint32_t page : map_.Members()) {
      if (!visited_.contains(page)) CheckOutside(page);
    }
    if (whole_) CompareWithRows();
  }

 private:
  using Visited = std::unordered_map<std::uint32_t, bool>;

  // Visits a page and its descendants from left to right. Returns their last entry (empty = none).
  Bytes Walk(std::uint32_t number, unsigned depth) {
    Bytes last;
    const bool before = whole_;
    whole_ = false;
    state_.Guard([&] {
      if (depth > kDeepest || !visited_.emplace(number, true).second)
        throw DamageAt(number, name_ + " loopt in een kring");
      state_.Claim(number, state_.Where() + name_);
      const IndexPage page(state_.Source().Read(number), number, table_.page);
      if (!map_.Contains(number)) state_.ProblemAt(number, "ligt in de boom van " + name_ + ", maar hoort er niet bij");
      CheckFreeBytes(page);
      whole_ = before;
      last = page.IsLeaf() ? WalkLeaf(page) : WalkNode(page, depth);
    });
    return last;
  }

  // Checks a page that is in the index's map but not in the tree.
  void CheckOutside(std::uint32_t page) {
    const std::string what = "hoort bij " + name_ + ", maar ligt niet in de boom";
    if (!state_.IsFree(page) || !IsUnwritten(*state_.Source().Read(page))) return state_.ProblemAt(page, what);
    state_.Remark("pagina " + std::to_string(page) + ": " + what + "; de pagina is leeg en vrij");
  }

  void CheckFreeBytes(const IndexPage& page) {
    if (page.FreeBytes() == page.ExactFreeBytes()) return;
    state_.ProblemAt(page.Number(), "vrije ruimte is " + std::to_string(page.FreeBytes()) + " in plaats van " +
                                        std::to_string(page.ExactFreeBytes()));
  }

  Bytes WalkLeaf(const IndexPage& leaf) {
    if (leaf.Previous() != lastLeaf_) state_.ProblemAt(leaf.Number(), name_ + ": het vorige blad klopt niet");
    if (lastLeaf_ != 0 && nextOfLast_ != leaf.Number()) {
      state_.ProblemAt(lastLeaf_, name_ + ": het volgende blad klopt niet");
    }
    lastLeaf_ = leaf.Number();
    nextOfLast_ = leaf.Next();
    Bytes entry;
    for (std::size_t i = 0; i < leaf.Count(); ++i) {
      leaf.CopyEntry(i, entry);
      CollectEntry(leaf.Number(), entry);
    }
    return entry;
  }

  void CollectEntry(std::uint32_t page, const Bytes& entry) {
    if (found_.Count() > 0) {
      const ByteView previous = found_.At(found_.Count() - 1);
      if (!EntryList::Less(previous, entry)) {
        state_.ProblemAt(page, name_ + ": de volgorde klopt niet bij " + EntryRow(entry));
      } else if (SameKey(previous, entry)) {
        CheckUnique(page, entry);
      }
    }
    found_.Add(entry);
  }

  static bool SameKey(ByteView a, ByteView b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() - kPointerBytes) == 0;
  }

  // Keys of only nulls (one flag byte per field) may repeat.
  void CheckUnique(std::uint32_t page, const Bytes& entry) {
    const bool allNull = entry.size() == index_.fields.size() + kPointerBytes;
    if ((index_.flags & StoredIndex::kUnique) == 0 || allNull) return;
    state_.ProblemAt(page, name_ + ": een sleutel die uniek moet zijn, komt tweemaal voor (" + EntryRow(entry) + ")");
  }

  Bytes WalkNode(const IndexPage& node, unsigned depth) {
    Bytes entry;
    Bytes last;
    for (std::size_t i = 0; i < node.Count(); ++i) {
      node.CopyEntry(i, entry);
      last = Walk(node.Child(i), depth + 1);
      if (whole_ && last != entry) {
        state_.ProblemAt(node.Number(), name_ + ": regel " + std::to_string(i) + " is niet de laatste van haar kind");
      }
    }
    if (node.Tail() != 0) return Walk(node.Tail(), depth + 1);
    if (node.Count() == 0) throw DamageAt(node.Number(), name_ + " heeft een knoop zonder kinderen");
    return last;
  }

  void FinishChain() {
    if (whole_ && nextOfLast_ != 0) state_.ProblemAt(lastLeaf_, name_ + ": na het laatste blad volgt er nog een");
  }

  // Every row must have one entry, with the key of its values; a row whose key cannot be built may have any key.
  void CompareWithRows() {
    EntryList expected;
    try {
      ReadExpected(expected);
    } catch (const Error& error) {
      if (error.Code() == ErrorCode::Damaged) return;  // reported by the check of the rows
      throw;
    }
    if (keyless_.empty()) return Compare(expected, found_);
    state_.Remark(name_ + ": de sleutels zijn niet alle na te rekenen (" + whyKeyless_ + ")");
    // The program that filled such an index knows more characters and may also weigh others differently: all rows must
    // have an entry, but a different key is only a remark.
    EntryList rows = expected.LastBytes(kPointerBytes);
    for (const RowId row : keyless_)
      rows.Add(Pointer(row));
    EntryList foundRows = found_.LastBytes(kPointerBytes);
    Compare(rows, foundRows);
    RemarkOtherKeys(expected);
  }

  void RemarkOtherKeys(EntryList& expected) {
    expected.Sort();
    found_.Sort();
    std::size_t j = 0;
    for (std::size_t i = 0; i < expected.Count(); ++i) {
      const ByteView entry = expected.At(i);
      while (j < found_.Count() && EntryList::Less(found_.At(j), entry))
        ++j;
      if (j < found_.Count() && !EntryList::Less(entry, found_.At(j))) continue;
      state_.Remark(name_ + ": " + EntryRow(entry) + " staat er onder een andere sleutel dan hier berekend");
    }
  }

  void Compare(EntryList& expected, EntryList& found) {
    expected.Sort();
    found.Sort();
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < expected.Count() || j < found.Count()) {
      if (j == found.Count() || (i < expected.Count() && EntryList::Less(expected.At(i), found.At(j)))) {
        state_.Problem(name_ + ": " + EntryRow(expected.At(i++)) + " ontbreekt");
      } else if (i == expected.Count() || EntryList::Less(found.At(j), expected.At(i))) {
        state_.Problem(name_ + ": een regel verwijst naar " + EntryRow(found.At(j++)) +
                       ", maar die rij of haar sleutel is er niet");
      } else {
        ++i;
        ++j;
      }
    }
  }

  void ReadExpected(EntryList& expected) {
    RowScan scan(state_.Source(), table_);
    while (scan.Next())
      AddExpected(scan.Id(), RowView(scan.Row(), table_), expected);
  }

  void AddExpected(RowId id, const RowView& row, EntryList& expected) {
    std::vector<Value> values(index_.fields.size());
    bool allNull = true;
    for (std::size_t i = 0; i < values.size(); ++i) {
      ReadField(state_.Source(), row, *table_.ColumnByNumber(index_.fields[i].column), values[i], &budget_);
      allNull = allNull && IsNull(values[i]);
    }
    if (allNull && (index_.flags & StoredIndex::kIgnoreNulls) != 0) return;
    try {
      Bytes entry = BuildKey(table_, index_, values);
      const Bytes pointer = Pointer(id);
      entry.insert(entry.end(), pointer.begin(), pointer.end());
      expected.Add(entry);
    } catch (const Error& error) {
      if (error.Code() != ErrorCode::UnknownCharacter && error.Code() != ErrorCode::Unsupported) throw;
      whyKeyless_ = error.what();
      keyless_.insert(id);
    }
  }

  CheckState& state_;
  const StoredTable& table_;
  const StoredIndex& index_;
  std::string name_;
  UsageMap map_;
  Visited visited_;
  EntryList found_;
  std::uint32_t lastLeaf_ = 0;
  std::uint32_t nextOfLast_ = 0;
  std::set<RowId> keyless_;  // rows whose key cannot be built
  std::string whyKeyless_;
  LongValueBudget budget_;
  bool whole_ = true;  // all pages of the tree were readable so far
};

}  // namespace

void CheckIndexes(CheckState& state, const StoredTable& table) {
  for (std::size_t i = 0; i < table.realIndexes.size(); ++i)
    TreeChecker(state, table, i).Run();
}

}  // namespace jet
