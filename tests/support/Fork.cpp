// SPDX-License-Identifier: MIT
#include "tests/support/Fork.h"

#include "tests/support/ThreadCount.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;

namespace testing_support {

pid_t Fork() {
  constexpr int kMostLooks = 60000;
  for (int look = 0; look < kMostLooks; ++look) {
    if (ThreadCount() == 1) return ::fork();
    std::this_thread::sleep_for(1ms);
  }
  throw std::runtime_error("fork: another thread of this process does not end");
}

int WaitFor(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) != child) {
    if (errno != EINTR) throw std::runtime_error("waitpid: there is no such child process");
  }
  return status;
}

}  // namespace testing_support
