// SPDX-License-Identifier: MIT
#pragma once

#include <cerrno>

namespace files {

// Repeats a raw call (a count, 0, or a negative errno) while signals interrupt it.
template <typename Call>
auto Uninterrupted(Call call) {
  auto result = call();
  while (result == -EINTR)
    result = call();
  return result;
}

}  // namespace files
