// SPDX-License-Identifier: MIT
#include "platform/audio/LowerThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace audio {

// On Linux the nice value belongs to a thread and is inherited by the threads it starts; elsewhere it belongs to the
// process. The process ID refers to the main thread.
void LowerThreadPriority() {
#ifdef __linux__
  constexpr int kNiceStep = 5;
  const int mainNice = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), mainNice + kNiceStep);
#endif
}

}  // namespace audio
