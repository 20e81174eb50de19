// SPDX-License-Identifier: MIT
#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "data/Writes.h"
#include "export/ExportRecord.h"
#include "export/OfflineLogExport.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/tools/StationProgram.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;
using testing_support::Station;

namespace {

const QString kProcessed = u"--vorige-verwerkt"_s;

void LogStatement(const StationProgram& program, int id, const QString& statement) {
  program.Rows().OnLocal(
      u"INSERT INTO tblOfflineLog (ID, SqlSyntax) VALUES (%1, \"%2\")"_s.arg(QString::number(id), statement));
}

QStringList ExportFiles(const StationProgram& program) {
  return QDir(program.Rows().ExportFolder()).entryList({u"*.tql"_s}, QDir::Files);
}

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

TEST(ExportCommand, WritesTheLogAndEmptiesIt) {
  const StationProgram program(Station::Mode::Offline);
  LogStatement(program, 1, u"DELETE FROM c "_s);
  LogStatement(program, 2, u" "_s);
  LogStatement(program, 3, u"UPDATE a SET b = 1"_s);
  const ToolRun run = program.Run(u"export"_s, {kProcessed});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.err, "");
  const QStringList files = ExportFiles(program);
  ASSERT_EQ(files.size(), 1);
  EXPECT_EQ(Content(program.At(u"export/"_s + files.first())), "DELETE FROM c;\r\nUPDATE a SET b = 1;\r\n");
  EXPECT_EQ(run.out, program.At(u"export/"_s + files.first() + u'\n').toStdString());
  EXPECT_TRUE(program.Rows().Log().isEmpty());
}

TEST(ExportCommand, OfflineNothingIsExportedUntilEarlierFilesWereProcessed) {
  const StationProgram program(Station::Mode::Offline);
  LogStatement(program, 1, u"DELETE FROM c"_s);
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("Heeft U de vorige export-files reeds verwerkt met Kadrovia ?"), std::string::npos);
  EXPECT_NE(run.err.find("--vorige-verwerkt"), std::string::npos) << run.err;
  EXPECT_TRUE(ExportFiles(program).isEmpty());
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

TEST(ExportCommand, OnlineThereIsNoQuestion) {
  const StationProgram program(Station::Mode::Online);
  LogStatement(program, 1, u"DELETE FROM c"_s);
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(ExportFiles(program).size(), 1);
}

TEST(ExportCommand, AnEmptyLogMakesNoFile) {
  const StationProgram program;
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_TRUE(ExportFiles(program).isEmpty());
}

TEST(ExportCommand, TwoInARowMakeTwoFiles) {
  const StationProgram program;
  LogStatement(program, 1, u"EERSTE"_s);
  ASSERT_EQ(program.Run(u"export"_s).exitCode, kDone);
  LogStatement(program, 1, u"TWEEDE"_s);
  ASSERT_EQ(program.Run(u"export"_s).exitCode, kDone);
  const QStringList files = ExportFiles(program);
  ASSERT_EQ(files.size(), 2);
  EXPECT_EQ(Content(program.At(u"export/"_s + files.at(0))), "EERSTE;\r\n");
  EXPECT_EQ(Content(program.At(u"export/"_s + files.at(1))), "TWEEDE;\r\n");
}

TEST(ExportCommand, AMissingDestinationIsReportedAndTheLogStays) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  ASSERT_TRUE(QDir(program.Rows().ExportFolder()).removeRecursively());
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("Bestemming"), std::string::npos) << run.err;
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

TEST(ExportCommand, NoDestinationIsReportedAndTheLogStays) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  runtime::WriteFile(runtime::PathText(program.At(u"ovalis.ini"_s)), "[Files]\r\nDatabasePath=D:\\server\r\n");
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("Bestemming"), std::string::npos) << run.err;
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

TEST(ExportCommand, CharactersThatDoNotFitAreReported) {
  const StationProgram program;
  LogStatement(program, 1, u"UPDATE a SET b = '\u0142'"_s);
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_NE(run.err.find("vraagteken"), std::string::npos) << run.err;
}

TEST(ExportCommand, NewRecordsWithTheSameNumberAreReported) {
  const StationProgram program(Station::Mode::Offline);
  ItemSpotRow row;
  row.id = 42;
  for (const QString& naam : {u"Apotheek"_s, u"Garage"_s}) {
    row.naam = naam;
    ASSERT_TRUE(Insert_tblItemSpots(row, global.localDatabasePath, u"tblCopie_ItemSpots"_s));
    program.Rows().OnLocal(u"DELETE FROM tblCopie_ItemSpots"_s);  // as the list does when it closes
  }
  const ToolRun run = program.Run(u"export"_s, {kProcessed});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_NE(run.err.find("item-spot 42 (Apotheek, Garage)"), std::string::npos) << run.err;
  EXPECT_EQ(run.out, program.At(u"export/"_s + ExportFiles(program).value(0) + u'\n').toStdString());
}

TEST(ExportCommand, WhileTheProgramRunsOnTheFolderNothingIsExported) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  const ProgramLock running(global.programFolder + u"\\data"_s);
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_FALSE(run.err.empty());
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

namespace {

// An export whose file got its name and disappeared before the log was emptied: only the user knows whether it was
// processed.
class MissingExportFile : public testing::TestWithParam<Station::Mode> {
 protected:
  MissingExportFile() {
    LogStatement(program_, 1, u"DELETE FROM c"_s);
    ExportContent log;
    log.AddLog(global.localDatabasePath);
    WriteExportRecord(global.localDatabasePath, {u"D:\\export\\"_s + kName,
                                                 u"D:\\export\\"_s + kName + u".0123abcd.tmp"_s,
                                                 log.HighestID(),
                                                 log.Finish(),
                                                 {},
                                                 {}});
  }
  // Nothing was decided: a message names the file, the log is unchanged, and no file was made.
  void ExpectUndecided(const QStringList& words) const {
    const ToolRun run = program_.Run(u"export"_s, words);
    EXPECT_EQ(run.exitCode, kFailed);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(kName.toStdString()), std::string::npos) << run.err;
    EXPECT_EQ(program_.Rows().Log(), QStringList{u"DELETE FROM c"_s});
    EXPECT_TRUE(ExportFiles(program_).isEmpty());
  }

  const QString kName = u"20250311093015.tql"_s;
  StationProgram program_{GetParam()};
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Modes, MissingExportFile, testing::Values(Station::Mode::Online, Station::Mode::Offline));

TEST_P(MissingExportFile, IsNotDecidedByAnOptionForAnotherQuestion) {
  ExpectUndecided({kProcessed});
  const ToolRun run = program_.Run(u"export"_s, {kProcessed});
  EXPECT_NE(run.err.find("--bestand-verwerkt"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("--bestand-niet-verwerkt"), std::string::npos) << run.err;
}

TEST_P(MissingExportFile, IsNotDecidedByAnotherFileNameOrByBothAnswers) {
  ExpectUndecided({kProcessed, u"--bestand-verwerkt"_s, u"20250311093016.tql"_s});
  ExpectUndecided({kProcessed, u"--bestand-verwerkt"_s, kName, u"--bestand-niet-verwerkt"_s, kName});
}

TEST_P(MissingExportFile, EmptiesTheLogWhenTheUserSaysItWasProcessed) {
  EXPECT_EQ(program_.Run(u"export"_s, {kProcessed, u"--bestand-verwerkt"_s, kName}).exitCode, kDone);
  EXPECT_TRUE(program_.Rows().Log().isEmpty());
  EXPECT_TRUE(ExportFiles(program_).isEmpty());
}

TEST_P(MissingExportFile, IsWrittenAgainWhenTheUserSaysItWasNotProcessed) {
  EXPECT_EQ(program_.Run(u"export"_s, {kProcessed, u"--bestand-niet-verwerkt"_s, kName}).exitCode, kDone);
  EXPECT_TRUE(program_.Rows().Log().isEmpty());
  ASSERT_EQ(ExportFiles(program_).size(), 1);
  EXPECT_EQ(Content(program_.At(u"export/"_s + ExportFiles(program_).first())), "DELETE FROM c;\r\n");
}

// Online locate writes nothing to the log.
TEST_P(MissingExportFile, PreventsLocateFromWritingToTheLog) {
  const ToolRun run = program_.Run(u"locate"_s, {program_.At(u"audio"_s), u"--write"_s});
  if (GetParam() == Station::Mode::Online) {
    EXPECT_EQ(run.exitCode, kDone) << run.err;
    return;
  }
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find(kName.toStdString()), std::string::npos) << run.err;
}
