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

// Reported by the background thread: the next bins, or an error.
struct PeakReader::Progress {
  qint32 lengthMs = 0;
  std::vector<PeakBin> bins;
  bool last = false;
  QString error;
};

// Reads one file in a background thread, which may start more. The destructor cancels it and waits.
class PeakReader::Job {
 public:
  using Report = std::function<void(Progress)>;

  Job(std::string path, std::string cacheFolder, Report report)
      : path_(std::move(path)),
        cache_(std::move(cacheFolder)),
        report_(std::move(report)),
        thread_([this] { Run(); }) {}

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
        ReportUpTo(*known, known->bins.size());
        return;
      }
      const Peaks peaks = ReadPeaks(path_, [this](const Peaks& soFar, std::size_t done) {
        if (cancelled_) return false;
        ReportUpTo(soFar, done);
        return true;
      });
      if (!peaks.bins.empty()) cache_.Store(stamp, peaks);
    } catch (const std::exception& error) {
      Progress progress;
      progress.error = QString::fromUtf8(error.what());
      report_(std::move(progress));
    }
  }

  // Called by one thread at a time.
  void ReportUpTo(const Peaks& peaks, std::size_t done) {
    if (done == reported_) return;
    const auto begin = peaks.bins.begin();
    Progress progress;
    progress.lengthMs = peaks.lengthMs;
    progress.bins.assign(begin + static_cast<std::ptrdiff_t>(reported_), begin + static_cast<std::ptrdiff_t>(done));
    progress.last = done == peaks.bins.size();
    reported_ = done;
    report_(std::move(progress));
  }

  std::string path_;
  PeakCache cache_;
  Report report_;
  std::size_t reported_ = 0;  // bins
  std::atomic<bool> cancelled_{false};
  std::thread thread_;
};

PeakReader::PeakReader(const QString& cacheFolder, QObject* parent) : QObject(parent), cacheFolder_(cacheFolder) {}

PeakReader::~PeakReader() = default;

void PeakReader::Read(const QString& hostPath) {
  Cancel();
  bins_.clear();
  lengthMs_ = 0;
  job_ = std::make_unique<Job>(
      hostPath.toStdString(), cacheFolder_.toStdString(), [this, job = ++jobs_](Progress progress) {
        QMetaObject::invokeMethod(
            this, [this, job, report = std::move(progress)] { OnProgress(job, report); }, Qt::QueuedConnection);
      });
}

void PeakReader::Cancel() {
  job_.reset();
}

void PeakReader::OnProgress(quint64 job, const Progress& progress) {
  if (!job_ || job != jobs_) return;  // queued by a job that was cancelled
  if (!progress.error.isEmpty()) {
    Q_EMIT failed(progress.error);
    return;
  }
  lengthMs_ = progress.lengthMs;
  bins_.insert(bins_.end(), progress.bins.begin(), progress.bins.end());
  Q_EMIT progressed();
  if (progress.last) Q_EMIT finished();
}

std::span<const PeakBin> PeakReader::Bins() const {
  return bins_;
}

qint32 PeakReader::LengthMs() const {
  return lengthMs_;
}

}  // namespace audio
