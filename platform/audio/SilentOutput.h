// SPDX-License-Identifier: MIT
// Playback without a device: the clock takes the frames.
#pragma once

#include "platform/audio/Output.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace audio {

// Takes the place of a device that is not there, so that position, levels and the end of the file still come.
class SilentOutput final : public Output {
 public:
  // `status`: the sentence that tells the user why it is silent.
  SilentOutput(int sampleRate, std::string status);
  ~SilentOutput() override;

  int SampleRate() const override { return sampleRate_; }
  void Start(FrameSource& source) override;
  void Stop() noexcept override;
  std::int64_t PendingFrames() const noexcept override { return 0; }
  std::string Status() const override { return status_; }

 private:
  void Run(FrameSource& source);

  int sampleRate_;
  std::string status_;
  std::mutex mutex_;
  std::condition_variable wake_;
  bool stopping_ = false;
  std::thread thread_;
};

}  // namespace audio
