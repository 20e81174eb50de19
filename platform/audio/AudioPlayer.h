// SPDX-License-Identifier: MIT
// The player of the editors: PlayerCore with Qt signals on the user-interface thread.
#pragma once

#include "platform/audio/Output.h"
#include "platform/audio/PlayerCore.h"

#include <QObject>
#include <QString>

#include <memory>

namespace audio {

// Belongs to the user-interface thread: every call from there, every signal arrives there, always through the event
// loop, in the order in which things happened. Times are milliseconds. Failures are runtime::Error, Dutch, naming the
// file. Nothing here waits for the sound device: it is opened in the background when playback begins.
class AudioPlayer : public QObject {
  Q_OBJECT

 public:
  explicit AudioPlayer(QObject* parent = nullptr);  // plays on the sound device
  // `outputs` makes the sound output of each playback; tests pass one that makes a PulledOutput.
  explicit AudioPlayer(OutputFactory outputs, QObject* parent = nullptr);
  ~AudioPlayer() override;

  // Loads the file at a path of the host and measures it exactly; position 0, stopped. What was loaded is let go also
  // when this fails.
  void Open(const QString& hostPath);
  // The same with sound that a decoder puts together (see MixDecoder.h); `name` stands for the file name.
  void Open(std::unique_ptr<Decoder> decoder, const QString& name);
  void Close();
  QString FileName() const;  // as given to Open; empty when none is loaded

  void Start();   // from the position; from 0 when that is at or past the end
  void Stop();    // the position stays
  void Pause();   // holds playback while the position is changed; nothing unless playing
  void Resume();  // nothing unless paused

  qint32 Position() const;            // what is heard now, 0 to Length()
  void SetPosition(qint32 position);  // held within 0 and Length(); at the end, playback ends (once resumed, if paused)
  qint32 Length() const;              // exact, rounded to the nearest millisecond; 0 when none is loaded
  int State() const;                  // kPlaying (6), or another value of PlayerState

  int SeekSetting() const;
  void SetSeekSetting(int setting);  // kept, without effect: every jump is exact
  int DeviceID() const;
  void SetDeviceID(int device);  // n-th output device of the host's default sound system, from 0; -1 = its default
  int CallBackMode() const;
  void SetCallBackMode(int mode);  // kept, without effect
  int NumBuffers() const;
  void SetNumBuffers(int count);  // 1 to 64; 0 or below: 20
  int BufferSize() const;
  void SetBufferSize(int bytes);  // bytes, up to 65536; 0 or below: 2048

  PeakLevels Levels();  // peak of each channel since the last call, in dBFS

  // Empty, or a Dutch sentence for a status line: why playback is silent.
  QString StatusText() const;

 Q_SIGNALS:
  void started();
  void stopped();                           // also at the end of the file
  void failed(const QString& message);      // the device was lost while playing; stopped() follows
  void statusChanged(const QString& text);  // StatusText() became this; once per player and reason

 private:
  void Deliver(const PlayerEvent& event);

  QString fileName_;
  std::unique_ptr<PlayerCore> core_;
};

}  // namespace audio
