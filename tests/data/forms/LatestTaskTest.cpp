// SPDX-License-Identifier: MIT
#include "data/forms/LatestTask.h"

#include "tests/support/Gate.h"
#include "tests/support/Waiting.h"

#include <QObject>
#include <QStringList>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using testing_support::Gate;

namespace {

class LatestTaskTest : public testing::Test {
 protected:
  LatestTask::Work Saying(const QString& word) {
    return [this, word](const LatestTask::Token& token) { token.Post([this, word] { heard_ += word; }); };
  }
  // Says it once the gate is open.
  LatestTask::Work Waiting(const std::shared_ptr<Gate>& gate, const QString& word) {
    return [gate, say = Saying(word)](const LatestTask::Token& token) {
      gate->Pass();
      say(token);
    };
  }

  QStringList heard_;
  QObject receiver_;
};

}  // namespace

TEST_F(LatestTaskTest, NewsIsHeardInTheReceiversThread) {
  LatestTask task(&receiver_);
  Qt::HANDLE worked = nullptr;
  Qt::HANDLE heard = nullptr;
  task.Send([&](const LatestTask::Token& token) {
    worked = QThread::currentThreadId();
    EXPECT_TRUE(token.IsCurrent());
    token.Post([&] { heard = QThread::currentThreadId(); });
  });
  ASSERT_TRUE(WaitUntil([&] { return heard != nullptr; }));
  EXPECT_EQ(heard, QThread::currentThreadId());
  EXPECT_NE(worked, heard);
}

TEST_F(LatestTaskTest, OnlyTheLatestIsHeard) {
  const auto gate = std::make_shared<Gate>();
  LatestTask task(&receiver_);
  task.Send(Waiting(gate, u"eerste"_s));
  task.Send(Waiting(gate, u"tweede"_s));
  task.Send(Saying(u"derde"_s));
  gate->Open();
  task.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(heard_, QStringList{u"derde"_s});
}

TEST_F(LatestTaskTest, NewsOnItsWayIsNotHeardOnceCalledOff) {
  LatestTask task(&receiver_);
  std::atomic<bool> told = false;
  task.Send([&](const LatestTask::Token& token) {
    token.Post([this] { heard_ += u"te laat"_s; });
    told = true;
  });
  while (!told)
    QThread::yieldCurrentThread();
  task.Cancel();
  task.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(heard_, QStringList());
}

TEST_F(LatestTaskTest, ImpatienceLeavesTheNewsForLater) {
  const auto gate = std::make_shared<Gate>();
  LatestTask task(&receiver_);
  task.Send(Waiting(gate, u"nieuws"_s));
  task.WaitFor(std::chrono::milliseconds(1));
  EXPECT_EQ(heard_, QStringList());
  gate->Open();
  EXPECT_TRUE(WaitUntil([&] { return heard_ == QStringList{u"nieuws"_s}; }));
}

TEST_F(LatestTaskTest, GoesWithoutWaitingForWorkThatHangs) {
  const auto gate = std::make_shared<Gate>();
  auto task = std::make_unique<LatestTask>(&receiver_);
  task->Send(Waiting(gate, u"te laat"_s));
  ASSERT_TRUE(WaitUntil([&] { return gate->IsWaitedAt(); }));
  task.reset();  // returns although the work hangs
  EXPECT_FALSE(gate->IsOpen());
  gate->Open();
  QCoreApplication::processEvents();
  EXPECT_EQ(heard_, QStringList());
}
