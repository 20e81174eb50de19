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
  LatestTask::Work Reporting(const QString& word) {
    return [this, word](const LatestTask::Token& token) { token.Post([this, word] { reports_ += word; }); };
  }
  // Reports the word once the gate is open.
  LatestTask::Work ReportingAfter(const std::shared_ptr<Gate>& gate, const QString& word) {
    return [gate, report = Reporting(word)](const LatestTask::Token& token) {
      gate->Pass();
      report(token);
    };
  }
  // Returns when the word's report is in the receiver's queue; processes no events.
  void SendAndWaitUntilQueued(LatestTask& task, const QString& word) {
    const auto posted = std::make_shared<std::atomic<bool>>(false);
    task.Send([report = Reporting(word), posted](const LatestTask::Token& token) {
      report(token);
      *posted = true;
    });
    while (!*posted)
      QThread::yieldCurrentThread();
  }

  QStringList reports_;
  QObject receiver_;
};

}  // namespace

TEST_F(LatestTaskTest, PostedCallRunsInTheReceiversThread) {
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

TEST_F(LatestTaskTest, OnlyTheLatestTaskReports) {
  const auto gate = std::make_shared<Gate>();
  LatestTask task(&receiver_);
  task.Send(ReportingAfter(gate, u"eerste"_s));
  task.Send(ReportingAfter(gate, u"tweede"_s));
  task.Send(Reporting(u"derde"_s));
  gate->Open();
  task.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(reports_, QStringList{u"derde"_s});
}

TEST_F(LatestTaskTest, QueuedCallIsSkippedAfterCancel) {
  LatestTask task(&receiver_);
  SendAndWaitUntilQueued(task, u"te laat"_s);
  task.Cancel();
  task.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(reports_, QStringList());
}

TEST_F(LatestTaskTest, QueuedCallIsSkippedAfterDestruction) {
  auto task = std::make_unique<LatestTask>(&receiver_);
  SendAndWaitUntilQueued(*task, u"te laat"_s);
  task.reset();
  QCoreApplication::processEvents();
  EXPECT_EQ(reports_, QStringList());
}

TEST_F(LatestTaskTest, TimedOutWaitLeavesTheCallQueued) {
  const auto gate = std::make_shared<Gate>();
  LatestTask task(&receiver_);
  task.Send(ReportingAfter(gate, u"nieuws"_s));
  task.WaitFor(std::chrono::milliseconds(1));
  EXPECT_EQ(reports_, QStringList());
  gate->Open();
  EXPECT_TRUE(WaitUntil([&] { return reports_ == QStringList{u"nieuws"_s}; }));
}

TEST_F(LatestTaskTest, DestructionDoesNotWaitForHangingWork) {
  const auto gate = std::make_shared<Gate>();
  auto task = std::make_unique<LatestTask>(&receiver_);
  task->Send(ReportingAfter(gate, u"te laat"_s));
  ASSERT_TRUE(WaitUntil([&] { return gate->IsWaitedAt(); }));
  task.reset();  // returns although the work hangs
  EXPECT_FALSE(gate->IsOpen());
  gate->Open();
  QCoreApplication::processEvents();
  EXPECT_EQ(reports_, QStringList());
}
