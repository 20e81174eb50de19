// SPDX-License-Identifier: MIT
// Generates sound files, for the demonstration station and for tests.
#pragma once

#include <cstdint>
#include <string>

namespace audio {

struct ToneOptions {
  enum class Kind { Speech, Jingle };

  double seconds = 10.0;         // above 0
  std::uint32_t seed = 1;        // decides pitch, tempo and melody; the same seed gives the same sound
  Kind kind = Kind::Speech;      // similar to a voice, or to a short tune
  int sampleRate = 44100;        // Hz; MP3 supports the usual rates from 8000 to 48000
  int channels = 2;              // 1 or 2
  bool variableBitRate = false;  // MP3 only
};

// Writes a sound file of exactly round(seconds x sampleRate) frames. The extension (".wav", ".flac", ".mp3", in any
// case) selects 16-bit WAV, FLAC or MP3. An existing file is replaced. Throws audio::Error with the path.
void WriteToneFile(const std::string& hostPath, const ToneOptions& options);

}  // namespace audio
