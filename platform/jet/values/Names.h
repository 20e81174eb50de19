// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace jet {

// Names of tables, columns and indexes are compared without regard to case.
bool SameName(std::u16string_view a, std::u16string_view b);
// Whether `a` sorts before `b`.
bool NameLess(std::u16string_view a, std::u16string_view b);

}  // namespace jet
