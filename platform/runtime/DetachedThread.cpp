// SPDX-License-Identifier: MIT
#include "platform/runtime/DetachedThread.h"

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <thread>
#include <utility>

namespace runtime {
namespace {

struct RunningThreads {
  std::mutex mutex;
  std::condition_variable ended;
  int count = 0;
};

// The threads can outlive main, so it is never destroyed.
RunningThreads& Running() {
  static auto* running = new RunningThreads;
  return *running;
}

void CountStarted() {
  const std::lock_guard lock(Running().mutex);
  ++Running().count;
}

void CountEnded() {
  const std::lock_guard lock(Running().mutex);
  --Running().count;
  Running().ended.notify_all();
}

struct EndOfThread {
  ~EndOfThread() { CountEnded(); }
};

}  // namespace

void StartDetached(std::function<void()> work) {
  CountStarted();
  try {
    std::thread([work = std::move(work)] {
      thread_local const EndOfThread end;  // the thread's first such object, so destroyed after those of `work`
      work();
    }).detach();
  } catch (...) {
    CountEnded();
    throw;
  }
}

int AwaitDetached(int exitCode, std::chrono::milliseconds timeout) {
  RunningThreads& running = Running();
  std::unique_lock lock(running.mutex);
  if (running.ended.wait_for(lock, timeout, [&] { return running.count == 0; })) return exitCode;
  std::cout.flush();
  std::fflush(nullptr);
  std::_Exit(exitCode);
}

}  // namespace runtime
