// SPDX-License-Identifier: MIT
// The item-spot editor on a full or read-only disk: the reason is reported, and the form
// stays open with the user's input until it can be saved.
#include "data/Globals.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/Probe.h"
#include "tests/media/support/EditorDesk.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Hindrance.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;
using namespace media_testing;

namespace {

// The editor of spot 7 with a new name and another file, before OK.
std::unique_ptr<frmItemSpotsDetail> ChangedSpot(const EditorDesk& desk) {
  desk.AddSpot(7, u"Oud"_s, desk.Wav(u"a.wav"_s, 2000));
  auto editor = desk.OpenSpot(u"7"_s);
  SetText(*editor, u"txtNaam"_s, u"Nieuw"_s);
  Choose(*editor, MakeWav(desk.AudioFile(u"b.wav"_s), 3000));
  return editor;
}

// OK fails under that procedure's name and keeps the input.
void ExpectKept(const frmItemSpotsDetail& editor, const QString& procedure, const QString& file) {
  const desktop::MessageBoxScript boxes;
  Click(editor, u"cmdOk"_s);
  ASSERT_EQ(boxes.Shown().size(), 1U);
  EXPECT_EQ(boxes.Last().title, procedure);
  EXPECT_EQ(boxes.Last().style, 16);
  EXPECT_TRUE(boxes.Last().text.contains(file)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(editor.isVisible());
  EXPECT_TRUE(editor.IsDirty());
  EXPECT_EQ(Text(editor, u"txtNaam"_s), u"Nieuw"_s);
}

QString NaamOf(const EditorDesk& desk) {
  return desk.Spot(7).Field(u"Naam"_s).toString();
}

}  // namespace

TEST(ItemSpotEditorFullDisk, DatabaseAndFormAreUnchanged) {
  const EditorDesk desk;
  const auto editor = ChangedSpot(desk);
  {
    const testing_support::FullDisk full(100);
    ExpectKept(*editor, u"Update_tblItemSpots"_s, u"OvalistoServer.mdb"_s);
  }
  EXPECT_EQ(NaamOf(desk), u"Oud"_s);
  EXPECT_TRUE(desk.AudioList().isEmpty());
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(NaamOf(desk), u"Nieuw"_s);
  EXPECT_EQ(desk.AudioList().size(), 1);
}

TEST(ItemSpotEditorFullDisk, TheNextOkWritesTheAudioListOnce) {
  const EditorDesk desk;
  const auto editor = ChangedSpot(desk);
  for (const int reason : {ENOSPC, EROFS, EIO}) {
    const testing_support::FileFaults fault(
        [&](const files::FileCall& call) { return call.kind == files::FileCall::Write ? reason : 0; });
    ExpectKept(*editor, u"Opslaan"_s, u"Audio.tae"_s);
    EXPECT_EQ(NaamOf(desk), u"Nieuw"_s);
    EXPECT_TRUE(desk.AudioList().isEmpty());
  }
  Click(*editor, u"cmdOk"_s);
  EXPECT_FALSE(editor->isVisible());
  EXPECT_EQ(desk.AudioList(), QStringList(Text(*editor, u"txtPath"_s)));
}

TEST(ItemSpotEditorFullDisk, AnExportFolderOnAnUnreachableDriveIsReportedWithoutAccess) {
  const EditorDesk desk;
  const auto editor = ChangedSpot(desk);
  {
    int calls = 0;
    const runtime::ProbeLookScope away([&](const QString& path) { return path.endsWith(u"/export"_s) ? EIO : 0; });
    const testing_support::FileFaults count([&](const files::FileCall& call) {
      if (call.path.string().find("/export") != std::string::npos) ++calls;
      return 0;
    });
    ExpectKept(*editor, u"Opslaan"_s, u"niet bereikbaar"_s);
    EXPECT_EQ(calls, 0);
  }
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList().size(), 1);
}

TEST(ItemSpotEditorFullDisk, AMissingExportFolderIsNamed) {
  const EditorDesk desk;
  const auto editor = ChangedSpot(desk);
  const QString folder = global.exportPath;
  ASSERT_TRUE(QDir(desk.station.ExportFolder()).removeRecursively());
  ExpectKept(*editor, u"Opslaan"_s, u"De exportmap '%1' bestaat niet"_s.arg(folder));
  global.exportPath = u" "_s;
  ExpectKept(*editor, u"Opslaan"_s, u"Er is geen exportmap ingesteld"_s);
  global.exportPath = folder;
  ASSERT_TRUE(QDir().mkpath(desk.station.ExportFolder()));
  Click(*editor, u"cmdOk"_s);
  EXPECT_EQ(desk.AudioList().size(), 1);
}

// In a child process that gave up root, since permissions do not apply to root. The editor is opened in the child,
// since threads do not survive a fork.
TEST(ItemSpotEditorFullDiskDeathTest, AReadOnlyDatabaseIsReportedAndTheFormStaysOpen) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const EditorDesk desk;
  desk.AddSpot(7, u"Oud"_s, desk.Wav(u"a.wav"_s, 2000));
  ::chmod(QFile::encodeName(desk.station.Folder()).constData(), 0755);
  ::chmod(QFile::encodeName(runtime::HostPath(global.serverDatabasePath)).constData(), 0444);
  const auto saveThere = [&] {
    testing_support::BecomeNobody();
    const auto editor = desk.OpenSpot(u"7"_s);
    SetText(*editor, u"txtNaam"_s, u"Nieuw"_s);
    ExpectKept(*editor, u"Update_tblItemSpots"_s, u"OvalistoServer.mdb"_s);
    std::_Exit(!testing::Test::HasFailure() && NaamOf(desk) == u"Oud"_s ? 0 : 1);
  };
  EXPECT_EXIT(saveThere(), testing::ExitedWithCode(0), "");
}
