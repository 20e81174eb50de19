// SPDX-License-Identifier: MIT
#include "platform/jet/rows/RowBuilder.h"

#include "platform/jet/pages/RowPage.h"
#include "platform/jet/rows/RowView.h"
#include "platform/jet/values/Codec.h"
#include "platform/jet/values/Damage.h"
#include "platform/jet/values/StoredText.h"
#include "platform/jet/values/Utf8.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <variant>

namespace jet {

namespace {

__extension__ using Magnitude = unsigned __int128;

template <typename T>
const T& Held(const StoredColumn& column, const Value& value) {
  if (const T* held = std::get_if<T>(&value)) return *held;
  throw Error(ErrorCode::Misuse, "De waarde is niet van de soort van " + FieldName(column) + ".");
}

template <typename Number>
void Append(Number number, Bytes& out) {
  const std::size_t start = out.size();
  out.resize(start + sizeof number);
  Store(out.data() + start, number);
}

template <typename Number>
void AppendWhole(const StoredColumn& column, const Value& value, Bytes& out) {
  const std::int64_t number = Held<std::int64_t>(column, value);
  if (number < std::numeric_limits<Number>::min() || number > std::numeric_limits<Number>::max()) {
    throw Error(ErrorCode::OutOfRange,
                "Het getal " + std::to_string(number) + " past niet in " + FieldName(column) + ".");
  }
  Append(static_cast<Number>(number), out);
}

double Finite(const StoredColumn& column, const Value& value, double most) {
  const double number = Held<double>(column, value);
  if (!std::isfinite(number) || std::abs(number) > most) {
    throw Error(ErrorCode::OutOfRange, "Het getal past niet in " + FieldName(column) + ".");
  }
  return number;
}

void AppendDecimal(const StoredColumn& column, const Decimal& given, Bytes& out) {
  const Decimal number = Rescaled(column, given);
  out.push_back(number.negative ? 0x80 : 0);
  Append(static_cast<std::uint32_t>(number.high >> 32), out);
  Append(static_cast<std::uint32_t>(number.high), out);
  Append(static_cast<std::uint32_t>(number.low >> 32), out);
  Append(static_cast<std::uint32_t>(number.low), out);
}

void CheckLength(const StoredColumn& column, std::size_t length, std::size_t most, const char* unit) {
  if (length <= most) return;
  throw Error(ErrorCode::TooLong, "De waarde is te lang voor " + FieldName(column) + ": " + std::to_string(length) +
                                      ' ' + unit + ", er passen er " + std::to_string(most) + ".");
}

void AppendTextValue(const StoredColumn& column, const std::u16string& text, Bytes& out) {
  CheckLength(column, text.size(), column.length / 2, "tekens");
  if (!column.IsFixed()) return AppendText(text, column.MayCompress(), out);
  const std::size_t end = out.size() + column.length;
  AppendText(text, false, out);
  while (out.size() < end)
    out.insert(out.end(), {' ', 0});
}

[[noreturn]] void ThrowOverlap(const StoredColumn& column) {
  throw Damage(FieldName(column) + " heeft in de tabeldefinitie geen eigen plaats");
}

// In a damaged definition fields may overlap: writing one would change the other.
void CheckFixedPlaces(const StoredTable& table) {
  std::vector<bool> taken;
  for (const StoredColumn& column : table.columns) {
    if (!column.IsFixed() || column.Type() == ColumnType::Boolean) continue;
    if (column.IsLong()) ThrowOverlap(column);
    const std::size_t end = column.fixedOffset + FixedSize(column);
    taken.resize(std::max(taken.size(), end));
    for (std::size_t at = column.fixedOffset; at < end; ++at) {
      if (taken[at]) ThrowOverlap(column);
      taken[at] = true;
    }
  }
}

}  // namespace

std::string FieldName(const StoredColumn& column) {
  return "veld '" + ToUtf8(column.name) + "'";
}

Decimal Rescaled(const StoredColumn& column, const Decimal& number) {
  constexpr std::uint64_t kTen = 10;
  const Error tooLarge(ErrorCode::OutOfRange, "Het getal past niet in " + FieldName(column) + ".");
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

void EncodeValue(const StoredColumn& column, const Value& value, Bytes& out) {
  switch (column.Type()) {
    case ColumnType::Byte:
      return AppendWhole<std::uint8_t>(column, value, out);
    case ColumnType::Integer:
      return AppendWhole<std::int16_t>(column, value, out);
    case ColumnType::Long:
      return AppendWhole<std::int32_t>(column, value, out);
    case ColumnType::Currency:
      return Append(Held<Currency>(column, value).scaled, out);
    case ColumnType::Single:
      return Append(static_cast<float>(Finite(column, value, static_cast<double>(std::numeric_limits<float>::max()))),
                    out);
    case ColumnType::Double:
    case ColumnType::Date:
      return Append(Finite(column, value, std::numeric_limits<double>::max()), out);
    case ColumnType::Decimal:
      return AppendDecimal(column, Held<Decimal>(column, value), out);
    case ColumnType::Guid: {
      const Guid& guid = Held<Guid>(column, value);
      out.insert(out.end(), guid.bytes.begin(), guid.bytes.end());
      return;
    }
    case ColumnType::Text:
      return AppendTextValue(column, Held<std::u16string>(column, value), out);
    case ColumnType::Binary: {
      const Bytes& bytes = Held<Bytes>(column, value);
      CheckLength(column, bytes.size(), column.length, "bytes");
      out.insert(out.end(), bytes.begin(), bytes.end());
      return;
    }
    default:
      throw Error(ErrorCode::Unsupported, "In " + FieldName(column) + " kan niet worden geschreven.");
  }
}

RowBuilder::RowBuilder(const StoredTable& table)
    : table_(table),
      fixedSize_(FixedSize(table)),
      byVariableIndex_(table.variableColumns, kNone),
      mask_((table.maxColumns + 7U) / 8) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const StoredColumn& column = table.columns[i];
    if (column.IsFixed() || column.Type() == ColumnType::Boolean) continue;
    std::size_t& place = byVariableIndex_[column.variableIndex];
    if (place != kNone) ThrowOverlap(column);
    place = i;
  }
  CheckFixedPlaces(table);
}

const Bytes& RowBuilder::Build(const std::vector<Field>& fields) {
  row_.assign(2 + fixedSize_, 0);
  Store(row_.data(), table_.maxColumns);
  std::fill(mask_.begin(), mask_.end(), std::uint8_t{0});
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const StoredColumn& column = table_.columns[i];
    if (fields[i].bit) mask_[column.number / 8] |= static_cast<std::uint8_t>(1U << (column.number % 8));
    if (!column.IsFixed() || fields[i].stored.empty()) continue;
    if (column.fixedOffset + fields[i].stored.size() > fixedSize_) ThrowOverlap(column);
    std::copy(fields[i].stored.begin(), fields[i].stored.end(), row_.begin() + 2 + column.fixedOffset);
  }
  if (table_.variableColumns > 0) AppendVariables(fields);
  row_.insert(row_.end(), mask_.begin(), mask_.end());
  if (row_.size() > kMaxBytes) {
    throw Error(ErrorCode::TooLong, "De rij is te groot: " + std::to_string(row_.size()) + " bytes, er passen er " +
                                        std::to_string(kMaxBytes) + ".");
  }
  return row_;
}

// The variable values in the order of their indexes, then their offsets. Indexes of deleted columns get empty values.
void RowBuilder::AppendVariables(const std::vector<Field>& fields) {
  starts_.clear();
  for (const std::size_t place : byVariableIndex_) {
    starts_.push_back(static_cast<std::uint16_t>(row_.size()));
    if (place != kNone) row_.insert(row_.end(), fields[place].stored.begin(), fields[place].stored.end());
  }
  Append(static_cast<std::uint16_t>(row_.size()), row_);
  std::for_each(starts_.rbegin(), starts_.rend(), [this](std::uint16_t start) { Append(start, row_); });
  Append(static_cast<std::uint16_t>(starts_.size()), row_);
}

}  // namespace jet
