// SPDX-License-Identifier: MIT
#include "platform/jet/values/ExactNumber.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace jet {
namespace {

__extension__ using Magnitude = unsigned __int128;

constexpr int kMaxDigits = 38;
constexpr int kDigitsOfDouble = 15;
constexpr int kDigitsOfCurrency = 4;
constexpr unsigned kTen = 10;

Magnitude MagnitudeOf(const Decimal& number) {
  return static_cast<Magnitude>(number.high) << 64 | number.low;
}

Decimal MakeDecimal(bool negative, int scale, Magnitude magnitude) {
  return {negative && magnitude != 0, static_cast<std::uint8_t>(scale), static_cast<std::uint64_t>(magnitude >> 64),
          static_cast<std::uint64_t>(magnitude)};
}

std::u16string_view WithoutBlanks(std::u16string_view text) {
  while (!text.empty() && text.front() == u' ')
    text.remove_prefix(1);
  while (!text.empty() && text.back() == u' ')
    text.remove_suffix(1);
  return text;
}

// Drops the last digit, half to even. `exact`: no digit other than 0 was dropped before.
Magnitude DropLastDigit(Magnitude magnitude, bool exact) {
  const unsigned last = static_cast<unsigned>(magnitude % kTen);
  const Magnitude kept = magnitude / kTen;
  const bool isHalf = last == 5 && exact;
  return kept + static_cast<unsigned>(isHalf ? kept % 2 != 0 : last >= 5);
}

}  // namespace

std::optional<Decimal> ExactOf(std::u16string_view text) {
  text = WithoutBlanks(text);
  const bool negative = !text.empty() && text.front() == u'-';
  if (negative || (!text.empty() && text.front() == u'+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find_first_of(u".,"), text.size());
  Magnitude magnitude = 0;
  int digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i == point) continue;
    if (text[i] < u'0' || text[i] > u'9') return std::nullopt;
    if (magnitude != 0 || text[i] != u'0') ++digits;
    if (digits > kMaxDigits) return std::nullopt;
    magnitude = magnitude * kTen + static_cast<unsigned>(text[i] - u'0');
  }
  const std::size_t decimals = point < text.size() ? text.size() - point - 1 : 0;
  if (point + decimals == 0 || decimals > kMaxDigits) return std::nullopt;  // no digit at all
  return MakeDecimal(negative, static_cast<int>(decimals), magnitude);
}

Decimal ExactOf(std::int64_t number) {
  const auto bits = static_cast<std::uint64_t>(number);
  return MakeDecimal(number < 0, 0, number < 0 ? 0 - bits : bits);
}

Decimal ExactOf(Currency amount) {
  Decimal number = ExactOf(amount.scaled);
  number.scale = kDigitsOfCurrency;
  return number;
}

std::optional<Decimal> RoundedTo(const Decimal& number, int scale) {
  Magnitude magnitude = MagnitudeOf(number);
  // Drop all surplus digits but one and round once, so that rounding does not accumulate.
  bool exact = true;
  for (int surplus = number.scale - scale; surplus > 1; --surplus) {
    exact = exact && magnitude % kTen == 0;
    magnitude /= kTen;
  }
  if (number.scale > scale) magnitude = DropLastDigit(magnitude, exact);
  for (int missing = scale - number.scale; missing > 0; --missing) {
    if (magnitude > ~static_cast<Magnitude>(0) / kTen) return std::nullopt;
    magnitude *= kTen;
  }
  return MakeDecimal(number.negative, scale, magnitude);
}

std::optional<Currency> CurrencyOf(const Decimal& number) {
  const auto rounded = RoundedTo(number, kDigitsOfCurrency);
  constexpr auto kLargest = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (!rounded || rounded->high != 0 || rounded->low > kLargest + (rounded->negative ? 1U : 0U)) return std::nullopt;
  return Currency{static_cast<std::int64_t>(rounded->negative ? 0 - rounded->low : rounded->low)};
}

int DigitsOf(const Decimal& number) {
  int digits = 0;
  for (Magnitude rest = MagnitudeOf(number); rest != 0; rest /= kTen)
    ++digits;
  return digits;
}

std::optional<double> DoubleOf(const Decimal& number) {
  Magnitude magnitude = MagnitudeOf(number);
  int scale = number.scale;
  for (; scale > 0 && magnitude % kTen == 0; --scale)
    magnitude /= kTen;
  // Numerator and power of ten are exact doubles, so their quotient is the nearest double.
  if (DigitsOf(MakeDecimal(false, scale, magnitude)) > kDigitsOfDouble || scale > 22) return std::nullopt;
  const double value = static_cast<double>(static_cast<std::uint64_t>(magnitude)) / std::pow(10.0, scale);
  return number.negative ? -value : value;
}

std::u16string TextOf(const Decimal& number) {
  std::u16string text;
  for (Magnitude rest = MagnitudeOf(number); rest != 0 || text.size() <= number.scale; rest /= kTen)
    text += static_cast<char16_t>(u'0' + static_cast<unsigned>(rest % kTen));
  if (number.scale > 0) text.insert(number.scale, 1, u'.');
  if (number.negative) text += u'-';
  std::reverse(text.begin(), text.end());
  return text;
}

}  // namespace jet
