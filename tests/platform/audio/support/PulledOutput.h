// SPDX-License-Identifier: MIT
// An output whose frames the test takes by hand: no device, no clock.
#pragma once

#include "platform/audio/Output.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace audiotest {

// Stands behind every output its factory makes; a player has at most one running at a time. Outlives the player or not:
// the outputs keep what they need.
class PulledOutput {
 public:
  PulledOutput();

  audio::OutputFactory Factory();
  // Takes `frames` frames of sound (interleaved stereo), waiting for the player to begin and to decode them. Fewer when
  // the sound ends, is paused or stopped before that. Empty when no output runs within ten seconds.
  std::vector<std::int16_t> Pull(std::size_t frames);
  // Takes everything up to the end of the file.
  std::vector<std::int16_t> PullToEnd() { return Pull(SIZE_MAX); }

  // What there is right now, up to `frames` frames; waits for nothing.
  std::vector<std::int16_t> PullNow(std::size_t frames);

  void SetSampleRate(int rate);          // of outputs made from now on, whatever the file's; 0 = the file's
  void SetPending(std::int64_t frames);  // frames that the "device" holds back
  // True once somebody asked `times` more times what is held back; false when that does not come within ten seconds.
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
