// SPDX-License-Identifier: MIT
#include "platform/runtime/Probe.h"

#include "platform/runtime/Error.h"
#include "platform/runtime/HostPath.h"
#include "tests/support/Hindrance.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using runtime::Presence;
using runtime::Probe;

TEST(Probe, DistinguishesAMissingFileFromAnUnreachableDrive) {
  QTemporaryDir folder;
  runtime::SetDrives({{u"D"_s, folder.path()}, {u"E"_s, folder.path() + u"/weg"}});
  EXPECT_EQ(Probe(u"D:\\"_s), Presence::There);
  EXPECT_EQ(Probe(u"D:\\niets.wav"_s), Presence::NotThere);
  EXPECT_EQ(Probe(u"E:\\niets.wav"_s), Presence::NotReachable);
  EXPECT_EQ(Probe(u"F:\\niets.wav"_s), Presence::NotReachable);
  runtime::SetDrives({});
}

TEST(Probe, AnErrorOfTheDriveIsNotReachable) {
  const runtime::ProbeLookScope look([](const QString&) { return EIO; });
  EXPECT_EQ(Probe(u"Z:\\x.wav"_s), Presence::NotReachable);
}

TEST(Probe, AFolderWithoutPermissionIsDenied) {
  for (const int refusal : {EACCES, EPERM}) {
    const runtime::ProbeLookScope look([refusal](const QString&) { return refusal; });
    EXPECT_EQ(Probe(u"Z:\\x.wav"_s), Presence::Denied);
  }
}

TEST(Probe, ADriveWithoutPermissionOnItsFolderIsDenied) {
  QTemporaryDir folder;
  runtime::SetDrives({{u"D"_s, folder.path()}});
  const runtime::ProbeLookScope look([&](const QString& path) { return path == folder.path() ? EACCES : ENOENT; });
  EXPECT_EQ(Probe(u"D:\\x.wav"_s), Presence::Denied);
  runtime::SetDrives({});
}

TEST(ProbeDeathTest, AFolderWithoutPermissionIsReportedAsSuch) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkdir(u"dicht"_s);
  ::chmod(QFile::encodeName(folder.path()).constData(), 0755);
  ::chmod(QFile::encodeName(folder.filePath(u"dicht"_s)).constData(), 0);
  const auto look = [&] {
    testing_support::BecomeNobody();
    const QString file = folder.filePath(u"dicht/x.mdb"_s);
    if (Probe(file) != Presence::Denied) std::_Exit(2);
    try {
      runtime::RequireThere(file);
    } catch (const runtime::Error& error) {
      std::_Exit(error.Description() == u"'%1' is niet toegankelijk: toegang geweigerd."_s.arg(file) ? 0 : 3);
    }
    std::_Exit(1);
  };
  EXPECT_EXIT(look(), testing::ExitedWithCode(0), "");
  ::chmod(QFile::encodeName(folder.filePath(u"dicht"_s)).constData(), 0755);
}

TEST(Probe, IsThereThrowsWhenThePathIsUnreachableOrDenied) {
  QTemporaryDir folder;
  EXPECT_TRUE(runtime::IsThere(folder.path()));
  EXPECT_FALSE(runtime::IsThere(folder.filePath(u"niets"_s)));
  for (const int failure : {EACCES, EIO}) {
    const runtime::ProbeLookScope look([failure](const QString&) { return failure; });
    EXPECT_THROW(runtime::IsThere(folder.path()), runtime::Error);
  }
}

TEST(Probe, WhileACheckHangsLaterOnesFailAtOnce) {
  auto release = std::make_shared<std::promise<void>>();
  auto checks = std::make_shared<std::atomic<int>>(0);
  const std::shared_future<void> released = release->get_future().share();
  {
    const runtime::ProbeLookScope look([released, checks](const QString&) {
      ++*checks;
      released.wait();
      return 0;
    });
    EXPECT_EQ(Probe(u"Z:\\x.wav"_s, 1ms), Presence::NotReachable);
    EXPECT_EQ(Probe(u"Z:\\y.wav"_s, 1h), Presence::NotReachable);  // would hang here if it waited
    while (checks->load() == 0)                                    // the helper thread may not have started yet
      std::this_thread::yield();
    EXPECT_EQ(checks->load(), 1);
    release->set_value();
    while (Probe(u"Z:\\usr"_s, 1h) != Presence::There) {
    }
  }
}

namespace {

// Counts the checks that are made in a helper thread; the test sets their result and the time.
struct CountedChecks {
  std::atomic<int> inHelper = 0;
  std::atomic<int> result = 0;
  std::chrono::steady_clock::time_point now;
  std::thread::id here = std::this_thread::get_id();
  runtime::ProbeLookScope scope{[this](const QString&) {
                                  if (std::this_thread::get_id() != here) ++inHelper;
                                  return result.load();
                                },
                                [this] { return now; }};
};

}  // namespace

TEST(Probe, ARecentlySeenPathIsCheckedWithoutAHelperThread) {
  CountedChecks checks;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  EXPECT_EQ(checks.inHelper, 1);
  for (int i = 0; i < 5; ++i) {
    checks.now += 999ms;  // each check restarts the second
    runtime::RequireThere(u"Z:\\een.mdb"_s);
  }
  EXPECT_EQ(checks.inHelper, 1);
}

TEST(Probe, AfterASecondAndForAnotherPathAHelperThreadIsUsed) {
  CountedChecks checks;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  runtime::RequireThere(u"Z:\\mnt\\ander.mdb"_s);
  EXPECT_EQ(checks.inHelper, 2);
  checks.now += 1000ms;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  EXPECT_EQ(checks.inHelper, 3);
}

TEST(Probe, AFailureOnARecentlySeenPathIsReportedAtOnce) {
  CountedChecks checks;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  checks.result = EIO;
  EXPECT_THROW(runtime::RequireThere(u"Z:\\een.mdb"_s), runtime::Error);
}

TEST(Probe, RequireThereDistinguishesMissingFromUnreachable) {
  try {
    runtime::RequireThere(u"Z:\\niet\\daar.wav"_s);
    FAIL() << "a missing file was taken as there";
  } catch (const runtime::Error& error) {
    EXPECT_EQ(error.Description(), u"'Z:\\niet\\daar.wav' bestaat niet."_s);
  }
  const runtime::ProbeLookScope look([](const QString&) { return ETIMEDOUT; });
  try {
    runtime::RequireThere(u"Z:\\x.wav"_s);
    FAIL() << "an unreachable file was taken as there";
  } catch (const runtime::Error& error) {
    EXPECT_TRUE(error.Description().contains(u"niet bereikbaar"_s));
  }
}
