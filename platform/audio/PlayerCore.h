// SPDX-License-Identifier: MIT
// The player without Qt: decoding thread, buffers and position.
#pragma once

#include "platform/audio/Feeder.h"
#include "platform/audio/Output.h"
#include "platform/audio/Playout.h"
#include "platform/audio/Transport.h"

#include <cstdint>
#include <memory>
#include <string>

namespace audio {

// Called by one thread at a time. Times are milliseconds. No call waits for the sound device; Open measures the file
// (see Decoder.h). Errors are audio::Error.
class PlayerCore {
 public:
  // `listener` is called on any thread, possibly during a call to the player; it must only forward the event and not
  // call the player. Started and Stopped come in the order of the states, Failed before its Stopped.
  PlayerCore(OutputFactory outputs, Transport::Listener listener);
  ~PlayerCore();
  PlayerCore(const PlayerCore&) = delete;
  PlayerCore& operator=(const PlayerCore&) = delete;

  // Loads a file; then position 0, stopped. The previous file is closed even when this fails.
  void Open(const std::string& hostPath);
  // The same for the sound of a decoder (see MixDecoder.h), with `name` as its file name.
  void Open(std::unique_ptr<Decoder> decoder, const std::string& name);
  void Close();
  const std::string& FileName() const { return fileName_; }  // empty when none is loaded

  // Plays from the position, or from 0 when that is at or past the end; no effect while playing. Throws without a file.
  void Start() { transport_.Start(); }
  void Stop() { transport_.Stop(); }      // keeps the position
  void Pause() { transport_.Pause(); }    // no effect unless playing
  void Resume() { transport_.Resume(); }  // no effect unless paused; ends playback when the position is at the end

  std::int32_t Position() const;            // of the sound heard now, 0 to Length(); at the end of the file Length()
  void SetPosition(std::int32_t position);  // clamped to 0..Length(); at Length() playback ends
  std::int32_t Length() const;              // exact, nearest millisecond; 0 without a file
  PlayerState State() const { return transport_.State(); }

  OutputSettings Settings() const { return transport_.Settings(); }
  void SetSettings(const OutputSettings& settings) { transport_.SetSettings(settings); }  // used from the next start
  int SeekSetting() const { return seekSetting_; }
  void SetSeekSetting(int setting) { seekSetting_ = setting; }  // stored only: every seek is exact
  int CallBackMode() const { return callBackMode_; }
  void SetCallBackMode(int mode) { callBackMode_ = mode; }  // stored only

  PeakLevels TakeLevels() { return playout_.TakeLevels(); }   // peaks since the last call
  std::string Status() const { return transport_.Status(); }  // why playback is silent: a Dutch sentence, or empty

 private:
  std::string fileName_;
  int seekSetting_ = 0;
  int callBackMode_ = 0;
  Playout playout_;
  Transport transport_;
  Feeder feeder_;
};

}  // namespace audio
