// SPDX-License-Identifier: MIT
#pragma once

#include "data/Catalogue.h"
#include "data/Globals.h"
#include "tests/support/Station.h"

// Records for the overviews, in the tables of the current mode. Days are day numbers: 45658 is 01-01-2025.
class PaperCatalogue {
 public:
  explicit PaperCatalogue(testing_support::Station::Mode mode = testing_support::Station::Mode::Online)
      : station(mode) {
    global.stationName = QStringLiteral("Radio Testland");
  }

  void AddSpot(int id, const QString& naam, int seconds, int lastDay, int aktief = 1) const {
    station.OnCurrent(
        QStringLiteral(
            "INSERT INTO %1 (ID, Path, Naam, LengteSec, StartDatum, StartUur, EindDatum, EindUur, "
            "AantalGedraaid, Aktief) VALUES (%2, \"Z:\\audio\\%2.mp3\", \"%3\", %4, 45658, 6, %5, 22, 7, %6)")
            .arg(CurrentCatalogue().itemSpots, QString::number(id), naam, QString::number(seconds),
                 QString::number(lastDay), QString::number(aktief)));
  }
  void AddPingle(int id, const QString& naam) const {
    station.OnCurrent(QStringLiteral("INSERT INTO %1 (ID, Naam, Aktief) VALUES (%2, \"%3\", 1)")
                          .arg(CurrentCatalogue().itemPingles, QString::number(id), naam));
  }
  void AddItem(int id, const QString& naam, int opener = 0) const {
    station.OnCurrent(
        QStringLiteral("INSERT INTO %1 (ID, Naam, ItemSpotsOptID, Opener, Aktief) VALUES (%2, \"%3\", 1, %4, 1)")
            .arg(CurrentCatalogue().items, QString::number(id), naam,
                 opener == 0 ? QStringLiteral("NULL") : QString::number(opener)));
  }
  void Link(int item, int order, int spot) const {
    station.OnCurrent(QStringLiteral("INSERT INTO %1 (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, %3, %4)")
                          .arg(CurrentCatalogue().itemsItemSpots, QString::number(item), QString::number(order),
                               QString::number(spot)));
  }

  testing_support::Station station;
};
