// SPDX-License-Identifier: MIT
#pragma once

#include "platform/desktop/Theme.h"

#include <QObject>

#include <optional>

namespace desktop {

// The desktop's preference for light or dark windows, read through D-Bus; nullopt when it has none or does not respond
// within half a second.
std::optional<Variant> SystemColorScheme();

// Calls `slot` (SLOT(...)) of `listener` when the preference may have changed.
void WatchSystemColorScheme(QObject* listener, const char* slot);

}  // namespace desktop
