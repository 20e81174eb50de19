// SPDX-License-Identifier: MIT
#include "platform/jet/index/IndexKey.h"

#include "platform/jet/values/Error.h"
#include "platform/jet/values/TextOrder.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <bit>

namespace jet {
namespace {

constexpr std::uint8_t kNullUp = 0x00;
constexpr std::uint8_t kNullDown = 0xFF;
constexpr std::uint8_t kValueUp = 0x7F;
constexpr std::uint8_t kValueDown = 0x80;
constexpr std::uint8_t kTopBit = 0x80;
constexpr std::size_t kBinaryPiece = 8;  // bytes of a binary value per group
constexpr std::uint8_t kMorePieces = 9;

void Invert(ByteSpan bytes) {
  for (std::uint8_t& byte : bytes)
    byte = static_cast<std::uint8_t>(~byte);
}

void AppendBigEndian(std::uint64_t number, std::size_t size, Bytes& key) {
  for (std::size_t i = size; i-- > 0;)
    key.push_back(static_cast<std::uint8_t>(number >> (8 * i)));
}

// Two's complement of `size` bytes, top bit flipped.
void AppendWhole(std::int64_t number, std::size_t size, bool ascending, Bytes& key) {
  const std::size_t start = key.size();
  AppendBigEndian(static_cast<std::uint64_t>(number), size, key);
  key[start] ^= kTopBit;
  if (!ascending) Invert(ByteSpan(key).subspan(start));
}

// IEEE bits of `size` bytes: positive ones with the top bit flipped, negative ones inverted.
void AppendFloating(std::uint64_t bits, std::size_t size, bool ascending, Bytes& key) {
  const std::size_t start = key.size();
  AppendBigEndian(bits, size, key);
  const bool negative = (key[start] & kTopBit) != 0;
  if (!negative) key[start] ^= kTopBit;
  if (negative == ascending) Invert(ByteSpan(key).subspan(start));
}

// Sign and magnitude. The sign byte is the same in both orders, which sorts a descending index wrongly across signs;
// the original engine does so.
void AppendDecimal(const Decimal& number, bool ascending, Bytes& key) {
  key.push_back(number.negative ? 0x00 : 0xFF);
  const std::size_t start = key.size();
  AppendBigEndian(number.high, 8, key);
  AppendBigEndian(number.low, 8, key);
  if (number.negative == ascending) Invert(ByteSpan(key).subspan(start));
}

void AppendPieces(ByteView bytes, bool ascending, Bytes& key) {
  do {
    const std::size_t count = std::min(bytes.size(), kBinaryPiece);
    const bool isLast = bytes.size() <= kBinaryPiece;
    const std::size_t start = key.size();
    key.insert(key.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
    key.resize(start + kBinaryPiece);
    key.push_back(isLast ? static_cast<std::uint8_t>(count) : kMorePieces);
    if (!ascending) Invert(ByteSpan(key).subspan(start, isLast ? kBinaryPiece + 1 : kBinaryPiece));
    bytes = bytes.subspan(count);
  } while (!bytes.empty());
}

void AppendGuid(const Guid& guid, bool ascending, Bytes& key) {
  Bytes printed(guid.bytes.begin(), guid.bytes.end());
  std::reverse(printed.begin(), printed.begin() + 4);
  std::reverse(printed.begin() + 4, printed.begin() + 6);
  std::reverse(printed.begin() + 6, printed.begin() + 8);
  AppendPieces(printed, ascending, key);
}

void AppendTextKey(const StoredColumn& column, const std::u16string& text, bool ascending, Bytes& key) {
  const TextOrder* order = TextOrder::For(column.sortOrder);
  if (order == nullptr) throw Error(ErrorCode::Unsupported, "De sorteervolgorde van de index is niet bekend.");
  const std::size_t start = key.size();
  order->AppendKey(text, key);
  if (ascending) return;
  Invert(ByteSpan(key).subspan(start));
  key.push_back(0);
}

std::size_t WholeSize(ColumnType type) {
  return type == ColumnType::Byte ? 1 : type == ColumnType::Integer ? 2 : 4;
}

void AppendValue(const StoredColumn& column, const Value& value, bool ascending, Bytes& key) {
  switch (column.Type()) {
    case ColumnType::Boolean:
      return key.push_back(std::get<bool>(value) == ascending ? 0x00 : 0xFF);
    case ColumnType::Byte:
      key.push_back(static_cast<std::uint8_t>(std::get<std::int64_t>(value)));
      if (!ascending) key.back() ^= 0xFF;
      return;
    case ColumnType::Integer:
    case ColumnType::Long:
      return AppendWhole(std::get<std::int64_t>(value), WholeSize(column.Type()), ascending, key);
    case ColumnType::Currency:
      return AppendWhole(std::get<Currency>(value).scaled, 8, ascending, key);
    case ColumnType::Single:
      return AppendFloating(std::bit_cast<std::uint32_t>(static_cast<float>(std::get<double>(value))), 4, ascending,
                            key);
    case ColumnType::Double:
    case ColumnType::Date:
      return AppendFloating(std::bit_cast<std::uint64_t>(std::get<double>(value)), 8, ascending, key);
    case ColumnType::Decimal:
      return AppendDecimal(std::get<Decimal>(value), ascending, key);
    case ColumnType::Guid:
      return AppendGuid(std::get<Guid>(value), ascending, key);
    case ColumnType::Binary:
      return AppendPieces(std::get<Bytes>(value), ascending, key);
    case ColumnType::Text:
    case ColumnType::Memo:
      return AppendTextKey(column, std::get<std::u16string>(value), ascending, key);
    case ColumnType::Ole:
    case ColumnType::SystemBinary:
      break;
  }
  throw Error(ErrorCode::Unsupported, "Een veld van deze soort kan niet in een index staan.");
}

}  // namespace

bool CanBuildKeys(const StoredColumn& column) {
  if (!column.KnownType() || column.Type() == ColumnType::Ole || column.Type() == ColumnType::SystemBinary)
    return false;
  return !column.IsText() || TextOrder::For(column.sortOrder) != nullptr;
}

void AppendKeyField(const StoredColumn& column, const Value& value, bool ascending, Bytes& key) try {
  if (IsNull(value)) return key.push_back(ascending ? kNullUp : kNullDown);
  // A Boolean is never null and takes part like any other value.
  key.push_back(ascending ? kValueUp : kValueDown);
  AppendValue(column, value, ascending, key);
} catch (const Error& error) {
  throw Error(error.Code(), "Veld '" + ToUtf8(column.name) + "': " + error.what());
}

Bytes BuildKey(const StoredTable& table, const StoredIndex& index, std::span<const Value> values) {
  Bytes key;
  for (std::size_t i = 0; i < index.fields.size(); ++i) {
    const StoredColumn* column = table.ColumnByNumber(index.fields[i].column);
    if (column == nullptr) throw Error(ErrorCode::Damaged, "Een index noemt een kolom die niet bestaat.");
    AppendKeyField(*column, values[i], index.fields[i].ascending, key);
  }
  return key;
}

}  // namespace jet
