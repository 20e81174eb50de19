// SPDX-License-Identifier: MIT
#include "platform/audio/Peaks.h"

#include "platform/audio/Error.h"
#include "platform/audio/PeakWork.h"

#include <algorithm>
#include <future>
#include <memory>
#include <thread>

namespace audio {
namespace {

// A file that cannot be opened again, or was replaced, is read by the calling thread alone.
void Help(const std::string& hostPath, PeakWork& work) {
  std::unique_ptr<Decoder> decoder;
  try {
    decoder = OpenDecoder(hostPath);
  } catch (const Error&) {
    return;
  }
  if (work.Fits(*decoder)) work.TakePart(*decoder);
}

}  // namespace

std::size_t PeakSplit::ThreadsHere() {
  constexpr std::size_t kMaxThreads = 4;
  return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, kMaxThreads);
}

Peaks ReadPeaks(const std::string& hostPath, const PeakProgress& progress, const PeakSplit& split) {
  const std::unique_ptr<Decoder> decoder = OpenDecoder(hostPath);
  PeakWork work(*decoder, progress, split);
  const std::size_t threads = decoder->SeeksExactly() ? std::min(split.threads, work.Stretches()) : 1;
  std::vector<std::future<void>> helpers;  // their destructors wait for the threads
  for (std::size_t thread = 1; thread < threads; ++thread) {
    helpers.push_back(std::async(std::launch::async, [&] { Help(hostPath, work); }));
  }
  work.TakePart(*decoder);
  for (std::future<void>& helper : helpers)
    helper.get();
  return std::move(work).Result();
}

}  // namespace audio
