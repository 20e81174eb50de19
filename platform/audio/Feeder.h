// SPDX-License-Identifier: MIT
// The decoding thread: keeps the ring filled and starts and stops the output.
#pragma once

#include "platform/audio/Output.h"
#include "platform/audio/Playout.h"
#include "platform/audio/StereoStream.h"
#include "platform/audio/Transport.h"

#include <chrono>
#include <memory>
#include <thread>

namespace audio {

// Does all slow work: opening a device, seeking, decoding. Ends with Transport::Quit.
class Feeder {
 public:
  // `transport` and `playout` must outlive the feeder. The destructor waits for the thread: call Transport::Quit first.
  Feeder(Transport& transport, Playout& playout, OutputFactory outputs);
  ~Feeder();

 private:
  void Run();
  void Apply(const Transport::Order& order);
  void TakeDecoder(std::unique_ptr<Decoder> decoder);
  void PrepareOutput(const OutputSettings& settings);
  void Rewind(const Transport::Order& order);
  void FillRing();
  void StartOutput();
  void StopOutput();
  void CloseOutput();
  void Watch();
  std::chrono::milliseconds Pause() const;

  Transport& transport_;
  Playout& playout_;
  OutputFactory outputs_;
  std::unique_ptr<Decoder> decoder_;
  std::unique_ptr<StereoStream> stream_;
  std::shared_ptr<Output> output_;
  OutputSettings openedWith_;
  int openedRate_ = 0;    // Hz, of the file for which the output was opened
  bool started_ = false;  // output_ runs
  bool active_ = false;   // the latest order says: running
  std::uint16_t generation_ = 0;
  bool allWritten_ = false;  // the last block of this generation is in the ring
  std::thread thread_;
};

}  // namespace audio
