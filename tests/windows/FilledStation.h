// SPDX-License-Identifier: MIT
#pragma once

#include "tests/windows/Windows.h"

namespace testing_support {
class Station;
}

namespace windows {

// The records that FillStation adds.
inline constexpr Records kFilledRecords{1, 2, 1, 1};

// Adds a record of each kind; spot and jingle have an audio file of two seconds.
void FillStation(const testing_support::Station& station);

}  // namespace windows
