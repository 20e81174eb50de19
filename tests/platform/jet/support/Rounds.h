// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdlib>

namespace jet::test {

// The number of repetitions of a random search: the environment variable if set, otherwise `ordinary`.
inline int Rounds(const char* variable, int ordinary) {
  const char* said = std::getenv(variable);
  return said != nullptr ? std::max(1, std::atoi(said)) : ordinary;
}

}  // namespace jet::test
