// SPDX-License-Identifier: MIT
// The RC4 stream with which the header is masked and the pages of an encoded file are encoded. Applying it twice gives
// the original back.
#pragma once

#include "platform/jet/values/Bytes.h"

#include <array>
#include <cstdint>

namespace jet {

void ApplyRc4(std::array<std::uint8_t, 4> key, ByteSpan bytes);

}  // namespace jet
