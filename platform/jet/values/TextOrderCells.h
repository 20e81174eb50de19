// SPDX-License-Identifier: MIT
#pragma once

namespace jet {

// Texts of cells, separated by one space; TextOrder turns them into tables. The syntax is described in the .cpp.
extern const char* const kLegacyLatin1;
extern const char* const kLegacyOthers;
extern const char* const kGeneralLatin1;

}  // namespace jet
