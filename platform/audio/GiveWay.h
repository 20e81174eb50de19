// Threads that work behind the user's back.
#pragma once

namespace audio {

// From now on this thread, and those it starts, run when playing and the windows leave them room: about a tenth of what
// the others get. For good: an ordinary program cannot take it back. Where the system has no such thing for one thread,
// nothing changes.
void GiveWay();

}  // namespace audio
