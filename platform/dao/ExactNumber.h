#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/jet/Value.h"

namespace dao {

// Numbers of Currency and Numeric fields. A floating-point number holds 15 digits of them; one with more goes through
// the SQL engine as its decimal text, so that none is lost. (There such a text sorts behind all numbers.)

// "-12.5" or "12,5" with blanks around it; nothing for another text or more than 38 digits.
std::optional<jet::Decimal> ExactOf(std::u16string_view text);
jet::Decimal ExactOf(std::int64_t number);
jet::Decimal ExactOf(jet::Currency amount);

// With so many digits behind the point, half to even; nothing when it becomes too large.
std::optional<jet::Decimal> RoundedTo(const jet::Decimal& number, int scale);
// Nothing when it is no amount that a Currency field can hold.
std::optional<jet::Currency> CurrencyOf(const jet::Decimal& number);
int DigitsOf(const jet::Decimal& number);

// Nothing when digits would be lost.
std::optional<double> DoubleOf(const jet::Decimal& number);
// All digits of its scale, with a point: "-12.50".
std::u16string TextOf(const jet::Decimal& number);

}  // namespace dao
