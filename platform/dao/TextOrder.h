#pragma once

#include <string_view>

namespace dao {

// How texts of a database compare, everywhere: in `=`, ORDER BY, DISTINCT, MAX and in keys. Without regard to letter
// case; negative, zero or positive.
int CompareText(std::u16string_view left, std::u16string_view right) noexcept;

}  // namespace dao
