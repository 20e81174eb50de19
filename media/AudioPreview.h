// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Probe.h"

#include <QGroupBox>
#include <QScopeGuard>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

class LoudnessReader;
class QLabel;
class QLineEdit;
class QTimer;
class WaveformFeed;

namespace Ui {
class AudioPreview;
}
namespace audio {
class AudioPlayer;
}

// The player of both editors: plays the chosen file, measures its length and sets the mix point. Belongs to one open
// editor. Times are milliseconds. User-interface thread only.
class AudioPreview : public QGroupBox {
  Q_OBJECT

 public:
  explicit AudioPreview(QWidget* parent = nullptr);
  ~AudioPreview() override;

  // The editor's fields for the path (read), the length in seconds and the loudness (filled). They must outlive the
  // preview.
  void Attach(QLineEdit* txtPath, QLineEdit* txtLengteSec, QLabel* lblLuidheid);

  // Passes the audio settings to the player.
  void InitAudio();
  // Loads the file at a path text and shows its length; does nothing for an empty text. Throws a runtime::Error that
  // names the file.
  void LaadBestand(const QString& bestand);
  // Shows the remaining time on the panels and the position on the slider, except while the position is being changed.
  void DrawTime();

  // `next` returns the sound (path text) that follows this one in a block, for TEST with a lead-in; empty for none.
  // Called when TEST is pressed.
  void SetNextSound(std::function<QString()> nextSound) { nextSound_ = std::move(nextSound); }

  // Sets the record's mix point. A value outside the panel's range is kept until the user sets another.
  void FillMix(qint32 mixPunt);
  qint32 MixPunt() const;

  // Presence of the file at a path text at the last Open; empty when another file was opened.
  std::optional<runtime::Presence> FilePresence(const QString& path) const;
  // Host folder of the last file; empty before the first file.
  QString LastFolder() const;

  // Stops playback and reading, for an editor that closes.
  void Close();

  audio::AudioPlayer& Player() { return *player_; }
  QTimer& TmrPlayer() { return *tmrPlayer_; }

  // One key for play and pause.
  void PlayOrStop();

 Q_SIGNALS:
  // The result of FilePresence() may have changed.
  void filePresenceChanged();

 private:
  void SetIcons();
  void WireTransport();
  void WireMix();
  void WireStrip();
  void WireKeys();
  void WireLoudness();

  void cmdPlay_Click();
  void cmdSTOP_Click();
  void cmdRREW_Click();
  void cmdREW_Click();
  void cmdFFW_Click();
  void cmdFFFW_Click();
  void sliPlay_Pressed();
  void sliPlay_Released();
  void tmrPlayer_Timer();
  void Player_Start();
  void Player_Failed(const QString& message);
  void cmdMix_Click();
  void cmdResetMix_Click();
  void cmdTestMix_Click();
  void TestWithLeadIn();
  bool PlayWithNext(qint32 position);
  void StopTest();
  void ledMix_Click();
  void strip_Seek(qint64 position);

  void OpenFile(const QString& bestand);
  void OpenInPlayer(const QString& hostPath, const QString& path);
  void ForgetFile(const QString& reason);
  void JumpBack(qint32 step);
  void JumpForward(qint32 step);
  void SeekTo(qint32 position);
  // Panels and slider are not updated until the guard is destroyed. Then they are, even if the user still holds the
  // slider.
  auto HoldDisplay() {
    seeking_ = true;
    return qScopeGuard([this] { seeking_ = false; });
  }
  void SetMix(qint32 mixPunt);
  void ShowMixSaved();
  // True when a file is open; otherwise shows a text in the player's line.
  bool HasFile();
  void ShowStatus(const QString& text);

  std::unique_ptr<Ui::AudioPreview> ui_;
  audio::AudioPlayer* player_;
  QTimer* tmrPlayer_;
  audio::AudioPlayer* tester_ = nullptr;  // plays this sound overlapped by the next; created when needed
  std::function<QString()> nextSound_;
  std::unique_ptr<WaveformFeed> waveform_;
  std::unique_ptr<LoudnessReader> loudness_;
  QLineEdit* txtPath_ = nullptr;
  QLineEdit* txtLengteSec_ = nullptr;
  QLabel* lblLuidheid_ = nullptr;

  bool seeking_ = false;  // the program or the user is changing the position
  qint16 lastMinutes_ = 0;
  qint16 lastSeconds_ = 0;
  qint16 lastMilliseconds_ = 0;
  qint32 savedMix_ = 0;              // the record's
  std::optional<qint32> storedMix_;  // the record's mix point until the user sets another
  QString lastFile_;                 // path text of the last file opened, even if that failed
  runtime::Presence presence_ = runtime::Presence::There;
};
