#include "tests/tools/RunTool.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString FileText(const QString& name) {
  QFile file(QStringLiteral(SPOTROOSTER_SOURCE) + u'/' + name);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

// The options that a usage text names.
QStringList OptionsIn(const QString& usage) {
  static const QRegularExpression option(u"--[a-z-]+"_s);
  QStringList options;
  for (auto match = option.globalMatch(usage); match.hasNext();)
    options += match.next().captured();
  return options;
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

TEST(Help, HelpAmongOtherWordsRunsNothing) {
  const ToolRun run = RunTool({u"create"_s, u"/nergens/zender"_s, u"--help"_s});
  EXPECT_EQ(run.exitCode, kDone);
  EXPECT_FALSE(QFile::exists(u"/nergens"_s));
}

TEST(Help, TheUsageNamesExactlyTheOptionsThatAreTaken) {
  for (const Command& command : AllCommands()) {
    QStringList taken = command.valuedOptions + command.flags;
    QStringList named = OptionsIn(command.usage);
    taken.sort();
    named.sort();
    EXPECT_EQ(named, taken) << command.name.toStdString();
  }
}

TEST(Help, TheManPageTellsEveryCommandWithItsOptions) {
  const QString page = FileText(u"packaging/spotrooster-db.1"_s).replace(u"\\-"_s, u"-"_s);
  ASSERT_FALSE(page.isEmpty());
  for (const Command& command : AllCommands()) {
    const QString section = page.section(u".SS "_s + command.name + u'\n', 1).section(u"\n.S"_s, 0, 0);
    EXPECT_FALSE(section.isEmpty()) << command.name.toStdString();
    for (const QString& option : command.valuedOptions + command.flags)
      EXPECT_TRUE(section.contains(option)) << command.name.toStdString() << " " << option.toStdString();
  }
}

TEST(Help, TheShellCompletesEveryCommandAndItsOptions) {
  const QString script = FileText(u"packaging/spotrooster-db.bash"_s);
  ASSERT_FALSE(script.isEmpty());
  for (const Command& command : AllCommands()) {
    const QStringList options = command.valuedOptions + command.flags;
    EXPECT_TRUE(script.contains(u"["_s + command.name + u"]=\""_s + options.join(u' ') + u"\""_s))
        << command.name.toStdString() << ": " << options.join(u' ').toStdString();
  }
}
