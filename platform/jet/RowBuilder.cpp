#include "platform/jet/RowBuilder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/jet/Codec.h"
#include "platform/jet/Error.h"
#include "platform/jet/RowPage.h"
#include "platform/jet/Rows.h"
#include "platform/jet/StoredText.h"
#include "platform/jet/Utf8.h"

namespace jet {

namespace {

__extension__ using Magnitude = unsigned __int128;

std::string NameOf(const ColumnDef& column) {
  return "veld '" + ToUtf8(column.name) + "'";
}

template <typename T>
const T& Held(const ColumnDef& column, const Value& value) {
  if (const T* held = std::get_if<T>(&value)) return *held;
  throw Error(ErrorCode::Misuse, "De waarde is niet van de soort van " + NameOf(column) + ".");
}

template <typename Number>
Bytes AsBytes(Number number) {
  Bytes bytes(sizeof number);
  Store(bytes.data(), number);
  return bytes;
}

template <typename Number>
Bytes EncodeWhole(const ColumnDef& column, const Value& value) {
  const std::int64_t number = Held<std::int64_t>(column, value);
  if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max()) {
    throw Error(ErrorCode::OutOfRange, "Het getal " + std::to_string(number) + " past niet in " + NameOf(column) + ".");
  }
  return AsBytes(static_cast<Number>(number));
}

double Finite(const ColumnDef& column, const Value& value, double most) {
  const double number = Held<double>(column, value);
  if (!std::isfinite(number) || std::abs(number) > most) {
    throw Error(ErrorCode::OutOfRange, "Het getal past niet in " + NameOf(column) + ".");
  }
  return number;
}

Bytes EncodeDecimal(const ColumnDef& column, const Decimal& given) {
  const Decimal number = Rescaled(column, given);
  Bytes bytes(17);
  bytes[0] = number.negative ? 0x80 : 0;
  const std::uint32_t words[] = {static_cast<std::uint32_t>(number.high >> 32), static_cast<std::uint32_t>(number.high),
                                 static_cast<std::uint32_t>(number.low >> 32), static_cast<std::uint32_t>(number.low)};
  for (std::size_t i = 0; i < 4; ++i)
    Store(&bytes[1 + 4 * i], words[i]);
  return bytes;
}

void CheckLength(const ColumnDef& column, std::size_t length, std::size_t most, const char* unit) {
  if (length <= most) return;
  throw Error(ErrorCode::TooLong, "De waarde is te lang voor " + NameOf(column) + ": " + std::to_string(length) + ' ' +
                                      unit + ", er passen er " + std::to_string(most) + ".");
}

Bytes EncodeTextValue(const ColumnDef& column, const std::u16string& text) {
  CheckLength(column, text.size(), column.length / 2, "tekens");
  if (!column.IsFixed()) return EncodeText(text, column.MayCompress());
  Bytes bytes = EncodeText(text, false);
  while (bytes.size() < column.length)
    bytes.insert(bytes.end(), {' ', 0});
  return bytes;
}

void CopyFixed(const ColumnDef& column, const Bytes& stored, Bytes& row) {
  std::copy(stored.begin(), stored.end(), row.begin() + 2 + column.fixedOffset);
}

std::size_t FixedSize(const TableDef& table) {
  std::size_t size = 0;
  for (const ColumnDef& column : table.columns) {
    if (!column.IsFixed() || column.Type() == ColumnType::Boolean) continue;
    const std::size_t typeSize = TypeSize(column.Type());
    size = std::max(size, std::size_t{column.fixedOffset} + (typeSize != 0 ? typeSize : column.length));
  }
  return size;
}

void AppendU16(Bytes& row, std::size_t number) {
  row.push_back(static_cast<std::uint8_t>(number));
  row.push_back(static_cast<std::uint8_t>(number >> 8));
}

/// The variable values in the order of their indexes, and then where each ends and begins. The indexes of deleted
/// columns get nothing.
void AppendVariables(const TableDef& table, const std::vector<Field>& fields, Bytes& row) {
  std::vector<const Field*> byIndex(table.variableColumns, nullptr);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const ColumnDef& column = table.columns[i];
    if (!column.IsFixed() && column.Type() != ColumnType::Boolean) byIndex[column.variableIndex] = &fields[i];
  }
  std::vector<std::size_t> starts;
  for (const Field* field : byIndex) {
    starts.push_back(row.size());
    if (field != nullptr) row.insert(row.end(), field->stored.begin(), field->stored.end());
  }
  AppendU16(row, row.size());
  for (auto start = starts.rbegin(); start != starts.rend(); ++start)
    AppendU16(row, *start);
  AppendU16(row, starts.size());
}

}  // namespace

Decimal Rescaled(const ColumnDef& column, const Decimal& number) {
  constexpr std::uint64_t kTen = 10;
  const Error tooLarge(ErrorCode::OutOfRange, "Het getal past niet in " + NameOf(column) + ".");
  Magnitude magnitude = static_cast<Magnitude>(number.high) << 64 | number.low;
  for (unsigned scale = number.scale; scale > column.scale; --scale) {
    if (magnitude % kTen != 0) throw tooLarge;
    magnitude /= kTen;
  }
  for (unsigned scale = number.scale; scale < column.scale; ++scale) {
    if (magnitude > (~static_cast<Magnitude>(0)) / kTen) throw tooLarge;
    magnitude *= kTen;
  }
  unsigned digits = 0;
  for (Magnitude rest = magnitude; rest != 0; rest /= kTen)
    ++digits;
  if (digits > column.precision) throw tooLarge;
  return {number.negative && magnitude != 0, column.scale, static_cast<std::uint64_t>(magnitude >> 64),
          static_cast<std::uint64_t>(magnitude)};
}

Bytes EncodeValue(const ColumnDef& column, const Value& value) {
  switch (column.Type()) {
    case ColumnType::Byte:
      return EncodeWhole<std::uint8_t>(column, value);
    case ColumnType::Integer:
      return EncodeWhole<std::int16_t>(column, value);
    case ColumnType::Long:
      return EncodeWhole<std::int32_t>(column, value);
    case ColumnType::Currency:
      return AsBytes(Held<Currency>(column, value).scaled);
    case ColumnType::Single:
      return AsBytes(static_cast<float>(Finite(column, value, std::numeric_limits<float>::max())));
    case ColumnType::Double:
    case ColumnType::Date:
      return AsBytes(Finite(column, value, std::numeric_limits<double>::max()));
    case ColumnType::Decimal:
      return EncodeDecimal(column, Held<Decimal>(column, value));
    case ColumnType::Guid: {
      const Guid& guid = Held<Guid>(column, value);
      return {guid.bytes.begin(), guid.bytes.end()};
    }
    case ColumnType::Text:
      return EncodeTextValue(column, Held<std::u16string>(column, value));
    case ColumnType::Binary:
      CheckLength(column, Held<Bytes>(column, value).size(), column.length, "bytes");
      return Held<Bytes>(column, value);
    default:
      throw Error(ErrorCode::Unsupported, "In " + NameOf(column) + " kan niet worden geschreven.");
  }
}

Bytes BuildRow(const TableDef& table, const std::vector<Field>& fields) {
  Bytes row(2 + FixedSize(table));
  Store(row.data(), table.maxColumns);
  Bytes mask((table.maxColumns + 7U) / 8);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const ColumnDef& column = table.columns[i];
    if (fields[i].bit) mask[column.number / 8] |= static_cast<std::uint8_t>(1U << (column.number % 8));
    if (column.IsFixed() && !fields[i].stored.empty()) CopyFixed(column, fields[i].stored, row);
  }
  if (table.variableColumns > 0) AppendVariables(table, fields, row);
  row.insert(row.end(), mask.begin(), mask.end());
  if (row.size() > RowPage::kMostRowBytes) {
    throw Error(ErrorCode::TooLong, "De rij is te groot: " + std::to_string(row.size()) + " bytes, er passen er " +
                                        std::to_string(RowPage::kMostRowBytes) + ".");
  }
  return row;
}

}  // namespace jet
