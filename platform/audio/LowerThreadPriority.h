// SPDX-License-Identifier: MIT
// Lower scheduling priority for background threads.
#pragma once

namespace audio {

// Gives the calling thread and the threads it starts later a lower priority than playback and windows: if both need a
// core, the background thread gets about a third of the other's time. Cannot be undone without privileges. Linux only;
// no effect elsewhere.
void LowerThreadPriority();

}  // namespace audio
