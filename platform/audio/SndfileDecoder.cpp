// SPDX-License-Identifier: MIT
#include "platform/audio/SndfileDecoder.h"

#include "platform/audio/Error.h"

#include <sndfile.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace audio {
namespace {

SF_VIRTUAL_IO FileAccess() {
  SF_VIRTUAL_IO access{};
  access.get_filelen = [](void* file) -> sf_count_t { return static_cast<SourceFile*>(file)->Size(); };
  access.seek = [](sf_count_t offset, int whence, void* file) -> sf_count_t {
    return static_cast<SourceFile*>(file)->Seek(offset, whence);
  };
  access.read = [](void* out, sf_count_t bytes, void* file) -> sf_count_t {
    return bytes <= 0 ? 0 : static_cast<SourceFile*>(file)->Read(out, static_cast<std::size_t>(bytes));
  };
  access.tell = [](void* file) -> sf_count_t { return static_cast<SourceFile*>(file)->Tell(); };
  return access;
}

}  // namespace

void SndfileDecoder::Close::operator()(SNDFILE* handle) const {
  sf_close(handle);
}

// Opened without a file name, because libsndfile would use its extension for files without a header.
SndfileDecoder::Handle SndfileDecoder::OpenHandle(SourceFile& file, SF_INFO& info) {
  SF_VIRTUAL_IO access = FileAccess();
  file.Seek(0, SEEK_SET);
  info = {};
  return Handle(sf_open_virtual(&access, SFM_READ, &info, &file));
}

std::unique_ptr<SndfileDecoder> SndfileDecoder::TryOpen(std::unique_ptr<SourceFile>& file) {
  SF_INFO info{};
  Handle handle = OpenHandle(*file, info);
  if (!handle || (info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_MPEG) return nullptr;
  std::unique_ptr<SndfileDecoder> decoder(new SndfileDecoder(std::move(file), std::move(handle)));
  decoder->sampleRate_ = info.samplerate;
  decoder->channels_ = info.channels;
  decoder->totalFrames_ = info.frames;
  if (info.channels < 1 || info.channels > kMaxChannels) return decoder;
  if (info.frames > 0 && !decoder->LastFrameReadable()) decoder->CountFrames();
  return decoder;
}

// False when the header has more frames than the file (truncated FLAC, unknown length); they must be counted then.
bool SndfileDecoder::LastFrameReadable() {
  if (totalFrames_ == SF_COUNT_MAX || sf_seek(handle_.get(), totalFrames_ - 1, SEEK_SET) < 0) return false;
  std::vector<float> frame(static_cast<std::size_t>(channels_));
  const bool readable = sf_readf_float(handle_.get(), frame.data(), 1) == 1;
  return sf_seek(handle_.get(), 0, SEEK_SET) == 0 && readable;
}

// With new handles before and after, because a handle may be unusable after an error.
void SndfileDecoder::CountFrames() {
  constexpr sf_count_t kBlock = 8192;
  SF_INFO info{};
  std::vector<float> block(static_cast<std::size_t>(kBlock * channels_));
  totalFrames_ = 0;
  handle_ = OpenHandle(*file_, info);
  for (sf_count_t got = 1; handle_ && got > 0;) {
    got = std::max<sf_count_t>(0, sf_readf_float(handle_.get(), block.data(), kBlock));
    totalFrames_ += got;
  }
  handle_ = OpenHandle(*file_, info);
  if (!handle_) throw ReadError(file_->Path(), "de inhoud is beschadigd");
}

void SndfileDecoder::Seek(std::int64_t frame) {
  position_ = std::clamp<std::int64_t>(frame, 0, totalFrames_);
  if (position_ < totalFrames_ && sf_seek(handle_.get(), position_, SEEK_SET) < 0) {
    throw ReadError(file_->Path(), "de inhoud is beschadigd");
  }
}

std::size_t SndfileDecoder::Read(float* out, std::size_t frames) {
  const std::int64_t wanted = std::min<std::int64_t>(static_cast<std::int64_t>(frames), totalFrames_ - position_);
  if (wanted <= 0) return 0;
  const std::int64_t got = std::max<sf_count_t>(0, sf_readf_float(handle_.get(), out, wanted));
  position_ += got;
  return static_cast<std::size_t>(got);
}

}  // namespace audio
