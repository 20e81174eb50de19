// SPDX-License-Identifier: MIT
#include "tests/fuzz/CpuLimit.h"

#ifdef SPOTROOSTER_LIBFUZZER

#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <string_view>

namespace fuzz {

namespace {

constexpr time_t kSeconds = 2;

void OnTooLong(int) {
  constexpr std::string_view kMessage = "more than two seconds of processor time for one input\n";
  [[maybe_unused]] const auto written = write(STDERR_FILENO, kMessage.data(), kMessage.size());
  std::abort();
}

void SetTimer(time_t seconds) {
  const itimerval timer{.it_interval = {}, .it_value = {.tv_sec = seconds, .tv_usec = 0}};
  if (setitimer(ITIMER_PROF, &timer, nullptr) != 0) std::abort();
}

}  // namespace

CpuLimit::CpuLimit() {
  static const auto previous = std::signal(SIGPROF, OnTooLong);
  if (previous == SIG_ERR) std::abort();
  SetTimer(kSeconds);
}

CpuLimit::~CpuLimit() {
  SetTimer(0);
}

}  // namespace fuzz

#else

namespace fuzz {

CpuLimit::CpuLimit() = default;
CpuLimit::~CpuLimit() = default;

}  // namespace fuzz

#endif
