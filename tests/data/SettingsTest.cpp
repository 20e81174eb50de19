// SPDX-License-Identifier: MIT
#include "data/Settings.h"

#include "data/Globals.h"
#include "data/Messages.h"
#include "platform/desktop/MessageBox.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/support/Station.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using desktop::MessageBoxScript;
using testing_support::Station;

namespace {

const QByteArray kFiles = "[Files]\r\nDatabasePath=\\\\studio\\data\r\nExportPath=D:\\uit\r\n";
const QByteArray kAudio = "[Audio Players]\r\nCard=-1\r\nBuffers=20\r\nBuffer_Size=2048\r\nCallback=3\r\n";

// A program folder with this settings file, and `global` at its defaults.
void Begin(const Station& station, const QByteArray& ini) {
  global = Globals();
  global.programFolder = runtime::PathText(station.Folder());
  runtime::WriteFile(global.programFolder + u"\\ovalis.ini"_s, ini);
}

}  // namespace

TEST(Settings, ReadsTheFoldersAndTheAudioValues) {
  const Station station;
  Begin(station, kFiles + kAudio);
  const MessageBoxScript boxes;
  GetSettings();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(global.databasePath, u"\\\\studio\\data"_s);
  EXPECT_EQ(global.exportPath, u"D:\\uit"_s);
  EXPECT_EQ(global.card, -1);
  EXPECT_EQ(global.buffers, 20);
  EXPECT_EQ(global.bufferSize, 2048);
  EXPECT_EQ(global.callback, 3);
}

TEST(Settings, StationsOwnModeIsOffByDefault) {
  const Station station;
  for (const auto& [line, isOn] :
       QList<std::pair<QByteArray, bool>>{{"", false},
                                          {"[Spotrooster]\r\nStationsOwnMode=0\r\n", false},
                                          {"[spotrooster]\r\nstationsownmode=1\r\n", true}}) {
    Begin(station, kFiles + kAudio + line);
    GetSettings();
    EXPECT_EQ(global.stationsOwnMode, isOn) << line.constData();
  }
}

TEST(Settings, WithoutTheAudioSectionTheFoldersAreSetAndReadingStopsAtCard) {
  const Station station;
  Begin(station, kFiles);
  const MessageBoxScript boxes;
  GetSettings();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"GetSettings"_s);
  EXPECT_EQ(boxes.Last().style, 16);
  EXPECT_TRUE(boxes.Last().text.contains(u"'Card'"_s)) << boxes.Last().text.toStdString();
  EXPECT_TRUE(boxes.Last().text.contains(u"ovalis.ini"_s));
  EXPECT_EQ(global.databasePath, u"\\\\studio\\data"_s);
  EXPECT_EQ(global.exportPath, u"D:\\uit"_s);
  EXPECT_EQ(global.card, 0);
}

TEST(Settings, InvalidNumberKeepsTheValuesReadBeforeIt) {
  for (const QByteArray& wrong : {QByteArray("twee"), QByteArray("40000"), QByteArray("")}) {
    const Station station;
    Begin(station, kFiles + "[Audio Players]\r\nCard=4\r\nBuffers=" + wrong + "\r\nBuffer_Size=2048\r\nCallback=3\r\n");
    const MessageBoxScript boxes;
    GetSettings();
    ASSERT_EQ(boxes.Shown().size(), 1u) << wrong.constData();
    EXPECT_TRUE(boxes.Last().text.contains(u"'Buffers'"_s));
    EXPECT_EQ(global.card, 4);
    EXPECT_EQ(global.buffers, 0);
    EXPECT_EQ(global.bufferSize, 0);
  }
}

TEST(Settings, NumbersAreReadInOrderUpToTheFirstInvalidOne) {
  const QList<QByteArray> keys{"Card", "Buffers", "Buffer_Size", "Callback"};
  for (qsizetype wrong = 0; wrong < keys.size(); ++wrong) {
    const Station station;
    QByteArray section = "[Audio Players]\r\n";
    for (qsizetype at = keys.size() - 1; at >= 0; --at)  // the order in the file does not count
      section += keys[at] + (at == wrong ? "=x" : "=7") + "\r\n";
    Begin(station, section + kFiles);
    const MessageBoxScript boxes;
    GetSettings();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    const QList<qint16> read{global.card, global.buffers, global.bufferSize, global.callback};
    EXPECT_EQ(read.mid(0, wrong), QList<qint16>(wrong, 7)) << keys[wrong].constData();
    EXPECT_EQ(read.mid(wrong), QList<qint16>(keys.size() - wrong, 0)) << keys[wrong].constData();
    EXPECT_EQ(global.exportPath, u"D:\\uit"_s);
  }
}

TEST(Settings, MissingTextKeyLeavesItsFolderEmpty) {
  const Station station;
  Begin(station, "[Files]\r\nExportPath=D:\\uit\r\n" + kAudio);
  const MessageBoxScript boxes;
  GetSettings();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(global.databasePath, QString());
  EXPECT_EQ(global.exportPath, u"D:\\uit"_s);
}

TEST(Settings, MissingFileIsReportedAndAllValuesKeepTheirDefaults) {
  const Station station;
  Begin(station, {});
  QFile::remove(station.Folder() + u"/ovalis.ini"_s);
  const MessageBoxScript boxes;
  GetSettings();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_EQ(boxes.Last().title, u"GetSettings"_s);
  EXPECT_TRUE(boxes.Last().text.contains(global.programFolder + u"\\ovalis.ini"_s));
  EXPECT_EQ(global.databasePath, QString());
}

TEST(Settings, FolderOrGarbageInPlaceOfTheFileIsReported) {
  const Station station;
  Begin(station, QByteArray(4000, '\xA7'));
  {
    const MessageBoxScript boxes;
    GetSettings();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_TRUE(boxes.Last().text.contains(u"ovalis.ini"_s));
  }
  QFile::remove(station.Folder() + u"/ovalis.ini"_s);
  QDir(station.Folder()).mkdir(u"ovalis.ini"_s);
  const MessageBoxScript boxes;
  GetSettings();
  ASSERT_EQ(boxes.Shown().size(), 1u);
  EXPECT_TRUE(boxes.Last().text.contains(u"het is een map"_s)) << boxes.Last().text.toStdString();
}

TEST(Settings, DrivesSectionMapsDrivesRelativeToTheProgramFolderAndUpdatesItsPath) {
  const Station station;
  Begin(station, kFiles + kAudio + "[Drives]\r\nD=.\r\n\\\\studio\\spots=audio\r\n");
  const MessageBoxScript boxes;
  GetSettings();
  EXPECT_TRUE(boxes.Shown().empty());
  EXPECT_EQ(runtime::HostPath(u"D:\\export"_s), station.ExportFolder());
  EXPECT_EQ(runtime::HostPath(u"\\\\STUDIO\\Spots"_s), station.AudioFolder());
  EXPECT_EQ(global.programFolder, u"D:"_s);
}

TEST(Settings, ProgramFolderOutsideEveryDriveWorks) {
  const Station station;
  Begin(station, kFiles + kAudio + "[Drives]\r\nD=audio\r\n");
  GetSettings();
  EXPECT_EQ(runtime::HostPath(global.programFolder + u"\\data"_s), station.Folder() + u"/data"_s);
  EXPECT_EQ(global.exportPath, u"D:\\uit"_s);
}
