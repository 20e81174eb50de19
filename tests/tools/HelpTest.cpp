// SPDX-License-Identifier: MIT
#include "tests/tools/RunTool.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

using namespace Qt::StringLiterals;

namespace {

QString FileText(const QString& name) {
  QFile file(QStringLiteral(SPOTROOSTER_SOURCE) + u'/' + name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

// Runs a line in a shell, with a temporary folder in place of /tmp.
ToolRun RunLine(const QString& line, const QTemporaryDir& folder) {
  QProcess shell;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  const QString tools = QFileInfo(QStringLiteral(SPOTROOSTER_DB)).path();
  environment.insert(u"PATH"_s, tools + u':' + environment.value(u"PATH"_s));
  shell.setProcessEnvironment(environment);
  shell.start(u"/bin/sh"_s, {u"-c"_s, QString(line).replace(u"/tmp"_s, folder.path())});
  EXPECT_TRUE(shell.waitForFinished(-1));
  return {shell.exitCode(), shell.readAllStandardOutput().toStdString(), shell.readAllStandardError().toStdString()};
}

}  // namespace

TEST(Help, EveryCommandShowsItsUseWithExamples) {
  for (const Command& command : AllCommands()) {
    const ToolRun run = RunTool({command.name, u"--help"_s});
    EXPECT_EQ(run.exitCode, kDone);
    EXPECT_NE(run.out.find(command.usage.toStdString()), std::string::npos) << run.out;
    ASSERT_FALSE(command.examples.isEmpty()) << command.name.toStdString();
    for (const QString& example : command.examples) {
      EXPECT_TRUE(example.startsWith(command.name + u' ')) << example.toStdString();
      EXPECT_NE(run.out.find("  spotrooster-db " + example.toStdString() + "\n"), std::string::npos) << run.out;
    }
  }
}

TEST(Help, HelpOfEveryCommandFitsATerminal) {
  constexpr qsizetype kColumns = 110;
  for (const Command& command : AllCommands()) {
    for (const QString& line : command.details.split(u'\n'))
      EXPECT_LE(line.size(), kColumns) << command.name.toStdString() << ": " << line.toStdString();
  }
}

TEST(Help, TheWordHelpIsTheOption) {
  EXPECT_EQ(RunTool({u"help"_s}).exitCode, kDone);
  EXPECT_EQ(RunTool({u"help"_s}).out, RunTool({u"--help"_s}).out);
  const ToolRun run = RunTool({u"help"_s, u"apply"_s});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_EQ(run.out, RunTool({u"apply"_s, u"--help"_s}).out);
  const ToolRun unknown = RunTool({u"help"_s, u"aplly"_s});
  EXPECT_EQ(unknown.exitCode, kWrongUse);
  EXPECT_NE(unknown.err.find("'aplly'"), std::string::npos);
}

TEST(Help, HelpAmongOtherWordsRunsNothing) {
  const ToolRun run = RunTool({u"create"_s, u"/nergens/zender"_s, u"--help"_s});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_FALSE(QFile::exists(u"/nergens"_s));
}

TEST(Help, EveryExampleWorksWhenPasted) {
  const QTemporaryDir folder;
  for (const Command& command : AllCommands()) {
    for (const QString& example : command.examples) {
      const ToolRun run = RunLine(u"spotrooster-db "_s + example, folder);
      // One file of the demonstration station is missing, and locate reports it.
      EXPECT_EQ(run.exitCode, command.name == u"locate"_s ? kFailed : kDone) << example.toStdString();
      EXPECT_EQ(run.err, "") << example.toStdString();
    }
  }
}

TEST(Help, TheManualPageHasEveryCommandWithTheTextsOfHelp) {
  const QString page = QString::fromStdString(RunTool({u"--man"_s}).out).replace(u"\\-"_s, u"-"_s);
  for (const Command& command : AllCommands()) {
    const QString section = page.section(u".SS "_s + command.name + u'\n', 1).section(u"\n.S"_s, 0, 0);
    const Usage usage = Usage::Of(command.usage);
    for (const QString& part : usage.valuedOptions + usage.flags + command.examples)
      EXPECT_TRUE(section.contains(part)) << command.name.toStdString() << " " << part.toStdString();
  }
}

TEST(Help, TheManualPageEscapesTextForTroff) {
  const std::string page = RunTool({u"--man"_s}).out;
  EXPECT_NE(page.find("\\[u00E9]\\[u00E9]n SQL\\-opdracht"), std::string::npos);
}

TEST(Help, TheShellCompletesEveryCommandAndItsOptions) {
  const QString script = FileText(u"packaging/spotrooster-db.bash"_s);
  ASSERT_FALSE(script.isEmpty());
  for (const Command& command : AllCommands()) {
    const Usage usage = Usage::Of(command.usage);
    const QStringList options = usage.valuedOptions + usage.flags;
    EXPECT_TRUE(script.contains(u"["_s + command.name + u"]=\""_s + options.join(u' ') + u"\""_s))
        << command.name.toStdString() << ": " << options.join(u' ').toStdString();
  }
}
