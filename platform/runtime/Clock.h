// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <functional>

namespace runtime {

// The current local date and time. All code that needs "now" calls this.
QDateTime Now();

// For the start of main, before other threads: keeps the time zone of this host until the program ends. Without it the
// C library looks at /etc/localtime for every local time, a quarter of the time to read rows with dates. A zone that is
// set in TZ stays.
void KeepTimeZone();

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
