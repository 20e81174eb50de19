// SPDX-License-Identifier: MIT
// RC4, which masks the header and encodes the pages of an encoded file. Applying it twice restores the original.
#pragma once

#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>

namespace jet {

void ApplyRc4(std::array<std::uint8_t, 4> key, ByteSpan bytes);

}  // namespace jet
