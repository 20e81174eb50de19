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

TEST(Probe, TellsAFileThatIsGoneFromADriveThatIsAway) {
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

TEST(Probe, AFolderThatLetsNobodyInIsNeitherGoneNorAway) {
  for (const int refusal : {EACCES, EPERM}) {
    const runtime::ProbeLookScope look([refusal](const QString&) { return refusal; });
    EXPECT_EQ(Probe(u"Z:\\x.wav"_s), Presence::Denied);
  }
}

TEST(Probe, ADriveWhoseOwnFolderMayNotBeEnteredIsDenied) {
  QTemporaryDir folder;
  runtime::SetDrives({{u"D"_s, folder.path()}});
  const runtime::ProbeLookScope look([&](const QString& path) { return path == folder.path() ? EACCES : ENOENT; });
  EXPECT_EQ(Probe(u"D:\\x.wav"_s), Presence::Denied);
  runtime::SetDrives({});
}

TEST(ProbeDeathTest, AFolderWithoutPermissionIsToldAsSuch) {
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

TEST(Probe, IsThereTellsOnlyWhatItKnows) {
  QTemporaryDir folder;
  EXPECT_TRUE(runtime::IsThere(folder.path()));
  EXPECT_FALSE(runtime::IsThere(folder.filePath(u"niets"_s)));
  for (const int failure : {EACCES, EIO}) {
    const runtime::ProbeLookScope look([failure](const QString&) { return failure; });
    EXPECT_THROW(runtime::IsThere(folder.path()), runtime::Error);
  }
}

TEST(Probe, WhileOneHangsLaterTriesFailAtOnceUntilItAnswers) {
  auto release = std::make_shared<std::promise<void>>();
  auto looks = std::make_shared<std::atomic<int>>(0);
  const std::shared_future<void> released = release->get_future().share();
  {
    const runtime::ProbeLookScope look([released, looks](const QString&) {
      ++*looks;
      released.wait();
      return 0;
    });
    EXPECT_EQ(Probe(u"Z:\\x.wav"_s, 1ms), Presence::NotReachable);
    EXPECT_EQ(Probe(u"Z:\\y.wav"_s, 1h), Presence::NotReachable);  // would hang here if it waited
    while (looks->load() == 0)  // the helper thread may still be waiting for its turn
      std::this_thread::yield();
    EXPECT_EQ(looks->load(), 1);
    release->set_value();
    while (Probe(u"Z:\\usr"_s, 1h) != Presence::There) {
    }
  }
}

namespace {

// Looks that tell in which thread they were made, at a time that the test sets.
struct Sight {
  std::atomic<int> helped = 0;
  std::atomic<int> result = 0;
  std::chrono::steady_clock::time_point now;
  std::thread::id here = std::this_thread::get_id();
  runtime::ProbeLookScope scope{[this](const QString&) {
                                  if (std::this_thread::get_id() != here) ++helped;
                                  return result.load();
                                },
                                [this] { return now; }};
};

}  // namespace

TEST(Probe, APathThatWasJustThereIsLookedAtWithoutAHelperThread) {
  Sight sight;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  EXPECT_EQ(sight.helped, 1);
  for (int i = 0; i < 5; ++i) {
    sight.now += 999ms;  // each time it is seen counts anew
    runtime::RequireThere(u"Z:\\een.mdb"_s);
  }
  EXPECT_EQ(sight.helped, 1);
}

TEST(Probe, AfterASecondAndForAnotherPathTheWaitIsBoundedAgain) {
  Sight sight;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  runtime::RequireThere(u"Z:\\mnt\\ander.mdb"_s);
  EXPECT_EQ(sight.helped, 2);
  sight.now += 1000ms;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  EXPECT_EQ(sight.helped, 3);
}

TEST(Probe, APathThatWasJustThereAndIsGoneIsToldAtOnce) {
  Sight sight;
  runtime::RequireThere(u"Z:\\een.mdb"_s);
  sight.result = EIO;
  EXPECT_THROW(runtime::RequireThere(u"Z:\\een.mdb"_s), runtime::Error);
}

TEST(Probe, RequireThereSaysWhichOfTheTwoItIs) {
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
