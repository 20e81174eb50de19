#include "platform/audio/Mp3Decoder.h"

#include <mpg123.h>

#include <algorithm>
#include <array>

#include "platform/audio/Error.h"

namespace audio {
namespace {

// Frames decoded and thrown away before a seek's target: the bit reservoir of the lowest bit rates reaches back ten
// frames, the overlap of the filter bank one more.
constexpr long kPreframes = 16;

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
  if (mpg123_open_handle(handle_.get(), file_.get()) != MPG123_OK) {
    throw ReadError(file_->Path(), "dit is geen bekend soort geluidsbestand");
  }
  FixFormat();
  if (mpg123_scan(handle_.get()) != MPG123_OK) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  totalFrames_ = mpg123_length(handle_.get());
}

void Mp3Decoder::Configure() {
  int code = MPG123_OK;
  handle_.reset(mpg123_new(nullptr, &code));
  if (!handle_) throw ReadError(file_->Path(), mpg123_plain_strerror(code));
  mpg123_param(handle_.get(), MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_SKIP_ID3V2 | MPG123_GAPLESS, 0);
  mpg123_param(handle_.get(), MPG123_REMOVE_FLAGS, MPG123_AUTO_RESAMPLE | MPG123_FUZZY, 0);
  mpg123_param(handle_.get(), MPG123_RESYNC_LIMIT, -1, 0);   // garbage in the middle must not end the file
  mpg123_param(handle_.get(), MPG123_INDEX_SIZE, -1000, 0);  // every frame: a seek reads no more than it must
  mpg123_param(handle_.get(), MPG123_PREFRAMES, kPreframes, 0);
  mpg123_replace_reader_handle(handle_.get(), ReadFile, SeekFile, nullptr);
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

void Mp3Decoder::Seek(std::int64_t frame) {
  const std::int64_t target = std::clamp<std::int64_t>(frame, 0, totalFrames_);
  const std::int64_t reached = target < totalFrames_ ? mpg123_seek(handle_.get(), target, SEEK_SET) : target;
  if (reached < 0) throw ReadError(file_->Path(), "de inhoud is beschadigd");
  position_ = reached;
  std::array<float, 4096> skipped{};
  while (position_ < target) {
    const auto step = std::min<std::int64_t>(target - position_, static_cast<std::int64_t>(skipped.size()) / channels_);
    if (Read(skipped.data(), static_cast<std::size_t>(step)) == 0) return;
  }
}

std::size_t Mp3Decoder::Read(float* out, std::size_t frames) {
  const auto wanted =
      static_cast<std::size_t>(std::min<std::int64_t>(static_cast<std::int64_t>(frames), totalFrames_ - position_));
  std::size_t done = 0;
  while (done < wanted) {
    const std::size_t got = ReadSome(out + done * static_cast<std::size_t>(channels_), wanted - done);
    if (got == 0) break;
    done += got;
  }
  position_ += static_cast<std::int64_t>(done);
  return done;
}

// A change of format inside the file (a rate that a damaged frame tells) brings no samples: read on.
std::size_t Mp3Decoder::ReadSome(float* out, std::size_t frames) {
  const std::size_t frameBytes = sizeof(float) * static_cast<std::size_t>(channels_);
  while (true) {
    std::size_t bytes = 0;
    const int code = mpg123_read(handle_.get(), out, frames * frameBytes, &bytes);
    if (bytes >= frameBytes) return bytes / frameBytes;
    if (code != MPG123_NEW_FORMAT) return 0;
  }
}

}  // namespace audio
