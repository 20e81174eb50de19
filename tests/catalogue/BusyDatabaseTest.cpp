// SPDX-License-Identifier: MIT
// Another program has locked the database of the current mode: what each window shows, and that nothing changes.
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/Catalogue.h"
#include "data/Messages.h"
#include "platform/controls/ListBox.h"
#include "platform/dao/WriteWait.h"
#include "platform/dao/postgres/ServerAddress.h"
#include "platform/desktop/MessageBox.h"
#include "platform/jet/pages/Files.h"
#include "platform/jet/storage/Lock.h"
#include "platform/runtime/HostPath.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Cluster.h"

#include <QCheckBox>

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

enum class Work { PreparesAChange, WritesPages };  // others can still read; others cannot even read

// The locks of another program that uses a database file.
class OtherProgramOnFile {
 public:
  OtherProgramOnFile(const QString& databasePath, Work work)
      : file_(jet::HostFileSystem().Open(runtime::HostPath(databasePath).toStdString(), jet::OpenMode::Write)),
        lock_(*file_) {
    if (!lock_.TryShare() || !lock_.TryReserve()) throw std::runtime_error("the database is in use already");
    if (work == Work::WritesPages) WaitForReaders();
  }

 private:
  // A list may still be reading its marks in another thread.
  void WaitForReaders() {
    while (!lock_.TryExclude())
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }

  std::unique_ptr<jet::File> file_;
  jet::Lock lock_;
};

// The locks of another program that uses a database. On a server only an administrator's work blocks readers.
class OtherProgram {
 public:
  OtherProgram(const QString& databasePath, Work work) {
    if (!dao::IsServerPath(databasePath)) {
      onFile_.emplace(databasePath, work);
    } else if (work == Work::PreparesAChange) {
      onServer_.emplace(u"SELECT one FROM \"OvalistoServer\".spotrooster_turn FOR UPDATE"_s);
    } else {
      onServer_.emplace(
          u"LOCK TABLE \"OvalistoServer\".\"tblItems\", \"OvalistoServer\".\"tblItemSpots\", "
          "\"OvalistoServer\".\"tblItemPingles\" IN ACCESS EXCLUSIVE MODE"_s);
    }
  }

 private:
  std::optional<OtherProgramOnFile> onFile_;
  std::optional<testing_support::OtherTransaction> onServer_;
};

}  // namespace

class BusyDatabase : public CatalogueTestInBothModes {
 protected:
  BusyDatabase() : path_(AudioFile(u"spot.wav"_s)) {
    AddSpot({3, u"Spot"_s, path_, 1});
    AddItem(1, u"Blok"_s);
    Link(1, 1, 3);
    AddPingle(1, u"Intro"_s);
    global.gstrOpruimenID = u"1"_s;
  }

  void Busy(Work work, const QString& databasePath) { other_.emplace(databasePath, work); }
  void Busy(Work work) { Busy(work, CurrentCatalogue().databasePath); }
  void Free() { other_.reset(); }

  template <class Overview>
  void ExpectListWaitsForTheUser(const QString& line) {
    Overview form(nullptr);
    Busy(Work::WritesPages);
    Open(form);
    Free();
    EXPECT_TRUE(boxes_.Last().text.contains(u"in gebruik"_s)) << boxes_.Last().text.toStdString();
    EXPECT_EQ(boxes_.Last().title, u"FillLstOverzicht"_s);
    EXPECT_EQ(Lines(form), QStringList());
    EXPECT_FALSE(Enabled(form, u"cmdOpen"_s));
    QApplication::setActiveWindow(&form);
    QTest::keyClick(&form, Qt::Key_F5);
    EXPECT_EQ(Lines(form), QStringList{line});
  }

  // Presses a button on the selected line while the other program prepares a change.
  template <class Overview>
  void ExpectRefused(const QString& button, const QString& title) {
    Overview form(nullptr);
    Open(form);
    List(form).SetListIndex(0);
    Busy(Work::PreparesAChange);
    Click(form, button);
    Free();
    EXPECT_TRUE(boxes_.Last().text.contains(u"in gebruik"_s)) << boxes_.Last().text.toStdString();
    EXPECT_EQ(boxes_.Last().title, title);
    EXPECT_EQ(Lines(form).size(), 1);
    EXPECT_FALSE(global.lastResult);
    ExpectUntouched();
  }

  void ExpectUntouched() {
    EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{3});
    EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
    EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>{1});
    EXPECT_EQ(station_.CurrentRows(u"SELECT * FROM "_s + Table(u"ItemsItemSpots"_s)).RecordCount(), 1);
    EXPECT_EQ(station_.Log(), QStringList());
    EXPECT_TRUE(FileIsThere(path_));
  }

  QStringList Titles() const {
    QStringList titles;
    for (const desktop::ShownMessageBox& box : boxes_.Shown())
      titles += box.title;
    return titles;
  }

  dao::WriteWaitScope wait_{std::chrono::milliseconds(10)};
  std::optional<OtherProgram> other_;
  QString path_;
};

INSTANTIATE_TEST_SUITE_P(Modes, BusyDatabase, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(BusyDatabase, EveryListReportsItAndCanBeRefilled) {
  ExpectListWaitsForTheUser<frmItemSpots>(u"Spot"_s);
  ExpectListWaitsForTheUser<frmItems>(u"Blok"_s);
  ExpectListWaitsForTheUser<frmItemPingles>(u"Intro"_s);
}

TEST_P(BusyDatabase, ListCanBeReadWhileAnotherPreparesAChange) {
  Busy(Work::PreparesAChange);
  frmItemSpots form(nullptr);
  Open(form);
  EXPECT_EQ(Lines(form), QStringList{u"Spot"_s});
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(BusyDatabase, SpotThatCannotBeDeactivatedRemainsActive) {
  ExpectRefused<frmItemSpots>(u"cmdDesaktiveer"_s, u"Update_tblItemSpots_Aktief"_s);
  EXPECT_EQ(Numbers(station_.CurrentRows(u"SELECT Aktief FROM "_s + Table(u"ItemSpots"_s)), u"Aktief"_s),
            QList<int>{1});
}

TEST_P(BusyDatabase, ItemThatCannotBeDeactivatedStaysActive) {
  ExpectRefused<frmItems>(u"cmdDesaktiveer"_s, u"Update_tblItems_Aktief"_s);
  EXPECT_EQ(Numbers(station_.CurrentRows(u"SELECT Aktief FROM "_s + Table(u"Items"_s)), u"Aktief"_s), QList<int>{1});
}

TEST_P(BusyDatabase, JingleThatCannotBeRemovedStays) {
  boxes_.Answer(desktop::kAnswerYes);
  ExpectRefused<frmItemPingles>(u"cmdVerwijder"_s, u"Delete_tblBeheer"_s);
}

TEST_P(BusyDatabase, SpotCleanupOfTheRecordFailsWithoutASuccessMessage) {
  global.gstrOpruimenID = u"3"_s;
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Busy(Work::PreparesAChange);
  Click(form, u"cmdOk"_s);
  Free();
  EXPECT_TRUE(OnlyError(u"Delete_tblBeheer"_s).contains(u"in gebruik"_s));
  EXPECT_FALSE(form.isVisible());
  ExpectUntouched();
}

// Record and file are independent: the file is deleted even if the record could not be.
TEST_P(BusyDatabase, SpotCleanupStillDeletesTheFile) {
  global.gstrOpruimenID = u"3"_s;
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Child<QCheckBox>(form, u"chkVerwijderBestand"_s).setChecked(true);
  Busy(Work::PreparesAChange);
  Click(form, u"cmdOk"_s);
  Free();
  OnlyError(u"Delete_tblBeheer"_s);
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{3});
  EXPECT_FALSE(FileIsThere(path_));
}

TEST_P(BusyDatabase, ItemCleanupFailsAtEachStepWithoutASuccessMessage) {
  frmItemOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderSpots"_s).setChecked(true);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Busy(Work::PreparesAChange);
  // The first question: continue without a backup. The program makes no backups of a server.
  const bool asks = GetParam() == Station::Mode::Offline || !testing_support::OnServer();
  if (asks) boxes_.Answer(kAnswerYes);
  for (const int answer : {kAnswerOk, kAnswerOk, kAnswerOk, kAnswerYes})
    boxes_.Answer(answer);
  Click(form, u"cmdOk"_s);
  Free();
  QStringList expected{u"Delete_tblBeheer"_s, u"Delete_tblBeheer"_s, u"Delete_tblBeheer"_s};
  if (asks) expected.prepend(u"Items"_s);
  // Offline the local database is busy: its copy can be neither emptied nor filled on closing.
  if (GetParam() == Station::Mode::Offline) expected += {u"Items"_s, u"DeleteAllInTable"_s, u"TransItemSpotsToLocal"_s};
  EXPECT_EQ(Titles(), expected);
  EXPECT_FALSE(form.isVisible());
  ExpectUntouched();
}

TEST_P(BusyDatabase, CopyFromABusyServerOffersToRestoreTheRows) {
  station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);
  station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (8, \"kopie\", 1)"_s);
  frmItemSpots form(nullptr);
  Open(form);
  Busy(Work::WritesPages, global.serverDatabasePath);
  boxes_.Answer(desktop::kAnswerOk);
  boxes_.Answer(desktop::kAnswerYes);
  Click(form, u"cmdSluiten"_s);
  Free();
  EXPECT_EQ(Titles(), (QStringList{u"TransItemSpotsToLocal"_s, u"Items"_s}));
  EXPECT_TRUE(boxes_.Shown()[0].text.contains(u"in gebruik"_s));
  EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{8});
  EXPECT_FALSE(form.isVisible());
}

// The other program may end at any time, so a copy without a backup is not emptied.
TEST_P(BusyDatabase, CopyIsNotEmptiedWithoutABackupUnlessTheUserWantsIt) {
  station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);
  station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (8, \"kopie\", 1)"_s);
  frmItemSpots form(nullptr);
  Open(form);
  Busy(Work::PreparesAChange, global.localDatabasePath);
  boxes_.Answer(kAnswerNo);
  Click(form, u"cmdSluiten"_s);
  Free();
  EXPECT_EQ(Titles(), QStringList{u"Items"_s});
  EXPECT_EQ(boxes_.Last().defaultAnswer, kAnswerNo);
  EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{8});
}

TEST_P(BusyDatabase, CopyIntoABusyLocalDatabaseLeavesItsRows) {
  station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);
  station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (8, \"kopie\", 1)"_s);
  frmItemSpots form(nullptr);
  Open(form);
  Busy(Work::PreparesAChange, global.localDatabasePath);
  boxes_.Answer(kAnswerYes);
  Click(form, u"cmdSluiten"_s);
  Free();
  EXPECT_EQ(Titles(), (QStringList{u"Items"_s, u"DeleteAllInTable"_s, u"TransItemSpotsToLocal"_s}));
  EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{8});
}
