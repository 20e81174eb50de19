// SPDX-License-Identifier: MIT
#include "media/ClipPeaks.h"

#include "media/WaveformFeed.h"
#include "platform/audio/Peaks.h"
#include "platform/controls/ClipStrip.h"

#include <vector>

ClipPeaks::ClipPeaks(controls::ClipStrip* strip, QObject* parent)
    : QObject(parent), strip_(strip), reader_(WaveformCacheFolder()) {
  connect(&reader_, &audio::PeakReader::progressed, this, &ClipPeaks::Take);
  connect(&reader_, &audio::PeakReader::finished, this, [this] {
    Take();
    Next();
  });
  connect(&reader_, &audio::PeakReader::failed, this, &ClipPeaks::Next);  // this clip has no waveform
}

void ClipPeaks::Read(const QStringList& files) {
  Cancel();
  files_ = waiting_ = files;
  waiting_.removeDuplicates();
  waiting_.prepend(QString());
  Next();
}

void ClipPeaks::Cancel() {
  reader_.Cancel();
  files_.clear();
  waiting_.clear();
}

void ClipPeaks::Next() {
  taken_ = 0;
  if (!waiting_.isEmpty()) waiting_.removeFirst();
  if (!waiting_.isEmpty()) reader_.Read(waiting_.first());
}

void ClipPeaks::Take() {
  if (waiting_.isEmpty()) return;
  const auto bins = reader_.Bins();
  const bool first = taken_ == 0;
  std::vector<controls::Peak> fresh;
  for (; taken_ < bins.size(); ++taken_)
    fresh.push_back(PeakOf(bins[taken_]));
  for (qsizetype clip = 0; clip < files_.size(); ++clip) {
    if (files_[clip] != waiting_.first()) continue;
    const auto at = static_cast<std::size_t>(clip);
    if (first) strip_->BeginPeaks(at, static_cast<int>(audio::Peaks::BinCount(reader_.LengthMs())));
    strip_->AppendPeaks(at, fresh);
  }
}
