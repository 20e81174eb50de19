// SPDX-License-Identifier: MIT
// Open, check, edit, save: damages a small database according to the input and edits it. See EditDamaged.h for the
// requirements.
#include "tests/fuzz/CpuLimit.h"
#include "tests/fuzz/EditDamaged.h"
#include "tests/fuzz/FuzzTarget.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::CpuLimit cpu;
  jet::fuzz::EditDamaged({data, size});
  return 0;
}
