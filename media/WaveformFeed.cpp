// SPDX-License-Identifier: MIT
#include "media/WaveformFeed.h"

#include "platform/controls/WaveformStrip.h"

#include <QStandardPaths>

#include <vector>

using namespace Qt::StringLiterals;

// Per user; may be deleted at any time.
QString WaveformCacheFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + u"/spotrooster/golfvormen"_s;
}

controls::Peak PeakOf(const audio::PeakBin& bin) {
  const auto share = [](int sample) { return static_cast<float>(sample) / 32768.0F; };
  return {share(bin.low), share(bin.high), share(bin.rms)};
}

WaveformFeed::WaveformFeed(controls::WaveformStrip* strip, QObject* parent)
    : QObject(parent), strip_(strip), reader_(WaveformCacheFolder()) {
  connect(&reader_, &audio::PeakReader::progressed, this, &WaveformFeed::TakePeaks);
  connect(&reader_, &audio::PeakReader::finished, this, &WaveformFeed::TakePeaks);
  connect(&reader_, &audio::PeakReader::failed, this, &WaveformFeed::ShowTrouble);
}

void WaveformFeed::Show(const QString& hostPath, qint32 lengthMs) {
  taken_ = 0;
  strip_->Begin(lengthMs, static_cast<int>(audio::Peaks::BinCount(lengthMs)));
  reader_.Read(hostPath);
}

void WaveformFeed::ShowTrouble(const QString& reason) {
  reader_.Cancel();
  strip_->ShowTrouble(reason);
}

void WaveformFeed::TakePeaks() {
  const auto bins = reader_.Bins();
  std::vector<controls::Peak> fresh;
  fresh.reserve(bins.size() - taken_);
  for (; taken_ < bins.size(); ++taken_)
    fresh.push_back(PeakOf(bins[taken_]));
  strip_->AppendPeaks(fresh);
}
