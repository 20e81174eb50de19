// SPDX-License-Identifier: MIT
// PlayerCore with Qt signals, for windows.
#pragma once

#include "platform/audio/Output.h"
#include "platform/audio/PlayerCore.h"

#include <QObject>
#include <QString>

#include <memory>

namespace audio {

// All calls on the user-interface thread; signals arrive there through the event loop, in the order of the events.
// Times are milliseconds. Errors are runtime::Error with a Dutch text that contains the path. No call waits for the
// sound device: it is opened in the background when playback starts.
class AudioPlayer : public QObject {
  Q_OBJECT

 public:
  explicit AudioPlayer(QObject* parent = nullptr);  // plays on the sound device
  // `outputs` creates the sound output of each playback; tests pass one that creates a PulledOutput.
  explicit AudioPlayer(OutputFactory outputs, QObject* parent = nullptr);
  ~AudioPlayer() override;

  // Loads the file at a host path and measures its exact length; then position 0, stopped. The previous file is closed
  // even when this fails.
  void Open(const QString& hostPath);
  // The same for the sound of a decoder (see MixDecoder.h), with `name` as its file name. Takes ownership.
  void Open(std::unique_ptr<Decoder> decoder, const QString& name);
  void Close();
  QString FileName() const;  // as given to Open; empty when none is loaded

  void Start();   // from the position; from 0 when that is at or past the end. Throws when no file is loaded
  void Stop();    // keeps the position
  void Pause();   // holds playback, for example while the position is changed; no effect unless playing
  void Resume();  // no effect unless paused

  qint32 Position() const;            // of the sound heard now, 0 to Length()
  void SetPosition(qint32 position);  // clamped to 0..Length(); at Length() playback ends (if paused: on Resume)
  qint32 Length() const;              // exact, rounded to the nearest millisecond; 0 when none is loaded
  int State() const;                  // kPlaying (6), or another value of PlayerState

  int SeekSetting() const;
  void SetSeekSetting(int setting);  // stored only: every seek is exact
  int DeviceID() const;
  void SetDeviceID(int device);  // n-th output device of the host's default sound system, from 0; -1 = its default
  int CallBackMode() const;
  void SetCallBackMode(int mode);  // stored only
  int NumBuffers() const;
  void SetNumBuffers(int count);  // clamped to 2..64 when used; 0 or below: 20
  int BufferSize() const;
  void SetBufferSize(int bytes);  // bytes, up to 65536; 0 or below: 2048

  PeakLevels Levels();  // peak of each channel since the last call, in dBFS

  // Why playback is silent: a Dutch sentence for a status line, or empty.
  QString StatusText() const;

 Q_SIGNALS:
  void started();
  void stopped();                           // also at the end of the file
  void failed(const QString& message);      // the device was lost while playing; stopped() follows
  void statusChanged(const QString& text);  // the new StatusText(); once per reason

 private:
  void Deliver(const PlayerEvent& event);

  QString fileName_;
  std::unique_ptr<PlayerCore> core_;
};

}  // namespace audio
