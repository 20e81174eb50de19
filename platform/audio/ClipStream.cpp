// SPDX-License-Identifier: MIT
#include "platform/audio/ClipStream.h"

#include "platform/audio/Error.h"

#include <samplerate.h>

#include <algorithm>
#include <numeric>
#include <utility>

namespace audio {
namespace {

constexpr std::int64_t kClipChunk = 1024;  // frames read at a time
// Output frames converted and discarded before a seek's target, so that the filter has its complete history: it reaches
// back less than 64 input frames.
constexpr std::int64_t kHistory = 512;

}  // namespace

void ClipStream::Free::operator()(SRC_STATE_tag* state) const {
  src_delete(state);
}

ClipStream::ClipStream(std::string path, int rate) : path_(std::move(path)) {
  const std::unique_ptr<Decoder> decoder = OpenDecoder(path_);
  fileRate_ = decoder->SampleRate();
  channels_ = decoder->Channels();
  fileFrames_ = decoder->TotalFrames();
  SetRate(rate == 0 ? fileRate_ : rate);
}

void ClipStream::SetRate(int rate) {
  Release();
  converter_.reset();
  rate_ = rate;
  frames_ = (fileFrames_ * rate_ + fileRate_ / 2) / fileRate_;
  position_ = 0;
}

void ClipStream::Release() {
  decoder_.reset();
  atPosition_ = false;
}

void ClipStream::Seek(std::int64_t frame) {
  if (frame == position_) return;
  position_ = std::clamp<std::int64_t>(frame, 0, frames_);
  atPosition_ = false;
}

void ClipStream::Mix(float* out, std::int64_t frames) {
  std::int64_t left = std::min(frames, frames_ - position_);
  try {
    if (left > 0 && !atPosition_) OpenAt(position_);
    while (left > 0) {
      const std::int64_t got = Read(std::min(left, kClipChunk));
      if (got == 0) break;
      for (std::int64_t at = 0; at < 2 * got; ++at)
        out[at] += block_[static_cast<std::size_t>(at)];
      out += 2 * got;
      left -= got;
      position_ += got;
    }
  } catch (const Error&) {
    Release();
  }
  position_ += std::max<std::int64_t>(0, left);  // missing frames are silent
}

void ClipStream::Open() {
  if (!decoder_) decoder_ = OpenDecoder(path_);
  if (decoder_->SampleRate() != fileRate_ || decoder_->Channels() != channels_)
    throw ReadError(path_, "het is intussen een ander bestand");
  if (rate_ == fileRate_ || converter_) return;
  int code = 0;
  converter_.reset(src_new(SRC_SINC_FASTEST, 2, &code));
  if (!converter_) throw Error(std::string("Kan het geluid niet omzetten: ") + src_strerror(code));
}

// Input and output frames coincide only every `unit` output frames. Started at such a frame, at least kHistory frames
// before the target, the conversion produces the same samples as one from the beginning of the file.
void ClipStream::OpenAt(std::int64_t frame) {
  Open();
  inputStart_ = inputEnd_ = 0;
  atEnd_ = false;
  std::int64_t begin = frame;
  if (converter_) {
    const std::int64_t unit = rate_ / std::gcd(rate_, fileRate_);
    begin = std::max<std::int64_t>(0, frame - kHistory) / unit * unit;
    src_reset(converter_.get());
  }
  decoder_->Seek(converter_ ? begin * fileRate_ / rate_ : frame);
  while (begin < frame) {
    const std::int64_t got = Read(std::min(frame - begin, kClipChunk));
    if (got == 0) break;
    begin += got;
  }
  atPosition_ = true;
}

std::int64_t ClipStream::Read(std::int64_t frames) {
  block_.resize(static_cast<std::size_t>(2 * kClipChunk));
  return converter_ ? Resample(frames) : ReadStereo(block_.data(), frames);
}

std::int64_t ClipStream::ReadStereo(float* out, std::int64_t frames) {
  const auto channels = static_cast<std::size_t>(channels_);
  const auto wanted = static_cast<std::size_t>(frames);
  if (channels == 2) return static_cast<std::int64_t>(decoder_->Read(out, wanted));
  decoded_.resize(wanted * channels);
  const std::size_t got = decoder_->Read(decoded_.data(), wanted);
  for (std::size_t i = 0; i < got; ++i) {
    out[2 * i] = decoded_[i * channels];
    out[2 * i + 1] = decoded_[i * channels + (channels > 1 ? 1 : 0)];
  }
  return static_cast<std::int64_t>(got);
}

std::int64_t ClipStream::Resample(std::int64_t frames) {
  while (true) {
    if (inputStart_ == inputEnd_ && !atEnd_) Refill();
    SRC_DATA data{};
    data.data_in = input_.data() + inputStart_ * 2;
    data.input_frames = static_cast<long>(inputEnd_ - inputStart_);
    data.data_out = block_.data();
    data.output_frames = static_cast<long>(frames);
    data.src_ratio = static_cast<double>(rate_) / fileRate_;
    data.end_of_input = atEnd_ ? 1 : 0;
    if (src_process(converter_.get(), &data) != 0) return 0;
    inputStart_ += static_cast<std::size_t>(data.input_frames_used);
    if (data.output_frames_gen > 0 || (atEnd_ && data.input_frames_used == 0)) return data.output_frames_gen;
  }
}

void ClipStream::Refill() {
  input_.resize(static_cast<std::size_t>(2 * kClipChunk));
  inputStart_ = 0;
  inputEnd_ = static_cast<std::size_t>(ReadStereo(input_.data(), kClipChunk));
  atEnd_ = inputEnd_ < static_cast<std::size_t>(kClipChunk);
}

}  // namespace audio
