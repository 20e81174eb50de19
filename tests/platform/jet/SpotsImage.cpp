// SPDX-License-Identifier: MIT
#include "tests/platform/jet/SpotsImage.h"

#include <string>
#include <vector>

using jet::Bytes;

Bytes LongHead(std::uint32_t length, std::uint32_t kind, jet::RowId where) {
  return Le(length | kind << 30, 4) + Le(where, 4) + Le(0, 4);
}

SpotsImage::SpotsImage() {
  spots = image.AddTable("Spots",
                         {{"Id", 4, 7, 0, 0, 4},
                          {"Amount", 5, 3, 1, 4, 8},
                          {"Flag", 1, 3, 2, 0, 1},
                          {"Name", 10, 2, 3, 0, 100},
                          {"Notes", 12, 2, 4, 1, 0}},
                         {{"Name", 3, 0x80, 0}, {"PrimaryKey", 0, 0x89, 1}});
  memoPage = image.AddLongValuePage(spots);
  const jet::RowId single = image.AddSlot(memoPage, Utf16("single"));
  for (std::uint32_t& page : chainPages)
    page = image.AddLongValuePage(spots);
  const jet::RowId last = image.AddSlot(chainPages[1], Le(0, 4) + Utf16("chain"));
  const jet::RowId first = image.AddSlot(chainPages[0], Le(last, 4) + Utf16("long "));
  const Bytes memos[] = {{}, {}, LongHead(4, 2, 0) + Utf16("in"), {}, LongHead(12, 1, single), LongHead(20, 0, first),
                         {}};
  rows.resize(7);
  rows[1] = image.AddRow(spots, Row(1, memos[1]));
  rows[2] = image.AddRow(spots, Row(2, memos[2]));
  rows[0] = image.AddRow(spots, Row(3, memos[3]), jet::SlotKind::Target);
  rows[3] = image.AddRow(spots, Le(rows[0], 4), jet::SlotKind::Pointer);
  image.AddRow(spots, {}, jet::SlotKind::Deleted);
  for (const int id : {4, 5, 6})
    rows[static_cast<std::size_t>(id)] = image.AddRow(spots, Row(id, memos[id]));
  image.SetRowCount(spots, 6, 6);
  nameRoot = spots.roots[0];
  root = spots.roots[1];
  for (std::uint32_t& leaf : leaves)
    leaf = image.AddIndexPage(spots, 1);
  image.PutIndexPage(leaves[0], spots, {IdEntry(1), IdEntry(2), IdEntry(3)}, 0, leaves[1], 0, false, 4);
  image.PutIndexPage(leaves[1], spots, {IdEntry(4), IdEntry(5), IdEntry(6)}, leaves[0], 0);
  image.PutIndexPage(root, spots, {IdEntry(3) + Child(leaves[0])}, 0, 0, leaves[1], true);
  std::vector<Bytes> names;
  const std::uint8_t weights[] = {0x4A, 0x4C, 0x4D, 0x4F, 0x51, 0x53};  // a b c d e f
  for (std::size_t i = 0; i < 6; ++i)
    names.push_back(Bytes{0x7F, weights[i], 0x01, 0x00} + Pointer(rows[i + 1]));
  image.PutIndexPage(nameRoot, spots, names, 0, 0);
}

// Amount is Id + 0.5; Flag is set for even numbers.
Bytes SpotsImage::Row(int id, const Bytes& memo) const {
  const auto number = static_cast<std::uint64_t>(id);
  const std::uint32_t mask = 0b01011u | (id % 2 == 0 ? 0b00100u : 0) | (memo.empty() ? 0 : 0b10000u);
  const std::string name(1, static_cast<char>('a' + id - 1));
  return RowBytes(5, Le(number, 4) + Le(number * 10000 + 5000, 8), {Utf16(name), memo}, mask);
}

Bytes SpotsImage::IdKey(int id) {
  return {0x7F, 0x80, 0, 0, static_cast<std::uint8_t>(id)};
}

Bytes SpotsImage::Pointer(jet::RowId row) {
  return {static_cast<std::uint8_t>(row >> 24), static_cast<std::uint8_t>(row >> 16),
          static_cast<std::uint8_t>(row >> 8), static_cast<std::uint8_t>(row)};
}

Bytes SpotsImage::Child(std::uint32_t page) {
  return Pointer(page);
}
