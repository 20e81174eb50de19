// SPDX-License-Identifier: MIT
// A new spot was inserted but not logged: the spot exists, and its statement is not lost.
#include "data/Globals.h"
#include "platform/dao/Database.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/FileFaults.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <set>

using namespace Qt::StringLiterals;
using namespace media_testing;
using testing_support::Station;

namespace {

class UnloggedSpot : public testing::Test {
 protected:
  // The log's highest ID is in use, so no row can be added.
  UnloggedSpot() {
    desk_.station.OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
    editor_ = desk_.OpenSpot(QString::fromUtf16(kNewRecord));
    path_ = desk_.Wav(u"nieuw.wav"_s, 2000);
    Choose(*editor_, desk_.AudioFile(u"nieuw.wav"_s));
    FillValidSpot(*editor_, u"Nieuw"_s);
    const desktop::MessageBoxScript boxes;
    Click(*editor_, u"cmdOk"_s);
    EXPECT_EQ(boxes.Shown().size(), 1U);
    EXPECT_EQ(boxes.Last().title, u"GetNewID"_s);
  }
  void MakeRoomInTheLog() const { desk_.station.OnLocal(u"DELETE FROM tblOfflineLog"_s); }
  QStringList LoggedVerbs() const {
    QStringList verbs;
    for (const QString& statement : desk_.station.Log())
      verbs += statement.section(u' ', 0, 0);
    return verbs;
  }

  const EditorDesk desk_{Station::Mode::Offline};
  std::unique_ptr<frmItemSpotsDetail> editor_;
  QString path_;
};

}  // namespace

TEST_F(UnloggedSpot, IsUpdatedByTheNextOkAndBothStatementsAreLoggedInOrder) {
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_TRUE(editor_->IsDirty());
  EXPECT_TRUE(desk_.AudioList().isEmpty());
  MakeRoomInTheLog();
  const desktop::MessageBoxScript boxes;
  SetText(*editor_, u"txtNaam"_s, u"Nieuwer"_s);
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(LoggedVerbs(), (QStringList{u"INSERT"_s, u"UPDATE"_s}));
  EXPECT_TRUE(desk_.station.Log().first().contains(u"'Nieuw'"_s)) << desk_.station.Log().first().toStdString();
  EXPECT_EQ(desk_.station.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s).RecordCount(), 1);
  EXPECT_EQ(desk_.AudioList(), QStringList{path_});
}

TEST_F(UnloggedSpot, IsNotRefusedAsADuplicateOfItself) {
  const desktop::MessageBoxScript boxes;
  Click(*editor_, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_NE(boxes.Last().title, u"Items"_s) << boxes.Last().text.toStdString();
}

TEST_F(UnloggedSpot, IsLoggedWithItsLineBeforeTheNextStatementAfterACancel) {
  {
    const desktop::MessageBoxScript boxes{desktop::kAnswerNo};
    Click(*editor_, u"cmdAnnuleren"_s);
    EXPECT_FALSE(editor_->isVisible());
  }
  MakeRoomInTheLog();
  desk_.AddSpot(7, u"Oud"_s, desk_.Wav(u"a.wav"_s, 2000));
  const auto other = desk_.OpenSpot(u"7"_s);
  SetText(*other, u"txtNaam"_s, u"Ander"_s);
  Click(*other, u"cmdOk"_s);
  EXPECT_EQ(LoggedVerbs(), (QStringList{u"INSERT"_s, u"UPDATE"_s}));
  EXPECT_EQ(desk_.AudioList(), QStringList{path_});
}

namespace {

// The folder of the local database is synced twice per change, the second time after the change. Makes the given syncs
// of an offline save fail.
class UncertainSpot : public testing::TestWithParam<std::set<int>> {
 protected:
  UncertainSpot() {
    editor_ = desk_.OpenSpot(QString::fromUtf16(kNewRecord));
    path_ = desk_.Wav(u"nieuw.wav"_s, 2000);
    Choose(*editor_, desk_.AudioFile(u"nieuw.wav"_s));
    FillValidSpot(*editor_, u"Nieuw"_s);
    int syncs = 0;
    const testing_support::FileFaults faults([&](const files::FileCall& call) {
      const bool isSync = call.kind == files::FileCall::SyncFolder && call.path.filename() == "data";
      return isSync && GetParam().contains(++syncs) ? EIO : 0;
    });
    const desktop::MessageBoxScript boxes;
    Click(*editor_, u"cmdOk"_s);
    shown_ = boxes.Shown();
    EXPECT_GE(syncs, 6);
  }
  QString LoggedVerbs() const {
    QStringList verbs;
    for (const QString& statement : desk_.station.Log())
      verbs += statement.section(u' ', 0, 0);
    return verbs.join(u' ');
  }

  const EditorDesk desk_{Station::Mode::Offline};
  std::unique_ptr<frmItemSpotsDetail> editor_;
  std::vector<desktop::ShownMessageBox> shown_;
  QString path_;
};

}  // namespace

// The insert, its log row, or both; before them come the two syncs of the insert's basis.
INSTANTIATE_TEST_SUITE_P(FailingSyncs, UncertainSpot,
                         testing::Values(std::set<int>{4}, std::set<int>{6}, std::set<int>{4, 6}));

TEST_P(UncertainSpot, IsSavedAndLoggedAndReportedOnce) {
  ASSERT_EQ(shown_.size(), 1U);
  EXPECT_EQ(shown_.front().title, u"Insert_tblItemSpots"_s);
  EXPECT_TRUE(shown_.front().text.contains(u"is gedaan, maar"_s)) << shown_.front().text.toStdString();
  EXPECT_TRUE(editor_->isVisible());
  EXPECT_FALSE(editor_->IsNew());
  EXPECT_EQ(LoggedVerbs(), u"INSERT"_s);
  EXPECT_EQ(desk_.AudioList(), QStringList{path_});
}

TEST_P(UncertainSpot, IsUpdatedByTheNextOk) {
  const desktop::MessageBoxScript boxes;
  Click(*editor_, u"cmdOk"_s);
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_FALSE(editor_->isVisible());
  EXPECT_EQ(LoggedVerbs(), u"INSERT UPDATE"_s);
  EXPECT_EQ(desk_.station.LocalRows(u"SELECT ID FROM tblCopie_ItemSpots"_s).RecordCount(), 1);
  EXPECT_EQ(desk_.AudioList(), QStringList{path_});
}
