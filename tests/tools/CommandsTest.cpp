// SPDX-License-Identifier: MIT
#include "platform/audio/Synth.h"
#include "tests/tools/RunTool.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

class Tool : public testing::Test {
 protected:
  QString At(const QString& name) const { return folder_.path() + u'/' + name; }
  QString Local() const { return At(u"data/OvalistoLocal.mdb"_s); }
  QString Server() const { return At(u"server/OvalistoServer.mdb"_s); }
  ToolRun Create(const QStringList& options = {}) const {
    return RunTool(QStringList{u"create"_s, folder_.path()} + options);
  }

  QTemporaryDir folder_;
};

// Throws at the first character.
class FailingBuffer : public std::streambuf {
 public:
  explicit FailingBuffer(std::function<void()> fail) : fail_(std::move(fail)) {}

 protected:
  int_type overflow(int_type) override {
    fail_();
    return traits_type::eof();
  }

 private:
  std::function<void()> fail_;
};

// Holds the messages; at the first the output stops throwing.
class MessageBuffer : public std::stringbuf {
 public:
  explicit MessageBuffer(std::ostream& out) : out_(out) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize count) override {
    out_.exceptions(std::ios::goodbit);
    return std::stringbuf::xsputn(text, count);
  }

 private:
  std::ostream& out_;
};

}  // namespace

TEST_F(Tool, CreateMakesSettingsAndDatabasesOfAStationWithoutANumber) {
  EXPECT_EQ(Create({u"--name"_s, u"Radio Proef"_s}).exitCode, kDone);
  EXPECT_TRUE(QFile::exists(At(u"ovalis.ini"_s)));
  EXPECT_TRUE(QFile::exists(At(u"data/work.mdb"_s)));
  EXPECT_EQ(RunTool({u"tables"_s, Server()}).out,
            "tblItemPingles\t0\ntblItems\t0\ntblItemsItemSpots\t0\ntblItemSpots\t0\n");
  EXPECT_EQ(RunTool({u"dump"_s, Local(), u"cdeLicenties"_s}).out, "LicentieNummer,RadioNaam\r\n0,Radio Proef\r\n");
  EXPECT_EQ(RunTool({u"sql"_s, Local(), u"SELECT COUNT(*) AS n FROM appMessages"_s}).out, "n\r\n13\r\n");
}

TEST_F(Tool, CreateMakesANumberedStationAndListsItAtTheStart) {
  EXPECT_EQ(Create({u"--station"_s, u"3"_s, u"--name"_s, u"Drie"_s}).exitCode, kDone);
  EXPECT_TRUE(QFile::exists(At(u"server/OvalistoServer3.mdb"_s)));
  for (const QString& file : {u"data/OvalistoLocal3.mdb"_s, u"data/OvalistoLocal.mdb"_s}) {
    EXPECT_EQ(RunTool({u"dump"_s, At(file), u"cdeLicenties"_s}).out, "LicentieNummer,RadioNaam\r\n3,Drie\r\n");
  }
}

TEST_F(Tool, CreateGivesAStationADefaultName) {
  ASSERT_EQ(Create().exitCode, kDone);
  ASSERT_EQ(Create({u"--station"_s, u"2"_s}).exitCode, kDone);
  EXPECT_EQ(RunTool({u"dump"_s, Local(), u"cdeLicenties"_s}).out,
            "LicentieNummer,RadioNaam\r\n0,Zender\r\n2,Zender 2\r\n");
}

TEST_F(Tool, CreateNeverReplacesAStation) {
  ASSERT_EQ(Create().exitCode, kDone);
  const ToolRun again = Create();
  EXPECT_EQ(again.exitCode, kFailed);
  EXPECT_NE(again.err.find("OvalistoLocal.mdb"), std::string::npos) << again.err;
}

TEST_F(Tool, CreateRefusesAnInvalidNumber) {
  for (const QString& number : {u"drie"_s, u"-1"_s, u"40000"_s, u""_s}) {
    const ToolRun run = Create({u"--station"_s, number});
    EXPECT_EQ(run.exitCode, kWrongUse);
    EXPECT_NE(run.err.find("--station hoort een getal van 0 tot 32767; '" + number.toStdString() + "'"),
              std::string::npos)
        << run.err;
  }
  EXPECT_FALSE(QFile::exists(Local()));
}

TEST_F(Tool, SqlChangesRowsAndSaysHowMany) {
  ASSERT_EQ(Create().exitCode, kDone);
  EXPECT_EQ(RunTool({u"sql"_s, Server(),
                     u"INSERT INTO tblItemSpots (ID, Naam, StartDatum, Aktief) VALUES (1, \"Jan's, "
                     u"spot\", 45658.5, 1)"_s})
                .out,
            "1\n");
  EXPECT_EQ(RunTool({u"sql"_s, Server(), u"SELECT ID, Path, Naam, StartDatum FROM tblItemSpots"_s}).out,
            "ID,Path,Naam,StartDatum\r\n1,,\"Jan's, spot\",2025-01-01 12:00:00\r\n");
  EXPECT_EQ(RunTool({u"sql"_s, Server(), u"DELETE FROM tblItemSpots"_s}).out, "1\n");
}

TEST_F(Tool, SqlRefusesToAddTexts) {
  ASSERT_EQ(Create().exitCode, kDone);
  const ToolRun run = RunTool({u"sql"_s, Local(), u"SELECT MsgTekst + MsgStyle FROM appMessages"_s});
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find(": + werkt alleen met getallen, en '"), std::string::npos) << run.err;
}

TEST_F(Tool, SchemaShowsFieldsAndIndexes) {
  ASSERT_EQ(Create().exitCode, kDone);
  const std::string text = RunTool({u"schema"_s, Server(), u"tblItemsItemSpots"_s}).out;
  EXPECT_NE(text.find("tblItemsItemSpots\n  ItemID Long"), std::string::npos) << text;
  EXPECT_NE(text.find("  index PrimaryKey (ItemID, ItemSpotOrder) primary unique required\n"), std::string::npos)
      << text;
  EXPECT_NE(RunTool({u"schema"_s, Local(), u"tblOfflineLog"_s}).out.find("SqlSyntax Memo"), std::string::npos);
}

TEST_F(Tool, MeasurePrintsMillisecondsAndReportsUnreadableFiles) {
  audio::ToneOptions options;
  options.seconds = 1.5;
  options.sampleRate = 8000;
  audio::WriteToneFile(At(u"a.wav"_s).toStdString(), options);
  const ToolRun run = RunTool({u"measure"_s, At(u"a.wav"_s), At(u"weg.mp3"_s)});
  EXPECT_EQ(run.out, At(u"a.wav"_s).toStdString() + "\t1500\n");
  EXPECT_EQ(run.exitCode, kFailed);
  EXPECT_NE(run.err.find("weg.mp3"), std::string::npos) << run.err;
}

TEST_F(Tool, WrongUseIsReportedWithTheUsage) {
  EXPECT_EQ(RunTool({}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"--help"_s}).exitCode, kDone);
  EXPECT_NE(RunTool({u"--help"_s}).out.find("create MAP"), std::string::npos);
  EXPECT_EQ(RunTool({u"vernietig"_s}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"dump"_s, u"x"_s}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"tables"_s, u"x"_s, u"--hard"_s}).exitCode, kWrongUse);
  EXPECT_EQ(RunTool({u"tables"_s, u"x"_s, u"--password"_s}).exitCode, kWrongUse);
}

TEST_F(Tool, AnEmptyWordIsNotTheCurrentFolder) {
  for (const Command& command : AllCommands()) {
    const ToolRun run = RunTool({command.name, u""_s});
    EXPECT_EQ(run.exitCode, kWrongUse) << command.name.toStdString();
    EXPECT_NE(run.err.find("Een leeg woord"), std::string::npos) << run.err;
  }
}

TEST_F(Tool, AnOutputErrorIsAFailure) {
  ASSERT_EQ(Create().exitCode, kDone);
  std::ostringstream err;
  std::ostream nowhere(nullptr);
  EXPECT_EQ(RunCommand({u"tables"_s, Local()}, {nowhere, err}), kFailed);
  EXPECT_EQ(err.str(), "De uitvoer kan niet geschreven worden.\n");
}

TEST_F(Tool, NoExceptionEndsACommandWithoutAMessage) {
  ASSERT_EQ(Create().exitCode, kDone);
  const std::pair<std::function<void()>, std::string> failures[] = {
      {[] { throw std::bad_alloc(); }, "Er is te weinig geheugen voor deze opdracht.\n"},
      {[] { throw std::length_error("te lang"); }, "De opdracht is afgebroken door een onverwachte fout: te lang\n"}};
  for (const auto& [fail, message] : failures) {
    FailingBuffer buffer(fail);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // what the buffer throws reaches the command
    MessageBuffer messages(out);
    std::ostream err(&messages);
    EXPECT_EQ(RunCommand({u"tables"_s, Local()}, {out, err}), kFailed);
    EXPECT_EQ(messages.str(), message + "De uitvoer kan niet geschreven worden.\n");
  }
}

TEST_F(Tool, AFileThatIsNotADatabaseIsReportedByName) {
  QFile file(At(u"rommel.mdb"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("dit is geen database");
  file.close();
  for (const QString& path : {At(u"rommel.mdb"_s), At(u"weg.mdb"_s), folder_.path()}) {
    const ToolRun run = RunTool({u"tables"_s, path});
    EXPECT_EQ(run.exitCode, kFailed);
    EXPECT_NE(run.err.find(path.toStdString()), std::string::npos) << run.err;
  }
}
