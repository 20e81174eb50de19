// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace dao {

// How the user-interface thread waits for a connection: called with a function that waits a bounded time and returns
// whether the connection is ready. It must call that function until it returns true. Other threads wait without it.
// The default calls it in a loop; the program repaints its windows in between.
using ServerWait = std::function<void(const std::function<bool(std::chrono::milliseconds)>& isReady)>;
void SetServerWait(ServerWait wait);

}  // namespace dao
