// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Creates a demonstration station with sound files and settings, and a second, smaller one. The host folder is created
// when missing. Throws runtime::Error, also when the folder already has a station, or audio::Error.
void MakeDemoStation(const QString& hostFolder);
