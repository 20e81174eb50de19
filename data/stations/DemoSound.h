// SPDX-License-Identifier: MIT
#pragma once

#include "data/stations/DemoCatalogue.h"

#include <QString>

namespace demo {

// Writes the sound files of spots and jingles below a host folder, on all cores, and puts their real lengths (whole
// seconds) and paths below `audioText` into the rows. Files of missing spots are left out; they get their planned
// length. Throws audio::Error or runtime::Error.
void MakeSounds(QList<Spot>& spots, QList<Jingle>& jingles, const QString& hostFolder, const QString& audioText);

}  // namespace demo
