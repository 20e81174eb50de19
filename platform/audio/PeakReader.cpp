// SPDX-License-Identifier: MIT
#include "platform/audio/PeakReader.h"

#include "platform/audio/LowerThreadPriority.h"
#include "platform/audio/PeakCache.h"

#include <QMetaObject>

#include <atomic>
#include <exception>
#include <functional>
#include <string>
#include <thread>
#include <utility>

namespace audio {

// What the reading thread tells: bins that follow those told before, or why there are none.
struct PeakReader::News {
  qint32 lengthMs = 0;
  std::vector<PeakBin> bins;
  bool last = false;
  QString trouble;
};

// One reading of one file, on a thread of its own that may ask others to help. The destructor ends it.
class PeakReader::Job {
 public:
  using Tell = std::function<void(News)>;

  Job(std::string path, std::string cacheFolder, Tell tell)
      : path_(std::move(path)), cache_(std::move(cacheFolder)), tell_(std::move(tell)), thread_([this] { Run(); }) {}

  ~Job() {
    cancelled_ = true;
    thread_.join();
  }

 private:
  void Run() {
    LowerThreadPriority();
    try {
      const FileStamp stamp = FileStamp::Of(path_);
      if (const auto known = cache_.Find(stamp)) {
        TellUpTo(*known, known->bins.size());
        return;
      }
      const Peaks peaks = ReadPeaks(path_, [this](const Peaks& soFar, std::size_t done) {
        if (cancelled_) return false;
        TellUpTo(soFar, done);
        return true;
      });
      if (!peaks.bins.empty()) cache_.Store(stamp, peaks);
    } catch (const std::exception& error) {
      News news;
      news.trouble = QString::fromUtf8(error.what());
      tell_(std::move(news));
    }
  }

  // By one thread at a time.
  void TellUpTo(const Peaks& peaks, std::size_t done) {
    if (done == told_) return;
    const auto begin = peaks.bins.begin();
    News news;
    news.lengthMs = peaks.lengthMs;
    news.bins.assign(begin + static_cast<std::ptrdiff_t>(told_), begin + static_cast<std::ptrdiff_t>(done));
    news.last = done == peaks.bins.size();
    told_ = done;
    tell_(std::move(news));
  }

  std::string path_;
  PeakCache cache_;
  Tell tell_;
  std::size_t told_ = 0;
  std::atomic<bool> cancelled_{false};
  std::thread thread_;
};

PeakReader::PeakReader(const QString& cacheFolder, QObject* parent) : QObject(parent), cacheFolder_(cacheFolder) {}

PeakReader::~PeakReader() = default;

void PeakReader::Read(const QString& hostPath) {
  Cancel();
  bins_.clear();
  lengthMs_ = 0;
  job_ = std::make_unique<Job>(hostPath.toStdString(), cacheFolder_.toStdString(), [this, job = ++jobs_](News news) {
    QMetaObject::invokeMethod(
        this, [this, job, told = std::move(news)] { Take(job, told); }, Qt::QueuedConnection);
  });
}

void PeakReader::Cancel() {
  job_.reset();
}

// News of a job that was cancelled meanwhile is old.
void PeakReader::Take(quint64 job, const News& news) {
  if (!job_ || job != jobs_) return;
  if (!news.trouble.isEmpty()) {
    Q_EMIT failed(news.trouble);
    return;
  }
  lengthMs_ = news.lengthMs;
  bins_.insert(bins_.end(), news.bins.begin(), news.bins.end());
  Q_EMIT progressed();
  if (news.last) Q_EMIT finished();
}

std::span<const PeakBin> PeakReader::Bins() const {
  return bins_;
}

qint32 PeakReader::LengthMs() const {
  return lengthMs_;
}

}  // namespace audio
