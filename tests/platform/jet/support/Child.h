// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <functional>

namespace jet::test {

// A child process that writes a number to a pipe for each acknowledged change. The destructor kills it.
class Child {
 public:
  using Acknowledge = std::function<void(std::int64_t)>;

  // `work` runs in the child; an exception there is printed to stderr and gives exit code 1.
  explicit Child(const std::function<void(const Acknowledge&)>& work);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  // Reads the next number; false when the child has ended and all were read.
  bool Next(std::int64_t& number);
  // The readable end of the pipe, for poll().
  int Handle() const { return pipe_[0]; }

  // Numbers written before can still be read.
  void Kill();
  // Waits for its end and returns the exit code.
  int Wait();

 private:
  std::array<int, 2> pipe_{};
  ::pid_t process_ = 0;
};

}  // namespace jet::test
