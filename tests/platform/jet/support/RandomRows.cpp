// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/RandomRows.h"

#include <algorithm>

namespace jet::test {

std::vector<Value> RandomRows::Row(const TableDefinition& table) {
  std::vector<Value> row;
  for (const ColumnDefinition& column : table.columns)
    row.push_back(For(column));
  return row;
}

std::int64_t RandomRows::Whole(std::int64_t low, std::int64_t high) {
  switch (random_() % 8) {
    case 0:
      return low;
    case 1:
      return high;
    case 2:
      return 0;
    default:
      return std::clamp<std::int64_t>(static_cast<std::int64_t>(random_() % 3000) - 1000, low, high);
  }
}

std::u16string RandomRows::Text(std::size_t most) {
  static constexpr std::u16string_view kAlphabet = u"abcdefgzABCDE  éèëïüçßÆœøñ'-.&0123456789ŁžαΩЖ€";
  const std::size_t lengths[] = {0, 1, 2, 3, 10, 40, most};
  std::u16string text(std::min(most, lengths[random_() % 7]), u' ');
  const bool plain = random_() % 2 == 0;
  for (char16_t& character : text)
    character = kAlphabet[random_() % (plain ? 14 : kAlphabet.size())];
  return text;
}

Bytes RandomRows::Binary(std::size_t most) {
  Bytes bytes(random_() % (most + 1));
  for (std::uint8_t& byte : bytes)
    byte = static_cast<std::uint8_t>(random_());
  return bytes;
}

// Inline, single piece, or chain.
std::size_t RandomRows::LongLength() {
  const std::size_t most[] = {2, 70, 300, 4076, 4100, 20000};
  return random_() % most[random_() % 6] + 1;
}

Value RandomRows::For(const ColumnDefinition& column) {
  if (column.type == ColumnType::Boolean) return random_() % 2 == 0;
  if (column.autonumber) return Value{};
  if (!column.required && random_() % 6 == 0) return Value{};
  switch (column.type) {
    case ColumnType::Byte:
      return Whole(0, 255);
    case ColumnType::Integer:
      return Whole(INT16_MIN, INT16_MAX);
    case ColumnType::Long:
      return Whole(INT32_MIN, INT32_MAX);
    case ColumnType::Currency:
      return Currency{Whole(INT64_MIN, INT64_MAX)};
    case ColumnType::Single:
      return static_cast<double>(static_cast<float>(Whole(-100000, 100000)) / 8);
    case ColumnType::Double:
    case ColumnType::Date:
      return static_cast<double>(Whole(-657434, 2958465)) + 0.25;
    case ColumnType::Binary:
      return Binary(std::min<std::size_t>(column.size, 40));
    case ColumnType::Ole:
      return Binary(LongLength());
    case ColumnType::Memo:
      return Text(LongLength());
    case ColumnType::Guid: {
      Guid guid;
      guid.bytes[random_() % 16] = static_cast<std::uint8_t>(random_());
      return guid;
    }
    case ColumnType::Decimal:
      return Decimal{random_() % 2 == 0, column.scale, 0, 1 + random_() % 100000};
    default: {
      std::u16string text = Text(column.size);
      if (text.empty() && !column.allowZeroLength) text = u"x";
      return text;
    }
  }
}

}  // namespace jet::test
