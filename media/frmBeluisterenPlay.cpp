// SPDX-License-Identifier: MIT
// Buttons, keys and time display of the listening window.
#include "data/Messages.h"
#include "media/SplitTime.h"
#include "media/frmBeluisteren.h"
#include "media/ui_frmBeluisteren.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/desktop/Icons.h"
#include "platform/runtime/Trapped.h"

#include <QShortcut>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

// Playback starts this long before the next sound, to hear the mix.
constexpr qint64 kBeforeMixMs = 3000;
// After a seek the reported position may be slightly earlier.
constexpr qint64 kSlackMs = 20;
constexpr int kButtonHeight = 36;
constexpr int kButtonPadding = 20;

}  // namespace

void frmBeluisteren::SetUpIcons() {
  const int height = std::max(kButtonHeight, fontMetrics().height() + kButtonPadding);
  for (QPushButton* button : {ui_->cmdPlay, ui_->cmdSTOP, ui_->cmdVolgendeMix})
    button->setMinimumHeight(height);
  ui_->cmdPlay->setIcon(desktop::Icon(u"play"_s, desktop::IconTint::Accent));
  ui_->cmdSTOP->setIcon(desktop::Icon(u"stop"_s));
  ui_->cmdVolgendeMix->setIcon(desktop::Icon(u"ffw"_s));
}

void frmBeluisteren::WirePlayer() {
  connect(ui_->cmdPlay, &QPushButton::clicked, this, &frmBeluisteren::cmdPlay_Click);
  connect(ui_->cmdSTOP, &QPushButton::clicked, this, &frmBeluisteren::cmdSTOP_Click);
  connect(ui_->cmdVolgendeMix, &QPushButton::clicked, this, &frmBeluisteren::cmdVolgendeMix_Click);
  connect(ui_->cmdSluiten, &QPushButton::clicked, this, &frmBeluisteren::cmdSluiten_Click);
  connect(ui_->strip, &controls::ClipStrip::seekRequested, this, &frmBeluisteren::SeekTo);
  connect(ui_->strip, &controls::ClipStrip::playStopRequested, this, &frmBeluisteren::PlayOrStop);
  connect(tmrPlayer_, &QTimer::timeout, this, &frmBeluisteren::tmrPlayer_Timer);
  connect(player_, &audio::AudioPlayer::started, tmrPlayer_, qOverload<>(&QTimer::start));
  connect(player_, &audio::AudioPlayer::stopped, this, [this] {
    tmrPlayer_->stop();
    DrawTime();
  });
  connect(player_, &audio::AudioPlayer::failed, this, [](const QString& message) {
    Trapped("Player_Failed", [&] { ShowItemsMessage(message, kStyleExclamation); });
  });
  connect(player_, &audio::AudioPlayer::statusChanged, this, &frmBeluisteren::ShowStatus);
}

void frmBeluisteren::WireKeys() {
  const auto add = [this](const QKeySequence& keys, void (frmBeluisteren::*procedure)()) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, procedure);
  };
  add(Qt::CTRL | Qt::Key_Space, &frmBeluisteren::PlayOrStop);
  add(Qt::CTRL | Qt::Key_M, &frmBeluisteren::cmdVolgendeMix_Click);
}

void frmBeluisteren::cmdPlay_Click() {
  Trapped(__func__, [&] {
    if (player_->Length() == 0) return;
    player_->Stop();
    player_->Start();
    tmrPlayer_->start();
  });
}

void frmBeluisteren::cmdSTOP_Click() {
  Trapped(__func__, [&] { player_->Stop(); });
}

void frmBeluisteren::PlayOrStop() {
  if (player_->State() == audio::kPlaying) {
    cmdSTOP_Click();
  } else {
    cmdPlay_Click();
  }
}

// After the last one it continues with the first.
void frmBeluisteren::cmdVolgendeMix_Click() {
  Trapped(__func__, [&] {
    if (starts_.size() < 2) return;
    const qint64 now = player_->Position();
    const auto next = std::find_if(starts_.begin() + 1, starts_.end(),
                                   [&](qint64 start) { return start - kBeforeMixMs > now + kSlackMs; });
    const qint64 start = next == starts_.end() ? starts_[1] : *next;
    SeekTo(std::max<qint64>(0, start - kBeforeMixMs));
  });
}

void frmBeluisteren::SeekTo(qint64 position) {
  Trapped(__func__, [&] {
    player_->Pause();
    player_->SetPosition(static_cast<qint32>(position));
    player_->Resume();
    DrawTime();
  });
}

void frmBeluisteren::tmrPlayer_Timer() {
  Trapped(__func__, [&] {
    DrawTime();
    const audio::PeakLevels levels = player_->Levels();
    ui_->levelLeft->SetLevel(static_cast<double>(levels.left));
    ui_->levelRight->SetLevel(static_cast<double>(levels.right));
  });
}

void frmBeluisteren::DrawTime() {
  const SplitTime now = Split(player_->Position());
  ui_->strip->SetPositionMs(player_->Position());
  ui_->ledMin->SetValue(now.hours * 60 + now.minutes);
  ui_->ledSec->SetValue(now.seconds);
  ui_->ledMilli->SetValue(now.milliseconds);
}

void frmBeluisteren::ShowStatus(const QString& text) {
  ui_->lblGeluid->setText(text);
  ui_->lblGeluid->setToolTip(text);
}
