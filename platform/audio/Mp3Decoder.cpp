// SPDX-License-Identifier: MIT
#include "platform/audio/Mp3Decoder.h"

#include "platform/audio/Error.h"

#include <mpg123.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace audio {
namespace {

// MPEG frames decoded and thrown away before a seek's target. The bit reservoir reaches back 511 bytes, of which a
// frame of the lowest bit rate (48 kHz, 32 kbit/s, two channels) holds 58; the overlap of the filter bank one frame
// more. In MPEG 2 it is 255 bytes, at three a frame (24 kHz, 8 kbit/s, two channels).
constexpr int kPreframes = 16;
constexpr int kLowRatePreframes = 96;
// MPEG frames after which the synthesis filter's buffer stands as it stood before.
constexpr int kPhases = 8;
// Bytes without a frame after which the sound has ended; before the first frame: after which the file is no sound.
constexpr long kMostGarbage = 16L << 20;

ssize_t ReadFile(void* file, void* out, std::size_t bytes) {
  return static_cast<ssize_t>(static_cast<SourceFile*>(file)->Read(out, bytes));
}

off_t SeekFile(void* file, off_t offset, int whence) {
  return static_cast<SourceFile*>(file)->Seek(offset, whence);
}

}  // namespace

void Mp3Decoder::Free::operator()(mpg123_handle_struct* handle) const {
  mpg123_delete(handle);
}

Mp3Decoder::Mp3Decoder(std::unique_ptr<SourceFile> file) : file_(std::move(file)) {
  Configure();
  OpenHandle();
  FixFormat();
  SkipVbriHeader();
  LearnVersion();
  if (mpg123_scan(handle_.get()) != MPG123_OK) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  totalFrames_ = mpg123_length(handle_.get());
  mpegFrames_ = mpg123_framelength(handle_.get());
}

void Mp3Decoder::Configure() {
  int code = MPG123_OK;
  handle_.reset(mpg123_new(nullptr, &code));
  if (!handle_) throw ReadError(file_->Path(), mpg123_plain_strerror(code));
  mpg123_param(handle_.get(), MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_SKIP_ID3V2 | MPG123_GAPLESS, 0);
  mpg123_param(handle_.get(), MPG123_REMOVE_FLAGS, MPG123_AUTO_RESAMPLE | MPG123_FUZZY, 0);
  // Garbage in the middle must not end the file; but it is looked through byte by byte, and there may be gigabytes of
  // it.
  mpg123_param(handle_.get(), MPG123_RESYNC_LIMIT, kMostGarbage, 0);
  mpg123_param(handle_.get(), MPG123_INDEX_SIZE, -1000, 0);  // every frame: a seek reads no more than it must
  mpg123_param(handle_.get(), MPG123_PREFRAMES, 1, 0);
  mpg123_replace_reader_handle(handle_.get(), ReadFile, SeekFile, nullptr);
}

void Mp3Decoder::OpenHandle() {
  file_->Seek(0, SEEK_SET);
  if (mpg123_open_handle(handle_.get(), file_.get()) != MPG123_OK) {
    throw ReadError(file_->Path(), "dit is geen bekend soort geluidsbestand");
  }
}

// The library knows the headers "Xing" and "Info" only, and takes a frame with one of another encoder for sound. For it
// the file then begins behind that frame, whose mark stands 32 bytes after the four with which it begins.
void Mp3Decoder::SkipVbriHeader() {
  constexpr std::size_t kPlace = 32;
  constexpr std::string_view kMark = "VBRI";
  unsigned long start = 0;
  unsigned char* body = nullptr;
  std::size_t bytes = 0;
  if (mpg123_framedata(handle_.get(), &start, &body, &bytes) != MPG123_OK || bytes < kPlace + kMark.size()) return;
  if (std::memcmp(body + kPlace, kMark.data(), kMark.size()) != 0) return;
  file_->BeginAt(mpg123_tell_stream(handle_.get()));
  mpg123_close(handle_.get());
  OpenHandle();
  FixFormat();
}

// The first frame decides; later ones with another number of channels are made to fit.
void Mp3Decoder::FixFormat() {
  long rate = 0;
  int channels = 0;
  int encoding = 0;
  mpg123_format_none(handle_.get());
  const long* rates = nullptr;
  std::size_t count = 0;
  mpg123_rates(&rates, &count);
  for (std::size_t i = 0; i < count; ++i) {
    mpg123_format(handle_.get(), rates[i], MPG123_MONO | MPG123_STEREO, MPG123_ENC_FLOAT_32);
  }
  if (mpg123_getformat(handle_.get(), &rate, &channels, &encoding) != MPG123_OK || rate <= 0 || channels <= 0) {
    throw ReadError(file_->Path(), "dit is geen bekend soort geluidsbestand");
  }
  sampleRate_ = static_cast<int>(rate);
  channels_ = channels;
  mpg123_param(handle_.get(), MPG123_ADD_FLAGS, channels == 1 ? MPG123_MONO_MIX : MPG123_FORCE_STEREO, 0);
}

void Mp3Decoder::LearnVersion() {
  mpg123_frameinfo info{};
  lowRate_ = mpg123_info(handle_.get(), &info) == MPG123_OK && info.version != MPG123_1_0;
}

// What a straight decode holds at a frame depends, in its last bit, on how many MPEG frames went through the synthesis
// filter before, modulo 8: its buffer rotates and the order of its sums with it. A jump therefore begins at a frame
// that puts the filter in the same phase, a few frames early, and throws away what lies before the target. In MPEG 2
// the phase is not sure: the library lets some of the frames that lack their bit reservoir, those right after a jump,
// pass by the filter, and does not tell which.
void Mp3Decoder::Seek(std::int64_t frame) {
  const std::int64_t target = std::clamp<std::int64_t>(frame, 0, totalFrames_);
  readyFrames_ = 0;
  position_ = target;
  if (target == totalFrames_) return;
  if (mpg123_seek(handle_.get(), target, SEEK_SET) < 0) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  const std::int64_t latest = mpg123_tellframe(handle_.get()) - (lowRate_ ? kLowRatePreframes : kPreframes);
  std::int64_t begin = latest - ((latest - decoded_) % kPhases + kPhases) % kPhases;
  if (begin < 0) {
    begin = 0;
    JumpToFrame(0);
    while (decoded_ % kPhases != 0 && DecodeFrame())
      continue;
  }
  JumpToFrame(begin);
  SkipTo(target);
}

void Mp3Decoder::JumpToFrame(std::int64_t mpegFrame) {
  const std::int64_t first = mpegFrame == 0 ? 0 : mpegFrame + 1;  // the library decodes one frame ahead of it
  if (mpg123_seek_frame(handle_.get(), first, SEEK_SET) < 0) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  jumped_ = true;
  readyFrames_ = 0;
}

void Mp3Decoder::SkipTo(std::int64_t target) {
  position_ = mpg123_tell(handle_.get());
  while (position_ < target) {
    if (readyFrames_ == 0 && !DecodeFrame()) break;
    Take(std::min(readyFrames_, static_cast<std::size_t>(target - position_)));
  }
  position_ = target;
}

std::size_t Mp3Decoder::Read(float* out, std::size_t frames) {
  const std::int64_t left = totalFrames_ - position_;
  const std::size_t wanted = std::min(frames, static_cast<std::size_t>(left));
  std::size_t done = 0;
  while (done < wanted) {
    if (readyFrames_ == 0 && !DecodeFrame()) break;
    const std::size_t count = std::min(readyFrames_, wanted - done);
    out = std::copy_n(ready_, count * static_cast<std::size_t>(channels_), out);
    done += count;
    Take(count);
  }
  return done;
}

void Mp3Decoder::Take(std::size_t frames) {
  ready_ += frames * static_cast<std::size_t>(channels_);
  readyFrames_ -= frames;
  position_ += static_cast<std::int64_t>(frames);
}

// A change of format inside the file (a rate that a damaged frame tells) brings no samples: read on. A frame may be
// empty: the encoder's padding is left out. After a jump, and where that padding covers the file's first frame, the
// library has decoded the frame before this one too.
bool Mp3Decoder::DecodeFrame() {
  off_t number = 0;
  unsigned char* samples = nullptr;
  std::size_t bytes = 0;
  int code = MPG123_NEW_FORMAT;
  while (code == MPG123_NEW_FORMAT)
    code = mpg123_decode_frame(handle_.get(), &number, &samples, &bytes);
  if (code != MPG123_OK) return false;
  decoded_ += jumped_ && number > 0 ? 2 : 1;
  jumped_ = false;
  ready_ = reinterpret_cast<const float*>(samples);
  readyFrames_ = bytes / (sizeof(float) * static_cast<std::size_t>(channels_));
  return true;
}

}  // namespace audio
