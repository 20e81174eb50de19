// SPDX-License-Identifier: MIT
#include "platform/dao/WriteWait.h"

#include <atomic>

namespace dao {
namespace {

std::atomic<std::chrono::milliseconds>& Current() {
  static std::atomic<std::chrono::milliseconds> wait{std::chrono::milliseconds(5000)};
  return wait;
}

}  // namespace

std::chrono::milliseconds WriteWait() noexcept {
  return Current();
}

WriteWaitScope::WriteWaitScope(std::chrono::milliseconds wait) : previous_(Current().exchange(wait)) {}
WriteWaitScope::~WriteWaitScope() {
  Current() = previous_;
}

}  // namespace dao
