// SPDX-License-Identifier: MIT
#include "platform/runtime/Clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

// 1 July 2025, 12:00 UTC, as a local time of this host.
std::string LocalSummerNoon() {
  const std::time_t noon = 1751371200;
  std::string text(40, '\0');
  text.resize(std::strftime(text.data(), text.size(), "%F %T %Z", std::localtime(&noon)));
  return text;
}

void KeepsTheHostsTimeZone() {
  ::unsetenv("TZ");
  const std::string before = LocalSummerNoon();
  runtime::KeepTimeZone();
  const char* zone = std::getenv("TZ");
  std::_Exit(zone != nullptr && std::string(zone) == ":/etc/localtime" && LocalSummerNoon() == before ? 0 : 1);
}

void KeepsTheUsersTimeZone() {
  ::setenv("TZ", "XYZ-3", 1);
  runtime::KeepTimeZone();
  std::_Exit(LocalSummerNoon() == "2025-07-01 15:00:00 XYZ" ? 0 : 1);
}

}  // namespace

TEST(KeepTimeZone, ChangesNoTime) {
  EXPECT_EXIT(KeepsTheHostsTimeZone(), testing::ExitedWithCode(0), "");
}

TEST(KeepTimeZone, LeavesAZoneThatIsSet) {
  EXPECT_EXIT(KeepsTheUsersTimeZone(), testing::ExitedWithCode(0), "");
}
