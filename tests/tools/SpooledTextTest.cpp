// SPDX-License-Identifier: MIT
#include "tools/SpooledText.h"

#include <QByteArray>
#include <QtGlobal>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <sstream>

namespace {

constexpr std::size_t kLimit = 100;

std::string Lines(int count) {
  std::string lines;
  for (int i = 0; i < count; ++i)
    lines += "regel " + std::to_string(i) + '\n';
  return lines;
}

std::string Written(const SpooledText& text) {
  std::ostringstream out;
  text.WriteTo(out);
  return out.str();
}

SpooledText Spooled(const std::string& text, std::size_t step) {
  SpooledText spooled(kLimit);
  for (std::size_t at = 0; at < text.size(); at += step)
    spooled.Add(std::string_view(text).substr(at, step));
  return spooled;
}

TEST(SpooledText, StaysInMemoryUpToTheLimit) {
  const SpooledText text = Spooled(std::string(kLimit, 'x'), 7);
  EXPECT_EQ(text.InFile(), 0U);
  EXPECT_EQ(Written(text), std::string(kLimit, 'x'));
}

TEST(SpooledText, IsInAFileBeyondIt) {
  const std::string lines = Lines(50'000);
  const SpooledText text = Spooled(lines, 37);
  EXPECT_GT(text.InFile(), lines.size() - 2 * kLimit);
  EXPECT_EQ(Written(text), lines);
  EXPECT_EQ(Written(text), lines);
}

TEST(SpooledText, StaysInMemoryWithoutAFolderForTheFile) {
  const QByteArray folder = qgetenv("TMPDIR");
  const bool wasSet = qEnvironmentVariableIsSet("TMPDIR");
  qputenv("TMPDIR", "/proc/self/nergens");
  const std::string lines = Lines(1'000);
  const SpooledText text = Spooled(lines, 37);
  wasSet ? qputenv("TMPDIR", folder) : qunsetenv("TMPDIR");
  EXPECT_EQ(text.InFile(), 0U);
  EXPECT_EQ(Written(text), lines);
}

// No file may grow beyond a size: the text after it stays in memory.
TEST(SpooledText, StaysInMemoryAfterAFullDisk) {
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
  const rlimit small{1000, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::string lines = Lines(1'000);
  const SpooledText text = Spooled(lines, 37);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, before);
  EXPECT_GT(text.InFile(), 0U);
  EXPECT_LE(text.InFile(), 1000U);
  EXPECT_EQ(Written(text), lines);
}

}  // namespace
