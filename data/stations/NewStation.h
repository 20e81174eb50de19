// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Stations of an existing program folder: paths and settings are those of `global`.

// The lowest number from 1 on that no station of this folder has. Throws runtime::Error when the list of stations
// cannot be read.
qint16 FreeStationNumber();

// Creates the local database of station `number` (1 to 32767) and adds it to the list of stations shown at start. The
// server database is created in the folder or on the server that DatabasePath names, unless it is there already. Throws
// runtime::Error, also when this folder has that station; then nothing is added to the list.
void MakeNumberedStation(qint16 number, const QString& name);
