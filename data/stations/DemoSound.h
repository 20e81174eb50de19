// SPDX-License-Identifier: MIT
#pragma once

#include "data/stations/DemoCatalogue.h"

#include <QString>

namespace demo {

// Writes the sound files of spots and jingles below a host folder, using all cores, and sets length (whole seconds) and
// path (below the path text `audioText`) in the rows. The files of missing spots are deleted again. Throws audio::Error
// or runtime::Error.
void MakeSounds(QList<Spot>& spots, QList<Jingle>& jingles, const QString& hostFolder, const QString& audioText);

}  // namespace demo
