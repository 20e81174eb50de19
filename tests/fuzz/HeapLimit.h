// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace fuzz {

// During its lifetime the program aborts when the heap grows by more than `bytes`. Only with clang's address sanitizer;
// otherwise no effect.
class HeapLimit {
 public:
  explicit HeapLimit(std::size_t bytes);
  ~HeapLimit();  // NOLINT(performance-trivially-destructible): only without the sanitizer it does nothing
  HeapLimit(const HeapLimit&) = delete;
  HeapLimit& operator=(const HeapLimit&) = delete;
};

}  // namespace fuzz
