// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace dao {

// How the user-interface thread waits for a connection. Gets a function that waits for the given time and returns
// whether the connection is ready, and must call it until it returns true. The default only does that; the program also
// repaints its windows in between. Other threads do not use it.
using ServerWait = std::function<void(const std::function<bool(std::chrono::milliseconds)>& isReady)>;
void SetServerWait(ServerWait wait);

}  // namespace dao
