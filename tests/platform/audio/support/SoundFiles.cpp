// SPDX-License-Identifier: MIT
#include "tests/platform/audio/support/SoundFiles.h"

#include "platform/audio/Decoder.h"

#include <sndfile.h>
#include <stdlib.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace audiotest {

TemporaryFolder::TemporaryFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "audio-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string MakeTone(const std::string& path, double seconds, int sampleRate, int channels) {
  audio::ToneOptions options;
  options.seconds = seconds;
  options.sampleRate = sampleRate;
  options.channels = channels;
  audio::WriteToneFile(path, options);
  return path;
}

std::string MakeVariableMp3(const std::string& path, double seconds) {
  audio::ToneOptions options;
  options.seconds = seconds;
  options.variableBitRate = true;
  audio::WriteToneFile(path, options);
  return path;
}

std::string MakePoorestMp3(const std::string& path, double seconds, int sampleRate, int channels) {
  const auto sound = audio::OpenDecoder(MakeTone(path + ".wav", seconds, sampleRate, channels));
  std::vector<float> samples(static_cast<std::size_t>(sound->TotalFrames() * channels));
  sound->Read(samples.data(), static_cast<std::size_t>(sound->TotalFrames()));
  SF_INFO info{};
  info.samplerate = sampleRate;
  info.channels = channels;
  info.format = SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
  SNDFILE* const file = sf_open(path.c_str(), SFM_WRITE, &info);
  int mode = SF_BITRATE_MODE_CONSTANT;
  double most = 1;
  sf_command(file, SFC_SET_BITRATE_MODE, &mode, sizeof mode);  // returns false even on success
  const bool set = sf_command(file, SFC_SET_COMPRESSION_LEVEL, &most, sizeof most) == SF_TRUE;
  const bool written = sf_writef_float(file, samples.data(), sound->TotalFrames()) == sound->TotalFrames();
  if (sf_close(file) != 0 || !set || !written) throw std::runtime_error("cannot write " + path);
  return path;
}

// Offset of the second frame of an MPEG-1 layer III file.
static std::ptrdiff_t SecondFrame(const Bytes& bytes, const std::string& path) {
  static constexpr std::array<int, 15> kKilobits{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
  static constexpr std::array<int, 3> kRates{44100, 48000, 32000};
  if (bytes.size() < 256 || bytes[0] != 0xFF || (bytes[1] & 0xFE) != 0xFA)
    throw std::runtime_error("no MPEG frame at the beginning of " + path);
  const int bits = kKilobits.at(bytes[2] >> 4) * 1000;
  return 144 * bits / kRates.at(bytes[2] >> 2 & 3) + (bytes[2] >> 1 & 1);
}

// The header frame contains "Xing" or "Info".
std::string WithoutLengthHeader(const std::string& from, const std::string& to) {
  const Bytes bytes = ReadBytes(from);
  return WriteBytes(to, Bytes(bytes.begin() + SecondFrame(bytes, from), bytes.end()));
}

std::string WithVbriHeader(const std::string& from, const std::string& to) {
  constexpr std::ptrdiff_t kPlace = 36;
  const Bytes sound = ReadBytes(WithoutLengthHeader(from, to));
  Bytes bytes(sound.begin(), sound.begin() + SecondFrame(sound, to));
  std::fill(bytes.begin() + 4, bytes.end(), 0);
  constexpr std::string_view kMark = "VBRI";
  std::copy(kMark.begin(), kMark.end(), bytes.begin() + kPlace);
  bytes.insert(bytes.end(), sound.begin(), sound.end());
  return WriteBytes(to, bytes);
}

Bytes ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

std::string WriteBytes(const std::string& path, const Bytes& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  std::copy(bytes.begin(), bytes.end(), std::ostreambuf_iterator<char>(out));
  if (!out.flush()) throw std::runtime_error("cannot write " + path);
  return path;
}

std::vector<std::int16_t> StraightDecode(const std::string& path) {
  const auto decoder = audio::OpenDecoder(path);
  const auto channels = static_cast<std::size_t>(decoder->Channels());
  const auto room = static_cast<std::size_t>(decoder->TotalFrames()) + 4096;
  std::vector<std::int16_t> own(room * channels);
  const std::size_t frames = decoder->Read(own.data(), room);
  std::vector<std::int16_t> stereo(frames * 2);
  for (std::size_t i = 0; i < frames; ++i) {
    stereo[2 * i] = own[i * channels];
    stereo[2 * i + 1] = own[i * channels + (channels > 1 ? 1 : 0)];
  }
  return stereo;
}

std::vector<std::int16_t> Part(const std::vector<std::int16_t>& sound, std::int64_t first, std::size_t count) {
  const std::size_t begin = std::min(static_cast<std::size_t>(first) * 2, sound.size());
  const std::size_t end = begin + std::min(count * 2, sound.size() - begin);
  return {sound.begin() + static_cast<std::ptrdiff_t>(begin), sound.begin() + static_cast<std::ptrdiff_t>(end)};
}

}  // namespace audiotest
