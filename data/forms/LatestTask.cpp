// SPDX-License-Identifier: MIT
#include "data/forms/LatestTask.h"

#include "platform/runtime/DetachedThread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QObject>

#include <condition_variable>
#include <mutex>
#include <utility>

namespace {

// Long enough for a file server that responds and for reading a table.
constexpr std::chrono::milliseconds kShutdownWait{250};

}  // namespace

struct LatestTask::Shared {
  std::mutex mutex;
  std::condition_variable ended;
  QObject* receiver = nullptr;  // used only by the current task
  int current = 0;              // number of the current task; guarded by `mutex`
  int running = 0;              // number of tasks that have not ended; guarded by `mutex`

  bool IsCurrent(int number) {
    const std::lock_guard lock(mutex);
    return number == current;
  }
};

bool LatestTask::Token::IsCurrent() const {
  return shared_->IsCurrent(number_);
}

void LatestTask::Token::Post(std::function<void()> call) const {
  const std::lock_guard lock(shared_->mutex);
  if (number_ != shared_->current) return;
  QMetaObject::invokeMethod(
      shared_->receiver,
      [shared = shared_, number = number_, call = std::move(call)] {
        if (shared->IsCurrent(number)) call();
      },
      Qt::QueuedConnection);
}

LatestTask::LatestTask(QObject* receiver) : shared_(std::make_shared<Shared>()) {
  shared_->receiver = receiver;
}

LatestTask::~LatestTask() {
  Cancel();
  WaitForAll(kShutdownWait);
}

void LatestTask::Send(Work work) {
  int number = 0;
  {
    const std::lock_guard lock(shared_->mutex);
    number = ++shared_->current;
    ++shared_->running;
  }
  runtime::StartDetached([shared = shared_, number, work = std::move(work)] {
    work(Token(shared, number));
    const std::lock_guard lock(shared->mutex);
    --shared->running;
    shared->ended.notify_all();
  });
}

void LatestTask::Cancel() {
  const std::lock_guard lock(shared_->mutex);
  ++shared_->current;
}

void LatestTask::WaitFor(std::chrono::milliseconds timeout) {
  if (WaitForAll(timeout)) QCoreApplication::sendPostedEvents(shared_->receiver, QEvent::MetaCall);
}

bool LatestTask::WaitForAll(std::chrono::milliseconds timeout) {
  std::unique_lock lock(shared_->mutex);
  return shared_->ended.wait_for(lock, timeout, [this] { return shared_->running == 0; });
}
