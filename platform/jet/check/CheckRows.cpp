// SPDX-License-Identifier: MIT
#include "platform/jet/check/CheckState.h"
#include "platform/jet/pages/DataPage.h"
#include "platform/jet/rows/LongValue.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <bitset>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <variant>
#include <vector>

namespace jet {

namespace {

std::string RowName(RowId row) {
  return "pagina " + std::to_string(PageOf(row)) + ", rij " + std::to_string(SlotOf(row)) + ": ";
}

// Pages in the map of pages with room must be in the map of owned pages.
void CheckSubset(CheckState& state, const UsageMap& owned, const UsageMap& free, const std::string& what) {
  for (const std::uint32_t page : free.Members()) {
    if (!owned.Contains(page)) state.ProblemAt(page, "heeft volgens " + what + " ruimte, maar hoort er niet bij");
  }
}

// The pages of one memo or OLE column and the pieces on them that rows reference.
class LongColumn {
 public:
  LongColumn(CheckState& state, const StoredColumn& column) : state_(state), column_(column) {
    const std::string name = "veld '" + ToUtf8(column.name) + "'";
    owned_ = state.ReadMap(column.ownedMap, "de pagina's van " + name);
    CheckSubset(state, owned_, state.ReadMap(column.freeMap, "de ruimte van " + name), name);
    for (const std::uint32_t page : owned_.Members()) {
      if (!state.Claim(page, state.Where() + name)) continue;
      state.Guard([&] { CheckPage(page); });
    }
  }

  void CheckValue(RowId row, ByteView stored) {
    const LongValueHead head = ParseLongValueHead(stored);
    if (head.kind == LongValueHead::Kind::Inline) {
      if (stored.size() != (stored.empty() ? 0 : LongValueHead::kBytes + head.length)) {
        state_.Problem(RowName(row) + "een lange waarde heeft een verkeerde lengte");
      }
      return;
    }
    if (head.length > std::uint64_t{state_.Source().PageCount()} * kPageSize) {
      throw Damage("lange waarde is langer dan het bestand");
    }
    bool isOwn = true;
    const std::uint64_t found =
        VisitPieces(state_.Source(), head, [&](RowId piece, ByteView) { return isOwn = VisitPiece(row, piece); });
    if (isOwn && found != head.length) {
      state_.Problem(RowName(row) + "een lange waarde heeft " + std::to_string(found) + " bytes in plaats van " +
                     std::to_string(head.length));
    }
  }

  // Called after all rows were visited.
  void RemarkUnused() {
    std::size_t unused = 0;
    for (const auto& [page, pieces] : there_)
      unused += (pieces & ~used_[page]).count();
    if (unused == 0) return;
    state_.Remark("veld '" + ToUtf8(column_.name) + "': " + std::to_string(unused) +
                  " stukken van lange waarden die geen rij gebruikt");
  }

 private:
  void CheckPage(std::uint32_t number) {
    const PageRef bytes = state_.Source().Read(number);
    if (IsUnwritten(*bytes)) return;
    const DataPage page(bytes, number);
    if (!CheckDataPage(state_, page, kLongValueOwner)) return;
    for (unsigned slot = 0; slot < page.SlotCount(); ++slot) {
      if (page.At(slot).kind == SlotKind::Row) there_[number].set(slot);
    }
  }

  // False when another value has the piece: the rest of the chain is shared too and is not followed again.
  bool VisitPiece(RowId row, RowId piece) {
    std::bitset<kMaxReadSlots>& used = used_[PageOf(piece)];
    if (used.test(SlotOf(piece))) {
      state_.Problem(RowName(row) + "deelt een stuk van een lange waarde op pagina " + std::to_string(PageOf(piece)));
      return false;
    }
    used.set(SlotOf(piece));
    const std::string name = "veld '" + ToUtf8(column_.name) + "'";
    if (column_.ownedMap == 0) {
      state_.ClaimUnmapped(PageOf(piece), state_.Where() + name);
    } else if (!owned_.Contains(PageOf(piece))) {
      state_.ProblemAt(PageOf(piece), "bevat een lange waarde van " + name + ", maar hoort er niet bij");
    }
    return true;
  }

  CheckState& state_;
  const StoredColumn& column_;
  UsageMap owned_;
  // By page: the slots with pieces, and those that a row uses.
  std::unordered_map<std::uint32_t, std::bitset<kMaxReadSlots>> there_;
  std::unordered_map<std::uint32_t, std::bitset<kMaxReadSlots>> used_;
};

// Checks all rows of one table.
class RowChecker {
 public:
  RowChecker(CheckState& state, const StoredTable& table) : state_(state), table_(table) {
    for (const StoredColumn& column : table.columns) {
      if (column.IsLong()) longColumns_.emplace_back(state, column);
    }
  }

  void Run() {
    const UsageMap owned = state_.ReadMap(table_.ownedMap, "de gegevenspagina's");
    CheckSubset(state_, owned, state_.ReadMap(table_.freeMap, "de ruimte"), "de tabel");
    for (const std::uint32_t page : owned.Members()) {
      state_.Claim(page, state_.Where() + "gegevens");
      state_.Guard([&] { CheckPage(page); });
    }
    for (const RowId target : targets_) {
      if (pointedAt_.count(target) == 0) state_.Remark(RowName(target) + "geen rij verwijst hierheen");
    }
    for (LongColumn& column : longColumns_)
      column.RemarkUnused();
    CheckCounters();
  }

 private:
  void CheckPage(std::uint32_t number) {
    const PageRef bytes = state_.Source().Read(number);
    if (IsUnwritten(*bytes)) {
      state_.Remark("pagina " + std::to_string(number) + " is toegewezen maar nooit beschreven");
      return;
    }
    const DataPage page(bytes, number);
    if (!CheckDataPage(state_, page, table_.page)) return;
    for (unsigned slot = 0; slot < page.SlotCount(); ++slot) {
      state_.Guard([&] { CheckSlot(page, slot); });
    }
  }

  void CheckSlot(const DataPage& page, unsigned number) {
    const Slot slot = page.At(number);
    const RowId id = MakeRowId(page.Number(), number);
    if (slot.kind == SlotKind::Target) targets_.push_back(id);
    if (slot.kind == SlotKind::Deleted || slot.kind == SlotKind::Target) return;
    ++rows_;
    if (slot.kind == SlotKind::Pointer) NotePointer(id, page.BytesOf(slot));
    const auto row = FindRow(state_.Source(), id, true, table_.page);
    if (!row) return state_.Problem(RowName(id) + "verwijst naar een rij die er niet is");
    InContext(RowName(id), [&] { CheckFields(id, row->bytes); });
  }

  void NotePointer(RowId id, ByteView bytes) {
    if (bytes.size() < 4) throw Damage(RowName(id) + "een verwijzing is te kort");
    RowId target;
    std::copy_n(bytes.begin(), sizeof target, reinterpret_cast<std::uint8_t*>(&target));
    if (!pointedAt_.insert(target).second) state_.Problem(RowName(id) + "twee rijen verwijzen naar dezelfde plaats");
  }

  void CheckFields(RowId id, ByteView bytes) {
    const RowView row(bytes, table_);
    if (row.ColumnCount() > table_.maxColumns) state_.Problem(RowName(id) + "heeft meer velden dan de tabel");
    std::size_t longColumn = 0;
    for (const StoredColumn& column : table_.columns) {
      LongColumn* pieces = column.IsLong() ? &longColumns_[longColumn++] : nullptr;
      if (column.Type() == ColumnType::Boolean) continue;
      const ByteView stored = row.BytesOf(column);  // also for a null: it must be within the row
      if (!row.Bit(column)) continue;
      if (pieces != nullptr) {
        pieces->CheckValue(id, stored);
      } else {
        CheckValue(id, column, stored);
      }
    }
  }

  void CheckValue(RowId id, const StoredColumn& column, ByteView stored) {
    Value value;
    DecodeValue(column, stored, value);
    const auto* text = std::get_if<std::u16string>(&value);
    if (text != nullptr && text->size() > column.length / 2u) {
      state_.Problem(RowName(id) + "veld '" + ToUtf8(column.name) + "' is langer dan het mag zijn");
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number != nullptr && (column.flags & column_flag::kAutonumber) != 0) {
      largestAutonumber_ = std::max(largestAutonumber_, *number);
      hasAutonumber_ = true;
    }
  }

  void CheckCounters() {
    if (table_.rowCount != rows_) {
      state_.Remark("de tabel telt " + std::to_string(table_.rowCount) + " rijen, er zijn er " + std::to_string(rows_));
    }
    if (hasAutonumber_ && largestAutonumber_ > std::int64_t{table_.lastAutonumber}) {
      state_.Remark("het laatste automatische nummer staat op " + std::to_string(table_.lastAutonumber) +
                    ", het grootste is " + std::to_string(largestAutonumber_));
    }
  }

  CheckState& state_;
  const StoredTable& table_;
  std::vector<LongColumn> longColumns_;
  std::vector<RowId> targets_;
  std::unordered_set<RowId> pointedAt_;
  std::uint64_t rows_ = 0;
  std::int64_t largestAutonumber_ = 0;
  bool hasAutonumber_ = false;
};

}  // namespace

void CheckRows(CheckState& state, const StoredTable& table) {
  RowChecker(state, table).Run();
}

}  // namespace jet
