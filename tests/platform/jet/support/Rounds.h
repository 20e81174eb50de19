// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdlib>

namespace jet::test {

// How often a search repeats: what the environment variable says, or the ordinary number. scripts/prove sets them.
inline int Rounds(const char* variable, int ordinary) {
  const char* said = std::getenv(variable);
  return said != nullptr ? std::max(1, std::atoi(said)) : ordinary;
}

}  // namespace jet::test
