// SPDX-License-Identifier: MIT
#include "platform/runtime/Error.h"
#include "tests/export/apply/Shared.h"

#include <QFile>

using namespace Qt::StringLiterals;
using apply::What;

namespace {

class Apply : public SharedStation {
 protected:
  Apply() { Fill(); }
};

ItemRow NewItem(qint32 id, const QString& naam) {
  ItemRow row;
  row.id = id;
  row.naam = naam;
  row.aktief = 1;
  return row;
}

const QString kServerSpots = u"1|Bakker,2|Slager,3|Kapper"_s;

}  // namespace

TEST_F(Apply, ADayGoesToTheServerAndItsListsFollow) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Opener 't Uur, caf\u00E9 \u0416"_s));
  ItemSpotRow slager = a.Spot(2);
  slager.eindDatum = 45710;
  a.UpdateSpot(slager);
  a.InsertItem(NewItem(2, u"Middag"_s), {4, 2});
  a.UpdateItem(a.Item(1), {2, 4});
  a.DeleteSpot(3);
  const apply::Result result = Process(a);
  EXPECT_EQ(result.Summary(), u"2 nieuw, 2 gewijzigd, 1 verwijderd"_s);
  EXPECT_EQ(Spots(), (QStringList{u"1|Bakker"_s, u"2|Slager"_s, u"4|Opener 't Uur, caf\u00E9 \u0416"_s}));
  EXPECT_EQ(Rows(u"SELECT ID FROM tblItemSpots WHERE EindDatum = 45710"_s), QStringList{u"2"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|2"_s, u"1|2|4"_s, u"2|1|4"_s, u"2|2|2"_s}));
}

TEST_F(Apply, ASecondRunChangesNoByteAlsoUnderAnotherName) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  const QString path = a.Export();
  Process(path, u"A"_s);
  const QString renamed = path.chopped(18) + u"20990101000000.tql";
  QFile::copy(path, renamed);
  QFile::copy(path + u".basis", renamed + u".basis");
  const auto content = [&] {
    QFile file(Server());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QByteArray before = content();
  for (const QString& again : {path, renamed}) {
    const apply::Result result = Process(again, u"A"_s);
    EXPECT_TRUE(result.doneBefore);
    EXPECT_EQ(result.processedName, u"20261122080100.tql"_s);
  }
  EXPECT_EQ(content(), before);
  EXPECT_EQ(Spots().size(), 4);
}

// Switching a spot off, on and off again gives two files of equal bytes.
TEST_F(Apply, TwoExportsOfEqualContentBothCount) {
  Workstation a = At(u"A"_s);
  for (const int aktief : {0, 1, 0}) {
    a.SetAktief(u"tblItemSpots"_s, 1, aktief);
    EXPECT_EQ(Process(a).Summary(), u"1 gewijzigd"_s);
    EXPECT_EQ(Rows(u"SELECT Aktief FROM tblItemSpots WHERE ID = 1"_s), QStringList{QString::number(aktief)});
  }
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  Process(a.Export(false), u"A"_s);
  OnServer(u"UPDATE tblItemSpots SET Aktief = 1 WHERE ID = 2"_s);
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  EXPECT_EQ(Process(a.Export(false), u"A"_s).Summary(), u"1 gewijzigd"_s);
}

TEST_F(Apply, TwoWorkstationsThatGaveOneNumberKeepBothSpots) {
  Workstation a = At(u"A"_s);
  Workstation b = At(u"B"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  b.InsertSpot(NewSpot(4, u"Garage"_s));
  b.UpdateItem(b.Item(1), {1, 4});
  Process(a);
  const apply::Result first = Process(b);
  EXPECT_EQ(Texts(first, What::Renumbered),
            QStringList{u"item-spot 4 \"Garage\" is nieuw en kreeg nummer 5: 4 was al in gebruik"_s});
  ItemSpotRow garage = b.Spot(4);
  garage.eindDatum = 45800;
  b.UpdateSpot(garage);  // in a later file
  Process(b);
  EXPECT_EQ(Spots().mid(3), (QStringList{u"4|Apotheek"_s, u"5|Garage"_s}));
  EXPECT_EQ(Rows(u"SELECT ID FROM tblItemSpots WHERE EindDatum = 45800"_s), QStringList{u"5"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|1"_s, u"1|2|5"_s}));
}

// After the copy was taken again, 4 is the other workstation's spot.
TEST_F(Apply, ANumberOfTheRefreshedCopyIsTheServersRecord) {
  Workstation a = At(u"A"_s);
  Workstation b = At(u"B"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  b.InsertSpot(NewSpot(4, u"Garage"_s));
  Process(a);
  Process(b);
  b.Refresh(Server());
  ItemSpotRow apotheek = b.Spot(4);
  apotheek.naam = u"Apotheek Centrum"_s;
  b.UpdateSpot(apotheek);
  b.UpdateItem(b.Item(1), {4, 5});
  b.DeleteSpot(5);
  EXPECT_EQ(Process(b).Count(What::Conflict), 0);
  EXPECT_EQ(Spots().mid(3), QStringList{u"4|Apotheek Centrum"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|4"_s, u"1|2|5"_s}));
}

// Closing the list takes the copy again, without the new spot, and its number is given once more.
TEST_F(Apply, TwoNewSpotsOfOneNumberInOneFileAreTwoSpots) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Eerste"_s));
  a.UpdateItem(a.Item(1), {4});
  a.Refresh(Server(), {u"tblItemSpots"_s});
  a.InsertSpot(NewSpot(4, u"Tweede"_s));
  a.InsertItem(NewItem(2, u"Middag"_s), {4});
  a.Refresh(Server(), {u"tblItemSpots"_s});
  a.InsertSpot(NewSpot(4, u"Tweede"_s));  // typed once more, for it was gone from the list
  Process(a);
  EXPECT_EQ(Spots().mid(3), (QStringList{u"4|Eerste"_s, u"5|Tweede"_s, u"6|Tweede"_s}));
  EXPECT_EQ(Links(), (QStringList{u"1|1|4"_s, u"2|1|5"_s}));
}

// The link of a spot that was made and deleted stays, and must not become one of the spot that has its number next.
TEST_F(Apply, ANumberIsNotGivenAgainWithinAFile) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Weg"_s));
  a.UpdateItem(a.Item(1), {1, 4});
  a.DeleteSpot(4);
  a.InsertSpot(NewSpot(4, u"Nieuw"_s));
  Process(a);
  EXPECT_EQ(Spots().mid(3), QStringList{u"5|Nieuw"_s});
  EXPECT_EQ(Links(), (QStringList{u"1|1|1"_s, u"1|2|4"_s}));
}

TEST_F(Apply, AFieldChangedOnOneSideIsTakenFromThatSide) {
  Workstation a = At(u"A"_s);
  ItemSpotRow bakker = a.Spot(1);
  bakker.eindDatum = 45999;
  a.UpdateSpot(bakker);
  OnServer(u"UPDATE tblItemSpots SET Path = \"E:\\nieuw.wav\", AantalGedraaid = 9 WHERE ID = 1"_s);
  EXPECT_EQ(Process(a).Summary(), u"1 gewijzigd"_s);
  EXPECT_EQ(Rows(u"SELECT Path, AantalGedraaid FROM tblItemSpots WHERE EindDatum = 45999"_s),
            QStringList{u"E:\\nieuw.wav|9"_s});
}

TEST_F(Apply, AResetOfThePlayCountIsCarriedOutWhateverWasAired) {
  Workstation a = At(u"A"_s);
  a.ResetPlayCount(1);
  OnServer(u"UPDATE tblItemSpots SET AantalGedraaid = 9 WHERE ID = 1"_s);
  EXPECT_EQ(Process(a).Count(What::Conflict), 0);
  EXPECT_EQ(Rows(u"SELECT AantalGedraaid FROM tblItemSpots WHERE ID = 1"_s), QStringList{u"0"_s});
}

TEST_F(Apply, WhatIsThereAlreadyIsReportedAsSuch) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  a.DeleteSpot(3);
  OnServer(
      u"INSERT INTO tblItemSpots (ID, Path, Naam, LengteSec, StartPunt, StartDatum, EindDatum, AantalGedraaid, "
      "Aktief) VALUES (4, \"D:\\audio\\Apotheek.wav\", \"Apotheek\", 20, 0, 45660, 45690, 3, 1)"_s);
  OnServer(u"UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1"_s);
  OnServer(u"DELETE FROM tblItemSpots WHERE ID = 3"_s);
  const apply::Result result = Process(a);
  EXPECT_EQ(result.Summary(), u"3 stonden er al zo"_s);
  EXPECT_TRUE(result.LooksCarriedOutElsewhere());
  EXPECT_EQ(Spots().size(), 3);
}

TEST_F(Apply, ADryRunSaysTheSameAndChangesNothing) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Apotheek"_s));
  const QString first = a.Export();
  a.SetAktief(u"tblItemSpots"_s, 4, 0);
  const QString second = a.Export();
  const std::vector<apply::ExportFile> files{apply::ReadExport(first), apply::ReadExport(second)};
  const std::vector<apply::Result> plan = apply::Plan(Server(), files, {u"A"_s, {}, false, {}});
  EXPECT_EQ(Spots().join(u','), kServerSpots);
  EXPECT_FALSE(dao::OpenDatabase(Server()).TableNames().contains(apply::ledger::kFiles));
  ASSERT_EQ(plan.size(), 2u);
  EXPECT_EQ(plan[0].lines, Process(first, u"A"_s).lines);
  EXPECT_EQ(plan[1].lines, Process(second, u"A"_s).lines);
}

TEST_F(Apply, AnOlderFileAfterANewerOneIsRefusedUnlessAskedFor) {
  Workstation a = At(u"A"_s);
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  const QString first = a.Export();
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  const QString second = a.Export();
  Process(second, u"A"_s);
  EXPECT_TRUE(ErrorOf(first).contains(u"20261122080200.tql"_s)) << ErrorOf(first).toStdString();
  EXPECT_EQ(Rows(u"SELECT Aktief FROM tblItemSpots ORDER BY ID"_s), (QStringList{u"1"_s, u"0"_s, u"1"_s}));
  EXPECT_EQ(ErrorOf(first, u"B"_s), QString());
  a.SetAktief(u"tblItemSpots"_s, 3, 0);
  EXPECT_EQ(Process(first, u"A"_s, true).doneBefore, true);
}

// The second file fails within: its record has a name that the shared database cannot hold.
TEST_F(Apply, FilesThatAreCarriedOutTogetherAllCountOrNone) {
  Workstation a = At(u"A"_s);
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  std::vector<apply::ExportFile> files{apply::ReadExport(a.Export())};
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  files.push_back(apply::ReadExport(a.Export()));
  a.InsertSpot(NewSpot(4, QString(300, u'x')));
  files.push_back(apply::ReadExport(a.Export()));
  const QString active = u"SELECT Aktief FROM tblItemSpots ORDER BY ID"_s;
  EXPECT_THROW(apply::CarryOut(Server(), files, {u"A"_s, {}, false, {}}), runtime::Error);
  EXPECT_EQ(Rows(active), (QStringList{u"1"_s, u"1"_s, u"1"_s}));
  files.pop_back();
  for (const apply::Result& result : apply::CarryOut(Server(), files, {u"A"_s, {}, false, {}}))
    EXPECT_EQ(result.Summary(), u"1 gewijzigd"_s);
  EXPECT_EQ(Rows(active), (QStringList{u"0"_s, u"0"_s, u"1"_s}));
  for (const apply::Result& result : apply::CarryOut(Server(), files, {u"A"_s, {}, false, {}}))
    EXPECT_TRUE(result.doneBefore);
}

// Two program folders may both be drive D of one computer.
TEST_F(Apply, AFileSaysItsWorkstationUnlessItIsOnlyADrive) {
  apply::ExportFile file;
  EXPECT_EQ(apply::SourceOf(file), QString()) << "without a basis";
  file.basis.emplace();
  for (const auto& [source, meant] :
       {std::pair(u"studio2 /home/jan/spotrooster"_s, u"studio2 /home/jan/spotrooster"_s),
        std::pair(u"vm D:"_s, QString()), std::pair(u"vm D:\\planner"_s, u"vm D:\\planner"_s),
        std::pair(u"STUDIO2"_s, u"STUDIO2"_s), std::pair(QString(), QString())}) {
    file.basis->source = source;
    EXPECT_EQ(apply::SourceOf(file), meant);
  }
  Workstation a = At(u"A"_s);
  a.SetAktief(u"tblItemSpots"_s, 1, 0);
  EXPECT_EQ(Process(a.Export(), {}).Summary(), u"1 gewijzigd"_s);
  EXPECT_EQ(Rows(u"SELECT Bron FROM tblVerwerkt"_s), QStringList{u"A"_s});
  a.SetAktief(u"tblItemSpots"_s, 2, 0);
  EXPECT_TRUE(ErrorOf(a.Export(false), {}).contains(u"van welk werkstation"_s));
}

// Without a basis: "*" is an apostrophe again, and what this file says wins.
TEST_F(Apply, AFileWithoutABasisIsCarriedOutAndEachDoubtIsNamed) {
  Workstation a = At(u"A"_s);
  a.InsertSpot(NewSpot(4, u"Opener 't Uur"_s));
  ItemSpotRow bakker = a.Spot(1);
  bakker.naam = u"Bakker 2"_s;
  a.UpdateSpot(bakker);
  a.DeleteSpot(2);
  a.SetAktief(u"tblItemSpots"_s, 3, 0);
  OnServer(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (4, \"Garage\")"_s);
  OnServer(u"UPDATE tblItemSpots SET EindDatum = 46000 WHERE ID = 1"_s);
  OnServer(u"DELETE FROM tblItemSpots WHERE ID = 3"_s);
  const apply::Result result = Process(a.Export(false), u"A"_s);
  EXPECT_EQ(Spots(), (QStringList{u"1|Bakker 2"_s, u"4|Garage"_s, u"5|Opener 't Uur"_s}));
  EXPECT_EQ(Rows(u"SELECT ID FROM tblItemSpots WHERE EindDatum = 45700"_s), QStringList{u"1"_s});
  EXPECT_EQ(result.Count(What::Renumbered), 1);
  EXPECT_EQ(result.Count(What::Conflict), 1);
  const QString notes = Texts(result, What::Note).join(u'\n');
  EXPECT_TRUE(notes.contains(u"geen basis"_s) && notes.contains(u"Opener 't Uur"_s)) << notes.toStdString();
}
