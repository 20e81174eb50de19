// SPDX-License-Identifier: MIT
#include "platform/audio/LowerThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace audio {

// Linux keeps this number for each thread, and a new thread gets that of the one that starts it; elsewhere it is the
// whole program's. By the process's number it gives the main thread's.
void LowerThreadPriority() {
#ifdef __linux__
  constexpr int kBehind = 5;
  const int others = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), others + kBehind);
#endif
}

}  // namespace audio
