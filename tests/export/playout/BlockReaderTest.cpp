// SPDX-License-Identifier: MIT
#include "export/playout/BlockReader.h"

#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

void FillOffline(const Station& station) {
  station.OnLocal(
      u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Path, LengteSec, Mixpunt, StartDatum, StartUur, EindDatum, EindUur, "
      u"AantalGedraaid, LaatstGedraaid, Aktief) VALUES (1, \"Een\", \" D:\\een.wav \", 12, 800, 45658, 6, 45700, 22, "
      u"4, "
      u"\"11-03-2025 14:32:07\", 1)"_s);
  station.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID) VALUES (2)"_s);
  station.OnLocal(
      u"INSERT INTO tblCopie_ItemPingles (ID, Naam, Path, LengteSec, MixPunt, Aktief) VALUES (5, \"Tune\", "
      u"\"D:\\tune.wav\", 3, 250, 1)"_s);
  station.OnLocal(
      u"INSERT INTO tblCopie_Items (ID, Naam, ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots, "
      u"ChkRandomizeMeerdereSpots, Opener, Sluiter, Aktief) VALUES (7, \"Blok\", 1, -1, 2, 3, 1, 5, 99, 1)"_s);
  for (const auto& [order, spot] : {std::pair{2, 1}, {1, 2}, {3, 77}, {4, 1}}) {
    station.OnLocal(
        u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (7, %1, %2)"_s.arg(order).arg(
            spot));
  }
}

}  // namespace

TEST(BlockReader, ReadsAListWithItsSpotsInOrderAndItsJingles) {
  const Station station(Station::Mode::Offline);
  FillOffline(station);
  const std::vector<Block> blocks = ReadBlocks(CurrentCatalogue());
  ASSERT_EQ(blocks.size(), 1U);
  const Block& block = blocks[0];
  EXPECT_EQ(block.id, 7);
  EXPECT_EQ(block.naam, u"Blok"_s);
  EXPECT_TRUE(block.aktief);
  EXPECT_EQ(block.filling, Block::Filling::List);
  EXPECT_TRUE(block.several && block.random);
  EXPECT_EQ(block.count, 2);
  EXPECT_EQ(block.most, 3);
  ASSERT_EQ(block.spots.size(), 3U) << "a link to a spot that is gone is left out";
  EXPECT_EQ(block.spots[0].id, 2);
  const BlockSpot& spot = block.spots[1];
  EXPECT_EQ(spot.id, 1);
  EXPECT_EQ(spot.facts.path, u"D:\\een.wav"_s);
  EXPECT_EQ(spot.mixMs, 800);
  EXPECT_EQ(spot.playCount, 4);
  EXPECT_EQ(spot.lastPlayed, QDateTime(QDate(2025, 3, 11), QTime(14, 32, 7)));
  EXPECT_EQ(spot.facts.startUur, 6);
  ASSERT_TRUE(block.opener);
  EXPECT_EQ(block.opener->naam, u"Tune"_s);
  EXPECT_EQ(block.opener->mixMs, 250);
  ASSERT_TRUE(block.closer);
  EXPECT_FALSE(block.closer->exists);
  EXPECT_FALSE(block.middle);
}

TEST(BlockReader, ARowOfNullsIsASpotThatNeverPlayed) {
  const Station station(Station::Mode::Offline);
  FillOffline(station);
  const BlockSpot spot = ReadBlocks(CurrentCatalogue()).at(0).spots.at(0);
  EXPECT_FALSE(spot.facts.aktief);
  EXPECT_FALSE(spot.lastPlayed.isValid());
  EXPECT_EQ(spot.mixMs, 0);
  EXPECT_TRUE(spot.facts.path.isEmpty());
}

TEST(BlockReader, ReadsThePatternOfFilesOnline) {
  const Station station;
  station.OnServer(
      u"INSERT INTO tblItems (ID, Naam, ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, Opt2VariabelNaamGedeelte, "
      u"Opt2FormatGedeelte, Opt2Eerstedagvanweek, Opt2FileExtensie, Opt2MixPunt, OptMeerdereSpots, Aktief) VALUES (1, "
      u"\"B\", 2, \"D:\\map\", \"weer\", 3, \"ww\", 2, \"wav\", 1500, 0, 1)"_s);
  station.OnServer(u"INSERT INTO tblItems (ID, Naam) VALUES (2, \"A\")"_s);
  const std::vector<Block> blocks = ReadBlocks(CurrentCatalogue());
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].filling, Block::Filling::Unknown);
  EXPECT_FALSE(blocks[0].aktief);
  const Block& files = blocks[1];
  EXPECT_EQ(files.filling, Block::Filling::Files);
  EXPECT_EQ(files.patternMixMs, 1500);
  EXPECT_EQ(NumberedFileName(files.pattern, QDateTime(QDate(2025, 3, 11), QTime(8, 0)), 1), u"D:\\map\\weer11.wav"_s);
}
