// SPDX-License-Identifier: MIT
#include "platform/runtime/DetachedThread.h"

#include "tests/support/Gate.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <memory>

using runtime::AwaitDetached;
using runtime::StartDetached;
using std::chrono::minutes;
using testing::ExitedWithCode;
using testing_support::Gate;

namespace {

constexpr int kStaticsDestroyed = 9;

// From here on the exit code shows whether static objects were destroyed.
void ShowDestructionOfStatics() {
  std::atexit([] { std::_Exit(kStaticsDestroyed); });
}

std::atomic<bool> threadObjectDestroyed = false;

struct ThreadObject {
  ~ThreadObject() { threadObjectDestroyed = true; }
  void Use() {}
};

}  // namespace

TEST(DetachedThread, IsAwaitedWithItsThreadLocalObjects) {
  StartDetached([] {
    thread_local ThreadObject object;
    object.Use();
  });
  EXPECT_EQ(AwaitDetached(3, minutes(1)), 3);
  EXPECT_TRUE(threadObjectDestroyed);
}

TEST(DetachedThread, MainEndsNormallyAfterTheLastThread) {
  const auto endNormally = [] {
    ShowDestructionOfStatics();
    StartDetached([] {});
    std::exit(AwaitDetached(0, minutes(1)));
  };
  EXPECT_EXIT(endNormally(), ExitedWithCode(kStaticsDestroyed), "");
}

TEST(DetachedThread, ThreadThatHangsEndsWithTheProcessAndMeetsNoDestroyedObject) {
  const auto endWhileOneHangs = [] {
    ShowDestructionOfStatics();
    StartDetached([gate = std::make_shared<Gate>()] { gate->Pass(); });
    std::exit(AwaitDetached(7, std::chrono::milliseconds(1)));
  };
  EXPECT_EXIT(endWhileOneHangs(), ExitedWithCode(7), "");
}
