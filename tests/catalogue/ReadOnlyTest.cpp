// SPDX-License-Identifier: MIT
// Read-only databases and audio files. Each test runs in a child process that gave up
// root, since permissions do not apply to root.
#include "catalogue/frmItemOpruimen.h"
#include "catalogue/frmItemPingles.h"
#include "catalogue/frmItemSpotOpruimen.h"
#include "catalogue/frmItemSpots.h"
#include "catalogue/frmItems.h"
#include "data/Catalogue.h"
#include "platform/controls/ListBox.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/Hindrance.h"

#include <QCheckBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <sys/stat.h>

#include <functional>

using namespace Qt::StringLiterals;

class ReadOnlyDeathTest : public CatalogueTestInBothModes {
 protected:
  ReadOnlyDeathTest() : path_(AudioFile(u"spot.wav"_s)) {
    AddSpot({3, u"Spot"_s, path_, 1});
    AddItem(1, u"Blok"_s);
    Link(1, 1, 3);
    AddPingle(1, u"Intro"_s);
    GiveAll(station_.Folder());
  }
  ~ReadOnlyDeathTest() override { GiveAll(station_.Folder()); }

  static void Permit(const QString& hostPath, mode_t mode) { ::chmod(QFile::encodeName(hostPath).constData(), mode); }

  static void GiveAll(const QString& folder) {
    Permit(folder, 0777);
    QDirIterator below(folder, QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (below.hasNext())
      Permit(below.next(), 0777);
  }

  static void TakeWriting(const QString& databasePath) {
    const QString file = runtime::HostPath(databasePath);
    Permit(file, 0444);
    Permit(QFileInfo(file).path(), 0555);
  }

  // Runs the checks in a child process without rights; failures are printed there and fail the test by the exit code.
  static void InChild(const std::function<void()>& check) {
    const auto child = [&check] {
      testing_support::BecomeNobody();
      check();
      std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(child(), ::testing::ExitedWithCode(0), "");
  }

  template <class Overview>
  void ExpectRefused(const QString& button, const QString& title) {
    Overview form(nullptr);
    Open(form);
    List(form).SetListIndex(0);
    Click(form, button);
    EXPECT_EQ(boxes_.Last().title, title);
    EXPECT_TRUE(boxes_.Last().text.contains(u"Ovalisto"_s)) << boxes_.Last().text.toStdString();
    EXPECT_EQ(Lines(form).size(), 1);
    EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{3});
    EXPECT_EQ(IDs(u"ItemPingles"_s), QList<int>{1});
    EXPECT_EQ(station_.Log(), QStringList());
  }

  void CleanUpSpot(bool file, bool record) {
    global.gstrOpruimenID = u"3"_s;
    frmItemSpotOpruimen form(nullptr);
    Open(form);
    Child<QCheckBox>(form, u"chkVerwijderBestand"_s).setChecked(file);
    Child<QCheckBox>(form, u"chkVerwijderID"_s).setChecked(record);
    Click(form, u"cmdOk"_s);
    EXPECT_FALSE(form.isVisible());
  }

  QString path_;
};

INSTANTIATE_TEST_SUITE_P(Modes, ReadOnlyDeathTest, ::testing::Values(Station::Mode::Online, Station::Mode::Offline),
                         ModeName);

TEST_P(ReadOnlyDeathTest, DatabaseIsListedAndEveryChangeIsRefused) {
  TakeWriting(CurrentCatalogue().databasePath);
  InChild([this] {
    ExpectRefused<frmItemSpots>(u"cmdDesaktiveer"_s, u"Update_tblItemSpots_Aktief"_s);
    ExpectRefused<frmItems>(u"cmdDesaktiveer"_s, u"Update_tblItems_Aktief"_s);
    boxes_.Answer(desktop::kAnswerYes);
    ExpectRefused<frmItemPingles>(u"cmdVerwijder"_s, u"Delete_tblBeheer"_s);
  });
}

TEST_P(ReadOnlyDeathTest, RecordInAReadOnlyDatabaseIsKeptWithoutASuccessMessage) {
  TakeWriting(CurrentCatalogue().databasePath);
  InChild([this] {
    CleanUpSpot(false, true);
    OnlyError(u"Delete_tblBeheer"_s);
    EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{3});
    EXPECT_TRUE(FileIsThere(path_));
  });
}

TEST_P(ReadOnlyDeathTest, ReadOnlyServerIsCopied) {
  station_.OnServer(u"DELETE FROM tblItemSpots"_s);
  station_.OnServer(u"INSERT INTO tblItemSpots (ID, Naam, Aktief) VALUES (5, \"server\", 1)"_s);
  TakeWriting(global.serverDatabasePath);
  InChild([this] {
    frmItemSpots form(nullptr);
    Open(form);
    Click(form, u"cmdSluiten"_s);
    EXPECT_TRUE(boxes_.Shown().empty());
    EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{5});
  });
}

TEST_P(ReadOnlyDeathTest, ReadOnlyCopyKeepsItsRows) {
  station_.OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);
  station_.OnLocal(u"INSERT INTO tblCopie_ItemSpots (ID, Naam, Aktief) VALUES (8, \"kopie\", 1)"_s);
  TakeWriting(global.localDatabasePath);
  InChild([this] {
    frmItemSpots form(nullptr);
    Open(form);
    boxes_.Answer(desktop::kAnswerYes);  // continue without a backup
    Click(form, u"cmdSluiten"_s);
    ASSERT_EQ(boxes_.Shown().size(), 3u);
    EXPECT_EQ(boxes_.Shown()[1].title, u"DeleteAllInTable"_s);
    EXPECT_EQ(boxes_.Shown()[2].title, u"TransItemSpotsToLocal"_s);
    EXPECT_EQ(Numbers(station_.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s), u"ID"_s), QList<int>{8});
    EXPECT_FALSE(form.isVisible());
  });
}

// Deleting a file needs write permission on its folder only.
TEST_P(ReadOnlyDeathTest, ReadOnlyAudioFileInAWritableFolderIsDeleted) {
  Permit(runtime::HostPath(path_), 0444);
  InChild([this] {
    CleanUpSpot(true, true);
    EXPECT_EQ(Boxes(), QStringList{u"Items: Opruimen is uitgevoerd."_s});
    EXPECT_FALSE(FileIsThere(path_));
    EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{});
  });
}

TEST_P(ReadOnlyDeathTest, AudioFileThatCannotBeDeletedIsNamedAfterItsRecordIsDeleted) {
  Permit(station_.AudioFolder(), 0555);
  InChild([this] {
    CleanUpSpot(true, true);
    const QString error = OnlyError(u"Opruimen"_s);
    EXPECT_TRUE(error.contains(u"spot.wav"_s) && error.contains(u"toegang geweigerd"_s)) << error.toStdString();
    EXPECT_TRUE(FileIsThere(path_));
    EXPECT_EQ(IDs(u"ItemSpots"_s), QList<int>{});
  });
}

TEST_P(ReadOnlyDeathTest, ItemCleanupStopsAtAFileThatCannotBeDeleted) {
  Permit(station_.AudioFolder(), 0555);
  InChild([this] {
    global.gstrOpruimenID = u"1"_s;
    frmItemOpruimen form(nullptr);
    Open(form);
    for (const QString& box : {u"chkVerwijderSpots"_s, u"chkVerwijderBestand"_s, u"chkVerwijderID"_s})
      Child<QCheckBox>(form, box).setChecked(true);
    Click(form, u"cmdOk"_s);
    EXPECT_TRUE(OnlyError(u"Opruimen"_s).contains(u"spot.wav"_s));
    EXPECT_TRUE(FileIsThere(path_));
    EXPECT_EQ(IDs(u"Items"_s), QList<int>{1});
  });
}
