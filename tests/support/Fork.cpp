// SPDX-License-Identifier: MIT
#include "tests/support/Fork.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <thread>

using namespace std::chrono_literals;

namespace testing_support {
namespace {

auto ThreadCount() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/task"), std::filesystem::directory_iterator());
}

}  // namespace

pid_t Fork() {
  constexpr int kLooks = 60000;
  for (int look = 0; look < kLooks; ++look) {
    if (ThreadCount() == 1) return ::fork();
    std::this_thread::sleep_for(1ms);
  }
  throw std::runtime_error("fork: another thread of this process does not end");
}

}  // namespace testing_support
