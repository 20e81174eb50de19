// SPDX-License-Identifier: MIT
#include "catalogue/Screens.h"
#include "catalogue/frmItemOpruimen.h"
#include "data/Schema.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class ItemCleanup : public CatalogueTestInBothModes {
 protected:
  // Two items that share spot 3; item 1 has spot 4 as well.
  ItemCleanup() : first_(AudioFile(u"eerste.wav"_s)), second_(AudioFile(u"tweede.wav"_s)) {
    AddItem(1, u"Ochtendblok"_s);
    AddItem(2, u"Avondblok"_s);
    AddSpot({3, u"Eerste"_s, first_, 1});
    AddSpot({4, u"Tweede"_s, u" "_s + second_, 1});
    AddSpot({5, u"Los"_s, {}, 1});
    Link(1, 1, 3);
    Link(1, 2, 4);
    Link(2, 1, 3);
    global.gstrOpruimenID = u"1"_s;
  }

  void Check(const Form& form, const QString& box, bool checked) { Child<QCheckBox>(form, box).setChecked(checked); }

  void CleanUp(bool spots, bool files, bool item) {
    frmItemOpruimen form(nullptr);
    Open(form);
    Check(form, u"chkVerwijderSpots"_s, spots);
    Check(form, u"chkVerwijderBestand"_s, files);
    Check(form, u"chkVerwijderID"_s, item);
    LoseServerWhenOffline();
    Click(form, u"cmdOk"_s);
    EXPECT_FALSE(form.isVisible());
  }

  // Closing copies the server's spots over the local ones, also offline. The server is removed just before, so that the
  // local rows are restored and can be checked afterwards.
  void LoseServerWhenOffline() {
    if (GetParam() == Station::Mode::Online) return;
    station_.LoseServer();
    boxes_.Answer(desktop::kAnswerOk);   // the message of the cleanup
    boxes_.Answer(desktop::kAnswerOk);   // the copying failed
    boxes_.Answer(desktop::kAnswerYes);  // restore the rows
  }

  // All boxes except those about the lost server.
  QStringList CleanupBoxes() const {
    QStringList boxes;
    for (const desktop::ShownMessageBox& box : boxes_.Shown()) {
      if (box.title == u"TransItemSpotsToLocal"_s || box.text.contains(u"terugzetten"_s)) continue;
      boxes += box.title + u": "_s + box.text;
    }
    return boxes;
  }

  QList<int> LinkedItems() const {
    return Numbers(station_.CurrentRows(u"SELECT ItemID FROM %1 ORDER BY ItemID"_s.arg(Table(u"ItemsItemSpots"_s))),
                   u"ItemID"_s);
  }

  QStringList LoggedWhenOffline(const QStringList& statements) const {
    return GetParam() == Station::Mode::Online ? QStringList() : statements;
  }

  // The backups next to the database.
  QStringList Backups() const {
    const QString folder =
        GetParam() == Station::Mode::Online ? station_.ServerFolder() : station_.Folder() + u"/data"_s;
    return QDir(folder + u"/backup"_s).entryList({u"*.mdb"_s});
  }

  const QStringList kDone{u"Items: Opruimen is uitgevoerd."_s};
  QString first_;
  QString second_;
};

INSTANTIATE_TEST_SUITE_P(Modes, ItemCleanup, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(ItemCleanup, ShowsWhichSpotsOtherItemsHaveToo) {
  AddItem(21, u"Ochtend"_s);
  AddItem(22, u"Avond"_s);
  AddSpot({31, u"Bakker"_s, {}, 1});
  AddSpot({32, u"Slager"_s, {}, 1});
  Link(21, 1, 31);
  Link(21, 2, 32);
  Link(22, 1, 32);
  const auto usage = [&](const QString& item) {
    global.gstrOpruimenID = item;
    frmItemOpruimen form(nullptr);
    Open(form);
    return Child<QLabel>(form, u"lblGebruik"_s).text();
  };
  EXPECT_EQ(usage(u"21"_s), u"Ook in andere items: Slager."_s);
  station_.OnCurrent(u"DELETE FROM %1 WHERE ItemID = 22"_s.arg(Table(u"ItemsItemSpots"_s)));
  EXPECT_EQ(usage(u"21"_s), u"Geen van de item-spots staat ook in een ander item."_s);
  EXPECT_EQ(usage(u"22"_s), u"Geen van de item-spots staat ook in een ander item."_s);
}

TEST_P(ItemCleanup, ShowsTheNameLocked) {
  frmItemOpruimen form(nullptr);
  Open(form);
  const auto& name = Child<QLineEdit>(form, u"txtOpruimenVan"_s);
  EXPECT_EQ(name.text(), u"Ochtendblok"_s);
  EXPECT_TRUE(desktop::IsLocked(&name));
}

TEST_P(ItemCleanup, FilesAreDeletedOnlyTogetherWithTheirSpots) {
  frmItemOpruimen form(nullptr);
  Open(form);
  EXPECT_FALSE(Enabled(form, u"chkVerwijderBestand"_s));
  EXPECT_FALSE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderSpots"_s);
  EXPECT_TRUE(Enabled(form, u"chkVerwijderBestand"_s));
  Click(form, u"chkVerwijderBestand"_s);
  EXPECT_TRUE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderSpots"_s);
  EXPECT_FALSE(Enabled(form, u"chkVerwijderBestand"_s));
  EXPECT_FALSE(Child<QCheckBox>(form, u"chkVerwijderBestand"_s).isChecked());
  EXPECT_FALSE(Enabled(form, u"cmdOk"_s));
}

TEST_P(ItemCleanup, SpotsAloneDoNotEnableOk) {
  frmItemOpruimen form(nullptr);
  Open(form);
  Click(form, u"chkVerwijderSpots"_s);
  EXPECT_FALSE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderID"_s);
  EXPECT_TRUE(Enabled(form, u"cmdOk"_s));
}

TEST_P(ItemCleanup, ItemOnlyKeepsItsSpotsAndFiles) {
  CleanUp(false, false, true);
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{2});
  EXPECT_EQ(LinkedItems(), QList<int>{2});
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{3, 4, 5}));
  EXPECT_TRUE(FileIsThere(first_) && FileIsThere(second_));
  EXPECT_EQ(CleanupBoxes(), kDone);
  // The links are deleted before the item; the log has the names of the copy tables for both.
  EXPECT_EQ(station_.Log(),
            LoggedWhenOffline({u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s,
                               u"DELETE FROM tblCopie_Items WHERE tblCopie_Items.ID = 1"_s}));
}

TEST_P(ItemCleanup, EverythingIsDeletedSpotBySpotThenLinksThenItem) {
  CleanUp(true, true, true);
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{2});
  EXPECT_EQ(LinkedItems(), QList<int>{2});
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{5});
  EXPECT_FALSE(FileIsThere(first_) || FileIsThere(second_));
  EXPECT_EQ(CleanupBoxes(), kDone);
  QStringList log = station_.Log();
  if (GetParam() == Station::Mode::Online) {
    EXPECT_EQ(log, QStringList());
    return;
  }
  ASSERT_EQ(log.size(), 4);
  QStringList spots = log.mid(0, 2);
  spots.sort();
  EXPECT_EQ(spots, (QStringList{u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = 3"_s,
                                u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = 4"_s}));
  EXPECT_EQ(log[2], u"DELETE FROM tblCopie_ItemsItemSpots WHERE tblCopie_ItemsItemSpots.ItemID = 1"_s);
  EXPECT_EQ(log[3], u"DELETE FROM tblCopie_Items WHERE tblCopie_Items.ID = 1"_s);
}

TEST_P(ItemCleanup, SpotsAndFilesAreDeletedWithoutTheItemAndItsLinks) {
  CleanUp(true, true, false);
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
  EXPECT_EQ(LinkedItems(), (QList<int>{1, 1, 2}));
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{5});
  EXPECT_FALSE(FileIsThere(first_) || FileIsThere(second_));
}

TEST_P(ItemCleanup, SpotsWithoutFilesKeepTheFiles) {
  CleanUp(true, false, true);
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{5});
  EXPECT_TRUE(FileIsThere(first_) && FileIsThere(second_));
}

TEST_P(ItemCleanup, ItemWithoutSpotsIsDeleted) {
  AddItem(7, u"Leeg"_s);
  global.gstrOpruimenID = u"7"_s;
  CleanUp(true, true, true);
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
  EXPECT_EQ(CleanupBoxes(), kDone);
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{3, 4, 5}));
}

TEST_P(ItemCleanup, MissingFileStopsTheCleanupAtItsSpot) {
  station_.OnCurrent(u"DELETE FROM %1 WHERE ItemSpotID = 4"_s.arg(Table(u"ItemsItemSpots"_s)));
  ASSERT_TRUE(QFile::remove(runtime::HostPath(first_)));
  CleanUp(true, true, true);
  ASSERT_EQ(CleanupBoxes().size(), 1);
  EXPECT_TRUE(CleanupBoxes()[0].startsWith(u"Opruimen: "_s));
  EXPECT_TRUE(CleanupBoxes()[0].contains(u"eerste.wav"_s));
  // The spot's record was deleted before its file; the item was not reached.
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{4, 5}));
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
  EXPECT_EQ(LinkedItems(), (QList<int>{1, 2}));
}

TEST_P(ItemCleanup, NonNumericIdIsAnErrorOfTheCleanup) {
  global.gstrOpruimenID = QString();
  CleanUp(false, false, true);
  ASSERT_EQ(CleanupBoxes().size(), 1);
  EXPECT_TRUE(CleanupBoxes()[0].startsWith(u"Opruimen: "_s));
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
}

// A missing table: the query for the item's spots shows its own error, and the cleanup stops.
TEST_P(ItemCleanup, SpotsThatCannotBeReadStopItBeforeTheItem) {
  const bool online = GetParam() == Station::Mode::Online;
  const QString path = global.programFolder + u"\\zonder.mdb"_s;
  dao::CreateDatabase(path);
  for (const dao::TableDef& table : online ? schema::ServerTables() : schema::LocalTables()) {
    if (table.name != Table(u"ItemSpots"_s)) dao::OpenDatabase(path).CreateTable(table);
  }
  (online ? global.serverDatabasePath : global.localDatabasePath) = path;
  AddItem(1, u"Ochtendblok"_s);
  Link(1, 1, 3);
  frmItemOpruimen form(nullptr);
  Open(form);
  Check(form, u"chkVerwijderSpots"_s, true);
  Check(form, u"chkVerwijderID"_s, true);
  Click(form, u"cmdOk"_s);
  const QStringList boxes = CleanupBoxes();
  ASSERT_GE(boxes.size(), 2);
  EXPECT_TRUE(boxes[0].startsWith(u"GetItem_ItemSpots: "_s)) << boxes[0].toStdString();
  EXPECT_TRUE(boxes[1].startsWith(u"Opruimen: "_s)) << boxes[1].toStdString();
  EXPECT_FALSE(boxes.contains(kDone.first()));
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
  EXPECT_EQ(LinkedItems(), QList<int>{1});
}

// Logging fails for the first spot's record and works afterwards.
TEST(ItemCleanupOffline, AFailureAtTheFirstSpotPreventsTheSuccessMessage) {
  const Station station(Station::Mode::Offline);
  RegisterCatalogueScreens();
  station.OnLocal(u"INSERT INTO tblCopie_Items (ID, Naam) VALUES (1, \"Blok\")"_s);
  station.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam) VALUES (3, \"Spot\")"_s);
  station.OnLocal(u"INSERT INTO tblCopie_ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (1, 1, 3)"_s);
  station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  global.gstrOpruimenID = u"1"_s;
  QStringList titles;
  const runtime::UserMessageScope messages([&](const QString&, int, const QString& title) {
    titles += title;
    station.OnLocal(u"DELETE FROM tblOfflineLog"_s);
    return desktop::kAnswerOk;
  });
  frmItemOpruimen form(nullptr);
  form.Form_Load();
  Child<QCheckBox>(form, u"chkVerwijderSpots"_s).setChecked(true);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Child<QPushButton>(form, u"cmdOk"_s).click();
  EXPECT_EQ(titles, QStringList{u"GetNewID"_s});
  EXPECT_EQ(station.LocalRows(u"SELECT ID FROM tblCopie_Items"_s).RecordCount(), 0);
  EXPECT_EQ(station.Log().size(), 3);  // the spot (its statement was kept and logged later), the links and the item
}

TEST_P(ItemCleanup, SluitenRemovesNothing) {
  frmItemOpruimen form(nullptr);
  Open(form);
  Check(form, u"chkVerwijderID"_s, true);
  Click(form, u"cmdSluiten"_s);
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
  EXPECT_EQ(LinkedItems(), (QList<int>{1, 1, 2}));
  EXPECT_EQ(CleanupBoxes(), QStringList());
}

TEST_P(ItemCleanup, ABackupIsMadeBeforeSeveralRecordsAreDeleted) {
  frmItemOpruimen form(nullptr);
  Open(form);
  Check(form, u"chkVerwijderID"_s, true);
  Click(form, u"cmdOk"_s);  // the item and its two links
  ASSERT_FALSE(Backups().isEmpty());
  const QString folder = GetParam() == Station::Mode::Online ? station_.ServerFolder() : station_.Folder() + u"/data"_s;
  dao::Database backup = dao::OpenDatabase(runtime::PathText(folder + u"/backup/"_s + Backups().first()));
  EXPECT_EQ(backup.OpenRecordset(u"SELECT ItemID FROM "_s + Table(u"ItemsItemSpots"_s)).RecordCount(), 3);
}

TEST_P(ItemCleanup, NoBackupIsMadeForASingleRecord) {
  global.gstrOpruimenID = u"2"_s;
  station_.OnCurrent(u"DELETE FROM "_s + Table(u"ItemsItemSpots"_s));
  frmItemOpruimen form(nullptr);
  Open(form);
  Check(form, u"chkVerwijderID"_s, true);
  LoseServerWhenOffline();
  Click(form, u"cmdOk"_s);
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
  // Offline the only backup is made by the refresh of the copy at the end, when the item is already deleted.
  for (const QString& name : Backups()) {
    ASSERT_EQ(GetParam(), Station::Mode::Offline);
    dao::Database backup = dao::OpenDatabase(runtime::PathText(station_.Folder() + u"/data/backup/"_s + name));
    EXPECT_EQ(backup.OpenRecordset(u"SELECT ID FROM tblCopie_Items"_s).RecordCount(), 1);
  }
}

TEST_P(ItemCleanup, WithoutABackupTheUserMayCancel) {
  const QString database = CurrentCatalogue().databasePath;
  runtime::WriteFile(database.left(database.lastIndexOf(u'\\')) + u"\\backup"_s, "no folder");
  boxes_.Answer(desktop::kAnswerNo);
  frmItemOpruimen form(nullptr);
  Open(form);
  Check(form, u"chkVerwijderID"_s, true);
  boxes_.Answer(desktop::kAnswerNo);  // offline: also at the refresh of the copy
  Click(form, u"cmdOk"_s);
  EXPECT_EQ(boxes_.Shown().front().style, 292);
  EXPECT_TRUE(boxes_.Shown().front().text.contains(database));
  EXPECT_EQ(IDs(u"Items"_s), (QList<int>{1, 2}));
  EXPECT_EQ(LinkedItems(), (QList<int>{1, 1, 2}));
}
