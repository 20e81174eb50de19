// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace runtime {

// Runs `work` in a thread that may outlive the caller: a file server that does not respond can keep it for minutes.
// `work` must own its data and must not throw.
void StartDetached(std::function<void()> work);

// For the end of main: waits until all these threads have ended and returns `exitCode`. If one has not ended after
// `timeout`, ends the process at once with that code: static objects that the thread uses are not destroyed.
int AwaitDetached(int exitCode, std::chrono::milliseconds timeout = std::chrono::seconds(1));

}  // namespace runtime
