// SPDX-License-Identifier: MIT
// A custom mutator for libFuzzer: mostly changes fields of pages, sometimes any byte.
#include "tests/fuzz/PageMutator.h"

#include <algorithm>
#include <cstdint>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
  constexpr std::size_t kPage = 4096;
  if (size < kPage || seed % 64 == 0) return LLVMFuzzerMutate(data, size, maxSize);
  if (seed % 8 == 1) {  // libFuzzer's own mutations (it knows compared values), within one page
    std::uint8_t* page = data + kPage * (seed / 8 % (size / kPage));
    LLVMFuzzerMutate(page, kPage, kPage);
  } else {
    fuzz::PageMutator(seed).Mutate({data, size});
  }
  if (seed % 64 == 2) return size - std::min(size, seed / 64 % kPage);  // truncated
  return size;
}
