// SPDX-License-Identifier: MIT
// Records the events of a PlayerCore, in order.
#pragma once

#include "platform/audio/Transport.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace audiotest {

class EventLog {
 public:
  using Kind = audio::PlayerEvent::Kind;

  audio::Transport::Listener Listener() {
    return [this](const audio::PlayerEvent& event) {
      const std::lock_guard lock(mutex_);
      events_.push_back(event);
      arrived_.notify_all();
    };
  }

  // Returns true once `kind` was reported `times` times; false after ten seconds.
  bool Await(Kind kind, int times = 1) {
    std::unique_lock lock(mutex_);
    return arrived_.wait_for(lock, std::chrono::seconds(10), [&] { return CountLocked(kind) >= times; });
  }

  int Count(Kind kind) {
    const std::lock_guard lock(mutex_);
    return CountLocked(kind);
  }

  std::vector<audio::PlayerEvent> All() {
    const std::lock_guard lock(mutex_);
    return events_;
  }

 private:
  int CountLocked(Kind kind) const {
    int count = 0;
    for (const auto& event : events_)
      count += event.kind == kind ? 1 : 0;
    return count;
  }

  std::mutex mutex_;
  std::condition_variable arrived_;
  std::vector<audio::PlayerEvent> events_;
};

}  // namespace audiotest
