// SPDX-License-Identifier: MIT
#pragma once

namespace jet::test {

// During its lifetime the allocation with this number (from 0) in this thread throws std::bad_alloc; all others
// succeed.
class FailingMemory {
 public:
  explicit FailingMemory(int allocation);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  // Whether the allocation was reached.
  bool HasFailed() const;
};

}  // namespace jet::test
