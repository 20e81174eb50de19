// SPDX-License-Identifier: MIT
#include "platform/audio/StereoStream.h"

#include "platform/audio/Error.h"

#include <samplerate.h>

#include <algorithm>
#include <string>

namespace audio {
namespace {

constexpr std::size_t kChunk = 1024;  // frames converted at a time

}  // namespace

void StereoStream::Free::operator()(SRC_STATE_tag* state) const {
  src_delete(state);
}

StereoStream::StereoStream(Decoder& decoder, int outputRate)
    : decoder_(decoder), ratio_(static_cast<double>(outputRate) / decoder.SampleRate()), converted_(kChunk * 2) {
  if (outputRate == decoder.SampleRate()) return;
  int code = 0;  // 97 dB signal-to-noise ratio, enough for 16 bits; the next better converter costs three times as much
  converter_.reset(src_new(SRC_SINC_FASTEST, 2, &code));
  if (!converter_) throw Error(std::string("Kan het geluid niet omzetten: ") + src_strerror(code));
  input_.resize(kChunk * 2);
}

void StereoStream::Seek(std::int64_t frame) {
  decoder_.Seek(frame);
  if (converter_) src_reset(converter_.get());
  inputStart_ = inputEnd_ = 0;
  atEnd_ = false;
}

std::size_t StereoStream::Read(std::int16_t* out, std::size_t frames) {
  std::size_t done = 0;
  while (done < frames) {
    const std::size_t wanted = std::min(frames - done, kChunk);
    std::size_t got = 0;
    if (converter_) {
      got = Resample(out + done * 2, wanted);
    } else {
      got = ReadStereo(converted_.data(), wanted);
      std::transform(converted_.data(), converted_.data() + got * 2, out + done * 2, Int16Sample);
    }
    if (got == 0) break;
    done += got;
  }
  return done;
}

std::size_t StereoStream::ReadStereo(float* out, std::size_t frames) {
  const auto channels = static_cast<std::size_t>(decoder_.Channels());
  if (channels == 2) return decoder_.Read(out, frames);
  decoded_.resize(frames * channels);
  const std::size_t got = decoder_.Read(decoded_.data(), frames);
  for (std::size_t i = 0; i < got; ++i) {
    out[2 * i] = decoded_[i * channels];
    out[2 * i + 1] = decoded_[i * channels + (channels > 1 ? 1 : 0)];
  }
  return got;
}

std::size_t StereoStream::Resample(std::int16_t* out, std::size_t frames) {
  while (true) {
    if (inputStart_ == inputEnd_ && !atEnd_) Refill();
    SRC_DATA data{};
    data.data_in = input_.data() + inputStart_ * 2;
    data.input_frames = static_cast<long>(inputEnd_ - inputStart_);
    data.data_out = converted_.data();
    data.output_frames = static_cast<long>(frames);
    data.src_ratio = ratio_;
    data.end_of_input = atEnd_ ? 1 : 0;
    if (src_process(converter_.get(), &data) != 0) return 0;
    inputStart_ += static_cast<std::size_t>(data.input_frames_used);
    const auto got = static_cast<std::size_t>(data.output_frames_gen);
    std::transform(converted_.data(), converted_.data() + got * 2, out, Int16Sample);
    if (got > 0 || (atEnd_ && data.input_frames_used == 0)) return got;
  }
}

void StereoStream::Refill() {
  inputStart_ = 0;
  inputEnd_ = ReadStereo(input_.data(), kChunk);
  atEnd_ = inputEnd_ < kChunk;
}

}  // namespace audio
