// SPDX-License-Identifier: MIT
// Interface between the player and a sound device.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace audio {

// Supplies the frames to play: 16-bit, stereo, interleaved. Fill is called by one thread at a time and must neither
// block nor allocate.
class FrameSource {
 public:
  enum class Supply {
    Frames,   // at least one frame; the rest of `out` is silence
    Starved,  // no frame is decoded yet; more will come
    Held,     // paused
    Ended,    // all frames have been delivered
  };
  virtual ~FrameSource() = default;
  // Writes exactly `frames` frames to `out`, filled up with silence. Sets `delivered` to the number of sound frames.
  virtual Supply Fill(std::int16_t* out, std::size_t frames, std::size_t& delivered) noexcept = 0;
};

// Parameters for opening a device.
struct OutputRequest {
  int device = -1;     // n-th output device of the default host API, from 0; -1 = its default
  int sampleRate = 0;  // Hz, of the file
};

// One open device. Created, started, stopped and destroyed by the player's decoding thread.
class Output {
 public:
  virtual ~Output() = default;
  virtual int SampleRate() const = 0;  // Hz; differs from the request when the device rejected that
  // Between Start and Stop the output calls source.Fill on a thread of its own. Stop discards frames that were not
  // heard yet. Start throws Error.
  virtual void Start(FrameSource& source) = 0;
  virtual void Stop() noexcept = 0;
  // Frames passed to the device (silence included) that are not heard yet. Any thread.
  virtual std::int64_t PendingFrames() const noexcept = 0;
  virtual bool Lost() const noexcept { return false; }  // the device was removed or stopped responding. Any thread
  virtual std::string Status() const { return {}; }     // why it is silent: a Dutch sentence, or empty
};

// Opens an output. Does not fail because of a device: it returns a SilentOutput then.
using OutputFactory = std::function<std::unique_ptr<Output>(const OutputRequest&)>;

}  // namespace audio
