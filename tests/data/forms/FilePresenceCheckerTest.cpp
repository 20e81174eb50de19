// SPDX-License-Identifier: MIT
#include "data/forms/FilePresenceChecker.h"

#include "tests/support/Waiting.h"

#include <QFile>
#include <QMap>
#include <QObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

using namespace Qt::StringLiterals;
using runtime::Presence;

namespace {

// What a checker reported to its receiver.
struct Received {
  QMap<qint64, Presence> files;
  int lasts = 0;
  Qt::HANDLE thread = nullptr;

  FilePresenceChecker::Report Recorder() {
    return [this](const std::vector<FilePresenceChecker::Result>& found, bool last) {
      for (const auto& file : found)
        files[file.id] = file.presence;
      lasts += last ? 1 : 0;
      thread = QThread::currentThreadId();
    };
  }
};

}  // namespace

TEST(FilePresenceChecker, ReportsEachFileInTheReceiversThread) {
  const QTemporaryDir folder;
  QFile file(folder.filePath(u"hier.wav"_s));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  QObject receiver;
  Received received;
  FilePresenceChecker checker(&receiver, received.Recorder());
  checker.Start({{1, file.fileName()}, {2, folder.filePath(u"weg.wav"_s)}, {3, u"Q:\\nergens.wav"_s}});
  ASSERT_TRUE(WaitUntil([&] { return received.lasts == 1; }));
  EXPECT_EQ(received.files,
            (QMap<qint64, Presence>{{1, Presence::There}, {2, Presence::NotThere}, {3, Presence::NotReachable}}));
  EXPECT_EQ(received.thread, QThread::currentThreadId());
}

TEST(FilePresenceChecker, EmptyRequestFinishesAtOnce) {
  QObject receiver;
  Received received;
  FilePresenceChecker checker(&receiver, received.Recorder());
  checker.Start({});
  EXPECT_TRUE(WaitUntil([&] { return received.lasts == 1; }));
  EXPECT_TRUE(received.files.isEmpty());
}

// With a file server that does not respond until the test lets it.
TEST(FilePresenceChecker, DestructionDoesNotWaitForAServerThatDoesNotRespond) {
  struct Server {
    std::mutex mutex;
    std::condition_variable answered;
    bool answers = false;
    std::atomic<bool> asked = false;
  };
  const auto server = std::make_shared<Server>();
  const runtime::ProbeLookScope look([server](const QString&) {
    std::unique_lock lock(server->mutex);
    server->asked = true;
    server->answered.wait(lock, [&] { return server->answers; });
    return 0;
  });
  QObject receiver;
  Received received;
  auto checker = std::make_unique<FilePresenceChecker>(&receiver, received.Recorder());
  checker->Start({{1, u"/stil"_s}, {2, u"/stil2"_s}});
  ASSERT_TRUE(WaitUntil([&] { return server->asked.load(); }));
  checker.reset();  // returns although the check still hangs
  EXPECT_FALSE(server->answers);
  {
    const std::lock_guard lock(server->mutex);
    server->answers = true;
  }
  server->answered.notify_all();
  QCoreApplication::processEvents();
  EXPECT_EQ(received.lasts, 0);
}
