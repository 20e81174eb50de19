// SPDX-License-Identifier: MIT
#include "platform/jet/table/TableCursor.h"

#include "platform/jet/rows/RowView.h"
#include "platform/jet/rows/StoredTable.h"
#include "platform/jet/values/Damage.h"

#include <algorithm>
#include <utility>

namespace jet {

const std::vector<Value>& RowDecoder::Decode(ByteView row, LongValueBudget* budget) {
  const RowView view(row, table_);
  for (std::size_t i = 0; i < columns_.size(); ++i)
    ReadField(pages_, view, *columns_[i], values_[i], budget);
  return values_;
}

bool RowFetcher::Fetch(RowId row) {
  return InContext(context_, [&] {
    if (!page_ || page_->Number() != PageOf(row)) TurnTo(PageOf(row));
    if (SlotOf(row) < page_->SlotCount()) {
      const Slot slot = page_->At(SlotOf(row));
      if (slot.kind == SlotKind::Row) {
        decoder_.Decode(page_->BytesOf(slot));
        return true;
      }
    }
    const auto stored = FindRow(pages_, row, true, table_.page);
    if (stored) decoder_.Decode(stored->bytes);
    return stored.has_value();
  });
}

void RowFetcher::TurnTo(std::uint32_t number) {
  page_.reset();
  DataPage page(pages_.Read(number), number);
  RequireOwner(page, table_.page);
  page_ = std::move(page);
}

bool TableCursor::Next() {
  return InContext(context_, [&] {
    if (!scan_.Next()) return false;
    InContext([&] { return "pagina " + std::to_string(PageOf(Id())) + ", rij " + std::to_string(SlotOf(Id())) + ": "; },
              [&] { decoder_.Decode(scan_.Row(), &budget_); });
    return true;
  });
}

KeyCursor::KeyCursor(IndexCursor cursor, bool backwards, std::string context)
    : cursor_(std::move(cursor)), backwards_(backwards), context_(std::move(context)) {}

KeyCursor::KeyCursor(IndexCursor cursor, Bytes key, std::string context)
    : cursor_(std::move(cursor)), key_(std::move(key)), context_(std::move(context)) {}

bool KeyCursor::Next() {
  return InContext(context_, [&] { return Step(); });
}

bool KeyCursor::Step() {
  if (!started_) {
    started_ = true;
    if (backwards_) {
      cursor_.SeekLast();
    } else {
      cursor_.Seek(key_);
    }
  } else if (!cursor_.Valid()) {
    return false;
  } else if (backwards_) {
    cursor_.Previous();
  } else {
    cursor_.Next();
  }
  if (!cursor_.Valid()) return false;
  const ByteView found = cursor_.Key();
  if (found.size() < key_.size() || !std::equal(key_.begin(), key_.end(), found.begin())) return false;
  row_ = cursor_.Row();
  return true;
}

}  // namespace jet
