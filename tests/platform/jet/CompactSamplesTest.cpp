// SPDX-License-Identifier: MIT
// Compacting real files: every reader finds the same content before and after.
#include "platform/jet/check/Check.h"
#include "platform/jet/check/Compact.h"
#include "tests/platform/jet/support/Samples.h"
#include "tests/platform/jet/support/TableText.h"
#include "tests/platform/jet/support/Witness.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace jet {
namespace {

using witness::OutputOf;
using witness::Reader;
using witness::ShellQuoted;

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string pattern = testing::TempDir() + "compact.XXXXXX";
    path_ = ::mkdtemp(pattern.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

OpenOptions OptionsFor(const std::string& sample) {
  const std::string password = witness::SamplePassword(sample);
  OpenOptions options;
  options.password = std::u16string(password.begin(), password.end());
  return options;
}

class CompactedSample : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    if (!witness::SampleFolder()) GTEST_SKIP() << "SPOTROOSTER_MDB_SAMPLES names no folder of sample files";
    before_ = witness::SamplePath(GetParam());
    after_ = folder_.Path() / "after.mdb";
    CompactInto(before_, after_, OptionsFor(GetParam()));
  }

  TemporaryFolder folder_;
  std::string before_;
  std::string after_;
};

std::vector<std::string> SortedLines(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

TEST_P(CompactedSample, IsSoundAndReadsTheSame) {
  const auto before = Database::Open(before_, OptionsFor(GetParam()));
  const auto after = Database::Open(after_, OptionsFor(GetParam()));
  for (const Finding& finding : CheckDatabase(*after))
    EXPECT_TRUE(finding.remark) << finding.text;
  EXPECT_EQ(witness::ReadWithJet(*after), witness::ReadWithJet(*before));
  EXPECT_LE(std::filesystem::file_size(after_), std::filesystem::file_size(before_));
}

TEST_P(CompactedSample, ReadsTheSameForOutsideReaders) {
  for (const Reader reader : {Reader::MdbTools, Reader::MdbReader}) {
    if (const auto absent = witness::WhyAbsent(reader)) GTEST_SKIP() << *absent;
    const auto before = witness::Sorted(witness::ReadWith(reader, before_, witness::SamplePassword(GetParam())));
    const auto after = witness::Sorted(witness::ReadWith(reader, after_, witness::SamplePassword(GetParam())));
    EXPECT_EQ(after, before) << witness::NameOf(reader);
  }
}

// Sorted by name, since a compacted file may have moved rows in another order. The next test checks the numbers of
// tables.
TEST_P(CompactedSample, HasTheSameSystemTablesRelationsQueriesAndProperties) {
  if (const auto absent = witness::WhyAbsent(Reader::MdbTools)) GTEST_SKIP() << *absent;
  const auto outputOf = [&](const std::string& command) {
    auto before = SortedLines(OutputOf(command + " " + ShellQuoted(before_) + " 2>/dev/null"));
    EXPECT_EQ(SortedLines(OutputOf(command + " " + ShellQuoted(after_) + " 2>/dev/null")), before) << command;
    return before;
  };
  outputOf("mdb-schema");
  const std::vector<std::string> tables = outputOf("mdb-tables -1 -S");
  EXPECT_GE(tables.size(), 4U);
  for (const std::string& table : tables) {
    const auto rows = [&](const std::string& file) {
      const bool hasNumbers = table == "MSysObjects" || table == "MSysACEs";
      return SortedLines(OutputOf("mdb-export -b hex " + ShellQuoted(file) + " " + ShellQuoted(table) +
                                  (hasNumbers ? " | cut -d, -f2-" : "") + " 2>/dev/null"));
    };
    EXPECT_EQ(rows(after_), rows(before_)) << table;
  }
  for (const std::string& query : outputOf("mdb-queries -L -1")) {
    const auto sql = [&](const std::string& file) {
      return OutputOf("mdb-queries " + ShellQuoted(file) + " " + ShellQuoted(query) + " 2>/dev/null");
    };
    EXPECT_EQ(sql(after_), sql(before_)) << query;
  }
}

// The number of a table is the page of its definition. In one sample such pages are far past the end of the compacted
// file.
TEST_P(CompactedSample, KeepsTheNumbersOfItsTables) {
  const auto numbers = [&](const std::string& file) {
    std::vector<std::int32_t> ids;
    const auto database = Database::Open(file, OptionsFor(GetParam()));
    const Catalog objects = database->Objects();
    for (const CatalogEntry& entry : objects.Entries())
      ids.push_back(entry.id);
    return ids;
  };
  if (GetParam() == "alltypes_big") {
    EXPECT_NE(numbers(after_), numbers(before_));
    EXPECT_LT(std::filesystem::file_size(after_), std::filesystem::file_size(before_) / 10);
  } else {
    EXPECT_EQ(numbers(after_), numbers(before_));
  }
}

TEST_P(CompactedSample, KeepsPasswordAndEncoding) {
  const auto page0 = [](const std::string& file) {
    Bytes page(kPageSize);
    HostFileSystem().Open(file, OpenMode::Read)->ReadAt(0, page);
    std::fill_n(page.begin() + kChangeMark, sizeof(std::uint64_t), std::uint8_t{0});  // differs in every file
    page.resize(kCommitCounters);
    return page;
  };
  EXPECT_EQ(page0(after_), page0(before_));
}

INSTANTIATE_TEST_SUITE_P(All, CompactedSample, testing::ValuesIn(witness::SampleNames()),
                         [](const auto& sample) { return sample.param; });

}  // namespace
}  // namespace jet
