// SPDX-License-Identifier: MIT
#include "catalogue/frmItemSpotOpruimen.h"
#include "platform/desktop/Lock.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class ItemSpotCleanup : public CatalogueTestInBothModes {
 protected:
  void Prepare(const QString& path) {
    AddSpot({3, u"Kringwinkel"_s, path, 1});
    AddSpot({4, u"Ander"_s, path, 1});
    AddItem(1, u"Blok"_s);
    Link(1, 1, 3);
    global.gstrOpruimenID = u"3"_s;
  }

  // Opens the dialog, sets its boxes and presses Opruimen.
  void CleanUp(bool file, bool record) {
    frmItemSpotOpruimen form(nullptr);
    Open(form);
    Child<QCheckBox>(form, u"chkVerwijderBestand"_s).setChecked(file);
    Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(record);
    Click(form, u"cmdOk"_s);
    EXPECT_FALSE(form.isVisible());
  }

  void ExpectDone() const { EXPECT_EQ(Boxes(), QStringList{u"Items: Opruimen is uitgevoerd."_s}); }

  QStringList LoggedWhenOffline(const QStringList& statements) const {
    return GetParam() == Station::Mode::Online ? QStringList() : statements;
  }
};

INSTANTIATE_TEST_SUITE_P(Modes, ItemSpotCleanup, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(ItemSpotCleanup, ShowsTheNameLocked) {
  Prepare({});
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  const auto& name = Child<QLineEdit>(form, u"txtOpruimenVan"_s);
  EXPECT_EQ(name.text(), u"Kringwinkel"_s);
  EXPECT_TRUE(desktop::IsLocked(&name));
}

TEST_P(ItemSpotCleanup, ShowsInWhichItemsTheSpotIsUsed) {
  Prepare({});
  AddItem(2, u"Avond"_s);
  Link(2, 1, 3);
  Link(2, 2, 3);
  {
    frmItemSpotOpruimen form(nullptr);
    Open(form);
    EXPECT_EQ(Child<QLabel>(form, u"lblGebruik"_s).text(), u"Gebruikt in 2 items: Avond, Blok."_s);
  }
  global.gstrOpruimenID = u"4"_s;
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  EXPECT_EQ(Child<QLabel>(form, u"lblGebruik"_s).text(), u"In geen enkel item gebruikt."_s);
}

TEST_P(ItemSpotCleanup, OkIsEnabledWhileAnyBoxIsChecked) {
  Prepare({});
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  EXPECT_FALSE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderBestand"_s);
  EXPECT_TRUE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderID"_s);
  Click(form, u"chkVerwijderBestand"_s);
  EXPECT_TRUE(Enabled(form, u"cmdOk"_s));
  Click(form, u"chkVerwijderID"_s);
  EXPECT_FALSE(Enabled(form, u"cmdOk"_s));
}

TEST_P(ItemSpotCleanup, FileOnlyKeepsTheRecord) {
  const QString path = AudioFile(u"spot.wav"_s);
  Prepare(path);
  CleanUp(true, false);
  EXPECT_FALSE(FileIsThere(path));
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{3, 4}));
  EXPECT_EQ(station_.Log(), QStringList());
  ExpectDone();
  EXPECT_EQ(boxes_.Last().style, 64);
}

TEST_P(ItemSpotCleanup, RecordOnlyKeepsTheFileAndTheLinks) {
  const QString path = AudioFile(u"spot.wav"_s);
  Prepare(path);
  CleanUp(false, true);
  EXPECT_TRUE(FileIsThere(path));
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
  EXPECT_EQ(station_.CurrentRows(u"SELECT * FROM "_s + Table(u"ItemsItemSpots"_s)).RecordCount(), 1);
  EXPECT_EQ(station_.Log(), LoggedWhenOffline({u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = 3"_s}));
  ExpectDone();
}

TEST_P(ItemSpotCleanup, BothRemoveRecordAndFile) {
  const QString path = AudioFile(u"spot.wav"_s);
  Prepare(u"  "_s + path + u" "_s);
  CleanUp(true, true);
  EXPECT_FALSE(FileIsThere(path));
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
  ExpectDone();
}

TEST_P(ItemSpotCleanup, MissingFileIsReportedAfterTheRecordIsDeleted) {
  const QString path = AudioFile(u"spot.wav"_s);
  ASSERT_TRUE(QFile::remove(runtime::HostPath(path)));
  Prepare(path);
  CleanUp(true, true);
  EXPECT_TRUE(OnlyError(u"Opruimen"_s).contains(u"spot.wav"_s));
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
}

TEST_P(ItemSpotCleanup, RecordWithoutPathIsDeletedAndItsFileIsAnError) {
  AddSpot({4, u"Ander"_s, {}, 1});
  station_.OnCurrent(u"INSERT INTO %1 (ID, Naam, Aktief) VALUES (3, \"Kaal\", 1)"_s.arg(Table(u"ItemSpots"_s)));
  global.gstrOpruimenID = u"3"_s;
  CleanUp(true, true);
  OnlyError(u"Opruimen"_s);
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
}

TEST_P(ItemSpotCleanup, FolderInPlaceOfTheFileIsAnErrorAndKept) {
  const QString folder = station_.AudioFolder() + u"/map.wav"_s;
  ASSERT_TRUE(QDir().mkdir(folder));
  Prepare(runtime::PathText(folder));
  CleanUp(true, false);
  EXPECT_TRUE(OnlyError(u"Opruimen"_s).contains(u"map.wav"_s));
  EXPECT_TRUE(QDir(folder).exists());
}

TEST_P(ItemSpotCleanup, FileThatIsOpenElsewhereIsDeleted) {
  const QString path = AudioFile(u"spot.wav"_s);
  QFile open(runtime::HostPath(path));
  ASSERT_TRUE(open.open(QIODevice::ReadOnly));
  Prepare(path);
  CleanUp(true, false);
  EXPECT_FALSE(FileIsThere(path));
  ExpectDone();
}

TEST_P(ItemSpotCleanup, NamesThatDifferInLetterCaseNeverDeleteTheWrongFile) {
  const QString upper = AudioFile(u"SPOT.wav"_s);
  const QString lower = AudioFile(u"spot.wav"_s);
  Prepare(QString(lower).replace(u"spot.wav"_s, u"Spot.wav"_s));
  CleanUp(true, false);
  EXPECT_TRUE(OnlyError(u"Opruimen"_s).contains(u"Spot.wav"_s));
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/SPOT.wav"_s));
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/spot.wav"_s));
}

TEST_P(ItemSpotCleanup, ExactNameIsPreferredToAnotherLetterCase) {
  AudioFile(u"SPOT.wav"_s);
  Prepare(AudioFile(u"spot.wav"_s));
  CleanUp(true, false);
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/SPOT.wav"_s));
  EXPECT_FALSE(QFile::exists(station_.AudioFolder() + u"/spot.wav"_s));
  ExpectDone();
}

TEST_P(ItemSpotCleanup, PathThatLeavesItsDriveIsRefused) {
  const QString outside = station_.Folder() + u"/buiten.wav"_s;
  QFile file(outside);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  Prepare(u"D:\\..\\buiten.wav"_s);
  runtime::SetDrives({{u"D"_s, station_.AudioFolder()}, {u"Z"_s, u"/"_s}});
  CleanUp(true, false);
  OnlyError(u"Opruimen"_s);
  EXPECT_TRUE(QFile::exists(outside));
}

TEST_P(ItemSpotCleanup, FailedDeleteOfTheRecordShowsNoSuccess) {
  const QString path = AudioFile(u"spot.wav"_s);
  Prepare(path);
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  LoseDatabase();
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Click(form, u"cmdOk"_s);
  OnlyError(u"Opruimen"_s);
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(FileIsThere(path));
}

TEST_P(ItemSpotCleanup, FailedLogShowsNoSuccess) {
  Prepare({});
  // The log has no free number left; online nothing is logged.
  station_.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  CleanUp(false, true);
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
  if (GetParam() == Station::Mode::Online) return ExpectDone();
  OnlyError(u"GetNewID"_s);
}

TEST_P(ItemSpotCleanup, PendingEventsAreProcessedBeforeTheSuccessMessage) {
  Prepare({});
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  QList<int> seen;
  QMetaObject::invokeMethod(
      &form, [&] { seen = IDs(u"ItemSpots"_s); }, Qt::QueuedConnection);
  bool handled = false;
  const runtime::UserMessageScope messages([&](const QString&, int, const QString&) {
    handled = !seen.isEmpty();
    return desktop::kAnswerOk;
  });
  Child<QPushButton>(form, u"cmdOk"_s).click();
  EXPECT_TRUE(handled);
  EXPECT_EQ(seen, QList<int>{4});
}

TEST_P(ItemSpotCleanup, NonNumericIdIsAnErrorOfTheCleanup) {
  global.gstrOpruimenID = u"NIEUW"_s;
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  EXPECT_EQ(Child<QLineEdit>(form, u"txtOpruimenVan"_s).text(), QString());
  EXPECT_TRUE(boxes_.Shown().empty());
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Click(form, u"cmdOk"_s);
  OnlyError(u"Opruimen"_s);
}

TEST_P(ItemSpotCleanup, RecordRemovedByAnotherUserEndsWithoutError) {
  Prepare({});
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  station_.OnCurrent(u"DELETE FROM %1 WHERE ID = 3"_s.arg(Table(u"ItemSpots"_s)));
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Click(form, u"cmdOk"_s);
  ExpectDone();
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{4});
}

TEST_P(ItemSpotCleanup, SluitenDoesNothing) {
  const QString path = AudioFile(u"spot.wav"_s);
  Prepare(path);
  frmItemSpotOpruimen form(nullptr);
  Open(form);
  Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(true);
  Child<QCheckBox>(form, u"chkVerwijderBestand"_s).setChecked(true);
  Click(form, u"cmdSluiten"_s);
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(FileIsThere(path));
  EXPECT_EQ(IDs(u"ItemSpots"_s), (QList<int>{3, 4}));
  EXPECT_TRUE(boxes_.Shown().empty());
}
