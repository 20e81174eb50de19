// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Theme.h"

#include <QObject>

#include <optional>

namespace desktop {

// Whether the desktop wishes light or dark windows; nothing when it does not say, or not within half a second.
std::optional<Variant> SystemColorScheme();

// Calls `slot` of `listener` (SLOT(...)) when the wish may have changed.
void WatchDesktopWish(QObject* listener, const char* slot);

}  // namespace desktop
