// SPDX-License-Identifier: MIT
#pragma once

#include "data/Rows.h"

namespace bench {

// The values of an active item-spot with this ID, as an editor writes them.
inline ItemSpotRow ExampleSpot(int id) {
  using namespace Qt::StringLiterals;
  ItemSpotRow row;
  row.id = id;
  row.path = u"D:\\Audio\\Spots\\klant %1\\spot %2.mp3"_s.arg(id % 97).arg(id);
  row.naam = u"Bakkerij Van Damme week %1"_s.arg(id % 53);
  row.lengteSec = 30;
  row.startPunt = 0;
  row.mixpunt = 1200;
  row.startDatum = 45658;
  row.startUur = 6;
  row.eindDatum = 45700;
  row.eindUur = 22;
  row.aktief = 1;
  return row;
}

}  // namespace bench
