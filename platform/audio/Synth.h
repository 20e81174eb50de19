// SPDX-License-Identifier: MIT
// Sound made by the program itself: for the demonstration station and for tests.
#pragma once

#include <cstdint>
#include <string>

namespace audio {

struct ToneOptions {
  enum class Kind { Speech, Jingle };

  double seconds = 10.0;         // above 0
  std::uint32_t seed = 1;        // pitch, tempo and melody; the same seed gives the same sound
  Kind kind = Kind::Speech;      // something like a voice, or like a short tune
  int sampleRate = 44100;        // Hz; MP3 knows 8000 to 48000 in the usual steps
  int channels = 2;              // 1 or 2
  bool variableBitRate = false;  // MP3 only
};

// Writes a sound file of exactly round(seconds x sampleRate) frames: 16-bit WAV, FLAC or MP3 as the extension says
// (".wav", ".flac", ".mp3", in any case). An existing file is replaced. Throws audio::Error (Dutch, naming the file).
void WriteToneFile(const std::string& hostPath, const ToneOptions& options);

}  // namespace audio
