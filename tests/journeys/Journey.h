// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

// Makes a demonstration station in a folder of its own (host path), anew if there is one. runtime::Error.
void MakeStation(const QString& folder);

// Starts the program on that station and carries out `walk` beside it, in a thread of its own: it goes through the
// windows with the hands of a Desk and ends by leaving the program. Returns when both are done. When a step fails the
// process ends at once with its reason, since a window may still wait for a user.
void RunJourney(const QString& stationFolder, const std::function<void()>& walk);
