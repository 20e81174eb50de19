// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <functional>

namespace runtime {

// The current local date and time. All code that needs "now" calls this.
QDateTime Now();

// Replaces the clock for its lifetime (tests, the tour). Scopes nest.
class ClockScope {
 public:
  explicit ClockScope(std::function<QDateTime()> clock);
  explicit ClockScope(const QDateTime& fixed);
  ~ClockScope();
  ClockScope(const ClockScope&) = delete;
  ClockScope& operator=(const ClockScope&) = delete;

 private:
  std::function<QDateTime()> previous_;
};

}  // namespace runtime
