// SPDX-License-Identifier: MIT
#include "export/playout/BlockMarks.h"

#include "tests/support/Station.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

const QDateTime kMarkNoon(QDate(2025, 3, 11), QTime(12, 0));

class BlockMarks : public testing::Test {
 protected:
  void AddSpot(int id, const QString& more = u"Aktief"_s, const QString& value = u"1"_s) const {
    const QString path = station_.AudioFolder() + u"/%1.wav"_s.arg(id);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    station_.OnServer(
        u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec, Aktief) VALUES (%1, \"Spot %1\", \"%2\", 30, 1)"_s
            .arg(id)
            .arg(path));
    station_.OnServer(u"UPDATE tblItemSpots SET %1 = %2 WHERE ID = %3"_s.arg(more, value).arg(id));
  }
  void AddBlock(const QString& fields, const QString& values, const QList<int>& spots) const {
    station_.OnServer(u"INSERT INTO tblItems (ID, Naam, Aktief, %1) VALUES (1, \"Blok\", 1, %2)"_s.arg(fields, values));
    int order = 0;
    for (const int spot : spots) {
      station_.OnServer(
          u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, %1, %2)"_s.arg(++order).arg(
              spot));
    }
  }
  // The marks after the files are checked.
  static BlockMark Mark(int tellings = 2) {
    std::vector<BlockMark> latest;
    int told = 0;
    MarkBlocks(
        CurrentCatalogue(), kMarkNoon, [] { return true; },
        [&](std::vector<BlockMark> marks, bool last) {
          ++told;
          EXPECT_EQ(last, told == 2);
          if (told <= tellings) latest = std::move(marks);
        });
    EXPECT_EQ(told, 2);
    return latest.at(0);
  }

  Station station_;
};

const QString kThree = u"ItemSpotsOptID, OptMeerdereSpots, AantalSpots, MaxAantalSpots"_s;

}  // namespace

TEST_F(BlockMarks, APlayingBlockHasItsSpotsAndLength) {
  AddSpot(1);
  AddSpot(2);
  AddBlock(kThree, u"1, -1, 2, 2"_s, {1, 2});
  const BlockMark mark = Mark();
  EXPECT_EQ(mark.state, BlockMark::State::Complete);
  EXPECT_EQ(mark.word, u"2 spots"_s);
  EXPECT_EQ(mark.lengthMs, 60'000);
  EXPECT_EQ(mark.trouble, QString());
}

TEST_F(BlockMarks, AMissingFileIsMarkedAfterTheFileCheck) {
  AddSpot(1);
  AddBlock(u"ItemSpotsOptID"_s, u"1"_s, {1});
  ASSERT_TRUE(QFile::remove(station_.AudioFolder() + u"/1.wav"_s));
  EXPECT_EQ(Mark(1).state, BlockMark::State::Complete) << "by what the record says";
  const BlockMark mark = Mark();
  EXPECT_EQ(mark.state, BlockMark::State::Silent);
  EXPECT_EQ(mark.word, u"stil: geluidsbestand ontbreekt"_s);
  EXPECT_EQ(mark.trouble, u"stil: geen enkele spot kan spelen (Spot 1: geluidsbestand ontbreekt)"_s);
}

TEST_F(BlockMarks, ABlockWithTooFewSpotsIsShort) {
  AddSpot(1);
  AddSpot(2, u"EindDatum"_s, u"\"10-03-2025\""_s);
  AddSpot(3, u"Aktief"_s, u"0"_s);
  AddBlock(kThree, u"1, -1, 3, 3"_s, {1, 2, 3});
  const BlockMark mark = Mark();
  EXPECT_EQ(mark.state, BlockMark::State::Short);
  EXPECT_EQ(mark.word, u"1 van 3 spots"_s);
  EXPECT_TRUE(mark.trouble.contains(u"Spot 2: verlopen; Spot 3: niet aktief"_s)) << mark.trouble.toStdString();
}

TEST_F(BlockMarks, AnEndedSpotIsARemarkInACompleteBlock) {
  AddSpot(1);
  AddSpot(2, u"EindDatum"_s, u"\"10-03-2025\""_s);
  AddBlock(u"ItemSpotsOptID"_s, u"1"_s, {1, 2});
  const BlockMark mark = Mark();
  EXPECT_EQ(mark.state, BlockMark::State::Remark);
  EXPECT_EQ(mark.word, u"item-spot: verlopen"_s);
}

TEST_F(BlockMarks, ASpotThatStartsLaterIsNoRemark) {
  AddSpot(1);
  AddSpot(2, u"StartDatum"_s, u"\"12-03-2025\""_s);
  AddBlock(u"ItemSpotsOptID"_s, u"1"_s, {1, 2});
  EXPECT_EQ(Mark().state, BlockMark::State::Complete);
}

TEST_F(BlockMarks, ADeletedJingleIsARemark) {
  AddSpot(1);
  AddBlock(u"ItemSpotsOptID, Opener"_s, u"1, 77"_s, {1});
  EXPECT_EQ(Mark().state, BlockMark::State::Remark);
  EXPECT_EQ(Mark().word, u"opener: jingle bestaat niet meer"_s);
}

TEST_F(BlockMarks, AMissingFileOfTheMomentMakesTheBlockSilent) {
  AddBlock(
      u"ItemSpotsOptID, Opt2Directory, Opt2VastNaamGedeelte, Opt2VariabelNaamGedeelte, Opt2FormatGedeelte, "
      u"Opt2FileExtensie"_s,
      u"2, \"%1\", \"weer\", 4, \"mm\", \"wav\""_s.arg(station_.AudioFolder()), {});
  EXPECT_EQ(Mark().state, BlockMark::State::Silent);
  QFile file(station_.AudioFolder() + u"/weer03.wav"_s);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  EXPECT_EQ(Mark().state, BlockMark::State::Complete);
}

TEST_F(BlockMarks, AnInactiveBlockHasNoOtherRemark) {
  AddBlock(u"ItemSpotsOptID"_s, u"1"_s, {});
  station_.OnServer(u"UPDATE tblItems SET Aktief = 0"_s);
  EXPECT_EQ(Mark().state, BlockMark::State::NotActive);
  EXPECT_EQ(Mark().trouble, QString());
}
