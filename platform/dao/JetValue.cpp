// SPDX-License-Identifier: MIT
#include "platform/dao/JetValue.h"

#include "platform/jet/values/ExactNumber.h"
#include "platform/jet/values/ValueText.h"

#include <QByteArray>
#include <QUuid>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <utility>
#include <variant>

namespace dao {
namespace {

constexpr double kCurrencyUnit = 10'000;
constexpr double kLargestWhole = 9.2e18;  // fits into 64 bits
constexpr int kExactDigits = 15;          // of a floating-point number
constexpr double kTwoTo64 = 18446744073709551616.0;

// A view of the number, or of its text when it has more digits than a floating-point number.
ValueView ViewOf(const jet::Decimal& number, std::u16string& text) {
  if (const auto value = DoubleOf(number)) return *value;
  text = TextOf(number);
  return std::u16string_view(text);
}

std::optional<jet::Value> GuidOf(const std::u16string& text) {
  const QByteArray printed = QUuid::fromString(QStringView(text)).toRfc4122();
  constexpr std::array<int, 16> kStored = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  jet::Guid guid;
  std::transform(kStored.begin(), kStored.end(), guid.bytes.begin(),
                 [&](int at) { return static_cast<std::uint8_t>(printed[at]); });
  return guid;
}

std::optional<jet::Value> AmountOf(double number) {
  const double scaled = std::nearbyint(number * kCurrencyUnit);
  if (!(std::abs(scaled) <= kLargestWhole)) return std::nullopt;
  return jet::Currency{static_cast<std::int64_t>(scaled)};
}

// Only the significant digits of a double; the other digits of the scale are zeros.
std::optional<jet::Value> DecimalOf(double number, int scale) {
  const double magnitude = std::abs(number);
  const int whole = magnitude < 1 ? 0 : static_cast<int>(std::floor(std::log10(magnitude))) + 1;
  const int digits = std::clamp(kExactDigits - whole, 0, scale);
  const double scaled = std::nearbyint(magnitude * std::pow(10.0, digits));
  if (!(scaled < kTwoTo64)) return std::nullopt;
  return jet::Decimal{number < 0, static_cast<std::uint8_t>(digits), 0, static_cast<std::uint64_t>(scaled)};
}

std::optional<jet::Value> StoredNumber(const jet::ColumnDefinition& column, double number) {
  switch (column.type) {
    case jet::ColumnType::Currency:
      return AmountOf(number);
    case jet::ColumnType::Decimal:
      return DecimalOf(number, column.scale);
    case jet::ColumnType::Single:
    case jet::ColumnType::Double:
    case jet::ColumnType::Date:
      return number;
    default:
      return std::nullopt;
  }
}

std::optional<jet::Value> StoredText(const jet::ColumnDefinition& column, std::u16string text) {
  switch (column.type) {
    case jet::ColumnType::Guid:
      return GuidOf(text);
    case jet::ColumnType::Currency:
      if (const auto number = jet::ExactOf(text)) return CurrencyOf(*number);
      return std::nullopt;
    case jet::ColumnType::Decimal:
      if (const auto number = jet::ExactOf(text)) return RoundedTo(*number, column.scale);
      return std::nullopt;
    default:
      return jet::Value(std::move(text));
  }
}

}  // namespace

ValueView ViewOf(const jet::Value& stored, std::u16string& text) {
  if (const auto* held = std::get_if<std::u16string>(&stored)) return *held;
  if (const auto* held = std::get_if<std::int64_t>(&stored)) return *held;
  if (const auto* held = std::get_if<double>(&stored)) return *held;
  if (const auto* held = std::get_if<bool>(&stored)) return std::int64_t{*held ? -1 : 0};
  if (const auto* held = std::get_if<jet::Currency>(&stored)) return ViewOf(ExactOf(*held), text);
  if (const auto* held = std::get_if<jet::Decimal>(&stored)) return ViewOf(*held, text);
  if (const auto* held = std::get_if<jet::Bytes>(&stored)) return std::span<const std::uint8_t>(*held);
  if (const auto* held = std::get_if<jet::Guid>(&stored)) {
    text = jet::TextOf(*held);
    return text;
  }
  return {};
}

std::optional<jet::Value> StoredOf(const jet::ColumnDefinition& column, Value value) {
  if (IsNull(value)) return jet::Value();
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    if (column.type == jet::ColumnType::Boolean) return *whole != 0;
    const bool isWhole = column.type == jet::ColumnType::Byte || column.type == jet::ColumnType::Integer ||
                         column.type == jet::ColumnType::Long;
    return isWhole ? jet::Value(*whole) : StoredNumber(column, static_cast<double>(*whole));
  }
  if (const auto* number = std::get_if<double>(&value)) return StoredNumber(column, *number);
  if (auto* text = std::get_if<std::u16string>(&value)) return StoredText(column, std::move(*text));
  return std::move(std::get<Bytes>(value));
}

}  // namespace dao
