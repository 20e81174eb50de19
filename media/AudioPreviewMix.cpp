// SPDX-License-Identifier: MIT
// The mix point: milliseconds before the end at which the next element may start.
#include "data/Globals.h"
#include "media/AudioPreview.h"
#include "media/SoundOutput.h"
#include "media/WaveformFeed.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/audio/Error.h"
#include "platform/audio/MixDecoder.h"
#include "platform/desktop/InputBox.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_AudioPreview.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr qint32 kLeadInMs = 3000;

}  // namespace

void AudioPreview::WireMix() {
  connect(ui_->cmdMix, &QPushButton::clicked, this, &AudioPreview::cmdMix_Click);
  connect(ui_->cmdResetMix, &QPushButton::clicked, this, &AudioPreview::cmdResetMix_Click);
  connect(ui_->cmdTestMix, &QPushButton::clicked, this, &AudioPreview::cmdTestMix_Click);
  connect(ui_->ledMix, &controls::LedSpin::clicked, this, &AudioPreview::ledMix_Click);
  connect(ui_->ledMix, &controls::LedSpin::valueChanged, this, [this](int mixPunt) {
    storedMix_.reset();
    ui_->waveform->SetMixMs(mixPunt);
    ShowMixSaved();
  });
}

// Cancelling the editor does not ask about the mix point.
void AudioPreview::ShowMixSaved() {
  ui_->lblMixUnit->setText(MixPunt() == savedMix_ ? tr("ms vóór het einde") : tr("nog niet bewaard"));
}

void AudioPreview::WireStrip() {
  connect(ui_->waveform, &controls::WaveformStrip::seekRequested, this, &AudioPreview::strip_Seek);
  connect(ui_->waveform, &controls::WaveformStrip::mixMoved, this,
          [this](qint64 mixPunt) { SetMix(static_cast<qint32>(mixPunt)); });
  connect(ui_->waveform, &controls::WaveformStrip::playStopRequested, this, &AudioPreview::PlayOrStop);
  connect(ui_->waveform, &controls::WaveformStrip::zoomedChanged, ui_->cmdZoom, &QPushButton::setChecked);
  connect(ui_->waveform, &controls::WaveformStrip::viewChanged, ui_->sliPlay, &controls::PositionSlider::SetView);
  connect(ui_->cmdZoom, &QPushButton::toggled, ui_->waveform, &controls::WaveformStrip::SetZoomed);
  connect(ui_->sliPlay, &controls::PositionSlider::valueChanged, ui_->waveform,
          &controls::WaveformStrip::SetPositionMs);
}

void AudioPreview::FillMix(qint32 mixPunt) {
  ui_->ledMix->SetValue(mixPunt);
  storedMix_ = savedMix_ = mixPunt;
  ShowMixSaved();
}

qint32 AudioPreview::MixPunt() const {
  return storedMix_.value_or(ui_->ledMix->Value());
}

void AudioPreview::SetMix(qint32 mixPunt) {
  storedMix_.reset();
  ui_->ledMix->SetValue(mixPunt);
}

// Without a file there is no position to set and nothing to play; the mix point is not changed.
bool AudioPreview::HasFile() {
  if (!player_->FileName().isEmpty()) return true;
  ShowStatus(u"Er is geen geluidsbestand geopend; kies er een met 'Path ...'."_s);
  return false;
}

void AudioPreview::cmdMix_Click() {
  if (!HasFile()) return;
  Trapped(__func__, [&] { SetMix(runtime::SubtractLong(player_->Length(), player_->Position())); });
}

void AudioPreview::cmdResetMix_Click() {
  SetMix(0);
}

void AudioPreview::cmdTestMix_Click() {
  if (!HasFile()) return;
  Trapped(__func__, [&] {
    player_->Stop();
    StopTest();
    if (ui_->chkAanloop->isChecked()) return TestWithLeadIn();
    {
      const auto seeking = HoldDisplay();
      player_->SetPosition(runtime::SubtractLong(player_->Length(), ui_->ledMix->Value()));
      ui_->sliPlay->setValue(player_->Position());
    }
    player_->Start();
  });
}

// Plays from three seconds before the mix point, with the next sound of a block if there is one.
void AudioPreview::TestWithLeadIn() {
  const qint32 position =
      std::max(0, runtime::SubtractLong(runtime::SubtractLong(player_->Length(), ui_->ledMix->Value()), kLeadInMs));
  if (PlayWithNext(position)) return;
  {
    const auto seeking = HoldDisplay();
    player_->SetPosition(position);
    ui_->sliPlay->setValue(player_->Position());
  }
  player_->Start();
}

// False when no sound follows. An error in reading the next sound names its file.
bool AudioPreview::PlayWithNext(qint32 position) {
  const QString next = nextSound_ && !player_->FileName().isEmpty() ? nextSound_() : QString();
  if (next.isEmpty()) return false;
  if (tester_ == nullptr) tester_ = NewPlayer(this);
  tester_->SetDeviceID(player_->DeviceID());
  tester_->SetNumBuffers(player_->NumBuffers());
  tester_->SetBufferSize(player_->BufferSize());
  try {
    tester_->Open(
        std::make_unique<audio::MixDecoder>(std::vector<audio::MixClip>{
            {player_->FileName().toStdString(), ui_->ledMix->Value()}, {runtime::HostPath(next).toStdString(), 0}}),
        next);
  } catch (const audio::Error& error) {
    throw runtime::Error(QString::fromUtf8(error.what()));
  }
  tester_->SetPosition(position);
  tester_->Start();
  return true;
}

void AudioPreview::StopTest() {
  if (tester_ != nullptr) tester_->Stop();
}

void AudioPreview::ledMix_Click() {
  Trapped(__func__, [&] {
    const QString answer =
        desktop::AskText(this, u"Geef een numerische waarde ..."_s, u"Items"_s, QString::number(ui_->ledMix->Value()))
            .value_or(QString());
    global.lastAnswer = answer;
    if (runtime::IsNumeric(answer)) SetMix(runtime::ToLong(answer));
  });
}
