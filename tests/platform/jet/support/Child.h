// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <functional>

namespace jet::test {

// A child process that writes a number to a pipe for each change that was acknowledged to it. It is killed with this.
class Child {
 public:
  using Acknowledge = std::function<void(std::int64_t)>;

  // `work` runs in the child; an exception there is told on stderr and gives the exit code 1.
  explicit Child(const std::function<void(const Acknowledge&)>& work);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // The next number; false when the child has ended and all was read.
  bool Next(std::int64_t& number);
  // The readable end of the pipe, for poll().
  int Handle() const { return pipe_[0]; }

  // What was written before can still be read.
  void Kill();
  // Its exit code.
  int Wait();

 private:
  std::array<int, 2> pipe_{};
  ::pid_t process_ = 0;
};

}  // namespace jet::test
