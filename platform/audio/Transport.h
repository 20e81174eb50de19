// SPDX-License-Identifier: MIT
// The player's state, shared by the controlling thread and the decoding thread.
#pragma once

#include "platform/audio/Decoder.h"
#include "platform/audio/Output.h"
#include "platform/audio/Playout.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace audio {

enum PlayerState { kNoFile = 0, kStopped = 1, kPaused = 2, kPlaying = 6 };

struct PlayerEvent {
  enum class Kind { Started, Stopped, Failed, Status };
  Kind kind;
  std::string text;  // Failed, Status: a Dutch sentence
};

struct OutputSettings {
  int device = 0;
  int numBuffers = 20;
  int bufferBytes = 2048;
  bool operator==(const OutputSettings&) const = default;
};

// A state machine with one mutex. An order to the decoding thread is a snapshot of the wanted state, not a queue, so a
// hundred position changes in a row cost one seek. Events are reported while the mutex is locked, so that they come in
// the order of the states; the listener must only forward them.
class Transport {
 public:
  using Listener = std::function<void(const PlayerEvent&)>;
  Transport(Playout& playout, Listener listener) : playout_(playout), listener_(std::move(listener)) {}

  // Controlling thread. Positions are frames of the file; see PlayerCore for the functions.
  void Load(std::unique_ptr<Decoder> decoder);  // null: no file
  void Start();
  void Stop();
  void Pause();
  void Resume();
  void SetPosition(std::int64_t frame);
  std::int64_t Position() const;
  std::int64_t TotalFrames() const;
  int SampleRate() const;  // 0 without a file
  PlayerState State() const;
  void SetSettings(const OutputSettings& settings);
  OutputSettings Settings() const;
  std::string Status() const;
  void Quit();

  // The wanted state, for the decoding thread.
  struct Order {
    bool quit = false;
    bool running = false;  // playing or paused
    std::uint16_t generation = 0;
    std::int64_t startFrame = 0;  // the file's frame at which the generation begins
    OutputSettings settings;
    std::optional<std::unique_ptr<Decoder>> newDecoder;  // null inside: no file
  };
  // Waits until something changed, at most for `wait`; without a limit if that is negative.
  Order Await(std::chrono::milliseconds wait);
  void AttachOutput(std::shared_ptr<Output> output);  // null while there is none
  void ReachEnd(std::uint16_t generation);
  void Fail(const std::string& text);

 private:
  std::int64_t HeardFrame() const;
  void BeginGeneration(std::int64_t frame);
  void EndPlayback(std::int64_t position);
  void Changed();

  Playout& playout_;
  Listener listener_;
  mutable std::mutex mutex_;
  std::condition_variable wake_;
  bool changed_ = false;
  bool quit_ = false;

  PlayerState state_ = kNoFile;
  std::int64_t position_ = 0;       // while stopped; while running, the generation's first frame
  mutable std::int64_t heard_ = 0;  // highest frame reported in this generation; the position never decreases
  std::uint16_t generation_ = 0;
  std::int64_t totalFrames_ = 0;
  int sampleRate_ = 0;
  OutputSettings settings_;
  std::optional<std::unique_ptr<Decoder>> newDecoder_;
  std::shared_ptr<Output> output_;
  std::string status_;
};

}  // namespace audio
