// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

// libFuzzer calls it with each input, by this name. Returns 0; an input that shows a bug ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
