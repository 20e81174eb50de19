// SPDX-License-Identifier: MIT
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

void AddBlock(const StationProgram& program, int id, const QString& naam, const QString& file, int active = 1) {
  const Station& rows = program.Rows();
  const bool online = program.Table() == u"tblItemSpots"_s;
  const QString prefix = online ? u"tbl"_s : u"tblCopie_"_s;
  rows.OnCurrent(
      u"INSERT INTO %1ItemSpots (ID, Naam, Path, LengteSec, Mixpunt, StartDatum, EindDatum, Aktief) VALUES (%2, \"Spot "
      u"%2\", \"D:\\audio\\%3\", 1, 100, \"01-03-2025\", \"31-03-2025\", 1)"_s.arg(prefix, QString::number(id), file));
  rows.OnCurrent(u"INSERT INTO %1Items (ID, Naam, ItemSpotsOptID, Aktief) VALUES (%2, \"%3\", 1, %4)"_s.arg(
      prefix, QString::number(id), naam, QString::number(active)));
  rows.OnCurrent(u"INSERT INTO %1ItemsItemSpots (ItemID, ItemSpotOrder, ItemSpotID) VALUES (%2, 1, %2)"_s.arg(
      prefix, QString::number(id)));
}

ToolRun Playout(const StationProgram& program, const QString& moment = u"2025-03-11 14:00"_s) {
  return program.Run(u"playout"_s, {u"--form"_s, u"m3u"_s, u"--to"_s, program.At(u"uit"_s), u"--at"_s, moment});
}

QString Content(const StationProgram& program, const QString& name) {
  QFile file(program.At(u"uit/"_s + name));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

TEST(PlayoutCommand, WritesOneFilePerBlockWithHostPaths) {
  for (const auto mode : {Station::Mode::Online, Station::Mode::Offline}) {
    const StationProgram program(mode);
    program.MakeSound(u"audio/een.wav"_s, 1.5);
    AddBlock(program, 1, u"Blok \"een\"\nvan, twee: $(id)"_s.replace(u'"', u'\''), u"een.wav"_s);
    const ToolRun run = Playout(program);
    EXPECT_EQ(run.exitCode, kDone) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(
        Content(program, u"blok-1.m3u"_s).endsWith(u"#EXTINF:2,Spot 1\n"_s + program.At(u"audio/een.wav"_s) + u'\n'))
        << Content(program, u"blok-1.m3u"_s).toStdString();
    EXPECT_NE(run.out.find("blok-1.m3u,1,0:02,"), std::string::npos) << run.out;
  }
}

TEST(PlayoutCommand, TheMomentDecidesAndASilentBlockIsReported) {
  const StationProgram program;
  program.MakeSound(u"audio/een.wav"_s, 1);
  AddBlock(program, 1, u"Blok"_s, u"een.wav"_s);
  AddBlock(program, 2, u"Uit"_s, u"een.wav"_s, 0);
  const ToolRun run = Playout(program, u"2025-04-01 00:00"_s);
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_NE(run.out.find("1,Blok,blok-1.m3u,0,0:00,stil: geen enkele spot kan spelen (Spot 1: verlopen)"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("2,Uit,blok-2.m3u,0,0:00,het item is niet aktief"), std::string::npos) << run.out;
  EXPECT_FALSE(Content(program, u"blok-1.m3u"_s).contains(u"een.wav"_s));
  EXPECT_TRUE(Content(program, u"blok-1.m3u"_s).startsWith(u"#EXTM3U"_s));
}

TEST(PlayoutCommand, TheFileOfADeletedBlockIsRemoved) {
  const StationProgram program;
  program.MakeSound(u"audio/een.wav"_s, 1);
  AddBlock(program, 1, u"Blijft"_s, u"een.wav"_s);
  AddBlock(program, 2, u"Gaat"_s, u"een.wav"_s);
  Playout(program);
  EXPECT_FALSE(Content(program, u"blok-2.m3u"_s).isEmpty());
  program.Rows().OnServer(u"DELETE FROM tblItems WHERE ID = 2"_s);
  Playout(program);
  EXPECT_EQ(QDir(program.At(u"uit"_s)).entryList(QDir::Files), QStringList{u"blok-1.m3u"_s});
}

TEST(PlayoutCommand, ASoundOnAnUnmappedDriveIsLeftOutAndReported) {
  const StationProgram program;
  AddBlock(program, 1, u"Blok"_s, u"een.wav"_s);
  program.Rows().OnServer(u"UPDATE tblItemSpots SET Path = \"Q:\\een.wav\""_s);
  const ToolRun run = Playout(program);
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_NE(run.out.find("Spot 1: geluidsbestand ontbreekt"), std::string::npos) << run.out;
}

TEST(PlayoutCommand, WrongWordsAreReportedByName) {
  const StationProgram program;
  const auto use = [&](const QStringList& words) { return program.Run(u"playout"_s, words); };
  EXPECT_EQ(use({u"--to"_s, program.At(u"uit"_s)}).exitCode, kWrongUse);
  EXPECT_EQ(use({u"--form"_s, u"m3u"_s}).exitCode, kWrongUse);
  const ToolRun form = use({u"--form"_s, u"pls"_s, u"--to"_s, program.At(u"uit"_s)});
  EXPECT_EQ(form.exitCode, kWrongUse);
  EXPECT_NE(form.err.find("'pls'"), std::string::npos);
  const ToolRun moment = Playout(program, u"morgen"_s);
  EXPECT_EQ(moment.exitCode, kWrongUse);
  EXPECT_NE(moment.err.find("'morgen'"), std::string::npos);
  EXPECT_FALSE(QDir(program.At(u"uit"_s)).exists());
}
