// SPDX-License-Identifier: MIT
// Generates sound files for tests, and decodes them for comparison.
#pragma once

#include "platform/audio/Peaks.h"
#include "platform/audio/Synth.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace audiotest {

// Progress callback that never cancels.
inline const audio::PeakProgress kToTheEnd = [](const audio::Peaks&, std::size_t) { return true; };

// A folder that is deleted with its contents.
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

// Writes a sound file of exactly that length; the extension decides the format (.wav, .flac, .mp3). Returns the path.
std::string MakeTone(const std::string& path, double seconds, int sampleRate = 44100, int channels = 2);
// Writes an MP3 of variable bit rate with the encoder's length header.
std::string MakeVariableMp3(const std::string& path, double seconds);
// Writes an MP3 of the lowest bit rate for that sampling rate.
std::string MakePoorestMp3(const std::string& path, double seconds, int sampleRate, int channels);
// Copies an MP3 without its first frame, which has only the length header.
std::string WithoutLengthHeader(const std::string& from, const std::string& to);
// Copies an MP3 and replaces that frame by one with the length header "VBRI".
std::string WithVbriHeader(const std::string& from, const std::string& to);

using Bytes = std::vector<unsigned char>;
Bytes ReadBytes(const std::string& path);
std::string WriteBytes(const std::string& path, const Bytes& bytes);

// Decodes the complete file from beginning to end as 16-bit stereo; mono is copied to both channels.
std::vector<std::int16_t> StraightDecode(const std::string& path);
// Up to `count` frames of such a sound, starting at frame `first`.
std::vector<std::int16_t> Part(const std::vector<std::int16_t>& sound, std::int64_t first, std::size_t count);

}  // namespace audiotest
