// SPDX-License-Identifier: MIT
#include "tests/platform/audio/support/PulledOutput.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace audiotest {

using audio::FrameSource;
using audio::OutputRequest;

struct PulledOutput::Tap {
  mutable std::mutex mutex;
  std::condition_variable running;
  FrameSource* source = nullptr;
  int sampleRate = 0;
  std::int64_t pending = 0;
  int pendingAsked = 0;
  std::condition_variable asked;
  bool lost = false;
  std::string status;
  OutputRequest request;
  int timesOpened = 0;

  template <typename Field>
  Field Locked(Field Tap::*field) const {
    const std::lock_guard lock(mutex);
    return this->*field;
  }
};

namespace {

class TappedOutput : public audio::Output {
 public:
  TappedOutput(std::shared_ptr<PulledOutput::Tap> tap, int sampleRate)
      : tap_(std::move(tap)), sampleRate_(sampleRate) {}
  ~TappedOutput() override { TappedOutput::Stop(); }

  int SampleRate() const override { return sampleRate_; }

  void Start(FrameSource& source) override {
    const std::lock_guard lock(tap_->mutex);
    tap_->source = &source;
    tap_->running.notify_all();
  }

  void Stop() noexcept override {
    const std::lock_guard lock(tap_->mutex);
    tap_->source = nullptr;
  }

  std::int64_t PendingFrames() const noexcept override {
    const std::lock_guard lock(tap_->mutex);
    ++tap_->pendingAsked;
    tap_->asked.notify_all();
    return tap_->pending;
  }
  bool Lost() const noexcept override { return tap_->Locked(&PulledOutput::Tap::lost); }
  std::string Status() const override { return tap_->Locked(&PulledOutput::Tap::status); }

 private:
  std::shared_ptr<PulledOutput::Tap> tap_;
  int sampleRate_;
};

}  // namespace

PulledOutput::PulledOutput() : tap_(std::make_shared<Tap>()) {}

audio::OutputFactory PulledOutput::Factory() {
  return [tap = tap_](const OutputRequest& request) -> std::unique_ptr<audio::Output> {
    const std::lock_guard lock(tap->mutex);
    tap->request = request;
    tap->lost = false;
    ++tap->timesOpened;
    return std::make_unique<TappedOutput>(tap, tap->sampleRate > 0 ? tap->sampleRate : request.sampleRate);
  };
}

std::vector<std::int16_t> PulledOutput::Pull(std::size_t frames) {
  std::vector<std::int16_t> taken;
  std::vector<std::int16_t> step(std::size_t{512} * 2);
  std::unique_lock lock(tap_->mutex);
  const auto runs = [this] { return tap_->source != nullptr; };
  while (taken.size() / 2 < frames) {
    // The output of the previous file may still exist; only one that plays something counts.
    if (!runs() && (!taken.empty() || !tap_->running.wait_for(lock, std::chrono::seconds(10), runs))) break;
    const std::size_t count = std::min<std::size_t>(512, frames - taken.size() / 2);
    std::size_t delivered = 0;
    const FrameSource::Supply supply = tap_->source->Fill(step.data(), count, delivered);
    taken.insert(taken.end(), step.begin(), step.begin() + static_cast<std::ptrdiff_t>(delivered * 2));
    if (supply == FrameSource::Supply::Held || supply == FrameSource::Supply::Ended) break;
    if (supply == FrameSource::Supply::Frames) continue;
    lock.unlock();
    std::this_thread::sleep_for(std::chrono::microseconds(200));
    lock.lock();
  }
  return taken;
}

std::vector<std::int16_t> PulledOutput::PullNow(std::size_t frames) {
  std::vector<std::int16_t> taken(frames * 2);
  const std::lock_guard lock(tap_->mutex);
  std::size_t delivered = 0;
  if (tap_->source != nullptr) tap_->source->Fill(taken.data(), frames, delivered);
  taken.resize(delivered * 2);
  return taken;
}

void PulledOutput::SetSampleRate(int rate) {
  const std::lock_guard lock(tap_->mutex);
  tap_->sampleRate = rate;
}

void PulledOutput::SetPending(std::int64_t frames) {
  const std::lock_guard lock(tap_->mutex);
  tap_->pending = frames;
}

bool PulledOutput::AwaitPendingAsked(int times) {
  std::unique_lock lock(tap_->mutex);
  const int target = tap_->pendingAsked + times;
  return tap_->asked.wait_for(lock, std::chrono::seconds(10), [&] { return tap_->pendingAsked >= target; });
}

void PulledOutput::SetStatus(const std::string& status) {
  const std::lock_guard lock(tap_->mutex);
  tap_->status = status;
}

void PulledOutput::Unplug() {
  const std::lock_guard lock(tap_->mutex);
  tap_->lost = true;
}

bool PulledOutput::IsRunning() const {
  const std::lock_guard lock(tap_->mutex);
  return tap_->source != nullptr;
}

OutputRequest PulledOutput::LastRequest() const {
  return tap_->Locked(&Tap::request);
}
int PulledOutput::TimesOpened() const {
  return tap_->Locked(&Tap::timesOpened);
}

}  // namespace audiotest
