// SPDX-License-Identifier: MIT
#include "platform/runtime/Clock.h"

#include <cstdlib>
#include <utility>

namespace runtime {
namespace {

std::function<QDateTime()>& CurrentClock() {
  static std::function<QDateTime()> clock = [] { return QDateTime::currentDateTime(); };
  return clock;
}

}  // namespace

void KeepTimeZone() {
  constexpr int kOnlyIfUnset = 0;
  ::setenv("TZ", ":/etc/localtime", kOnlyIfUnset);
}

QDateTime Now() {
  return CurrentClock()();
}

ClockScope::ClockScope(std::function<QDateTime()> clock) : previous_(std::exchange(CurrentClock(), std::move(clock))) {}
ClockScope::ClockScope(const QDateTime& fixed) : ClockScope([fixed] { return fixed; }) {}
ClockScope::~ClockScope() {
  CurrentClock() = std::move(previous_);
}

}  // namespace runtime
