// SPDX-License-Identifier: MIT
#include "media/AudioPreview.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "media/FilePresence.h"
#include "media/LoudnessReader.h"
#include "media/SoundOutput.h"
#include "media/SplitTime.h"
#include "media/WaveformFeed.h"
#include "platform/audio/AudioPlayer.h"
#include "platform/desktop/Icons.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Numbers.h"
#include "platform/runtime/Trapped.h"
#include "ui_AudioPreview.h"

#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;
using runtime::Trapped;

namespace {

constexpr int kTickMs = 10;

// In logical pixels; the player's buttons are higher than others.
constexpr int kTransportHeight = 36;
constexpr int kTransportPadding = 20;

// Used until the settings are read.
constexpr int kFirstDevice = 0;
constexpr int kFirstNumBuffers = 20;
constexpr int kFirstBufferSize = 2048;

// Updates one panel only when its value changes.
void ShowOn(controls::LedPanel* panel, qint16 value, qint16& last) {
  if (value == last) return;
  panel->SetValue(value);
  last = value;
}

}  // namespace

AudioPreview::AudioPreview(QWidget* parent)
    : QGroupBox(parent),
      ui_(std::make_unique<Ui::AudioPreview>()),
      player_(NewPlayer(this)),
      tmrPlayer_(new QTimer(this)) {
  ui_->setupUi(this);
  // A message replaces the text below the buttons, so that nothing moves under the mouse.
  ui_->lblGeluid->setAlignment(ui_->lblJumps->alignment());
  waveform_ = std::make_unique<WaveformFeed>(ui_->waveform);
  loudness_ = std::make_unique<LoudnessReader>();
  player_->setObjectName(u"Player"_s);
  player_->SetDeviceID(kFirstDevice);
  player_->SetNumBuffers(kFirstNumBuffers);
  player_->SetBufferSize(kFirstBufferSize);
  tmrPlayer_->setObjectName(u"tmrPlayer"_s);
  tmrPlayer_->setInterval(kTickMs);
  tmrPlayer_->setTimerType(Qt::PreciseTimer);
  SetIcons();
  WireTransport();
  WireMix();
  WireStrip();
  WireKeys();
  ShowStatus(player_->StatusText());
}

AudioPreview::~AudioPreview() = default;

void AudioPreview::Attach(QLineEdit* txtPath, QLineEdit* txtLengteSec, QLabel* lblLuidheid) {
  txtPath_ = txtPath;
  txtLengteSec_ = txtLengteSec;
  lblLuidheid_ = lblLuidheid;
  WireLoudness();
}

// For information only; empty while unknown.
void AudioPreview::WireLoudness() {
  connect(loudness_.get(), &LoudnessReader::measured, lblLuidheid_,
          [this](const audio::Loudness& loudness) { lblLuidheid_->setText(LoudnessText(loudness)); });
}

void AudioPreview::SetIcons() {
  const int height = std::max(kTransportHeight, fontMetrics().height() + kTransportPadding);
  for (QPushButton* button : {ui_->cmdRREW, ui_->cmdREW, ui_->cmdPlay, ui_->cmdSTOP, ui_->cmdFFW, ui_->cmdFFFW}) {
    button->setMinimumHeight(height);
  }
  ui_->cmdRREW->setIcon(desktop::Icon(u"rrew"_s));
  ui_->cmdREW->setIcon(desktop::Icon(u"rew"_s));
  ui_->cmdPlay->setIcon(desktop::Icon(u"play"_s, desktop::IconTint::Accent));
  ui_->cmdSTOP->setIcon(desktop::Icon(u"stop"_s));
  ui_->cmdFFW->setIcon(desktop::Icon(u"ffw"_s));
  ui_->cmdFFFW->setIcon(desktop::Icon(u"fffw"_s));
}

void AudioPreview::WireTransport() {
  connect(ui_->cmdPlay, &QPushButton::clicked, this, &AudioPreview::cmdPlay_Click);
  connect(ui_->cmdSTOP, &QPushButton::clicked, this, &AudioPreview::cmdSTOP_Click);
  connect(ui_->cmdRREW, &QPushButton::clicked, this, &AudioPreview::cmdRREW_Click);
  connect(ui_->cmdREW, &QPushButton::clicked, this, &AudioPreview::cmdREW_Click);
  connect(ui_->cmdFFW, &QPushButton::clicked, this, &AudioPreview::cmdFFW_Click);
  connect(ui_->cmdFFFW, &QPushButton::clicked, this, &AudioPreview::cmdFFFW_Click);
  connect(ui_->sliPlay, &controls::PositionSlider::sliderPressed, this, &AudioPreview::sliPlay_Pressed);
  connect(ui_->sliPlay, &controls::PositionSlider::sliderReleased, this, &AudioPreview::sliPlay_Released);
  connect(ui_->sliPlay, &controls::PositionSlider::playStopRequested, this, &AudioPreview::PlayOrStop);
  connect(tmrPlayer_, &QTimer::timeout, this, &AudioPreview::tmrPlayer_Timer);
  connect(player_, &audio::AudioPlayer::started, this, &AudioPreview::Player_Start);
  connect(player_, &audio::AudioPlayer::failed, this, &AudioPreview::Player_Failed);
  connect(player_, &audio::AudioPlayer::statusChanged, this, &AudioPreview::ShowStatus);
}

void AudioPreview::InitAudio() {
  player_->SetDeviceID(global.card);
  player_->SetCallBackMode(global.callback);
  player_->SetNumBuffers(global.buffers);
  player_->SetBufferSize(global.bufferSize);
}

void AudioPreview::LaadBestand(const QString& bestand) {
  if (bestand.isEmpty()) return;
  OpenFile(bestand);
  DrawTime();
  ui_->sliPlay->setMaximum(player_->Length());
  ui_->sliPlay->setValue(0);
  txtLengteSec_->setText(QString::number(SecondsWithinHour(Split(player_->Length()))));
}

// After a failure the player is empty, and panels and waveform show that.
void AudioPreview::OpenFile(const QString& bestand) {
  const QString path = runtime::TrimBlanks(bestand);
  try {
    if (path.isEmpty()) throw runtime::Error(u"Er is nog geen geluidsbestand gekozen: kies er een met 'Path ...'."_s);
    presence_ = LookFor(path);
    lastFile_ = path;
    RequirePresent(path, presence_);
    const QString hostPath = runtime::HostPath(path);
    OpenInPlayer(hostPath, path);
    waveform_->Show(hostPath, player_->Length());
    lblLuidheid_->clear();
    loudness_->Read(hostPath);
  } catch (const runtime::Error& error) {
    ForgetFile(error.Description());
    Q_EMIT filePresenceChanged();
    throw;
  }
  Q_EMIT filePresenceChanged();
}

// The player's error has the host path; the user knows the path text.
void AudioPreview::OpenInPlayer(const QString& hostPath, const QString& path) {
  try {
    player_->Open(hostPath);
    ShowStatus(player_->StatusText());
  } catch (const runtime::Error& error) {
    throw runtime::Error(QString(error.Description()).replace(hostPath, path));
  }
}

void AudioPreview::ForgetFile(const QString& reason) {
  player_->Close();
  DrawTime();
  ui_->sliPlay->setMaximum(0);
  waveform_->ShowTrouble(reason);
  loudness_->Cancel();
  lblLuidheid_->clear();
}

void AudioPreview::DrawTime() {
  const SplitTime left = Split(runtime::SubtractLong(player_->Length(), player_->Position()));
  if (seeking_) return;
  ui_->sliPlay->setValue(player_->Position());
  ShowOn(ui_->ledMilli, left.milliseconds, lastMilliseconds_);
  ShowOn(ui_->ledSec, left.seconds, lastSeconds_);
  ShowOn(ui_->ledMin, left.minutes, lastMinutes_);
}

QString AudioPreview::LastFolder() const {
  return player_->FileName().isEmpty() ? QString() : QFileInfo(player_->FileName()).path();
}

std::optional<runtime::Presence> AudioPreview::FilePresence(const QString& path) const {
  if (path != lastFile_) return std::nullopt;
  return presence_;
}

void AudioPreview::Close() {
  tmrPlayer_->stop();
  StopTest();
  player_->Stop();
  waveform_->Cancel();
  loudness_->Cancel();
}

void AudioPreview::tmrPlayer_Timer() {
  Trapped(__func__, [&] {
    DrawTime();
    const audio::PeakLevels levels = player_->Levels();
    ui_->levelLeft->SetLevel(static_cast<double>(levels.left));
    ui_->levelRight->SetLevel(static_cast<double>(levels.right));
  });
}

void AudioPreview::Player_Start() {
  tmrPlayer_->start();
}

void AudioPreview::Player_Failed(const QString& message) {
  Trapped(__func__, [&] { ShowItemsMessage(message, kStyleExclamation); });
}

void AudioPreview::ShowStatus(const QString& text) {
  ui_->lblGeluid->setText(text);
  ui_->lblGeluid->setToolTip(text);
  ui_->lblGeluid->setVisible(!text.isEmpty());
  ui_->lblJumps->setVisible(text.isEmpty());
}
