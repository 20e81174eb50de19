// SPDX-License-Identifier: MIT
// The audio files of an item's spots: which files may be deleted, and what happens when one cannot be.
#include "catalogue/frmItemOpruimen.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/catalogue/CatalogueTest.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

class ItemCleanupFiles : public CatalogueTestInBothModes {
 protected:
  ItemCleanupFiles() {
    AddItem(1, u"Blok"_s);
    AddSpot({9, u"Los"_s, AudioFile(u"los.wav"_s), 1});
    global.gstrOpruimenID = u"1"_s;
  }

  // Spots of the item, in list order.
  void Fill(const QList<Spot>& spots) {
    for (qsizetype n = 0; n < spots.size(); ++n) {
      AddSpot(spots[n]);
      Link(1, static_cast<int>(n) + 1, spots[n].id);
    }
  }

  // Removes the item with its spots and their files. Results are checked before the dialog closes, since closing copies
  // the server's spots over the local ones.
  void CleanUp() {
    frmItemOpruimen form(nullptr);
    Open(form);
    for (const QString& box : {u"chkVerwijderSpots"_s, u"chkVerwijderBestand"_s, u"chkVerwijderID"_s})
      Child<QCheckBox>(form, box).setChecked(true);
    boxes_.Answer(desktop::kAnswerOk);
    const std::size_t before = boxes_.Shown().size();
    KeepLocalSpots();
    Click(form, u"cmdOk"_s);
    EXPECT_FALSE(form.isVisible());
    ASSERT_GT(boxes_.Shown().size(), before);
    told_ = boxes_.Shown()[before].title + u": "_s + boxes_.Shown()[before].text;
    if (GetParam() == Station::Mode::Offline) station_.FindServer();
  }

  // Offline the server is unreachable while the dialog closes, and the rows are restored.
  void KeepLocalSpots() {
    if (GetParam() == Station::Mode::Online) return;
    station_.LoseServer();
    boxes_.Answer(desktop::kAnswerOk);
    boxes_.Answer(desktop::kAnswerYes);
  }

  void ExpectStopped(const QString& part) {
    EXPECT_TRUE(told_.startsWith(u"Opruimen: "_s) && told_.contains(part)) << told_.toStdString();
    EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
  }

  int Links() const { return station_.CurrentRows(u"SELECT * FROM "_s + Table(u"ItemsItemSpots"_s)).RecordCount(); }

  QString told_;  // the cleanup's own box
};

INSTANTIATE_TEST_SUITE_P(Modes, ItemCleanupFiles, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

// At the second entry its file is missing, which stops the cleanup like any missing file. A second cleanup removes the
// item: the spot is no longer found.
TEST_P(ItemCleanupFiles, SpotListedTwiceStopsTheCleanupAtItsSecondEntry) {
  const QString path = AudioFile(u"dubbel.wav"_s);
  Fill({{3, u"Dubbel"_s, path, 1}});
  Link(1, 2, 3);
  CleanUp();
  ExpectStopped(u"dubbel.wav"_s);
  EXPECT_FALSE(FileIsThere(path));
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{9});
  EXPECT_EQ(Links(), 2);
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/los.wav"_s));
  const QString deleted = u"DELETE FROM tblItemSpots WHERE tblItemSpots.ID = 3"_s;
  EXPECT_EQ(station_.Log(), global.online ? QStringList() : (QStringList{deleted, deleted}));

  CleanUp();
  EXPECT_EQ(told_, u"Items: Opruimen is uitgevoerd."_s);
  EXPECT_EQ(IDs(u"Items"_s), QList<int>{});
  EXPECT_EQ(Links(), 0);
  EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{9});
}

// Spots after the failure keep both record and file.
TEST_P(ItemCleanupFiles, SpotsAfterTheFailureKeepRecordAndFile) {
  const QString gone = AudioFile(u"weg.wav"_s);
  const QString there = AudioFile(u"hier.wav"_s);
  Fill({{3, u"Weg"_s, gone, 1}, {4, u"Hier"_s, there, 1}});
  ASSERT_TRUE(QFile::remove(runtime::HostPath(gone)));
  CleanUp();
  ExpectStopped(u"weg.wav"_s);
  EXPECT_EQ(IDs(u"ItemSpots"_s).contains(4), FileIsThere(there));
  EXPECT_FALSE(IDs(u"ItemSpots"_s).contains(3));
  EXPECT_EQ(Links(), 2);
}

TEST_P(ItemCleanupFiles, FolderInPlaceOfAFileIsKeptAndStopsTheCleanup) {
  const QString folder = station_.AudioFolder() + u"/map.wav"_s;
  ASSERT_TRUE(QDir().mkpath(folder + u"/binnen"_s));
  Fill({{3, u"Map"_s, runtime::PathText(folder), 1}});
  CleanUp();
  ExpectStopped(u"map.wav"_s);
  EXPECT_TRUE(QDir(folder + u"/binnen"_s).exists());
}

TEST_P(ItemCleanupFiles, NamesThatDifferInLetterCaseNeverDeleteTheWrongFile) {
  AudioFile(u"SPOT.wav"_s);
  const QString lower = AudioFile(u"spot.wav"_s);
  Fill({{3, u"Spot"_s, QString(lower).replace(u"spot.wav"_s, u"Spot.wav"_s), 1}});
  CleanUp();
  ExpectStopped(u"Spot.wav"_s);
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/SPOT.wav"_s));
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/spot.wav"_s));
}

TEST_P(ItemCleanupFiles, OnlyTheExactNameOfTwoLetterCasesIsDeleted) {
  AudioFile(u"SPOT.wav"_s);
  Fill({{3, u"Spot"_s, AudioFile(u"spot.wav"_s), 1}});
  CleanUp();
  EXPECT_EQ(told_, u"Items: Opruimen is uitgevoerd."_s);
  EXPECT_TRUE(QFile::exists(station_.AudioFolder() + u"/SPOT.wav"_s));
  EXPECT_FALSE(QFile::exists(station_.AudioFolder() + u"/spot.wav"_s));
}

TEST_P(ItemCleanupFiles, PathThatLeavesItsDriveIsRefused) {
  QFile outside(station_.Folder() + u"/buiten.wav"_s);
  ASSERT_TRUE(outside.open(QIODevice::WriteOnly));
  Fill({{3, u"Buiten"_s, u"D:\\..\\buiten.wav"_s, 1}});
  runtime::SetDrives({{u"D"_s, station_.AudioFolder()}, {u"Z"_s, u"/"_s}});
  CleanUp();
  ExpectStopped(u"buiten.wav"_s);
  EXPECT_TRUE(outside.exists());
}

TEST_P(ItemCleanupFiles, FileThatIsOpenElsewhereIsDeleted) {
  const QString path = AudioFile(u"open.wav"_s);
  QFile open(runtime::HostPath(path));
  ASSERT_TRUE(open.open(QIODevice::ReadOnly));
  Fill({{3, u"Open"_s, path, 1}});
  CleanUp();
  EXPECT_EQ(told_, u"Items: Opruimen is uitgevoerd."_s);
  EXPECT_FALSE(FileIsThere(path));
}
