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

class ErrandsTest : public testing::Test {
 protected:
  LatestTask::Work Saying(const QString& word) {
    return [this, word](const LatestTask::Token& errand) { errand.Tell([this, word] { heard_ += word; }); };
  }
  // Says it once the gate is open.
  LatestTask::Work Waiting(const std::shared_ptr<Gate>& gate, const QString& word) {
    return [gate, say = Saying(word)](const LatestTask::Token& errand) {
      gate->Pass();
      say(errand);
    };
  }

  QStringList heard_;
  QObject receiver_;
};

}  // namespace

TEST_F(ErrandsTest, NewsIsHeardInTheReceiversThread) {
  LatestTask errands(&receiver_);
  Qt::HANDLE worked = nullptr;
  Qt::HANDLE heard = nullptr;
  errands.Send([&](const LatestTask::Token& errand) {
    worked = QThread::currentThreadId();
    EXPECT_TRUE(errand.IsWanted());
    errand.Tell([&] { heard = QThread::currentThreadId(); });
  });
  ASSERT_TRUE(WaitUntil([&] { return heard != nullptr; }));
  EXPECT_EQ(heard, QThread::currentThreadId());
  EXPECT_NE(worked, heard);
}

TEST_F(ErrandsTest, OnlyTheLatestIsHeard) {
  const auto gate = std::make_shared<Gate>();
  LatestTask errands(&receiver_);
  errands.Send(Waiting(gate, u"eerste"_s));
  errands.Send(Waiting(gate, u"tweede"_s));
  errands.Send(Saying(u"derde"_s));
  gate->Open();
  errands.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(heard_, QStringList{u"derde"_s});
}

TEST_F(ErrandsTest, NewsOnItsWayIsNotHeardOnceCalledOff) {
  LatestTask errands(&receiver_);
  std::atomic<bool> told = false;
  errands.Send([&](const LatestTask::Token& errand) {
    errand.Tell([this] { heard_ += u"te laat"_s; });
    told = true;
  });
  while (!told)
    QThread::yieldCurrentThread();
  errands.Cancel();
  errands.WaitFor(std::chrono::minutes(1));
  EXPECT_EQ(heard_, QStringList());
}

TEST_F(ErrandsTest, ImpatienceLeavesTheNewsForLater) {
  const auto gate = std::make_shared<Gate>();
  LatestTask errands(&receiver_);
  errands.Send(Waiting(gate, u"nieuws"_s));
  errands.WaitFor(std::chrono::milliseconds(1));
  EXPECT_EQ(heard_, QStringList());
  gate->Open();
  EXPECT_TRUE(WaitUntil([&] { return heard_ == QStringList{u"nieuws"_s}; }));
}

TEST_F(ErrandsTest, GoesWithoutWaitingForWorkThatHangs) {
  const auto gate = std::make_shared<Gate>();
  auto errands = std::make_unique<LatestTask>(&receiver_);
  errands->Send(Waiting(gate, u"te laat"_s));
  ASSERT_TRUE(WaitUntil([&] { return gate->IsWaitedAt(); }));
  errands.reset();  // returns although the work hangs
  EXPECT_FALSE(gate->IsOpen());
  gate->Open();
  QCoreApplication::processEvents();
  EXPECT_EQ(heard_, QStringList());
}
