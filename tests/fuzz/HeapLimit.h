// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace fuzz {

// Watches the heap while it lives: the program aborts as soon as more than `bytes` are in use beyond what was in use
// before. Only under clang's address sanitizer; elsewhere it does nothing.
class HeapLimit {
 public:
  explicit HeapLimit(std::size_t bytes);
  ~HeapLimit();  // NOLINT(performance-trivially-destructible): only without the sanitizer it does nothing
  HeapLimit(const HeapLimit&) = delete;
  HeapLimit& operator=(const HeapLimit&) = delete;
};

}  // namespace fuzz
