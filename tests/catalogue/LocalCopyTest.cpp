// SPDX-License-Identifier: MIT
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Hindrance.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

// The effect of closing a list on the copies of the server's tables in the local database.
class LocalCopy : public CatalogueTestInBothModes {
 protected:
  static constexpr int kOnServer = 1;
  static constexpr int kInCopy = 8;

  // Different rows on both sides, so that a refresh shows.
  LocalCopy() {
    for (const QString& things : {u"Items"_s, u"ItemSpots"_s, u"ItemPingles"_s}) {
      station_.OnServer(u"INSERT INTO tbl%1 (ID, Naam, Aktief) VALUES (1, \"server\", 1)"_s.arg(things));
      station_.OnLocal(u"INSERT INTO tblCopie_%1 (ID, Naam, Aktief) VALUES (8, \"kopie\", 1)"_s.arg(things));
    }
    station_.OnServer(u"INSERT INTO tblItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 1)"_s);
    station_.OnLocal(u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (8, 1, 8)"_s);
  }

  QList<int> Copied(const QString& things) {
    const QString field = things == u"ItemsItemSpots"_s ? u"ItemID"_s : u"ID"_s;
    return Numbers(station_.LocalRows(u"SELECT %1 FROM tblCopie_%2"_s.arg(field, things)), field);
  }

  // The copies that contain the server's rows now; the others must have their own rows.
  QStringList Refreshed() {
    QStringList refreshed;
    for (const QString& things : {u"Items"_s, u"ItemsItemSpots"_s, u"ItemSpots"_s, u"ItemPingles"_s}) {
      if (Copied(things) == QList<int>{kOnServer}) {
        refreshed += things;
      } else {
        EXPECT_EQ(Copied(things), QList<int>{kInCopy}) << things.toStdString();
      }
    }
    return refreshed;
  }

  template <class List>
  void OpenAndClose() {
    List form(nullptr);
    Open(form);
    Click(form, u"cmdSluiten"_s);
    EXPECT_FALSE(form.isVisible());
  }

  // Closes the item-spot list after the server was removed; the second answer is for the question after the error.
  void CloseWithoutServer(int answer) {
    frmItemSpots form(nullptr);
    Open(form);
    station_.LoseServer();
    boxes_.Answer(desktop::kAnswerOk);
    boxes_.Answer(answer);
    Click(form, u"cmdSluiten"_s);
    EXPECT_FALSE(form.isVisible());
  }

  // The oldest first.
  QStringList Backups() const {
    const QDir folder(station_.Folder() + u"/data/backup"_s);
    QStringList paths;
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
      paths += folder.filePath(name);
    return paths;
  }

  bool IsOnline() const { return GetParam() == Station::Mode::Online; }
};

INSTANTIATE_TEST_SUITE_P(Modes, LocalCopy, ::testing::Values(Station::Mode::Online, Station::Mode::Offline), ModeName);

TEST_P(LocalCopy, ItemListRefreshesItemsAndLinksOnlineOnly) {
  OpenAndClose<frmItems>();
  EXPECT_EQ(Refreshed(), IsOnline() ? (QStringList{u"Items"_s, u"ItemsItemSpots"_s}) : QStringList());
  EXPECT_TRUE(boxes_.Shown().empty());
}

TEST_P(LocalCopy, ItemPingleListRefreshesJinglesOnlineOnly) {
  OpenAndClose<frmItemPingles>();
  EXPECT_EQ(Refreshed(), IsOnline() ? QStringList{u"ItemPingles"_s} : QStringList());
}

TEST_P(LocalCopy, ItemSpotListRefreshesTheSpotsInBothModes) {
  OpenAndClose<frmItemSpots>();
  EXPECT_EQ(Refreshed(), QStringList{u"ItemSpots"_s});
  EXPECT_EQ(station_.Log(), QStringList());
}

TEST_P(LocalCopy, ItemCleanupRefreshesTheSpotsInBothModes) {
  global.gstrOpruimenID = u"1"_s;
  OpenAndClose<frmItemOpruimen>();
  EXPECT_EQ(Refreshed(), QStringList{u"ItemSpots"_s});
}

TEST_P(LocalCopy, EveryFieldIsCopied) {
  station_.OnServer(
      u"UPDATE tblItemSpots SET Path = \"D:\\a.wav\", LengteSec = 5, Mixpunt = 250, StartDatum = 45658, EindUur = 9"_s);
  OpenAndClose<frmItemSpots>();
  const dao::Recordset row = station_.LocalRows(u"SELECT * FROM tblCopie_ItemSpots"_s);
  EXPECT_EQ(row.Field(u"Path"_s).toString(), u"D:\\a.wav"_s);
  EXPECT_EQ(row.Field(u"Mixpunt"_s).toInt(), 250);
  EXPECT_EQ(row.Field(u"StartDatum"_s).toDate(), QDate(2025, 1, 1));
  EXPECT_EQ(row.Field(u"EindUur"_s).toInt(), 9);
}

TEST_P(LocalCopy, CloseButtonAndEscAlsoRefresh) {
  frmItemSpots byFrame(nullptr);
  Open(byFrame);
  byFrame.close();
  EXPECT_EQ(Refreshed(), QStringList{u"ItemSpots"_s});
  station_.OnServer(u"DELETE FROM tblItemSpots"_s);
  frmItemSpots byKey(nullptr);
  Open(byKey);
  QTest::keyClick(&byKey, Qt::Key_Escape);
  EXPECT_FALSE(byKey.isVisible());
  EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>());
}

TEST_P(LocalCopy, LostServerEmptiesTheCopyAndOffersToRestore) {
  CloseWithoutServer(desktop::kAnswerYes);
  ASSERT_EQ(boxes_.Shown().size(), 2u);
  EXPECT_EQ(boxes_.Shown()[0].title, u"TransItemSpotsToLocal"_s);
  EXPECT_EQ(boxes_.Shown()[0].style, 16);
  EXPECT_EQ(boxes_.Shown()[1].title, u"Items"_s);
  EXPECT_EQ(boxes_.Shown()[1].style, 36);
  EXPECT_TRUE(boxes_.Shown()[1].text.contains(u"terugzetten"_s));
  EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>{kInCopy});
  EXPECT_FALSE(global.lastResult);
}

// The server exists when the copy is emptied and is missing when it is filled.
TEST_P(LocalCopy, ServerLostBetweenEmptyingAndCopyOffersToRestore) {
  frmItemSpots form(nullptr);
  Open(form);
  bool vanished = false;
  QTimer between;  // runs between the two steps, when windows are repainted
  QObject::connect(&between, &QTimer::timeout, [&] {
    if (vanished || !Copied(u"ItemSpots"_s).isEmpty()) return;
    vanished = true;
    station_.LoseServer();
  });
  between.start(0);
  boxes_.Answer(desktop::kAnswerOk);
  boxes_.Answer(desktop::kAnswerYes);
  Click(form, u"cmdSluiten"_s);
  EXPECT_TRUE(vanished);
  ASSERT_EQ(boxes_.Shown().size(), 2u);
  EXPECT_EQ(boxes_.Shown()[0].title, u"TransItemSpotsToLocal"_s);
  EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>{kInCopy});
  EXPECT_FALSE(form.isVisible());
}

// Events pending at closing are processed before the copy changes.
TEST_P(LocalCopy, PendingEventsAreProcessedBeforeTheEmptying) {
  frmItemSpots form(nullptr);
  Open(form);
  QList<int> seen;
  QMetaObject::invokeMethod(
      &form, [&] { seen = Copied(u"ItemSpots"_s); }, Qt::QueuedConnection);
  Child<QPushButton>(form, u"cmdSluiten"_s).click();
  EXPECT_EQ(seen, QList<int>{kInCopy});
}

TEST_P(LocalCopy, LostServerLeavesTheCopyEmptyOnNo) {
  CloseWithoutServer(desktop::kAnswerNo);
  EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>());
  EXPECT_EQ(boxes_.Shown().size(), 2u);
}

TEST_P(LocalCopy, NoRestoreIsOfferedForAnEmptyCopy) {
  station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);
  frmItemSpots form(nullptr);
  Open(form);
  station_.LoseServer();
  Click(form, u"cmdSluiten"_s);
  OnlyError(u"TransItemSpotsToLocal"_s);
}

TEST_P(LocalCopy, RowsKeptFromAnEarlierRefreshAreNeverMixedIn) {
  OpenAndClose<frmItemSpots>();
  CloseWithoutServer(desktop::kAnswerYes);
  EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>{kOnServer});
}

TEST_P(LocalCopy, OneBackupIsMadeBeforeAllTablesOfAList) {
  OpenAndClose<frmItems>();
  ASSERT_EQ(Backups().size(), IsOnline() ? 1 : 0);
  if (!IsOnline()) return;
  dao::Database backup = dao::OpenDatabase(runtime::PathText(Backups().first()));
  EXPECT_EQ(Numbers(backup.OpenRecordset(u"SELECT ID FROM tblCopie_Items"_s), u"ID"_s), QList<int>{kInCopy});
  EXPECT_EQ(Numbers(backup.OpenRecordset(u"SELECT ItemID FROM tblCopie_ItemsItemSpots"_s), u"ItemID"_s),
            QList<int>{kInCopy});
}

TEST_P(LocalCopy, TheBackupIsKeptForEveryAnswer) {
  CloseWithoutServer(desktop::kAnswerNo);
  ASSERT_EQ(Backups().size(), 1);
  // No restore is offered any more, and nothing was lost.
  OpenAndClose<frmItemSpots>();
  const auto& shown = boxes_.Shown();
  EXPECT_EQ(
      std::count_if(shown.begin(), shown.end(), [](const auto& box) { return box.text.contains(u"terugzetten"_s); }),
      1);
  dao::Database first = dao::OpenDatabase(runtime::PathText(Backups().first()));
  EXPECT_EQ(Numbers(first.OpenRecordset(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{kInCopy});
}

TEST_P(LocalCopy, WithoutABackupTheUserDecides) {
  runtime::WriteFile(global.programFolder + u"\\data\\backup"_s, "no folder");
  for (const int answer : {desktop::kAnswerNo, desktop::kAnswerYes}) {
    boxes_.Answer(answer);
    global.lastResult = answer == desktop::kAnswerNo;
    OpenAndClose<frmItemSpots>();
    EXPECT_EQ(global.lastResult, answer == desktop::kAnswerYes);
    EXPECT_EQ(boxes_.Last().style, 292);
    EXPECT_TRUE(boxes_.Last().text.contains(u"OvalistoLocal.mdb"_s));
    EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>{answer == desktop::kAnswerYes ? kOnServer : kInCopy});
  }
  EXPECT_EQ(boxes_.Shown().size(), 2u);
}

TEST_P(LocalCopy, AFullDiskKeepsTheCopyForEveryAnswer) {
  for (const int answer : {desktop::kAnswerNo, desktop::kAnswerYes}) {
    frmItemSpots form(nullptr);
    Open(form);
    boxes_.Answer(answer);
    {
      const testing_support::FullDisk full(100);
      Click(form, u"cmdSluiten"_s);
    }
    EXPECT_EQ(Copied(u"ItemSpots"_s), QList<int>{kInCopy});
    EXPECT_FALSE(global.lastResult);
  }
  // The question twice, and the write layer's messages about emptying and copying.
  EXPECT_EQ(boxes_.Shown().size(), 4u);
}

TEST_P(LocalCopy, WithBackupsOffThereIsNoBackupAndNoRestore) {
  runtime::WriteFile(global.programFolder + u"\\ovalis.ini"_s, "[Backup]\r\nEnabled=0\r\n");
  frmItemSpots form(nullptr);
  Open(form);
  station_.LoseServer();
  Click(form, u"cmdSluiten"_s);
  OnlyError(u"TransItemSpotsToLocal"_s);
  EXPECT_EQ(Backups(), QStringList());
}

TEST_P(LocalCopy, TheItemListEmptiesAndCopiesTheItemsBeforeTheirLinks) {
  const QString local = station_.Folder() + u"/data/OvalistoLocal.mdb"_s;
  frmItems form(nullptr);
  Open(form);
  ASSERT_TRUE(QFile::rename(local, local + u".weg"_s));
  Click(form, u"cmdSluiten"_s);
  QStringList titles;
  for (const desktop::ShownMessageBox& box : boxes_.Shown())
    titles += box.title;
  const QStringList steps{u"DeleteAllInTable"_s, u"TransItemsToLocal"_s, u"DeleteAllInTable"_s,
                          u"TransItemsItemSpotsToLocal"_s};
  EXPECT_EQ(titles, IsOnline() ? steps : QStringList());
}

TEST_P(LocalCopy, EachFailingStepReportsItsProcedure) {
  const QString local = station_.Folder() + u"/data/OvalistoLocal.mdb"_s;
  frmItemSpots form(nullptr);
  Open(form);
  ASSERT_TRUE(QFile::rename(local, local + u".weg"_s));
  Click(form, u"cmdSluiten"_s);
  ASSERT_EQ(boxes_.Shown().size(), 2u);
  EXPECT_EQ(boxes_.Shown()[0].title, u"DeleteAllInTable"_s);
  EXPECT_EQ(boxes_.Shown()[1].title, u"TransItemSpotsToLocal"_s);
  EXPECT_FALSE(form.isVisible());
}
