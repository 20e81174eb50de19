#include "tests/platform/audio/support/SoundFiles.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "platform/audio/Decoder.h"

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

// The header frame holds "Xing" or "Info"; the next frame begins with the same two bytes of sync and version.
std::string WithoutLengthHeader(const std::string& from, const std::string& to) {
  const Bytes bytes = ReadBytes(from);
  if (bytes.size() < 256 || bytes[0] != 0xFF) throw std::runtime_error("no MPEG frame at the beginning of " + from);
  for (std::size_t i = 64; i + 4 < bytes.size(); ++i) {
    if (bytes[i] == 0xFF && bytes[i + 1] == bytes[1])
      return WriteBytes(to, Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(i), bytes.end()));
  }
  throw std::runtime_error("no second frame in " + from);
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
