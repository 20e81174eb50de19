// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/FailingMemory.h"

#include <cstdlib>
#include <new>

namespace {

thread_local int allocationsLeft = -1;  // before the one that fails; negative: none fails
thread_local bool allocationFailed = false;

}  // namespace

// The forms for arrays call these, except with the address sanitizer, which has its own of every form that is missing
// here: memory of one must not be freed by the other. Inlined, a compiler would see new freed by free().
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (allocationsLeft >= 0 && allocationsLeft-- == 0) {
    allocationFailed = true;
    return nullptr;
  }
  return std::malloc(size == 0 ? 1 : size);
}
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* block = operator new(size, std::nothrow)) return block;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
  std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}

namespace jet::test {

FailingMemory::FailingMemory(int allocation) {
  allocationFailed = false;
  allocationsLeft = allocation;
}

FailingMemory::~FailingMemory() {
  allocationsLeft = -1;
}

// Not static: valid during the lifetime only.
bool FailingMemory::HasFailed() const {
  return allocationFailed;
}

}  // namespace jet::test
