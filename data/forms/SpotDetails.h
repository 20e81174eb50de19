// SPDX-License-Identifier: MIT
#pragma once

#include "data/SpotState.h"
#include "platform/controls/ListLine.h"

#include <optional>

// What the item-spot list shows next to a spot's name: mark, state text, length and tool tip.
controls::LineDetails DetailsOf(const SpotFacts& spot, SpotState state);

// "0:32", or "1:02:03" from one hour; empty when the length is unknown.
QString LengthText(std::optional<qint32> seconds);
