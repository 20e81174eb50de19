// SPDX-License-Identifier: MIT
#include "tests/support/Hindrance.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>

namespace testing_support {

FullDisk::FullDisk(rlim_t bytes) {
  std::signal(SIGXFSZ, SIG_IGN);
  getrlimit(RLIMIT_FSIZE, &before_);
  const rlimit limit{bytes, before_.rlim_max};
  setrlimit(RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk() {
  setrlimit(RLIMIT_FSIZE, &before_);
}

void BecomeNobody() {
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 && setuid(kNobody) != 0) std::abort();
}

}  // namespace testing_support
