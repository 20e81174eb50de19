// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Makes a filled station to try things on, with sound files, settings and a second, smaller station. The host folder is
// made when missing; one that holds a station already is an error. Throws runtime::Error or audio::Error.
void MakeDemoStation(const QString& hostFolder);
