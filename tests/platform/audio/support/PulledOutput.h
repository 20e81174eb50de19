// SPDX-License-Identifier: MIT
// An output whose frames the test requests: no device, no clock.
#pragma once

#include "platform/audio/Output.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace audiotest {

// Controls the outputs that its factory creates; a player runs at most one at a time. May be destroyed before the
// player: they share their state.
class PulledOutput {
 public:
  PulledOutput();

  audio::OutputFactory Factory();
  // Requests `frames` frames of sound (interleaved stereo) and waits for them. Returns fewer when the sound ends, is
  // paused or stopped before that; none when no output runs within ten seconds.
  std::vector<std::int16_t> Pull(std::size_t frames);
  // Requests all frames up to the end of the file.
  std::vector<std::int16_t> PullToEnd() { return Pull(SIZE_MAX); }

  // The frames decoded so far, up to `frames`; does not wait.
  std::vector<std::int16_t> PullNow(std::size_t frames);

  void SetSampleRate(int rate);          // of outputs created from now on, in Hz; 0 = the file's rate
  void SetPending(std::int64_t frames);  // result of PendingFrames()
  // Returns true once PendingFrames() was called `times` more times; false after ten seconds.
  bool AwaitPendingAsked(int times);
  void SetStatus(const std::string& status);
  void Unplug();           // the device is lost
  bool IsRunning() const;  // between an output's Start and Stop
  audio::OutputRequest LastRequest() const;
  int TimesOpened() const;

  struct Tap;

 private:
  std::shared_ptr<Tap> tap_;
};

}  // namespace audiotest
