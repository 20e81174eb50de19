// SPDX-License-Identifier: MIT
#include "platform/audio/Synth.h"

#include "platform/audio/Error.h"
#include "platform/audio/Voice.h"

#include <sndfile.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <memory>
#include <vector>

namespace audio {
namespace {

using Handle = std::unique_ptr<SNDFILE, int (*)(SNDFILE*)>;

int FormatOf(const std::string& path) {
  std::string extension = path.substr(std::min(path.rfind('.'), path.size()));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return std::tolower(c); });
  if (extension == ".wav") return SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  if (extension == ".flac") return SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
  if (extension == ".mp3") return SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
  throw WriteError(path, "de extensie moet .wav, .flac of .mp3 zijn");
}

Handle Create(const std::string& path, const ToneOptions& options) {
  SF_INFO info{};
  info.samplerate = options.sampleRate;
  info.channels = options.channels;
  info.format = FormatOf(path);
  Handle handle(sf_open(path.c_str(), SFM_WRITE, &info), sf_close);
  if (!handle) throw WriteError(path, sf_strerror(nullptr));
  if ((info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_MPEG) {
    int mode = options.variableBitRate ? SF_BITRATE_MODE_VARIABLE : SF_BITRATE_MODE_CONSTANT;
    sf_command(handle.get(), SFC_SET_BITRATE_MODE, &mode, sizeof mode);
  }
  return handle;
}

}  // namespace

void WriteToneFile(const std::string& hostPath, const ToneOptions& options) {
  const auto total = static_cast<std::int64_t>(std::llround(options.seconds * options.sampleRate));
  if (total <= 0 || options.channels < 1 || options.channels > 2)
    throw WriteError(hostPath, "er is niets te schrijven");
  Handle handle = Create(hostPath, options);
  Voice voice(options, total);
  constexpr std::int64_t kBlock = 8192;
  std::vector<float> block(static_cast<std::size_t>(kBlock * options.channels));
  for (std::int64_t done = 0; done < total;) {
    const std::int64_t count = std::min(kBlock, total - done);
    voice.Render(block.data(), static_cast<std::size_t>(count));
    if (sf_writef_float(handle.get(), block.data(), count) != count)
      throw WriteError(hostPath, sf_strerror(handle.get()));
    done += count;
  }
  if (sf_close(handle.release()) != 0) throw WriteError(hostPath, "de schijf is vol of het bestand is niet bereikbaar");
}

}  // namespace audio
