// SPDX-License-Identifier: MIT
#include "app/StartOptions.h"

#include "platform/runtime/Error.h"

#include <QDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

StartOptions Parse(const QStringList& arguments, const QString& environment = {}) {
  return ParseStartOptions(arguments, environment, u"/opt/spotrooster"_s);
}

}  // namespace

TEST(StartOptions, TheFolderIsFromTheOptionElseTheEnvironmentElseTheExecutable) {
  EXPECT_EQ(Parse({}).folder, u"/opt/spotrooster"_s);
  EXPECT_EQ(Parse({}, u"/srv/planner"_s).folder, u"/srv/planner"_s);
  EXPECT_EQ(Parse({u"--folder"_s, u"/srv/other/"_s}, u"/srv/planner"_s).folder, u"/srv/other"_s);
  EXPECT_EQ(Parse({u"--folder=/srv/a=b"_s}).folder, u"/srv/a=b"_s);
  EXPECT_EQ(Parse({u"--folder"_s, u"demo"_s}).folder, QDir::currentPath() + u"/demo"_s);
}

TEST(StartOptions, TheThemeIsLightOrDark) {
  EXPECT_FALSE(Parse({}).theme.has_value());
  EXPECT_EQ(Parse({u"--theme"_s, u"light"_s}).theme, desktop::Variant::Light);
  EXPECT_EQ(Parse({u"--theme=dark"_s}).theme, desktop::Variant::Dark);
}

TEST(StartOptions, VersionAndHelpAreFlags) {
  EXPECT_TRUE(Parse({u"--version"_s}).showVersion);
  EXPECT_TRUE(Parse({u"--help"_s}).showHelp);
  EXPECT_FALSE(Parse({}).showVersion || Parse({}).showHelp);
}

TEST(StartOptions, OtherArgumentsAreRefusedByName) {
  const QList<QStringList> wrong{{u"--thema"_s}, {u"--theme"_s, u"paars"_s}, {u"--folder"_s}, {u"station"_s}};
  for (const QStringList& arguments : wrong) {
    try {
      Parse(arguments);
      ADD_FAILURE() << arguments.join(u' ').toStdString();
    } catch (const runtime::Error& error) {
      EXPECT_TRUE(error.Description().contains(arguments.last())) << error.what();
    }
  }
}

TEST(StartOptions, HelpNamesEveryOption) {
  for (const QString& option : {u"--folder"_s, u"--theme"_s, u"--version"_s, u"--help"_s, u"SPOTROOSTER_FOLDER"_s}) {
    EXPECT_TRUE(HelpText().contains(option)) << option.toStdString();
  }
}
