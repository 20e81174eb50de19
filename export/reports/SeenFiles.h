// SPDX-License-Identifier: MIT
#pragma once

#include "platform/runtime/Probe.h"

#include <QHash>
#include <QString>

// What was found of audio files, by path text. A file that is not in it was not looked at.
using SeenFiles = QHash<QString, runtime::Presence>;
