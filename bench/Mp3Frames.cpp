// SPDX-License-Identifier: MIT
#include "bench/Mp3Frames.h"

#include "bench/Plain.h"

#include <algorithm>
#include <array>

namespace bench {
namespace {

// After "Xing" or "Info": flags, number of frames, of bytes, a table of 100 bytes, the quality, four bytes each except
// the table; then the encoder's part, whose bytes 21 to 23 hold delay and padding, twelve bits each.
constexpr std::size_t kFrameCount = 8;
constexpr std::size_t kEncoderPart = 120;
constexpr std::size_t kDelay = kEncoderPart + 21;
constexpr std::size_t kVbriPlace = 36;  // from the frame's first byte

std::uint8_t ByteAt(const std::string& bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes.at(at));
}

void PutNumber(std::string& bytes, std::size_t at, std::uint32_t number, std::size_t width) {
  for (std::size_t i = 0; i < width; ++i)
    bytes.at(at + i) = static_cast<char>(number >> (8 * (width - 1 - i)));
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i)
    number = number << 8 | ByteAt(bytes, at + i);
  return number;
}

// The four bytes at the start of a layer III frame.
struct FrameStart {
  explicit FrameStart(const std::string& bytes, std::size_t at)
      : version(ByteAt(bytes, at + 1) >> 3 & 3),
        rateIndex(ByteAt(bytes, at + 2) >> 4),
        frequencyIndex(ByteAt(bytes, at + 2) >> 2 & 3),
        padding(ByteAt(bytes, at + 2) >> 1 & 1) {
    Require(ByteAt(bytes, at) == 0xFF && (ByteAt(bytes, at + 1) & 0xE6) == 0xE2, "a frame of MPEG layer III");
  }

  bool IsMpeg1() const { return version == 3; }
  bool IsFree() const { return rateIndex == 0; }
  int SamplesPerFrame() const { return IsMpeg1() ? 1152 : 576; }
  std::size_t Bytes() const {
    static constexpr std::array<int, 15> kMpeg1{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
    static constexpr std::array<int, 15> kMpeg2{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
    static constexpr std::array<int, 3> kFrequencies{44100, 48000, 32000};
    const auto rate = static_cast<std::size_t>(rateIndex);
    const int kilobits = (IsMpeg1() ? kMpeg1 : kMpeg2).at(rate);
    const int divisor = IsMpeg1() ? 1 : version == 2 ? 2 : 4;
    const int frequency = kFrequencies.at(static_cast<std::size_t>(frequencyIndex)) / divisor;
    const int bytes = SamplesPerFrame() / 8 * kilobits * 1000 / frequency + padding;
    return static_cast<std::size_t>(bytes);
  }

  int version;  // 3 MPEG-1, 2 MPEG-2, 0 MPEG-2.5
  int rateIndex;
  int frequencyIndex;
  int padding;
};

// Free format, without a length in the header: up to the next frame that begins the same way.
std::size_t FreeFrameBytes(const std::string& bytes, std::size_t at) {
  for (std::size_t next = at + 400; next + 4 <= bytes.size(); ++next) {
    if (bytes.compare(next, 2, bytes, at, 2) == 0 && (ByteAt(bytes, next + 2) & 0xFC) == (ByteAt(bytes, at + 2) & 0xFC))
      return next - at;
  }
  return bytes.size() - at;
}

std::size_t TagPlace(const std::string& header) {
  return std::min(header.find("Xing"), header.find("Info"));
}

}  // namespace

std::string Mp3Frames::Sound(std::size_t from, std::size_t to) const {
  std::string bytes;
  for (std::size_t frame = from; frame < to; ++frame)
    bytes += frames[frame];
  return bytes;
}

std::string Mp3Frames::HeaderWithFrameCount(std::uint32_t frameCount) const {
  std::string other = header;
  PutNumber(other, TagPlace(header) + kFrameCount, frameCount, 4);
  return other;
}

std::string Mp3Frames::HeaderWithoutPadding() const {
  const std::size_t rest = std::min(header.size(), TagPlace(header) + kEncoderPart);
  return header.substr(0, rest) + std::string(header.size() - rest, '\0');
}

std::string Mp3Frames::VbriHeader() const {
  std::string vbri = frames.front().substr(0, 4) + std::string(frames.front().size() - 4, '\0');
  Require(vbri.size() >= kVbriPlace + 28, "room for the header");
  vbri.replace(kVbriPlace, 4, "VBRI");
  const std::size_t at = kVbriPlace + 4;
  PutNumber(vbri, at, 1, 2);       // version
  PutNumber(vbri, at + 4, 75, 2);  // quality; the delay before it stays 0
  PutNumber(vbri, at + 6, static_cast<std::uint32_t>(Sound().size() + vbri.size()), 4);
  PutNumber(vbri, at + 10, static_cast<std::uint32_t>(frames.size()), 4);
  PutNumber(vbri, at + 14, 1, 2);  // entries of the table
  PutNumber(vbri, at + 16, 1, 2);  // scale
  PutNumber(vbri, at + 18, 2, 2);  // bytes an entry
  PutNumber(vbri, at + 20, static_cast<std::uint32_t>(frames.size()), 2);
  return vbri;
}

Mp3Frames SplitFrames(const std::string& bytes) {
  Mp3Frames file;
  for (std::size_t at = 0; at < bytes.size();) {
    const FrameStart start(bytes, at);
    const std::size_t size = start.IsFree() ? FreeFrameBytes(bytes, at) : start.Bytes();
    Require(size > 4 && at + size <= bytes.size(), "whole frames only");
    (at == 0 ? file.header : file.frames.emplace_back()) = bytes.substr(at, size);
    file.samplesPerFrame = start.SamplesPerFrame();
    at += size;
  }
  const std::size_t tag = TagPlace(file.header);
  Require(tag != std::string::npos && NumberAt(file.header, tag + kFrameCount) == file.frames.size(),
          "the header tells the number of frames");
  file.delay = (ByteAt(file.header, tag + kDelay) << 4 | ByteAt(file.header, tag + kDelay + 1) >> 4) + kDecoderDelay;
  return file;
}

}  // namespace bench
