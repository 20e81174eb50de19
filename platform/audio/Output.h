// SPDX-License-Identifier: MIT
// Where sound goes: one small interface between the player and a device.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace audio {

// Hands out the frames to be heard: 16-bit, stereo, interleaved. Fill is called by one thread at a time, neither waits
// nor allocates.
class FrameSource {
 public:
  enum class Supply {
    Frames,   // all or some frames were there; the rest of `out` is silence
    Starved,  // none is there yet, more will come
    Held,     // paused
    Ended,    // everything was handed out
  };
  virtual ~FrameSource() = default;
  // Writes exactly `frames` frames to `out`, silence where there is no sound. `delivered` tells how many are sound.
  virtual Supply Fill(std::int16_t* out, std::size_t frames, std::size_t& delivered) noexcept = 0;
};

// What the player asks of a device.
struct OutputRequest {
  int device = -1;     // n-th output device of the default host API, from 0; -1 = its default
  int sampleRate = 0;  // Hz, of the file
};

// One opened device. Made, started and stopped by the player's own thread; destroyed there as well.
class Output {
 public:
  virtual ~Output() = default;
  virtual int SampleRate() const = 0;  // Hz at which it plays; differs from the request when the device refused that
  // From Start to Stop the output asks `source` for frames, on a thread of its own; after Stop it no longer does.
  // Sound that was handed over but not yet heard is dropped by Stop. Start throws Error.
  virtual void Start(FrameSource& source) = 0;
  virtual void Stop() noexcept = 0;
  // Frames handed over (silence included) that are not yet heard. Any thread.
  virtual std::int64_t PendingFrames() const noexcept = 0;
  virtual bool Lost() const noexcept { return false; }  // the device is gone. Any thread
  virtual std::string Status() const { return {}; }     // why it is silent: a Dutch sentence, or empty
};

// Opens an output. Never fails because of a device: a SilentOutput takes its place.
using OutputFactory = std::function<std::unique_ptr<Output>(const OutputRequest&)>;

}  // namespace audio
