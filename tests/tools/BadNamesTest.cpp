// SPDX-License-Identifier: MIT
// Every command that takes the name of a file or folder, with every kind of object that can have that name: the command
// ends at once with an error that contains the name, and leaves the folder unchanged.
#include "tests/support/Hindrance.h"
#include "tests/tools/RunTool.h"
#include "tools/Commands.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace Qt::StringLiterals;

namespace {

const QString kName = u"NAAM"_s;  // placeholder for the name in the words of a command
constexpr unsigned kMaxSeconds = 20;

struct Call {
  const char* label;
  QStringList words;
};

// The words for a database, a sound file, a program folder and a folder to search.
const QList<Call>& CallsOnFiles() {
  static const QList<Call> calls{{"tables", {u"tables"_s, kName}},
                                 {"schema", {u"schema"_s, kName}},
                                 {"dump", {u"dump"_s, kName, u"tblOfflineLog"_s}},
                                 {"sql", {u"sql"_s, kName, u"SELECT * FROM tblOfflineLog"_s}},
                                 {"sql that writes", {u"sql"_s, kName, u"DELETE FROM tblOfflineLog"_s}},
                                 {"measure", {u"measure"_s, kName}},
                                 {"check", {u"check"_s, kName}},
                                 {"conflicts", {u"conflicts"_s, kName}},
                                 {"apply to", {u"apply"_s, kName, u"20250311143207.tql"_s, u"--from"_s, u"A"_s}},
                                 {"played from", {u"played"_s, kName, u"uitzendlog.txt"_s}},
                                 {"compact", {u"compact"_s, kName}},
                                 {"compact without backup", {u"compact"_s, kName, u"--zonder-reservekopie"_s}},
                                 {"compact from", {u"compact"_s, kName, u"nieuw.mdb"_s}},
                                 {"copy from", {u"copy"_s, kName, u"nieuw.mdb"_s}},
                                 {"restore from", {u"restore"_s, kName, u"goed.mdb"_s, u"tblCopie_Items"_s}},
                                 {"restore into", {u"restore"_s, u"goed.mdb"_s, kName, u"tblCopie_Items"_s}}};
  return calls;
}

const QList<Call>& CallsOnFolders() {
  static const QList<Call> calls{{"export", {u"export"_s, kName}},
                                 {"spots", {u"spots"_s, kName}},
                                 {"locate", {u"locate"_s, kName, u"."_s}},
                                 {"playout", {u"playout"_s, kName, u"--form"_s, u"m3u"_s, u"--to"_s, u"."_s}},
                                 {"locate in", {u"locate"_s, u"zender"_s, kName}}};
  return calls;
}

const QList<Call>& CallsOnLogs() {
  static const QList<Call> calls{
      {"played", {u"played"_s, u"goed.mdb"_s, kName}},
      {"apply", {u"apply"_s, u"zender/server/OvalistoServer.mdb"_s, kName, u"--from"_s, u"A"_s}}};
  return calls;
}

const QList<Call>& CallsThatMake() {
  static const QList<Call> calls{{"create", {u"create"_s, kName}},
                                 {"demo", {u"demo"_s, kName}},
                                 {"playout to", {u"playout"_s, u"zender"_s, u"--form"_s, u"m3u"_s, u"--to"_s, kName}},
                                 {"compact to", {u"compact"_s, u"goed.mdb"_s, kName}}};
  return calls;
}

class BadNamesDeathTest : public testing::Test {
 protected:
  BadNamesDeathTest() : before_(QDir::currentPath()) {
    QDir::setCurrent(folder_.path());
    EXPECT_EQ(RunTool({u"create"_s, u"zender"_s}).exitCode, kDone);
    QFile::copy(u"zender/data/OvalistoLocal.mdb"_s, u"goed.mdb"_s);
    for (const char* name : {".", "zender", "zender/data"})
      ::chmod(name, 0777);
    ::chmod("goed.mdb", 0666);
    Put(u"20250311143207.tql"_s, "UPDATE tblItems SET Naam = 'Nieuws' WHERE ID = 1;\r\n");
    Put(u"uitzendlog.txt"_s, {});
  }
  ~BadNamesDeathTest() override { QDir::setCurrent(before_); }

  static void Put(const QString& name, const QByteArray& content, mode_t mode = 0666) {
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    ASSERT_EQ(::chmod(QFile::encodeName(name).constData(), mode), 0);
  }

  // `named`: text that the error may contain instead of the name.
  static void ExpectRefused(const QList<Call>& calls, const QString& name, const QString& named = {}) {
    const QString part = named.isEmpty() ? name : named;
    const std::string pattern = named.isEmpty() ? Escaped(part) : Escaped(part) + "|" + Escaped(name);
    for (const Call& call : calls) {
      QStringList words = call.words;
      words.replaceInStrings(kName, name);
      EXPECT_EXIT(RunAsNobody(words), testing::ExitedWithCode(kFailed), pattern)
          << call.label << " on " << part.toStdString();
      EXPECT_FALSE(QFile::exists(u"nieuw.mdb"_s)) << call.label;
    }
  }

 private:
  // Escapes it for a POSIX pattern.
  static std::string Escaped(const QString& text) {
    std::string escaped;
    for (const char c : text.toStdString()) {
      if (std::strchr(R"(.[]{}()*+?^$|\)", c) != nullptr) escaped += '\\';
      escaped += c;
    }
    return escaped;
  }
  [[noreturn]] static void RunAsNobody(const QStringList& words) {
    testing_support::BecomeNobody();
    ::alarm(kMaxSeconds);  // a command that hangs is killed
    const ToolRun run = RunTool(words);
    std::fputs(run.err.c_str(), stderr);
    std::_Exit(run.exitCode);
  }

  QString before_;
  QTemporaryDir folder_;
};

}  // namespace

TEST(BadNames, EveryCommandIsCalled) {
  QSet<QString> called;
  for (const Call& call : CallsOnFiles() + CallsOnFolders() + CallsOnLogs() + CallsThatMake())
    called.insert(call.words.first());
  for (const Command& command : AllCommands())
    EXPECT_TRUE(called.contains(command.name)) << command.name.toStdString();
}

TEST_F(BadNamesDeathTest, APipe) {
  ASSERT_EQ(::mkfifo("pijp", 0666), 0);
  ::chmod("pijp", 0666);
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, u"pijp"_s);
}

TEST_F(BadNamesDeathTest, ADevice) {
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, u"/dev/zero"_s);
}

TEST_F(BadNamesDeathTest, AFolder) {
  QDir().mkdir(u"map"_s);
  ::chmod("map", 0777);
  ExpectRefused(CallsOnFiles() + CallsOnLogs(), u"map"_s);
  ExpectRefused(CallsOnFolders().first(4), u"map"_s);
  ExpectRefused({CallsThatMake().last()}, u"map"_s);
}

TEST_F(BadNamesDeathTest, ALinkToNothing) {
  QFile::link(u"nergens"_s, u"koppeling"_s);
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, u"koppeling"_s);
  EXPECT_FALSE(QFile::exists(u"nergens"_s));
}

TEST_F(BadNamesDeathTest, ALinkToAPipe) {
  ASSERT_EQ(::mkfifo("pijp", 0666), 0);
  QFile::link(u"pijp"_s, u"koppeling"_s);
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, u"koppeling"_s, u"pijp"_s);  // or the real file
}

TEST_F(BadNamesDeathTest, AMissingFile) {
  ExpectRefused(CallsOnFiles(), u"weg.mdb"_s);
  ExpectRefused(CallsOnFolders(), u"weg.mdb"_s);
}

TEST_F(BadNamesDeathTest, AnEmptyFile) {
  Put(u"leeg.mdb"_s, {});
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsThatMake()})
    ExpectRefused(calls, u"leeg.mdb"_s);
  EXPECT_EQ(QFileInfo(u"leeg.mdb"_s).size(), 0);
}

TEST_F(BadNamesDeathTest, AFileOfAnotherUser) {
  Put(u"dicht.mdb"_s, "geheim", 0600);
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, u"dicht.mdb"_s);
}

TEST_F(BadNamesDeathTest, ANameThatIsTooLong) {
  const QString name(300, u'x');
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsOnLogs(), CallsThatMake()})
    ExpectRefused(calls, name, QString(200, u'x'));
}

// The error contains the name unchanged; VisibleStreamTest checks how a terminal shows it.
TEST_F(BadNamesDeathTest, ANameWithALineBreakAndAnEscape) {
  const QString name = u"rood\x1B[31m\nregel.mdb"_s;
  ExpectRefused(CallsOnFiles(), name);
  ExpectRefused(CallsOnFolders(), name);
  Put(name, {});
  for (const auto& calls : {CallsOnFiles(), CallsOnFolders(), CallsThatMake()})
    ExpectRefused(calls, name);
}
