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

// The player of both editors: listens to the chosen file, measures its length and marks the mix point. It belongs to
// one open editor. Times are milliseconds. User-interface thread only.
class AudioPreview : public QGroupBox {
  Q_OBJECT

 public:
  explicit AudioPreview(QWidget* parent = nullptr);
  ~AudioPreview() override;

  // The editor's fields for the path (read), the length in seconds and the loudness (filled). All outlive the preview's
  // use.
  void Attach(QLineEdit* txtPath, QLineEdit* txtLengteSec, QLabel* lblLuidheid);

  // Brings the audio settings to the player.
  void InitAudio();
  // Loads the file at a path text and shows its length; nothing for an empty text. Throws runtime::Error naming the
  // file.
  void LaadBestand(const QString& bestand);
  // The time left on the panels, the position on the slider; neither while the position is being changed.
  void DrawTime();

  // The record's own mix point. One outside of the panel's range is kept until the user sets another.
  // Tells which sound (path text) follows this one in a block, for TEST with a lead-in; empty when none does. Asked
  // when TEST is pressed.
  void SetNextSound(std::function<QString()> nextSound) { nextSound_ = std::move(nextSound); }

  void FillMix(qint32 mixPunt);
  qint32 MixPunt() const;

  // How the file at a path text was found when it was last opened; nothing when another one was.
  std::optional<runtime::Presence> FilePresence(const QString& path) const;
  // Folder of the host from which the last file came; empty before the first one.
  QString LastFolder() const;

  // Ends playback and reading, for an editor that closes.
  void Close();

  audio::AudioPlayer& Player() { return *player_; }
  QTimer& TmrPlayer() { return *tmrPlayer_; }

  // One key for both buttons.
  void PlayOrStop();

 Q_SIGNALS:
  // FilePresence() may be another one.
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
  // Panels and slider stand still until the guard goes. Then they follow again, also where the user still held the
  // slider.
  auto HoldDisplay() {
    seeking_ = true;
    return qScopeGuard([this] { seeking_ = false; });
  }
  void SetMix(qint32 mixPunt);
  // Whether a file is open; without one, the line of the player says so.
  bool HasFile();
  void ShowStatus(const QString& text);

  std::unique_ptr<Ui::AudioPreview> ui_;
  audio::AudioPlayer* player_;
  QTimer* tmrPlayer_;
  audio::AudioPlayer* tester_ = nullptr;  // plays this sound with the next one over it; made when it is needed
  std::function<QString()> nextSound_;
  std::unique_ptr<WaveformFeed> waveform_;
  std::unique_ptr<LoudnessReader> loudness_;
  QLineEdit* txtPath_ = nullptr;
  QLineEdit* txtLengteSec_ = nullptr;
  QLabel* lblLuidheid_ = nullptr;

  bool seeking_ = false;  // the position is being changed, by the program or by the user
  qint16 lastMinutes_ = 0;
  qint16 lastSeconds_ = 0;
  qint16 lastMilliseconds_ = 0;
  std::optional<qint32> keptMix_;  // the record's mix point while the user has not set another
  QString lookedFor_;              // path text of the file opened last, whether that succeeded or not
  runtime::Presence presence_ = runtime::Presence::There;
};
