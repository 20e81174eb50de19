// SPDX-License-Identifier: MIT
#include "media/LoudnessReader.h"

#include "platform/audio/Error.h"
#include "platform/audio/LowerThreadPriority.h"

#include <QFutureWatcher>
#include <QLocale>
#include <QThreadPool>
#include <QtConcurrent>

#include <cmath>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Cancelled = std::shared_ptr<std::atomic<bool>>;

// A source that ends when the measurement is cancelled.
class CancellableDecoder : public audio::Decoder {
 public:
  CancellableDecoder(std::unique_ptr<Decoder> file, Cancelled cancelled)
      : file_(std::move(file)), cancelled_(std::move(cancelled)) {}

  int SampleRate() const override { return file_->SampleRate(); }
  int Channels() const override { return file_->Channels(); }
  std::int64_t TotalFrames() const override { return file_->TotalFrames(); }
  void Seek(std::int64_t frame) override { file_->Seek(frame); }
  bool SeeksExactly() const override { return file_->SeeksExactly(); }
  using Decoder::Read;
  std::size_t Read(float* out, std::size_t frames) override { return *cancelled_ ? 0 : file_->Read(out, frames); }

 private:
  std::unique_ptr<Decoder> file_;
  Cancelled cancelled_;
};

// A separate pool: its threads have a lowered priority, which cannot be raised again for other work.
QThreadPool& Threads() {
  static QThreadPool threads;
  return threads;
}

std::optional<audio::Loudness> Measure(const QString& hostPath, const Cancelled& cancelled) {
  audio::LowerThreadPriority();
  try {
    CancellableDecoder file(audio::OpenDecoder(hostPath.toStdString()), cancelled);
    return audio::MeasureLoudness(file);
  } catch (const audio::Error&) {
    return std::nullopt;
  }
}

QString Decibels(double value) {
  return QLocale(QLocale::Dutch).toString(value, 'f', 1).replace(u'-', u'−');
}

}  // namespace

LoudnessReader::LoudnessReader(QObject* parent) : QObject(parent) {}

LoudnessReader::~LoudnessReader() {
  Cancel();
}

void LoudnessReader::Read(const QString& hostPath) {
  Cancel();
  cancelled_ = std::make_shared<std::atomic<bool>>(false);
  auto* watcher = new QFutureWatcher<std::optional<audio::Loudness>>(this);
  connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, cancelled = cancelled_] {
    watcher->deleteLater();
    if (*cancelled) return;
    if (const auto loudness = watcher->result()) {
      Q_EMIT measured(*loudness);
    } else {
      Q_EMIT failed();
    }
  });
  watcher->setFuture(QtConcurrent::run(&Threads(), Measure, hostPath, cancelled_));
}

void LoudnessReader::Cancel() {
  if (cancelled_) *cancelled_ = true;
  cancelled_.reset();
}

QString LoudnessText(const audio::Loudness& loudness) {
  if (!std::isfinite(loudness.integratedLufs)) return u"te stil of te kort om de luidheid te meten"_s;
  return u"%1 LUFS, true peak %2 dBTP"_s.arg(Decibels(loudness.integratedLufs), Decibels(loudness.truePeakDb));
}
