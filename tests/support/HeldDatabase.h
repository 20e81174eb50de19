// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/WriteWait.h"

#include <QString>

#include <chrono>
#include <future>
#include <thread>

namespace testing_support {

// A database in which another program is writing while this lives, longer than anyone waits for it (in tests: not at
// all). Another thread holds it, which is to the database as another process is.
class HeldDatabase {
 public:
  explicit HeldDatabase(const QString& pathText)
      : thread_([this, pathText] {
          const dao::FrozenDatabase held(pathText);
          held_.set_value();
          release_.get_future().wait();
        }) {
    held_.get_future().wait();
  }
  ~HeldDatabase() {
    release_.set_value();
    thread_.join();
  }
  HeldDatabase(const HeldDatabase&) = delete;
  HeldDatabase& operator=(const HeldDatabase&) = delete;

 private:
  dao::WriteWaitScope wait_{std::chrono::milliseconds(0)};
  std::promise<void> held_;
  std::promise<void> release_;
  std::thread thread_;
};

}  // namespace testing_support
