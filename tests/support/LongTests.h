// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdlib>

namespace testing_support {

// Factor for the number of steps of random tests: SPOTROOSTER_LONG_TESTS, 1 when it is not set.
inline int LongTests() {
  const char* factor = std::getenv("SPOTROOSTER_LONG_TESTS");
  return factor != nullptr ? std::max(1, std::atoi(factor)) : 1;
}

}  // namespace testing_support
