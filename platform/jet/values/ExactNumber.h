// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace jet {

// Numbers of Currency and Numeric fields as decimals. A double holds 15 digits; a number with more is passed on as
// decimal text, so that none is lost. (In SQL such a text sorts after all numbers.)

// Parses "-12.5" or "12,5", with or without surrounding blanks; nothing for other texts or more than 38 digits.
std::optional<Decimal> ExactOf(std::u16string_view text);
Decimal ExactOf(std::int64_t number);
Decimal ExactOf(Currency amount);

// Rounded half to even to `scale` decimals; nothing when the result is too large.
std::optional<Decimal> RoundedTo(const Decimal& number, int scale);
// Rounded to four decimals; nothing when a Currency field cannot hold it.
std::optional<Currency> CurrencyOf(const Decimal& number);
int DigitsOf(const Decimal& number);

// Nothing when a double would lose digits.
std::optional<double> DoubleOf(const Decimal& number);
// With all decimals of its scale: "-12.50".
std::u16string TextOf(const Decimal& number);

}  // namespace jet
