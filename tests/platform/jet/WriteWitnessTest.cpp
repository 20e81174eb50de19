// SPDX-License-Identifier: MIT
// Files written by this library, read by an outside reader.
#include "platform/jet/check/Check.h"
#include "platform/jet/table/TableWriter.h"
#include "tests/platform/jet/support/RandomRows.h"
#include "tests/platform/jet/support/SampleTable.h"
#include "tests/platform/jet/support/Witness.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace jet {
namespace {

class WriteWitness : public testing::TestWithParam<witness::Reader> {
 protected:
  void SetUp() override {
    if (const auto absent = witness::WhyAbsent(GetParam())) GTEST_SKIP() << *absent;
    folder_ = std::filesystem::temp_directory_path() / ("jet-witness-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder_);
    path_ = folder_ / "alles.mdb";
    Database::Create(path_);
    OpenOptions options;
    options.writable = true;
    database_ = Database::Open(path_, options);
  }
  void TearDown() override {
    database_.reset();
    if (!folder_.empty()) std::filesystem::remove_all(folder_);
  }

  std::filesystem::path folder_;
  std::filesystem::path path_;
  std::unique_ptr<Database> database_;
};

TEST_P(WriteWitness, ReadsEveryKindOfValueAsItWasWritten) {
  test::RandomRows random(17);
  {
    WriteTurn turn(*database_);
    database_->CreateTable(test::AllKindsTable());
    const auto writer = database_->OpenWriter(u"tblAlles");
    for (int i = 0; i < 400; ++i) {
      std::vector<Value> row = random.Row(writer->Definition());
      // The outside reader truncates a short binary at its first zero.
      if (Bytes* bytes = std::get_if<Bytes>(&row[9]))
        std::replace(bytes->begin(), bytes->end(), std::uint8_t{0}, std::uint8_t{1});
      writer->Insert(row);
    }
    turn.Commit();
  }
  for (const Finding& finding : CheckDatabase(*database_))
    ADD_FAILURE() << finding.Line();
  witness::Tables tables = witness::ReadWith(GetParam(), path_.string());
  ASSERT_TRUE(tables.contains("tblAlles"));
  witness::Cells theirs = tables["tblAlles"].rows;
  witness::Cells ours = witness::TextOf(*database_, u"tblAlles").rows;
  EXPECT_EQ(tables["tblAlles"].fields, witness::TextOf(*database_, u"tblAlles").fields);
  ASSERT_EQ(theirs.size(), ours.size());
  // The outside reader distinguishes an empty value from null only in long binaries.
  for (witness::Cells* cells : {&theirs, &ours}) {
    for (std::vector<std::string>& row : *cells)
      std::replace(row.begin(), row.end(), std::string(), std::string("<null>"));
  }
  for (std::size_t i = 0; i < ours.size(); ++i)
    ASSERT_EQ(theirs[i], ours[i]) << "row " << i;
}

INSTANTIATE_TEST_SUITE_P(Readers, WriteWitness, testing::Values(witness::Reader::MdbTools, witness::Reader::MdbReader),
                         [](const auto& reader) { return witness::TestNameOf(reader.param); });

}  // namespace
}  // namespace jet
