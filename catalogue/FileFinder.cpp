#include "catalogue/FileFinder.h"

#include <QElapsedTimer>
#include <QMetaObject>
#include <QObject>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace {

// A batch is told at the latest after this time, so that marks appear while a long list is still being looked through.
constexpr qint64 kTellEveryMs = 100;

// What a finder that goes waits for its thread: long enough for any file that does answer.
constexpr std::chrono::milliseconds kFarewell{250};

}  // namespace

struct FileFinder::Shared {
  std::mutex mutex;
  std::condition_variable ended;
  QObject* receiver = nullptr;  // null once nobody listens any more; guarded
  bool running = true;          // guarded
  Tell tell;                    // used in the receiver's thread only

  bool IsWanted() {
    const std::lock_guard lock(mutex);
    return receiver != nullptr;
  }
};

FileFinder::FileFinder(std::vector<Wanted> wanted, QObject* receiver, Tell tell) : shared_(std::make_shared<Shared>()) {
  shared_->receiver = receiver;
  shared_->tell = std::move(tell);
  std::thread([shared = shared_, wanted = std::move(wanted)] {
    Look(shared, wanted);
    const std::lock_guard lock(shared->mutex);
    shared->running = false;
    shared->ended.notify_all();
  }).detach();
}

FileFinder::~FileFinder() {
  std::unique_lock lock(shared_->mutex);
  shared_->receiver = nullptr;
  shared_->ended.wait_for(lock, kFarewell, [this] { return !shared_->running; });
}

void FileFinder::Look(const std::shared_ptr<Shared>& shared, const std::vector<Wanted>& wanted) {
  const auto post = [&shared](std::vector<Found> found, bool last) {
    const std::lock_guard lock(shared->mutex);
    if (shared->receiver == nullptr) return;
    // The finder may go while the answer waits in the receiver's queue.
    QMetaObject::invokeMethod(
        shared->receiver,
        [shared, found = std::move(found), last] {
          if (shared->IsWanted()) shared->tell(found, last);
        },
        Qt::QueuedConnection);
  };
  std::vector<Found> found;
  QElapsedTimer since;
  since.start();
  for (const Wanted& file : wanted) {
    if (!shared->IsWanted()) return;
    found.push_back({file.id, runtime::Probe(file.path)});
    if (since.elapsed() < kTellEveryMs) continue;
    post(std::exchange(found, {}), false);
    since.restart();
  }
  post(std::move(found), true);
}
