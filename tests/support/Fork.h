// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace testing_support {

// As fork(), but begun only when this thread is the only one left: in the child the others are gone, and a lock that
// one of them held (a sanitizer's allocator has some) would stay locked for ever. Helper threads of runtime::Probe end
// by themselves a moment after they answered. Throws std::runtime_error when another thread does not end.
pid_t Fork();

}  // namespace testing_support
