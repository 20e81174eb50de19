// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/SharedChain.h"

#include "tests/platform/jet/SpotsImage.h"

namespace jet::test {

namespace {

constexpr std::size_t kPieceBytes = 4072;  // after the pointer to the next piece

}  // namespace

Bytes SharedChain(int rows, int pieces) {
  DatabaseImage image;
  DatabaseImage::Table table = image.AddTable("Teksten", {{"Id", 4, 3, 0, 0, 4}, {"Tekst", 12, 2, 1, 0, 0}});
  RowId next = 0;
  for (int i = 0; i < pieces; ++i)
    next = image.AddSlot(image.AddLongValuePage(table), Le(next, 4) + Bytes(kPieceBytes, 'x'));
  const Bytes head = LongHead(static_cast<std::uint32_t>(kPieceBytes) * static_cast<std::uint32_t>(pieces), 0, next);
  for (int id = 1; id <= rows; ++id)
    image.AddRow(table, RowBytes(2, Le(static_cast<std::uint64_t>(id), 4), {head}, 3));
  image.SetRowCount(table, static_cast<std::uint32_t>(rows), 0);
  return image.File();
}

}  // namespace jet::test
