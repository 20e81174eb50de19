// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>

#include <functional>

namespace runtime {

// The current local date and time. Everything that asks for "now" asks here.
QDateTime Now();

// Sets another clock while it lives (tests, the tour). Scopes nest.
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
