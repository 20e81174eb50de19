// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace testing_support {

// As fork(), but only once this thread is the only one: in the child the others no longer exist, and a lock that one of
// them held (such as a sanitizer's allocator's) would stay locked. Helper threads of runtime::Probe end by themselves
// soon after their result. Throws std::runtime_error when another thread does not end.
pid_t Fork();

}  // namespace testing_support
