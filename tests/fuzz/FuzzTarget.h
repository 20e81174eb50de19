// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// What libFuzzer calls with each input; the name is its own. Returns 0, and ends the process when the input shows a bug.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
