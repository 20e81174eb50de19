// SPDX-License-Identifier: MIT
#include "platform/runtime/Error.h"
#include "tests/export/apply/Shared.h"

using namespace Qt::StringLiterals;
using apply::Conflict;
using apply::Reason;
using apply::Side;
using apply::What;

namespace {

const QString kDates = u"SELECT StartDatum, EindDatum, Naam FROM tblItemSpots WHERE ID = 1"_s;
const QString kBefore = u"2025-01-01T00:00:00.000|2025-02-12T00:00:00.000|Bakker"_s;

class Conflicts : public SharedStation {
 protected:
  Conflicts() { Fill(); }

  // The workstation changes both dates and the name, the server the last day.
  void ChangeBoth(Workstation& a) {
    ItemSpotRow bakker = a.Spot(1);
    bakker.startDatum = 45000;
    bakker.eindDatum = 46000;
    a.UpdateSpot(bakker);
    OnServer(u"UPDATE tblItemSpots SET EindDatum = 45800, Naam = \"Bakker & Co\" WHERE ID = 1"_s);
  }
  Conflict OnlyOne() const {
    const QList<Conflict> all = apply::ReadConflicts(Server(), true);
    EXPECT_EQ(all.size(), 1);
    return all.value(0);
  }
  void Settle(Side side) const { apply::Settle(Server(), {OnlyOne().id}, side, u"els"_s); }
  QString Dates() const { return Rows(kDates).value(0); }
};

const QString kServerDates = u"2025-01-01T00:00:00.000|2025-05-23T00:00:00.000|Bakker & Co"_s;
const QString kOfflineDates = u"2023-03-15T00:00:00.000|2025-12-09T00:00:00.000|Bakker & Co"_s;

}  // namespace

TEST_F(Conflicts, TwoValuesOfOneFieldStopThatRecordOnly) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  const apply::Result result = Process(a);
  EXPECT_EQ(result.Summary(), u"1 gewijzigd, 1 botst"_s);
  EXPECT_EQ(Dates(), kServerDates);
  EXPECT_EQ(Rows(u"SELECT Aktief FROM tblItemSpots WHERE ID = 2"_s), QStringList{u"0"_s});
  const Conflict conflict = OnlyOne();
  EXPECT_EQ(conflict.reason, Reason::BothChanged);
  EXPECT_TRUE(conflict.IsWaiting());
  EXPECT_EQ(conflict.source, u"A"_s);
  EXPECT_EQ(conflict.Name(), u"Bakker"_s);
  const QList<apply::FieldDifference> fields = apply::DifferencesOf(conflict);
  ASSERT_EQ(fields.size(), 3);
  EXPECT_EQ(fields[2].field, u"EindDatum"_s);
  EXPECT_TRUE(fields[2].isConflict);
  EXPECT_EQ(fields[2].before + u'|' + fields[2].offline + u'|' + fields[2].server,
            u"12-02-2025|09-12-2025|23-05-2025"_s);
}

TEST_F(Conflicts, EitherSideCanBeTakenAndTheOtherTakenLater) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  Process(a);
  Settle(Side::Offline);
  EXPECT_EQ(Dates(), kOfflineDates);
  EXPECT_TRUE(apply::ReadConflicts(Server()).isEmpty());
  Settle(Side::Server);
  EXPECT_EQ(Dates(), kServerDates);
  Settle(Side::Offline);
  EXPECT_EQ(Dates(), kOfflineDates);
  EXPECT_EQ(OnlyOne().who, u"els"_s);
}

TEST_F(Conflicts, TakingTheServersSideChangesNothing) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  Process(a);
  Settle(Side::Server);
  EXPECT_EQ(Dates(), kServerDates);
}

TEST_F(Conflicts, ARecordThatIsGoneWaitsAndCanComeBack) {
  Workstation a = At(u"A"_s);
  ItemSpotRow bakker = a.Spot(1);
  bakker.eindDatum = 46000;
  a.UpdateSpot(bakker);
  OnServer(u"DELETE FROM tblItemSpots WHERE ID = 1"_s);
  EXPECT_EQ(Process(a).Count(What::Conflict), 1);
  EXPECT_EQ(OnlyOne().reason, Reason::Gone);
  EXPECT_EQ(Dates(), QString());
  Settle(Side::Offline);
  EXPECT_EQ(Dates(), u"2025-01-01T00:00:00.000|2025-12-09T00:00:00.000|Bakker"_s);
  Settle(Side::Server);
  EXPECT_EQ(Dates(), QString());
}

TEST_F(Conflicts, ADeleteOfAChangedRecordWaits) {
  Workstation a = At(u"A"_s);
  a.DeleteSpot(1);
  OnServer(u"UPDATE tblItemSpots SET EindDatum = 45800, AantalGedraaid = 9 WHERE ID = 1"_s);
  EXPECT_EQ(Process(a).Count(What::Conflict), 1);
  EXPECT_EQ(Dates(), u"2025-01-01T00:00:00.000|2025-05-23T00:00:00.000|Bakker"_s);
  Settle(Side::Offline);
  EXPECT_EQ(Dates(), QString());
  Settle(Side::Server);
  EXPECT_EQ(Rows(u"SELECT AantalGedraaid FROM tblItemSpots WHERE EindDatum = 45800"_s), QStringList{u"9"_s});
}

// Only the play count is another: that is the studio's.
TEST_F(Conflicts, AnAiringIsNoReasonToKeepADeletedSpot) {
  Workstation a = At(u"A"_s);
  a.DeleteSpot(1);
  OnServer(u"UPDATE tblItemSpots SET AantalGedraaid = 9, LaatstGedraaid = 45800 WHERE ID = 1"_s);
  EXPECT_EQ(Process(a).Summary(), u"1 verwijderd"_s);
}

TEST_F(Conflicts, ABlockWaitsWhole) {
  Workstation a = At(u"A"_s);
  ItemRow ochtend = a.Item(1);
  ochtend.aantalSpots = 3;
  a.UpdateItem(ochtend, {3, 1});
  OnServer(u"UPDATE tblItemsItemSpots SET ItemSpotID = 3 WHERE ItemSpotOrder = 2"_s);
  EXPECT_EQ(Process(a).Summary(), u"1 botst"_s);
  EXPECT_EQ(OnlyOne().reason, Reason::ListsDiffer);
  const QString kCount = u"SELECT AantalSpots FROM tblItems"_s;
  EXPECT_EQ(Rows(kCount), QStringList{u"0"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|1"_s, u"1|2|3"_s}));
  Settle(Side::Offline);
  EXPECT_EQ(Rows(kCount), QStringList{u"3"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|3"_s, u"1|2|1"_s}));
  Settle(Side::Server);
  EXPECT_EQ(Rows(kCount), QStringList{u"0"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|1"_s, u"1|2|3"_s}));
}

TEST_F(Conflicts, AnItemThatWaitsKeepsItsLinks) {
  Workstation a = At(u"A"_s);
  ItemRow ochtend = a.Item(1);
  ochtend.naam = u"Vroeg"_s;
  a.UpdateItem(ochtend, {3});
  OnServer(u"UPDATE tblItems SET Naam = \"Laat\" WHERE ID = 1"_s);
  Process(a);
  EXPECT_EQ(Links(), (QStringList{u"1|1|1"_s, u"1|2|2"_s}));
  Settle(Side::Offline);
  EXPECT_EQ(Links(), QStringList{u"1|1|3"_s});
  EXPECT_EQ(Rows(u"SELECT Naam FROM tblItems"_s), QStringList{u"Vroeg"_s});
}

// What the workstation did to the record afterwards waits with it, also in a later file.
TEST_F(Conflicts, LaterChangesOfTheRecordJoinTheConflict) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  Process(a);
  ItemSpotRow bakker = a.Spot(1);
  bakker.lengteSec = 99;
  a.UpdateSpot(bakker);
  EXPECT_EQ(Process(a).Summary(), u"1 botst"_s);
  EXPECT_EQ(Rows(u"SELECT LengteSec FROM tblItemSpots WHERE ID = 1"_s), QStringList{u"30"_s});
  Settle(Side::Offline);
  EXPECT_EQ(Dates(), kOfflineDates);
  EXPECT_EQ(Rows(u"SELECT LengteSec FROM tblItemSpots WHERE ID = 1"_s), QStringList{u"99"_s});
}

// The planner has seen the server's version since: a change of that is none of the version that waits.
TEST_F(Conflicts, AChangeOfTheRefreshedRecordIsCarriedOut) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  Process(a);
  a.Refresh(Server());
  ItemSpotRow bakker = a.Spot(1);
  bakker.lengteSec = 99;
  a.UpdateSpot(bakker);
  EXPECT_EQ(Process(a).Summary(), u"1 gewijzigd"_s);
  EXPECT_EQ(apply::ReadConflicts(Server()).size(), 1);
}

// The number was given again: nothing of another record is touched.
TEST_F(Conflicts, AnotherRecordOfThatNumberIsLeftAlone) {
  Workstation a = At(u"A"_s);
  ItemSpotRow kapper = a.Spot(3);
  kapper.lengteSec = 77;
  a.UpdateSpot(kapper);
  OnServer(u"DELETE FROM tblItemSpots WHERE ID = 3"_s);
  OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Path, LengteSec) VALUES (3, \"Garage\", \"D:\\g.wav\", 30)"_s);
  Process(a);
  EXPECT_EQ(OnlyOne().reason, Reason::OtherRecord);
  Settle(Side::Offline);
  EXPECT_EQ(Rows(u"SELECT ID, Naam, LengteSec FROM tblItemSpots WHERE ID > 2 ORDER BY ID"_s),
            (QStringList{u"3|Garage|30"_s, u"4|Kapper|77"_s}));
  Settle(Side::Server);
  EXPECT_EQ(Spots().mid(2), QStringList{u"3|Garage"_s});
}

TEST_F(Conflicts, AnUnknownNumberSettlesNothing) {
  Workstation a = At(u"A"_s);
  ChangeBoth(a);
  Process(a);
  EXPECT_THROW(apply::Settle(Server(), {OnlyOne().id, 99}, Side::Offline, {}), runtime::Error);
  EXPECT_EQ(Dates(), kServerDates);
  EXPECT_TRUE(OnlyOne().IsWaiting());
}
