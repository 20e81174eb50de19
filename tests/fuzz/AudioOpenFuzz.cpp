// SPDX-License-Identifier: MIT
// Opens any bytes as a sound file, measures it and reads at several positions. Invalid files may only throw
// audio::Error.
#include "platform/audio/Decoder.h"
#include "platform/audio/Error.h"
#include "platform/audio/Measure.h"
#include "tests/fuzz/CpuLimit.h"
#include "tests/fuzz/FuzzTarget.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// A file in memory that has a path.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* data, std::size_t size) : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || write(descriptor_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  ~MemoryFile() { close(descriptor_); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

void Require(bool condition) {
  if (!condition) std::abort();
}

void ReadAround(audio::Decoder& decoder) {
  constexpr std::size_t kFrames = 500;
  Require(decoder.TotalFrames() > 0 && decoder.SampleRate() >= audio::Decoder::kMinRate);
  std::vector<std::int16_t> block(kFrames * static_cast<std::size_t>(decoder.Channels()));
  for (const std::int64_t frame :
       {decoder.TotalFrames() / 2, std::int64_t{0}, decoder.TotalFrames() - 1, decoder.TotalFrames()}) {
    decoder.Seek(frame);
    Require(decoder.Read(block.data(), kFrames) <= static_cast<std::size_t>(decoder.TotalFrames() - frame));
  }
}

}  // namespace

// Known leak in libsndfile when a damaged Ogg file cannot be opened.
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): the sanitizer looks for this name
extern "C" const char* __lsan_default_suppressions() {
  return "leak:vorbis_info_init\nleak:libvorbis\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::CpuLimit cpu;
  const MemoryFile file(data, size);
  try {
    Require(audio::MeasureMs(file.Path()) >= 0);
    ReadAround(*audio::OpenDecoder(file.Path()));
  } catch (const audio::Error&) {
    return 0;
  }
  return 0;
}
