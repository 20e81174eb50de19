// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Probe.h"

#include <QString>

// Looks in the background whether a file (path text) is there, while windows repaint but take no input; bounded by
// runtime::kProbeWait. For a drive that does not answer no window stands still.
runtime::Presence LookFor(const QString& path);

// The error for a sound file that is not there or out of reach, by what LookFor found; nothing when it is there. Throws
// runtime::Error naming the file.
void RequirePresent(const QString& path, runtime::Presence presence);
