// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/values/Value.h"

#include <optional>
#include <string>
#include <string_view>

namespace jet {

// Numbers of Currency and Numeric fields as decimals. A floating-point number holds 15 digits of them; one with more is
// handed on as its decimal text, so that none is lost. (In SQL such a text sorts behind all numbers.)

// "-12.5" or "12,5" with blanks around it; nothing for another text or more than 38 digits.
std::optional<Decimal> ExactOf(std::u16string_view text);
Decimal ExactOf(std::int64_t number);
Decimal ExactOf(Currency amount);

// With so many digits behind the point, half to even; nothing when it becomes too large.
std::optional<Decimal> RoundedTo(const Decimal& number, int scale);
// Nothing when it is no amount that a Currency field can hold.
std::optional<Currency> CurrencyOf(const Decimal& number);
int DigitsOf(const Decimal& number);

// Nothing when digits would be lost.
std::optional<double> DoubleOf(const Decimal& number);
// All digits of its scale, with a point: "-12.50".
std::u16string TextOf(const Decimal& number);

}  // namespace jet
