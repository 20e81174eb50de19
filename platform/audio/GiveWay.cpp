#include "platform/audio/GiveWay.h"

#include <sys/resource.h>
#include <unistd.h>

namespace audio {

// Linux keeps this number for each thread, and a new thread gets that of the one that starts it; elsewhere it is the
// whole program's.
void GiveWay() {
#ifdef __linux__
  constexpr int kBehindOthers = 10;
  setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kBehindOthers);
#endif
}

}  // namespace audio
