// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// A duration split into clock units.
struct SplitTime {
  qint16 hours = 0;
  qint16 minutes = 0;       // 0 to 59
  qint16 seconds = 0;       // 0 to 59
  qint16 milliseconds = 0;  // 0 to 999
};

// `ms`: milliseconds, 0 or above.
SplitTime Split(qint32 ms);

// Minutes and seconds as a number of seconds, without hours and milliseconds: 1 h 2 min 5.9 s gives 125.
qint16 SecondsWithinHour(const SplitTime& time);
