#include "data/Globals.h"
#include "data/ProgramLock.h"
#include "export/ExportRecord.h"
#include "export/OfflineLogExport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/HostPath.h"
#include "platform/runtime/TextFile.h"
#include "tests/tools/StationProgram.h"
#include "tools/ExportSecond.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <chrono>
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

TEST(ExportCommand, OnlineNothingIsAsked) {
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

TEST(ExportCommand, ADestinationThatIsNotThereIsToldAndTheLogStays) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  ASSERT_TRUE(QDir(program.Rows().ExportFolder()).removeRecursively());
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("Bestemming"), std::string::npos) << run.err;
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

TEST(ExportCommand, NoDestinationIsToldAndTheLogStays) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  runtime::WriteFile(runtime::PathText(program.At(u"ovalis.ini"_s)), "[Files]\r\nDatabasePath=D:\\server\r\n");
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("Bestemming"), std::string::npos) << run.err;
  EXPECT_EQ(program.Rows().Log().size(), 1);
}

TEST(ExportCommand, CharactersThatDoNotFitAreTold) {
  const StationProgram program;
  LogStatement(program, 1, u"UPDATE a SET b = '\u0142'"_s);
  const ToolRun run = program.Run(u"export"_s);
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_NE(run.err.find("vraagteken"), std::string::npos) << run.err;
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

// The file got its name and went away before the log was emptied: nobody but the user knows what became of it.
TEST(ExportCommand, AnInterruptedExportWhoseFileIsGoneNeedsTheAnswerOnlineToo) {
  const StationProgram program;
  LogStatement(program, 1, u"DELETE FROM c"_s);
  ExportContent log;
  log.AddLog(global.localDatabasePath);
  WriteExportRecord(global.localDatabasePath,
                    {u"D:\\export\\weg.tql"_s, u"D:\\export\\weg.tmp"_s, log.HighestID(), log.Finish()});
  EXPECT_EQ(program.Run(u"export"_s).exitCode, kFailed);
  EXPECT_EQ(program.Rows().Log().size(), 1);
  EXPECT_EQ(program.Run(u"export"_s, {kProcessed}).exitCode, kDone);
  EXPECT_TRUE(program.Rows().Log().isEmpty());
  EXPECT_TRUE(ExportFiles(program).isEmpty());
}

TEST(ExportSecond, WaitsUntilNoFileHasTheName) {
  const Station station;
  QDateTime now(QDate(2025, 3, 11), QTime(9, 30, 15, 400));
  const runtime::ClockScope clock([&now] { return now; });
  runtime::WriteFile(global.exportPath + u"\\20250311093015.tql"_s, "x");
  runtime::WriteFile(global.exportPath + u"\\20250311093016.tql"_s, "x");
  QList<int> waits;
  WaitForFreeSecond(global.exportPath, [&](std::chrono::milliseconds time) {
    waits += static_cast<int>(time.count());
    now = now.addMSecs(time.count());
  });
  EXPECT_EQ(waits, (QList<int>{600, 1000}));
}

TEST(ExportSecond, AfterwardsTheSecondIsOver) {
  QDateTime now(QDate(2025, 3, 11), QTime(9, 30, 15, 900));
  const runtime::ClockScope clock([&now] { return now; });
  int waits = 0;
  const auto sleep = [&](std::chrono::milliseconds time) {
    now = now.addMSecs(time.count());
    ++waits;
  };
  WaitOutSecond(u"D:\\export\\20250311093015.tql"_s, sleep);
  WaitOutSecond(u"D:\\export\\20250311093015.tql"_s, sleep);
  EXPECT_EQ(waits, 1);
}
