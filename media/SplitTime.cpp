// SPDX-License-Identifier: MIT
#include "media/SplitTime.h"

#include "platform/runtime/Numbers.h"

SplitTime Split(qint32 ms) {
  SplitTime time;
  time.milliseconds = static_cast<qint16>(ms % 1000);
  time.seconds = static_cast<qint16>(ms / 1000 % 60);
  time.minutes = static_cast<qint16>(ms / 60'000 % 60);
  time.hours = static_cast<qint16>(ms / 3'600'000);
  return time;
}

qint16 SecondsWithinHour(const SplitTime& time) {
  return runtime::AddInteger(runtime::MultiplyInteger(time.minutes, 60), time.seconds);
}
