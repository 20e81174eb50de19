// SPDX-License-Identifier: MIT
#include "tests/platform/jet/support/Child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace jet::test {

Child::Child(const std::function<void(const Acknowledge&)>& work) {
  if (::pipe(pipe_.data()) != 0) throw std::runtime_error("pipe");
  process_ = ::fork();
  if (process_ != 0) {
    ::close(pipe_[1]);
    return;
  }
  try {
    work([this](std::int64_t number) {
      if (::write(pipe_[1], &number, sizeof number) != sizeof number) ::_exit(2);
    });
  } catch (const std::exception& error) {
    ::fputs(error.what(), stderr);
    ::_exit(1);
  }
  ::_exit(0);
}

Child::~Child() {
  if (process_ > 0) Kill();
  ::close(pipe_[0]);
}

bool Child::Next(std::int64_t& number) {
  return ::read(pipe_[0], &number, sizeof number) == sizeof number;
}

void Child::Kill() {
  ::kill(process_, SIGKILL);
  Wait();
}

int Child::Wait() {
  int status = 0;
  ::waitpid(process_, &status, 0);
  process_ = 0;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace jet::test
