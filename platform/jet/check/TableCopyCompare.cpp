// SPDX-License-Identifier: MIT
// The part of TableCopy.h that compares a copy with its source.
#include "platform/jet/check/TableCopy.h"
#include "platform/jet/rows/RowScan.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Codec.h"

#include <algorithm>

namespace jet {

namespace {

// The definition without the page numbers that differ in a copy.
Bytes ComparableDefinition(PageSource& pages, StoredTable table, const TablePlaces& places) {
  table.rowCount = 0;
  table.ownedMap = 0;
  table.freeMap = 0;
  for (StoredColumn& column : table.columns)
    column.ownedMap = column.freeMap = column.ownedMap != 0 ? 1 : 0;
  for (StoredIndex& index : table.realIndexes)
    index.map = index.root = index.compactedEntries = index.distinctKeys = 0;
  for (LogicalIndexDef& index : table.logicalIndexes)
    index.partnerTable = PlaceIn(places, index.partnerTable);
  Bytes stream = ReadTableDefStream(pages, table);
  MoveTableDef(stream, table);
  constexpr std::size_t kFirstPageHead = 8;
  std::fill_n(stream.begin(), kFirstPageHead, std::uint8_t{0});
  return stream;
}

// Whether the long values of two rows are equal. Clears the references in both rows.
bool HaveSameLongValues(PageSource& source, PageSource& target, const StoredTable& table, Bytes& left, Bytes& right) {
  const auto place = [](const Bytes& row, ByteView part) { return static_cast<std::size_t>(part.data() - row.data()); };
  Bytes leftValue;
  Bytes rightValue;
  for (const StoredColumn& column : table.columns) {
    const RowView leftRow(left, table);
    const RowView rightRow(right, table);
    if (!column.IsLong() || !leftRow.Bit(column) || !rightRow.Bit(column)) continue;
    const ByteView leftStored = leftRow.BytesOf(column);
    const ByteView rightStored = rightRow.BytesOf(column);
    ReadLongValue(source, leftStored, leftValue);
    ReadLongValue(target, rightStored, rightValue);
    if (leftValue != rightValue || leftStored.size() != rightStored.size()) return false;
    if (leftStored.size() != LongValueHead::kBytes) continue;  // an inline value, which has no page number
    std::fill_n(left.begin() + static_cast<std::ptrdiff_t>(place(left, leftStored)), leftStored.size(), 0);
    std::fill_n(right.begin() + static_cast<std::ptrdiff_t>(place(right, rightStored)), rightStored.size(), 0);
  }
  return true;
}

}  // namespace

bool IsFaithfulCopy(PageSource& source, const StoredTable& table, PageSource& target, const TablePlaces& places) {
  const StoredTable copy = ReadStoredTable(target, places.at(table.page));
  if (ComparableDefinition(source, table, places) != ComparableDefinition(target, copy, {})) return false;
  RowScan rows(source, table);
  RowScan copies(target, copy);
  while (rows.Next()) {
    if (!copies.Next()) return false;
    Bytes row(rows.Row().begin(), rows.Row().end());
    Bytes copied(copies.Row().begin(), copies.Row().end());
    MoveReferences(table, places, row);
    if (row.size() != copied.size() || !HaveSameLongValues(source, target, table, row, copied) || row != copied)
      return false;
  }
  return !copies.Next();
}

}  // namespace jet
