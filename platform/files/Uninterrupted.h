// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>

namespace files {

// Makes a raw call (a count or 0, or a negative errno) until no signal interrupts it. The one loop of its kind.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -EINTR)
    result = call();
  return result;
}

}  // namespace files
