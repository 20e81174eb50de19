// SPDX-License-Identifier: MIT
#include "bench/LengthFiles.h"
#include "bench/Mp3Frames.h"
#include "bench/Plain.h"
#include "platform/audio/Synth.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace bench {
namespace {

namespace fs = std::filesystem;

// One encoding: the options of the encoder and its output.
struct Encoding {
  std::string name;
  int sampleRate = 0;
  int channels = 0;
  std::int64_t encoded = 0;  // samples of each channel
  Mp3Frames frames;
};

// Random, the same in every run, and without the byte with which a frame begins.
std::string Junk(std::size_t size) {
  static std::mt19937 random(20250131);
  std::string junk(size, '\0');
  for (char& byte : junk)
    byte = static_cast<char>(random() % 255);
  return junk;
}

// An ID3v2 tag with a picture full of bytes that look like frames. Its size has seven bits a byte.
std::string TagWithPicture(const std::string& frame, std::size_t pictureBytes) {
  std::string picture("image/jpeg\0\3\0\xFF\xD8", 15);
  while (picture.size() < pictureBytes)
    picture += frame + Junk(300);
  const auto number = [](std::size_t value, unsigned bits) {
    std::string bytes;
    for (int place = 3; place >= 0; --place)
      bytes += static_cast<char>(value >> (bits * static_cast<unsigned>(place)) & ((1U << bits) - 1));
    return bytes;
  };
  const std::string content = "APIC" + number(picture.size() + 1, 8) + std::string(3, '\0') + picture;
  return std::string("ID3\3\0\0", 6) + number(content.size(), 7) + content;
}

std::string OldTag() {
  return "TAG" + std::string("Bakkerij Van Damme") + std::string(107, ' ');
}

// Version 2, one field, header and footer.
std::string ApeTag() {
  const std::string field("\6\0\0\0\0\0\0\0Title\0spot 1", 20);
  const auto frame = [&](unsigned char flags) {
    std::string bytes("APETAGEX\xD0\7\0\0", 12);
    bytes += static_cast<char>(field.size() + 32);
    bytes += std::string("\0\0\0\1\0\0\0\0\0\0", 10);
    bytes += static_cast<char>(flags);
    return bytes + std::string(8, '\0');
  };
  return frame(0xA0) + field + frame(0x80);
}

struct Variant {
  const char* kind;
  std::string bytes;
  std::vector<std::int64_t> samples;
};

std::vector<Variant> WholeSound(const Encoding& from) {
  const Mp3Frames& mp3 = from.frames;
  const std::string sound = mp3.Sound();
  const std::string whole = mp3.header + sound;
  const std::string tag = TagWithPicture(mp3.frames.front(), 300'000);
  const std::int64_t known = from.encoded;                  // a header gives the padding
  const std::int64_t all = mp3.Samples(mp3.frames.size());  // no header does
  return {{"encoder's header", whole, {known}},
          {"no header", sound, {all}},
          {"VBRI header", mp3.VbriHeader() + sound, {all}},
          {"header without padding", mp3.HeaderWithoutPadding() + sound, {all, all - kDecoderDelay}},
          {"ID3v1", whole + OldTag(), {known}},
          {"ID3v2 with picture", tag + whole, {known}},
          {"ID3v2 with picture, no header", tag + sound, {all}},
          {"two ID3v2", TagWithPicture(mp3.frames.front(), 20'000) + tag + whole, {known}},
          {"ID3v2, APE and ID3v1", tag + whole + ApeTag() + OldTag(), {known}},
          {"junk in front", Junk(2000) + whole, {known}},
          {"junk in front, no header", Junk(2000) + sound, {all}},
          {"zeros after", whole + std::string(8192, '\0'), {known}}};
}

std::vector<Variant> ChangedSound(const Encoding& from) {
  const Mp3Frames& mp3 = from.frames;
  const std::size_t count = mp3.frames.size();
  const std::size_t half = count / 2;
  const std::string first = mp3.Sound(0, half);
  const std::string piece = mp3.frames[half].substr(0, mp3.frames[half].size() / 2);
  const auto stale = [&](std::size_t frames) {
    return std::vector{mp3.Samples(frames), mp3.Samples(frames) - mp3.delay};
  };
  return {{"cut, old header", mp3.header + first, stale(half)},
          {"cut within a frame, old header", mp3.header + first + piece, stale(half)},
          {"cut within a frame, no header", first + piece, {mp3.Samples(half)}},
          {"header of a longer file", mp3.HeaderWithFrameCount(static_cast<std::uint32_t>(2 * count)) + mp3.Sound(),
           stale(count)},
          {"another recording after", mp3.header + mp3.Sound() + mp3.Sound(), {from.encoded + mp3.Samples(count)}},
          {"junk within, no header", first + Junk(3000) + mp3.Sound(half, count), {mp3.Samples(count)}}};
}

std::string Content(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

Encoding Encode(const fs::path& folder, int sampleRate, int channels, const std::string& mode, int number) {
  audio::ToneOptions options;
  options.seconds = 6 + 0.737 * (number % 11);
  options.seed = static_cast<std::uint32_t>(number + 1);
  options.sampleRate = sampleRate;
  options.channels = channels;
  const std::string wav = (folder / "in.wav").string();
  const std::string mp3 = (folder / "out.mp3").string();
  audio::WriteToneFile(wav, options);
  const std::string kilohertz = std::to_string(sampleRate / 1000.0);
  const std::string command = "lame --quiet --resample " + kilohertz + ' ' + mode + " '" + wav + "' '" + mp3 + '\'';
  Require(std::system(command.c_str()) == 0, command.c_str());
  Encoding made{mode, sampleRate, channels, std::llround(options.seconds * sampleRate), SplitFrames(Content(mp3))};
  fs::remove(wav);
  fs::remove(mp3);
  return made;
}

std::vector<std::string> Modes(int sampleRate, int channels) {
  // Not smaller: a frame of constant size must have room for the encoder's header.
  const int kilobits = sampleRate >= 32000 ? 64 * channels : 64;
  std::vector<std::string> modes{"-b " + std::to_string(kilobits), "--abr " + std::to_string(kilobits), "-V 2"};
  if (sampleRate >= 32000 && channels == 2) modes.emplace_back("--freeformat -b 400");
  return modes;
}

}  // namespace

int MakeMp3Files(const fs::path& folder, const TakeFile& take) {
  int files = 0;
  int encodings = 0;
  for (const int rate : {44100, 48000, 32000, 22050, 24000, 16000, 11025, 12000, 8000}) {
    for (const int channels : {1, 2}) {
      for (const std::string& mode : Modes(rate, channels)) {
        const Encoding made = Encode(folder, rate, channels, mode, encodings++);
        for (const auto& variants : {WholeSound(made), ChangedSound(made)}) {
          for (const Variant& variant : variants) {
            const fs::path path = folder / (std::to_string(++files) + ".mp3");
            std::ofstream(path, std::ios::binary) << variant.bytes;
            take({path, variant.kind, rate, channels, variant.samples});
          }
        }
      }
    }
  }
  return files;
}

}  // namespace bench
