// SPDX-License-Identifier: MIT
// Real sound files for tests, made on the spot, and what a straight decode of them holds.
#pragma once

#include "platform/audio/Peaks.h"
#include "platform/audio/Synth.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace audiotest {

// Progress that never stops the reading.
inline const audio::PeakProgress kToTheEnd = [](const audio::Peaks&, std::size_t) { return true; };

// A folder that is removed with all it holds.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  std::string File(const std::string& name) const { return (path_ / name).string(); }
  std::string Path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

// A sound of exactly that length, as its extension says (.wav, .flac, .mp3). Returns the path.
std::string MakeTone(const std::string& path, double seconds, int sampleRate = 44100, int channels = 2);
// An MP3 of variable bit rate with the encoder's length header.
std::string MakeVariableMp3(const std::string& path, double seconds);
// An MP3 of the lowest bit rate that there is for that sampling rate.
std::string MakePoorestMp3(const std::string& path, double seconds, int sampleRate, int channels);
// An MP3 without the length header: its first frame, which holds only that, is cut off.
std::string WithoutLengthHeader(const std::string& from, const std::string& to);
// The same with the header of another encoder in its place: a frame marked "VBRI".
std::string WithVbriHeader(const std::string& from, const std::string& to);

using Bytes = std::vector<unsigned char>;
Bytes ReadBytes(const std::string& path);
std::string WriteBytes(const std::string& path, const Bytes& bytes);

// The whole file as 16-bit stereo, read front to back in one go; one channel stands on both sides.
std::vector<std::int16_t> StraightDecode(const std::string& path);
// The frames from `first` on of such a sound, `count` of them or as many as there are.
std::vector<std::int16_t> Part(const std::vector<std::int16_t>& sound, std::int64_t first, std::size_t count);

}  // namespace audiotest
