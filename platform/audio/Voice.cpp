// SPDX-License-Identifier: MIT
#include "platform/audio/Voice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace audio {
namespace {

double Sine(double turns) {
  return std::sin(2 * std::numbers::pi * turns);
}

}  // namespace

Voice::Voice(const ToneOptions& options, std::int64_t totalFrames)
    : options_(options), total_(totalFrames), state_(options.seed * 2654435761U + 1) {
  const bool speech = options.kind == ToneOptions::Kind::Speech;
  basePitch_ = speech ? 95 + 110 * Random() : 220 * std::exp2(std::floor(Random() * 12) / 12);
}

double Voice::Random() {
  state_ = state_ * 1664525U + 1013904223U;
  return (state_ >> 8) / 16777216.0;
}

void Voice::Render(float* out, std::size_t frames) {
  const bool speech = options_.kind == ToneOptions::Kind::Speech;
  for (std::size_t i = 0; i < frames; ++i, ++frame_) {
    if (frame_ >= unitStart_ + unitLength_) speech ? NextSyllable() : NextNote();
    const double centre = Envelope() * (speech ? Speech() : Jingle());
    const double side =
        options_.channels == 2 ? 0.08 * Sine(0.3 * static_cast<double>(frame_) / options_.sampleRate) : 0;
    *out++ = static_cast<float>(std::clamp(centre * (1 - side), -0.9, 0.9));
    if (options_.channels == 2) *out++ = static_cast<float>(std::clamp(centre * (1 + side), -0.9, 0.9));
  }
}

// Fades in for 10 ms, and out over the last tenth of the file, at most 1.5 s, so that a mix point makes sense.
double Voice::Envelope() const {
  const double in = static_cast<double>(frame_) / (0.010 * options_.sampleRate);
  const double fade = std::min(1.5 * options_.sampleRate, static_cast<double>(total_) / 10) + 1;
  const double out = static_cast<double>(total_ - frame_) / fade;
  return std::clamp(std::min(in, out), 0.0, 1.0);
}

void Voice::NextSyllable() {
  unitStart_ = frame_;
  const bool pause = step_++ > 2 && Random() < 0.12;
  unitLength_ =
      static_cast<std::int64_t>(options_.sampleRate * (pause ? 0.15 + 0.3 * Random() : 0.11 + 0.14 * Random()));
  loudness_ = pause ? 0 : 0.45 + 0.4 * Random();
  pitch_ = basePitch_ * (0.85 + 0.35 * Random());
  formant_ = 350 + 1400 * Random();
}

// Pulses at the voice's pitch with one resonance, and a little noise at the beginning of a syllable.
double Voice::Speech() {
  const double within = static_cast<double>(frame_ - unitStart_) / static_cast<double>(unitLength_);
  phase_ += pitch_ * (1.05 - 0.1 * within) / options_.sampleRate;
  const double cycle = phase_ - std::floor(phase_);
  const double ring = std::exp(-4 * cycle) * Sine(cycle * formant_ / pitch_);
  const double breath = within < 0.2 ? 0.15 * (Random() - 0.5) : 0;
  return loudness_ * std::sin(std::numbers::pi * within) * (0.75 * ring + 0.25 * Sine(phase_) + breath);
}

void Voice::NextNote() {
  static constexpr std::array<int, 8> kMelody = {0, 4, 7, 12, 7, 4, 9, 12};
  const auto choice =
      static_cast<std::size_t>(step_ % 3 == 0 ? step_ : static_cast<int>(Random() * 8)) % kMelody.size();
  ++step_;
  unitStart_ = frame_;
  unitLength_ = options_.sampleRate / 6;
  pitch_ = basePitch_ * std::exp2(kMelody[choice] / 12.0);
}

double Voice::Jingle() {
  const double seconds = static_cast<double>(frame_ - unitStart_) / options_.sampleRate;
  phase_ += pitch_ / options_.sampleRate;
  const double bell = Sine(phase_) + 0.4 * Sine(2 * phase_) + 0.2 * Sine(3 * phase_);
  const double bass = Sine(static_cast<double>(frame_) * basePitch_ / 2 / options_.sampleRate);
  return 0.4 * std::exp(-5 * seconds) * std::min(1.0, seconds * 200) * bell + 0.15 * bass;
}

}  // namespace audio
