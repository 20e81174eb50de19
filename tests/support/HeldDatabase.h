// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dao/FrozenDatabase.h"
#include "platform/dao/WriteWait.h"

#include <QString>

#include <chrono>
#include <future>
#include <thread>

namespace testing_support {

// A database in which another writer holds its turn while this exists, longer than any statement waits (in tests: not
// at all). The other writer is a thread, which the database treats like another process.
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
