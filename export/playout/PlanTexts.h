// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QString>

// What a plan says to a planner, in Dutch.

QString KindText(SoundKind kind);                // "opener", "item-spot", ...
QString ReasonText(LeftOut reason);              // "verlopen"
QString SilenceText(Silence silence);            // empty for none
QString LeftOutText(const LeftOutSound& sound);  // "Bakkerij: verlopen"

// Whether it is one that needs a hand: a spot that is to play later, or at another hour, is none by itself.
bool LeftOutIsTrouble(const LeftOutSound& sound, const BlockPlan& plan);

// What needs a hand about a block: why it is silent, or why it has fewer spots than it should, or a sound that is out
// of order beside a block that is complete. Empty when all is well. A spot whose turn it is not is no reason.
QString TroubleText(const BlockPlan& plan);

// "2:03", from milliseconds; hours in front from an hour on.
QString DurationText(qint64 ms);
