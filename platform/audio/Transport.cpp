// SPDX-License-Identifier: MIT
#include "platform/audio/Transport.h"

#include "platform/audio/Error.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace audio {

void Transport::Load(std::unique_ptr<Decoder> decoder) {
  const std::lock_guard lock(mutex_);
  if (state_ == kPlaying || state_ == kPaused) EndPlayback(0);
  position_ = 0;
  state_ = decoder ? kStopped : kNoFile;
  totalFrames_ = decoder ? decoder->TotalFrames() : 0;
  sampleRate_ = decoder ? decoder->SampleRate() : 0;
  newDecoder_ = std::move(decoder);
  Changed();
}

void Transport::Start() {
  const std::lock_guard lock(mutex_);
  if (state_ == kNoFile) throw Error("Er is geen geluidsbestand geladen.");
  if (state_ == kPlaying) return;
  const std::int64_t from = state_ == kPaused ? HeardFrame() : position_;
  BeginGeneration(from >= totalFrames_ ? 0 : from);
  state_ = kPlaying;
  playout_.SetHeld(false);
  listener_({PlayerEvent::Kind::Started, {}});
}

void Transport::Stop() {
  const std::lock_guard lock(mutex_);
  if (state_ == kPlaying || state_ == kPaused) EndPlayback(HeardFrame());
}

void Transport::Pause() {
  const std::lock_guard lock(mutex_);
  if (state_ != kPlaying) return;
  heard_ = HeardFrame();
  state_ = kPaused;
  playout_.SetHeld(true);
}

void Transport::Resume() {
  const std::lock_guard lock(mutex_);
  if (state_ != kPaused) return;
  heard_ = HeardFrame();
  if (heard_ >= totalFrames_) return EndPlayback(totalFrames_);
  state_ = kPlaying;
  playout_.SetHeld(false);
}

void Transport::SetPosition(std::int64_t frame) {
  const std::lock_guard lock(mutex_);
  const std::int64_t target = std::clamp<std::int64_t>(frame, 0, totalFrames_);
  if (state_ == kPlaying && target == totalFrames_) return EndPlayback(target);
  if (state_ == kPlaying || state_ == kPaused) {
    BeginGeneration(target);
  } else {
    position_ = target;
  }
}

std::int64_t Transport::Position() const {
  const std::lock_guard lock(mutex_);
  return state_ == kPlaying || state_ == kPaused ? HeardFrame() : position_;
}

// Frames delivered to the device in this generation, less those not heard yet. Both numbers are read again if the
// device took more frames in between, so that they match.
std::int64_t Transport::HeardFrame() const {
  if (!output_) return heard_;
  Playout::Mark mark = playout_.Delivered();
  std::int64_t pending = output_->PendingFrames();
  for (Playout::Mark again = playout_.Delivered(); again.frames != mark.frames; again = playout_.Delivered()) {
    mark = again;
    pending = output_->PendingFrames();
  }
  if (mark.generation != generation_) return heard_;
  const double frames = static_cast<double>(mark.frames - pending) * sampleRate_ / output_->SampleRate();
  heard_ = std::clamp(position_ + static_cast<std::int64_t>(frames), heard_, std::max(heard_, totalFrames_));
  return heard_;
}

void Transport::BeginGeneration(std::int64_t frame) {
  position_ = heard_ = frame;
  playout_.SetGeneration(++generation_);
  Changed();
}

void Transport::EndPlayback(std::int64_t position) {
  playout_.SetHeld(true);
  BeginGeneration(position);
  state_ = kStopped;
  listener_({PlayerEvent::Kind::Stopped, {}});
}

void Transport::Changed() {
  changed_ = true;
  wake_.notify_one();
}

Transport::Order Transport::Await(std::chrono::milliseconds wait) {
  std::unique_lock lock(mutex_);
  const auto pending = [this] { return changed_; };
  if (wait.count() < 0) {
    wake_.wait(lock, pending);
  } else {
    wake_.wait_for(lock, wait, pending);
  }
  changed_ = false;
  const bool running = state_ == kPlaying || state_ == kPaused;
  return {quit_, running, generation_, position_, settings_, std::exchange(newDecoder_, std::nullopt)};
}

void Transport::AttachOutput(std::shared_ptr<Output> output) {
  const std::lock_guard lock(mutex_);
  if (state_ == kPlaying || state_ == kPaused) HeardFrame();  // stores the position in heard_
  output_ = std::move(output);
  const std::string status = output_ ? output_->Status() : std::string();
  if (!output_ || status == status_) return;
  status_ = status;
  listener_({PlayerEvent::Kind::Status, status_});
}

void Transport::ReachEnd(std::uint16_t generation) {
  const std::lock_guard lock(mutex_);
  if (generation == generation_ && state_ == kPlaying) EndPlayback(totalFrames_);
}

void Transport::Fail(const std::string& text) {
  const std::lock_guard lock(mutex_);
  if (state_ != kPlaying && state_ != kPaused) return;
  listener_({PlayerEvent::Kind::Failed, text});
  EndPlayback(HeardFrame());
}

std::int64_t Transport::TotalFrames() const {
  const std::lock_guard lock(mutex_);
  return totalFrames_;
}

int Transport::SampleRate() const {
  const std::lock_guard lock(mutex_);
  return sampleRate_;
}

PlayerState Transport::State() const {
  const std::lock_guard lock(mutex_);
  return state_;
}

void Transport::SetSettings(const OutputSettings& settings) {
  const std::lock_guard lock(mutex_);
  settings_ = settings;
}

OutputSettings Transport::Settings() const {
  const std::lock_guard lock(mutex_);
  return settings_;
}

std::string Transport::Status() const {
  const std::lock_guard lock(mutex_);
  return status_;
}

void Transport::Quit() {
  const std::lock_guard lock(mutex_);
  quit_ = true;
  Changed();
}

}  // namespace audio
