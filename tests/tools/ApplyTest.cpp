// SPDX-License-Identifier: MIT
#include "data/Schema.h"
#include "platform/dao/Database.h"
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

const QByteArray kSwitchOff = "UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 1;\r\n";
const QByteArray kGoneSpot = "UPDATE tblItemSpots SET Aktief = 0 WHERE ID = 99;\r\n";

class ApplyCommandLine : public testing::Test {
 protected:
  ApplyCommandLine() {
    schema::CreateServerDatabase(Server());
    dao::OpenDatabase(Server()).Execute(u"INSERT INTO tblItemSpots (ID, Naam, Aktief) VALUES (1, \"Bakker\", 1)"_s);
    QDir(folder_.path()).mkpath(u"export"_s);
  }

  QString At(const QString& name) const { return folder_.filePath(name); }
  QString Server() const { return At(u"server.mdb"_s); }
  QString Written(const QString& name, const QByteArray& content) const {
    QFile file(At(u"export/"_s + name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return file.fileName();
  }
  QByteArray Content(const QString& name) const {
    QFile file(At(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  ToolRun Apply(const QStringList& words) const {
    return RunTool(QStringList{u"apply"_s, Server(), u"--from"_s, u"STUDIO2"_s} + words);
  }
  bool IsSwitchedOff() const {
    return dao::OpenDatabase(Server()).OpenRecordset(u"SELECT Aktief FROM tblItemSpots WHERE ID = 1"_s).Field(0) == 0;
  }

 private:
  QTemporaryDir folder_;
};

bool Has(const std::string& text, const char* words) {
  return text.find(words) != std::string::npos;
}

}  // namespace

TEST_F(ApplyCommandLine, AFileIsCarriedOutOnceAndTheSecondRunSaysSo) {
  const QString file = Written(u"20261122101500.tql"_s, kSwitchOff);
  const ToolRun first = Apply({file});
  EXPECT_EQ(first.exitCode, kDone) << first.err;
  EXPECT_TRUE(Has(first.out, "1 gewijzigd")) << first.out;
  EXPECT_TRUE(IsSwitchedOff());
  const ToolRun second = Apply({file});
  EXPECT_EQ(second.exitCode, kDone);
  EXPECT_TRUE(Has(second.out, "eerder verwerkt")) << second.out;
}

TEST_F(ApplyCommandLine, AFolderGoesInOrderWithAReport) {
  Written(u"20261122101502.tql"_s, kSwitchOff);
  Written(u"20261122101501.tql"_s, "UPDATE tblItemSpots SET Aktief = 1 WHERE ID = 1;\r\n");
  Written(u"20261122101500.tql"_s, kSwitchOff);
  Written(u"kladblok.tql"_s, "geen export");
  const ToolRun run = Apply({u"--folder"_s, At(u"export"_s), u"--report"_s, At(u"verslag.csv"_s)});
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_TRUE(IsSwitchedOff());
  const QByteArray report = Content(u"verslag.csv"_s);
  EXPECT_EQ(report.count("gewijzigd,item-spot,1,1,"), 3) << report.constData();
  EXPECT_LT(report.indexOf("20261122101500"), report.indexOf("20261122101502"));
}

TEST_F(ApplyCommandLine, ADryRunChangesNothing) {
  const QByteArray before = Content(u"server.mdb"_s);
  const ToolRun run = Apply({Written(u"20261122101500.tql"_s, kSwitchOff), u"--dry-run"_s});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_TRUE(Has(run.out, "zou doen: 1 gewijzigd")) << run.out;
  EXPECT_EQ(Content(u"server.mdb"_s), before);
}

TEST_F(ApplyCommandLine, WhatWaitsGivesAnExitCodeOfItsOwnAndIsSettledByCommand) {
  const ToolRun run = Apply({Written(u"20261122101500.tql"_s, kSwitchOff + kGoneSpot)});
  EXPECT_EQ(run.exitCode, kWaits) << run.err;
  EXPECT_TRUE(IsSwitchedOff());
  const ToolRun list = RunTool({u"conflicts"_s, Server()});
  EXPECT_EQ(list.exitCode, kWaits);
  EXPECT_TRUE(Has(list.out, "op de server verwijderd (wacht)")) << list.out;
  const ToolRun settled = RunTool({u"conflicts"_s, Server(), u"1"_s, u"--take"_s, u"server"_s, u"--all"_s});
  EXPECT_EQ(settled.exitCode, kDone) << settled.err;
  EXPECT_TRUE(Has(settled.out, "gekozen: server")) << settled.out;
  EXPECT_EQ(RunTool({u"conflicts"_s, Server()}).exitCode, kDone);
}

// The bad file is known before the good one is carried out.
TEST_F(ApplyCommandLine, ABadFileAmongGoodOnesChangesNothing) {
  const QByteArray before = Content(u"server.mdb"_s);
  Written(u"20261122101500.tql"_s, kSwitchOff);
  Written(u"20261122101501.tql"_s, "DROP TABLE tblItems;\r\n");
  const ToolRun run = Apply({u"--folder"_s, At(u"export"_s)});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_TRUE(Has(run.err, "20261122101501.tql") && Has(run.err, "regel 1")) << run.err;
  EXPECT_EQ(Content(u"server.mdb"_s), before);
  const ToolRun unwritable = Apply({At(u"export/20261122101500.tql"_s), u"--report"_s, At(u"geen map/verslag.csv"_s)});
  EXPECT_EQ(unwritable.exitCode, kFailed);
  EXPECT_EQ(Content(u"server.mdb"_s), before);
}

TEST_F(ApplyCommandLine, AudioFilesComeAlong) {
  QDir(At(QString())).mkpath(u"geluid"_s);
  QDir(At(QString())).mkpath(u"studio"_s);
  for (const auto& [name, content] : {std::pair(u"geluid/a.wav"_s, QByteArray("a")),
                                      std::pair(u"ovalis.ini"_s, QByteArray("[Drives]\r\nD=geluid\r\n")),
                                      std::pair(u"export/Audio.tae"_s, QByteArray("D:\\a.wav\r\nD:\\b.wav\r\n"))}) {
    QFile file(At(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  const ToolRun run = Apply(
      {Written(u"20261122101500.tql"_s, kSwitchOff), u"--audio-to"_s, At(u"studio"_s), u"--program"_s, At(QString())});
  EXPECT_EQ(run.exitCode, kDone) << run.err;
  EXPECT_EQ(Content(u"studio/a.wav"_s), "a");
  EXPECT_TRUE(Has(run.out, "ontbreekt: D:\\b.wav")) << run.out;
}

TEST_F(ApplyCommandLine, WrongUseIsSaidBeforeAnythingHappens) {
  const QString file = Written(u"20261122101500.tql"_s, kSwitchOff);
  EXPECT_EQ(RunTool({u"apply"_s, Server(), file}).exitCode, kWrongUse);
  EXPECT_EQ(Apply({}).exitCode, kWrongUse);
  EXPECT_EQ(Apply({file, u"--folder"_s, At(u"export"_s)}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"conflicts"_s, Server(), u"1"_s}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"conflicts"_s, Server(), u"1"_s, u"--take"_s, u"beide"_s}).exitCode, kWrongUse);
  EXPECT_FALSE(IsSwitchedOff());
}
