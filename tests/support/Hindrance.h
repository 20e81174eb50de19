// SPDX-License-Identifier: MIT
#pragma once

#include <sys/resource.h>

namespace testing_support {

// A full disk: while it exists, no file of this process can grow past that many bytes.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit before_{};
};

// Gives up root for good, so that file permissions apply: for the child process of a death test.
void BecomeNobody();

}  // namespace testing_support
