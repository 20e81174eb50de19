// SPDX-License-Identifier: MIT
#pragma once

#include "export/playout/BlockPlan.h"

#include <QString>

// Dutch texts about a plan for users.

QString KindText(SoundKind kind);                // "opener", "item-spot", ...
QString ReasonText(LeftOut reason);              // "verlopen"
QString SilenceText(Silence silence);            // empty for none
QString LeftOutText(const LeftOutSound& sound);  // "Bakkerij: verlopen"

// Whether the user has to act. Not for a spot alone that plays later or at another hour.
bool LeftOutIsTrouble(const LeftOutSound& sound, const BlockPlan& plan);

// What the user has to mend in a block: why it is silent, why it has too few spots, or a faulty sound in an otherwise
// complete block. Empty without problems. LeftOut::NotItsTurn is not a problem.
QString TroubleText(const BlockPlan& plan);

// Minutes and seconds, "2:03"; "1:02:03" from one hour.
QString DurationText(qint64 ms);
