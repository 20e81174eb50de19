// SPDX-License-Identifier: MIT
#pragma once

#include "platform/jet/pages/DoubtfulFreePages.h"

namespace jet {

// Throws Damage when the map of free pages itself is unusable.
DoubtfulFreePages FindDoubtfulFreePages(PageSource& pages);

}  // namespace jet
