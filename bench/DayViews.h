// SPDX-License-Identifier: MIT
#pragma once

#include "bench/DaySteps.h"

namespace bench {

// Steps on many records at once: the week, the missing files, the choice of spots for an item, end dates for 20 marked
// spots, a copy of an item and of a spot, a deactivation taken back, and 30 dropped files. The station must have an
// item with ID 1. What they add they remove.
void RunDayViews(DaySteps& steps, const SlowDisk& disk);

}  // namespace bench
