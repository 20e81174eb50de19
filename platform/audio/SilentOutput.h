// SPDX-License-Identifier: MIT
// Output without a device: consumes the frames by the clock.
#pragma once

#include "platform/audio/Output.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace audio {

// Replaces a missing device, so that position, levels and the end of the file still work.
class SilentOutput final : public Output {
 public:
  // `status` is the sentence that explains to the user why it is silent.
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
