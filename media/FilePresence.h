// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Probe.h"

#include <QString>

// Checks in the background whether a file (path text) exists. Windows repaint meanwhile but accept no input, so that an
// unresponsive drive does not freeze them. Returns after at most runtime::kProbeWait.
runtime::Presence LookFor(const QString& path);

// Throws a runtime::Error that names the audio file when it is missing or unreachable by the result of LookFor.
void RequirePresent(const QString& path, runtime::Presence presence);
