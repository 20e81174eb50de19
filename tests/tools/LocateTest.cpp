// SPDX-License-Identifier: MIT
#include "platform/runtime/Probe.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <string>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

const std::string kHeader = "Soort,ID,Naam,Uitslag,Oud,Nieuw\r\n";

// A spot of ten seconds whose file was D:\weg\Lente.wav.
void AddLostSpot(const StationProgram& program) {
  program.Rows().OnCurrent(u"INSERT INTO "_s + program.Table() +
                           u" (ID, Naam, Path, LengteSec, StartPunt, Mixpunt, StartDatum, StartUur, EindDatum, "
                           u"EindUur, AantalGedraaid, Aktief) VALUES (4, \"Jan's lente\", \"D:\\weg\\Lente.wav\", 10, "
                           u"0, 1500, 45658, 6, 46022, 22, 7, 1)"_s);
}

QString PathOfSpot(const StationProgram& program) {
  return program.Rows().CurrentRows(u"SELECT Path FROM "_s + program.Table()).Field(u"Path"_s).toString();
}

}  // namespace

TEST(LocateCommand, ListsWhereAMovedFileIsAndChangesNothing) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"nieuw/diep/LENTE.wav"_s, 10.4);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s)});
  EXPECT_EQ(run.out, kHeader + "item-spot,4,Jan's lente,gevonden,D:\\weg\\Lente.wav,D:\\nieuw\\diep\\LENTE.wav\r\n");
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(PathOfSpot(program), u"D:\\weg\\Lente.wav"_s);
  EXPECT_FALSE(QFile::exists(program.At(u"export/Audio.tae"_s)));
}

TEST(LocateCommand, WriteChangesOnlyThePath) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10.4);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_EQ(run.out, kHeader + "item-spot,4,Jan's lente,geschreven,D:\\weg\\Lente.wav,D:\\nieuw\\Lente.wav\r\n");
  EXPECT_EQ(RunTool({u"dump"_s, program.At(u"server/OvalistoServer.mdb"_s), u"tblItemSpots"_s}).out,
            "ID,Path,Naam,LengteSec,StartPunt,Mixpunt,StartDatum,StartUur,EindDatum,EindUur,AantalGedraaid,"
            "LaatstGedraaid,Aktief\r\n"
            "4,D:\\nieuw\\Lente.wav,Jan's lente,10,0,1500,2025-01-01 00:00:00,6,2025-12-31 00:00:00,22,7,,1\r\n");
  EXPECT_TRUE(program.Rows().Log().isEmpty());
}

TEST(LocateCommand, WritingOfflineIsLoggedForTheServerAndListedAsNewAudio) {
  const StationProgram program(Station::Mode::Offline);
  AddLostSpot(program);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10.4);
  EXPECT_EQ(program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s}).exitCode, kDone);
  EXPECT_EQ(program.Rows().Log(),
            QStringList{u"UPDATE tblItemSpots SET Path = 'D:\\nieuw\\Lente.wav', Naam = 'Jan*s lente', LengteSec = 10, "
                        u"StartPunt = 0, MixPunt = 1500, StartDatum = 45658, StartUur = 6, EindDatum = 46022, "
                        u"EindUur = 22, Aktief = 1 WHERE ID = 4"_s});
  QFile list(program.At(u"export/Audio.tae"_s));
  ASSERT_TRUE(list.open(QIODevice::ReadOnly));
  EXPECT_EQ(list.readAll(), "D:\\nieuw\\Lente.wav\r\n");
}

TEST(LocateCommand, JinglesAreFoundToo) {
  const StationProgram program;
  program.Rows().OnServer(
      u"INSERT INTO tblItemPingles (ID, Naam, Path, LengteSec, Aktief) VALUES (2, \"Klok\", \"D:\\weg\\klok.wav\", 3, 1)"_s);
  program.MakeSound(u"nieuw/klok.wav"_s, 3);
  EXPECT_EQ(program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s}).out,
            kHeader + "item-pingle,2,Klok,geschreven,D:\\weg\\klok.wav,D:\\nieuw\\klok.wav\r\n");
  EXPECT_EQ(program.Rows().ServerRows(u"SELECT Path FROM tblItemPingles"_s).Field(u"Path"_s).toString(),
            u"D:\\nieuw\\klok.wav"_s);
}

TEST(LocateCommand, AFileAtItsPathIsNotSearchedFor) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"weg/Lente.wav"_s, 10);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10);
  EXPECT_EQ(program.Run(u"locate"_s, {program.At(u"nieuw"_s)}).out, kHeader);
}

TEST(LocateCommand, SeveralMatchesAreNeverWritten) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"nieuw/a/Lente.wav"_s, 10);
  program.MakeSound(u"nieuw/b/Lente.wav"_s, 10);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_EQ(run.out, kHeader + "item-spot,4,Jan's lente,meerdere gevonden,D:\\weg\\Lente.wav,\r\n");
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(PathOfSpot(program), u"D:\\weg\\Lente.wav"_s);
}

TEST(LocateCommand, TheSameNameWithAnotherLengthIsNeverWritten) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"nieuw/Lente.wav"_s, 14);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_NE(run.out.find("andere lengte"), std::string::npos) << run.out;
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(PathOfSpot(program), u"D:\\weg\\Lente.wav"_s);
}

TEST(LocateCommand, AFileThatIsNotFoundIsReported) {
  const StationProgram program;
  AddLostSpot(program);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"audio"_s)});
  EXPECT_EQ(run.out, kHeader + "item-spot,4,Jan's lente,niet gevonden,D:\\weg\\Lente.wav,\r\n");
  EXPECT_EQ(run.exitCode, kFailed);
}

TEST(LocateCommand, ADriveThatIsAwayIsNotAMissingFile) {
  const StationProgram program;
  AddLostSpot(program);
  program.Rows().OnServer(u"UPDATE tblItemSpots SET Path = \"Q:\\weg\\Lente.wav\""_s);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_NE(run.out.find("niet bereikbaar,Q:\\weg\\Lente.wav,\r\n"), std::string::npos) << run.out;
  EXPECT_EQ(PathOfSpot(program), u"Q:\\weg\\Lente.wav"_s);
}

TEST(LocateCommand, AFolderWithoutAccessIsNotAMissingFile) {
  const StationProgram program;
  AddLostSpot(program);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10);
  ToolRun run;
  {
    const runtime::ProbeLookScope closed([](const QString& path) {
      return path.contains(u"/weg/"_s) ? EACCES : ::access(QFile::encodeName(path).constData(), F_OK) == 0 ? 0 : ENOENT;
    });
    run = RunTool({u"locate"_s, program.Folder(), program.At(u"nieuw"_s), u"--write"_s});
  }
  EXPECT_EQ(run.out, kHeader + "item-spot,4,Jan's lente,toegang geweigerd,D:\\weg\\Lente.wav,\r\n");
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(RunTool({u"sql"_s, program.At(u"server/OvalistoServer.mdb"_s), u"SELECT Path FROM tblItemSpots"_s}).out,
            "Path\r\nD:\\weg\\Lente.wav\r\n");
}

TEST(LocateCommand, AFileOutsideOfTheDrivesIsNotWritten) {
  const StationProgram elsewhere;
  const StationProgram program;
  AddLostSpot(program);
  elsewhere.MakeSound(u"nieuw/Lente.wav"_s, 10);
  const ToolRun run = program.Run(u"locate"_s, {elsewhere.At(u"nieuw"_s), u"--write"_s});
  EXPECT_NE(run.out.find("buiten [Drives]"), std::string::npos) << run.out;
  EXPECT_EQ(PathOfSpot(program), u"D:\\weg\\Lente.wav"_s);
}

TEST(LocateCommand, AFailedWriteIsReportedAndTheOthersContinue) {
  const StationProgram program;
  AddLostSpot(program);
  program.Rows().OnServer(
      u"INSERT INTO tblItemSpots (ID, Path, LengteSec, Aktief) VALUES (1, \"D:\\weg\\naamloos.wav\", 5, 1)"_s);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10);
  program.MakeSound(u"nieuw/naamloos.wav"_s, 5);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.out.find("item-spot,1,\"\",niet geschreven,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("item-spot,4,Jan's lente,geschreven,"), std::string::npos) << run.out;
  EXPECT_FALSE(run.err.empty());
}

TEST(LocateCommand, APathThatIsWrittenButNotLoggedYetIsShownAsWritten) {
  const StationProgram program(Station::Mode::Offline);
  AddLostSpot(program);
  program.Rows().OnLocal(u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (2147483647, \"vol\")"_s);
  program.MakeSound(u"nieuw/Lente.wav"_s, 10);
  const ToolRun run = program.Run(u"locate"_s, {program.At(u"nieuw"_s), u"--write"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.out.find(",geschreven (nog niet in het logboek),D:\\weg"), std::string::npos) << run.out;
  EXPECT_EQ(PathOfSpot(program), u"D:\\nieuw\\Lente.wav"_s);
}

TEST(LocateCommand, AMissingFolderToSearchIsReportedByName) {
  const StationProgram program;
  const ToolRun run = program.Run(u"locate"_s, {u"/nergens/audio"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("/nergens/audio"), std::string::npos) << run.err;
  EXPECT_EQ(program.Run(u"locate"_s).exitCode, kWrongUse);
}
