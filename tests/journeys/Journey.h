// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

// Makes a new demonstration station in its own folder (host path), replacing an old one. Throws runtime::Error.
void MakeStation(const QString& folder);

// Starts the program on that station and runs `walk` in a thread of its own, which uses the windows through a Desk and
// ends by closing the program. Returns when both have ended. When a step fails the process ends at once with its
// reason, since a window may still wait for input.
void RunJourney(const QString& stationFolder, const std::function<void()>& walk);
