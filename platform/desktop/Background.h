// SPDX-License-Identifier: MIT
#pragma once

#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent>

#include <exception>
#include <optional>

namespace desktop {

// Does work that may hang, such as looking at a network folder, in another thread and returns its result, or throws
// what it threw. Meanwhile windows repaint but take no input. The work must end by itself, touch no window and own what
// it uses. User-interface thread only.
template <class Work>
auto InBackground(Work work) -> decltype(work()) {
  std::optional<decltype(work())> result;
  std::exception_ptr failure;
  QEventLoop loop;
  QFutureWatcher<void> watcher;
  QObject::connect(&watcher, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
  watcher.setFuture(QtConcurrent::run([&] {
    try {
      result = work();
    } catch (...) {
      failure = std::current_exception();
    }
  }));
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  watcher.waitForFinished();
  if (failure) std::rethrow_exception(failure);
  return *std::move(result);
}

}  // namespace desktop
