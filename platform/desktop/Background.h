// SPDX-License-Identifier: MIT
#pragma once

#include <QEventLoop>
#include <QFutureWatcher>
#include <QtConcurrent>

#include <exception>
#include <optional>

namespace desktop {

// Runs work that may hang, such as reading a network folder, in another thread and waits for it. Returns its result or
// rethrows its exception. Meanwhile windows repaint but accept no input. The work must end by itself, use no window and
// own its data. User-interface thread only.
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
