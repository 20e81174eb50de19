// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace jet::test {

// The database of tests without a real folder, and the table that most of them use.
inline constexpr const char* kPath = "/data/station.mdb";
inline constexpr const char* kJournal = "/data/station.mdb-journal";
inline const std::u16string kTable = u"tblSpots";

}  // namespace jet::test
