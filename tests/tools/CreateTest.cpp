// SPDX-License-Identifier: MIT
// A station whose creation was killed or ran out of space: the next create completes it.
#include "tests/support/Fork.h"
#include "tests/support/Hindrance.h"
#include "tests/tools/RunTool.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

using namespace Qt::StringLiterals;

namespace {

constexpr rlim_t kStep = 12288;  // bytes

// Creates the station in a process whose files cannot grow past that size: it fails or is killed there.
bool MadeWithin(rlim_t bytes, bool kills, const QStringList& create) {
  const pid_t child = testing_support::Fork();
  if (child == 0) {
    const testing_support::FullDisk full(bytes);
    if (kills) ::signal(SIGXFSZ, SIG_DFL);
    ::_exit(RunTool(create).exitCode);
  }
  const int status = testing_support::WaitFor(child);
  EXPECT_EQ(WIFSIGNALED(status) && kills, WIFSIGNALED(status));
  return WIFEXITED(status) && WEXITSTATUS(status) == kDone;
}

class BrokenOffCreate : public testing::TestWithParam<bool> {};

}  // namespace

INSTANTIATE_TEST_SUITE_P(FullOrKilled, BrokenOffCreate, testing::Bool());

TEST_P(BrokenOffCreate, IsCompletedByTheNextCreateWhichThenRefusesAnother) {
  for (const QString& station : {u"0"_s, u"3"_s}) {
    int brokenOff = 0;
    for (rlim_t bytes = 0;; bytes += kStep) {
      SCOPED_TRACE(bytes);
      const QTemporaryDir folder;
      const QStringList create{u"create"_s, folder.path(), u"--station"_s, station, u"--name"_s, u"Radio Proef"_s};
      if (MadeWithin(bytes, GetParam(), create)) break;
      ++brokenOff;
      const ToolRun again = RunTool(create);
      ASSERT_EQ(again.exitCode, kDone) << again.err;
      const QString number = station == u"0"_s ? QString() : station;
      for (const QString& name :
           {u"data/OvalistoLocal%1.mdb"_s.arg(number), u"server/OvalistoServer%1.mdb"_s.arg(number),
            u"data/OvalistoLocal.mdb"_s, u"data/work.mdb"_s})
        EXPECT_EQ(RunTool({u"check"_s, folder.filePath(name)}).out, "ok\n") << name.toStdString();
      EXPECT_EQ(RunTool({u"sql"_s, folder.filePath(u"data/OvalistoLocal.mdb"_s),
                         u"SELECT RadioNaam FROM cdeLicenties WHERE LicentieNummer = "_s + station})
                    .out,
                "RadioNaam\r\nRadio Proef\r\n");
      EXPECT_NE(RunTool({u"tables"_s, folder.filePath(u"data/OvalistoLocal%1.mdb"_s.arg(number))})
                    .out.find("appMessages\t13"),
                std::string::npos);
      EXPECT_EQ(RunTool(create).exitCode, kFailed);
    }
    EXPECT_GT(brokenOff, 5);
  }
}
