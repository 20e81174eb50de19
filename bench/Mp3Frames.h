// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

// Samples that every decoder of layer III puts before the sound.
constexpr int kDecoderDelay = 529;

// What the encoder lame wrote, taken apart: MPEG audio layer III, nothing but whole frames.
struct Mp3Frames {
  std::string header;               // the first frame, which holds no sound but "Xing" or "Info"
  std::vector<std::string> frames;  // those that hold sound
  int samplesPerFrame = 0;
  int delay = 0;  // samples at the beginning that are none of the sound, as the header and the format tell

  // All frames of sound, from one up to another, behind each other.
  std::string Sound(std::size_t from, std::size_t to) const;
  std::string Sound() const { return Sound(0, frames.size()); }
  std::int64_t Samples(std::size_t count) const { return static_cast<std::int64_t>(count) * samplesPerFrame; }

  // The header with another number of frames, and without the encoder's own part, which tells the padding.
  std::string HeaderTelling(std::uint32_t frameCount) const;
  std::string HeaderWithoutPadding() const;
  // A header as another encoder writes it; a frame like the first one of sound.
  std::string VbriHeader() const;
};

// Ends the program when the bytes are something else.
Mp3Frames TakeApart(const std::string& bytes);

}  // namespace bench
