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

// MPEG frames decoded and discarded before a seek's target. The bit reservoir of MPEG 1 reaches back 511 bytes, and a
// frame of the lowest bit rate (48 kHz, 32 kbit/s, stereo) has 58 of them; the filter bank's overlap needs one more
// frame. In MPEG 2 it is 255 bytes, three per frame (24 kHz, 8 kbit/s, stereo).
constexpr int kPreframes = 16;
constexpr int kLowRatePreframes = 96;
// The synthesis filter's buffer rotates with a period of this many MPEG frames.
constexpr int kPhases = 8;
// After this many bytes without a frame the sound has ended; at the beginning: the file is not MPEG audio.
constexpr long kMaxGarbage = 16L << 20;

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
  ReadMpegVersion();
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
  // Garbage in the middle must not end the file, but it is scanned byte by byte and could be gigabytes long.
  mpg123_param(handle_.get(), MPG123_RESYNC_LIMIT, kMaxGarbage, 0);
  mpg123_param(handle_.get(), MPG123_INDEX_SIZE, -1000, 0);  // index every frame, so that a seek reads no extra frames
  mpg123_param(handle_.get(), MPG123_PREFRAMES, 1, 0);
  mpg123_replace_reader_handle(handle_.get(), ReadFile, SeekFile, nullptr);
}

void Mp3Decoder::OpenHandle() {
  file_->Seek(0, SEEK_SET);
  if (mpg123_open_handle(handle_.get(), file_.get()) != MPG123_OK) {
    throw ReadError(file_->Path(), "dit is geen bekend soort geluidsbestand");
  }
}

// libmpg123 recognises the length headers "Xing" and "Info" only and would decode a frame with the header "VBRI" as
// sound. Such a file is reopened to begin after that frame. The mark is 32 bytes after the four-byte frame header.
void Mp3Decoder::SkipVbriHeader() {
  constexpr std::size_t kMarkOffset = 32;
  constexpr std::string_view kMark = "VBRI";
  unsigned long start = 0;
  unsigned char* body = nullptr;
  std::size_t bytes = 0;
  if (mpg123_framedata(handle_.get(), &start, &body, &bytes) != MPG123_OK || bytes < kMarkOffset + kMark.size()) return;
  if (std::memcmp(body + kMarkOffset, kMark.data(), kMark.size()) != 0) return;
  file_->BeginAt(mpg123_tell_stream(handle_.get()));
  mpg123_close(handle_.get());
  OpenHandle();
  FixFormat();
}

// The first frame sets rate and channels; later frames with another number of channels are converted.
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

void Mp3Decoder::ReadMpegVersion() {
  mpg123_frameinfo info{};
  lowRate_ = mpg123_info(handle_.get(), &info) == MPG123_OK && info.version != MPG123_1_0;
}

// The last bit of a sample depends on how many MPEG frames the synthesis filter has processed, modulo 8, because its
// buffer rotates and with it the order of its sums. A seek therefore starts a few frames early, at a frame that puts
// the filter into the same phase, and discards the frames before the target. In MPEG 2 the phase is uncertain: right
// after a jump libmpg123 skips the filter for some frames without their bit reservoir and does not report which.
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
  const std::int64_t first = mpegFrame == 0 ? 0 : mpegFrame + 1;  // the library starts decoding one frame earlier
  if (mpg123_seek_frame(handle_.get(), first, SEEK_SET) < 0) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  jumped_ = true;
  readyFrames_ = 0;
}

void Mp3Decoder::SkipTo(std::int64_t target) {
  position_ = mpg123_tell(handle_.get());
  while (position_ < target) {
    if (readyFrames_ == 0 && !DecodeFrame()) break;
    Consume(std::min(readyFrames_, static_cast<std::size_t>(target - position_)));
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
    Consume(count);
  }
  return done;
}

void Mp3Decoder::Consume(std::size_t frames) {
  ready_ += frames * static_cast<std::size_t>(channels_);
  readyFrames_ -= frames;
  position_ += static_cast<std::int64_t>(frames);
}

// A format change within the file (a damaged frame with another rate) yields no samples, so decoding continues. A frame
// is empty when it has only the encoder's padding. After a jump, and when that padding covers the first frame, the
// library has also decoded the previous frame.
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
