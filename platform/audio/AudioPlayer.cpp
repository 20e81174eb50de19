// SPDX-License-Identifier: MIT
#include "platform/audio/AudioPlayer.h"

#include "platform/audio/Error.h"
#include "platform/audio/PortAudioOutput.h"
#include "platform/runtime/Error.h"

#include <QMetaObject>

#include <utility>

namespace audio {
namespace {

// Rethrows audio::Error as runtime::Error.
template <typename Action>
void Translated(Action action) {
  try {
    action();
  } catch (const Error& error) {
    throw runtime::Error(QString::fromUtf8(error.what()));
  }
}

}  // namespace

AudioPlayer::AudioPlayer(QObject* parent) : AudioPlayer(OpenDeviceOutput, parent) {}

AudioPlayer::AudioPlayer(OutputFactory outputs, QObject* parent)
    : QObject(parent), core_(std::make_unique<PlayerCore>(std::move(outputs), [this](const PlayerEvent& event) {
        QMetaObject::invokeMethod(
            this, [this, event] { Deliver(event); }, Qt::QueuedConnection);
      })) {}

AudioPlayer::~AudioPlayer() = default;

void AudioPlayer::Deliver(const PlayerEvent& event) {
  switch (event.kind) {
    case PlayerEvent::Kind::Started:
      Q_EMIT started();
      break;
    case PlayerEvent::Kind::Stopped:
      Q_EMIT stopped();
      break;
    case PlayerEvent::Kind::Failed:
      Q_EMIT failed(QString::fromStdString(event.text));
      break;
    case PlayerEvent::Kind::Status:
      Q_EMIT statusChanged(QString::fromStdString(event.text));
      break;
  }
}

void AudioPlayer::Open(const QString& hostPath) {
  fileName_.clear();
  Translated([&] { core_->Open(hostPath.toStdString()); });
  fileName_ = hostPath;
}

void AudioPlayer::Open(std::unique_ptr<Decoder> decoder, const QString& name) {
  core_->Open(std::move(decoder), name.toStdString());
  fileName_ = name;
}

void AudioPlayer::Close() {
  fileName_.clear();
  core_->Close();
}

QString AudioPlayer::FileName() const {
  return fileName_;
}

void AudioPlayer::Start() {
  Translated([&] { core_->Start(); });
}

void AudioPlayer::Stop() {
  core_->Stop();
}
void AudioPlayer::Pause() {
  core_->Pause();
}
void AudioPlayer::Resume() {
  core_->Resume();
}

qint32 AudioPlayer::Position() const {
  return core_->Position();
}
void AudioPlayer::SetPosition(qint32 position) {
  core_->SetPosition(position);
}
qint32 AudioPlayer::Length() const {
  return core_->Length();
}
int AudioPlayer::State() const {
  return core_->State();
}

int AudioPlayer::SeekSetting() const {
  return core_->SeekSetting();
}
void AudioPlayer::SetSeekSetting(int setting) {
  core_->SetSeekSetting(setting);
}
int AudioPlayer::CallBackMode() const {
  return core_->CallBackMode();
}
void AudioPlayer::SetCallBackMode(int mode) {
  core_->SetCallBackMode(mode);
}

int AudioPlayer::DeviceID() const {
  return core_->Settings().device;
}

void AudioPlayer::SetDeviceID(int device) {
  OutputSettings settings = core_->Settings();
  settings.device = device;
  core_->SetSettings(settings);
}

int AudioPlayer::NumBuffers() const {
  return core_->Settings().numBuffers;
}

void AudioPlayer::SetNumBuffers(int count) {
  OutputSettings settings = core_->Settings();
  settings.numBuffers = count;
  core_->SetSettings(settings);
}

int AudioPlayer::BufferSize() const {
  return core_->Settings().bufferBytes;
}

void AudioPlayer::SetBufferSize(int bytes) {
  OutputSettings settings = core_->Settings();
  settings.bufferBytes = bytes;
  core_->SetSettings(settings);
}

PeakLevels AudioPlayer::Levels() {
  return core_->TakeLevels();
}
QString AudioPlayer::StatusText() const {
  return QString::fromStdString(core_->Status());
}

}  // namespace audio
