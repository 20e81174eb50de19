// SPDX-License-Identifier: MIT
#include "platform/audio/Decoder.h"

#include "platform/audio/Error.h"
#include "platform/audio/Mp3Decoder.h"
#include "platform/audio/SndfileDecoder.h"
#include "platform/audio/SourceFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace audio {
namespace {

void RequireSound(const Decoder& decoder, const std::string& path) {
  if (decoder.SampleRate() < Decoder::kMinRate || decoder.SampleRate() > Decoder::kMaxRate) {
    throw ReadError(path, "onmogelijke bemonsteringsfrequentie (" + std::to_string(decoder.SampleRate()) + " Hz)");
  }
  if (decoder.Channels() < 1 || decoder.Channels() > Decoder::kMaxChannels) {
    throw ReadError(path, "onmogelijk aantal kanalen (" + std::to_string(decoder.Channels()) + ")");
  }
  if (decoder.TotalFrames() < 1) throw ReadError(path, "er staat geen geluid in");
  if (decoder.TotalFrames() / decoder.SampleRate() >= INT32_MAX / 1000) throw ReadError(path, "het is te lang");
}

// Length of an ID3v2 tag at the beginning, or 0. Its header has ten bytes: "ID3", two bytes of version, flags, and at
// offset 6 the length of the rest in four bytes of seven bits each.
std::int64_t TagBytes(SourceFile& file) {
  std::array<unsigned char, 10> head{};
  file.Seek(0, SEEK_SET);
  const bool tagged =
      file.Read(head.data(), head.size()) == std::ssize(head) && std::memcmp(head.data(), "ID3", 3) == 0;
  return tagged ? 10 + (head[6] << 21 | head[7] << 14 | head[8] << 7 | head[9]) : 0;
}

// An MPEG audio frame begins with eleven set bits. Such a file is not tried with libsndfile.
bool BeginsAsMpeg(SourceFile& file, std::int64_t at) {
  std::array<unsigned char, 2> head{};
  file.Seek(at, SEEK_SET);
  file.Read(head.data(), head.size());
  return head[0] == 0xFF && (head[1] & 0xE0) == 0xE0;
}

// In other data, such as a damaged WAV, a few random bytes look like frames. MPEG audio has at least one frame per 4096
// bytes.
std::unique_ptr<Decoder> OpenDespiteItsBeginning(std::unique_ptr<SourceFile> file, std::int64_t tagBytes) {
  const std::string path = file->Path();
  const std::int64_t bytes = file->Size() - tagBytes;
  auto decoder = std::make_unique<Mp3Decoder>(std::move(file));
  if (decoder->MpegFrames() * 4096 < bytes) throw ReadError(path, "dit is geen bekend soort geluidsbestand");
  return decoder;
}

}  // namespace

std::size_t Decoder::Read(std::int16_t* out, std::size_t frames) {
  const std::size_t samples = frames * static_cast<std::size_t>(Channels());
  if (scratch_.size() < samples) scratch_.resize(samples);
  const std::size_t got = Read(scratch_.data(), frames);
  std::transform(scratch_.data(), scratch_.data() + got * static_cast<std::size_t>(Channels()), out, Int16Sample);
  return got;
}

std::unique_ptr<Decoder> OpenDecoder(const std::string& hostPath) {
  auto file = std::make_unique<SourceFile>(hostPath);
  const std::int64_t tagBytes = TagBytes(*file);
  std::unique_ptr<Decoder> decoder;
  if (BeginsAsMpeg(*file, tagBytes)) {
    decoder = std::make_unique<Mp3Decoder>(std::move(file));
  } else if (decoder = SndfileDecoder::TryOpen(file); !decoder) {
    decoder = OpenDespiteItsBeginning(std::move(file), tagBytes);
  }
  RequireSound(*decoder, hostPath);
  return decoder;
}

std::int64_t MsOfFrames(std::int64_t frames, int sampleRate) {
  const std::int64_t seconds = frames / sampleRate;
  return seconds * 1000 + ((frames % sampleRate) * 2000 + sampleRate) / (2 * std::int64_t{sampleRate});
}

std::int64_t FramesOfMs(std::int64_t ms, int sampleRate) {
  return ms / 1000 * sampleRate + (ms % 1000 * sampleRate + 500) / 1000;
}

std::int16_t Int16Sample(float sample) {
  if (std::isnan(sample)) return 0;
  return static_cast<std::int16_t>(std::lrintf(std::clamp(sample * 32768.0F, -32768.0F, 32767.0F)));
}

}  // namespace audio
