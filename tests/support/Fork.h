// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace testing_support {

// As fork(), but only once this thread is the only one: in the child the others no longer exist, and a lock that one of
// them held (such as a sanitizer's allocator's) would stay locked. Helper threads of runtime::Probe end by themselves
// soon after their result. Throws std::runtime_error when another thread does not end.
pid_t Fork();

// Waits until the child process has ended and returns its status. The signal of another child that ends, as those that
// QProcess starts, interrupts waitpid itself. Throws std::runtime_error when there is no such child.
int WaitFor(pid_t child);

}  // namespace testing_support
