// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Samples that every decoder of layer III puts before the sound.
constexpr int kDecoderDelay = 529;

// Output of the encoder lame, split into frames: MPEG audio layer III, complete frames only.
struct Mp3Frames {
  std::string header;               // the first frame, which has no sound but "Xing" or "Info"
  std::vector<std::string> frames;  // the frames with sound
  int samplesPerFrame = 0;
  int delay = 0;  // samples at the beginning that are not part of the sound, by the header and the format

  // The frames of sound from one up to another, concatenated.
  std::string Sound(std::size_t from, std::size_t to) const;
  std::string Sound() const { return Sound(0, frames.size()); }
  std::int64_t Samples(std::size_t count) const { return static_cast<std::int64_t>(count) * samplesPerFrame; }

  // The header with another number of frames, and without the encoder's own part, which holds the padding.
  std::string HeaderWithFrameCount(std::uint32_t frameCount) const;
  std::string HeaderWithoutPadding() const;
  // A header in the form of another encoder.
  std::string VbriHeader() const;
};

// Ends the program when the bytes are not such output.
Mp3Frames SplitFrames(const std::string& bytes);

}  // namespace bench
