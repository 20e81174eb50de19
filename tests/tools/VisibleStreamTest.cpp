// SPDX-License-Identifier: MIT
// Texts of a database on a terminal, which they must not control, and in a pipe, where they are exact.
#include "tools/VisibleStream.h"

#include "tests/tools/RunTool.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::string Shown(const std::vector<std::string>& pieces) {
  std::ostringstream target;
  VisibleBuffer buffer(*target.rdbuf());
  std::ostream stream(&buffer);
  for (const std::string& piece : pieces)
    stream << piece;
  stream.flush();
  return target.str();
}

std::string ReadAll(int descriptor) {
  std::string text;
  std::array<char, 4096> bytes{};
  for (ssize_t count = 0; (count = ::read(descriptor, bytes.data(), bytes.size())) > 0;)
    text.append(bytes.data(), static_cast<std::size_t>(count));
  return text;
}

// The output of the program on a terminal.
std::string OnTerminal(const QStringList& words) {
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  EXPECT_TRUE(terminal >= 0 && ::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
  const std::string name = ::ptsname(terminal);
  std::vector<std::string> texts{SPOTROOSTER_DB};
  for (const QString& word : words)
    texts.push_back(word.toStdString());
  std::vector<char*> arguments;
  arguments.reserve(texts.size() + 1);
  for (std::string& text : texts)
    arguments.push_back(text.data());
  arguments.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    const int side = ::open(name.c_str(), O_RDWR | O_NOCTTY);
    ::dup2(side, STDOUT_FILENO);
    ::dup2(side, STDERR_FILENO);
    ::execv(arguments.front(), arguments.data());
    ::_exit(127);
  }
  std::string text = ReadAll(terminal);
  ::waitpid(child, nullptr, 0);
  ::close(terminal);
  return text;
}

}  // namespace

TEST(VisibleBuffer, MakesControlCharactersVisible) {
  EXPECT_EQ(Shown({"a\x1B[31mrood\a\x7F"}), "a\\x1B[31mrood\\x07\\x7F");
  EXPECT_EQ(Shown({"vier\rdrie\r\n"}), "vier\\x0Ddrie\r\n");
  EXPECT_EQ(Shown({"\xC2\x9B"
                   "31m"}),
            "\\xC2\\x9B31m");
  EXPECT_EQ(Shown({"\x9B"
                   "31m \xE9t\xE9"}),
            "\\x9B31m \\xE9t\\xE9");
}

TEST(VisibleBuffer, PassesEverythingElseUnchangedInPiecesOfAnySize) {
  EXPECT_EQ(Shown({"caf\xC3\xA9\t\xE2\x82\xAC \xF0\x9F\x8E\xB5\r\n"}),
            "caf\xC3\xA9\t\xE2\x82\xAC \xF0\x9F\x8E\xB5\r\n");
  EXPECT_EQ(Shown({"caf\xC3", "\xA9 \xE2", "\x82", "\xAC\r", "\n"}), "caf\xC3\xA9 \xE2\x82\xAC\r\n");
  EXPECT_EQ(Shown({"half \xE2\x82"}), "half \\xE2\\x82");
  EXPECT_EQ(Shown({"\xE2\x82", "a"}),
            "\\xE2\\x82"
            "a");
}

TEST(VisibleOnTerminal, NamesOfADatabaseDoNotControlTheTerminalAndAreExactInAPipe) {
  const QTemporaryDir folder;
  ASSERT_EQ(RunTool({u"create"_s, folder.path()}).exitCode, kDone);
  const QString server = folder.filePath(u"server/OvalistoServer.mdb"_s);
  const QString naam = u"titel\u001B]0;gekaapt\u0007 \u009B2J"_s;
  ASSERT_EQ(RunTool({u"sql"_s, server, u"INSERT INTO tblItems (ID, Naam) VALUES (1, \"%1\")"_s.arg(naam)}).exitCode,
            kDone);
  for (const QStringList& words :
       {QStringList{u"dump"_s, server, u"tblItems"_s}, QStringList{u"sql"_s, server, u"SELECT Naam FROM tblItems"_s},
        QStringList{u"sql"_s, server, u"UPDATE [%1] SET x = 1"_s.arg(naam)}}) {
    const std::string text = OnTerminal(words);
    EXPECT_NE(text.find("titel\\x1B]0;gekaapt\\x07 \\xC2\\x9B2J"), std::string::npos) << text;
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
    EXPECT_EQ(text.find('\a'), std::string::npos);
  }
  EXPECT_NE(RunTool({u"dump"_s, server, u"tblItems"_s}).out.find(naam.toStdString()), std::string::npos);
}
