// SPDX-License-Identifier: MIT
#include "export/playout/AirLedger.h"

#include "data/Globals.h"
#include "platform/runtime/Error.h"
#include "tests/support/Station.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

const QDateTime kAiredAt(QDate(2025, 3, 11), QTime(14, 32, 7, 250));

class AirLedgerTest : public testing::Test {
 protected:
  AirLedgerTest() {
    station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, AantalGedraaid) VALUES (1, \"Een\", 4)"_s);
    station_.OnServer(
        u"INSERT INTO tblItemSpots (ID, Naam, LaatstGedraaid) VALUES (2, \"Twee\", \"12-03-2025 08:00:00\")"_s);
  }
  static AiringCount Count(const std::vector<Airing>& airings) {
    return CountAirings(global.serverDatabasePath, airings);
  }
  QVariant Field(int spot, const QString& field) const {
    return station_.ServerRows(u"SELECT %1 FROM tblItemSpots WHERE ID = %2"_s.arg(field).arg(spot)).Field(0);
  }
  int LedgerRows() const { return station_.ServerRows(u"SELECT * FROM tblUitzendingen"_s).RecordCount(); }

  Station station_;
};

}  // namespace

TEST_F(AirLedgerTest, ItIsOffUntilItIsSwitchedOn) {
  EXPECT_FALSE(IsCountingOn(global.serverDatabasePath));
  EXPECT_THROW(Count({{1, kAiredAt, 7}}), runtime::Error);
  EXPECT_EQ(Field(1, u"AantalGedraaid"_s), 4);
  SwitchCounting(global.serverDatabasePath, true);
  EXPECT_TRUE(IsCountingOn(global.serverDatabasePath));
  EXPECT_EQ(Count({{1, kAiredAt, 7}}).added, 1);
  SwitchCounting(global.serverDatabasePath, false);
  EXPECT_FALSE(IsCountingOn(global.serverDatabasePath));
  EXPECT_THROW(Count({{1, kAiredAt.addSecs(1), 7}}), runtime::Error);
  SwitchCounting(global.serverDatabasePath, true);
  EXPECT_EQ(LedgerRows(), 1) << "what was counted stays";
}

TEST_F(AirLedgerTest, EachAiringCountsOnceEvenWhenPassedAgain) {
  SwitchCounting(global.serverDatabasePath, true);
  const std::vector<Airing> airings{{1, kAiredAt, 7}, {1, kAiredAt.addSecs(60), 7}, {2, kAiredAt, 0}, {1, kAiredAt, 7}};
  AiringCount counted = Count(airings);
  EXPECT_EQ(counted.added, 3);
  EXPECT_EQ(counted.known, 1);
  EXPECT_EQ(Field(1, u"AantalGedraaid"_s), 6);
  EXPECT_EQ(Field(1, u"LaatstGedraaid"_s).toDateTime(), QDateTime(QDate(2025, 3, 11), QTime(14, 33, 7)));
  EXPECT_EQ(Field(2, u"AantalGedraaid"_s), 1) << "NULL counts as none";
  EXPECT_EQ(Field(2, u"LaatstGedraaid"_s).toDateTime(), QDateTime(QDate(2025, 3, 12), QTime(8, 0))) << "later already";
  counted = Count(airings);
  EXPECT_EQ(counted.added, 0);
  EXPECT_EQ(counted.known, 4);
  EXPECT_EQ(Field(1, u"AantalGedraaid"_s), 6);
  EXPECT_EQ(LedgerRows(), 3);
}

TEST_F(AirLedgerTest, AnUnknownSpotIsRecordedAndReported) {
  SwitchCounting(global.serverDatabasePath, true);
  EXPECT_EQ(Count({{99, kAiredAt, 7}}).unknown, 1);
  EXPECT_EQ(LedgerRows(), 1);
}

TEST_F(AirLedgerTest, ALocalDatabaseCountsInItsCopy) {
  station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, AantalGedraaid) VALUES (1, 0)"_s);
  SwitchCounting(global.localDatabasePath, true);
  CountAirings(global.localDatabasePath, {{1, kAiredAt, 0}});
  EXPECT_EQ(station_.LocalRows(u"SELECT AantalGedraaid FROM tblCopie_ItemSpots"_s).Field(0), 1);
  EXPECT_EQ(station_.LocalRows(u"SELECT InitValue FROM cdeInstellingen WHERE InitCode = \"OnlineYn\""_s).RecordCount(),
            1);
}

TEST_F(AirLedgerTest, AFileWithoutSpotsIsNamed) {
  SwitchCounting(global.workDatabasePath, true);
  try {
    CountAirings(global.workDatabasePath, {{1, kAiredAt, 0}});
    FAIL();
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"work.mdb"_s)) << error.what();
  }
}
