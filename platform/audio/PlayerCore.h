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

// One thread controls it. Times are milliseconds. No call waits for the sound device; Open reads what must be known of
// the file (see Decoder.h). Errors are audio::Error.
class PlayerCore {
 public:
  // `listener` is called on any thread, also within a call to the player, and only passes the event on: it must not
  // call back. Started and Stopped come in the order of the states, Failed before its Stopped.
  PlayerCore(OutputFactory outputs, Transport::Listener listener);
  ~PlayerCore();
  PlayerCore(const PlayerCore&) = delete;
  PlayerCore& operator=(const PlayerCore&) = delete;

  // Position 0, stopped. What was loaded is let go also when this fails.
  void Open(const std::string& hostPath);
  // The same with sound that is put together by a decoder (see MixDecoder.h); `name` stands for the file name.
  void Open(std::unique_ptr<Decoder> decoder, const std::string& name);
  void Close();
  const std::string& FileName() const { return fileName_; }  // empty when none is loaded

  // From the position, or from 0 when that is at or past the end; nothing while playing. Throws without a file.
  void Start() { transport_.Start(); }
  void Stop() { transport_.Stop(); }      // the position stays
  void Pause() { transport_.Pause(); }    // nothing unless playing
  void Resume() { transport_.Resume(); }  // nothing unless paused; ends playback when the position is at the end

  std::int32_t Position() const;            // what is heard now, 0 to Length(); at the end of the file Length()
  void SetPosition(std::int32_t position);  // held within 0 and Length(); at Length() playback ends
  std::int32_t Length() const;              // exact, nearest millisecond; 0 without a file
  PlayerState State() const { return transport_.State(); }

  OutputSettings Settings() const { return transport_.Settings(); }
  void SetSettings(const OutputSettings& settings) { transport_.SetSettings(settings); }  // from the next start on
  int SeekSetting() const { return seekSetting_; }
  void SetSeekSetting(int setting) { seekSetting_ = setting; }  // kept, without effect: every jump is exact
  int CallBackMode() const { return callBackMode_; }
  void SetCallBackMode(int mode) { callBackMode_ = mode; }  // kept, without effect

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
