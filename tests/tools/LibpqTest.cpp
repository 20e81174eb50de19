// SPDX-License-Identifier: MIT
// The library for database servers is loaded only when a server is named: a broken one does not disturb work on files.
#include "tests/tools/RunTool.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

// Runs the program in a folder with a libpq.so.5 that is no library.
class BrokenLibpq : public testing::Test {
 protected:
  BrokenLibpq() {
    QFile library(folder_.filePath(u"libpq.so.5"_s));
    if (!library.open(QIODevice::WriteOnly) || library.write("text") != 4) ADD_FAILURE() << "no broken library";
  }

  ToolRun Run(const QStringList& words) const {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_LIBRARY_PATH"_s, folder_.path());
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(SPOTROOSTER_DB), words);
    EXPECT_TRUE(program.waitForFinished(-1)) << program.errorString().toStdString();
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
    return {program.exitCode(), program.readAllStandardOutput().toStdString(),
            program.readAllStandardError().toStdString()};
  }

  QTemporaryDir folder_;
};

TEST_F(BrokenLibpq, CommandsOnAFileWork) {
  const QString file = folder_.filePath(u"server/OvalistoServer.mdb"_s);
  ASSERT_EQ(RunTool({u"create"_s, folder_.path()}).exitCode, kDone);
  const ToolRun tables = Run({u"tables"_s, file});
  EXPECT_EQ(tables.exitCode, kDone) << tables.err;
  EXPECT_EQ(tables.out, "tblItemPingles\t0\ntblItems\t0\ntblItemsItemSpots\t0\ntblItemSpots\t0\n");
}

TEST_F(BrokenLibpq, ACommandOnAServerReportsWhatToInstall) {
  const ToolRun tables = Run({u"tables"_s, u"postgresql://planner@/zenders?host=/nergens\\OvalistoServer.mdb"_s});
  EXPECT_EQ(tables.exitCode, kFailed);
  EXPECT_EQ(tables.out, "");
  EXPECT_NE(tables.err.find("installeer het pakket libpq5"), std::string::npos) << tables.err;
}

}  // namespace
