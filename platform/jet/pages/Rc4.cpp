// SPDX-License-Identifier: MIT
#include "platform/jet/pages/Rc4.h"

#include <numeric>
#include <utility>

namespace jet {

void ApplyRc4(std::array<std::uint8_t, 4> key, ByteSpan bytes) {
  std::array<std::uint8_t, 256> state;
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  std::uint8_t j = 0;
  for (unsigned i = 0; i < 256; ++i) {
    j = static_cast<std::uint8_t>(j + state[i] + key[i % key.size()]);
    std::swap(state[i], state[j]);
  }
  std::uint8_t i = 0;
  j = 0;
  for (std::uint8_t& byte : bytes) {
    ++i;
    j = static_cast<std::uint8_t>(j + state[i]);
    std::swap(state[i], state[j]);
    byte ^= state[static_cast<std::uint8_t>(state[i] + state[j])];
  }
}

}  // namespace jet
