// SPDX-License-Identifier: MIT
// Threads that work behind the user's back.
#pragma once

namespace audio {

// From now on this thread, and those it starts, come after playing and the windows: where these need a whole core, they
// get a third as much. For good: an ordinary program cannot take it back. Where the system has no such thing for one
// thread, nothing changes.
void LowerThreadPriority();

}  // namespace audio
