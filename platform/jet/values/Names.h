// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace jet {

// Names of tables, columns and indexes are the same when they differ in case only.
bool SameName(std::u16string_view a, std::u16string_view b);
// Their order in lists.
bool NameLess(std::u16string_view a, std::u16string_view b);

}  // namespace jet
