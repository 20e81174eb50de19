// SPDX-License-Identifier: MIT
#include "tests/fuzz/HeapLimit.h"

#include <cstdio>
#include <cstdlib>

// The hooks come with clang; gcc has the sanitizer without their header.
#if defined(__SANITIZE_ADDRESS__) && __has_include(<sanitizer/allocator_interface.h>)
#define SPOTROOSTER_HEAP_HOOKS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SPOTROOSTER_HEAP_HOOKS 1
#endif
#endif

#ifdef SPOTROOSTER_HEAP_HOOKS

#include <sanitizer/allocator_interface.h>

namespace fuzz {

namespace {

// One fuzz target runs in one thread.
bool watching = false;
std::ptrdiff_t inUse = 0;
std::ptrdiff_t limit = 0;

void OnAllocated(const volatile void*, std::size_t size) {
  if (!watching) return;
  inUse += static_cast<std::ptrdiff_t>(size);
  if (inUse <= limit) return;
  watching = false;
  std::fprintf(stderr, "more than %td bytes of heap in use for one input\n", limit);
  std::abort();
}

void OnFreed(const volatile void* block) {
  if (watching && block != nullptr)
    inUse -= static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(const_cast<const void*>(block)));
}

}  // namespace

HeapLimit::HeapLimit(std::size_t bytes) {
  static const int installed = __sanitizer_install_malloc_and_free_hooks(OnAllocated, OnFreed);
  if (installed == 0) std::abort();
  inUse = 0;
  limit = static_cast<std::ptrdiff_t>(bytes);
  watching = true;
}

HeapLimit::~HeapLimit() {
  watching = false;
}

}  // namespace fuzz

#else

namespace fuzz {

HeapLimit::HeapLimit(std::size_t) {}
HeapLimit::~HeapLimit() = default;

}  // namespace fuzz

#endif
