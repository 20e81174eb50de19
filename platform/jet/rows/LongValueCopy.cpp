// SPDX-License-Identifier: MIT
#include "platform/jet/rows/LongValueCopy.h"

#include "platform/jet/rows/LongValueWriter.h"
#include "platform/jet/values/Codec.h"

namespace jet {

namespace {

constexpr std::size_t kWhereAt = 4;  // offset in the head of a value
constexpr std::size_t kStampAt = 8;  // offset in the first page of a chain
constexpr std::uint32_t kEmptyInline = 0x80000000;

}  // namespace

LongValueCopy::LongValueCopy(PageSource& source, Transaction& target, PageSpace& space, const StoredColumn& column)
    : source_(source), target_(target), space_(space), owned_(column.ownedMap) {
  if (column.ownedMap != 0 && column.freeMap != 0)
    rows_.emplace(target, space, kLongValueOwner, column.ownedMap, column.freeMap);
}

RowId LongValueCopy::Put(ByteView row, bool alone) {
  if (rows_) return alone ? rows_->AddAlone(row) : rows_->Add(row);
  if (alone || page_ == 0 || RowPage::RoomForNew(*target_.Read(page_)) < row.size()) {
    page_ = space_.Allocate();
    RowPage::Format(target_.Change(page_), kLongValueOwner);
    if (owned_ != 0) UsageMapEditor(target_, owned_).Add(space_, page_);
  }
  const RowId place = MakeRowId(page_, RowPage::Add(target_.Change(page_), row, SlotKind::Row));
  if (alone) page_ = 0;
  return place;
}

void LongValueCopy::Copy(ByteSpan stored) {
  const LongValueHead head = ParseLongValueHead(stored);
  if (head.kind == LongValueHead::Kind::Inline) return;
  if (head.length == 0) {
    Store(stored.data(), kEmptyInline);
    Store(stored.data() + kWhereAt, RowId{0});
    return;
  }
  ReadLongValue(source_, stored, value_);
  if (head.kind == LongValueHead::Kind::Single) {
    Store(stored.data() + kWhereAt, Put(value_, false));
    return;
  }
  const RowId first = WriteChain(value_, [&](ByteView piece) { return Put(piece, true); });
  Store(target_.Change(PageOf(first)).data() + kStampAt, head.stamp);
  Store(stored.data() + kWhereAt, first);
}

}  // namespace jet
