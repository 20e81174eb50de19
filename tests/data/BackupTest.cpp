// SPDX-License-Identifier: MIT
#include "data/Backup.h"

#include "data/Globals.h"
#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/WriteWait.h"
#include "platform/desktop/MessageBox.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/TemporaryName.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/FileCalls.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/FileFaults.h"
#include "tests/support/HeldDatabase.h"
#include "tests/support/Hindrance.h"
#include "tests/support/Station.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <optional>
#include <thread>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

const QDateTime kNow(QDate(2024, 1, 31), QTime(15, 45, 7));

class Backups : public testing::Test {
 protected:
  QStringList Names() const { return QDir(Folder()).entryList(QDir::Files, QDir::Name); }
  QString Folder() const { return station_.Folder() + u"/data/backup"_s; }
  void Change() const {
    station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"x\")"_s.arg(++rows_));
  }
  void FillCopies() const {
    for (const QString& table : {u"Items"_s, u"ItemSpots"_s, u"ItemPingles"_s})
      station_.OnLocal(u"INSERT INTO tblCopie_%1 (ID, Naam, Aktief) VALUES (1, \"x\", 1)"_s.arg(table));
    station_.OnLocal(u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s);
  }

  Station station_;
  mutable int rows_ = 0;
};

}  // namespace

TEST_F(Backups, CopyHasADateAndTheDatabasesContents) {
  Change();
  const runtime::ClockScope clock(kNow);
  const auto path = BackUp(global.localDatabasePath);
  ASSERT_TRUE(path);
  EXPECT_EQ(Names(), QStringList{u"OvalistoLocal-20240131-154507.mdb"_s});
  EXPECT_EQ(runtime::ReadFile(*path), runtime::ReadFile(global.localDatabasePath));
}

TEST_F(Backups, UnchangedDatabaseIsNotCopiedAgain) {
  Change();
  const auto first = BackUp(global.localDatabasePath);
  EXPECT_EQ(BackUp(global.localDatabasePath), first);
  EXPECT_EQ(Names().size(), 1);
  Change();
  EXPECT_NE(BackUp(global.localDatabasePath), first);
  EXPECT_EQ(Names().size(), 2);
}

TEST_F(Backups, TwoCopiesInOneSecondAreBothKept) {
  const runtime::ClockScope clock(kNow);
  BackUp(global.localDatabasePath);
  Change();
  BackUp(global.localDatabasePath);
  EXPECT_EQ(Names(), (QStringList{u"OvalistoLocal-20240131-154507.mdb"_s, u"OvalistoLocal-20240131-154508.mdb"_s}));
}

TEST_F(Backups, LastCopyIsTheNewestAfterTheClockWasSetBack) {
  QDateTime now = kNow;
  const runtime::ClockScope clock([&] { return now; });
  QStringList paths;
  for (int copy = 0; copy < 25; ++copy) {
    if (copy == 12) now = now.addYears(-1);
    Change();
    paths += BackUp(global.localDatabasePath).value();
    ASSERT_EQ(BackUp(global.localDatabasePath), paths.last());  // the newest copy is identical
  }
  // The newest three, and the newest of the hour before the clock was set back.
  EXPECT_EQ(Names().size(), 4);
  for (const QString& path : paths.mid(22))
    EXPECT_TRUE(QFile::exists(runtime::HostPath(path))) << path.toStdString();
}

TEST_F(Backups, CopyWithAFutureDateDisplacesNoOther) {
  QDateTime now = kNow.addYears(2);
  const runtime::ClockScope clock([&] { return now; });
  Change();
  BackUp(global.localDatabasePath);
  now = kNow;
  for (int day = 0; day < 25; ++day) {
    for (int copy = 0; copy < 2; ++copy) {
      Change();
      BackUp(global.localDatabasePath);
    }
    now = now.addDays(1);
  }
  QSet<QString> days;
  for (const QString& name : Names())
    days += name.mid(14, 8);
  EXPECT_EQ(days.size(), 26);
  EXPECT_TRUE(Names().contains(u"OvalistoLocal-20240131-154508.mdb"_s));
}

TEST_F(Backups, CopiesMadeWithAWrongClockAreKeptAfterItIsCorrected) {
  QDateTime now = kNow;
  const runtime::ClockScope clock([&] { return now; });
  Change();
  BackUp(global.localDatabasePath);
  now = kNow.addYears(-1);
  for (int day = 0; day < 25; ++day) {
    Change();
    BackUp(global.localDatabasePath);
    now = now.addDays(1);
  }
  now = kNow.addDays(25);
  Change();
  BackUp(global.localDatabasePath);
  EXPECT_EQ(Names().size(), 27);
}

TEST_F(Backups, NumberOfCopiesIsBoundedWithAWrongClock) {
  QDateTime now = kNow.addYears(2);
  const runtime::ClockScope clock([&] { return now; });
  Change();
  BackUp(global.localDatabasePath);
  now = kNow;
  for (int day = 0; day < 60; ++day) {
    Change();
    BackUp(global.localDatabasePath);
    now = now.addDays(1);
  }
  EXPECT_LE(Names().size(), 40);
}

TEST_F(Backups, DeletesOldCopiesButKeepsTheNewestWithFilledCopyTables) {
  FillCopies();
  QDateTime now = kNow;
  const runtime::ClockScope clock([&] { return now; });
  BackUp(global.localDatabasePath);
  station_.OnLocal(u"DELETE FROM tblCopie_ItemPingles"_s);
  for (int copy = 0; copy < 14; ++copy) {
    now = now.addDays(40);
    Change();
    BackUp(global.localDatabasePath);
  }
  EXPECT_EQ(Names().size(), 11);
  EXPECT_EQ(Names().first(), u"OvalistoLocal-20240131-154507.mdb"_s);
}

namespace {

// Writes a row from another thread, as another program would, before each copy of the database ends; `most` times.
class WritesDuringTheCopy {
 public:
  WritesDuringTheCopy(QString database, int most) : database_(std::move(database)), most_(most) {}
  int Copies() const { return copies_; }
  int Refused() const { return refused_; }

 private:
  void Write() {
    std::thread([this] {
      const dao::WriteWaitScope shortly(std::chrono::milliseconds(100));
      try {
        dao::OpenDatabase(database_).Execute(
            u"INSERT INTO tblItems (ID, Naam) VALUES (%1, \"x\")"_s.arg(100 + copies_));
      } catch (const runtime::Error&) {
        ++refused_;
      }
    }).join();
  }

  QString database_;
  int most_;
  int copies_ = 0;
  int refused_ = 0;
  testing_support::FileFaults calls_{[this](const files::FileCall& call) {
    if (call.kind != files::FileCall::Sync || !files::IsTemporaryName(call.path)) return 0;
    if (++copies_ <= most_) Write();
    return 0;
  }};
};

// A shared database in a file, also when the tests run on a database server.
class DailyBackups : public Backups {
 protected:
  DailyBackups() { schema::CreateServerDatabase(Server()); }
  QString Server() const { return runtime::PathText(station_.Folder() + u"/gedeeld.mdb"_s); }
  int Count() const { return static_cast<int>(BackupsOf(Server()).size()); }
  void AddItem(int id) const {
    dao::OpenDatabase(Server()).Execute(u"INSERT INTO tblItems (ID, Naam) VALUES (%1, \"x\")"_s.arg(id));
  }
};

}  // namespace

TEST_F(DailyBackups, OneCopyIsMadeEachDay) {
  AddItem(1);
  BackUpDaily(Server(), kNow);
  EXPECT_EQ(runtime::ReadFile(BackupFolderOf(Server()) + u"\\gedeeld-20240131-154507.mdb"_s),
            runtime::ReadFile(Server()));
  AddItem(2);
  BackUpDaily(Server(), kNow.addSecs(3600));
  EXPECT_EQ(Count(), 1);
  BackUpDaily(Server(), kNow.addDays(1));
  EXPECT_EQ(Count(), 2);
  EXPECT_EQ(BackupsOf(Server()).first().moment, kNow.addDays(1));
  BackUpDaily(Server(), kNow.addDays(2));  // unchanged since
  EXPECT_EQ(Count(), 2);
}

TEST_F(DailyBackups, WriterDoesNotWaitForTheCopy) {
  AddItem(1);
  WritesDuringTheCopy writes(Server(), 1);
  BackUpDaily(Server(), kNow);
  EXPECT_EQ(writes.Refused(), 0);
  EXPECT_EQ(writes.Copies(), 2) << "the first one misses the row";
  EXPECT_EQ(runtime::ReadFile(BackupFolderOf(Server()) + u"\\gedeeld-20240131-154507.mdb"_s),
            runtime::ReadFile(Server()));
  EXPECT_EQ(Count(), 1);
}

TEST_F(DailyBackups, WriterWaitsOnlyWhileTheChangedPartIsCopiedAgain) {
  AddItem(1);
  WritesDuringTheCopy writes(Server(), 100);
  BackUpDaily(Server(), kNow);
  EXPECT_EQ(writes.Copies(), 2);
  EXPECT_EQ(writes.Refused(), 1);
  EXPECT_EQ(runtime::ReadFile(BackupFolderOf(Server()) + u"\\gedeeld-20240131-154507.mdb"_s),
            runtime::ReadFile(Server()));
}

TEST_F(DailyBackups, CopyOfAnotherProgramDuringTheOwnOneIsKept) {
  AddItem(1);
  const QString theirs = BackupFolderOf(Server()) + u"\\gedeeld-20240131-090000.mdb"_s;
  const testing_support::FileFaults other([&](const files::FileCall& call) {
    if (call.kind == files::FileCall::Sync && files::IsTemporaryName(call.path) && Count() == 0)
      QFile::copy(runtime::HostPath(Server()), runtime::HostPath(theirs));
    return 0;
  });
  BackUpDaily(Server(), kNow);
  EXPECT_EQ(Count(), 1);
  EXPECT_TRUE(QFile::exists(runtime::HostPath(theirs)));
}

TEST_F(DailyBackups, TemporaryFileOfACopyInProgressIsLeftAlone) {
  AddItem(1);
  QDir().mkpath(runtime::HostPath(BackupFolderOf(Server())));
  const auto path =
      runtime::NativePath(runtime::HostPath(BackupFolderOf(Server())) + u"/gedeeld-20240130-154507.mdb"_s);
  files::AtomicFile busy(path, files::HostFileSystem());
  BackUpDaily(Server(), kNow);
  EXPECT_TRUE(std::filesystem::exists(busy.TemporaryPath()));
}

TEST_F(DailyBackups, CopyOfAnotherProgramCountsAlsoAfterAWait) {
  std::thread other;
  {
    // Its copy appears while this program waits for its turn to write.
    const dao::FrozenDatabase held(Server());
    std::promise<void> isWaiting;
    other = std::thread([&] {
      isWaiting.set_value();
      BackUpDaily(Server(), kNow);
    });
    isWaiting.get_future().wait();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    held.MakeFolder(BackupFolderOf(Server()));
    runtime::WriteFile(BackupFolderOf(Server()) + u"\\gedeeld-20240131-090000.mdb"_s, "an earlier state");
    dao::OpenDatabase(Server(), {.readOnly = true});  // readers do not wait
  }
  other.join();
  EXPECT_EQ(Count(), 1);
}

TEST_F(DailyBackups, NewestCopyWithItemsAndSpotsIsAlwaysKept) {
  AddItem(1);
  dao::OpenDatabase(Server()).Execute(u"INSERT INTO tblItemSpots (ID, Naam) VALUES (1, \"x\")"_s);
  BackUpDaily(Server(), kNow);
  dao::OpenDatabase(Server()).Execute(u"DELETE FROM tblItemSpots"_s);
  for (int copy = 1; copy < 15; ++copy) {
    AddItem(1 + copy);
    BackUpDaily(Server(), kNow.addDays(40 * copy));
  }
  EXPECT_EQ(Count(), 11);
  EXPECT_EQ(BackupsOf(Server()).last().moment, kNow);
}

TEST_F(DailyBackups, DatabaseOnAServerIsLeftToItsAdministrator) {
  EXPECT_NO_THROW(BackUpDaily(u"postgresql://nergens.invalid/zender\\OvalistoServer.mdb"_s, kNow));
  EXPECT_TRUE(BackupsOf(u"postgresql://nergens.invalid/zender\\OvalistoServer.mdb"_s).isEmpty());
}

TEST_F(Backups, OtherFilesInTheFolderAreKept) {
  ASSERT_TRUE(QDir().mkpath(Folder()));
  const QStringList others{u"OvalistoLocal3-20000101-000000.mdb"_s, u"OvalistoLocal-oud.mdb"_s, u"notities.txt"_s};
  for (const QString& name : others)
    runtime::WriteFile(runtime::PathText(Folder() + u'/' + name), "x");
  QDateTime now = kNow;
  const runtime::ClockScope clock([&] { return now; });
  for (int copy = 0; copy < 12; ++copy) {
    now = now.addDays(40);
    Change();
    BackUp(global.localDatabasePath);
  }
  EXPECT_EQ(Names().size(), 10 + others.size());
  for (const QString& name : others)
    EXPECT_TRUE(Names().contains(name)) << name.toStdString();
}

TEST_F(Backups, FullDiskLeavesNoIncompleteCopy) {
  Change();
  {
    const testing_support::FullDisk full(8192);
    EXPECT_THROW(BackUp(global.localDatabasePath), runtime::Error);
  }
  EXPECT_EQ(Names(), QStringList());
}

TEST_F(Backups, TemporaryFileOfAKilledCopyIsDeletedByTheNext) {
  ASSERT_TRUE(QDir().mkpath(Folder()));
  runtime::WriteFile(
      runtime::PathText(Folder() + u"/.OvalistoLocal-20240101-000000.mdb.0123456789abcdef.spotrooster-tmp"_s), "half");
  BackUp(global.localDatabasePath);
  EXPECT_EQ(QDir(Folder()).entryList({u"*-tmp"_s}, QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(Backups, DatabaseInUseFailsAndTheUserDecides) {
  Change();
  const testing_support::HeldDatabase held(global.localDatabasePath);
  EXPECT_THROW(BackUp(global.localDatabasePath), runtime::Error);
  for (const int answer : {desktop::kAnswerNo, desktop::kAnswerYes}) {
    const MessageBoxScript boxes{answer};
    EXPECT_EQ(BackUpBefore(global.localDatabasePath).proceed, answer == desktop::kAnswerYes);
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Last().defaultAnswer, desktop::kAnswerNo);
    EXPECT_TRUE(boxes.Last().text.contains(u"in gebruik"_s)) << boxes.Last().text.toStdString();
  }
}

TEST_F(Backups, MissingDatabaseGivesNoCopyAndNoError) {
  ASSERT_TRUE(QFile::remove(runtime::HostPath(global.localDatabasePath)));
  EXPECT_EQ(BackUp(global.localDatabasePath), std::nullopt);
}

TEST_F(Backups, SettingDisablesCopies) {
  const QString settings = global.programFolder + u"\\ovalis.ini"_s;
  EXPECT_TRUE(BackupsEnabled(settings));
  runtime::WriteFile(settings, "[Files]\r\nExportPath=x\r\n");
  EXPECT_TRUE(BackupsEnabled(settings));
  runtime::WriteFile(settings, "[backup]\r\nenabled = 0\r\n");
  EXPECT_FALSE(BackupsEnabled(settings));
  EXPECT_TRUE(BackUpBefore(global.localDatabasePath).path.isEmpty());
  EXPECT_EQ(Names(), QStringList());
}

TEST_F(Backups, UserIsAskedWhenNoCopyCanBeWritten) {
  for (const int answer : {desktop::kAnswerNo, desktop::kAnswerYes}) {
    const MessageBoxScript boxes{answer};
    const testing_support::FullDisk full(8192);
    EXPECT_EQ(BackUpBefore(global.localDatabasePath).proceed, answer == desktop::kAnswerYes);
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Last().style, 292);
    EXPECT_EQ(boxes.Last().defaultAnswer, desktop::kAnswerNo);
    EXPECT_TRUE(boxes.Last().text.contains(global.localDatabasePath));
    EXPECT_TRUE(boxes.Last().text.contains(u"niet schrijven"_s)) << boxes.Last().text.toStdString();
  }
}
