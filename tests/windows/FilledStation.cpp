// SPDX-License-Identifier: MIT
#include "tests/windows/FilledStation.h"

#include "data/Globals.h"
#include "platform/audio/Synth.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Station.h"

using namespace Qt::StringLiterals;

namespace windows {

void FillStation(const testing_support::Station& station) {
  audio::ToneOptions tone;
  tone.seconds = 2;
  const QString file = station.AudioFolder() + u"/toon.mp3"_s;
  audio::WriteToneFile(file.toStdString(), tone);
  const QString path = runtime::PathText(file);
  station.OnCurrent(
      u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartDatum, StartUur, EindDatum, EindUur, AantalGedraaid, "
      u"Aktief) VALUES (1, \"%1\", \"Spot\", 2, 45658, 0, 73050, 23, 0, 1)"_s.arg(path));
  station.OnCurrent(
      u"INSERT INTO tblItemPingles (ID, Path, Naam, Aktief) VALUES (1, \"%1\", \"Jingle\", 1)"_s.arg(path));
  station.OnCurrent(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, Aktief, Locked) VALUES (1, \"Vast\", 1, -1, "
      u"1, 0)"_s);
  station.OnCurrent(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VariabelNaamGedeelte, OptMeerdereSpots, "
      u"Aktief, Locked) VALUES (2, \"Map\", 2, \"%1\", 3, -1, 1, 0)"_s.arg(global.exportPath));
  station.OnCurrent(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s);
}

}  // namespace windows
