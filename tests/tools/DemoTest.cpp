// SPDX-License-Identifier: MIT
#include "data/stations/DemoCatalogue.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Demo, MakesAStationWhoseFilesAreThere) {
  QTemporaryDir folder;
  ASSERT_EQ(RunTool({u"demo"_s, folder.path()}).exitCode, kDone);
  const QString server = folder.path() + u"/server/OvalistoServer.mdb"_s;
  const QString local = folder.path() + u"/data/OvalistoLocal.mdb"_s;
  EXPECT_EQ(RunTool({u"tables"_s, server}).out,
            "tblItemPingles\t6\ntblItems\t12\ntblItemsItemSpots\t34\ntblItemSpots\t60\n");
  EXPECT_EQ(RunTool({u"sql"_s, local, u"SELECT RadioNaam FROM cdeLicenties ORDER BY LicentieNummer"_s}).out,
            "RadioNaam\r\nRadio Demo\r\nRadio Polderstem\r\n");
  EXPECT_EQ(QDir(folder.path() + u"/audio/Spots"_s).entryList(QDir::Files).size(), 59);  // one is missing on purpose
  EXPECT_EQ(QDir(folder.path() + u"/audio/Jingles"_s).entryList(QDir::Files).size(), 6);
  EXPECT_TRUE(QFile::exists(folder.path() + u"/server/OvalistoServer3.mdb"_s));
  EXPECT_EQ(RunTool({u"demo"_s, folder.path()}).exitCode, kFailed);
}

TEST(Demo, ItsRowsFitTogether) {
  QSet<qint32> spots;
  QSet<QString> names;
  for (const demo::Spot& spot : demo::Spots(QDate(2025, 3, 11))) {
    spots += spot.row.id;
    names += spot.row.naam;
    EXPECT_LE(*spot.row.startDatum, *spot.row.eindDatum) << spot.row.naam.toStdString();
    EXPECT_LE(spot.row.naam.size(), 70);
  }
  EXPECT_EQ(spots.size(), 60);
  EXPECT_EQ(names.size(), 60);
  for (const demo::Item& item : demo::Items()) {
    EXPECT_EQ(item.row.itemSpotsOptID == 1, !item.spots.isEmpty());
    for (const qint32 spot : item.spots)
      EXPECT_TRUE(spots.contains(spot)) << item.row.naam.toStdString();
    EXPECT_TRUE(item.row.optMeerdereSpots == 0 || item.row.aantalSpots <= item.row.maxAantalSpots);
  }
}
