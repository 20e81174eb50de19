// SPDX-License-Identifier: MIT
#include "platform/audio/SilentOutput.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

namespace audio {

SilentOutput::SilentOutput(int sampleRate, std::string status) : sampleRate_(sampleRate), status_(std::move(status)) {}

SilentOutput::~SilentOutput() {
  Stop();
}

void SilentOutput::Start(FrameSource& source) {
  stopping_ = false;
  thread_ = std::thread([this, &source] { Run(source); });
}

void SilentOutput::Stop() noexcept {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  wake_.notify_one();
  thread_.join();
}

// Frames are counted from the start time, so that late wake-ups do not accumulate.
void SilentOutput::Run(FrameSource& source) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kStep{5};
  const std::int64_t step = sampleRate_ / 200 + 1;
  std::vector<std::int16_t> heard(static_cast<std::size_t>(step) * 2);
  const auto begin = Clock::now();
  std::int64_t taken = 0;
  std::unique_lock lock(mutex_);
  while (!wake_.wait_until(lock, begin + std::chrono::microseconds(taken * 1'000'000 / sampleRate_) + kStep,
                           [this] { return stopping_; })) {
    const std::chrono::duration<double> elapsed = Clock::now() - begin;
    const auto due = static_cast<std::int64_t>(elapsed.count() * sampleRate_);
    while (taken < due) {
      const std::int64_t count = std::min(step, due - taken);
      std::size_t delivered = 0;
      source.Fill(heard.data(), static_cast<std::size_t>(count), delivered);
      taken += count;
    }
  }
}

}  // namespace audio
