// SPDX-License-Identifier: MIT
// Buttons, keys and slider of the player.
#include "media/AudioPreview.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_AudioPreview.h"

#include <QLineEdit>
#include <QShortcut>
#include <QTimer>

using runtime::Trapped;

namespace {

constexpr qint32 kShortJumpMs = 10'000;
constexpr qint32 kLongJumpMs = 30'000;
constexpr int kSeekSettingBack = 50;
constexpr int kSeekSettingForward = 5;

// A jump continues with its next step when the player fails in one.
template <class Step>
void IgnoringErrors(Step&& step) {
  try {
    step();
  } catch (const runtime::Error&) {
  }
}

}  // namespace

// Keys of the complete window. They act immediately; a button's own shortcut would first show it pressed.
void AudioPreview::WireKeys() {
  const auto add = [this](const QKeySequence& keys, void (AudioPreview::*procedure)()) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, procedure);
  };
  add(Qt::CTRL | Qt::Key_Space, &AudioPreview::PlayOrStop);
  add(Qt::CTRL | Qt::Key_M, &AudioPreview::cmdMix_Click);
  add(Qt::ALT | Qt::SHIFT | Qt::Key_Left, &AudioPreview::cmdRREW_Click);
  add(Qt::ALT | Qt::Key_Left, &AudioPreview::cmdREW_Click);
  add(Qt::ALT | Qt::Key_Right, &AudioPreview::cmdFFW_Click);
  add(Qt::ALT | Qt::SHIFT | Qt::Key_Right, &AudioPreview::cmdFFFW_Click);
}

void AudioPreview::cmdPlay_Click() {
  Trapped(__func__, [&] {
    if (player_->FileName().isEmpty()) {
      OpenFile(txtPath_->text());
      ui_->sliPlay->setMaximum(player_->Length());
    }
    StopTest();
    player_->Stop();
    player_->Start();
    tmrPlayer_->start();
  });
}

void AudioPreview::cmdSTOP_Click() {
  Trapped(__func__, [&] {
    StopTest();
    player_->Stop();
  });
}

void AudioPreview::PlayOrStop() {
  if (player_->State() == audio::kPlaying) {
    cmdSTOP_Click();
  } else {
    cmdPlay_Click();
  }
}

void AudioPreview::cmdRREW_Click() {
  JumpBack(kLongJumpMs);
}
void AudioPreview::cmdREW_Click() {
  JumpBack(kShortJumpMs);
}
void AudioPreview::cmdFFW_Click() {
  JumpForward(kShortJumpMs);
}
void AudioPreview::cmdFFFW_Click() {
  JumpForward(kLongJumpMs);
}

void AudioPreview::JumpBack(qint32 step) {
  if (player_->State() != audio::kPlaying) return;
  const auto seeking = HoldDisplay();
  IgnoringErrors([&] { player_->Pause(); });
  IgnoringErrors([&] { player_->SetSeekSetting(kSeekSettingBack); });
  IgnoringErrors([&] {
    const qint32 position = player_->Position();
    player_->SetPosition(position < step + 1 ? 0 : position - step);
  });
  IgnoringErrors([&] { player_->Resume(); });
}

// May be after the end: the player then stops.
void AudioPreview::JumpForward(qint32 step) {
  if (player_->State() != audio::kPlaying || player_->Position() >= player_->Length()) return;
  const auto seeking = HoldDisplay();
  IgnoringErrors([&] { player_->Pause(); });
  IgnoringErrors([&] { player_->SetSeekSetting(kSeekSettingForward); });
  IgnoringErrors([&] { player_->SetPosition(runtime::SubtractLong(player_->Position(), -step)); });
  IgnoringErrors([&] { player_->Resume(); });
}

void AudioPreview::sliPlay_Pressed() {
  seeking_ = true;
}

void AudioPreview::sliPlay_Released() {
  Trapped(__func__, [&] { SeekTo(ui_->sliPlay->value()); });
}

void AudioPreview::strip_Seek(qint64 position) {
  Trapped(__func__, [&] { SeekTo(static_cast<qint32>(position)); });
}

// The flag is reset even when the player fails. Panels and slider then show the position, playing or not.
void AudioPreview::SeekTo(qint32 position) {
  {
    const auto seeking = HoldDisplay();
    player_->Pause();
    player_->SetPosition(position);
    player_->Resume();
  }
  DrawTime();
}
