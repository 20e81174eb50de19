// SPDX-License-Identifier: MIT
#include "bench/LengthFiles.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace bench {
namespace {

namespace fs = std::filesystem;

struct Shape {
  int sampleRate;
  int channels;
  int bytes;  // of a sample; 4 is floating point
};

std::string Number(std::uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text += static_cast<char>(value >> (8 * i));
  return text;
}

std::string Chunk(const char* name, const std::string& content, std::uint64_t told) {
  return name + Number(told, 4) + content + std::string(content.size() % 2, '\0');
}

std::string Wav(const Shape& shape, const std::string& extra, const std::string& sound, std::uint64_t told) {
  const int frame = shape.channels * shape.bytes;
  const std::string format =
      Number(shape.bytes == 4 ? 3 : 1, 2) + Number(static_cast<unsigned>(shape.channels), 2) +
      Number(static_cast<unsigned>(shape.sampleRate), 4) + Number(static_cast<unsigned>(shape.sampleRate * frame), 4) +
      Number(static_cast<unsigned>(frame), 2) + Number(static_cast<unsigned>(8 * shape.bytes), 2);
  const std::string content = "WAVE" + Chunk("fmt ", format, format.size()) + extra + Chunk("data", sound, told);
  return Chunk("RIFF", content, content.size());
}

}  // namespace

int MakeWavFiles(const fs::path& folder, const TakeFile& take) {
  int files = 0;
  for (const int rate : {8000, 22050, 32000, 44100, 48000, 96000}) {
    for (const int channels : {1, 2}) {
      for (const int bytes : {1, 2, 3, 4}) {
        const Shape shape{rate, channels, bytes};
        const std::int64_t samples = rate * std::int64_t{7} + 1234 + files;
        const auto frame = static_cast<std::size_t>(channels) * static_cast<std::size_t>(bytes);
        const std::string sound(static_cast<std::size_t>(samples) * frame, '\0');
        const std::string half = sound.substr(0, static_cast<std::size_t>(samples / 2) * frame);
        const std::string list = Chunk("LIST", std::string(5001, 'x'), 5001);
        const auto give = [&](const char* kind, const std::string& file, std::int64_t truth) {
          const fs::path path = folder / ("w" + std::to_string(++files) + ".wav");
          std::ofstream(path, std::ios::binary) << file;
          take({path, kind, rate, channels, {truth}});
        };
        give("WAV", Wav(shape, "", sound, sound.size()), samples);
        give("WAV with a list before the sound", Wav(shape, list, sound, sound.size()), samples);
        give("WAV cut, old header", Wav(shape, "", half, sound.size()), samples / 2);
        give("WAV of unknown length", Wav(shape, "", sound, 0xFFFFFFFF), samples);
      }
    }
  }
  return files;
}

}  // namespace bench
